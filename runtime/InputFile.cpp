// A file or standard input, read as it comes.
#include "runtime/InputFile.h"

#include <cerrno>
#include <system_error>

#include "runtime/Error.h"
#include "runtime/platform/files.h"

namespace brevix {

InputFile::InputFile(const std::string& path)
    : fName(path == "-" ? "standard input" : path),
      fDescriptor(path == "-" ? platform::kStandardInput : platform::openToRead(path)),
      fIsOwned(path != "-") {
    if (fDescriptor < 0)
        throw Error(fName + ": it cannot be opened: " + std::generic_category().message(errno));
}

InputFile::~InputFile() {
    if (fIsOwned)
        platform::closeFile(fDescriptor);
}

std::size_t InputFile::read(char* target, std::size_t most) {
    const std::ptrdiff_t count = platform::readSome(fDescriptor, target, most);
    if (count < 0)
        throw Error(fName + ": it cannot be read: " + std::generic_category().message(errno));
    return static_cast<std::size_t>(count);
}

}  // namespace brevix
