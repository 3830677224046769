// The plug-in, loaded at run time with the system's loader.
#include "runtime/PluginLibrary.h"

#include <filesystem>
#include <vector>

#include "runtime/Error.h"
#include "runtime/platform/files.h"
#include "runtime/platform/libraries.h"
#include "runtime/platform/program.h"

namespace brevix {

namespace {

constexpr const char* kEntryPointName = "GiveMyTranslator";

}  // namespace

PluginLibrary::PluginLibrary(const std::string& path) : fPath(path), fHandle(nullptr), fEntryPoint(nullptr) {
    std::string fault;
    fHandle = platform::loadLibrary(path, fault);
    if (!fHandle)
        throw Error("the plug-in " + path + " cannot be loaded: " + fault);
    fEntryPoint = reinterpret_cast<EntryPoint>(platform::findSymbol(fHandle, kEntryPointName));
    if (!fEntryPoint) {
        platform::freeLibrary(fHandle);
        throw Error("the plug-in " + path + " has no entry point " + kEntryPointName);
    }
}

PluginLibrary::~PluginLibrary() {
    platform::freeLibrary(fHandle);
}

std::unique_ptr<KwBrevix_930::ScoreTranslator> PluginLibrary::makeTranslator() const {
    std::unique_ptr<KwBrevix_930::ScoreTranslator> translator(fEntryPoint());
    if (!translator)
        throw Error("the plug-in " + fPath + " gives no translator");
    return translator;
}

std::string PluginLibrary::findDefault() {
    std::error_code ignored;
    const auto program = platform::findProgramFolder();
    const std::vector<std::filesystem::path> folders = {program, program.parent_path() / "lib",
                                                        program.parent_path() / BREVIX_INSTALL_LIBDIR,
                                                        platform::findOwnFolder(), BREVIX_INSTALL_FULL_LIBDIR};
    std::string places;
    for (const auto& folder : folders) {
        const auto candidate = folder / platform::kPluginFileName;
        if (std::filesystem::exists(candidate, ignored))
            return platform::toText(candidate);
        places += (places.empty() ? "" : ", ") + platform::toText(folder);
    }
    throw Error(std::string("the plug-in ") + platform::kPluginFileName + " is in none of " + places);
}

}  // namespace brevix
