// The numerics library in use: solve, invert, accumulate, regress by sweeps, extract, sparse and block operands. Quoted
// by docs/numerics.md; built and run with the tests. Ends with exit code 1 when a result is not the expected one.
#include <cmath>
#include <iostream>
#include <vector>

#include "numerics/containers/KwBitSet.h"
#include "numerics/matrix/KwRectMatrix.h"
#include "numerics/matrix/KwSparseRectMatrix.h"
#include "numerics/matrix/KwSymBlockDiagMatrix.h"
#include "numerics/matrix/KwSymMatrix.h"

using KwMath_930::KwBitSet;
using KwMath_930::KwRectMatrix;
using KwMath_930::KwSparseRectMatrix;
using KwMath_930::KwSymBlockDiagMatrix;
using KwMath_930::KwSymMatrix;
using std::vector;

namespace {

int gFaults = 0;

void Expect(const char* what, double actual, double expected) {
    const bool isRight = std::abs(actual - expected) <= 1e-12 * (1.0 + std::abs(expected));
    gFaults += isRight ? 0 : 1;
    std::cout << what << " = " << actual << (isRight ? "" : "  WRONG") << '\n';
}

KwSymMatrix Sample() {
    KwSymMatrix s(2, true);
    s.SetElem(0, 0, 4.0);
    s.SetElem(1, 0, 2.0);
    s.SetElem(1, 1, 10.0);
    return s;
}

void Build() {
    KwSymMatrix s(1000, true);
    const bool isUsable = s.IsValidMatrix();
    s.SetElem(7, 2, 2.5);
    const double same = s.GetElem(2, 7);
    Expect("usable", isUsable, 1);
    Expect("mirrored", same, 2.5);
}

void SolveOnce() {
    KwSymMatrix s = Sample();
    vector<double> x;
    const int zeroPivots = s.LTSolve({8.0, 22.0}, 1e-10, x);
    Expect("zero pivots", zeroPivots, 0);
    Expect("x[0]", x[0], 1);
    Expect("x[1]", x[1], 2);
}

void SolveOften() {
    KwSymMatrix factor = Sample();
    vector<double> ref, x;
    factor.GetDiagonal(ref);
    factor.LTChol(ref, 1e-10, true);
    factor.LTSubstitute({8.0, 22.0}, x);
    factor.LTSubstitute({0.0, 36.0}, x);
    Expect("second x[1]", x[1], 4);
}

void Invert() {
    const KwSymMatrix s = Sample();
    KwSymMatrix inverse;
    vector<double> ref;
    s.GetDiagonal(ref);
    const int rank = s.CholInverse(ref, 1e-10, inverse);
    double det[2];
    s.ComputeDeterminant(1e-10, det);
    Expect("rank", rank, 2);
    Expect("inverse", inverse.GetElem(1, 1), 4.0 / 36.0);
    Expect("determinant", det[0] * std::pow(10.0, det[1]), 36);
}

void SolveWhatIsNotPositiveDefinite() {
    KwSymMatrix s(2, true);
    s.SetElem(1, 0, 3.0);
    vector<double> x;
    const bool isSolved = s.SolveIndefinite(1e-12, {6.0, 9.0}, x);
    Expect("solved", isSolved, 1);
    Expect("x[0]", x[0], 3);
}

void Regress() {
    KwSymMatrix crossProducts(3, true);
    for (const vector<double>& row : {vector<double>{1, 1, 5}, {1, 2, 7}, {1, 4, 11}}) {
        crossProducts.UpdateXX(row, 1.0);
    }
    KwBitSet swept(3);
    double logDet = 0.0;
    crossProducts.SweepOnMany(2, 1e-10, true, swept, logDet, true, nullptr);
    vector<double> coefficients;
    crossProducts.GetRegCoeffs(coefficients, swept);
    Expect("intercept", coefficients[0], 3);
    Expect("slope", coefficients[1], 2);
}

void Extract() {
    const KwSymMatrix s = Sample();
    KwSymMatrix part, larger;
    s.ExtractSubmatrix({1}, part);
    s.ExpandSym({0, 3}, 4, larger);
    Expect("part", part.GetElem(0, 0), 10);
    Expect("larger", larger.GetElem(3, 0), 2);
}

void MixKinds() {
    const KwSymMatrix s = Sample();
    KwSparseRectMatrix r(3, 2);
    r.SetElem(2, 0, 1.5);
    KwSymMatrix product;
    s.ComputeRSRTrans(r, product);
    KwSymBlockDiagMatrix blocks({1, 1}, KwBitSet(2));
    blocks.AddToDiagonal(3.0);
    const double trace = s.TraceOfProduct(blocks);
    Expect("product", product.GetElem(2, 2), 9);
    Expect("trace", trace, 42);
}

}  // namespace

int main() {
    Build();
    SolveOnce();
    SolveOften();
    Invert();
    SolveWhatIsNotPositiveDefinite();
    Regress();
    Extract();
    MixKinds();
    return gFaults == 0 ? 0 : 1;
}
