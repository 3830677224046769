// The product of a block-diagonal matrix with plain rows, at the cost of its blocks. Internal.
#pragma once

#include <vector>

#include "numerics/matrix/KwSymBlockDiagMatrix.h"

namespace KwMath_930 {

/// Returns: B R, row by row.
/// Shape:   R has as many rows as B and nCols columns, row by row.
/// Note:    may throw std::bad_alloc. Gives what the full B would give: a NaN or an infinity of R reaches, as NaN, the
///          rows of other blocks too.
std::vector<double> BlockProduct(const KwSymBlockDiagMatrix& b, int nCols, const double* r);

}  // namespace KwMath_930
