// Shared libraries on Windows.
#include "runtime/platform/libraries.h"

#include <windows.h>

#include <system_error>

#include "runtime/platform/files.h"
#include "runtime/platform/module_folder.h"

namespace brevix::platform {

const char* const kPluginFileName = "brevix_svm.dll";

void* loadLibrary(const std::string& path, std::string& fault) {
    std::error_code ignored;
    // With an absolute path what the library needs is looked for beside it rather than beside the program.
    const auto file = std::filesystem::absolute(toPath(path), ignored).make_preferred();
    const HMODULE module = ::LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!module)
        fault = std::system_category().message(static_cast<int>(::GetLastError()));
    return module;
}

void* findSymbol(void* library, const char* name) {
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(library), name));
}

void freeLibrary(void* library) {
    ::FreeLibrary(static_cast<HMODULE>(library));
}

std::filesystem::path findOwnFolder() {
    static const char anchor = 0;
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<const wchar_t*>(&anchor), &module);
    return module ? folderOf(module) : std::filesystem::path();
}

}  // namespace brevix::platform
