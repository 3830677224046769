// Symmetric matrix, quadratic forms. One pass over the packed triangle; each stored element off the diagonal stands for
// itself and its mirror. Nothing is allocated. Test: KwSymMatrix_quadratic_forms_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <utility>

namespace KwMath_930 {

double KwSymMatrix::ComputeVSV(const std::vector<double>& v) const {
    if (fNRows < 1 || std::cmp_not_equal(v.size(), fNRows)) {
        return 0.0;
    }
    const double* values = v.data();
    const double* run = fData.data();
    double form = 0.0;
    for (int i = 0; i < fNRows; ++i) {
        double left = 0.0;
        for (int j = 0; j < i; ++j) {
            left += run[j] * values[j];
        }
        form += values[i] * (2.0 * left + run[i] * values[i]);
        run += i + 1;
    }
    return form;
}

double KwSymMatrix::ComputeVSW(const std::vector<double>& v, const std::vector<double>& w) const {
    if (fNRows < 1 || std::cmp_not_equal(v.size(), fNRows) || std::cmp_not_equal(w.size(), fNRows)) {
        return 0.0;
    }
    const double* valuesV = v.data();
    const double* valuesW = w.data();
    const double* run = fData.data();
    double form = 0.0;
    for (int i = 0; i < fNRows; ++i) {
        double leftV = 0.0;
        double leftW = 0.0;
        for (int j = 0; j < i; ++j) {
            leftV += run[j] * valuesV[j];
            leftW += run[j] * valuesW[j];
        }
        form += valuesV[i] * (leftW + run[i] * valuesW[i]) + valuesW[i] * leftV;
        run += i + 1;
    }
    return form;
}

}  // namespace KwMath_930
