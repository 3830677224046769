// Diagonal matrix. Test: KwSparseVector_test.cpp.
#include "numerics/matrix/KwDiagMatrix.h"

namespace KwMath_930 {

KwDiagMatrix::KwDiagMatrix() = default;

KwDiagMatrix::KwDiagMatrix(const std::vector<double>& diagonal) : fDiagonal(diagonal) {}

std::vector<double>& KwDiagMatrix::AsVector() {
    return fDiagonal;
}

const std::vector<double>& KwDiagMatrix::AsVectorConst() const {
    return fDiagonal;
}

}  // namespace KwMath_930
