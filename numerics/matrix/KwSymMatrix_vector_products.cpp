// Symmetric matrix, products with a vector. One pass over the packed triangle serves both triangles: the run (i, 0..i)
// gives element i its leading terms and every element j < i its term i, so that each sum grows from left to right.
// Test: KwSymMatrix_vector_products_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "numerics/matrix/dense_kernels.h"
#include "numerics/matrix/index_checks.h"
#include "numerics/matrix/packed_triangle.h"
#include "numerics/matrix/resize_target.h"

namespace KwMath_930 {

namespace {

// One row of the product below: row i gives out[i] its leading terms and each out[j], j from start on, its term i.
void MultiplyRow(const double* run, int i, int start, const double* v, double sum, double* out) {
    for (int j = start; j < i; ++j) {
        sum += run[j] * v[j];
        out[j] += run[j] * v[i];
    }
    out[i] = sum + run[i] * v[i];
}

// out = the part of the packed matrix with count rows and columns from first on, times v. Four rows go together, which
// changes the order of no sum.
void MultiplyPart(const double* packed, int first, int count, const double* v, double* out) {
    const auto row = [=](int i) { return packed + packed_triangle::RowStart(first + i) + first; };
    int i = 0;
    for (; i + 4 <= count; i += 4) {
        const double* runs[4] = {row(i), row(i + 1), row(i + 2), row(i + 3)};
        double sums[4] = {0.0, 0.0, 0.0, 0.0};
        for (int j = 0; j < i; ++j) {
            sums[0] += runs[0][j] * v[j];
            sums[1] += runs[1][j] * v[j];
            sums[2] += runs[2][j] * v[j];
            sums[3] += runs[3][j] * v[j];
            out[j] = (((out[j] + runs[0][j] * v[i]) + runs[1][j] * v[i + 1]) + runs[2][j] * v[i + 2]) +
                     runs[3][j] * v[i + 3];
        }
        for (int q = 0; q < 4; ++q) {
            MultiplyRow(runs[q], i + q, i, v, sums[q], out);
        }
    }
    for (; i < count; ++i) {
        MultiplyRow(row(i), i, 0, v, 0.0, out);
    }
}

// The n elements of v at place(k) become their row product with the lower triangle, in place: element j takes terms of
// the elements from j on, so row i spends its element before it replaces it.
template <class Place>
void MultiplyRowByL(const double* packed, int order, std::vector<double>& v, Place place) {
    double* values = v.data();
    const double* run = packed;
    for (int i = 0; i < order; ++i) {
        const double factor = values[place(i)];
        for (int j = 0; j < i; ++j) {
            values[place(j)] += factor * run[j];
        }
        values[place(i)] = factor * run[i];
        run += i + 1;
    }
}

}  // namespace

bool KwSymMatrix::ComputeSV(const std::vector<double>& v, std::vector<double>& out) const {
    return KwSymMatrix::ComputeSV(fNRows, v, out);
}

bool KwSymMatrix::ComputeSV(int k, const std::vector<double>& v, std::vector<double>& out) const {
    if (k < 0 || k > fNRows || std::cmp_less(v.size(), k)) {
        return false;
    }
    if (&v == &out) {
        std::vector<double> operand;
        return ResizeNCopy(operand, v) && KwSymMatrix::ComputeSV(k, operand, out);
    }
    if (!ResizeTarget(out, k)) {
        return false;
    }
    MultiplyPart(fData.data(), 0, k, v.data(), out.data());
    return true;
}

bool KwSymMatrix::SubSymComputeSV(const std::vector<double>& v, std::vector<double>& out, int first) const {
    const int count = fNRows - first;
    if (first < 0 || count < 0 || std::cmp_less(v.size(), count)) {
        return false;
    }
    if (&v == &out) {
        std::vector<double> operand;
        return ResizeNCopy(operand, v) && SubSymComputeSV(operand, out, first);
    }
    if (!ResizeTarget(out, count)) {
        return false;
    }
    MultiplyPart(fData.data(), first, count, v.data(), out.data());
    return true;
}

bool KwSymMatrix::ComputeLV(const std::vector<double>& v, std::vector<double>& out) const {
    if (fNRows < 0 || std::cmp_less(v.size(), fNRows) || !ResizeNCopy(out, v) || !ResizeTarget(out, fNRows)) {
        return false;
    }
    // From the last row up, so that each row still finds the elements of v before its own.
    for (int i = fNRows - 1; i >= 0; --i) {
        out[static_cast<std::size_t>(i)] =
            dense_kernels::Dot(i + 1, fData.data() + packed_triangle::RowStart(i), out.data());
    }
    return true;
}

bool KwSymMatrix::ComputeLTransV(const std::vector<double>& v, std::vector<double>& out) const {
    if (fNRows < 0 || std::cmp_less(v.size(), fNRows) || !ResizeNCopy(out, v) || !ResizeTarget(out, fNRows)) {
        return false;
    }
    MultiplyRowByL(fData.data(), fNRows, out, [](int k) { return k; });
    return true;
}

bool KwSymMatrix::ComputeLV(const std::vector<int>& indices, const std::vector<double>& values,
                            std::vector<double>& out) const {
    if (fNRows < 0 || !AreEntries(indices, values, fNRows)) {
        return false;
    }
    if (&values == &out) {
        std::vector<double> operand;
        return ResizeNCopy(operand, values) && KwSymMatrix::ComputeLV(indices, operand, out);
    }
    if (!ResizeTarget(out, fNRows)) {
        return false;
    }
    for (int i = 0; i < fNRows; ++i) {
        const double* run = fData.data() + packed_triangle::RowStart(i);
        double sum = 0.0;
        for (std::size_t k = 0; k < indices.size(); ++k) {
            if (indices[k] <= i) {
                sum += run[indices[k]] * values[k];
            }
        }
        out[static_cast<std::size_t>(i)] = sum;
    }
    return true;
}

bool KwSymMatrix::ComputeLTransV(const std::vector<int>& indices, const std::vector<double>& values,
                                 std::vector<double>& out) const {
    if (fNRows < 0 || !AreEntries(indices, values, fNRows)) {
        return false;
    }
    if (&values == &out) {
        std::vector<double> operand;
        return ResizeNCopy(operand, values) && KwSymMatrix::ComputeLTransV(indices, operand, out);
    }
    if (!ResizeTarget(out, fNRows)) {
        return false;
    }
    std::fill(out.begin(), out.end(), 0.0);
    for (std::size_t k = 0; k < indices.size(); ++k) {
        dense_kernels::AddMultiple(indices[k] + 1, values[k], fData.data() + packed_triangle::RowStart(indices[k]),
                                   out.data());
    }
    return true;
}

bool KwSymMatrix::ComputeVecPartByL(std::vector<double>& v, int offset, int inc) const {
    if (fNRows < 0 || (inc == 0 && fNRows > 1) || !AreStridedPlacesInside(v.size(), fNRows, offset, inc)) {
        return false;
    }
    MultiplyRowByL(fData.data(), fNRows, v, [=](int k) { return offset + std::ptrdiff_t{k} * inc; });
    return true;
}

bool KwSymMatrix::ComputeVecIIncPartByL(std::vector<double>& v, int offset, int inc) const {
    if (fNRows < 0 || !AreGrowingPlacesInside(v.size(), fNRows, offset, inc)) {
        return false;
    }
    MultiplyRowByL(fData.data(), fNRows, v, [=](int k) { return GrowingPlace(k, offset, inc); });
    return true;
}

bool KwSymMatrix::IncrVecByRow(int i, std::vector<double>& v, int offset, int inc, double a, bool check) const {
    if (!HasRow(i) || (check && !AreStridedPlacesInside(v.size(), fNRows, offset, inc))) {
        return false;
    }
    double* target = v.data();
    packed_triangle::VisitRow(
        i, fNRows, [&](int k, std::size_t index) { target[offset + std::ptrdiff_t{k} * inc] += a * fData[index]; });
    return true;
}

}  // namespace KwMath_930
