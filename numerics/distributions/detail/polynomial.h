// Horner's rule for a table of coefficients, constant first.
#pragma once

#include <cstddef>

namespace KwMath_930::detail {

template <std::size_t N>
constexpr double Polynomial(const double (&coefficients)[N], double x) {
    double sum = coefficients[N - 1];
    for (std::size_t i = N - 1; i > 0; --i) {
        sum = sum * x + coefficients[i - 1];
    }
    return sum;
}

}  // namespace KwMath_930::detail
