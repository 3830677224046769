// The running program: its arguments and its place. What the systems do differently.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "runtime/Export.h"

namespace brevix::platform {

/// argc, argv: those of main. Returns: the arguments in UTF-8, without the program's name.
BREVIX_RUNTIME_API std::vector<std::string> readArguments(int argc, const char* const* argv);

/// Returns: the folder of the running program; empty where the system does not tell.
BREVIX_RUNTIME_API std::filesystem::path findProgramFolder();

}  // namespace brevix::platform
