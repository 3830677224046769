// The running program on Windows: its arguments are wide.
#include "runtime/platform/program.h"

#include <windows.h>

#include <shellapi.h>

#include "runtime/platform/files.h"
#include "runtime/platform/module_folder.h"

namespace brevix::platform {

std::vector<std::string> readArguments(int argc, const char* const* argv) {
    int count = 0;
    wchar_t** words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (!words)
        return {argv + (argc > 0 ? 1 : 0), argv + argc};
    std::vector<std::string> arguments;
    for (int k = 1; k < count; ++k)
        arguments.push_back(toText(words[k]));
    ::LocalFree(words);
    return arguments;
}

std::filesystem::path findProgramFolder() {
    return folderOf(nullptr);
}

std::filesystem::path folderOf(void* module) {
    std::wstring name(MAX_PATH, L'\0');
    while (true) {
        const DWORD length =
            ::GetModuleFileNameW(static_cast<HMODULE>(module), name.data(), static_cast<DWORD>(name.size()));
        if (length < name.size())
            return std::filesystem::path(name.substr(0, length)).parent_path();
        name.resize(name.size() * 2);
    }
}

}  // namespace brevix::platform
