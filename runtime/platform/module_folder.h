// Windows: where the file of a module lies.
#pragma once

#include <filesystem>

namespace brevix::platform {

/// module: a module's handle; null is the running program.
std::filesystem::path folderOf(void* module);

}  // namespace brevix::platform
