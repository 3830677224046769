// Paths from UTF-8 and back, the same on every system.
#include "runtime/platform/files.h"

namespace brevix::platform {

std::filesystem::path toPath(const std::string& text) {
    return std::u8string(text.begin(), text.end());
}

std::string toText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

}  // namespace brevix::platform
