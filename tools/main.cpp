// The brevix command: reads the command line, runs a verb, and turns every fault into one line and an exit code.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "runtime/platform/files.h"
#include "runtime/platform/program.h"
#include "tools/InspectCommand.h"
#include "tools/Report.h"
#include "tools/ScoreCommand.h"
#include "tools/UsageError.h"
#include "tools/VerifyCommand.h"

namespace {

enum ExitCode { kDone = 0, kUnusable = 1, kWrongUsage = 2 };

int printVersion() {
    if (std::puts("brevix " BREVIX_VERSION) < 0 || std::fflush(stdout) != 0) {
        brevix::writeMessage("standard output: it cannot be written");
        return kUnusable;
    }
    return kDone;
}

int run(std::vector<std::string> arguments) {
    CLI::App app("Scores tables with support vector machine models in PMML.", "brevix");
    app.require_subcommand(1);
    // A path may begin with a slash on every system.
    app.allow_windows_style_options(false);
    brevix::ScoreCommand score(*app.add_subcommand("score", "score a table"));
    auto* inspectApp = app.add_subcommand("inspect", "tell what a model is, and what has no effect in it");
    brevix::InspectCommand inspect(*inspectApp);
    auto* verifyApp = app.add_subcommand("verify", "hold results against expected ones");
    brevix::VerifyCommand verify(*verifyApp);
    const CLI::App* version = app.add_subcommand("version", "print the version");
    try {
        // The library takes them from the last to the first.
        std::reverse(arguments.begin(), arguments.end());
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& fault) {
        if (fault.get_exit_code() == 0)
            return app.exit(fault);
        throw brevix::UsageError(fault.what());
    }
    if (version->parsed())
        return printVersion();
    if (inspectApp->parsed())
        return inspect.run();
    return verifyApp->parsed() ? verify.run() : score.run();
}

}  // namespace

int main(int argc, char** argv) {
    brevix::platform::prepareStandardStreams();
    try {
        return run(brevix::platform::readArguments(argc, argv));
    } catch (const brevix::UsageError& fault) {
        brevix::writeMessage(std::string(fault.what()) + " (brevix --help tells more)");
        return kWrongUsage;
    } catch (const std::bad_alloc&) {
        brevix::writeMessage("there is not enough memory");
    } catch (const std::exception& fault) {
        brevix::writeMessage(fault.what());
    } catch (...) {
        brevix::writeMessage("an unknown fault");
    }
    return kUnusable;
}
