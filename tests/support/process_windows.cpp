// Runs a program with its standard streams on files, on Windows.
#include "tests/support/process.h"

#include <windows.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace test_support {

namespace {

std::wstring wide(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end())).wstring();
}

// One argument as the C runtime's rules take it apart again.
std::wstring quoted(const std::wstring& word) {
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : word) {
        if (c == L'"')
            text.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        text += c;
    }
    return text.append(backslashes, L'\\') + L"\"";
}

// Inherited by the child; null for a closed stream.
HANDLE openStream(const std::string& path, bool isRead) {
    if (path.empty())
        return nullptr;
    SECURITY_ATTRIBUTES inherited = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const HANDLE handle =
        ::CreateFileW(wide(path).c_str(), isRead ? GENERIC_READ : GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                      &inherited, isRead ? OPEN_EXISTING : OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        throw std::runtime_error("no stream at " + path);
    return handle;
}

void closeStream(HANDLE handle) {
    if (handle)
        ::CloseHandle(handle);
}

ProcessEnd waitFor(HANDLE process) {
    ::WaitForSingleObject(process, INFINITE);
    DWORD code = 0;
    ::GetExitCodeProcess(process, &code);
    // Wine forgets the peak of a process with the process.
    return {static_cast<int>(code), 0};
}

}  // namespace

const char* const kNullDevice = "NUL";

ProcessEnd runProcess(const std::vector<std::string>& words, const StreamFiles& files) {
    std::wstring line;
    for (const std::string& word : words)
        line += (line.empty() ? L"" : L" ") + quoted(wide(word));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = openStream(files.in, true);
    start.hStdOutput = openStream(files.out, false);
    start.hStdError = openStream(files.err, false);
    PROCESS_INFORMATION process{};
    const bool isStarted = ::CreateProcessW(wide(words[0]).c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                            nullptr, &start, &process);
    closeStream(start.hStdInput);
    closeStream(start.hStdOutput);
    closeStream(start.hStdError);
    if (!isStarted)
        throw std::runtime_error("no process of " + words[0]);
    const ProcessEnd end = waitFor(process.hProcess);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return end;
}

void setVariable(const char* name, const char* value) {
    // The C runtime removes a variable that is given an empty value; the system itself keeps it.
    if (value)
        ::_putenv_s(name, value);
    else
        ::_putenv_s(name, "");
    ::SetEnvironmentVariableA(name, value);
}

}  // namespace test_support
