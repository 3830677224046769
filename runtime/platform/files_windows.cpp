// Files and standard streams on Windows: wide names, and new files that can be removed while they are open.
#include "runtime/platform/files.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

namespace brevix::platform {

namespace {

constexpr int kAccess = _O_BINARY | _O_NOINHERIT;
constexpr std::size_t kMostBytesACall = 1u << 30;
constexpr int kMostTries = 100;

// What errno says of the last fault of the system.
int errnoOfLastError() {
    switch (::GetLastError()) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
            return ENOENT;
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
            return EACCES;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return EEXIST;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return ENOSPC;
        default:
            return EIO;
    }
}

int open(const std::string& path, int flags) {
    return ::_wopen(toPath(path).c_str(), flags | kAccess);
}

// A number that two programs started at once do not share.
std::uint64_t drawNumber() {
    LARGE_INTEGER ticks;
    ::QueryPerformanceCounter(&ticks);
    return static_cast<std::uint64_t>(ticks.QuadPart) * 0x9E3779B97F4A7C15u ^ ::GetCurrentProcessId();
}

HANDLE createShared(const std::wstring& path) {
    return ::CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                         FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
}

unsigned int limit(std::size_t count) {
    return static_cast<unsigned int>(std::min(count, kMostBytesACall));
}

}  // namespace

int openToRead(const std::string& path) {
    const int descriptor = open(path, _O_RDONLY);
    std::error_code ignored;
    if (descriptor < 0 && errno == EACCES && std::filesystem::is_directory(toPath(path), ignored))
        errno = EISDIR;
    return descriptor;
}

int openToWrite(const std::string& path) {
    return open(path, _O_WRONLY);
}

int createBeside(const std::string& place, std::string& path) {
    const std::filesystem::path folder = toPath(place).parent_path();
    for (int k = 0; k < kMostTries; ++k) {
        const std::filesystem::path candidate = folder / (L".brevix-" + std::to_wstring(drawNumber()));
        const HANDLE handle = createShared(candidate.native());
        if (handle != INVALID_HANDLE_VALUE) {
            path = toText(candidate);
            return ::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle), kAccess | _O_RDWR);
        }
        errno = errnoOfLastError();
        if (errno != EEXIST)
            break;
    }
    return -1;
}

std::ptrdiff_t readSome(int descriptor, char* target, std::size_t most) {
    return ::_read(descriptor, target, limit(most));
}

std::ptrdiff_t writeSome(int descriptor, const char* source, std::size_t count) {
    return ::_write(descriptor, source, limit(count));
}

bool closeFile(int descriptor) {
    return ::_close(descriptor) == 0;
}

bool mayBeWritten(const std::string& path) {
    constexpr int kWriting = 2;
    return ::_waccess(toPath(path).c_str(), kWriting) == 0 || errno == ENOENT;
}

bool moveFile(const std::string& from, const std::string& to) {
    if (::MoveFileExW(toPath(from).c_str(), toPath(to).c_str(), MOVEFILE_REPLACE_EXISTING))
        return true;
    errno = errnoOfLastError();
    return false;
}

void removeFile(const char* path) {
    ::DeleteFileW(toPath(path).c_str());
}

bool isTerminal(int descriptor) {
    return ::_isatty(descriptor) != 0;
}

void prepareStandardStreams() {
    for (const int descriptor : {kStandardInput, kStandardOutput, kStandardError})
        ::_setmode(descriptor, _O_BINARY);
}

}  // namespace brevix::platform
