// A file or standard input, read as it comes.
#include "runtime/InputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "runtime/Error.h"

namespace brevix {

InputFile::InputFile(const std::string& path)
    : fName(path == "-" ? "standard input" : path),
      fDescriptor(path == "-" ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_CLOEXEC)),
      fIsOwned(path != "-") {
    if (fDescriptor < 0)
        throw Error(fName + ": it cannot be opened: " + std::generic_category().message(errno));
}

InputFile::~InputFile() {
    if (fIsOwned)
        ::close(fDescriptor);
}

std::size_t InputFile::read(char* target, std::size_t most) {
    while (true) {
        const ssize_t count = ::read(fDescriptor, target, most);
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno != EINTR)
            throw Error(fName + ": it cannot be read: " + std::generic_category().message(errno));
    }
}

}  // namespace brevix
