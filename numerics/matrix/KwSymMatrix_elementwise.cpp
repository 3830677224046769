// Symmetric matrix, element by element: scaling, trace, extremes, clean-up of values. Walks the packed triangle so that
// each stored element is touched once. Test: KwSymMatrix_elementwise_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "numerics/containers/KwBitSet.h"
#include "numerics/matrix/IKwRectMatrix.h"
#include "numerics/matrix/index_checks.h"
#include "numerics/matrix/matrix_operand.h"
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
    return KwSymMatrix::SubSymTrace(0);
}

double KwSymMatrix::SubSymTrace(int first) const {
    double sum = 0.0;
    for (int i = first; first >= 0 && i < fNRows; ++i) {
        sum += fData[packed_triangle::Index(i, i)];
    }
    return sum;
}

bool KwSymMatrix::ComputeAXpY(double a, const IKwSymMatrix& x) try {
    if (!AgreesWith(x)) {
        return false;
    }
    const SymOperand operand(x);
    if (operand.Order() != fNRows) {
        return false;
    }
    for (std::size_t k = 0; k < fData.size(); ++k) {
        fData[k] += a * operand.Packed()[k];
    }
    return true;
} catch (...) {
    return false;
}

double KwSymMatrix::TraceOfProduct(const IKwSymMatrix& m) const {
    return AgreesWith(m) ? TraceOfProductSubSym(m, 0) : 0.0;
}

double KwSymMatrix::TraceOfProductSubSym(const IKwSymMatrix& m, int first) const try {
    if (!HasPart(first, m.GetNRows())) {
        return 0.0;
    }
    const SymOperand operand(m);
    const double* element = operand.Packed();
    double diagonal = 0.0;
    double below = 0.0;
    for (int i = 0; i < operand.Order(); ++i) {
        const double* run = fData.data() + packed_triangle::RowStart(first + i) + first;
        for (int j = 0; j < i; ++j) {
            below += run[j] * *element++;
        }
        diagonal += run[i] * *element++;
    }
    return diagonal + 2.0 * below;
} catch (...) {
    return 0.0;
}

double KwSymMatrix::TraceOfProductSubMatSym(const IKwRectMatrix& r, int first) const try {
    if (r.GetNRows() != r.GetNCols() || !HasPart(first, r.GetNRows())) {
        return 0.0;
    }
    const RectOperand operand(r);
    double trace = 0.0;
    for (int i = 0; i < operand.Rows(); ++i) {
        for (int j = 0; j < operand.Cols(); ++j) {
            trace += operand.Row(i)[j] * fData[packed_triangle::Index(first + i, first + j)];
        }
    }
    return trace;
} catch (...) {
    return 0.0;
}

bool KwSymMatrix::AddToDiagonalPart(double value, int first, int count) {
    if (!HasPart(first, count)) {
        return false;
    }
    for (int i = first; i < first + count; ++i) {
        fData[packed_triangle::Index(i, i)] += value;
    }
    return true;
}

int KwSymMatrix::ReplaceDiagZeroes(double value) {
    int count = 0;
    packed_triangle::VisitDiagonal(fNRows, [&](int, std::size_t index) {
        if (fData[index] == 0.0) {
            fData[index] = value;
            ++count;
        }
    });
    return count;
}

bool KwSymMatrix::SetCovarZeros(const KwBitSet& zeros) {
    if (fNRows < 0 || zeros.Size() < fNRows) {
        return false;
    }
    for (int i = 0; i < fNRows; ++i) {
        if (zeros.IsIn(i)) {
            KwSymMatrix::ZeroOut(i);
        }
    }
    return true;
}

bool KwSymMatrix::ZeroOutRedundant(const KwBitSet& redundant) {
    return SetCovarZeros(redundant);
}

int KwSymMatrix::ZeroOutRowsForSmallDiag(double tol) {
    if (!(tol >= 0.0)) {
        return -1;
    }
    double largest = 0.0;
    double smallest = 0.0;
    KwSymMatrix::MaxMinDiag(largest, smallest);
    const double threshold = tol * largest;
    int count = 0;
    for (int i = 0; i < fNRows; ++i) {
        if (fData[packed_triangle::Index(i, i)] <= threshold) {
            KwSymMatrix::ZeroOut(i);
            ++count;
        }
    }
    return count;
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
