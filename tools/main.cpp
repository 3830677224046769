// The brevix command: reads the command line, runs a verb, and turns every fault into one line and an exit code.
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <new>
#include <string>

#include <CLI/CLI.hpp>

#include "tools/InspectCommand.h"
#include "tools/Report.h"
#include "tools/ScoreCommand.h"
#include "tools/UsageError.h"
#include "tools/VerifyCommand.h"

namespace {

enum ExitCode { kDone = 0, kUnusable = 1, kWrongUsage = 2 };

// A standard stream that was closed before the start must not become a file that the program opens: it is made one
// that refuses what it is for.
void guardStandardStreams() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) == -1)
            ::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
    // A reader that has gone shows as a failed write.
    ::signal(SIGPIPE, SIG_IGN);
}

int printVersion() {
    if (std::puts("brevix " BREVIX_VERSION) < 0 || std::fflush(stdout) != 0) {
        brevix::writeMessage("standard output: it cannot be written");
        return kUnusable;
    }
    return kDone;
}

int run(int argc, char** argv) {
    CLI::App app("Scores tables with support vector machine models in PMML.", "brevix");
    app.require_subcommand(1);
    brevix::ScoreCommand score(*app.add_subcommand("score", "score a table"));
    auto* inspectApp = app.add_subcommand("inspect", "tell what a model is, and what has no effect in it");
    brevix::InspectCommand inspect(*inspectApp);
    auto* verifyApp = app.add_subcommand("verify", "hold results against expected ones");
    brevix::VerifyCommand verify(*verifyApp);
    const CLI::App* version = app.add_subcommand("version", "print the version");
    try {
        app.parse(argc, argv);
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
    guardStandardStreams();
    try {
        return run(argc, argv);
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
