// The powers of two with exponents j / 256, from which exp is built. Internal.
#pragma once

#include <cstdint>

namespace KwSVM_700 {

/// 2^(j/256) = h (1 + tail) to 100 bits or more, h the nearest double.
struct Exp2Entry {
    double tail;
    /// The bits of h less j << kIndexPlace: with k << kIndexPlace added, k = 256 m + j, they are the bits of h 2^m.
    std::uint64_t shiftedBits;
};

struct Exp2Table {
    static constexpr std::uint64_t kSize = 256;
    static constexpr int kIndexPlace = 44;

    Exp2Entry entries[kSize];
};

extern const Exp2Table kExp2Table;

}  // namespace KwSVM_700
