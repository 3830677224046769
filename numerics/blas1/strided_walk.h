// The walk over the elements of strided vectors, from the first element touched to the last. Internal.
#pragma once

#include <cstddef>

namespace KwMath_930::strided_walk {

/// Index of the first element that a walk of n > 0 elements touches: for a negative increment the far end.
constexpr std::ptrdiff_t First(int n, int inc) {
    return inc < 0 ? std::ptrdiff_t{1 - n} * inc : 0;
}

/// Calls visit(index) for each of n elements of one vector, in order; four to a round, which spares the loop's own
/// work.
template <class Action>
void Visit(int n, int inc, Action visit) {
    const std::ptrdiff_t step = inc;
    std::ptrdiff_t i = First(n, inc);
    int k = 0;
    for (; n - k >= 4; k += 4) {
        visit(i);
        visit(i + step);
        visit(i + 2 * step);
        visit(i + 3 * step);
        i += 4 * step;
    }
    for (; k < n; ++k) {
        visit(i);
        i += step;
    }
}

/// Calls visit(index, index) for each of n pairs of elements of two vectors, in order; four to a round.
template <class Action>
void Visit(int n, int incx, int incy, Action visit) {
    const std::ptrdiff_t stepX = incx;
    const std::ptrdiff_t stepY = incy;
    std::ptrdiff_t i = First(n, incx);
    std::ptrdiff_t j = First(n, incy);
    int k = 0;
    for (; n - k >= 4; k += 4) {
        visit(i, j);
        visit(i + stepX, j + stepY);
        visit(i + 2 * stepX, j + 2 * stepY);
        visit(i + 3 * stepX, j + 3 * stepY);
        i += 4 * stepX;
        j += 4 * stepY;
    }
    for (; k < n; ++k) {
        visit(i, j);
        i += stepX;
        j += stepY;
    }
}

}  // namespace KwMath_930::strided_walk
