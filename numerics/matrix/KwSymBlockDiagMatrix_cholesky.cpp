// Block-diagonal matrix, Cholesky factor and what is done with it. Every block is a triangle of its own, and so is
// every element of a diagonal block; the factor and its products never leave them. Test:
// KwSymBlockDiagMatrix_cholesky_test.cpp.
#include "numerics/matrix/KwSymBlockDiagMatrix.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "numerics/matrix/determinant.h"
#include "numerics/matrix/packed_cholesky.h"
#include "numerics/matrix/resize_target.h"

namespace KwMath_930 {

// Calls visit(first row, order, packed triangle) for each dense block and each element of a diagonal block, in row
// order.
template <class Visit>
void KwSymBlockDiagMatrix::VisitTriangles(Visit visit) {
    for (int row = 0; row < fNRows;) {
        int first = 0;
        double* triangle = RowRun(row, first);
        const int order = EndOfRun(row) - row;
        visit(row, order, triangle);
        row += order;
    }
}

int KwSymBlockDiagMatrix::Factor(const std::vector<double>& ref, double tol, KwBitSet* zeros, bool check) {
    if (check && tol < 0.0) {
        return -1;
    }
    const auto isNegative = [](double value) { return value < 0.0; };
    if (fNRows >= 1 &&
        (std::cmp_less(ref.size(), fNRows) || (check && std::any_of(ref.begin(), ref.begin() + fNRows, isNegative)))) {
        return -1;
    }
    if (zeros != nullptr && zeros->Size() < fNRows) {
        zeros->Resize(fNRows, false);
    } else if (zeros != nullptr) {
        zeros->Clear();
    }
    int zeroPivots = 0;
    VisitTriangles([&](int first, int order, double* triangle) {
        zeroPivots += packed_cholesky::Factor(triangle, order, ref.data() + first, tol, zeros, first);
    });
    return zeroPivots;
}

int KwSymBlockDiagMatrix::LTChol(const std::vector<double>& ref, double tol, bool check) {
    return Factor(ref, tol, nullptr, check);
}

int KwSymBlockDiagMatrix::LTChol(const std::vector<double>& ref, double tol, KwBitSet& zeros, bool check) try {
    return Factor(ref, tol, &zeros, check);
} catch (...) {
    return -1;
}

int KwSymBlockDiagMatrix::LTChol(double tol, double& minDiag, bool check) {
    minDiag = -std::numeric_limits<double>::max();
    std::vector<double> ref;
    if (!ResizeTarget(ref, fNRows)) {
        return -1;
    }
    GetNCheckDiagonal(ref, tol, 1.0);
    const int zeroPivots = LTChol(ref, tol, check);
    for (int i = 0; zeroPivots >= 0 && i < fNRows; ++i) {
        const double element = KwSymBlockDiagMatrix::GetElem(i, i);
        minDiag = i == 0 || element < minDiag ? element : minDiag;
    }
    return zeroPivots;
}

void KwSymBlockDiagMatrix::GetNCheckDiagonal(std::vector<double>& diagonal, double /*a*/, double /*b*/) const {
    if (!ResizeTarget(diagonal, fNRows)) {
        return;
    }
    double largest = 0.0;
    for (int i = 0; i < fNRows; ++i) {
        largest = std::max(largest, KwSymBlockDiagMatrix::GetElem(i, i));
    }
    std::fill(diagonal.begin(), diagonal.end(), largest);
}

int KwSymBlockDiagMatrix::LTDetInverse(double* det, int job) {
    int zeroPivots = 0;
    for (int i = 0; i < fNRows; ++i) {
        zeroPivots += KwSymBlockDiagMatrix::GetElem(i, i) == 0.0 ? 1 : 0;
    }
    if (job % 10 != 0) {
        det[0] = zeroPivots > 0 ? 0.0 : 1.0;
        det[1] = 0.0;
        for (int i = 0; zeroPivots == 0 && i < fNRows; ++i) {
            det[0] *= KwSymBlockDiagMatrix::GetElem(i, i);
            NormaliseDeterminant(det);
        }
    }
    if (job / 10 != 0) {
        VisitTriangles([](int, int order, double* triangle) { packed_cholesky::Invert(triangle, order); });
    }
    return zeroPivots;
}

bool KwSymBlockDiagMatrix::LTInverse() {
    double det[2];
    LTDetInverse(det, 10);
    LTLTransL();
    return true;
}

void KwSymBlockDiagMatrix::LTLLTrans() {
    VisitTriangles([](int, int order, double* triangle) { packed_cholesky::MultiplyByTransposed(triangle, order); });
}

void KwSymBlockDiagMatrix::LTLTransL() {
    VisitTriangles(
        [](int, int order, double* triangle) { packed_cholesky::MultiplyTransposedByItself(triangle, order); });
}

int KwSymBlockDiagMatrix::LTSolve(const std::vector<double>& b, double tol, std::vector<double>& x) try {
    if (!(tol > 0.0) || fNRows < 0 || std::cmp_less(b.size(), fNRows)) {
        return -1;
    }
    if (&b == &x) {
        return KwSymBlockDiagMatrix::LTSolve(std::vector<double>(b), tol, x);
    }
    if (!ResizeTarget(x, fNRows)) {
        return -1;
    }
    GetDiagonal(x);
    const int zeroPivots = LTChol(x, tol, false);
    if (zeroPivots >= 0) {
        std::copy_n(b.data(), fNRows, x.data());
        VisitTriangles([&](int first, int order, const double* triangle) {
            packed_cholesky::SolveForward(triangle, order, x.data() + first);
            packed_cholesky::SolveBackward(triangle, order, x.data() + first);
        });
    }
    return zeroPivots;
} catch (...) {
    return -1;
}

int KwSymBlockDiagMatrix::CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) ? dense.CholInverse(ref, tol, target) : -1;
}

int KwSymBlockDiagMatrix::CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target,
                                      double& minDiag) const {
    KwSymMatrix dense;
    return CopyTo(dense) ? dense.CholInverse(ref, tol, target, minDiag) : -1;
}

int KwSymBlockDiagMatrix::CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target,
                                      KwBitSet& zeros) const {
    KwSymMatrix dense;
    return CopyTo(dense) ? dense.CholInverse(ref, tol, target, zeros) : -1;
}

bool KwSymBlockDiagMatrix::ComputeDeterminant(double tol, double* det) const {
    if (fNRows < 1) {
        return false;
    }
    KwSymBlockDiagMatrix factor(*this);
    double minDiag = 0.0;
    if (!factor.IsValidMatrix() || factor.LTChol(tol, minDiag, false) < 0) {
        return false;
    }
    factor.LTDetInverse(det, 1);
    SquareDeterminant(det);
    return true;
}

}  // namespace KwMath_930
