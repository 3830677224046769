// What the command says on standard error while it works.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "runtime/score_table.h"

namespace brevix {

class Report {
public:
    Report(bool isQuiet, bool showsProgress);

    /// Each note on a line of its own, behind the model's path. The clock starts here.
    void writeNotes(const std::string& model, const std::vector<std::string>& notes);
    /// On long work only, and not more often than is good to read.
    void writeProgress(const TableTally& tally);
    /// Rows, rows per second, and rows by status.
    void writeClosingLine(const TableTally& tally);

private:
    using Clock = std::chrono::steady_clock;

    double getSeconds() const;

    bool fIsQuiet;
    bool fShowsProgress;
    bool fIsTerminal;
    Clock::time_point fStart;
    double fLastProgress = 0.0;
};

/// Writes one line to standard error, its control characters escaped, behind the program's name.
void writeMessage(const std::string& text);

}  // namespace brevix
