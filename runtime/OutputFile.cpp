// A file that appears only when it is complete, or standard output.
#include "runtime/OutputFile.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "runtime/Error.h"
#include "runtime/platform/files.h"

namespace brevix {

namespace {

namespace fs = std::filesystem;

std::string followLink(const std::string& path) {
    std::error_code ignored;
    const fs::path target = fs::canonical(platform::toPath(path), ignored);
    return target.empty() ? path : platform::toText(target);
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : fName(path), fPlace(path) {
    if (path == "-" || path == "/dev/stdout") {
        fName = "standard output";
        fDescriptor = platform::kStandardOutput;
        return;
    }
    std::error_code ignored;
    const fs::file_status status = fs::status(platform::toPath(path), ignored);
    if (fs::is_directory(status))
        throw Error(fName + ": it cannot be written: it is a directory");
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        fDescriptor = platform::openToWrite(path);
        if (fDescriptor < 0)
            fail();
    } else {
        openBeside();
    }
}

void OutputFile::openBeside() {
    fPlace = followLink(fName);
    if (!platform::toPath(fPlace).has_filename())
        throw Error(fName + ": it cannot be written: it is no file name");
    if (!platform::mayBeWritten(fPlace))
        fail();
    std::string name;
    fDescriptor = platform::createBeside(fPlace, name);
    if (fDescriptor < 0)
        fail();
    fTemporary = name;
}

OutputFile::~OutputFile() {
    if (fDescriptor >= 0 && fDescriptor != platform::kStandardOutput)
        platform::closeFile(fDescriptor);
    if (!fTemporary.empty())
        platform::removeFile(fTemporary.c_str());
}

void OutputFile::fail() const {
    throw Error(fName + ": it cannot be written: " + std::generic_category().message(errno));
}

void OutputFile::write(std::string_view text) {
    while (!text.empty()) {
        const std::ptrdiff_t count = platform::writeSome(fDescriptor, text.data(), text.size());
        if (count < 0)
            fail();
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

void OutputFile::commit() {
    const int descriptor = fDescriptor;
    fDescriptor = -1;
    // Standard output too: some file systems tell of a full disk only now.
    if (descriptor >= 0 && !platform::closeFile(descriptor))
        fail();
    if (!fTemporary.empty() && !platform::moveFile(fTemporary, fPlace))
        fail();
    fTemporary.clear();
}

}  // namespace brevix
