// The plug-in, loaded at run time with the system's loader.
#include "runtime/PluginLibrary.h"

#include <dlfcn.h>

#include <filesystem>
#include <vector>

#include "runtime/Error.h"

namespace brevix {

namespace {

constexpr const char* kEntryPointName = "GiveMyTranslator";
constexpr const char* kFileName = "libbrevix_svm.so";

std::string lastLoaderError() {
    const char* text = dlerror();
    return text ? text : "unknown fault";
}

}  // namespace

PluginLibrary::PluginLibrary(const std::string& path) : fPath(path), fHandle(nullptr), fEntryPoint(nullptr) {
    // A bare name would be looked for along the loader's own search path.
    const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
    fHandle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!fHandle)
        throw Error("the plug-in " + path + " cannot be loaded: " + lastLoaderError());
    fEntryPoint = reinterpret_cast<EntryPoint>(dlsym(fHandle, kEntryPointName));
    if (!fEntryPoint) {
        dlclose(fHandle);
        throw Error("the plug-in " + path + " has no entry point " + kEntryPointName);
    }
}

PluginLibrary::~PluginLibrary() {
    dlclose(fHandle);
}

std::unique_ptr<KwBrevix_930::ScoreTranslator> PluginLibrary::makeTranslator() const {
    std::unique_ptr<KwBrevix_930::ScoreTranslator> translator(fEntryPoint());
    if (!translator)
        throw Error("the plug-in " + fPath + " gives no translator");
    return translator;
}

namespace {

// The folder of the library that this code is in.
std::filesystem::path findOwnFolder() {
    static const char anchor = 0;
    Dl_info info;
    return dladdr(&anchor, &info) != 0 && info.dli_fname ? std::filesystem::path(info.dli_fname).parent_path()
                                                         : std::filesystem::path();
}

}  // namespace

std::string PluginLibrary::findDefault() {
    std::error_code ignored;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
    const std::vector<std::filesystem::path> folders = {program, program.parent_path() / "lib",
                                                        program.parent_path() / BREVIX_INSTALL_LIBDIR, findOwnFolder(),
                                                        BREVIX_INSTALL_FULL_LIBDIR};
    std::string places;
    for (const auto& folder : folders) {
        const auto candidate = folder / kFileName;
        if (std::filesystem::exists(candidate, ignored))
            return candidate.string();
        places += (places.empty() ? "" : ", ") + folder.string();
    }
    throw Error(std::string("the plug-in ") + kFileName + " is in none of " + places);
}

}  // namespace brevix
