// Fetching ahead what will be read soon.
#pragma once

#include <cstddef>

namespace KwBrevix_930::plan {

/// Asks for the memory from first to behind last to be brought into the caches; nothing else changes, and some
/// compilers cannot ask.
inline void Prefetch([[maybe_unused]] const void* first, [[maybe_unused]] const void* last) {
#if defined(__GNUC__)
    constexpr std::ptrdiff_t kCacheLine = 64;
    for (auto from = static_cast<const char*>(first); from < last; from += kCacheLine)
        __builtin_prefetch(from);
#endif
}

}  // namespace KwBrevix_930::plan
