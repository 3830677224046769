// Symmetric matrix, members that take a block-diagonal matrix. Test: KwSymMatrix_block_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "numerics/matrix/KwSymBlockDiagMatrix.h"
#include "numerics/matrix/dense_kernels.h"
#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930 {

using packed_triangle::Index;

bool KwSymMatrix::ComputeSSubBSSub(const KwSymBlockDiagMatrix& b, int first, IKwSymMatrix& target) const try {
    if (!HasPart(first, b.GetNRows())) {
        return false;
    }
    KwSymMatrix part(b.GetNRows(), false);
    if (!part.IsValidMatrix()) {
        return false;
    }
    for (int i = 0; i < part.fNRows; ++i) {
        std::copy_n(fData.data() + Index(first + i, first), i + 1, part.fData.data() + packed_triangle::RowStart(i));
    }
    return b.ComputeGSG(part, target);
} catch (...) {
    return false;
}

double KwSymMatrix::ComputeVBW(const std::vector<double>& v, const KwSymBlockDiagMatrix& b,
                               const std::vector<double>& w) const {
    return b.ComputeVSW(v, w);
}

bool KwSymMatrix::ComputeVecByBlockL(std::vector<double>& v, const KwSymBlockDiagMatrix& l) const {
    const int first = l.GetNRows();
    if (fNRows < 0 || first < 0 || std::cmp_less(v.size(), std::int64_t{first} + fNRows)) {
        return false;
    }
    return l.ComputeVecPartByL(v, 0, 1) && (fNRows == 0 || ComputeVecPartByL(v, first, 1));
}

bool KwSymMatrix::UpdateXXCornerBlock(const KwSymBlockDiagMatrix& b, double weight, int corner) {
    if (corner < 0 || corner > fNRows || b.GetNRows() != fNRows - corner || !(weight > 0.0)) {
        return false;
    }
    for (int i = corner; i < fNRows; ++i) {
        int first = 0;
        b.GetIndexFirstInRow(i - corner, first);
        for (int j = corner + first; j <= i; ++j) {
            fData[Index(i, j)] += weight * b.GetElem(i - corner, j - corner);
        }
    }
    return true;
}

bool KwSymMatrix::UpdateXXCornerBlock(const std::vector<double>& x, const KwSymBlockDiagMatrix& l, double weight,
                                      int corner) try {
    if (corner < 0 || corner > fNRows || l.GetNRows() != fNRows - corner ||
        std::cmp_not_equal(x.size(), fNRows - corner) || !(weight > 0.0)) {
        return false;
    }
    std::vector<double> y(x);
    if (!l.ComputeVecPartByL(y, 0, 1)) {
        return false;
    }
    for (int i = 0; i < l.GetNRows(); ++i) {
        dense_kernels::AddMultiple(i + 1, y[static_cast<std::size_t>(i)] * weight, y.data(),
                                   fData.data() + Index(corner + i, corner));
    }
    return true;
} catch (...) {
    return false;
}

bool KwSymMatrix::AugmentUsingBlockDiagL(const KwSymBlockDiagMatrix& l) try {
    const int first = l.GetNRows();
    if (fNRows < 0 || first < 0 || first > INT32_MAX - fNRows) {
        return false;
    }
    KwSymBlockDiagMatrix product(l);
    if (!product.IsValidMatrix()) {
        return false;
    }
    product.LTLLTrans();
    const int order = first + fNRows;
    std::vector<double> packed(packed_triangle::Size(order));
    for (int i = 0; i < first; ++i) {
        for (int j = 0; j <= i; ++j) {
            packed[Index(i, j)] = product.GetElem(i, j);
        }
    }
    for (int i = 0; i < fNRows; ++i) {
        std::copy_n(fData.data() + packed_triangle::RowStart(i), i + 1, packed.data() + Index(first + i, first));
    }
    TakeOver(order, packed);
    return true;
} catch (...) {
    return false;
}

}  // namespace KwMath_930
