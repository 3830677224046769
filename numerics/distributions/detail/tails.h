// A probability and its complement, each computed so that it keeps its relative accuracy when it is small.
#pragma once

namespace KwMath_930::detail {

struct Tails {
    double lower = 0.0;
    double upper = 1.0;

    static Tails FromLower(double p) { return {p, 1.0 - p}; }
    static Tails FromUpper(double q) { return {1.0 - q, q}; }
    Tails Swapped() const { return {upper, lower}; }
};

}  // namespace KwMath_930::detail
