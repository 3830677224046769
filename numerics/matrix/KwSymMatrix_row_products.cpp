// Symmetric matrix, dot products of single rows. A full row is the stored run, then the column below its end; sums go
// from left to right, and nothing is allocated. Test: KwSymMatrix_row_products_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <cstddef>
#include <typeinfo>
#include <utility>

#include "numerics/matrix/index_checks.h"
#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930 {

namespace {

// Row i of the packed matrix times element(k), k = 0 .. order-1.
template <class Element>
double RowTimes(const double* packed, int order, int i, Element element) {
    double sum = 0.0;
    packed_triangle::VisitRow(i, order, [&](int k, std::size_t index) { sum += packed[index] * element(k); });
    return sum;
}

double RowTimesRow(const double* packed, int order, int i, const double* other, int j) {
    return RowTimes(packed, order, i, [=](int k) { return other[packed_triangle::Index(j, k)]; });
}

}  // namespace

double KwSymMatrix::ComputeDotProduct2Rows(int i, int j) const {
    return HasRow(i) && HasRow(j) ? RowTimesRow(fData.data(), fNRows, i, fData.data(), j) : 0.0;
}

double KwSymMatrix::ComputeRowDotProductS(int i, const std::vector<double>& packed, int j) const {
    if (!HasRow(i) || !HasRow(j) || packed.size() < packed_triangle::Size(fNRows)) {
        return 0.0;
    }
    return RowTimesRow(fData.data(), fNRows, i, packed.data(), j);
}

double KwSymMatrix::ComputeRowDotProductS(int i, const IKwSymMatrix& m, int j) const {
    if (!HasRow(i) || !HasRow(j) || !AgreesWith(m)) {
        return 0.0;
    }
    if (typeid(m) == typeid(KwSymMatrix)) {
        return RowTimesRow(fData.data(), fNRows, i, static_cast<const KwSymMatrix&>(m).fData.data(), j);
    }
    return RowTimes(fData.data(), fNRows, i, [&](int k) { return m.GetElem(j, k); });
}

bool KwSymMatrix::ComputeRowDotProductS(int i, const std::vector<double>& packedP, const std::vector<double>& packedQ,
                                        int j, double& p, double& q) const {
    const std::size_t size = packed_triangle::Size(fNRows);
    if (!HasRow(i) || !HasRow(j) || packedP.size() < size || packedQ.size() < size) {
        return false;
    }
    const double product = RowTimesRow(fData.data(), fNRows, i, packedP.data(), j);
    q = RowTimesRow(fData.data(), fNRows, i, packedQ.data(), j);
    p = product;
    return true;
}

bool KwSymMatrix::ComputeRowDotProductS(int i, const IKwSymMatrix& m, const IKwSymMatrix& n, int j, double& p,
                                        double& q) const {
    if (!HasRow(i) || !HasRow(j) || !AgreesWith(m) || !AgreesWith(n)) {
        return false;
    }
    const double product = KwSymMatrix::ComputeRowDotProductS(i, m, j);
    q = KwSymMatrix::ComputeRowDotProductS(i, n, j);
    p = product;
    return true;
}

double KwSymMatrix::ComputeRVD(int i, const double* v, int inc) const {
    if (!HasRow(i)) {
        return 0.0;
    }
    return RowTimes(fData.data(), fNRows, i, [=](int k) { return v[std::ptrdiff_t{k} * inc]; });
}

double KwSymMatrix::ComputeRVD(int i, const std::vector<double>& v, int inc) const {
    return AreStridedPlacesInside(v.size(), fNRows, 0, inc) ? KwSymMatrix::ComputeRVD(i, v.data(), inc) : 0.0;
}

double KwSymMatrix::DotRowVec(int i, const std::vector<double>& v) const {
    return KwSymMatrix::ComputeRVD(i, v, 1);
}

double KwSymMatrix::DotRowPartVec(int i, int first, int count, const std::vector<double>& v) const {
    if (!HasRow(i) || !HasPart(first, count) || std::cmp_less(v.size(), count)) {
        return 0.0;
    }
    double sum = 0.0;
    for (int k = 0; k < count; ++k) {
        sum += fData[packed_triangle::Index(i, first + k)] * v[static_cast<std::size_t>(k)];
    }
    return sum;
}

double KwSymMatrix::DotColVec(int j, const std::vector<double>& v) const {
    return DotRowVec(j, v);
}

double KwSymMatrix::ComputeDotRowRow(int i, const IKwSymMatrix& m, int j) const {
    return KwSymMatrix::ComputeRowDotProductS(i, m, j);
}

}  // namespace KwMath_930
