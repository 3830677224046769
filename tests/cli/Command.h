// Runs the brevix command as a user does.
#pragma once

#include <regex>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "tests/support/TemporaryFolder.h"

namespace test_support {

std::vector<std::string> linesOfText(const std::string& text);

struct CommandResult {
    /// 128 + the signal where one ended the program.
    int exitCode = -1;
    std::string out;
    std::string err;
    /// The program's, or that of the test at its start where that is larger; 0 where the system does not tell.
    long peakKilobytes = 0;

    /// Standard error as lines.
    std::vector<std::string> errLines() const;
};

/// Where a program's standard streams come from and go to; an empty path: a file of the test's own.
struct Streams {
    std::string in;
    std::string outPath;
    bool closesIn = false;
    bool closesOut = false;
    bool closesErr = false;
};

/// Runs the program; the first argument is the first behind its name.
CommandResult runBrevix(const std::vector<std::string>& arguments, const Streams& streams = {});
CommandResult runBrevix(const std::vector<std::string>& arguments, const std::string& in);

void expectPeakBelow(const CommandResult& result, long kilobytes);

/// The whole text, which should be short, by a regular expression of ECMAScript.
MATCHER_P(MatchesPattern, pattern, "matches " + std::string(pattern)) {
    return std::regex_match(std::string(arg), std::regex(pattern));
}

/// A folder for the files of one test.
class CommandTest : public testing::Test {
protected:
    /// Returns: the path of a new file with this content.
    std::string write(const std::string& name, const std::string& content) const;
    /// As write: a start, then count times a piece, never whole in memory.
    std::string writeLarge(const std::string& name, const std::string& start, const std::string& piece,
                           int count) const;
    std::string path(const std::string& name) const { return fFolder.pathOf(name); }
    static std::string read(const std::string& path);
    /// Returns: the names in the folder, sorted.
    std::vector<std::string> listFiles() const;
    /// An example that is kept in the project: "iris/model.pmml".
    static std::string example(const std::string& name) { return std::string(BREVIX_SOURCE_DIR "/examples/") + name; }

    TemporaryFolder fFolder;
};

}  // namespace test_support
