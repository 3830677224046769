// Removes an unfinished file when the user or the system ends the program.
#include "tools/remove_on_signal.h"

#include <atomic>
#include <csignal>

#include "runtime/platform/files.h"

namespace brevix {

namespace {

// What asks a program to end.
constexpr int kSignals[] = {
    SIGINT,
    SIGTERM,
#ifdef SIGHUP
    SIGHUP,
#endif
#ifdef SIGBREAK
    SIGBREAK,
#endif
};

// Read by the signal handler, which may call very little.
std::atomic<const char*> unfinishedPath{nullptr};

void removeAndEnd(int number) {
    if (const char* path = unfinishedPath.load())
        platform::removeFile(path);
    std::signal(number, SIG_DFL);
    std::raise(number);
}

}  // namespace

void removeOnSignal(const std::string& path) {
    static std::string kept;
    unfinishedPath = nullptr;
    kept = path;
    if (kept.empty())
        return;
    unfinishedPath = kept.c_str();
    for (const int number : kSignals) {
        // A signal that the parent has switched off stays off.
        if (std::signal(number, removeAndEnd) == SIG_IGN)
            std::signal(number, SIG_IGN);
    }
}

}  // namespace brevix
