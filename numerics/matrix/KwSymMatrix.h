// The dense symmetric matrix: a packed lower triangle, optionally seen as a grid of equal square blocks.
#pragma once

#include <cstdint>
#include <vector>

#include "numerics/Export.h"
#include "numerics/matrix/IKwSymMatrix.h"

namespace KwMath_930 {

class KwSymBlockDiagMatrix;

/// Dense symmetric matrix of order n, of which the lower triangle is stored row by row: element (i, j), j <= i, at
/// index i(i+1)/2 + j, counting from 0. Copies are deep.
/// Fails:   never throws. When its own storage cannot be allocated the matrix becomes invalid: GetNRows() is -1 and the
///          storage empty; IsValidMatrix() tells. An invalid matrix can be resized or assigned to and is valid again.
/// Note:    vectors given as arguments are not the matrix's own AsVector() unless a member says so. Operands given as
///          interface may be of any kind, with equal results. What IKwSymMatrix says of sizes, targets and failures
///          holds for the members that are not virtual too. S is this matrix, L its lower triangle. Slots count in the
///          order of declaration; MSVC lays adjacent overloads out in reverse (docs/windows.md).
class KW_EXPORT KwSymMatrix : public IKwSymMatrix {
public:
    // ---- Virtual operations that this class adds, in slot order ----

    /// Keeps a correlation matrix strictly inside (-1, 1) off the diagonal: every element off the diagonal that is
    /// >= 1.0 becomes 1 - eps, every one that is <= -1.0 becomes -(1 - eps). The diagonal is untouched.
    /// Returns: false if eps < 0 or eps >= 1, nothing changed then; true otherwise, also for an empty matrix.
    virtual bool AdjustOffDiagCorr(double eps);  // slot 74
    /// p and q become the products of row i of this matrix with row j of the symmetric matrices whose lower triangles
    /// packedP and packedQ hold.
    /// Returns: false for a bad index or when one of the two has fewer than n(n+1)/2 elements, p and q unchanged then.
    virtual bool ComputeRowDotProductS(int i, const std::vector<double>& packedP, const std::vector<double>& packedQ,
                                       int j, double& p, double& q) const;  // slot 75
    /// As the form above, for rows j of two symmetric matrices of the order n.
    virtual bool ComputeRowDotProductS(int i, const IKwSymMatrix& m, const IKwSymMatrix& n, int j, double& p,
                                       double& q) const;  // slot 76
    /// Shape:   0 <= k < n(n+1)/2, unchecked.
    /// Returns: the k-th stored element.
    virtual double GetElem(int k) const;  // slot 77

    // ---- Storage: KwSymMatrix_storage.cpp ----

    /// An empty matrix of order 0 with 0 blocks of size 0.
    KwSymMatrix();
    /// A matrix of nBlocks x blockSize rows, every element 0 whatever zero says.
    /// Note:    when one of the two counts is below 1, the order and both counts are 0. An order beyond the range of
    ///          int makes an invalid matrix.
    KwSymMatrix(int nBlocks, int blockSize, bool zero);
    /// A matrix of order n (0 for a negative n) in one block, every element 0 whatever zero says.
    KwSymMatrix(int n, bool zero);
    KwSymMatrix(const KwSymMatrix& other);
    KwSymMatrix& operator=(const KwSymMatrix& other);
    ~KwSymMatrix() override;

    /// Sizes the storage of a packed triangle of order nRows; existing leading elements are kept, new ones are 0.
    /// Returns: nRows >= 0 as it is afterwards. A failed allocation sets nRows to -1; data is empty for nRows <= 0.
    static bool ResizeNRows(std::vector<double>& data, int& nRows);
    /// Makes target a copy of source, which may be the same object.
    /// Returns: false when the copy could not be allocated.
    static bool ResizeNCopy(std::vector<double>& target, const std::vector<double>& source);

    SymMatrixType GetType() const override;
    int GetNRows() const override;
    bool IsValidMatrix() const override;
    /// Returns: how many diagonal blocks the rows are divided into; 1 for an unblocked matrix.
    int GetNBlocks() const;
    /// Returns: rows per block.
    int GetBlockSize() const;
    /// Divides the rows into nBlocks blocks.
    /// Returns: false if nBlocks < 1, n < 1 or n is not a multiple of nBlocks; nothing is changed then.
    bool SetNBlocks(int nBlocks);
    /// As the interface says; one block of size n afterwards.
    bool Resize(int n) override;
    /// As Resize, but see the note; then calls Clear() if zero is true and the resize succeeded.
    /// Note:    Deliberate: the number of blocks becomes 0 when n < 0, where Resize makes it 1.
    bool SetNRows(int n, bool zero) override;
    void Clear() override;
    /// Removes row and column i.
    /// Returns: false unless 0 <= i < n; nothing is changed then.
    /// Note:    Deliberate: the block size becomes the new order while the number of blocks stays.
    bool DeleteOneRow(int i);
    /// Returns: the stored triangle, writable; its length must stay n(n+1)/2.
    std::vector<double>& AsVector();
    /// Returns: the stored triangle.
    const std::vector<double>& AsVectorConst() const;

    // ---- Element and row access: KwSymMatrix_access.cpp ----

    double GetElem(int i, int j) const override;
    bool SetElem(int i, int j, double value) override;
    /// Sets the k-th stored element.
    /// Returns: false unless 0 <= k < n(n+1)/2.
    bool SetElem(int k, double value);
    /// Shape:   0 <= bi, bj < blocks and 0 <= i, j < block size, unchecked.
    /// Returns: element (i, j) of block (bi, bj), by the virtual GetElem(int, int).
    double GetElem(int bi, int bj, int i, int j) const;
    bool GetRow(int i, std::vector<double>& row) const override;
    bool PutRow(int i, const std::vector<double>& row) override;
    bool SetRowColToConst(int i, double value) override;
    bool ZeroOut(int i) override;
    void GetDiagonal(std::vector<double>& diagonal) const override;

    // ---- Scaling, trace, extremes, clean-up: KwSymMatrix_elementwise.cpp ----

    void AddToDiagonal(double value) override;
    void MultiplyByNumber(double factor) override;
    void ChangeSign() override;
    double Trace() const override;
    void MaxMinDiag(double& largest, double& smallest) const override;
    void MaxMinDiagOffDiag(double& largestDiag, double& smallestDiag, double& largestOff,
                           double& smallestOff) const override;
    void ZeroOutNonDiag(double tol) override;
    /// Sets to 0 every stored element with |a| < tol * (largest |a|), the diagonal included (strict).
    /// Note:    does nothing unless tol and that product are > 0.
    void ZeroOutAllSmall(double tol);
    bool ComputeAXpY(double a, const IKwSymMatrix& x) override;
    double TraceOfProduct(const IKwSymMatrix& m) const override;
    /// Returns: the trace of M times the part of S of the order of M that starts at row and column first; 0.0 when the
    ///          part lies outside S.
    double TraceOfProductSubSym(const IKwSymMatrix& m, int first) const;
    /// As TraceOfProductSubSym, for a square R.
    double TraceOfProductSubMatSym(const IKwRectMatrix& r, int first) const;
    /// Returns: the sum of the diagonal from row first on; 0.0 unless 0 <= first <= n.
    double SubSymTrace(int first) const;
    /// Adds value to count diagonal elements from row first on.
    /// Returns: false when the part lies outside the matrix.
    bool AddToDiagonalPart(double value, int first, int count);
    /// Diagonal elements that are 0 become value.
    /// Returns: how many.
    int ReplaceDiagZeroes(double value);
    /// Rows and columns whose bit is set become 0.
    /// Returns: false when zeros has fewer than n bits.
    bool SetCovarZeros(const KwBitSet& zeros);
    /// As SetCovarZeros, for rows that are redundant.
    bool ZeroOutRedundant(const KwBitSet& redundant);
    /// Rows and columns whose diagonal element is <= tol times the largest one become 0.
    /// Returns: how many; -1 unless tol >= 0.
    int ZeroOutRowsForSmallDiag(double tol);

    // ---- Cholesky factor, solving, inverse, determinant: KwSymMatrix_cholesky.cpp ----

    int LTChol(double tol, double& minDiag, bool check) override;
    int LTChol(const std::vector<double>& ref, double tol, KwBitSet& zeros, bool check) override;
    int LTChol(const std::vector<double>& ref, double tol, bool check) override;
    void GetNCheckDiagonal(std::vector<double>& diagonal, double a, double b) const override;
    /// Cholesky factor of the leading k rows in place, each pivot judged against tol times its own diagonal element;
    /// rows gets the numbers of the rows whose pivot is not zero, ascending.
    /// Returns: their number; -1 unless 0 <= k <= n and tol >= 0, nothing changed then.
    /// Note:    the elements below the leading part stay.
    int CholIndNonRed(int k, double tol, std::vector<int>& rows);
    /// Solves L L^T x = b with the factor that the matrix holds.
    /// Returns: 0; -1 when b has fewer than n elements, x unchanged then.
    /// Note:    a zero pivot gives the component 0, so x is a particular solution.
    int LTSubstitute(const std::vector<double>& b, std::vector<double>& x) const;
    /// Solves one triangular system with the factor that the matrix holds: L x = b, or L^T x = b if trans is true.
    /// Returns: false when b has fewer than n elements, x unchanged then.
    /// Note:    a zero pivot gives the component 0.
    bool TSolveSubst(const std::vector<double>& b, std::vector<double>& x, bool trans) const;
    int LTSolve(const std::vector<double>& b, double tol, std::vector<double>& x) override;
    int LTDetInverse(double* det, int job) override;
    bool LTInverse() override;
    void LTLLTrans() override;
    void LTLTransL() override;
    int CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target, double& minDiag) const override;
    int CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target, KwBitSet& zeros) const override;
    int CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target) const override;
    bool ComputeDeterminant(double tol, double* det) const override;
    /// The factor L that the matrix holds becomes that of L L^T + x x^T; c and sn receive the cosines and sines of the
    /// rotations.
    /// Returns: false unless x, c and sn have exactly n elements, nothing changed then.
    /// Source:  Givens rotations by Blas1::DRotG, as LINPACK DCHUD.
    bool LTCholUpdateR1(const std::vector<double>& x, std::vector<double>& c, std::vector<double>& sn);
    /// The factor L that the matrix holds becomes that of L L^T - x x^T; c and sn receive the rotations.
    /// Returns: false unless x, c and sn have exactly n elements, or when L L^T - x x^T is not positive definite;
    ///          nothing is changed then.
    /// Note:    the sizes are checked whatever check says. A factor with a zero pivot is refused, too.
    /// Source:  LINPACK DCHDD.
    bool LTCholDowndate(const std::vector<double>& x, std::vector<double>& c, std::vector<double>& sn, bool check);

    // ---- Sweep operator: KwSymMatrix_sweep.cpp ----

    /// Sweeps row k in (bit k of swept clear) or out (set), and flips the bit.
    /// Shape:   ref points to n values, the scale of the tolerance; swept has n bits.
    /// Returns: false, nothing changed, when sweeping in and tol * ref[k] >= S(k,k), or when the diagonal element of a
    ///          swept row j would become v with v * tol * ref[j] <= -1; false for a bad k; if check is set also when
    ///          tol <= 0, swept has fewer than n bits, or a value of ref is negative.
    /// Note:    with p = S(k,k): S(k,k) becomes -1/p, the other elements of row k are divided by |p|, and S(i,j)
    ///          becomes S(i,j) - S(i,k) S(k,j) / p. Sweeping the same row twice restores the matrix.
    /// Source:  sweep operator [Goodnight 1979].
    bool Sweep(int k, double tol, const double* ref, KwBitSet& swept, bool check);
    /// As the form above; false also when ref has fewer than n elements.
    bool Sweep(int k, double tol, const std::vector<double>& ref, KwBitSet& swept, bool check);
    /// The same as Sweep with a vector.
    bool SweepOrig(int k, double tol, const std::vector<double>& ref, KwBitSet& swept, bool check);
    /// Sweeps every row not yet swept (in), or every swept row (not in), in index order; rows that are refused are
    /// skipped.
    /// Shape:   ref points to n values, or is null for the absolute diagonal at entry.
    /// Returns: the number of rows swept; -1 when tol <= 0, swept has fewer than n bits or a value of ref is negative
    ///          (these three only if check is set), or when memory fails.
    /// Note:    restart clears swept first: the matrix counts as not swept at all.
    int SweepOnAll(double tol, KwBitSet& swept, bool in, bool restart, bool check, double* ref);
    /// As SweepOnAll, sweeping each listed row in or out, in list order.
    /// Returns: as SweepOnAll; -1 also for a bad index, nothing done then.
    int SweepOnSelected(const std::vector<int>& rows, double tol, KwBitSet& swept, bool check, double* ref);
    /// As SweepOnAll, for rows 0 .. k-1; the logarithm of each |pivot| is added to logDet.
    /// Returns: as SweepOnAll; -1 also unless 0 <= k <= n.
    int SweepOnMany(int k, double tol, bool in, KwBitSet& swept, double& logDet, bool check, double* ref);
    /// Returns: true when row k, not yet swept, would be refused by Sweep: it depends linearly, within tol, on the
    ///          swept rows. False for a bad k or a too short ref.
    bool CheckMDependent(int k, const std::vector<double>& ref, const KwBitSet& swept, double tol) const;
    /// The regression coefficients of the last row, the dependent variable: b, of n - 1 elements, gets S(n-1, k) for
    /// each swept k, 0 for the others.
    /// Returns: false for n < 1 or when swept has fewer than n - 1 bits.
    bool GetRegCoeffs(std::vector<double>& b, const KwBitSet& swept) const;

    // ---- Indefinite systems: KwSymMatrix_indefinite.cpp ----

    /// Solves S x = b by a factor with symmetric pivoting, which replaces the matrix.
    /// Returns: false when b has fewer than n elements, tol is not >= 0, or the reciprocal condition is not > tol;
    ///          nothing is changed then.
    /// Source:  Linpack::Dspco and Dspsl: a lower triangle by rows is an upper one by columns.
    bool SolveIndefinite(double tol, const std::vector<double>& b, std::vector<double>& x);
    /// The same with the rows and columns left out whose bit is set; their components of x are 0.
    /// Returns: false when b has fewer than n elements or the rest is singular to working precision; nothing is changed
    ///          then.
    /// Note:    bits beyond the set count as clear. The factor left behind is that of the matrix with the rows left out
    ///          replaced by multiples of unit rows.
    bool SolveIndefinite(const KwBitSet& skip, const std::vector<double>& b, std::vector<double>& x);
    /// As SolveIndefinite with tol; when S is singular within tol, x is the least-squares solution of least norm, with
    /// eigenvalues |e| <= tol * (largest |e|) taken as 0.
    /// Returns: false when b has fewer than n elements, tol is not >= 0 or S holds a value that is not finite; nothing
    ///          is changed then.
    /// Note:    the matrix holds the factor afterwards if regular, and is unchanged if singular.
    bool SolveIndefiniteGI(double tol, const std::vector<double>& b, std::vector<double>& x);
    /// Makes the matrix positive definite: if a pivot does not exceed tol times the largest diagonal element, the
    /// diagonal is raised by the smallest of the shifts tried (a tenfold series) that makes every pivot do so.
    /// Returns: the number of shifts tried, 0 for a matrix that needs none; -1 unless tol is >= 0 and < 1, and when no
    ///          shift succeeds (a value is not finite) or memory fails; nothing is changed then.
    int TransformToPositiveDefinite(double tol, bool& changed, double& shift);

    // ---- Rank-one updates and settings: KwSymMatrix_update.cpp ----

    /// Adds weight * x x^T.
    /// Shape:   x has exactly n elements.
    /// Returns: false when the size differs or weight is not > 0 (NaN fails too); nothing is changed then.
    /// Note:    a row whose x[i] is 0 is skipped, so a case with many zero entries costs only its other rows.
    bool UpdateXX(const std::vector<double>& x, double weight);
    /// Adds weight * v v^T for any weight, without checks and without skipping.
    /// Shape:   v points to n values.
    void IncrementByVV(const double* v, double weight);
    /// Makes this v v^T, of the order of v, in one block; v may be AsVector().
    /// Returns: false when memory fails; the matrix is invalid then.
    bool SetToVV(const std::vector<double>& v);
    /// Makes this v w^T + w v^T (not halved), as SetToVV does.
    /// Returns: false when the sizes differ, nothing changed then, or when memory fails, the matrix invalid then.
    bool SetToVW(const std::vector<double>& v, const std::vector<double>& w);
    /// As UpdateXX.
    bool UpdateZZ(const std::vector<double>& z, double weight);
    /// UpdateXX for the sparse x that is values[k] at indices[k]; repeats add up.
    /// Returns: false when the lists differ in length, an index is outside 0..n-1, or weight is not > 0.
    bool UpdateXXSparse(const std::vector<int>& indices, const std::vector<double>& values, double weight);
    /// UpdateXX that takes a negative weight too; 0 and NaN are refused.
    bool UpdateXXPosNegW(const std::vector<double>& x, double weight);
    /// UpdateXX that leaves the rows and columns out whose bit is set.
    /// Returns: false also when redundant has fewer than n bits.
    bool UpdateXXNonRedun(const std::vector<double>& x, double weight, const KwBitSet& redundant);
    /// Adds weight * (x y^T + y x^T).
    /// Returns: as UpdateXX.
    bool UpdateXXMat2(const std::vector<double>& x, const std::vector<double>& y, double weight);
    /// UpdateXXSparse on the lower right corner that starts at row corner, from which the indices count.
    bool UpdateXXCornerSparse(const std::vector<int>& indices, const std::vector<double>& values, double weight,
                              int corner);

    // ---- Products with vectors: KwSymMatrix_vector_products.cpp ----

    /// As the interface says; each element of out is summed from left to right.
    bool ComputeSV(const std::vector<double>& v, std::vector<double>& out) const override;
    bool ComputeSV(int k, const std::vector<double>& v, std::vector<double>& out) const override;
    bool ComputeLTransV(const std::vector<int>& indices, const std::vector<double>& values,
                        std::vector<double>& out) const override;
    bool ComputeLTransV(const std::vector<double>& v, std::vector<double>& out) const override;
    bool ComputeLV(const std::vector<int>& indices, const std::vector<double>& values,
                   std::vector<double>& out) const override;
    bool ComputeLV(const std::vector<double>& v, std::vector<double>& out) const override;
    /// out = the part of S from row and column first on times v, which has at least n - first elements.
    /// Returns: false unless 0 <= first <= n.
    bool SubSymComputeSV(const std::vector<double>& v, std::vector<double>& out, int first) const;
    /// The n elements v[offset], v[offset + inc], ... become their row product with L, v^T L, in place.
    /// Returns: false when inc is 0 for n > 1 or a place lies outside v.
    bool ComputeVecPartByL(std::vector<double>& v, int offset, int inc) const;
    /// As ComputeVecPartByL with a step that grows by one: element k stands at offset + k inc + k(k-1)/2.
    bool ComputeVecIIncPartByL(std::vector<double>& v, int offset, int inc) const;
    bool IncrVecByRow(int i, std::vector<double>& v, int offset, int inc, double a, bool check) const override;

    // ---- Dot products of rows: KwSymMatrix_row_products.cpp ----

    double ComputeDotProduct2Rows(int i, int j) const override;
    double ComputeRowDotProductS(int i, const std::vector<double>& packed, int j) const override;
    double ComputeRowDotProductS(int i, const IKwSymMatrix& m, int j) const override;
    double ComputeRVD(int i, const double* v, int inc) const override;
    double ComputeRVD(int i, const std::vector<double>& v, int inc) const override;
    /// Returns: row i of S times the first n elements of v; 0.0 for a bad index or a too short v.
    double DotRowVec(int i, const std::vector<double>& v) const;
    /// Returns: the elements (i, first .. first+count-1) of S times the first count elements of v; 0.0 when the part
    ///          lies outside the row or v is too short.
    double DotRowPartVec(int i, int first, int count, const std::vector<double>& v) const;
    /// Returns: column j of S times the first n elements of v, as DotRowVec.
    double DotColVec(int j, const std::vector<double>& v) const;
    /// Returns: row i of this matrix times row j of m, as ComputeRowDotProductS.
    double ComputeDotRowRow(int i, const IKwSymMatrix& m, int j) const;

    // ---- Quadratic forms: KwSymMatrix_quadratic_forms.cpp ----

    double ComputeVSV(const std::vector<double>& v) const override;
    double ComputeVSV(const IKwRectMatrix& r, int i) const override;
    double ComputeVSW(const std::vector<double>& v, const std::vector<double>& w) const override;
    double ComputeVSW(const std::vector<double>& x, int a, int b, int inc) const override;
    double ComputeVSW(const double* v, int incv, const double* w, int incw) const override;
    double ComputeVSWParts(const double* v, int nv, const double* w, int nw) const override;
    double ComputeVSWParts(const std::vector<double>& v, int nv, const std::vector<double>& w, int nw) const override;
    /// Returns: v^T S w; element k of v at offv + k incv, of w at offw + k incw + k(k-1)/2, a step that grows by one;
    ///          0.0 when a place lies outside its vector.
    double ComputeVSWii(const std::vector<double>& v, int offv, int incv, const std::vector<double>& w, int offw,
                        int incw) const;
    /// As ComputeVSWii with the growing step in v, the constant one in w.
    double ComputeViiSW(const std::vector<double>& v, int offv, int incv, const std::vector<double>& w, int offw,
                        int incw) const;
    /// Returns: v^T S_sub w, S_sub being the count rows and columns from first on, and v and w the same parts of
    ///          vectors of n elements; 0.0 when the part lies outside S or a vector does not have n elements.
    double ComputeVSSubWParts(const std::vector<double>& v, const std::vector<double>& w, int first, int count) const;
    /// As ComputeVSSubWParts with v and w of exactly count elements.
    double ComputeVSymSubW(const std::vector<double>& v, const std::vector<double>& w, int first, int count) const;
    /// Returns: v^T S_sub w, S_sub reaching from row first to the last one; v and w have exactly n - first elements.
    double SubSymComputeVSW(const std::vector<double>& v, const std::vector<double>& w, int first) const;
    /// Returns: v^T S w for the sparse v that is valuesV[k] at indicesV[k], and w likewise; 0.0 when two lists differ
    ///          in length or an index is outside 0..n-1.
    double ComputeSpVSSpW(const std::vector<int>& indicesV, const std::vector<double>& valuesV,
                          const std::vector<int>& indicesW, const std::vector<double>& valuesW) const;
    /// Returns: v^T B v, B being diagonal block number block; v has exactly GetBlockSize() elements.
    double ComputeBlockVSV(int block, const std::vector<double>& v) const;
    /// Returns: v^T B w, as ComputeBlockVSV.
    double ComputeBlockVSW(int block, const std::vector<double>& v, const std::vector<double>& w) const;
    /// Returns: the square root of v^T S v; 0.0 when that is not positive or v does not have exactly n elements.
    double SquareRootVSV(const std::vector<double>& v) const;

    // ---- Products with matrices: KwSymMatrix_matrix_products.cpp ----

    bool ComputeGMG(const std::vector<double>& g, KwSymMatrix& target) const override;
    bool ComputeGMGNG(const IKwSymMatrix& m, const IKwSymMatrix& n, IKwSymMatrix& target,
                      std::vector<double>& work) const override;
    bool ComputeMGN(const IKwSymMatrix& m, const IKwSymMatrix& n, IKwSymMatrix& target) const override;
    bool ComputeGSG(const IKwSymMatrix& g, IKwSymMatrix& target) const override;
    bool ComputeLSLTrans(const IKwSymMatrix& m, IKwSymMatrix& target) const override;
    bool ComputeLTransSL(const IKwSymMatrix& m, IKwSymMatrix& target, int k) const override;
    bool ComputeRS(const IKwRectMatrix& r, IKwRectMatrix& target) const override;
    bool ComputeRSRTrans(const IKwRectMatrix& r, IKwSymMatrix& target) const override;
    bool ComputeRTransS(const IKwRectMatrix& r, IKwRectMatrix& target) const override;
    bool ComputeRTransSR(const IKwRectMatrix& r, IKwSymMatrix& target) const override;
    bool ComputeRTransSV(const IKwRectMatrix& r, const std::vector<double>& v, std::vector<double>& out) const override;
    bool ComputeSS(const IKwSymMatrix& m, IKwRectMatrix& target) const override;
    bool ComputeSTransS(IKwSymMatrix& target) const override;
    double TraceOfProductOfThree(const IKwSymMatrix& m, const IKwSymMatrix& n) const override;
    /// target += R S R^T; a target of another order than R has rows starts from 0.
    bool ComputeRSRTrans2(const IKwRectMatrix& r, IKwSymMatrix& target) const;
    /// This matrix becomes R^T M R, of the order of the columns of R; M may be this matrix.
    bool ComputeRTransSymR(const IKwRectMatrix& r, const IKwSymMatrix& m);
    /// This matrix becomes R^T B R.
    bool ComputeRTransBlockDiagR(const IKwRectMatrix& r, const KwSymBlockDiagMatrix& b);
    /// target = D S D, D being the diagonal matrix of d, which has exactly n elements.
    bool ComputeRDiagSRDiagTrans(const std::vector<double>& d, KwSymMatrix& target) const;
    /// This matrix becomes R^T R.
    bool ComputeRTransByR(const IKwRectMatrix& r);
    /// This matrix becomes R R^T.
    bool ComputeRByRTrans(const IKwRectMatrix& r);

    // ---- Block-diagonal operands: KwSymMatrix_block.cpp ----

    /// target = S_sub B S_sub, S_sub being the part of S of the order of B that starts at row and column first.
    bool ComputeSSubBSSub(const KwSymBlockDiagMatrix& b, int first, IKwSymMatrix& target) const;
    /// Returns: v^T B w; v and w have exactly as many elements as B rows. This matrix is not read.
    double ComputeVBW(const std::vector<double>& v, const KwSymBlockDiagMatrix& b, const std::vector<double>& w) const;
    /// The first elements of v become their row product with the lower factor of the matrix that has l, then this
    /// matrix, on its diagonal: as many as l has rows with the lower triangle of l, the next n with L.
    /// Returns: false when v has fewer elements than both orders together.
    bool ComputeVecByBlockL(std::vector<double>& v, const KwSymBlockDiagMatrix& l) const;
    /// Adds weight * B to the lower right corner that starts at row corner and has the order of B.
    /// Returns: false when the corner does not have the order of B or weight is not > 0.
    bool UpdateXXCornerBlock(const KwSymBlockDiagMatrix& b, double weight, int corner);
    /// Adds weight * y y^T, y^T = x^T L_B with the lower triangle L_B of l, to the lower right corner that starts at
    /// row corner. Returns: false when x or l does not have the order of the corner or weight is not > 0.
    bool UpdateXXCornerBlock(const std::vector<double>& x, const KwSymBlockDiagMatrix& l, double weight, int corner);
    /// Grows this matrix to the one that has L_B L_B^T, with the lower triangle L_B of l, and then this matrix on its
    /// diagonal, 0 elsewhere.
    bool AugmentUsingBlockDiagL(const KwSymBlockDiagMatrix& l);

    // ---- Extraction, expansion, replacement: KwSymMatrix_extract.cpp ----

    bool ExtractFirstNRows(IKwSymMatrix& target) const override;
    bool ExtractSubmatrix(const std::vector<int>& rows, IKwSymMatrix& target) const override;
    bool IsZeroRow(int i, const KwBitSet& ignored) const override;
    /// target = diagonal block number block.
    bool ExtractDiagBlock(int block, IKwSymMatrix& target) const;
    /// target = diagonal block number block bordered by the last row and column, which the last block holds twice then.
    bool ExtractBlockAndLastRow(int block, IKwSymMatrix& target) const;
    /// target = the nRows x nCols elements from (row, col) on.
    /// Returns: false unless they lie in the lower triangle, the diagonal included.
    bool ExtractBlockInLowTriangular(int row, int col, int nRows, int nCols, IKwRectMatrix& target) const;
    /// v = count elements of row n-1 from column first on.
    bool ExtractPartOfLastRow(int first, int count, std::vector<double>& v) const;
    /// target = the rows and columns whose bit is set; bits from n on are not looked at.
    bool ExtractH(const KwBitSet& kept, IKwSymMatrix& target) const;
    /// target, of order n, gets S at the listed rows and columns, 0 elsewhere: the inverse of ExtractSubmatrix.
    /// Returns: false unless rows lists, for each row of S, a place of its own in 0..n-1.
    bool Expand(const std::vector<int>& rows, int n, KwSymMatrix& target) const;
    /// As Expand, for a target given as interface.
    bool ExpandSym(const std::vector<int>& rows, int n, IKwSymMatrix& target) const;
    /// As Expand, into a full n x n matrix.
    bool ExpandSymToRect(const std::vector<int>& rows, int n, IKwRectMatrix& target) const;
    /// The leading part of this matrix becomes M, whose order is at most n.
    bool ReplaceFirstRows(const IKwSymMatrix& m);
    /// Sets all stored elements.
    /// Returns: false unless packed has exactly n(n+1)/2 elements.
    bool SetData(const std::vector<double>& packed);
    /// v = the stored part of column j, the elements (j, j) .. (n-1, j).
    bool GetPCol(int j, std::vector<double>& v) const;
    /// Row i becomes column j of r, which has n rows and is not resized.
    bool CopyRowToRColumn(int i, int j, IKwRectMatrix& r) const;

    // ---- Dumps: KwSymMatrix_display.cpp ----

    void Display() const override;
    void DisplayF() const override;
    /// Dumps the stored triangle in short form, without heading.
    void DisplayS() const;

private:
    void CopyFrom(const KwSymMatrix& other);
    void TakeOver(int order, std::vector<double>& packed);
    bool HasRow(int i) const { return i >= 0 && i < fNRows; }
    bool HasPart(int first, int count) const { return first >= 0 && count >= 0 && first <= fNRows - count; }
    int FirstRowOfBlock(int block) const;
    bool AgreesWith(const IKwSymMatrix& other) const { return fNRows >= 0 && other.GetNRows() == fNRows; }
    bool IsDenied(int k, double tol, const double* ref, const KwBitSet& swept) const;
    void SweepRow(int k);
    bool AreSweepArguments(double tol, const double* ref, const KwBitSet& swept) const;
    const double* SweepReference(double tol, const double* ref, const KwBitSet& swept, bool check,
                                 std::vector<double>& own) const;
    template <class Wanted>
    int SweepRows(const std::vector<int>& rows, double tol, KwBitSet& swept, const double* ref, double& logDet,
                  Wanted isWanted);
    KwSymMatrix* TakeCopyTo(IKwSymMatrix& target, const std::vector<double>& ref) const;
    int InvertFactor(int zeroPivots);

    std::int32_t fNRows;
    std::int32_t fNBlocks;
    std::int32_t fBlockSize;
    std::vector<double> fData;
};

}  // namespace KwMath_930
