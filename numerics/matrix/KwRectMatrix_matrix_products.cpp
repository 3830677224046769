// Rectangular matrix, products with matrices of any kind. Operands are read into plain rows, the product is formed in
// rows of its own and written to the target last, so that a target may be an operand.
// Test: KwRectMatrix_products_test.cpp.
#include "numerics/matrix/KwRectMatrix.h"

#include <cstddef>

#include "numerics/matrix/KwSymMatrix.h"
#include "numerics/matrix/block_product.h"
#include "numerics/matrix/dense_kernels.h"
#include "numerics/matrix/matrix_operand.h"
#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930 {

using dense_kernels::Product;
using dense_kernels::SymmetricProduct;

bool KwRectMatrix::ComputeMatrixProduct(const IKwRectMatrix& b, IKwRectMatrix& target) const try {
    if (!IsValidMatrix() || b.GetNRows() != fNCols) {
        return false;
    }
    const RectOperand operand(b);
    return operand.Rows() == fNCols &&
           WriteTarget(target, fNRows, operand.Cols(),
                       Product(fNRows, operand.Cols(), fNCols, fData.data(), operand.Data()));
} catch (...) {
    return false;
}

bool KwRectMatrix::ComputeProductMatrixTrans(const IKwRectMatrix& b, KwRectMatrix& target) const try {
    if (!IsValidMatrix() || b.GetNCols() != fNCols) {
        return false;
    }
    const RectOperand operand(b);
    return operand.Cols() == fNCols &&
           WriteTarget(target, fNRows, operand.Rows(),
                       Product(fNRows, operand.Rows(), fNCols, fData.data(), operand.Transposed().data()));
} catch (...) {
    return false;
}

bool KwRectMatrix::ComputeMatrixProduct(const IKwSymMatrix& s, IKwRectMatrix& target) const try {
    if (!IsValidMatrix() || s.GetNRows() != fNCols) {
        return false;
    }
    const SymOperand operand(s);
    return operand.Order() == fNCols &&
           WriteTarget(target, fNRows, fNCols, Product(fNRows, fNCols, fNCols, fData.data(), operand.Square().data()));
} catch (...) {
    return false;
}

bool KwRectMatrix::ComputeR1TransSR2(const IKwSymMatrix& s, const IKwRectMatrix& r2, IKwRectMatrix& target) const try {
    if (!IsValidMatrix() || s.GetNRows() != fNRows || r2.GetNRows() != fNRows) {
        return false;
    }
    const SymOperand middle(s);
    const RectOperand right(r2);
    if (middle.Order() != fNRows || right.Rows() != fNRows) {
        return false;
    }
    const std::vector<double> half = SymmetricProduct(fNRows, middle.Packed(), right.Cols(), right.Data());
    return WriteTarget(
        target, fNCols, right.Cols(),
        Product(fNCols, right.Cols(), fNRows, Transposed(fNRows, fNCols, fData.data()).data(), half.data()));
} catch (...) {
    return false;
}

bool KwRectMatrix::ComputeBlockDiagSR(const KwSymBlockDiagMatrix& b, const IKwRectMatrix& r) try {
    const RectOperand right(r);
    if (b.GetNRows() < 0 || right.Rows() != b.GetNRows()) {
        return false;
    }
    std::vector<double> product = BlockProduct(b, right.Cols(), right.Data());
    fNRows = right.Rows();
    fNCols = right.Cols();
    fData.swap(product);
    return true;
} catch (...) {
    return false;
}

bool KwRectMatrix::ComputeAXpY(double a, KwSymMatrix& y) const {
    if (!IsValidMatrix() || fNRows != fNCols || y.GetNRows() != fNRows) {
        return false;
    }
    for (int i = 0; i < fNRows; ++i) {
        dense_kernels::AddMultiple(i + 1, a, RowData(i), y.AsVector().data() + packed_triangle::RowStart(i));
    }
    return true;
}

bool KwRectMatrix::SubtractSymMatrix(const IKwSymMatrix& s) try {
    if (!IsValidMatrix() || fNRows != fNCols || s.GetNRows() != fNRows) {
        return false;
    }
    const SymOperand operand(s);
    if (operand.Order() != fNRows) {
        return false;
    }
    for (int i = 0; i < fNRows; ++i) {
        for (int j = 0; j < fNCols; ++j) {
            RowData(i)[j] -= operand.Packed()[packed_triangle::Index(i, j)];
        }
    }
    return true;
} catch (...) {
    return false;
}

double KwRectMatrix::TraceOfProductSqS(const IKwSymMatrix& s) const {
    return s.GetNRows() == fNRows ? TraceOfProductSubMatSym(s, 0) : 0.0;
}

double KwRectMatrix::TraceOfProductSubMatSym(const IKwSymMatrix& s, int first) const try {
    if (!IsValidMatrix() || fNRows != fNCols || first < 0 || s.GetNRows() - first < fNRows) {
        return 0.0;
    }
    const SymOperand operand(s);
    if (operand.Order() < first + fNRows) {
        return 0.0;
    }
    double trace = 0.0;
    for (int i = 0; i < fNRows; ++i) {
        for (int j = 0; j < fNCols; ++j) {
            trace += RowData(i)[j] * operand.Packed()[packed_triangle::Index(first + i, first + j)];
        }
    }
    return trace;
} catch (...) {
    return 0.0;
}

}  // namespace KwMath_930
