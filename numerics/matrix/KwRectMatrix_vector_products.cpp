// Rectangular matrix, norms, products with vectors and of single rows and columns. Each sum goes from left to right.
// Test: KwRectMatrix_products_test.cpp.
#include "numerics/matrix/KwRectMatrix.h"

#include <algorithm>
#include <limits>
#include <typeinfo>
#include <utility>

#include "numerics/blas1/Blas1.h"
#include "numerics/mathfun/KwMathFun.h"
#include "numerics/matrix/KwSymMatrix.h"
#include "numerics/matrix/dense_kernels.h"
#include "numerics/matrix/packed_triangle.h"
#include "numerics/matrix/resize_target.h"

namespace KwMath_930 {

namespace {

// The sum of row[k] element(k), k < n, from left to right.
template <class Element>
double RowTimes(int n, const double* row, Element element) {
    double sum = 0.0;
    for (int k = 0; k < n; ++k) {
        sum += row[k] * element(k);
    }
    return sum;
}

}  // namespace

double KwRectMatrix::ColNorm(int j) const {
    return HasCol(j) ? KwMathFun::DNrm2(fNRows, fData, j, fNCols) : -std::numeric_limits<double>::max();
}

double KwRectMatrix::RowNorm(int i) const {
    return HasRow(i) ? Blas1::DNrm2(fNCols, const_cast<double*>(RowData(i)), 1) : -std::numeric_limits<double>::max();
}

bool KwRectMatrix::ComputeRV(const std::vector<double>& v, std::vector<double>& out) const try {
    if (!IsValidMatrix() || std::cmp_less(v.size(), fNCols)) {
        return false;
    }
    if (&v == &out) {
        return KwRectMatrix::ComputeRV(std::vector<double>(v), out);
    }
    if (!ResizeTarget(out, fNRows)) {
        return false;
    }
    double* products = out.data();
    for (int i = 0; i < fNRows; ++i) {
        products[i] = dense_kernels::Dot(fNCols, RowData(i), v.data());
    }
    return true;
} catch (...) {
    return false;
}

bool KwRectMatrix::ComputeVR(const std::vector<double>& v, std::vector<double>& out) const try {
    if (!IsValidMatrix() || std::cmp_less(v.size(), fNRows)) {
        return false;
    }
    if (&v == &out) {
        return KwRectMatrix::ComputeVR(std::vector<double>(v), out);
    }
    if (!ResizeTarget(out, fNCols)) {
        return false;
    }
    std::fill(out.begin(), out.end(), 0.0);
    const double* factors = v.data();
    for (int i = 0; i < fNRows; ++i) {
        dense_kernels::AddMultiple(fNCols, factors[i], RowData(i), out.data());
    }
    return true;
} catch (...) {
    return false;
}

double KwRectMatrix::DotProductCol(int i, int j) const {
    if (!HasCol(i) || !HasCol(j)) {
        return 0.0;
    }
    double sum = 0.0;
    for (int k = 0; k < fNRows; ++k) {
        sum += RowData(k)[i] * RowData(k)[j];
    }
    return sum;
}

double KwRectMatrix::DotProductRows(int i, int j) const {
    return HasRow(i) && HasRow(j) ? dense_kernels::Dot(fNCols, RowData(i), RowData(j)) : 0.0;
}

double KwRectMatrix::DotProductRowCol(int i, const IKwRectMatrix& b, int j) const {
    if (!HasRow(i) || b.GetNRows() != fNCols || j < 0 || j >= b.GetNCols()) {
        return 0.0;
    }
    if (typeid(b) == typeid(KwRectMatrix)) {
        const auto& dense = static_cast<const KwRectMatrix&>(b);
        return RowTimes(fNCols, RowData(i), [&](int k) { return dense.RowData(k)[j]; });
    }
    return RowTimes(fNCols, RowData(i), [&](int k) { return b.GetElem(k, j); });
}

double KwRectMatrix::DotProductRowRow(int i, const IKwRectMatrix& b, int j) const {
    if (!HasRow(i) || b.GetNCols() != fNCols || j < 0 || j >= b.GetNRows()) {
        return 0.0;
    }
    if (typeid(b) == typeid(KwRectMatrix)) {
        return dense_kernels::Dot(fNCols, RowData(i), static_cast<const KwRectMatrix&>(b).RowData(j));
    }
    return RowTimes(fNCols, RowData(i), [&](int k) { return b.GetElem(j, k); });
}

double KwRectMatrix::DotProductRowCol(int i, const IKwSymMatrix& s, int j) const {
    if (!HasRow(i) || s.GetNRows() != fNCols || j < 0 || j >= fNCols) {
        return 0.0;
    }
    if (typeid(s) == typeid(KwSymMatrix)) {
        const double* packed = static_cast<const KwSymMatrix&>(s).AsVectorConst().data();
        return RowTimes(fNCols, RowData(i), [=](int k) { return packed[packed_triangle::Index(k, j)]; });
    }
    return RowTimes(fNCols, RowData(i), [&](int k) { return s.GetElem(k, j); });
}

}  // namespace KwMath_930
