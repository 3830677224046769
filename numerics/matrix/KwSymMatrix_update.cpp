// Symmetric matrix, rank-one updates: accumulation of weighted cross-products and settings to products of vectors. Each
// stored run (i, 0..i) takes a multiple of the leading i+1 vector elements. Test: KwSymMatrix_update_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

#include "numerics/blas1/vector_kernels.h"
#include "numerics/containers/KwBitSet.h"
#include "numerics/matrix/dense_kernels.h"
#include "numerics/matrix/index_checks.h"
#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930 {

using dense_kernels::AddMultiple;

namespace {

// A size beyond the range of int becomes the largest int, whose triangle is beyond any allocation too.
int OrderOfVector(const std::vector<double>& v) {
    return static_cast<int>(std::min<std::size_t>(v.size(), std::numeric_limits<int>::max()));
}

}  // namespace

bool KwSymMatrix::UpdateXX(const std::vector<double>& x, double weight) {
    return weight > 0.0 && UpdateXXPosNegW(x, weight);
}

bool KwSymMatrix::UpdateZZ(const std::vector<double>& z, double weight) {
    return UpdateXX(z, weight);
}

bool KwSymMatrix::UpdateXXPosNegW(const std::vector<double>& x, double weight) {
    if (std::cmp_not_equal(x.size(), fNRows) || !(weight > 0.0 || weight < 0.0)) {
        return false;
    }
    constexpr int kLong = 16;  // from here on a call costs less than it saves
    const VectorKernels& kernels = FastestVectorKernels();
    const double* values = x.data();
    double* run = fData.data();
    for (int i = 0; i < fNRows; ++i) {
        if (values[i] != 0.0 && i < kLong) {
            AddMultiple(i + 1, values[i] * weight, values, run);
        } else if (values[i] != 0.0) {
            kernels.addScaled(static_cast<std::size_t>(i) + 1, values[i] * weight, values, run);
        }
        run += i + 1;
    }
    return true;
}

bool KwSymMatrix::UpdateXXNonRedun(const std::vector<double>& x, double weight, const KwBitSet& redundant) {
    if (std::cmp_not_equal(x.size(), fNRows) || !(weight > 0.0) || redundant.Size() < fNRows) {
        return false;
    }
    const double* values = x.data();
    double* run = fData.data();
    for (int i = 0; i < fNRows; ++i) {
        const double factor = values[i] * weight;
        for (int j = 0; values[i] != 0.0 && !redundant.IsIn(i) && j <= i; ++j) {
            if (!redundant.IsIn(j)) {
                run[j] += factor * values[j];
            }
        }
        run += i + 1;
    }
    return true;
}

bool KwSymMatrix::UpdateXXMat2(const std::vector<double>& x, const std::vector<double>& y, double weight) {
    if (std::cmp_not_equal(x.size(), fNRows) || std::cmp_not_equal(y.size(), fNRows) || !(weight > 0.0)) {
        return false;
    }
    double* run = fData.data();
    for (int i = 0; i < fNRows; ++i) {
        const double factorX = x[static_cast<std::size_t>(i)] * weight;
        const double factorY = y[static_cast<std::size_t>(i)] * weight;
        for (int j = 0; j <= i; ++j) {
            run[j] += factorX * y.data()[j] + factorY * x.data()[j];
        }
        run += i + 1;
    }
    return true;
}

bool KwSymMatrix::UpdateXXSparse(const std::vector<int>& indices, const std::vector<double>& values, double weight) {
    return UpdateXXCornerSparse(indices, values, weight, 0);
}

bool KwSymMatrix::UpdateXXCornerSparse(const std::vector<int>& indices, const std::vector<double>& values,
                                       double weight, int corner) {
    if (corner < 0 || corner > fNRows || !AreEntries(indices, values, fNRows - corner) || !(weight > 0.0)) {
        return false;
    }
    for (std::size_t a = 0; a < indices.size(); ++a) {
        double* run = fData.data() + packed_triangle::RowStart(corner + indices[a]) + corner;
        const double factor = values[a] * weight;
        for (std::size_t b = 0; b < indices.size(); ++b) {
            if (indices[b] <= indices[a]) {
                run[indices[b]] += factor * values[b];
            }
        }
    }
    return true;
}

void KwSymMatrix::IncrementByVV(const double* v, double weight) {
    double* run = fData.data();
    for (int i = 0; i < fNRows; ++i) {
        AddMultiple(i + 1, v[i] * weight, v, run);
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
