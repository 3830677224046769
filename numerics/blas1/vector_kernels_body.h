// The dense loops, for packs of as many doubles as the source that includes it asks for. Included only by the sources
// vector_kernels_<set>.cpp, each compiled for its own instruction set; everything here has internal linkage and calls
// nothing outside, so that no code for one set can be linked into another. Internal.
#pragma once

#include <cstddef>

#include "numerics/blas1/vector_kernels.h"

namespace KwMath_930 {
namespace {

// A step of a loop is written once, for Value: a pack of elements in one register, or a single element.
template <class Value>
struct As {
    // At any address that a double may have.
    static Value Load(const double* from) {
        Value value;
        __builtin_memcpy(&value, from, sizeof value);
        return value;
    }
    static void Store(double* to, Value value) { __builtin_memcpy(to, &value, sizeof value); }
};

// Pack is a vector type of the compiler, given from outside: g++ 12 silently loses the size of one that depends on a
// template parameter.
template <class Pack>
struct DenseLoops {
    static constexpr std::size_t kPack = sizeof(Pack) / sizeof(double);
    static_assert(kPack > 1);
    static constexpr std::size_t kGroup = 4 * kPack;

    // Calls step(as, k) for packs that start at element k, four in a row, then for the elements that are left.
    template <class Step>
    static void Visit(std::size_t n, Step step) {
        std::size_t k = 0;
        for (; n - k >= kGroup; k += kGroup) {
            step(As<Pack>(), k);
            step(As<Pack>(), k + kPack);
            step(As<Pack>(), k + 2 * kPack);
            step(As<Pack>(), k + 3 * kPack);
        }
        for (; k < n; ++k) {
            step(As<double>(), k);
        }
    }

    static void Scale(std::size_t n, double alpha, double* x) {
        Visit(n, [=](auto as, std::size_t k) { as.Store(x + k, alpha * as.Load(x + k)); });
    }

    static void AddScaled(std::size_t n, double alpha, const double* x, double* y) {
        Visit(n, [=](auto as, std::size_t k) { as.Store(y + k, as.Load(y + k) + alpha * as.Load(x + k)); });
    }

    static void Swap(std::size_t n, double* x, double* y) {
        Visit(n, [=](auto as, std::size_t k) {
            const auto old = as.Load(x + k);
            as.Store(x + k, as.Load(y + k));
            as.Store(y + k, old);
        });
    }

    static void Rotate(std::size_t n, double* x, double* y, double c, double s) {
        Visit(n, [=](auto as, std::size_t k) {
            const auto oldX = as.Load(x + k);
            const auto oldY = as.Load(y + k);
            as.Store(y + k, c * oldY - s * oldX);
            as.Store(x + k, c * oldX + s * oldY);
        });
    }

    static constexpr VectorKernels Table(const char* name) { return {name, Scale, AddScaled, Swap, Rotate}; }
};

}  // namespace
}  // namespace KwMath_930
