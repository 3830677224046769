// The host's trace log.
#pragma once

#include <atomic>
#include <iosfwd>
#include <mutex>

#include "host/Export.h"

namespace KwBrevix_930 {

/// One process-wide log. Lines of level 1 are written only while tracing is switched on: by SetTracing, or at the start
/// by a non-empty environment variable BREVIX_TRACE other than "0". Safe to use from any thread.
class BREVIX_HOST_API ScoringLog {
public:
    static ScoringLog& GetInstance();

    /// Writes one line. level: 1 is trace detail; lower levels are always written. format: as printf, no line end in
    /// it.
    void TraceText(int level, const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 3, 4)))
#endif
        ;

    void SetTracing(bool on) {
        fTracing = on;
    }
    bool IsTracing() const {
        return fTracing;
    }

    /// stream: where lines go from now on; not owned. Null: standard error, as at the start.
    void SetStream(std::ostream* stream);

    ScoringLog(const ScoringLog&) = delete;
    ScoringLog& operator=(const ScoringLog&) = delete;

private:
    ScoringLog();

    std::atomic<bool> fTracing;
    std::mutex fMutex;
    std::ostream* fStream;
};

}  // namespace KwBrevix_930
