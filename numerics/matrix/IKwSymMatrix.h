// The interface through which every kind of symmetric matrix is reached.
#pragma once

#include <vector>

#include "numerics/Export.h"

namespace KwMath_930 {

class IKwRectMatrix;
class KwBitSet;
class KwSymMatrix;

/// A symmetric matrix S of doubles, of order n, whatever its storage. No data. Operations are declared in slot order;
/// the destructor is slot 0, and a number stands at each operation.
/// Indices count from 0. Element (i, j) and element (j, i) are one value. L is the lower triangle with the diagonal,
/// zeros above it. No operation throws.
/// Unless an operation says otherwise:
/// - sizes and indices are checked before anything is written; a mismatch or an invalid operand gives false, 0.0 or -1
///   and changes nothing; so does memory that fails, except that a target whose own storage failed becomes invalid;
/// - a target whose size differs is resized, by its virtual Resize; a symmetric target must be of the dense kind
///   (GetType() 0) and is left with one block; a target may be an operand or this matrix;
/// - a vector that is read may be longer than needed, except in quadratic forms, which want the exact size;
/// - an empty matrix succeeds with empty targets and scalars 0.0.
/// Note:    slots count in the order of declaration; MSVC lays adjacent overloads out in reverse (docs/windows.md).
class KW_EXPORT IKwSymMatrix {
public:
    /// The kinds of symmetric matrix.
    enum SymMatrixType {
        kDenseSymMatrix = 0,     ///< KwSymMatrix: one packed lower triangle
        kBlockDiagSymMatrix = 1  ///< KwSymBlockDiagMatrix: square blocks on the diagonal, 0 outside
    };

    IKwSymMatrix() = default;
    IKwSymMatrix(const IKwSymMatrix&) = default;
    IKwSymMatrix& operator=(const IKwSymMatrix&) = default;
    virtual ~IKwSymMatrix();  // slot 0

    /// Returns: the kind of the matrix.
    virtual SymMatrixType GetType() const = 0;  // slot 1
    /// Returns: the order n; -1 for an invalid matrix, one whose storage could not be allocated.
    virtual int GetNRows() const = 0;  // slot 2
    /// Returns: true when GetNRows() >= 0.
    virtual bool IsValidMatrix() const = 0;  // slot 3
    /// Shape:   0 <= i, j < n, unchecked.
    /// Returns: element (i, j).
    virtual double GetElem(int i, int j) const = 0;  // slot 4
    /// Copies the diagonal to diagonal, which is resized to n if its size differs; an allocation that fails leaves it.
    virtual void GetDiagonal(std::vector<double>& diagonal) const = 0;  // slot 5
    /// Copies the full row i (row and column are one) to row, which is resized to n if its size differs.
    /// Returns: false unless 0 <= i < n, or when row could not be allocated; row is unchanged then.
    virtual bool GetRow(int i, std::vector<double>& row) const = 0;  // slot 6
    /// Adds value to every diagonal element.
    virtual void AddToDiagonal(double value) = 0;  // slot 7
    /// Negates every element.
    virtual void ChangeSign() = 0;  // slot 8
    /// As CholInverse of slot 11; minDiag becomes the smallest diagonal element of the factor, minus the largest double
    /// for n = 0. It is not written on -1.
    virtual int CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target,
                            double& minDiag) const = 0;  // slot 9
    /// As CholInverse of slot 11; zeros is made n bits long and bit k is set for each zero pivot k. It is not written
    /// on -1.
    virtual int CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target,
                            KwBitSet& zeros) const = 0;  // slot 10
    /// The (generalised) inverse of this matrix into target, by Cholesky factor; this matrix is unchanged.
    /// Shape:   ref has n values; pivot k counts as zero unless it exceeds tol * ref[k].
    /// Returns: the rank, n minus the zero pivots; -1 when target is not of the dense kind (nothing is written then),
    ///          when ref is too short or when memory fails.
    /// Note:    rows and columns of zero pivots are 0. target takes the three counts of this matrix. tol and the values
    ///          of ref are never checked.
    virtual int CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target) const = 0;  // slot 11
    /// Sets every element to 0; the order is kept.
    virtual void Clear() = 0;  // slot 12
    /// S := a X + S.
    /// Returns: false unless the orders agree.
    virtual bool ComputeAXpY(double a, const IKwSymMatrix& x) = 0;  // slot 13
    /// The determinant of this matrix, which is unchanged, as det[0] * 10^det[1] with 1 <= |det[0]| < 10, or (0, 0).
    /// Shape:   tol is relative to the largest diagonal element; det points to two doubles.
    /// Returns: false for n < 1 or when memory fails.
    /// Note:    (0, 0) when a pivot of the Cholesky factor is zero within tol.
    virtual bool ComputeDeterminant(double tol, double* det) const = 0;  // slot 14
    /// Returns: the sum over k of S(i,k) S(j,k).
    virtual double ComputeDotProduct2Rows(int i, int j) const = 0;  // slot 15
    /// target(i,j) = g[i] S(i,j) g[j].
    /// Shape:   g has exactly n elements.
    virtual bool ComputeGMG(const std::vector<double>& g, KwSymMatrix& target) const = 0;  // slot 16
    /// target = lower triangle of G M G N G, G being this matrix.
    /// Shape:   the three orders agree; work is scratch of any size.
    /// Note:    the product is symmetric only for M = N.
    virtual bool ComputeGMGNG(const IKwSymMatrix& m, const IKwSymMatrix& n, IKwSymMatrix& target,
                              std::vector<double>& work) const = 0;  // slot 17
    /// target = lower triangle of M G N, G being this matrix.
    virtual bool ComputeMGN(const IKwSymMatrix& m, const IKwSymMatrix& n, IKwSymMatrix& target) const = 0;  // slot 18
    /// target = G S G.
    virtual bool ComputeGSG(const IKwSymMatrix& g, IKwSymMatrix& target) const = 0;  // slot 19
    /// target = L M L^T, L being the lower triangle of this matrix.
    virtual bool ComputeLSLTrans(const IKwSymMatrix& m, IKwSymMatrix& target) const = 0;  // slot 20
    /// target = L^T M L over the leading k rows, L being the lower triangle of this matrix.
    /// Returns: false unless 0 <= k <= n and M has the order n.
    virtual bool ComputeLTransSL(const IKwSymMatrix& m, IKwSymMatrix& target, int k) const = 0;  // slot 21
    /// out = L^T v, v being values[k] at indices[k] (repeats add up) and 0 elsewhere.
    virtual bool ComputeLTransV(const std::vector<int>& indices, const std::vector<double>& values,
                                std::vector<double>& out) const = 0;  // slot 22
    /// out = L^T v.
    virtual bool ComputeLTransV(const std::vector<double>& v, std::vector<double>& out) const = 0;  // slot 23
    /// out = L v, v being values[k] at indices[k] (repeats add up) and 0 elsewhere.
    virtual bool ComputeLV(const std::vector<int>& indices, const std::vector<double>& values,
                           std::vector<double>& out) const = 0;  // slot 24
    /// out = L v.
    virtual bool ComputeLV(const std::vector<double>& v, std::vector<double>& out) const = 0;  // slot 25
    /// Returns: row i of this matrix times row j of the symmetric matrix whose lower triangle packed holds row by row;
    ///          0.0 for a bad index or when packed has fewer than n(n+1)/2 elements.
    virtual double ComputeRowDotProductS(int i, const std::vector<double>& packed, int j) const = 0;  // slot 26
    /// Returns: row i of this matrix times row j of m; 0.0 for a bad index or another order.
    virtual double ComputeRowDotProductS(int i, const IKwSymMatrix& m, int j) const = 0;  // slot 27
    /// target = R S; R has n columns.
    virtual bool ComputeRS(const IKwRectMatrix& r, IKwRectMatrix& target) const = 0;  // slot 28
    /// target = R S R^T; R has n columns.
    virtual bool ComputeRSRTrans(const IKwRectMatrix& r, IKwSymMatrix& target) const = 0;  // slot 29
    /// target = R^T S; R has n rows.
    virtual bool ComputeRTransS(const IKwRectMatrix& r, IKwRectMatrix& target) const = 0;  // slot 30
    /// target = R^T S R; R has n rows.
    virtual bool ComputeRTransSR(const IKwRectMatrix& r, IKwSymMatrix& target) const = 0;  // slot 31
    /// out = R^T S v; R has n rows.
    virtual bool ComputeRTransSV(const IKwRectMatrix& r, const std::vector<double>& v,
                                 std::vector<double>& out) const = 0;  // slot 32
    /// Returns: row i of S times the elements v[0], v[inc], v[2 inc], ...; inc may be negative or 0.
    virtual double ComputeRVD(int i, const double* v, int inc) const = 0;  // slot 33
    /// As the form above; 0.0 when an element lies outside v.
    virtual double ComputeRVD(int i, const std::vector<double>& v, int inc) const = 0;  // slot 34
    /// target = S M, a general n x n matrix.
    virtual bool ComputeSS(const IKwSymMatrix& m, IKwRectMatrix& target) const = 0;  // slot 35
    /// target = S^T S.
    virtual bool ComputeSTransS(IKwSymMatrix& target) const = 0;  // slot 36
    /// out = the leading k x k part times the first k elements of v; out has k elements.
    /// Returns: false unless 0 <= k <= n.
    virtual bool ComputeSV(int k, const std::vector<double>& v, std::vector<double>& out) const = 0;  // slot 37
    /// The product S v, into out, which is resized to n if its size differs and may be v itself.
    /// Returns: false when v has fewer than n elements, when the matrix is invalid or when memory fails, out unchanged
    ///          then; true otherwise, also for n = 0.
    virtual bool ComputeSV(const std::vector<double>& v, std::vector<double>& out) const = 0;  // slot 38
    /// Returns: v^T S v, v being row i of R, which has n columns.
    virtual double ComputeVSV(const IKwRectMatrix& r, int i) const = 0;  // slot 39
    /// Returns: v^T S v; 0.0 when v does not have exactly n elements or n < 1.
    virtual double ComputeVSV(const std::vector<double>& v) const = 0;  // slot 40
    /// Returns: v^T S w, v being x[a], x[a + inc], ... and w being x[b], x[b + inc], ...; 0.0 when one lies outside x.
    virtual double ComputeVSW(const std::vector<double>& x, int a, int b, int inc) const = 0;  // slot 41
    /// Returns: v^T S w of the strided arrays, element k at k * inc.
    virtual double ComputeVSW(const double* v, int incv, const double* w, int incw) const = 0;  // slot 42
    /// Returns: v^T S w; 0.0 when v or w does not have exactly n elements or n < 1.
    virtual double ComputeVSW(const std::vector<double>& v, const std::vector<double>& w) const = 0;  // slot 43
    /// Returns: the sum over i < nv, j < nw of v[i] S(i,j) w[j]; 0.0 when a count is outside 0..n.
    virtual double ComputeVSWParts(const double* v, int nv, const double* w, int nw) const = 0;  // slot 44
    /// As the form above; 0.0 also when a vector is shorter than its count.
    virtual double ComputeVSWParts(const std::vector<double>& v, int nv, const std::vector<double>& w,
                                   int nw) const = 0;  // slot 45
    /// target keeps its own order k and receives the leading k x k part.
    /// Returns: false when k > n.
    virtual bool ExtractFirstNRows(IKwSymMatrix& target) const = 0;  // slot 46
    /// target(a, b) = S(rows[a], rows[b]); repeats are allowed.
    virtual bool ExtractSubmatrix(const std::vector<int>& rows, IKwSymMatrix& target) const = 0;  // slot 47
    /// Builds the reference diagonal of a tolerance test: every element of diagonal, which is resized to n, becomes the
    /// largest diagonal element of S, or 0 if none is positive.
    /// Note:    Deliberate: a and b are accepted and not used.
    virtual void GetNCheckDiagonal(std::vector<double>& diagonal, double a, double b) const = 0;  // slot 48
    /// v[offset + k inc] += a S(i,k) for k = 0 .. n-1.
    /// Returns: false for a bad i and, if check is set, when a place lies outside v.
    /// Note:    without check every place must lie in v.
    virtual bool IncrVecByRow(int i, std::vector<double>& v, int offset, int inc, double a,
                              bool check) const = 0;  // slot 49
    /// Returns: true when every element of row i is 0, not counting columns whose bit is set; false for a bad index
    ///          or a NaN. Bits beyond the set count as clear.
    virtual bool IsZeroRow(int i, const KwBitSet& ignored) const = 0;  // slot 50
    /// As LTChol of slot 53 with every pivot judged against tol times the largest diagonal element, which the virtual
    /// GetNCheckDiagonal gives.
    /// Returns: as slot 53; minDiag becomes the smallest diagonal element of the factor, minus the largest double for n
    ///          < 1 or on -1.
    virtual int LTChol(double tol, double& minDiag, bool check) = 0;  // slot 51
    /// As LTChol of slot 53; zeros is made n bits long, or cleared whole when long enough, and bit k is set for each
    /// zero pivot k.
    virtual int LTChol(const std::vector<double>& ref, double tol, KwBitSet& zeros, bool check) = 0;  // slot 52
    /// Cholesky factor in place: S = L L^T.
    /// Shape:   ref has n values >= 0, the scale against which each pivot is judged.
    /// Returns: number of zero pivots; -1 when ref is too short and, if check is set, when tol < 0 (also for n = 0) or
    ///          an element of ref is negative; the matrix is unchanged then.
    /// Note:    pivot k is kept only if d > tol * ref[k] (strict); else L(k,k) and the column below it become 0.
    /// Source:  row-wise Cholesky with relative pivot test, [Golub and Van Loan 4.2].
    virtual int LTChol(const std::vector<double>& ref, double tol, bool check) = 0;  // slot 53
    /// Determinant and/or inverse of the factor that the matrix holds.
    /// Shape:   job mod 10 not 0 asks for the determinant, job / 10 not 0 for the inverse of L in place; det points to
    ///          two doubles, read and written only if asked.
    /// Returns: the number of zero diagonal elements; 0 for an invalid matrix.
    /// Note:    det[0] * 10^det[1] is the product of the diagonal of L, the square root of the determinant of L L^T
    ///          (deliberately so), (0, 0) when a diagonal element is 0. Rows and columns of zero pivots become 0.
    virtual int LTDetInverse(double* det, int job) = 0;  // slot 54
    /// Turns the Cholesky factor L that the matrix holds into the (generalised) inverse of L L^T, by the virtual
    /// LTDetInverse with job 10 and the virtual LTLTransL.
    /// Returns: true, always.
    virtual bool LTInverse() = 0;  // slot 55
    /// Replaces L by the symmetric product L L^T.
    virtual void LTLLTrans() = 0;  // slot 56
    /// Replaces L by the symmetric product L^T L.
    virtual void LTLTransL() = 0;  // slot 57
    /// Factorises the matrix in place, each pivot judged against tol times its own initial diagonal element, and
    /// solves. Returns: the number of zero pivots, whose components of x are 0; -1 unless tol > 0 and b has at least n
    ///          elements, x unchanged then.
    virtual int LTSolve(const std::vector<double>& b, double tol, std::vector<double>& x) = 0;  // slot 58
    /// Largest and smallest diagonal element, scanned from minus and plus the largest double.
    /// Note:    for n < 1 nothing is written; NaN never wins a comparison.
    virtual void MaxMinDiag(double& largest, double& smallest) const = 0;  // slot 59
    /// As MaxMinDiag, and the same over the elements off the diagonal, whose outputs keep the start values for n = 1.
    virtual void MaxMinDiagOffDiag(double& largestDiag, double& smallestDiag, double& largestOff,
                                   double& smallestOff) const = 0;  // slot 60
    /// Multiplies every element by factor.
    virtual void MultiplyByNumber(double factor) = 0;  // slot 61
    /// Writes row to the full row i, and so to column i.
    /// Returns: false unless 0 <= i < n and row has at least n elements; nothing is changed then.
    virtual bool PutRow(int i, const std::vector<double>& row) = 0;  // slot 62
    /// Makes the order n, 0 for a negative n. The leading principal submatrix is kept, new elements are 0.
    /// Returns: false when the allocation failed; the matrix is invalid then.
    virtual bool Resize(int n) = 0;  // slot 63
    /// Shape:   0 <= i, j < n, unchecked.
    /// Returns: true after setting element (i, j); false where a kind of matrix cannot hold the value there.
    virtual bool SetElem(int i, int j, double value) = 0;  // slot 64
    /// As Resize, then sets every element to 0 if zero is true.
    virtual bool SetNRows(int n, bool zero) = 0;  // slot 65
    /// Sets every element of row i and column i, the diagonal one included, to value.
    /// Returns: false unless 0 <= i < n; nothing is changed then.
    virtual bool SetRowColToConst(int i, double value) = 0;  // slot 66
    /// Returns: the sum of the diagonal; 0.0 for n < 1.
    virtual double Trace() const = 0;  // slot 67
    /// Returns: trace(S M).
    virtual double TraceOfProduct(const IKwSymMatrix& m) const = 0;  // slot 68
    /// Returns: trace(S M N).
    virtual double TraceOfProductOfThree(const IKwSymMatrix& m, const IKwSymMatrix& n) const = 0;  // slot 69
    /// As SetRowColToConst with 0.
    virtual bool ZeroOut(int i) = 0;  // slot 70
    /// Sets to 0 every element off the diagonal with tol * sqrt(|S(i,i)| |S(j,j)|) >= |S(i,j)|.
    /// Note:    does nothing unless tol > 0; equality counts as small.
    virtual void ZeroOutNonDiag(double tol) = 0;  // slot 71
    /// Dumps the matrix as it is stored.
    virtual void Display() const = 0;  // slot 72
    /// Dumps the full square matrix, row by row, in full precision.
    virtual void DisplayF() const = 0;  // slot 73
};

}  // namespace KwMath_930
