// Runs a program with its standard streams on files.
#pragma once

#include <string>
#include <vector>

namespace test_support {

/// The files of the three standard streams; an empty path: the stream is closed.
struct StreamFiles {
    std::string in;
    std::string out;
    std::string err;
};

struct ProcessEnd {
    /// 128 + the signal where one ended the program.
    int exitCode = -1;
    /// The program's peak, or that of the test at its start where that is larger; 0 where the system does not tell.
    long peakKilobytes = 0;
};

/// words: the program's path, then its arguments. Files that are written are made where they are missing.
ProcessEnd runProcess(const std::vector<std::string>& words, const StreamFiles& files);

/// Sets a variable of the environment for this process and its children; a null value removes it.
void setVariable(const char* name, const char* value);

/// What swallows all that is written to it.
extern const char* const kNullDevice;

}  // namespace test_support
