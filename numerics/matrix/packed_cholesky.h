// The inner algorithms on a packed lower triangle: Cholesky factor, inverse of a factor, products of a factor with its
// transpose. In place, without memory of their own. Internal.
#pragma once

namespace KwMath_930 {

class KwBitSet;

namespace packed_cholesky {

/// Cholesky factor of the leading n rows, in place.
/// Shape:   ref has n values; pivot k is kept only if it is > tol * ref[k], else L(k,k) and the column below become 0.
/// Returns: the number of zero pivots; bit firstBit + k of zeros, unless null, is set for each.
int Factor(double* packed, int n, const double* ref, double tol, KwBitSet* zeros, int firstBit = 0);

/// Solves L x = b; x holds b before. A zero pivot gives the component 0. Each dot product goes from left to right.
void SolveForward(const double* packed, int n, double* x);

/// Solves L^T x = b, as SolveForward.
void SolveBackward(const double* packed, int n, double* x);

/// L becomes its inverse; rows and columns of zero pivots become 0.
void Invert(double* packed, int n);

/// L becomes L^T L.
void MultiplyTransposedByItself(double* packed, int n);

/// L becomes L L^T.
void MultiplyByTransposed(double* packed, int n);

}  // namespace packed_cholesky
}  // namespace KwMath_930
