// Symmetric matrix, rank-one updates: accumulation of weighted cross-products and settings to products of vectors. Each
// stored run (i, 0..i) takes a multiple of the leading i+1 vector elements. Test: KwSymMatrix_update_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace KwMath_930 {

namespace {

void AddMultiple(double* run, int length, double factor, const double* v) {
    for (int j = 0; j < length; ++j) {
        run[j] += factor * v[j];
    }
}

// A size beyond the range of int becomes the largest int, whose triangle is beyond any allocation too.
int OrderOfVector(const std::vector<double>& v) {
    return static_cast<int>(std::min<std::size_t>(v.size(), std::numeric_limits<int>::max()));
}

}  // namespace

bool KwSymMatrix::UpdateXX(const std::vector<double>& x, double weight) {
    if (std::cmp_not_equal(x.size(), fNRows) || !(weight > 0.0)) {
        return false;
    }
    const double* values = x.data();
    double* run = fData.data();
    for (int i = 0; i < fNRows; ++i) {
        if (values[i] != 0.0) {
            AddMultiple(run, i + 1, values[i] * weight, values);
        }
        run += i + 1;
    }
    return true;
}

void KwSymMatrix::IncrementByVV(const double* v, double weight) {
    double* run = fData.data();
    for (int i = 0; i < fNRows; ++i) {
        AddMultiple(run, i + 1, v[i] * weight, v);
        run += i + 1;
    }
}

bool KwSymMatrix::SetToVV(const std::vector<double>& v) {
    if (&v == &fData) {
        std::vector<double> operand;
        operand.swap(fData);
        return SetToVV(operand);
    }
    if (!KwSymMatrix::Resize(OrderOfVector(v))) {
        return false;
    }
    const double* values = v.data();
    double* run = fData.data();
    for (int i = 0; i < fNRows; ++i) {
        for (int j = 0; j <= i; ++j) {
            run[j] = values[i] * values[j];
        }
        run += i + 1;
    }
    return true;
}

bool KwSymMatrix::SetToVW(const std::vector<double>& v, const std::vector<double>& w) {
    if (v.size() != w.size()) {
        return false;
    }
    if (&v == &fData || &w == &fData) {
        std::vector<double> operand;
        operand.swap(fData);
        return SetToVW(&v == &fData ? operand : v, &w == &fData ? operand : w);
    }
    if (!KwSymMatrix::Resize(OrderOfVector(v))) {
        return false;
    }
    const double* valuesV = v.data();
    const double* valuesW = w.data();
    double* run = fData.data();
    for (int i = 0; i < fNRows; ++i) {
        for (int j = 0; j <= i; ++j) {
            run[j] = valuesV[i] * valuesW[j] + valuesW[i] * valuesV[j];
        }
        run += i + 1;
    }
    return true;
}

}  // namespace KwMath_930
