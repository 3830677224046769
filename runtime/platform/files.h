// Files and standard streams by descriptor, in binary and with UTF-8 names: what the systems do differently.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "runtime/Export.h"

namespace brevix::platform {

/// Returns: a path from its UTF-8 text, and the text from a path.
BREVIX_RUNTIME_API std::filesystem::path toPath(const std::string& text);
BREVIX_RUNTIME_API std::string toText(const std::filesystem::path& path);

/// Returns: a descriptor, not inherited by child processes; -1 with errno set where the system refuses.
BREVIX_RUNTIME_API int openToRead(const std::string& path);
/// For what is there already and is no regular file: a pipe or a device. Returns: as openToRead.
BREVIX_RUNTIME_API int openToWrite(const std::string& path);

/// Makes an empty file with a name of its own in the folder of place, with the permissions of the file at place, or of
/// any new file where there is none.
/// path: receives the name. Returns: as openToRead.
BREVIX_RUNTIME_API int createBeside(const std::string& place, std::string& path);

/// Returns: how many bytes were moved; -1 with errno set. An interruption is no failure.
BREVIX_RUNTIME_API std::ptrdiff_t readSome(int descriptor, char* target, std::size_t most);
BREVIX_RUNTIME_API std::ptrdiff_t writeSome(int descriptor, const char* source, std::size_t count);

/// Returns: false with errno set.
BREVIX_RUNTIME_API bool closeFile(int descriptor);
/// Returns: false with errno set where a file is there that must not be written.
BREVIX_RUNTIME_API bool mayBeWritten(const std::string& path);
/// Puts a closed file in the place of another. Returns: false with errno set.
BREVIX_RUNTIME_API bool moveFile(const std::string& from, const std::string& to);
/// May be called from a handler of a signal, for a file that is still open too.
BREVIX_RUNTIME_API void removeFile(const char* path);

constexpr int kStandardInput = 0;
constexpr int kStandardOutput = 1;
constexpr int kStandardError = 2;

BREVIX_RUNTIME_API bool isTerminal(int descriptor);

/// Makes the standard streams binary and safe: one that was closed before the start refuses what it is for instead of
/// becoming a file that the program opens, and a reader that has gone shows as a failed write.
BREVIX_RUNTIME_API void prepareStandardStreams();

}  // namespace brevix::platform
