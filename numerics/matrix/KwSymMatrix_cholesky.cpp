// Symmetric matrix, Cholesky factor and what is done with it: solutions, inverses, determinants, rank-one changes. All
// works in place on the packed rows; a zero pivot is skipped wherever it would divide.
// Test: KwSymMatrix_cholesky_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "numerics/blas1/Blas1.h"
#include "numerics/containers/KwBitSet.h"
#include "numerics/matrix/determinant.h"
#include "numerics/matrix/matrix_operand.h"
#include "numerics/matrix/packed_cholesky.h"
#include "numerics/matrix/packed_triangle.h"
#include "numerics/matrix/resize_target.h"

namespace KwMath_930 {

using packed_triangle::RowStart;

namespace {

// The argument checks of the factorisations.
bool IsReference(const std::vector<double>& ref, double tol, int order) {
    return !(tol < 0.0) && std::none_of(ref.begin(), ref.begin() + order, [](double value) { return value < 0.0; });
}

double SmallestDiagonal(const std::vector<double>& packed, int order) {
    double smallest = -std::numeric_limits<double>::max();
    packed_triangle::VisitDiagonal(order, [&](int i, std::size_t index) {
        smallest = i == 0 || packed[index] < smallest ? packed[index] : smallest;
    });
    return smallest;
}

}  // namespace

int KwSymMatrix::LTChol(const std::vector<double>& ref, double tol, bool check) {
    if (check && tol < 0.0) {
        return -1;
    }
    if (fNRows < 1) {
        return 0;
    }
    if (std::cmp_less(ref.size(), fNRows) || (check && !IsReference(ref, tol, fNRows))) {
        return -1;
    }
    return packed_cholesky::Factor(fData.data(), fNRows, ref.data(), tol, nullptr);
}

int KwSymMatrix::LTChol(const std::vector<double>& ref, double tol, KwBitSet& zeros, bool check) try {
    if (check && tol < 0.0) {
        return -1;
    }
    if (fNRows >= 1 && (std::cmp_less(ref.size(), fNRows) || (check && !IsReference(ref, tol, fNRows)))) {
        return -1;
    }
    if (zeros.Size() < fNRows) {
        zeros.Resize(fNRows, false);
    } else {
        zeros.Clear();
    }
    return packed_cholesky::Factor(fData.data(), fNRows, ref.data(), tol, &zeros);
} catch (...) {
    return -1;
}

int KwSymMatrix::LTChol(double tol, double& minDiag, bool check) try {
    minDiag = -std::numeric_limits<double>::max();
    std::vector<double> ref;
    if (!ResizeTarget(ref, fNRows)) {
        return -1;
    }
    GetNCheckDiagonal(ref, tol, 1.0);
    const int zeroPivots = LTChol(ref, tol, check);
    if (zeroPivots >= 0) {
        minDiag = SmallestDiagonal(fData, fNRows);
    }
    return zeroPivots;
} catch (...) {
    return -1;
}

void KwSymMatrix::GetNCheckDiagonal(std::vector<double>& diagonal, double /*a*/, double /*b*/) const {
    if (!ResizeTarget(diagonal, fNRows)) {
        return;
    }
    double largest = 0.0;
    packed_triangle::VisitDiagonal(
        fNRows, [&](int, std::size_t index) { largest = fData[index] > largest ? fData[index] : largest; });
    std::fill(diagonal.begin(), diagonal.end(), largest);
}

int KwSymMatrix::CholIndNonRed(int k, double tol, std::vector<int>& rows) try {
    if (!HasPart(0, k) || !(tol >= 0.0)) {
        return -1;
    }
    std::vector<double> ref;
    if (!ResizeTarget(ref, fNRows)) {
        return -1;
    }
    KwSymMatrix::GetDiagonal(ref);
    std::vector<int> kept;
    kept.reserve(static_cast<std::size_t>(k));
    packed_cholesky::Factor(fData.data(), k, ref.data(), tol, nullptr);
    for (int i = 0; i < k; ++i) {
        if (fData[packed_triangle::Index(i, i)] != 0.0) {
            kept.push_back(i);
        }
    }
    rows.swap(kept);
    return static_cast<int>(rows.size());
} catch (...) {
    return -1;
}

int KwSymMatrix::LTSubstitute(const std::vector<double>& b, std::vector<double>& x) const {
    if (fNRows < 0 || std::cmp_less(b.size(), fNRows) || !ResizeTarget(x, fNRows)) {
        return -1;
    }
    if (&b != &x) {
        std::copy_n(b.data(), fNRows, x.data());
    }
    packed_cholesky::SolveForward(fData.data(), fNRows, x.data());
    packed_cholesky::SolveBackward(fData.data(), fNRows, x.data());
    return 0;
}

bool KwSymMatrix::TSolveSubst(const std::vector<double>& b, std::vector<double>& x, bool trans) const {
    if (fNRows < 0 || std::cmp_less(b.size(), fNRows) || !ResizeTarget(x, fNRows)) {
        return false;
    }
    if (&b != &x) {
        std::copy_n(b.data(), fNRows, x.data());
    }
    if (trans) {
        packed_cholesky::SolveBackward(fData.data(), fNRows, x.data());
    } else {
        packed_cholesky::SolveForward(fData.data(), fNRows, x.data());
    }
    return true;
}

int KwSymMatrix::LTSolve(const std::vector<double>& b, double tol, std::vector<double>& x) {
    if (!(tol > 0.0) || fNRows < 0 || std::cmp_less(b.size(), fNRows)) {
        return -1;
    }
    if (&b == &x) {
        std::vector<double> operand;
        return ResizeNCopy(operand, b) ? KwSymMatrix::LTSolve(operand, tol, x) : -1;
    }
    if (!ResizeTarget(x, fNRows)) {
        return -1;
    }
    GetDiagonal(x);
    const int zeroPivots = LTChol(x, tol, false);
    if (zeroPivots < 0) {
        return zeroPivots;
    }
    return KwSymMatrix::LTSubstitute(b, x) < 0 ? -1 : zeroPivots;
}

int KwSymMatrix::LTDetInverse(double* det, int job) {
    int zeroPivots = 0;
    packed_triangle::VisitDiagonal(fNRows, [&](int, std::size_t index) { zeroPivots += fData[index] == 0.0 ? 1 : 0; });
    if (job % 10 != 0) {
        det[0] = zeroPivots > 0 ? 0.0 : 1.0;
        det[1] = 0.0;
        packed_triangle::VisitDiagonal(zeroPivots > 0 ? 0 : fNRows, [&](int, std::size_t index) {
            det[0] *= fData[index];
            NormaliseDeterminant(det);
        });
    }
    if (job / 10 != 0) {
        packed_cholesky::Invert(fData.data(), fNRows);
    }
    return zeroPivots;
}

bool KwSymMatrix::LTInverse() {
    double det[2];
    LTDetInverse(det, 10);
    LTLTransL();
    return true;
}

void KwSymMatrix::LTLLTrans() {
    packed_cholesky::MultiplyByTransposed(fData.data(), fNRows);
}

void KwSymMatrix::LTLTransL() {
    packed_cholesky::MultiplyTransposedByItself(fData.data(), fNRows);
}

// The target of CholInverse, as a copy of this matrix in all three counts; null when it is not of the dense kind, ref
// is too short or the copy failed.
KwSymMatrix* KwSymMatrix::TakeCopyTo(IKwSymMatrix& target, const std::vector<double>& ref) const {
    auto* const dense = dynamic_cast<KwSymMatrix*>(&target);
    if (!IsDenseKind(target) || dense == nullptr || fNRows < 0 || std::cmp_less(ref.size(), fNRows)) {
        return nullptr;
    }
    if (dense != this) {
        dense->CopyFrom(*this);
    }
    return dense->fNRows < 0 ? nullptr : dense;
}

int KwSymMatrix::CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target) const {
    KwSymMatrix* const dense = TakeCopyTo(target, ref);
    const int zeroPivots = dense != nullptr ? dense->LTChol(ref, tol, false) : -1;
    return zeroPivots < 0 ? zeroPivots : dense->InvertFactor(zeroPivots);
}

int KwSymMatrix::CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target, double& minDiag) const {
    KwSymMatrix* const dense = TakeCopyTo(target, ref);
    const int zeroPivots = dense != nullptr ? dense->LTChol(ref, tol, false) : -1;
    if (zeroPivots < 0) {
        return zeroPivots;
    }
    minDiag = SmallestDiagonal(dense->fData, dense->fNRows);
    return dense->InvertFactor(zeroPivots);
}

int KwSymMatrix::CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target, KwBitSet& zeros) const
    try {
    // The bits have their memory before the target is touched.
    KwBitSet marks(std::max<int>(fNRows, zeros.Size()));
    KwSymMatrix* const dense = TakeCopyTo(target, ref);
    const int zeroPivots = dense != nullptr ? dense->LTChol(ref, tol, marks, false) : -1;
    if (zeroPivots < 0) {
        return zeroPivots;
    }
    zeros = std::move(marks);
    return dense->InvertFactor(zeroPivots);
} catch (...) {
    return -1;
}

// Turns the factor held into the inverse.
// Returns: the rank.
int KwSymMatrix::InvertFactor(int zeroPivots) {
    const int rank = fNRows - zeroPivots;
    double det[2];
    LTDetInverse(det, 10);
    LTLTransL();
    return rank;
}

bool KwSymMatrix::ComputeDeterminant(double tol, double* det) const {
    if (fNRows < 1) {
        return false;
    }
    KwSymMatrix factor(*this);
    double minDiag = 0.0;
    if (!factor.IsValidMatrix() || factor.LTChol(tol, minDiag, false) < 0) {
        return false;
    }
    if (minDiag == 0.0) {
        det[0] = det[1] = 0.0;
        return true;
    }
    factor.LTDetInverse(det, 1);
    SquareDeterminant(det);
    return true;
}

bool KwSymMatrix::LTCholUpdateR1(const std::vector<double>& x, std::vector<double>& c, std::vector<double>& sn) {
    if (std::cmp_not_equal(x.size(), fNRows) || c.size() != x.size() || sn.size() != x.size()) {
        return false;
    }
    for (int k = 0; k < fNRows; ++k) {
        double* row = fData.data() + RowStart(k);
        double rest = x[static_cast<std::size_t>(k)];
        for (int j = 0; j < k; ++j) {
            const double element = row[j];
            row[j] = sn.data()[j] * rest + c.data()[j] * element;
            rest = c.data()[j] * rest - sn.data()[j] * element;
        }
        Blas1::DRotG(row + k, &rest, c.data() + k, sn.data() + k);
    }
    return true;
}

// After DCHDD: with L a = x and |a| < 1, rotations that take (a, alpha) to the unit vector (0, 1), alpha^2 = 1 - |a|^2,
// applied to the rows of L. A factor with a zero pivot has no positive definite downdate.
bool KwSymMatrix::LTCholDowndate(const std::vector<double>& x, std::vector<double>& c, std::vector<double>& sn,
                                 bool /*check*/) {
    if (std::cmp_not_equal(x.size(), fNRows) || c.size() != x.size() || sn.size() != x.size()) {
        return false;
    }
    bool isRegular = true;
    packed_triangle::VisitDiagonal(fNRows,
                                   [&](int, std::size_t index) { isRegular = isRegular && fData[index] != 0.0; });
    std::vector<double> a;
    if (!isRegular || !KwSymMatrix::TSolveSubst(x, a, false)) {
        return false;
    }
    const double norm = Blas1::DNrm2(fNRows, a.data(), 1);
    if (!(norm < 1.0)) {
        return false;
    }
    double alpha = std::sqrt((1.0 - norm) * (1.0 + norm));
    for (int k = fNRows - 1; k >= 0; --k) {
        const double rotated = std::hypot(alpha, a.data()[k]);
        c.data()[k] = alpha / rotated;
        sn.data()[k] = a.data()[k] / rotated;
        alpha = rotated;
    }
    for (int j = 0; j < fNRows; ++j) {
        double* row = fData.data() + RowStart(j);
        double carried = 0.0;
        for (int i = j; i >= 0; --i) {
            const double next = c.data()[i] * carried + sn.data()[i] * row[i];
            row[i] = c.data()[i] * row[i] - sn.data()[i] * carried;
            carried = next;
        }
    }
    return true;
}

}  // namespace KwMath_930
