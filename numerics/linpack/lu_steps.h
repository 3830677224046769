// What is done with a factorisation by Gaussian elimination with row exchanges, full or band: U stands in the upper
// triangle of a view, the negated multipliers of each column right below its diagonal. Internal.
#pragma once

#include <algorithm>
#include <utility>

#include "numerics/blas1/Blas1.h"
#include "numerics/linpack/ScaledProduct.h"
#include "numerics/linpack/condition_steps.h"
#include "numerics/linpack/inner_products.h"
#include "numerics/linpack/triangle_solves.h"

namespace KwMath_930::linpack {

template <class Columns>
class LuFactors {
public:
    /// below is the number of multipliers in a full column: n - 1, or that of the lower diagonals of a band.
    LuFactors(Columns a, int n, int below, const int* ipvt) : fA(a), fN(n), fBelow(below), fPivot(ipvt) {}

    /// b := inverse of A times b.
    void Solve(double* b) const {
        for (int k = 0; k < fN - 1; ++k) {
            ExchangePivot(k, b);
            AddScaled(Below(k), b[k], fA.Column(k) + k + 1, b + k + 1);
        }
        SolveUpper(fA, fN, b);
    }

    /// b := inverse of A^T times b.
    void SolveTransposed(double* b) const {
        SolveTransposedUpper(fA, 0, fN, b);
        for (int k = fN - 2; k >= 0; --k) {
            b[k] += Dot(Below(k), fA.Column(k) + k + 1, b + k + 1);
            ExchangePivot(k, b);
        }
    }

    /// rcond, norm being that of the matrix before it was factored; lastInRow(k) is the end of row k of U.
    template <class RowEnd>
    double EstimateCondition(double norm, RowEnd rowEnd, double* z) const {
        SolveForGrowth(
            fN, false, [a = fA](int i, int j) { return a.Column(j)[i]; },
            [rowEnd](int k) mutable {
                return Span{k + 1, rowEnd(k)};
            },
            z);
        for (int k = fN - 1; k >= 0; --k) {
            z[k] += Dot(Below(k), fA.Column(k) + k + 1, z + k + 1);
            ShrinkTo(1.0, k, fN, z);
            ExchangePivot(k, z);
        }
        Normalise(fN, z);
        double yNorm = 1.0;
        for (int k = 0; k < fN; ++k) {
            ExchangePivot(k, z);
            AddScaled(Below(k), z[k], fA.Column(k) + k + 1, z + k + 1);
            yNorm *= ShrinkTo(1.0, k, fN, z);
        }
        yNorm *= Normalise(fN, z);
        SolveUpperSafely(fA, fN, z, yNorm);
        return ReciprocalCondition(norm, yNorm);
    }

    void StoreDeterminant(double* det) const {
        ScaledProduct product;
        for (int k = 0; k < fN; ++k) {
            if (fPivot[k] != k + 1) {
                product.Negate();
            }
            if (!product.MultiplyBy(fA.Column(k)[k])) {
                break;
            }
        }
        product.StoreTo(det);
    }

private:
    int Below(int k) const { return std::min(fBelow, fN - 1 - k); }
    void ExchangePivot(int k, double* b) const { std::swap(b[k], b[fPivot[k] - 1]); }

    Columns fA;
    int fN;
    int fBelow;
    const int* fPivot;
};

}  // namespace KwMath_930::linpack
