// Files and standard streams where the system follows POSIX.
#include "runtime/platform/files.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace brevix::platform {

namespace {

mode_t newFileMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

template <class Call>
std::ptrdiff_t repeatWhenInterrupted(const Call& call) {
    while (true) {
        const std::ptrdiff_t count = call();
        if (count >= 0 || errno != EINTR)
            return count;
    }
}

}  // namespace

int openToRead(const std::string& path) {
    return ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
}

int openToWrite(const std::string& path) {
    return ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
}

int createBeside(const std::string& place, std::string& path) {
    path = toText(toPath(place).parent_path() / ".brevix-XXXXXX");
    const int descriptor = ::mkostemp(path.data(), O_CLOEXEC);
    if (descriptor < 0)
        return descriptor;
    struct stat old;
    const mode_t mode = ::stat(place.c_str(), &old) == 0 ? old.st_mode & 07777 : newFileMode();
    ::fchmod(descriptor, mode);
    return descriptor;
}

std::ptrdiff_t readSome(int descriptor, char* target, std::size_t most) {
    return repeatWhenInterrupted([&] { return ::read(descriptor, target, most); });
}

std::ptrdiff_t writeSome(int descriptor, const char* source, std::size_t count) {
    return repeatWhenInterrupted([&] { return ::write(descriptor, source, count); });
}

bool closeFile(int descriptor) {
    return ::close(descriptor) == 0;
}

bool mayBeWritten(const std::string& path) {
    return ::access(path.c_str(), W_OK) == 0 || errno == ENOENT;
}

bool moveFile(const std::string& from, const std::string& to) {
    return ::rename(from.c_str(), to.c_str()) == 0;
}

void removeFile(const char* path) {
    ::unlink(path);
}

bool isTerminal(int descriptor) {
    return ::isatty(descriptor) == 1;
}

void prepareStandardStreams() {
    for (const int descriptor : {kStandardInput, kStandardOutput, kStandardError}) {
        if (::fcntl(descriptor, F_GETFD) == -1)
            ::open("/dev/null", descriptor == kStandardInput ? O_WRONLY : O_RDONLY);
    }
    ::signal(SIGPIPE, SIG_IGN);
}

}  // namespace brevix::platform
