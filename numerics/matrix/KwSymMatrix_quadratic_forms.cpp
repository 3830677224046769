// Symmetric matrix, quadratic forms. One pass over the packed triangle; each stored element off the diagonal stands for
// itself and its mirror. Only the form of a row of a rectangular matrix may allocate.
// Test: KwSymMatrix_quadratic_forms_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <typeinfo>
#include <utility>

#include "numerics/matrix/KwRectMatrix.h"
#include "numerics/matrix/index_checks.h"
#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930 {

namespace {

// v^T P w, P being the count rows and columns of the packed matrix from first on; v(k) and w(k) give the elements.
template <class V, class W>
double Form(const double* packed, int first, int count, V v, W w) {
    double form = 0.0;
    for (int i = 0; i < count; ++i) {
        const double* run = packed + packed_triangle::RowStart(first + i) + first;
        double leftV = 0.0;
        double leftW = 0.0;
        for (int j = 0; j < i; ++j) {
            leftV += run[j] * v(j);
            leftW += run[j] * w(j);
        }
        form += v(i) * (leftW + run[i] * w(i)) + w(i) * leftV;
    }
    return form;
}

double SquareForm(const double* packed, int first, int count, const double* v) {
    double form = 0.0;
    for (int i = 0; i < count; ++i) {
        const double* run = packed + packed_triangle::RowStart(first + i) + first;
        double left = 0.0;
        for (int j = 0; j < i; ++j) {
            left += run[j] * v[j];
        }
        form += v[i] * (2.0 * left + run[i] * v[i]);
    }
    return form;
}

auto Strided(const double* v, int inc) {
    return [=](int k) { return v[std::ptrdiff_t{k} * inc]; };
}

auto Growing(const std::vector<double>& v, int offset, int inc) {
    return [=, data = v.data()](int k) { return data[GrowingPlace(k, offset, inc)]; };
}

bool HasSize(const std::vector<double>& v, int size) {
    return std::cmp_equal(v.size(), size);
}

}  // namespace

double KwSymMatrix::ComputeVSV(const std::vector<double>& v) const {
    return HasSize(v, fNRows) ? SquareForm(fData.data(), 0, fNRows, v.data()) : 0.0;
}

double KwSymMatrix::ComputeVSV(const IKwRectMatrix& r, int i) const {
    if (fNRows < 1 || r.GetNCols() != fNRows || i < 0 || i >= r.GetNRows()) {
        return 0.0;
    }
    if (typeid(r) == typeid(KwRectMatrix)) {
        const double* elements = static_cast<const KwRectMatrix&>(r).AsVectorConst().data();
        return SquareForm(fData.data(), 0, fNRows, elements + std::ptrdiff_t{i} * fNRows);
    }
    std::vector<double> row;
    return r.GetRow(i, row) ? KwSymMatrix::ComputeVSV(row) : 0.0;
}

double KwSymMatrix::ComputeVSW(const std::vector<double>& v, const std::vector<double>& w) const {
    return HasSize(v, fNRows) && HasSize(w, fNRows) ? KwSymMatrix::ComputeVSW(v.data(), 1, w.data(), 1) : 0.0;
}

double KwSymMatrix::ComputeVSW(const std::vector<double>& x, int a, int b, int inc) const {
    if (!AreStridedPlacesInside(x.size(), fNRows, a, inc) || !AreStridedPlacesInside(x.size(), fNRows, b, inc)) {
        return 0.0;
    }
    return fNRows < 1 ? 0.0 : KwSymMatrix::ComputeVSW(x.data() + a, inc, x.data() + b, inc);
}

double KwSymMatrix::ComputeVSW(const double* v, int incv, const double* w, int incw) const {
    return Form(fData.data(), 0, fNRows, Strided(v, incv), Strided(w, incw));
}

double KwSymMatrix::ComputeVSWParts(const double* v, int nv, const double* w, int nw) const {
    if (!HasPart(0, nv) || !HasPart(0, nw)) {
        return 0.0;
    }
    const double* run = fData.data();
    double form = 0.0;
    for (int i = 0; i < std::max(nv, nw); ++i) {
        double leftV = 0.0;
        double leftW = 0.0;
        for (int j = 0; j < std::min(i, nv); ++j) {
            leftV += run[j] * v[j];
        }
        for (int j = 0; j < std::min(i, nw); ++j) {
            leftW += run[j] * w[j];
        }
        form += i < nv ? v[i] * (i < nw ? leftW + run[i] * w[i] : leftW) : 0.0;
        form += i < nw ? w[i] * leftV : 0.0;
        run += i + 1;
    }
    return form;
}

double KwSymMatrix::ComputeVSWParts(const std::vector<double>& v, int nv, const std::vector<double>& w, int nw) const {
    if (std::cmp_less(v.size(), nv) || std::cmp_less(w.size(), nw)) {
        return 0.0;
    }
    return KwSymMatrix::ComputeVSWParts(v.data(), nv, w.data(), nw);
}

double KwSymMatrix::ComputeVSWii(const std::vector<double>& v, int offv, int incv, const std::vector<double>& w,
                                 int offw, int incw) const {
    if (fNRows < 1 || !AreStridedPlacesInside(v.size(), fNRows, offv, incv) ||
        !AreGrowingPlacesInside(w.size(), fNRows, offw, incw)) {
        return 0.0;
    }
    return Form(fData.data(), 0, fNRows, Strided(v.data() + offv, incv), Growing(w, offw, incw));
}

double KwSymMatrix::ComputeViiSW(const std::vector<double>& v, int offv, int incv, const std::vector<double>& w,
                                 int offw, int incw) const {
    return ComputeVSWii(w, offw, incw, v, offv, incv);
}

double KwSymMatrix::ComputeVSSubWParts(const std::vector<double>& v, const std::vector<double>& w, int first,
                                       int count) const {
    if (!HasPart(first, count) || !HasSize(v, fNRows) || !HasSize(w, fNRows)) {
        return 0.0;
    }
    return Form(fData.data(), first, count, Strided(v.data() + first, 1), Strided(w.data() + first, 1));
}

double KwSymMatrix::ComputeVSymSubW(const std::vector<double>& v, const std::vector<double>& w, int first,
                                    int count) const {
    if (!HasPart(first, count) || !HasSize(v, count) || !HasSize(w, count)) {
        return 0.0;
    }
    return Form(fData.data(), first, count, Strided(v.data(), 1), Strided(w.data(), 1));
}

double KwSymMatrix::SubSymComputeVSW(const std::vector<double>& v, const std::vector<double>& w, int first) const {
    return first >= 0 && first <= fNRows ? ComputeVSymSubW(v, w, first, fNRows - first) : 0.0;
}

double KwSymMatrix::ComputeSpVSSpW(const std::vector<int>& indicesV, const std::vector<double>& valuesV,
                                   const std::vector<int>& indicesW, const std::vector<double>& valuesW) const {
    if (!AreEntries(indicesV, valuesV, fNRows) || !AreEntries(indicesW, valuesW, fNRows)) {
        return 0.0;
    }
    double form = 0.0;
    for (std::size_t a = 0; a < indicesV.size(); ++a) {
        double sum = 0.0;
        for (std::size_t b = 0; b < indicesW.size(); ++b) {
            sum += fData[packed_triangle::Index(indicesV[a], indicesW[b])] * valuesW[b];
        }
        form += valuesV[a] * sum;
    }
    return form;
}

double KwSymMatrix::ComputeBlockVSV(int block, const std::vector<double>& v) const {
    const int first = FirstRowOfBlock(block);
    return first >= 0 && HasSize(v, fBlockSize) ? SquareForm(fData.data(), first, fBlockSize, v.data()) : 0.0;
}

double KwSymMatrix::ComputeBlockVSW(int block, const std::vector<double>& v, const std::vector<double>& w) const {
    const int first = FirstRowOfBlock(block);
    return first >= 0 ? ComputeVSymSubW(v, w, first, fBlockSize) : 0.0;
}

double KwSymMatrix::SquareRootVSV(const std::vector<double>& v) const {
    const double form = KwSymMatrix::ComputeVSV(v);
    return form > 0.0 ? std::sqrt(form) : 0.0;
}

}  // namespace KwMath_930
