// The sparse rectangular matrix: of each row, the elements that are not 0.
#pragma once

#include <cstdint>
#include <vector>

#include "numerics/Export.h"
#include "numerics/matrix/IKwRectMatrix.h"

namespace KwMath_930 {

/// Rectangular matrix that stores, row by row, the elements that are not 0 (a NaN is stored), with their columns
/// ascending. As an IKwRectMatrix every operation gives what the full matrix would give. Copies are deep.
/// Fails:   never throws. When memory for its own storage fails in a construction, a copy, a resize or an added row the
///          matrix becomes invalid, both counts -1; any other operation returns its failure value and changes nothing.
/// Note:    setting an element costs a search and a move within its row. Products cost the stored elements;
///          extractions and shifts go by a full copy. Products with vectors leave out what is not stored: an infinity
///          or NaN of the vector meets stored elements only.
class KW_EXPORT KwSparseRectMatrix : public IKwRectMatrix {
public:
    // ---- Virtual operations that this class adds, in slot order ----

    /// Gives the stored elements of a row, GetNNZRowElements()[i] of them, owned by this matrix.
    /// Returns: false for an invalid row; columns and values are unchanged then.
    virtual bool GetRow(int i, const int*& columns, const double*& values) const;  // slot 38
    /// Gives the whole matrix by columns: of column j the row indices, ascending, in rows[j] and the values in
    /// values[j]. Returns: false for an invalid matrix or when memory fails; rows and values are unchanged then.
    virtual bool GetSparseMatrixColumns(std::vector<std::vector<int>>& rows,
                                        std::vector<std::vector<double>>& values) const;  // slot 39

    // ---- Storage: KwSparseRectMatrix_storage.cpp ----

    /// An empty matrix of 0 x 0.
    KwSparseRectMatrix();
    /// A matrix of nRows x nCols zeros, a negative count being 0.
    KwSparseRectMatrix(int nRows, int nCols);
    KwSparseRectMatrix(const KwSparseRectMatrix& other) : KwSparseRectMatrix() { CopyFrom(other); }
    KwSparseRectMatrix& operator=(const KwSparseRectMatrix& other) {
        if (this != &other) {
            CopyFrom(other);
        }
        return *this;
    }
    ~KwSparseRectMatrix() override;

    /// Returns: the number of stored elements of each row.
    const std::vector<int>& GetNNZRowElements() const;
    RectMatrixType GetMatrixType() const override;
    bool IsValidMatrix() const override;
    int GetNRows() const override;
    int GetNCols() const override;
    int AddRow(const KwSparseVector& v) override;
    int AddRow() override;
    /// Becomes the matrix of nRows x nCols elements that stand row by row, neither count negative.
    /// Returns: false when memory fails; the matrix is invalid then.
    bool SetToRows(int nRows, int nCols, const double* elements);
    void Clear() override;
    bool Resize(int nRows, int nCols) override;
    bool SetNRowsCols(int nRows, int nCols, bool zero) override;

    // ---- Elements, rows and columns: KwSparseRectMatrix_access.cpp ----

    double GetElem(int i, int j) const override;
    bool GetRow(int i, std::vector<double>& row) const override;
    bool GetCol(int j, std::vector<double>& column) const override;
    bool CopyColToVec(int j, std::vector<double>& v) const override;
    bool CopyRows(const IKwRectMatrix& source, int from, int to) override;
    bool CopyRowToRow(int i, int j, IKwRectMatrix& target) const override;
    bool IncrVecByColumn(int j, std::vector<double>& v, int offset, int inc, double a, bool check) const override;
    bool IsRowZero(int i) const override;
    bool SetElem(int i, int j, double value) override;
    bool SetRow(int i, const KwSparseVector& v) override;
    bool ZeroOutRowPart(int i, int first, int count) override;

    // ---- Norms, products, extraction: KwSparseRectMatrix_products.cpp ----

    double ColNorm(int j) const override;
    bool ComputeMatrixProduct(const IKwRectMatrix& b, IKwRectMatrix& target) const override;
    bool ComputeProductMatrixTrans(const IKwRectMatrix& b, KwRectMatrix& target) const override;
    bool ComputeRV(const std::vector<double>& v, std::vector<double>& out) const override;
    bool ComputeVR(const std::vector<double>& v, std::vector<double>& out) const override;
    bool CreateBlockDiagonal(int count, IKwRectMatrix& target) const override;
    double DotProductCol(int i, int j) const override;
    double DotProductRows(int i, int j) const override;
    double DotProductRowCol(int i, const IKwRectMatrix& b, int j) const override;
    double DotProductRowRow(int i, const IKwRectMatrix& b, int j) const override;
    bool ExtractColumns(const std::vector<int>& columns, IKwRectMatrix& target) const override;
    bool ExtractRows(const std::vector<int>& rows, IKwRectMatrix& target) const override;
    double RowNorm(int i) const override;
    bool ShiftColumns(int shift, IKwRectMatrix& target) const override;
    bool ShiftRows(int shift, IKwRectMatrix& target) const override;

    // ---- Dumps: KwSparseRectMatrix_display.cpp ----

    void Display() const override;
    void DisplayF() const override;

private:
    void CopyFrom(const KwSparseRectMatrix& other);
    void Swap(KwSparseRectMatrix& other);
    void Invalidate();
    bool HasRow(int i) const { return i >= 0 && i < fNRows; }
    bool HasCol(int j) const { return j >= 0 && j < fNCols; }
    void TakeRow(int i, std::vector<int>& columns, std::vector<double>& values);
    bool ReplaceRow(int i, const double* row);
    std::vector<double> Product(int nCols, const double* b) const;

    std::int32_t fNRows;
    std::int32_t fNCols;
    std::int32_t fNElements;     // stored in all
    std::int32_t fNNonZeroRows;  // rows that store an element
    std::vector<int> fCounts;    // of each row
    std::vector<int> fColumnCounts;
    std::vector<std::vector<int>> fColumns;
    std::vector<std::vector<double>> fValues;
};

}  // namespace KwMath_930
