// A strided vector in the middle of guard cells, and comparisons of doubles bit by bit.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <vector>

namespace blas_test {

/// Lengths that hit every tail of the unrolled loops, and a long one.
inline const std::vector<int> kLengths = {-3, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 100};
inline const std::vector<int> kIncrements = {-3, -2, -1, 0, 1, 2, 3};

inline std::uint64_t Bits(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

inline std::vector<std::uint64_t> Bits(const std::vector<double>& values) {
    std::vector<std::uint64_t> bits;
    for (const double value : values)
        bits.push_back(Bits(value));
    return bits;
}

/// Returns: how many doubles lie from a to b.
inline std::uint64_t UlpsBetween(double a, double b) {
    const auto ordered = [](double value) {
        const auto bits = std::bit_cast<std::int64_t>(value);
        return bits < 0 ? std::int64_t{1} - (bits & INT64_MAX) : bits;
    };
    const std::int64_t difference = ordered(a) - ordered(b);
    return static_cast<std::uint64_t>(difference < 0 ? -difference : difference);
}

/// Random values of mixed sign and magnitude wherever a walk of n elements with the increment goes, and around.
class GuardedVector {
public:
    GuardedVector(int n, int inc, unsigned seed)
        : fCells(2 * kGuard + static_cast<std::size_t>((n > 0 ? n : 0) * (std::abs(inc) + 1))) {
        std::mt19937_64 engine(seed);
        std::uniform_real_distribution<double> mantissa(-1.0, 1.0);
        std::uniform_int_distribution<int> exponent(-6, 6);
        for (double& cell : fCells)
            cell = std::ldexp(mantissa(engine), exponent(engine));
    }

    double* Data() { return fCells.data() + kGuard; }
    const std::vector<double>& Cells() const { return fCells; }
    std::vector<std::uint64_t> CellBits() const { return Bits(fCells); }

private:
    static constexpr std::size_t kGuard = 5;
    std::vector<double> fCells;
};

/// Calls test(n, incx, incy) for every combination.
template <class Test>
void ForEachWalk(Test test) {
    for (const int n : kLengths)
        for (const int incx : kIncrements)
            for (const int incy : kIncrements) {
                SCOPED_TRACE(testing::Message() << "n " << n << " incx " << incx << " incy " << incy);
                test(n, incx, incy);
            }
}

}  // namespace blas_test
