// The running program where the system follows POSIX.
#include "runtime/platform/program.h"

namespace brevix::platform {

std::vector<std::string> readArguments(int argc, const char* const* argv) {
    return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

std::filesystem::path findProgramFolder() {
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
}

}  // namespace brevix::platform
