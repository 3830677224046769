// Shared libraries loaded at run time: what the systems do differently.
#pragma once

#include <filesystem>
#include <string>

#include "runtime/Export.h"

namespace brevix::platform {

/// The plug-in's file name on this system.
extern const char* const kPluginFileName;

/// path: the file itself; a bare name is taken in the working directory, never along a search path. What the library
/// needs is looked for beside it.
/// Returns: a handle for the functions below; null where it cannot be loaded, and fault says why.
BREVIX_RUNTIME_API void* loadLibrary(const std::string& path, std::string& fault);
/// Returns: null where the library does not show the name.
BREVIX_RUNTIME_API void* findSymbol(void* library, const char* name);
BREVIX_RUNTIME_API void freeLibrary(void* library);

/// Returns: the folder of the library that this code is in; empty where the system does not tell.
BREVIX_RUNTIME_API std::filesystem::path findOwnFolder();

}  // namespace brevix::platform
