// A file that appears only when it is complete, or standard output.
#include "runtime/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "runtime/Error.h"

namespace brevix {

namespace {

namespace fs = std::filesystem;

mode_t newFileMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

std::string followLink(const std::string& path) {
    std::error_code ignored;
    const fs::path target = fs::canonical(path, ignored);
    return target.empty() ? path : target.string();
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : fName(path), fPlace(path) {
    if (path == "-" || path == "/dev/stdout") {
        fName = "standard output";
        fDescriptor = STDOUT_FILENO;
        return;
    }
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (fs::is_directory(status))
        throw Error(fName + ": it cannot be written: it is a directory");
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        fDescriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
        if (fDescriptor < 0)
            fail();
    } else {
        openBeside();
    }
}

void OutputFile::openBeside() {
    fPlace = followLink(fName);
    if (!fs::path(fPlace).has_filename())
        throw Error(fName + ": it cannot be written: it is no file name");
    if (::access(fPlace.c_str(), W_OK) != 0 && errno != ENOENT)
        fail();
    std::string name = (fs::path(fPlace).parent_path() / ".brevix-XXXXXX").string();
    fDescriptor = ::mkostemp(name.data(), O_CLOEXEC);
    if (fDescriptor < 0)
        fail();
    fTemporary = name;
    struct stat old;
    const mode_t mode = ::stat(fPlace.c_str(), &old) == 0 ? old.st_mode & 07777 : newFileMode();
    ::fchmod(fDescriptor, mode);
}

OutputFile::~OutputFile() {
    if (fDescriptor >= 0 && fDescriptor != STDOUT_FILENO)
        ::close(fDescriptor);
    if (!fTemporary.empty())
        ::unlink(fTemporary.c_str());
}

void OutputFile::fail() const {
    throw Error(fName + ": it cannot be written: " + std::generic_category().message(errno));
}

void OutputFile::write(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(fDescriptor, text.data(), text.size());
        if (count >= 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            fail();
    }
}

void OutputFile::commit() {
    const int descriptor = fDescriptor;
    fDescriptor = -1;
    // Standard output too: some file systems tell of a full disk only now.
    if (descriptor >= 0 && ::close(descriptor) != 0)
        fail();
    if (!fTemporary.empty() && ::rename(fTemporary.c_str(), fPlace.c_str()) != 0)
        fail();
    fTemporary.clear();
}

}  // namespace brevix
