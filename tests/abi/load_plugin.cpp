// Loads the plug-in by its path as a host on Windows does, and makes and deletes a translator: load_plugin PATH
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <memory>

#include "plugin/entry_point.h"

int main(int, char** argv) {
    const auto path = std::filesystem::absolute(argv[1]).make_preferred();
    const HMODULE library = ::LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!library)
        return std::printf("not loaded: %lu\n", ::GetLastError()), 1;
    using EntryPoint = decltype(&GiveMyTranslator);
    const auto entryPoint =
        reinterpret_cast<EntryPoint>(reinterpret_cast<void*>(::GetProcAddress(library, "GiveMyTranslator")));
    if (!entryPoint)
        return std::puts("no entry point"), 1;
    const std::unique_ptr<KwBrevix_930::ScoreTranslator> translator(entryPoint());
    std::puts(translator ? "a translator" : "no translator");
    // A host may let go of the library at any time; it stays where it is.
    ::FreeLibrary(library);
    ::FreeLibrary(library);
    std::puts(::GetModuleHandleW(path.filename().c_str()) == library ? "stays" : "gone");
    return 0;
}
