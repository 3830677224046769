// The walk over the elements of strided vectors, from the first element touched to the last. Internal.
#pragma once

#include <cstddef>

namespace KwMath_930::strided_walk {

/// Index of the first element that a walk of n > 0 elements touches: for a negative increment the far end.
constexpr std::ptrdiff_t First(int n, int inc) {
    return inc < 0 ? std::ptrdiff_t{1 - n} * inc : 0;
}

/// Calls visit(index) for each of n elements of one vector.
template <class Action>
void Visit(int n, int inc, Action visit) {
    std::ptrdiff_t i = First(n, inc);
    for (int k = 0; k < n; ++k) {
        visit(i);
        i += inc;
    }
}

/// Calls visit(index, index) for each of n pairs of elements of two vectors.
template <class Action>
void Visit(int n, int incx, int incy, Action visit) {
    std::ptrdiff_t i = First(n, incx);
    std::ptrdiff_t j = First(n, incy);
    for (int k = 0; k < n; ++k) {
        visit(i, j);
        i += incx;
        j += incy;
    }
}

}  // namespace KwMath_930::strided_walk
