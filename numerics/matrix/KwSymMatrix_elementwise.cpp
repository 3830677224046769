// Symmetric matrix, element by element: scaling, trace, extremes, clean-up of values. Walks the packed triangle so that
// each stored element is touched once. Test: KwSymMatrix_elementwise_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930 {

namespace {

// Calls visit(i, j, element) for every stored element below the diagonal, row by row.
template <class Data, class Visit>
void VisitOffDiagonal(Data& data, int order, Visit visit) {
    for (int i = 1; i < order; ++i) {
        auto* row = data.data() + packed_triangle::RowStart(i);
        for (int j = 0; j < i; ++j) {
            visit(i, j, row[j]);
        }
    }
}

// The extremes seen so far, from the values that any finite element replaces; NaN never does.
struct Extremes {
    double largest = -std::numeric_limits<double>::max();
    double smallest = std::numeric_limits<double>::max();

    void See(double value) {
        if (value > largest) {
            largest = value;
        }
        if (value < smallest) {
            smallest = value;
        }
    }
};

}  // namespace

void KwSymMatrix::AddToDiagonal(double value) {
    packed_triangle::VisitDiagonal(fNRows, [&](int, std::size_t index) { fData[index] += value; });
}

void KwSymMatrix::MultiplyByNumber(double factor) {
    for (double& element : fData) {
        element *= factor;
    }
}

void KwSymMatrix::ChangeSign() {
    for (double& element : fData) {
        element = -element;
    }
}

double KwSymMatrix::Trace() const {
    double sum = 0.0;
    packed_triangle::VisitDiagonal(fNRows, [&](int, std::size_t index) { sum += fData[index]; });
    return sum;
}

void KwSymMatrix::MaxMinDiag(double& largest, double& smallest) const {
    if (fNRows < 1) {
        return;
    }
    Extremes diagonal;
    packed_triangle::VisitDiagonal(fNRows, [&](int, std::size_t index) { diagonal.See(fData[index]); });
    largest = diagonal.largest;
    smallest = diagonal.smallest;
}

void KwSymMatrix::MaxMinDiagOffDiag(double& largestDiag, double& smallestDiag, double& largestOff,
                                    double& smallestOff) const {
    if (fNRows < 1) {
        return;
    }
    KwSymMatrix::MaxMinDiag(largestDiag, smallestDiag);
    Extremes offDiagonal;
    VisitOffDiagonal(fData, fNRows, [&](int, int, double element) { offDiagonal.See(element); });
    largestOff = offDiagonal.largest;
    smallestOff = offDiagonal.smallest;
}

void KwSymMatrix::ZeroOutNonDiag(double tol) {
    if (!(tol > 0.0)) {
        return;
    }
    const auto diagonal = [this](int i) { return std::abs(fData[packed_triangle::Index(i, i)]); };
    VisitOffDiagonal(fData, fNRows, [&](int i, int j, double& element) {
        if (tol * std::sqrt(diagonal(i) * diagonal(j)) >= std::abs(element)) {
            element = 0.0;
        }
    });
}

void KwSymMatrix::ZeroOutAllSmall(double tol) {
    if (!(tol > 0.0)) {
        return;
    }
    double largest = 0.0;
    for (const double element : fData) {
        largest = std::max(largest, std::abs(element));
    }
    const double threshold = tol * largest;
    if (!(threshold > 0.0)) {
        return;
    }
    for (double& element : fData) {
        if (std::abs(element) < threshold) {
            element = 0.0;
        }
    }
}

bool KwSymMatrix::AdjustOffDiagCorr(double eps) {
    if (eps < 0.0 || eps >= 1.0) {
        return false;
    }
    const double bound = 1.0 - eps;
    VisitOffDiagonal(fData, fNRows, [&](int, int, double& element) {
        if (element >= 1.0) {
            element = bound;
        } else if (element <= -1.0) {
            element = -bound;
        }
    });
    return true;
}

}  // namespace KwMath_930
