// Block-diagonal matrix, products with other matrices and extraction. The factor that is this matrix costs only its
// blocks; the few members that scale or take its triangle apart work on a full copy, as their results are full.
// Test: KwSymBlockDiagMatrix_test.cpp.
#include "numerics/matrix/KwSymBlockDiagMatrix.h"

#include <cstddef>
#include <limits>
#include <numeric>

#include "numerics/matrix/IKwRectMatrix.h"
#include "numerics/matrix/block_product.h"
#include "numerics/matrix/dense_kernels.h"
#include "numerics/matrix/index_checks.h"
#include "numerics/matrix/matrix_operand.h"
#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930 {

using dense_kernels::LowerProduct;
using dense_kernels::SymmetricProduct;

bool KwSymBlockDiagMatrix::ComputeGMG(const std::vector<double>& g, KwSymMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeGMG(g, target);
}

bool KwSymBlockDiagMatrix::ComputeGMGNG(const IKwSymMatrix& m, const IKwSymMatrix& n, IKwSymMatrix& target,
                                        std::vector<double>& work) const try {
    const SymOperand own(*this);
    const SymOperand left(m);
    const SymOperand right(n);
    if (own.Order() < 0 || left.Order() != fNRows || right.Order() != fNRows || !IsDenseKind(target)) {
        return false;
    }
    work = SymmetricProduct(fNRows, right.Packed(), fNRows, own.Square().data());
    work = BlockProduct(*this, fNRows, work.data());
    work = SymmetricProduct(fNRows, left.Packed(), fNRows, work.data());
    work = BlockProduct(*this, fNRows, work.data());
    return WriteTarget(target, fNRows, LowerTriangle(work, fNRows));
} catch (...) {
    return false;
}

bool KwSymBlockDiagMatrix::ComputeMGN(const IKwSymMatrix& m, const IKwSymMatrix& n, IKwSymMatrix& target) const try {
    const SymOperand left(m);
    const SymOperand right(n);
    if (fNRows < 0 || left.Order() != fNRows || right.Order() != fNRows || !IsDenseKind(target)) {
        return false;
    }
    const std::vector<double> half = BlockProduct(*this, fNRows, right.Square().data());
    return WriteTarget(target, fNRows, LowerProduct(fNRows, fNRows, left.Square().data(), half.data()));
} catch (...) {
    return false;
}

bool KwSymBlockDiagMatrix::ComputeGSG(const IKwSymMatrix& g, IKwSymMatrix& target) const {
    return KwSymBlockDiagMatrix::ComputeMGN(g, g, target);
}

bool KwSymBlockDiagMatrix::ComputeLSLTrans(const IKwSymMatrix& m, IKwSymMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeLSLTrans(m, target);
}

bool KwSymBlockDiagMatrix::ComputeLTransSL(const IKwSymMatrix& m, IKwSymMatrix& target, int k) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeLTransSL(m, target, k);
}

bool KwSymBlockDiagMatrix::ComputeRS(const IKwRectMatrix& r, IKwRectMatrix& target) const try {
    const RectOperand left(r);
    if (fNRows < 0 || left.Cols() != fNRows) {
        return false;
    }
    const std::vector<double> product = BlockProduct(*this, left.Rows(), left.Transposed().data());
    return WriteTarget(target, left.Rows(), fNRows, Transposed(fNRows, left.Rows(), product.data()));
} catch (...) {
    return false;
}

bool KwSymBlockDiagMatrix::ComputeRSRTrans(const IKwRectMatrix& r, IKwSymMatrix& target) const try {
    const RectOperand outer(r);
    if (fNRows < 0 || outer.Cols() != fNRows || !IsDenseKind(target)) {
        return false;
    }
    const std::vector<double> half = BlockProduct(*this, outer.Rows(), outer.Transposed().data());
    return WriteTarget(target, outer.Rows(), LowerProduct(outer.Rows(), fNRows, outer.Data(), half.data()));
} catch (...) {
    return false;
}

bool KwSymBlockDiagMatrix::ComputeRTransS(const IKwRectMatrix& r, IKwRectMatrix& target) const try {
    const RectOperand left(r);
    if (fNRows < 0 || left.Rows() != fNRows) {
        return false;
    }
    const std::vector<double> product = BlockProduct(*this, left.Cols(), left.Data());
    return WriteTarget(target, left.Cols(), fNRows, Transposed(fNRows, left.Cols(), product.data()));
} catch (...) {
    return false;
}

bool KwSymBlockDiagMatrix::ComputeRTransSR(const IKwRectMatrix& r, IKwSymMatrix& target) const try {
    const RectOperand outer(r);
    if (fNRows < 0 || outer.Rows() != fNRows || !IsDenseKind(target)) {
        return false;
    }
    const std::vector<double> half = BlockProduct(*this, outer.Cols(), outer.Data());
    return WriteTarget(target, outer.Cols(),
                       LowerProduct(outer.Cols(), fNRows, outer.Transposed().data(), half.data()));
} catch (...) {
    return false;
}

bool KwSymBlockDiagMatrix::ComputeRTransSV(const IKwRectMatrix& r, const std::vector<double>& v,
                                           std::vector<double>& out) const {
    std::vector<double> product;
    return fNRows >= 0 && r.GetNRows() == fNRows && KwSymBlockDiagMatrix::ComputeSV(v, product) &&
           r.ComputeVR(product, out);
}

bool KwSymBlockDiagMatrix::ComputeSS(const IKwSymMatrix& m, IKwRectMatrix& target) const try {
    const SymOperand right(m);
    return fNRows >= 0 && right.Order() == fNRows &&
           WriteTarget(target, fNRows, fNRows, BlockProduct(*this, fNRows, right.Square().data()));
} catch (...) {
    return false;
}

bool KwSymBlockDiagMatrix::ComputeSTransS(IKwSymMatrix& target) const try {
    const SymOperand own(*this);
    if (own.Order() < 0 || !IsDenseKind(target)) {
        return false;
    }
    const std::vector<double> product = BlockProduct(*this, fNRows, own.Square().data());
    return WriteTarget(target, fNRows, LowerTriangle(product, fNRows));
} catch (...) {
    return false;
}

bool KwSymBlockDiagMatrix::ExtractFirstNRows(IKwSymMatrix& target) const try {
    const int order = target.GetNRows();
    if (order < 0 || order > fNRows) {
        return false;
    }
    std::vector<int> rows(static_cast<std::size_t>(order));
    std::iota(rows.begin(), rows.end(), 0);
    return KwSymBlockDiagMatrix::ExtractSubmatrix(rows, target);
} catch (...) {
    return false;
}

bool KwSymBlockDiagMatrix::ExtractSubmatrix(const std::vector<int>& rows, IKwSymMatrix& target) const try {
    if (fNRows < 0 || rows.size() > std::numeric_limits<int>::max() || !AreIndices(rows, fNRows) ||
        !IsDenseKind(target)) {
        return false;
    }
    const int order = static_cast<int>(rows.size());
    std::vector<double> packed(packed_triangle::Size(order));
    double* place = packed.data();
    for (std::size_t a = 0; a < rows.size(); ++a) {
        for (std::size_t b = 0; b <= a; ++b) {
            *place++ = KwSymBlockDiagMatrix::GetElem(rows[a], rows[b]);
        }
    }
    return WriteTarget(target, order, packed);
} catch (...) {
    return false;
}

double KwSymBlockDiagMatrix::TraceOfProductOfThree(const IKwSymMatrix& m, const IKwSymMatrix& n) const try {
    const SymOperand middle(m);
    const SymOperand right(n);
    if (fNRows < 0 || middle.Order() != fNRows || right.Order() != fNRows) {
        return 0.0;
    }
    // trace(S M N) is the sum of (S M)(i,j) N(j,i).
    const std::vector<double> product = BlockProduct(*this, fNRows, middle.Square().data());
    const std::vector<double> square = right.Square();
    return std::inner_product(product.begin(), product.end(), square.begin(), 0.0);
} catch (...) {
    return 0.0;
}

}  // namespace KwMath_930
