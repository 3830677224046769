// Keeps the plug-in in the process once it is loaded, whoever frees it.
//
// Threads that have scored call it where they end, and the compiler's static runtime leaves an exception handler
// behind, which Windows would call at the next exception of the host. Other systems keep such a library by themselves.
#include <windows.h>

namespace {

const bool kIsKept = [] {
    HMODULE self = nullptr;
    return ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                                reinterpret_cast<const wchar_t*>(&kIsKept), &self) != 0;
}();

}  // namespace
