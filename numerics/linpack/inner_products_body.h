// The inner loops on packs of four doubles, which the compiler splits where the registers are smaller. Included only by
// the sources inner_products_<set>.cpp, each compiled for its own instruction set; everything here has internal
// linkage.
#pragma once

#include <cstddef>

#include "numerics/linpack/inner_products.h"

namespace KwMath_930::linpack {
namespace {

typedef double Pack __attribute__((vector_size(32)));
constexpr std::ptrdiff_t kPack = 4;

// At any address that a double may have. By reference: a pack as a result would need a fixed calling convention.
inline void Load(const double* from, Pack& pack) {
    __builtin_memcpy(&pack, from, sizeof pack);
}

inline void Store(const Pack& pack, double* to) {
    __builtin_memcpy(to, &pack, sizeof pack);
}

inline void AddProduct(const double* x, const double* y, Pack& sum) {
    Pack a;
    Pack b;
    Load(x, a);
    Load(y, b);
    sum += a * b;
}

inline double SumOfLanes(const Pack& pack) {
    return (pack[0] + pack[2]) + (pack[1] + pack[3]);
}

double DotLoop(std::ptrdiff_t n, const double* x, const double* y) {
    std::ptrdiff_t i = 0;
    double sum = 0.0;
    if (n >= kPack) {
        Pack sums[4] = {};
        for (; n - i >= 4 * kPack; i += 4 * kPack) {
            AddProduct(x + i, y + i, sums[0]);
            AddProduct(x + i + kPack, y + i + kPack, sums[1]);
            AddProduct(x + i + 2 * kPack, y + i + 2 * kPack, sums[2]);
            AddProduct(x + i + 3 * kPack, y + i + 3 * kPack, sums[3]);
        }
        for (; n - i >= kPack; i += kPack) {
            AddProduct(x + i, y + i, sums[0]);
        }
        const Pack all = (sums[0] + sums[1]) + (sums[2] + sums[3]);
        sum = SumOfLanes(all);
    }
    for (; i < n; ++i) {
        sum += x[i] * y[i];
    }
    return sum;
}

void AddScaledLoop(std::ptrdiff_t n, double factor, const double* x, double* y) {
    std::ptrdiff_t i = 0;
    for (; n - i >= kPack; i += kPack) {
        Pack a;
        Pack sum;
        Load(x + i, a);
        Load(y + i, sum);
        sum += factor * a;
        Store(sum, y + i);
    }
    for (; i < n; ++i) {
        y[i] += factor * x[i];
    }
}

void DotFourLoop(std::ptrdiff_t n, const double* const* x, const double* y, double* sums) {
    const double* x0 = x[0];
    const double* x1 = x[1];
    const double* x2 = x[2];
    const double* x3 = x[3];
    Pack s[4] = {};
    std::ptrdiff_t i = 0;
    for (; n - i >= kPack; i += kPack) {
        AddProduct(x0 + i, y + i, s[0]);
        AddProduct(x1 + i, y + i, s[1]);
        AddProduct(x2 + i, y + i, s[2]);
        AddProduct(x3 + i, y + i, s[3]);
    }
    for (int c = 0; c < 4; ++c) {
        sums[c] = SumOfLanes(s[c]);
    }
    for (; i < n; ++i) {
        sums[0] += x0[i] * y[i];
        sums[1] += x1[i] * y[i];
        sums[2] += x2[i] * y[i];
        sums[3] += x3[i] * y[i];
    }
}

void AddFourLoop(std::ptrdiff_t n, const double* factors, const double* const* x, double* y) {
    const double f0 = factors[0];
    const double f1 = factors[1];
    const double f2 = factors[2];
    const double f3 = factors[3];
    const double* x0 = x[0];
    const double* x1 = x[1];
    const double* x2 = x[2];
    const double* x3 = x[3];
    std::ptrdiff_t i = 0;
    for (; n - i >= kPack; i += kPack) {
        Pack sum;
        Pack a;
        Load(y + i, sum);
        Load(x0 + i, a);
        sum += f0 * a;
        Load(x1 + i, a);
        sum += f1 * a;
        Load(x2 + i, a);
        sum += f2 * a;
        Load(x3 + i, a);
        sum += f3 * a;
        Store(sum, y + i);
    }
    for (; i < n; ++i) {
        y[i] = (((y[i] + f0 * x0[i]) + f1 * x1[i]) + f2 * x2[i]) + f3 * x3[i];
    }
}

inline void AddMultiple(double factor, const double* row, Pack& sum) {
    Pack a;
    Load(row, a);
    sum += factor * a;
}

void SolveRowLoop(std::ptrdiff_t n, const double* x, double* rows) {
    Pack s[4] = {};
    std::ptrdiff_t i = 0;
    for (; n - i >= 4; i += 4) {
        const double* four = rows + i * kPack;
        AddMultiple(x[i], four, s[0]);
        AddMultiple(x[i + 1], four + kPack, s[1]);
        AddMultiple(x[i + 2], four + 2 * kPack, s[2]);
        AddMultiple(x[i + 3], four + 3 * kPack, s[3]);
    }
    // The last rows come last: they are the ones that the caller has just made.
    Pack all = (s[0] + s[1]) + (s[2] + s[3]);
    for (; i < n; ++i) {
        AddMultiple(x[i], rows + i * kPack, all);
    }
    Pack row;
    Load(rows + n * kPack, row);
    Store((row - all) / x[n], rows + n * kPack);
}

void GramRowsLoop(std::ptrdiff_t n, const double* rows, double* gram) {
    Pack s[4] = {};
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        const double* row = rows + i * kPack;
        AddMultiple(row[0], row, s[0]);
        AddMultiple(row[1], row, s[1]);
        AddMultiple(row[2], row, s[2]);
        AddMultiple(row[3], row, s[3]);
    }
    for (int c = 0; c < 4; ++c) {
        Store(s[c], gram + c * kPack);
    }
}

constexpr InnerLoops Table(const char* name) {
    return {name, DotLoop, AddScaledLoop, DotFourLoop, AddFourLoop, SolveRowLoop, GramRowsLoop};
}

}  // namespace
}  // namespace KwMath_930::linpack
