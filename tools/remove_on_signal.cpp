// Removes an unfinished file when the user or the system ends the program.
#include "tools/remove_on_signal.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>

namespace brevix {

namespace {

// Read by the signal handler, which may call very little.
std::atomic<const char*> unfinishedPath{nullptr};

void removeAndEnd(int number) {
    if (const char* path = unfinishedPath.load())
        ::unlink(path);
    ::signal(number, SIG_DFL);
    ::raise(number);
}

}  // namespace

void removeOnSignal(const std::string& path) {
    static std::string kept;
    unfinishedPath = nullptr;
    kept = path;
    if (kept.empty())
        return;
    unfinishedPath = kept.c_str();
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before;
        // A signal that the parent has switched off stays off.
        if (::sigaction(number, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            ::signal(number, removeAndEnd);
    }
}

}  // namespace brevix
