// A diagonal matrix: its diagonal, as a vector.
#pragma once

#include <vector>

#include "numerics/Export.h"

namespace KwMath_930 {

/// A diagonal matrix of doubles. Copies are deep.
class KW_EXPORT KwDiagMatrix {
public:
    /// A matrix of order 0.
    KwDiagMatrix();
    /// The matrix with this diagonal.
    /// Note:    may throw std::bad_alloc.
    explicit KwDiagMatrix(const std::vector<double>& diagonal);

    /// Returns: the diagonal, writable; its length is the order.
    std::vector<double>& AsVector();
    /// Returns: the diagonal.
    const std::vector<double>& AsVectorConst() const;

private:
    std::vector<double> fDiagonal;
};

}  // namespace KwMath_930
