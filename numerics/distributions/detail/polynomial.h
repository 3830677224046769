// The value of a polynomial from the table of its coefficients, constant first: Horner's rule for the even and the odd
// powers by themselves, because one chain of sums alone waits for its own last one.
#pragma once

#include <cstddef>

namespace KwMath_930::detail {

template <std::size_t N>
constexpr double Polynomial(const double (&coefficients)[N], double x) {
    static_assert(N >= 2);
    constexpr std::size_t kTop = N % 2 == 0 ? N - 2 : N - 1;  // the highest even power
    const double square = x * x;
    double even = coefficients[kTop];
    double odd = coefficients[N % 2 == 0 ? N - 1 : N - 2];
    for (std::size_t i = kTop; i > 0; i -= 2) {
        even = even * square + coefficients[i - 2];
    }
    for (std::size_t i = N % 2 == 0 ? N - 1 : N - 2; i > 1; i -= 2) {
        odd = odd * square + coefficients[i - 2];
    }
    return even + x * odd;
}

}  // namespace KwMath_930::detail
