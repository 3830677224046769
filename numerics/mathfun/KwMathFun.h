// Strided vector helpers, products with packed symmetric matrices, comparisons and searches, digamma and trigamma.
#pragma once

#include <vector>

#include "numerics/Export.h"

namespace KwMath_930 {

/// Functions that the matrix code is written with. Static functions only, no state; callable from any thread.
/// Shape:   a strided vector is a vector with an offset and an increment: element k, counted from 0, stands at
///          offset + k inc. A packed symmetric matrix of order n holds its lower triangle row by row, element (i, j)
///          with j <= i at i(i + 1)/2 + j; the upper triangle packed by columns is the same.
/// Returns: where a double cannot be computed for want of a valid size or order, the missing value of KwMV.
/// Fails:   never throws and never allocates.
/// Note:    offsets and increments are trusted, not checked against the size of their vector.
class KW_EXPORT KwMathFun {
public:
    static const int kSmallestArrayLimit;  ///< 7; not used by this class
    static const int kBigArrayLimit;       ///< 40; not used by this class

    // ---- Strided vectors: the routines of Blas1 at an offset

    /// Shape:   a walk with a negative increment starts at offset + (1 - n) inc.
    /// Returns: the dot product, summed from the first element to the last; 0.0 for n < 1.
    static double DDot(int n, const std::vector<double>& x, int offx, int incx, const std::vector<double>& y, int offy,
                       int incy);
    /// y := a x + y, walked as by DDot; nothing for n < 1 or a equal to 0.0.
    static void Daxpy(int n, double a, const std::vector<double>& x, int offx, int incx, std::vector<double>& y,
                      int offy, int incy);  // sic: spelt unlike DScal
    /// x := a x, walked as by DDot; an increment of 0 multiplies one element n times; nothing for n < 1.
    static void DScal(int n, double a, std::vector<double>& x, int off, int inc);
    /// Returns: the Euclidean norm, scaled so that no square leaves the range; 0.0 for n < 1 or inc < 1.
    static double DNrm2(int n, const std::vector<double>& x, int off, int inc);
    /// Returns: the sum of the magnitudes of the elements at off + k inc, in that order whatever inc; 0.0 for n < 1.
    static double DASum(int n, const std::vector<double>& x, int off, int inc);

    /// Returns: x[0] + x[inc] + ..., n elements; 0.0 for n < 1.
    /// Shape:   a negative increment starts at -(n - 1) inc and walks down to 0; increment 0 gives n x[0].
    static double DSum(int n, const std::vector<double>& x, int inc);
    /// Stores value in n elements; nothing for n < 1, off < 0 or inc < 1.
    static void DLoad(int n, double value, std::vector<double>& x, int off, int inc);
    /// Sets x[off] .. x[off + n - 1] to 0.0; nothing for n <= 0.
    static void LRZero(std::vector<double>& x, int off, int n);

    // ---- Growing increments: element k stands at offset + k inc + k(k - 1)/2
    // In an upper triangle packed by columns, offset (i + 1)(i + 2)/2 - 1 and increment i + 1 walk row i from the
    // diagonal to the right. The formula holds for any increment.

    /// Returns: the dot product, summed from the first element to the last; 0.0 for n < 1.
    static double IIDot(int n, const std::vector<double>& x, int offx, int incx, const std::vector<double>& y, int offy,
                        int incy);
    /// y := a x + y; nothing for n < 1.
    static void IIAxpy(int n, double a, const std::vector<double>& x, int offx, int incx, std::vector<double>& y,
                       int offy, int incy);
    /// x := a x; nothing for n < 1.
    static void IIScal(int n, double a, std::vector<double>& x, int off, int inc);
    /// Stores value in n elements; nothing for n < 1.
    static void IIInit(int n, double value, std::vector<double>& x, int off, int inc);

    // ---- Packed symmetric matrices

    /// Returns: v' S v; 0.0 for n = 0; missing for n < 0, v shorter than n or S shorter than n(n + 1)/2.
    static double VSV(const std::vector<double>& s, int n, const std::vector<double>& v);
    /// Shape:   v is walked from index 0 with inc.
    /// Returns: the dot product of one row of S, of order n, with v, summed from the first column to the last; missing
    ///          unless n >= 1 and 0 <= row < n, or where S or v is too short.
    static double RVD(const std::vector<double>& s, int n, int row, const std::vector<double>& v, int inc);
    /// Replaces the lower triangular factor L of order n, packed row by row, by the lower triangle of L' L; nothing
    /// when n < 1 or the factor has fewer than n(n + 1)/2 elements.
    static void LTGltl(int n, std::vector<double>& packed);

    // ---- Comparisons, extremes, search

    /// Returns: the largest |a[i] - b[i]| / (|b[i]| + t) over the common length, t being |tol|, or 1e-6 when tol is 0;
    ///          0.0 when there is no common element.
    /// Note:    an element whose difference is NaN does not count.
    static double VMaxRelDiff(const std::vector<double>& a, const std::vector<double>& b, double tol);
    /// Returns: the sum of |a[i] - b[i]| over the common length.
    static double VNrm1Diff(const std::vector<double>& a, const std::vector<double>& b);

    /// Returns: the largest two elements of v; equal elements may fill both. What v is too short for is missing.
    static void FindTwoLargest(const std::vector<double>& v, double& largest, double& second);
    /// As FindTwoLargest, over the elements that are not missing.
    static void FindTwoLargestNonMiss(const std::vector<double>& v, double& largest, double& second);

    /// Where value belongs in v, which ascends within lo .. hi.
    /// Returns: the index, from 0, at which value would be inserted: behind an equal element if upper, else before it.
    ///          -1 when that place is not within lo .. hi: value lies beyond v[hi] (or equals it, when upper), or
    ///          before v[lo - 1] (or equals it, unless upper). -2 for lo < 0, lo > hi or hi >= the size of v.
    /// Note:    Deliberate: a run of equal elements is not scanned to its end; the first hit of the bisection counts.
    static int BinSearch(const std::vector<double>& v, int lo, int hi, double value, bool upper);
    /// As above, for whole numbers.
    static int BinSearch(const std::vector<int>& v, int lo, int hi, int value, bool upper);

    // ---- Functions of numbers

    /// The logarithmic derivative of the gamma function, psi(x).
    /// Returns: missing for x <= 1e-16; -0.5772156649015329 - 1/x below 1e-5; else the asymptotic series at x + 10 and
    ///          ten steps of the recurrence.
    /// Source:  Abramowitz and Stegun, Handbook of Mathematical Functions, 6.3.5, 6.3.7, 6.3.18.
    static double Digamma(double x);
    /// The derivative of psi.
    /// Returns: missing for x <= 1e-16; 1/x^2 below 1e-4; else as Digamma.
    /// Source:  Abramowitz and Stegun, 6.4.6, 6.4.12.
    static double Trigamma(double x);

    /// Returns: true when a is negligible beside b: b > 0 and b 2^-52 > |a|.
    static bool QLReps(double a, double b);
    /// Returns: a when |a| >= b, else b with the sign of a, +b for both zeros.
    static double ReplaceIfSmall(double a, double b);
    /// Returns: true for finite numbers, the missing value included.
    static bool IsValidDouble(double x);
};

}  // namespace KwMath_930
