// Block-diagonal matrix, products with vectors and quadratic forms. Walks the stored run (i, first..i) of each row,
// which serves both triangles. Test: KwSymBlockDiagMatrix_test.cpp.
#include "numerics/matrix/KwSymBlockDiagMatrix.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "numerics/matrix/IKwRectMatrix.h"
#include "numerics/matrix/index_checks.h"
#include "numerics/matrix/packed_triangle.h"
#include "numerics/matrix/resize_target.h"

namespace KwMath_930 {

namespace {

// The sum over k < n of matrix(i, k) times element(k), over the columns that can hold something.
template <class Element>
double RowTimes(const KwSymBlockDiagMatrix& matrix, int i, int first, int end, Element element) {
    double sum = 0.0;
    for (int k = first; k < end; ++k) {
        sum += matrix.KwSymBlockDiagMatrix::GetElem(i, k) * element(k);
    }
    return sum;
}

std::vector<double> Expanded(const std::vector<int>& indices, const std::vector<double>& values, int size) {
    std::vector<double> v(static_cast<std::size_t>(size));
    for (std::size_t k = 0; k < indices.size(); ++k) {
        v[static_cast<std::size_t>(indices[k])] += values[k];
    }
    return v;
}

}  // namespace

bool KwSymBlockDiagMatrix::ComputeSV(const std::vector<double>& v, std::vector<double>& out) const {
    return KwSymBlockDiagMatrix::ComputeSV(fNRows, v, out);
}

bool KwSymBlockDiagMatrix::ComputeSV(int k, const std::vector<double>& v, std::vector<double>& out) const try {
    if (k < 0 || k > fNRows || std::cmp_less(v.size(), k)) {
        return false;
    }
    std::vector<double> sums(static_cast<std::size_t>(k));
    for (int i = 0; i < k; ++i) {
        int first = 0;
        const double* run = RowRun(i, first);
        for (int j = first; j < i; ++j) {
            sums.data()[i] += run[j - first] * v.data()[j];
            sums.data()[j] += run[j - first] * v.data()[i];
        }
        sums.data()[i] += run[i - first] * v.data()[i];
    }
    return KwSymMatrix::ResizeNCopy(out, sums);
} catch (...) {
    return false;
}

bool KwSymBlockDiagMatrix::ComputeLV(const std::vector<double>& v, std::vector<double>& out) const try {
    if (fNRows < 0 || std::cmp_less(v.size(), fNRows)) {
        return false;
    }
    std::vector<double> sums(static_cast<std::size_t>(fNRows));
    for (int i = 0; i < fNRows; ++i) {
        int first = 0;
        const double* run = RowRun(i, first);
        for (int j = first; j <= i; ++j) {
            sums.data()[i] += run[j - first] * v.data()[j];
        }
    }
    return KwSymMatrix::ResizeNCopy(out, sums);
} catch (...) {
    return false;
}

bool KwSymBlockDiagMatrix::ComputeLTransV(const std::vector<double>& v, std::vector<double>& out) const {
    if (fNRows < 0 || std::cmp_less(v.size(), fNRows) || !KwSymMatrix::ResizeNCopy(out, v) ||
        !ResizeTarget(out, fNRows)) {
        return false;
    }
    MultiplyRowByL(out.data(), fNRows, [](int k) { return k; });
    return true;
}

bool KwSymBlockDiagMatrix::ComputeLV(const std::vector<int>& indices, const std::vector<double>& values,
                                     std::vector<double>& out) const try {
    return fNRows >= 0 && AreEntries(indices, values, fNRows) &&
           KwSymBlockDiagMatrix::ComputeLV(Expanded(indices, values, fNRows), out);
} catch (...) {
    return false;
}

bool KwSymBlockDiagMatrix::ComputeLTransV(const std::vector<int>& indices, const std::vector<double>& values,
                                          std::vector<double>& out) const try {
    return fNRows >= 0 && AreEntries(indices, values, fNRows) &&
           KwSymBlockDiagMatrix::ComputeLTransV(Expanded(indices, values, fNRows), out);
} catch (...) {
    return false;
}

double KwSymBlockDiagMatrix::ComputeDotProduct2Rows(int i, int j) const {
    return KwSymBlockDiagMatrix::ComputeRowDotProductS(i, *this, j);
}

double KwSymBlockDiagMatrix::ComputeRowDotProductS(int i, const std::vector<double>& packed, int j) const {
    if (!HasRow(i) || !HasRow(j) || packed.size() < packed_triangle::Size(fNRows)) {
        return 0.0;
    }
    int first = 0;
    RowRun(i, first);
    return RowTimes(*this, i, first, EndOfRun(i), [&](int k) { return packed[packed_triangle::Index(j, k)]; });
}

double KwSymBlockDiagMatrix::ComputeRowDotProductS(int i, const IKwSymMatrix& m, int j) const {
    if (!HasRow(i) || !HasRow(j) || m.GetNRows() != fNRows) {
        return 0.0;
    }
    int first = 0;
    RowRun(i, first);
    return RowTimes(*this, i, first, EndOfRun(i), [&](int k) { return m.GetElem(j, k); });
}

double KwSymBlockDiagMatrix::ComputeRVD(int i, const double* v, int inc) const {
    if (!HasRow(i)) {
        return 0.0;
    }
    int first = 0;
    RowRun(i, first);
    return RowTimes(*this, i, first, EndOfRun(i), [=](int k) { return v[std::ptrdiff_t{k} * inc]; });
}

double KwSymBlockDiagMatrix::ComputeRVD(int i, const std::vector<double>& v, int inc) const {
    return AreStridedPlacesInside(v.size(), fNRows, 0, inc) ? KwSymBlockDiagMatrix::ComputeRVD(i, v.data(), inc) : 0.0;
}

double KwSymBlockDiagMatrix::ComputeVSV(const IKwRectMatrix& r, int i) const {
    std::vector<double> row;
    if (fNRows < 1 || r.GetNCols() != fNRows || i < 0 || i >= r.GetNRows() || !r.GetRow(i, row)) {
        return 0.0;
    }
    return KwSymBlockDiagMatrix::ComputeVSV(row);
}

double KwSymBlockDiagMatrix::ComputeVSV(const std::vector<double>& v) const {
    return KwSymBlockDiagMatrix::ComputeVSW(v, v);
}

double KwSymBlockDiagMatrix::ComputeVSW(const std::vector<double>& v, const std::vector<double>& w) const {
    if (std::cmp_not_equal(v.size(), fNRows) || std::cmp_not_equal(w.size(), fNRows)) {
        return 0.0;
    }
    return KwSymBlockDiagMatrix::ComputeVSWParts(v.data(), fNRows, w.data(), fNRows);
}

double KwSymBlockDiagMatrix::ComputeVSW(const std::vector<double>& x, int a, int b, int inc) const {
    if (fNRows < 1 || !AreStridedPlacesInside(x.size(), fNRows, a, inc) ||
        !AreStridedPlacesInside(x.size(), fNRows, b, inc)) {
        return 0.0;
    }
    return KwSymBlockDiagMatrix::ComputeVSW(x.data() + a, inc, x.data() + b, inc);
}

double KwSymBlockDiagMatrix::ComputeVSW(const double* v, int incv, const double* w, int incw) const {
    double form = 0.0;
    for (int i = 0; i < fNRows; ++i) {
        form += v[std::ptrdiff_t{i} * incv] * KwSymBlockDiagMatrix::ComputeRVD(i, w, incw);
    }
    return form;
}

double KwSymBlockDiagMatrix::ComputeVSWParts(const double* v, int nv, const double* w, int nw) const {
    if (nv < 0 || nv > fNRows || nw < 0 || nw > fNRows) {
        return 0.0;
    }
    double form = 0.0;
    for (int i = 0; i < nv; ++i) {
        int first = 0;
        RowRun(i, first);
        form += v[i] * RowTimes(*this, i, first, std::min(EndOfRun(i), nw), [=](int k) { return w[k]; });
    }
    return form;
}

double KwSymBlockDiagMatrix::ComputeVSWParts(const std::vector<double>& v, int nv, const std::vector<double>& w,
                                             int nw) const {
    if (std::cmp_less(v.size(), nv) || std::cmp_less(w.size(), nw)) {
        return 0.0;
    }
    return KwSymBlockDiagMatrix::ComputeVSWParts(v.data(), nv, w.data(), nw);
}

// The first count elements values[place(k)] become their row product with the leading part of L, in place: row i spends
// its element before it replaces it.
template <class Place>
void KwSymBlockDiagMatrix::MultiplyRowByL(double* values, int count, Place place) const {
    for (int i = 0; i < count; ++i) {
        int first = 0;
        const double* run = RowRun(i, first);
        const double factor = values[place(i)];
        for (int j = first; j < i; ++j) {
            values[place(j)] += factor * run[j - first];
        }
        values[place(i)] = factor * run[i - first];
    }
}

bool KwSymBlockDiagMatrix::ComputeVecPartByL(std::vector<double>& v, int offset, int inc) const {
    if (fNRows < 0 || (inc == 0 && fNRows > 1) || !AreStridedPlacesInside(v.size(), fNRows, offset, inc)) {
        return false;
    }
    MultiplyRowByL(v.data(), fNRows, [=](int k) { return offset + std::ptrdiff_t{k} * inc; });
    return true;
}

bool KwSymBlockDiagMatrix::ComputeVecIIncrPartByL(std::vector<double>& v, int offset, int inc, int count) const {
    if (count < 0 || count > fNRows || !AreGrowingPlacesInside(v.size(), count, offset, inc)) {
        return false;
    }
    MultiplyRowByL(v.data(), count, [=](int k) { return GrowingPlace(k, offset, inc); });
    return true;
}

bool KwSymBlockDiagMatrix::ComputeSymRowByL(std::vector<double>& packed, int row, int first, int count) const {
    if (count < 0 || count > fNRows || row < 0 || first < 0 || first > INT32_MAX - count ||
        (count > 0 && packed_triangle::Index(row, first + count - 1) >= packed.size())) {
        return false;
    }
    MultiplyRowByL(packed.data(), count, [=](int k) { return packed_triangle::Index(row, first + k); });
    return true;
}

double KwSymBlockDiagMatrix::ComputeProductLAndSquare(std::vector<double>& v, int offset) const {
    if (!ComputeVecPartByL(v, offset, 1)) {
        return 0.0;
    }
    double sum = 0.0;
    for (int k = 0; k < fNRows; ++k) {
        sum += v.data()[offset + k] * v.data()[offset + k];
    }
    return sum;
}

bool KwSymBlockDiagMatrix::DotProductColVecIIncrPart(int col, const std::vector<double>& v, int offset, int inc,
                                                     double& dot) const {
    if (!HasRow(col)) {
        return false;
    }
    for (int i = col; i < EndOfRun(col); ++i) {
        const std::int64_t place = GrowingPlace(i, offset, inc);
        if (place < 0 || !std::cmp_less(place, v.size())) {
            return false;
        }
    }
    dot = RowTimes(*this, col, col, EndOfRun(col), [&](int i) { return v.data()[GrowingPlace(i, offset, inc)]; });
    return true;
}

bool KwSymBlockDiagMatrix::DotProductLColDenseRowPart(int col, const KwSymMatrix& s, int row, int first,
                                                      double& dot) const {
    if (!HasRow(col) || row < 0 || row >= s.GetNRows() || first < -col || first > s.GetNRows() - EndOfRun(col)) {
        return false;
    }
    dot = RowTimes(*this, col, col, EndOfRun(col), [&](int i) { return s.GetElem(row, first + i); });
    return true;
}

}  // namespace KwMath_930
