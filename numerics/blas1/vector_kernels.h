// The loops over vectors that lie dense in memory, in one version for each instruction set. Internal.
#pragma once

#include <cstddef>

namespace KwMath_930 {

/// One version of the loops. All versions give the same bits: each element is computed by itself, a product and a sum
/// are rounded apart. The vectors of a call do not overlap, or are the same vector.
struct VectorKernels {
    const char* name;
    void (*scale)(std::size_t n, double alpha, double* x);
    void (*addScaled)(std::size_t n, double alpha, const double* x, double* y);
    void (*swap)(std::size_t n, double* x, double* y);
    void (*rotate)(std::size_t n, double* x, double* y, double c, double s);
};

extern const VectorKernels kBaselineVectorKernels;
#if defined(__x86_64__)
extern const VectorKernels kAvx2VectorKernels;
extern const VectorKernels kAvx512VectorKernels;
#endif

/// The versions that this processor can run, from slow to fast.
struct UsableVectorKernels {
    const VectorKernels* versions[3];
    std::size_t count;
};

/// Asks the processor.
UsableVectorKernels FindVectorKernels();

/// Returns: the fastest version that this processor can run, found once.
const VectorKernels& FastestVectorKernels();

}  // namespace KwMath_930
