// Shared libraries where the system follows POSIX.
#include "runtime/platform/libraries.h"

#include <dlfcn.h>

namespace brevix::platform {

const char* const kPluginFileName = "libbrevix_svm.so";

void* loadLibrary(const std::string& path, std::string& fault) {
    // A bare name would be looked for along the loader's own search path.
    const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
    void* library = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        const char* text = ::dlerror();
        fault = text ? text : "unknown fault";
    }
    return library;
}

void* findSymbol(void* library, const char* name) {
    return ::dlsym(library, name);
}

void freeLibrary(void* library) {
    ::dlclose(library);
}

std::filesystem::path findOwnFolder() {
    static const char anchor = 0;
    Dl_info info;
    return ::dladdr(&anchor, &info) != 0 && info.dli_fname ? std::filesystem::path(info.dli_fname).parent_path()
                                                           : std::filesystem::path();
}

}  // namespace brevix::platform
