// The precision that the platform's exp and pow count on. Internal.
#pragma once

#include <cstdint>

namespace KwBrevix_930 {

#if defined(__MINGW32__) && defined(__x86_64__)

/// For its lifetime the calling thread's x87 unit rounds to 64 bits: the runtime of MinGW-w64 computes exp and pow
/// there, but Windows starts a thread with 53. Elsewhere these functions do without that unit, and this does nothing.
class ExtendedPrecision {
public:
    ExtendedPrecision() {
        asm volatile("fnstcw %0" : "=m"(fBefore));
        if ((fBefore & kPrecisionBits) != kPrecisionBits)
            Load(fBefore | kPrecisionBits);
    }
    ~ExtendedPrecision() {
        if ((fBefore & kPrecisionBits) != kPrecisionBits)
            Load(fBefore);
    }
    ExtendedPrecision(const ExtendedPrecision&) = delete;
    ExtendedPrecision& operator=(const ExtendedPrecision&) = delete;

private:
    static constexpr std::uint16_t kPrecisionBits = 0x300;

    static void Load(int word) {
        const auto narrow = static_cast<std::uint16_t>(word);
        asm volatile("fldcw %0" : : "m"(narrow));
    }

    std::uint16_t fBefore;
};

#else

class ExtendedPrecision {
public:
    ExtendedPrecision() {}
    ExtendedPrecision(const ExtendedPrecision&) = delete;
    ExtendedPrecision& operator=(const ExtendedPrecision&) = delete;
};

#endif

}  // namespace KwBrevix_930
