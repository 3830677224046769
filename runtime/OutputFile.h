// A file that appears only when it is complete, or standard output.
#pragma once

#include <string>
#include <string_view>

#include "runtime/Export.h"

namespace brevix {

/// A regular file is written beside its place under a name of its own, and renamed by commit; without commit nothing of
/// it stays and an older file is left as it was. Pipes, devices and standard output are written directly.
class BREVIX_RUNTIME_API OutputFile {
public:
    /// path: "-" is standard output.
    /// Fails: Error where it cannot be written.
    explicit OutputFile(const std::string& path);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    /// Fails: Error, as soon as the system refuses a byte.
    void write(std::string_view text);
    /// Closes the file and puts it in its place. Fails: Error.
    void commit();

    const std::string& getName() const { return fName; }
    /// Returns: the name under which the file grows; empty where it is written directly.
    const std::string& getTemporaryPath() const { return fTemporary; }

private:
    void openBeside();
    [[noreturn]] void fail() const;

    std::string fName;
    // Where the file goes in the end: a link's own file rather than the link.
    std::string fPlace;
    std::string fTemporary;
    int fDescriptor = -1;
};

}  // namespace brevix
