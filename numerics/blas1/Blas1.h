// The level-1 Basic Linear Algebra Subprograms on vectors of doubles, a few scalar functions and the machine constants.
#pragma once

#include "numerics/Export.h"

namespace KwMath_930 {

/// Vectors are passed as a pointer to their first stored element and an increment: element k, counted from 0, of a
/// vector with increment inc >= 0 stands at pointer[k * inc].
/// Shape:   a walk with a negative increment starts at pointer[(1 - n) * inc] and goes down to pointer[0], unless a
///          member says otherwise. Nothing but n and, where stated, the increment is checked.
/// Fails:   never throws and never allocates, XErBla and a wrong job of DMach excepted, which end the process.
/// Note:    pure functions, callable from any thread. Vectors may overlap: elements are then read and written one after
///          another. Pointers are not const because the interface has them so; a vector that is only read is not
///          written.
/// Source:  Lawson, Hanson, Kincaid and Krogh, Basic Linear Algebra Subprograms for Fortran Usage, ACM TOMS 5 (1979),
///          308-323, as in the published Fortran reference routines of the same names.
class KW_EXPORT Blas1 {
public:
    // ---- Vectors that change

    /// Exchanges x and y; nothing for n <= 0.
    static void DSwap(int n, double* x, int incx, double* y, int incy);

    /// x := alpha x; nothing for n <= 0.
    /// Note:    Deliberate: an increment below 1 is not refused. A negative one scales pointer[(1 - n) * incx] down to
    ///          pointer[0]; 0 multiplies the first element n times.
    static void DScal(int n, double alpha, double* x, int incx);

    /// y := x; nothing for n <= 0.
    static void DCopy(int n, double* x, int incx, double* y, int incy);

    /// y := alpha x + y; nothing for n <= 0 or alpha equal to 0.0, even where x or y hold a NaN.
    static void Daxpy(int n, double alpha, double* x, int incx, double* y, int incy);  // sic: spelt unlike DScal

    /// Rotates each pair of elements: x := c x + s y, y := c y - s x with the old x; nothing for n <= 0.
    static void DRot(int n, double* x, int incx, double* y, int incy, double c, double s);

    // ---- Values of vectors

    /// Returns: the dot product, summed from the first element to the last; 0.0 for n <= 0.
    static double DDot(int n, double* x, int incx, double* y, int incy);

    /// Returns: the Euclidean norm, by sums of squares scaled by the largest element so far, so that no square leaves
    ///          the range; 0.0 for n < 1 or incx < 1.
    static double DNrm2(int n, double* x, int incx);

    /// Returns: |x[0]| + |x[incx]| + ... + |x[(n - 1) * incx]|, summed in that order; 0.0 for n <= 0.
    /// Note:    Deliberate: the increment is not tested, so a negative one reads in front of x; pass a positive one.
    static double DASum(int n, double* x, int incx);

    /// Returns: the index, counted from 1, of the first element whose magnitude is larger than all before it; 0 for
    ///          n < 1 or incx <= 0; 1 for n = 1, whatever the element.
    static int IDAMax(int n, double* x, int incx);

    // ---- Scalars

    /// Constructs the Givens rotation (c s; -s c) that turns (a, b) into (r, 0).
    /// Returns: r in a, the value z from which c and s can be rebuilt in b, and c and s.
    /// Note:    for a = b = 0 the rotation is the identity, and r and z are 0.
    static void DRotG(double* a, double* b, double* c, double* s);

    /// The machine constants, computed at run time as LINPACK's DMACH does.
    /// Returns: job 1: eps = 2^-52; job 2: tiny = 100 * 2^-1020; job 3: huge = 1 / tiny.
    /// Fails:   any other job calls XErBla("DMACH", 1), which ends the process.
    static double DMach(int job);

    /// Returns: true when ca and cb are the same character or the same ASCII letter in either case.
    static bool LSame(char ca, char cb);

    /// Reports on standard output that parameter number info of the named routine is wrong, and ends the process with
    /// exit status 1.
    /// Shape:   name is a string that ends with a zero character.
    [[noreturn]] static void XErBla(char* name, int info);

    /// Returns: the smaller integer.
    static int I_Min(int a, int b);
    /// Returns: the larger integer.
    static int I_Max(int a, int b);
    /// Returns: a when a > b, else b.
    static double D_Max(double a, double b);
    /// Returns: the magnitude of a.
    static double D_Abs(double a);
    /// Returns: -1.0 when a < 0, else +1.0.
    /// Note:    Deliberate: one argument, unlike the two of the function SIGN that it is named after.
    static double D_Sign(double a);
};

}  // namespace KwMath_930
