// The host's trace log: formatting and writing of one line at a time.
#include "host/ScoringLog.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace KwBrevix_930 {

namespace {

bool IsTracingAskedFor() {
    const char* value = std::getenv("BREVIX_TRACE");
    return value && *value != '\0' && std::string_view(value) != "0";
}

std::string FormatLine(const char* format, std::va_list arguments) {
    std::va_list counting;
    va_copy(counting, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, counting);
    va_end(counting);
    if (length < 0)
        return format;
    std::string line(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(line.data(), line.size() + 1, format, arguments);
    return line;
}

}  // namespace

ScoringLog::ScoringLog() : fTracing(IsTracingAskedFor()), fStream(&std::cerr) {}

ScoringLog& ScoringLog::GetInstance() {
    static ScoringLog log;
    return log;
}

void ScoringLog::TraceText(int level, const char* format, ...) {
    if (level >= 1 && !fTracing)
        return;
    std::va_list arguments;
    va_start(arguments, format);
    const std::string line = FormatLine(format, arguments) + '\n';
    va_end(arguments);
    const std::lock_guard lock(fMutex);
    // Unformatted: a width or fill that the stream was left with does not show.
    fStream->write(line.data(), static_cast<std::streamsize>(line.size())).flush();
}

void ScoringLog::SetStream(std::ostream* stream) {
    const std::lock_guard lock(fMutex);
    fStream = stream ? stream : &std::cerr;
}

}  // namespace KwBrevix_930
