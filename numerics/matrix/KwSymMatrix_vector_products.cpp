// Symmetric matrix, products with a vector. One pass over the packed triangle serves both triangles: the run (i, 0..i)
// gives element i its leading terms and every element j < i its term i, so that each sum grows from left to right.
// Test: KwSymMatrix_vector_products_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <utility>

#include "numerics/matrix/resize_target.h"

namespace KwMath_930 {

bool KwSymMatrix::ComputeSV(const std::vector<double>& v, std::vector<double>& out) const {
    if (fNRows < 0 || std::cmp_less(v.size(), fNRows)) {
        return false;
    }
    if (&v == &out) {
        std::vector<double> operand;
        return ResizeNCopy(operand, v) && KwSymMatrix::ComputeSV(operand, out);
    }
    if (!ResizeTarget(out, fNRows)) {
        return false;
    }
    const double* values = v.data();
    const double* run = fData.data();
    double* sums = out.data();
    for (int i = 0; i < fNRows; ++i) {
        double sum = 0.0;
        for (int j = 0; j < i; ++j) {
            sum += run[j] * values[j];
            sums[j] += run[j] * values[i];
        }
        sums[i] = sum + run[i] * values[i];
        run += i + 1;
    }
    return true;
}

}  // namespace KwMath_930
