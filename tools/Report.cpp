// What the command says on standard error while it works.
#include "tools/Report.h"

#include <cstdio>

#include "runtime/platform/files.h"
#include "runtime/printable_text.h"

namespace brevix {

namespace {

constexpr double kFirstProgressSeconds = 2.0;
constexpr double kProgressSeconds = 0.5;
// Back to the start of the line, and clear it.
constexpr const char* kEraseLine = "\r\x1b[K";

std::string describeSpeed(std::uint64_t rowCount, double seconds) {
    const double speed = seconds > 0.0 ? static_cast<double>(rowCount) / seconds : 0.0;
    return std::to_string(rowCount) + (rowCount == 1 ? " row, " : " rows, ") +
           std::to_string(static_cast<std::uint64_t>(speed)) + " rows/s";
}

// In one call, so that lines of several programs do not mix.
void put(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
}

}  // namespace

Report::Report(bool isQuiet, bool showsProgress)
    : fIsQuiet(isQuiet),
      fShowsProgress(showsProgress),
      fIsTerminal(platform::isTerminal(platform::kStandardError)),
      fStart(Clock::now()) {}

double Report::getSeconds() const {
    return std::chrono::duration<double>(Clock::now() - fStart).count();
}

void Report::writeNotes(const std::string& model, const std::vector<std::string>& notes) {
    fStart = Clock::now();
    for (const std::string& note : notes) {
        if (!fIsQuiet)
            writeMessage(model + ": " + note);
    }
}

void Report::writeProgress(const TableTally& tally) {
    if (!fShowsProgress)
        return;
    const double seconds = getSeconds();
    if (seconds < kFirstProgressSeconds || seconds - fLastProgress < kProgressSeconds)
        return;
    fLastProgress = seconds;
    const std::string text = describeSpeed(tally.rowCount, seconds);
    put(fIsTerminal ? kEraseLine + text : text + "\n");
}

void Report::writeClosingLine(const TableTally& tally) {
    if (fIsQuiet)
        return;
    std::string line = fIsTerminal && fLastProgress > 0.0 ? kEraseLine : "";
    line += describeSpeed(tally.rowCount, getSeconds());
    const char* separator = ", status ";
    for (const auto& [status, count] : tally.rowCountByStatus) {
        line += separator + std::to_string(status) + ": " + std::to_string(count);
        separator = ", ";
    }
    put(line + "\n");
}

void writeMessage(const std::string& text) {
    put("brevix: " + printableText(text) + "\n");
}

}  // namespace brevix
