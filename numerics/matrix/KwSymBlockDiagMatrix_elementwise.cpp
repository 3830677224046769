// Block-diagonal matrix, element by element: scaling, traces, extremes, clean-up. Walks the stored runs of the rows.
// Test: KwSymBlockDiagMatrix_test.cpp.
#include "numerics/matrix/KwSymBlockDiagMatrix.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "numerics/matrix/matrix_operand.h"
#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930 {

void KwSymBlockDiagMatrix::AddToDiagonal(double value) {
    for (int i = 0; i < fNRows; ++i) {
        int first = 0;
        RowRun(i, first)[i - first] += value;
    }
}

void KwSymBlockDiagMatrix::ChangeSign() {
    KwSymBlockDiagMatrix::MultiplyByNumber(-1.0);
}

void KwSymBlockDiagMatrix::MultiplyByNumber(double factor) {
    for (int i = 0; i < fNRows; ++i) {
        int first = 0;
        double* run = RowRun(i, first);
        std::for_each(run, run + (i + 1 - first), [factor](double& element) { element *= factor; });
    }
}

double KwSymBlockDiagMatrix::Trace() const {
    double sum = 0.0;
    for (int i = 0; i < fNRows; ++i) {
        sum += KwSymBlockDiagMatrix::GetElem(i, i);
    }
    return sum;
}

bool KwSymBlockDiagMatrix::ComputeAXpY(double a, const IKwSymMatrix& x) try {
    const SymOperand operand(x);
    if (fNRows < 0 || operand.Order() != fNRows) {
        return false;
    }
    for (int i = 0; i < fNRows; ++i) {
        int first = 0;
        RowRun(i, first);
        const double* row = operand.Packed() + packed_triangle::RowStart(i);
        if (std::any_of(row, row + first, [a](double element) { return !(a * element == 0.0); })) {
            return false;
        }
    }
    for (int i = 0; i < fNRows; ++i) {
        int first = 0;
        double* run = RowRun(i, first);
        const double* row = operand.Packed() + packed_triangle::RowStart(i);
        for (int j = first; j <= i; ++j) {
            run[j - first] += a * row[j];
        }
    }
    return true;
} catch (...) {
    return false;
}

double KwSymBlockDiagMatrix::TraceOfProduct(const IKwSymMatrix& m) const {
    if (fNRows < 0 || m.GetNRows() != fNRows) {
        return 0.0;
    }
    double diagonal = 0.0;
    double below = 0.0;
    for (int i = 0; i < fNRows; ++i) {
        int first = 0;
        const double* run = RowRun(i, first);
        for (int j = first; j < i; ++j) {
            below += run[j - first] * m.GetElem(i, j);
        }
        diagonal += run[i - first] * m.GetElem(i, i);
    }
    return diagonal + 2.0 * below;
}

void KwSymBlockDiagMatrix::MaxMinDiag(double& largest, double& smallest) const {
    if (fNRows < 1) {
        return;
    }
    largest = -std::numeric_limits<double>::max();
    smallest = std::numeric_limits<double>::max();
    for (int i = 0; i < fNRows; ++i) {
        const double element = KwSymBlockDiagMatrix::GetElem(i, i);
        largest = element > largest ? element : largest;
        smallest = element < smallest ? element : smallest;
    }
}

void KwSymBlockDiagMatrix::MaxMinDiagOffDiag(double& largestDiag, double& smallestDiag, double& largestOff,
                                             double& smallestOff) const {
    if (fNRows < 1) {
        return;
    }
    KwSymBlockDiagMatrix::MaxMinDiag(largestDiag, smallestDiag);
    largestOff = -std::numeric_limits<double>::max();
    smallestOff = std::numeric_limits<double>::max();
    for (int i = 1; i < fNRows; ++i) {
        int first = 0;
        const double* run = RowRun(i, first);
        // The zeros left of the blocks count too.
        for (int j = first > 0 ? first - 1 : 0; j < i; ++j) {
            const double element = j < first ? 0.0 : run[j - first];
            largestOff = element > largestOff ? element : largestOff;
            smallestOff = element < smallestOff ? element : smallestOff;
        }
    }
}

void KwSymBlockDiagMatrix::ZeroOutNonDiag(double tol) {
    for (KwSymMatrix& block : fDenseBlocks) {
        block.ZeroOutNonDiag(tol);
    }
}

}  // namespace KwMath_930
