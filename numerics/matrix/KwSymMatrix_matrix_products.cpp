// Symmetric matrix, products with matrices of any kind. Operands are read into plain rows, the packed triangle of a
// symmetric factor is multiplied where it stands, the product is formed in a triangle or in rows of its own and written
// to the target last, so that a target may be an operand.
// Test: KwSymMatrix_matrix_products_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <cstddef>
#include <utility>

#include "numerics/matrix/IKwRectMatrix.h"
#include "numerics/matrix/KwSymBlockDiagMatrix.h"
#include "numerics/matrix/dense_kernels.h"
#include "numerics/matrix/matrix_operand.h"
#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930 {

using dense_kernels::AddMultiple;
using dense_kernels::Dot;
using dense_kernels::LowerProduct;
using dense_kernels::SymmetricForm;
using dense_kernels::SymmetricProduct;

bool KwSymMatrix::ComputeGMG(const std::vector<double>& g, KwSymMatrix& target) const try {
    if (fNRows < 0 || std::cmp_not_equal(g.size(), fNRows) || !IsDenseKind(target)) {
        return false;
    }
    std::vector<double> packed(fData);
    double* run = packed.data();
    for (int i = 0; i < fNRows; ++i) {
        for (int j = 0; j <= i; ++j) {
            run[j] *= g.data()[i] * g.data()[j];
        }
        run += i + 1;
    }
    return WriteTarget(target, fNRows, packed);
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeRDiagSRDiagTrans(const std::vector<double>& d, KwSymMatrix& target) const {
    return KwSymMatrix::ComputeGMG(d, target);
}

bool KwSymMatrix::ComputeGMGNG(const IKwSymMatrix& m, const IKwSymMatrix& n, IKwSymMatrix& target,
                               std::vector<double>& work) const try {
    if (!AgreesWith(m) || !AgreesWith(n) || !IsDenseKind(target)) {
        return false;
    }
    const SymOperand left(m);
    const SymOperand right(n);
    if (left.Order() != fNRows || right.Order() != fNRows) {
        return false;
    }
    const int order = fNRows;
    const std::vector<double> g = ToSquare(fData.data(), order);
    work = SymmetricProduct(order, right.Packed(), order, g.data());
    work = SymmetricProduct(order, fData.data(), order, work.data());
    work = SymmetricProduct(order, left.Packed(), order, work.data());
    return WriteTarget(target, order, LowerProduct(order, order, g.data(), work.data()));
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeMGN(const IKwSymMatrix& m, const IKwSymMatrix& n, IKwSymMatrix& target) const try {
    if (!AgreesWith(m) || !AgreesWith(n) || !IsDenseKind(target)) {
        return false;
    }
    const SymOperand left(m);
    const SymOperand right(n);
    if (left.Order() != fNRows || right.Order() != fNRows) {
        return false;
    }
    const int order = fNRows;
    const std::vector<double> half = SymmetricProduct(order, fData.data(), order, right.Square().data());
    return WriteTarget(target, order, LowerProduct(order, order, left.Square().data(), half.data()));
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeGSG(const IKwSymMatrix& g, IKwSymMatrix& target) const {
    return KwSymMatrix::ComputeMGN(g, g, target);
}

bool KwSymMatrix::ComputeLSLTrans(const IKwSymMatrix& m, IKwSymMatrix& target) const try {
    if (!AgreesWith(m) || !IsDenseKind(target)) {
        return false;
    }
    const SymOperand operand(m);
    if (operand.Order() != fNRows) {
        return false;
    }
    const int order = fNRows;
    const std::vector<double> middle = operand.Square();
    std::vector<double> packed(fData.size());
    for (int i = 0; i < order; ++i) {
        // Row i of L M, up to column i, which is all that the lower triangle needs.
        std::vector<double> half(static_cast<std::size_t>(i) + 1);
        const double* rowOfL = fData.data() + packed_triangle::RowStart(i);
        for (int k = 0; k <= i; ++k) {
            AddMultiple(i + 1, rowOfL[k], middle.data() + static_cast<std::size_t>(k) * static_cast<std::size_t>(order),
                        half.data());
        }
        for (int j = 0; j <= i; ++j) {
            packed[packed_triangle::Index(i, j)] = Dot(j + 1, half.data(), fData.data() + packed_triangle::RowStart(j));
        }
    }
    return WriteTarget(target, order, packed);
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeLTransSL(const IKwSymMatrix& m, IKwSymMatrix& target, int k) const try {
    if (!AgreesWith(m) || k < 0 || k > fNRows || !IsDenseKind(target)) {
        return false;
    }
    const SymOperand operand(m);
    if (operand.Order() != fNRows) {
        return false;
    }
    std::vector<double> packed(packed_triangle::Size(k));
    for (int a = 0; a < k; ++a) {
        // Row a of M L, then its part of L^T M L: row i gains L(a, i) times it.
        std::vector<double> half(static_cast<std::size_t>(k));
        for (int b = 0; b < k; ++b) {
            AddMultiple(b + 1, operand.Packed()[packed_triangle::Index(a, b)],
                        fData.data() + packed_triangle::RowStart(b), half.data());
        }
        for (int i = 0; i <= a; ++i) {
            AddMultiple(i + 1, fData[packed_triangle::Index(a, i)], half.data(),
                        packed.data() + packed_triangle::RowStart(i));
        }
    }
    return WriteTarget(target, k, packed);
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeRS(const IKwRectMatrix& r, IKwRectMatrix& target) const try {
    const RectOperand left(r);
    if (fNRows < 0 || left.Cols() != fNRows) {
        return false;
    }
    const std::vector<double> product = SymmetricProduct(fNRows, fData.data(), left.Rows(), left.Transposed().data());
    return WriteTarget(target, left.Rows(), fNRows, Transposed(fNRows, left.Rows(), product.data()));
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeRTransS(const IKwRectMatrix& r, IKwRectMatrix& target) const try {
    const RectOperand left(r);
    if (fNRows < 0 || left.Rows() != fNRows) {
        return false;
    }
    const std::vector<double> product = SymmetricProduct(fNRows, fData.data(), left.Cols(), left.Data());
    return WriteTarget(target, left.Cols(), fNRows, Transposed(fNRows, left.Cols(), product.data()));
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeRSRTrans(const IKwRectMatrix& r, IKwSymMatrix& target) const try {
    const RectOperand outer(r);
    return fNRows >= 0 && outer.Cols() == fNRows && IsDenseKind(target) &&
           WriteTarget(target, outer.Rows(),
                       SymmetricForm(fNRows, fData.data(), outer.Rows(), outer.Transposed().data()));
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeRSRTrans2(const IKwRectMatrix& r, IKwSymMatrix& target) const try {
    const RectOperand outer(r);
    if (fNRows < 0 || outer.Cols() != fNRows || !IsDenseKind(target)) {
        return false;
    }
    std::vector<double> packed = SymmetricForm(fNRows, fData.data(), outer.Rows(), outer.Transposed().data());
    if (target.GetNRows() == outer.Rows()) {
        const SymOperand before(target);
        if (before.Order() != outer.Rows()) {
            return false;
        }
        for (std::size_t k = 0; k < packed.size(); ++k) {
            packed[k] += before.Packed()[k];
        }
    }
    return WriteTarget(target, outer.Rows(), packed);
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeRTransSR(const IKwRectMatrix& r, IKwSymMatrix& target) const try {
    const RectOperand outer(r);
    return fNRows >= 0 && outer.Rows() == fNRows && IsDenseKind(target) &&
           WriteTarget(target, outer.Cols(), SymmetricForm(fNRows, fData.data(), outer.Cols(), outer.Data()));
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeRTransSymR(const IKwRectMatrix& r, const IKwSymMatrix& m) try {
    const RectOperand outer(r);
    const SymOperand middle(m);
    if (middle.Order() < 0 || outer.Rows() != middle.Order()) {
        return false;
    }
    std::vector<double> packed = SymmetricForm(middle.Order(), middle.Packed(), outer.Cols(), outer.Data());
    TakeOver(outer.Cols(), packed);
    return true;
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeRTransBlockDiagR(const IKwRectMatrix& r, const KwSymBlockDiagMatrix& b) {
    KwSymMatrix product;
    if (!b.ComputeRTransSR(r, product)) {
        return false;
    }
    TakeOver(product.fNRows, product.fData);
    return true;
}

bool KwSymMatrix::ComputeRTransSV(const IKwRectMatrix& r, const std::vector<double>& v, std::vector<double>& out) const
    try {
    std::vector<double> product;
    if (fNRows < 0 || r.GetNRows() != fNRows || !KwSymMatrix::ComputeSV(v, product)) {
        return false;
    }
    return r.ComputeVR(product, out);
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeSS(const IKwSymMatrix& m, IKwRectMatrix& target) const try {
    if (!AgreesWith(m)) {
        return false;
    }
    const SymOperand right(m);
    if (right.Order() != fNRows) {
        return false;
    }
    return WriteTarget(target, fNRows, fNRows, SymmetricProduct(fNRows, fData.data(), fNRows, right.Square().data()));
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeSTransS(IKwSymMatrix& target) const try {
    if (fNRows < 0 || !IsDenseKind(target)) {
        return false;
    }
    const std::vector<double> square = ToSquare(fData.data(), fNRows);
    return WriteTarget(target, fNRows, LowerProduct(fNRows, fNRows, square.data(), square.data()));
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeRTransByR(const IKwRectMatrix& r) try {
    const RectOperand operand(r);
    if (operand.Rows() < 0) {
        return false;
    }
    std::vector<double> packed =
        LowerProduct(operand.Cols(), operand.Rows(), operand.Transposed().data(), operand.Data());
    TakeOver(operand.Cols(), packed);
    return true;
} catch (...) {
    return false;
}

bool KwSymMatrix::ComputeRByRTrans(const IKwRectMatrix& r) try {
    const RectOperand operand(r);
    if (operand.Rows() < 0) {
        return false;
    }
    std::vector<double> packed =
        LowerProduct(operand.Rows(), operand.Cols(), operand.Data(), operand.Transposed().data());
    TakeOver(operand.Rows(), packed);
    return true;
} catch (...) {
    return false;
}

double KwSymMatrix::TraceOfProductOfThree(const IKwSymMatrix& m, const IKwSymMatrix& n) const try {
    if (!AgreesWith(m) || !AgreesWith(n)) {
        return 0.0;
    }
    const SymOperand middle(m);
    const SymOperand right(n);
    if (middle.Order() != fNRows || right.Order() != fNRows) {
        return 0.0;
    }
    // trace(S M N) is the sum of (S M)(i,j) N(j,i).
    const std::vector<double> product = SymmetricProduct(fNRows, fData.data(), fNRows, middle.Square().data());
    const std::vector<double> square = right.Square();
    double trace = 0.0;
    for (std::size_t k = 0; k < square.size(); ++k) {
        trace += product[k] * square[k];
    }
    return trace;
} catch (...) {
    return 0.0;
}

}  // namespace KwMath_930
