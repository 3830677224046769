// The dense symmetric matrix: a packed lower triangle, optionally seen as a grid of equal square blocks.
#pragma once

#include <cstdint>
#include <vector>

#include "numerics/Export.h"
#include "numerics/matrix/IKwSymMatrix.h"

namespace KwMath_930 {

/// Dense symmetric matrix of order n, of which the lower triangle is stored row by row: element (i, j), j <= i, at
/// index i(i+1)/2 + j, counting from 0. Copies are deep. Fails:   never throws. When its own storage cannot be
/// allocated the matrix becomes invalid: GetNRows() is -1 and the
///          storage empty; IsValidMatrix() tells. An invalid matrix can be resized or assigned to and is valid again.
/// Note:    vectors given as arguments are not the matrix's own AsVector() unless a member says so.
class KW_EXPORT KwSymMatrix : public IKwSymMatrix {
public:
    // ---- Virtual operations that this class adds, in slot order ----

    /// Keeps a correlation matrix strictly inside (-1, 1) off the diagonal: every element off the diagonal that is
    /// >= 1.0 becomes 1 - eps, every one that is <= -1.0 becomes -(1 - eps). The diagonal is untouched.
    /// Returns: false if eps < 0 or eps >= 1, nothing changed then; true otherwise, also for an empty matrix.
    virtual bool AdjustOffDiagCorr(double eps);  // slot 74
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

    // ---- Products with vectors: KwSymMatrix_vector_products.cpp ----

    /// As the interface says; each element of out is summed from left to right.
    bool ComputeSV(const std::vector<double>& v, std::vector<double>& out) const override;

    // ---- Quadratic forms: KwSymMatrix_quadratic_forms.cpp ----

    double ComputeVSV(const std::vector<double>& v) const override;
    double ComputeVSW(const std::vector<double>& v, const std::vector<double>& w) const override;

    // ---- Dumps: KwSymMatrix_display.cpp ----

    void Display() const override;
    void DisplayF() const override;
    /// Dumps the stored triangle in short form, without heading.
    void DisplayS() const;

private:
    void CopyFrom(const KwSymMatrix& other);

    std::int32_t fNRows;
    std::int32_t fNBlocks;
    std::int32_t fBlockSize;
    std::vector<double> fData;
};

}  // namespace KwMath_930
