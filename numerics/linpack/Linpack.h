// LINPACK in double precision: factor, solve, invert and estimate the condition of matrices of every common shape;
// updates of Cholesky factors; QR and singular value decompositions.
#pragma once

#include "numerics/Export.h"

namespace KwMath_930 {

/// Static members, one for each published routine, with its arguments in its order. INFO and RCOND of the publication
/// are results here.
/// Shape:   matrices are dense by columns: element (i, j), counted from 1, at a[(j-1)*lda + (i-1)], lda >= number of
///          rows. Packed matrices ("sp", "pp") hold the upper triangle: element (i, j), i <= j, at ap[j(j-1)/2 + i-1].
///          Band storage is described with its families. Row, column and pivot numbers are counted from 1.
/// Returns: a routine that ends in "co" gives rcond, an estimate of 1 / (norm1(A) norm1(inverse of A)), 0 for the zero
///          matrix. A is singular to working precision when 1.0 + rcond == 1.0. An info of 0 is success.
/// Fails:   never throws, prints or allocates; no argument is checked. Division by a zero pivot gives infinities, NaN.
/// Note:    nothing outside the elements that a routine's storage names is read or written. An array that a job does
///          not ask for may be null. z of "co" is an approximate null vector of a nearly singular matrix, with
///          norm1(A z) = rcond norm1(A) norm1(z). A determinant is det[0] * 10^det[1] with 1 <= |det[0]| < 10 or
///          det[0] == 0; infinite and NaN ones stay as they are. Several threads may work on different arrays at once.
/// Source:  Dongarra, Bunch, Moler and Stewart, LINPACK Users' Guide, SIAM, Philadelphia 1979; condition estimates:
///          Cline, Moler, Stewart and Wilkinson, An Estimate for the Condition Number of a Matrix, SIAM J. Numer. Anal.
///          16 (1979), 368-375.
class KW_EXPORT Linpack {
public:
    // ---- General matrices: Linpack_general.cpp ----

    /// Dgefa, then the condition estimate.
    /// Shape:   z has n values.
    static double Dgeco(double* a, int lda, int n, int* ipvt, double* z);
    /// Gaussian elimination with partial pivoting, in place: U in the upper triangle, the negated multipliers below,
    /// each column of them in the order of rows that held when it was made.
    /// Shape:   ipvt has n values: ipvt[k-1] is the row of pivot k.
    /// Returns: k when U(k, k) is 0, the last one met; the factorisation is complete nevertheless.
    static int Dgefa(double* a, int lda, int n, int* ipvt);
    /// Solves A x = b for job 0, A^T x = b for any other job, from the result of Dgeco or Dgefa; x replaces b.
    static void Dgesl(double* a, int lda, int n, int* ipvt, double* b, int job);
    /// Determinant (job / 10 not 0) and inverse (job mod 10 not 0) from the result of Dgeco or Dgefa.
    /// Shape:   det has two values; work has n, for the inverse, which replaces a.
    static void Dgedi(double* a, int lda, int n, int* ipvt, double* det, double* work, int job);

    // ---- General band matrices: Linpack_band.cpp ----
    //
    // Element (i, j) of a matrix with ml diagonals below and mu above the main one stands in row ml + mu + 1 + i - j of
    // column j, max(1, j - mu) <= i <= min(n, j + ml). The first ml rows are room for fill-in; lda >= 2 ml + mu + 1.

    /// Dgbfa, then the condition estimate.
    /// Shape:   z has n values.
    static double Dgbco(double* abd, int lda, int n, int ml, int mu, int* ipvt, double* z);
    /// As Dgefa; U gets ml more diagonals, the multipliers stand in the rows of the lower diagonals.
    /// Returns: k when U(k, k) is 0, the last one met.
    static int Dgbfa(double* abd, int lda, int n, int ml, int mu, int* ipvt);
    /// As Dgesl, from the result of Dgbco or Dgbfa.
    static void Dgbsl(double* abd, int lda, int n, int ml, int mu, int* ipvt, double* b, int job);
    /// Determinant from the result of Dgbco or Dgbfa.
    static void Dgbdi(double* abd, int lda, int n, int ml, int mu, int* ipvt, double* det);

    // ---- Positive definite matrices, full ("po"), packed ("pp") and band ("pb"): Linpack_posdef.cpp ----
    //
    // Only the upper triangle is used. Element (i, j) of a band matrix with m diagonals above the main one stands in
    // row m + 1 + i - j of column j, max(1, j - m) <= i <= j; lda >= m + 1.

    /// Dpofa, then the condition estimate.
    /// Shape:   z has n values.
    /// Returns: Deliberate: 0.0 when the matrix is not positive definite. The matrix is then partly factored, z holds
    ///          the sums of the magnitudes of each column.
    static double Dpoco(double* a, int lda, int n, double* z);
    /// Cholesky factor in place: A = R^T R.
    /// Returns: k when the leading minor of order k is the first that is not positive definite; the columns before k
    ///          are factored, column k in part, the others untouched.
    static int Dpofa(double* a, int lda, int n);
    /// Solves A x = b from the result of Dpoco or Dpofa; x replaces b.
    static void Dposl(double* a, int lda, int n, double* b);
    /// Determinant (job / 10 not 0) and upper triangle of the inverse (job mod 10 not 0) from the result of Dpoco,
    /// Dpofa, Dqrdc; with those of Dqrdc the inverse is that of X^T X.
    static void Dpodi(double* a, int lda, int n, double* det, int job);
    /// As Dpoco, packed.
    static double Dppco(double* ap, int n, double* z);
    /// As Dpofa, packed.
    static int Dppfa(double* ap, int n);
    /// As Dposl, packed.
    static void Dppsl(double* ap, int n, double* b);
    /// As Dpodi, packed.
    static void Dppdi(double* ap, int n, double* det, int job);
    /// As Dpoco, band.
    static double Dpbco(double* abd, int lda, int n, int m, double* z);
    /// As Dpofa, band.
    static int Dpbfa(double* abd, int lda, int n, int m);
    /// As Dposl, band.
    static void Dpbsl(double* abd, int lda, int n, int m, double* b);
    /// Determinant from the result of Dpbco or Dpbfa.
    static void Dpbdi(double* abd, int lda, int n, int m, double* det);

    // ---- Symmetric indefinite matrices, full ("si") and packed ("sp"): Linpack_indefinite.cpp ----

    /// Dsifa, then the condition estimate.
    /// Shape:   z has n values.
    static double Dsico(double* a, int lda, int n, int* kpvt, double* z);
    /// Diagonal pivoting in place, A = U D U^T with blocks of D of order 1 and 2; only the upper triangle is used.
    /// Elimination runs from the last column to the first.
    /// Shape:   kpvt has n values: kpvt[k-1] > 0 is the row that pivot k was exchanged with; a block in columns k-1 and
    ///          k has kpvt[k-1] = kpvt[k-2] = -(the row that k-1 was exchanged with).
    /// Returns: k when pivot block k is singular, the last one met, which is the lowest.
    /// Note:    the pivot tests stand in LINPACK's order, not in LAPACK's.
    static int Dsifa(double* a, int lda, int n, int* kpvt);
    /// Solves A x = b from the result of Dsico or Dsifa; x replaces b.
    static void Dsisl(double* a, int lda, int n, int* kpvt, double* b);
    /// Inertia (hundreds of job not 0), determinant (tens) and upper triangle of the inverse (units) from the result of
    /// Dsico or Dsifa.
    /// Shape:   det has two values, inert three: the numbers of positive, negative and zero eigenvalues. work has n,
    ///          for the inverse.
    static void Dsidi(double* a, int lda, int n, int* kpvt, double* det, int* inert, double* work, int job);
    /// As Dsico, packed.
    static double Dspco(double* ap, int n, int* kpvt, double* z);
    /// As Dsifa, packed.
    static int Dspfa(double* ap, int n, int* kpvt);
    /// As Dsisl, packed.
    static void Dspsl(double* ap, int n, int* kpvt, double* b);
    /// As Dsidi, packed.
    static void Dspdi(double* ap, int n, int* kpvt, double* det, int* inert, double* work, int job);

    // ---- Triangular matrices: Linpack_triangular.cpp ----

    /// Condition estimate of a lower (job 0) or upper (any other job) triangular matrix, which is not changed.
    /// Shape:   z has n values.
    static double Dtrco(double* t, int ldt, int n, double* z, int job);
    /// Solves T x = b (tens of job 0) or T^T x = b with T lower (units of job 0) or upper; x replaces b.
    /// Returns: k when T(k, k) is 0, the first one; b is then unchanged.
    static int Dtrsl(double* t, int ldt, int n, double* b, int job);
    /// Determinant (hundreds of job not 0) and inverse in place (tens not 0) of a lower (units 0) or upper triangular
    /// matrix.
    /// Shape:   det has two values.
    /// Returns: k when the inverse is asked for and T(k, k) is 0, the first one met: for a lower matrix, which is
    ///          inverted from its end, the largest; the inversion stops there.
    static int Dtrdi(double* t, int ldt, int n, double* det, int job);

    // ---- Tridiagonal matrices: Linpack_tridiagonal.cpp ----

    /// Solves T x = b with partial pivoting; x replaces b.
    /// Shape:   c[1] .. c[n-1] hold the subdiagonal, d[0] .. d[n-1] the diagonal, e[0] .. e[n-2] the superdiagonal; all
    ///          three have n values and are overwritten.
    /// Returns: k when pivot k is 0, at which the work stops.
    static int Dgtsl(int n, double* c, double* d, double* e, double* b);
    /// Solves T x = b for a positive definite T, from both ends to the middle; x replaces b.
    /// Shape:   d has n values, the diagonal, and is overwritten; e[0] .. e[n-2] hold the diagonal beside it.
    static void Dptsl(int n, double* d, double* e, double* b);

    // ---- Cholesky decomposition with pivoting, its updates and downdates: Linpack_update.cpp ----

    /// Cholesky decomposition of a positive semidefinite matrix, with diagonal pivoting unless job is 0; only the upper
    /// triangle is used.
    /// Shape:   work has p values. jpvt, for pivoting, has p: on entry > 0 for a leading element, < 0 for a trailing
    ///          one, 0 for one that is free to be exchanged; on return the original number of each diagonal element.
    /// Returns: the number of the last positive diagonal element of the factor.
    /// Note:    a NaN is no positive element: the decomposition ends before it.
    static int Dchdc(double* a, int lda, int p, double* work, int* jpvt, int job);
    /// Adds a row: R becomes the factor of R^T R + x x^T, with the solutions z and residual norms rho of nz least
    /// squares problems, whose new right sides are y.
    /// Shape:   x, c, s have p values; z is p by nz with leading dimension ldz; y, rho have nz. c and s receive the
    ///          rotations.
    /// Note:    a negative rho stays as it is. z, y, rho may be null for nz = 0.
    static void Dchud(double* r, int ldr, int p, double* x, double* z, int ldz, int nz, double* y, double* rho,
                      double* c, double* s);
    /// Removes a row: R becomes the factor of R^T R - x x^T. Arguments as for Dchud.
    /// Returns: -1 when R^T R - x x^T is not positive definite or NaN: r, z, rho, c are unchanged; 1 when an element of
    ///          rho could not be downdated, or would be NaN for a NaN in y or rho, and became -1; 0 otherwise.
    /// Note:    Deliberate: as published, a rho of 0 from which nothing is to be taken gives NaN, 0 / 0, and no info.
    static int Dchdd(double* r, int ldr, int p, double* x, double* z, int ldz, int nz, double* y, double* rho,
                     double* c, double* s);
    /// Factor of E^T R^T R E, where E moves columns k .. l, 1 <= k < l <= p: for job 2 into the order k+1, ..., l, k;
    /// for job 1, and any other, into l, k, ..., l-1. U^T z replaces z, U being the product of the rotations.
    /// Shape:   c, s have p values and receive the l - k rotations; z is p by nz, may be null for nz = 0.
    static void Dchex(double* r, int ldr, int p, int k, int l, double* z, int ldz, int nz, double* c, double* s,
                      int job);

    // ---- QR decomposition: Linpack_qr.cpp ----

    /// Householder QR decomposition of the n by p matrix x in place, with column pivoting unless job is 0: R in the
    /// upper triangle, the transformations below it and in qraux.
    /// Shape:   qraux has p values; jpvt and work, for pivoting, have p. jpvt as for Dchdc, of columns.
    static void Dqrdc(double* x, int ldx, int n, int p, double* qraux, int* jpvt, double* work, int job);
    /// Applies the result of Dqrdc, of whose columns the first k are used, k <= min(n, p), to y. job has the decimal
    /// digits abcde: a asks for qy = Q y; b, c, d or e for qty = Q^T y; c for b, the solution of the least squares
    /// problem; d for rsd, its residual; e for xb, y - rsd.
    /// Shape:   y, qy, qty, rsd, xb have n values, b has k. qty must be given whenever job mod 10000 is not 0.
    /// Returns: when b is asked for and R is singular, the number of the first zero diagonal element met from the end.
    /// Note:    arrays may be shared in one of these ways, the last of a group remaining: (y, qty, b); (y, qty, rsd);
    ///          (y, qty, xb); (y, qy) with (qty, b), (qty, rsd) or (qty, xb). x is changed during the call and
    ///          restored.
    static int Dqrsl(double* x, int ldx, int n, int k, double* qraux, double* y, double* qy, double* qty, double* b,
                     double* rsd, double* xb, int job);

    // ---- Singular value decomposition: Linpack_svd.cpp ----

    /// X = U S V^T of the n by p matrix x, which is destroyed. Tens of job (mod 100): 0 no u, 1 all n left singular
    /// vectors, 2 or more the first min(n, p). Units: 0 no v, else all p right singular vectors.
    /// Shape:   s has min(n + 1, p) values, descending on return; e has p, of which the first min(n + 1, p) are 0 on
    ///          return unless the method fails; work has n. u is n by n or n by min(n, p), v is p by p.
    /// Returns: 0, or the number m of a singular value that was not found in 30 sweeps: those behind it are correct,
    ///          and U^T X V is bidiagonal with s on and e above the diagonal.
    /// Note:    u may be x when n <= p or only min(n, p) vectors are asked for; v may be x when p <= n.
    static int Dsvdc(double* x, int ldx, int n, int p, double* s, double* e, double* u, int ldu, double* v, int ldv,
                     double* work, int job);
};

}  // namespace KwMath_930
