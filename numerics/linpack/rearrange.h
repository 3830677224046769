// The first exchanges of the pivoting decompositions: what the caller marked > 0 goes to the front, < 0 to the end, and
// jpvt from then on holds original numbers. Internal.
#pragma once

#include <utility>

namespace KwMath_930::linpack {

/// What stays free to be exchanged: first .. last-1, counted from 0.
struct FreeRange {
    int first;
    int last;
};

/// exchange(low, high), low < high, exchanges two items of the matrix; it is called for the leading ones in order, then
/// for the trailing ones from the end.
template <class Exchange>
FreeRange MoveMarkedItems(int p, int* jpvt, Exchange exchange) {
    FreeRange range{0, p};
    for (int j = 0; j < p; ++j) {
        const int mark = jpvt[j];
        jpvt[j] = mark < 0 ? -(j + 1) : j + 1;
        if (mark > 0) {
            if (j != range.first) {
                exchange(range.first, j);
            }
            jpvt[j] = jpvt[range.first];
            jpvt[range.first] = j + 1;
            ++range.first;
        }
    }
    for (int j = p - 1; j >= range.first; --j) {
        if (jpvt[j] < 0) {
            jpvt[j] = -jpvt[j];
            --range.last;
            if (j != range.last) {
                exchange(j, range.last);
                std::swap(jpvt[j], jpvt[range.last]);
            }
        }
    }
    return range;
}

}  // namespace KwMath_930::linpack
