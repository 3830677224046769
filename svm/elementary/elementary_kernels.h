// The loops of exp and pow over many values, in one version for each instruction set. Internal.
#pragma once

#include <cstddef>
#include <cstdint>

namespace KwSVM_700 {

/// How far, in units in the last place, a platform's exp or pow may lie beyond the half unit of correct rounding, and
/// the loops' own error with it. A value that lies farther than this from a tie is rounded by both in the same way.
/// Source: glibc states 0.511 for exp, and 0.511 + |log of the result| 1.5 2^-15 for pow; the loops err by up to
/// 0.0031 in exp and by less than 2^-40 in pow.
constexpr double kExpMargin = 0.0145;
constexpr double kPowMargin = 0.0155;

/// pow is computed for these degrees, and for results between 2^-128 and 2^128, where its margin holds.
constexpr int kSmallestDegree = 2;
constexpr int kLargestDegree = 8;

/// The places of a call whose values the platform's own function must give.
struct OpenPlaces {
    static constexpr std::size_t kMost = 256;

    std::uint16_t places[kMost];
    std::size_t count = 0;
};

/// One version of the loops. x and y are the same vector, or do not overlap; n is at most OpenPlaces::kMost. Where a
/// result is certain it is written, elsewhere its argument is, and the place noted.
struct ElementaryKernels {
    const char* name;
    /// Of factor * x[i].
    void (*exp)(double factor, const double* x, double* y, std::size_t n, OpenPlaces& open);
    void (*pow)(const double* x, int degree, double* y, std::size_t n, OpenPlaces& open);
};

extern const ElementaryKernels kBaselineElementaryKernels;
#if defined(__x86_64__)
extern const ElementaryKernels kAvx2ElementaryKernels;
extern const ElementaryKernels kAvx512ElementaryKernels;
#endif

/// The versions that this processor can run, from slow to fast.
struct UsableElementaryKernels {
    const ElementaryKernels* versions[3];
    std::size_t count;
};

/// Returns: whether the calling thread rounds results to nearest, which every version of the loops counts on.
bool IsRoundedToNearest();

/// Asks the processor.
UsableElementaryKernels FindElementaryKernels();

/// Returns: the fastest version that this processor can run, found once.
const ElementaryKernels& FastestElementaryKernels();

}  // namespace KwSVM_700
