// Writes one line of each level through a fresh log, for the test of its environment variable.
#include "host/ScoringLog.h"

int main() {
    KwBrevix_930::ScoringLog& log = KwBrevix_930::ScoringLog::GetInstance();
    log.TraceText(1, "detail %d", 17);
    log.TraceText(0, "always");
    return log.IsTracing() ? 1 : 0;
}
