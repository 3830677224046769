// The dense rectangular matrix: all elements, row by row.
#pragma once

#include <cstdint>
#include <vector>

#include "numerics/Export.h"
#include "numerics/matrix/IKwRectMatrix.h"

namespace KwMath_930 {

class IKwSymMatrix;
class KwSymBlockDiagMatrix;
class KwSymMatrix;

/// Dense matrix R of r rows and c columns, stored row by row: element (i, j) at index c i + j, counting from 0. Copies
/// are deep.
/// Fails:   never throws. When its own storage cannot be allocated the matrix becomes invalid: both counts are -1 and
///          the storage is empty; IsValidMatrix() tells. It can be resized or assigned to and is valid again.
/// Note:    operands given as interface may be of any kind, with equal results. What IKwRectMatrix says of sizes,
///          targets and failures holds for the members that are not virtual too.
class KW_EXPORT KwRectMatrix : public IKwRectMatrix {
public:
    // ---- Storage: KwRectMatrix_storage.cpp ----

    /// An empty matrix of 0 x 0.
    KwRectMatrix();
    /// A matrix of nRows x nCols, a negative count being 0; every element 0 whatever zero says.
    KwRectMatrix(int nRows, int nCols, bool zero);
    KwRectMatrix(const KwRectMatrix& other);
    KwRectMatrix& operator=(const KwRectMatrix& other);
    ~KwRectMatrix() override;

    /// Sizes the storage of nRows x nCols elements; existing elements keep their index, new ones are 0.
    /// Returns: true when both counts are >= 0 afterwards. A failed allocation sets both to -1; data is empty unless
    ///          both are positive.
    static bool ResizeNRowsCols(std::vector<double>& data, int& nRows, int& nCols);

    RectMatrixType GetMatrixType() const override;
    bool IsValidMatrix() const override;
    int GetNRows() const override;
    int GetNCols() const override;
    /// As the interface says.
    /// Note:    Deliberate: elements keep their index in the storage, not their place, so the content is kept only if
    ///          the number of columns stays.
    bool Resize(int nRows, int nCols) override;
    bool SetNRowsCols(int nRows, int nCols, bool zero) override;
    void Clear() override;
    int AddRow(const KwSparseVector& v) override;
    int AddRow() override;
    /// Returns: the stored elements, writable; their number must stay rows x columns.
    std::vector<double>& AsVector();
    /// Returns: the stored elements.
    const std::vector<double>& AsVectorConst() const;

    // ---- Elements, rows and columns: KwRectMatrix_access.cpp ----

    double GetElem(int i, int j) const override;
    bool SetElem(int i, int j, double value) override;
    bool GetRow(int i, std::vector<double>& row) const override;
    bool GetCol(int j, std::vector<double>& column) const override;
    bool CopyColToVec(int j, std::vector<double>& v) const override;
    bool SetRow(int i, const KwSparseVector& v) override;
    bool IsRowZero(int i) const override;
    bool ZeroOutRowPart(int i, int first, int count) override;
    bool IncrVecByColumn(int j, std::vector<double>& v, int offset, int inc, double a, bool check) const override;

    // ---- Copies, extraction, shifts: KwRectMatrix_extract.cpp ----

    bool CopyRows(const IKwRectMatrix& source, int from, int to) override;
    bool CopyRowToRow(int i, int j, IKwRectMatrix& target) const override;
    bool CreateBlockDiagonal(int count, IKwRectMatrix& target) const override;
    bool ExtractColumns(const std::vector<int>& columns, IKwRectMatrix& target) const override;
    bool ExtractRows(const std::vector<int>& rows, IKwRectMatrix& target) const override;
    bool ShiftColumns(int shift, IKwRectMatrix& target) const override;
    bool ShiftRows(int shift, IKwRectMatrix& target) const override;

    // ---- Norms and products with vectors: KwRectMatrix_vector_products.cpp ----

    double ColNorm(int j) const override;
    double RowNorm(int i) const override;
    bool ComputeRV(const std::vector<double>& v, std::vector<double>& out) const override;
    bool ComputeVR(const std::vector<double>& v, std::vector<double>& out) const override;
    double DotProductCol(int i, int j) const override;
    double DotProductRows(int i, int j) const override;
    double DotProductRowCol(int i, const IKwRectMatrix& b, int j) const override;
    double DotProductRowRow(int i, const IKwRectMatrix& b, int j) const override;
    /// Returns: row i times column j of s, which has as many rows as this matrix has columns; 0.0 on a mismatch.
    double DotProductRowCol(int i, const IKwSymMatrix& s, int j) const;

    // ---- Products with matrices: KwRectMatrix_matrix_products.cpp ----

    bool ComputeMatrixProduct(const IKwRectMatrix& b, IKwRectMatrix& target) const override;
    bool ComputeProductMatrixTrans(const IKwRectMatrix& b, KwRectMatrix& target) const override;
    /// target = R S; S has as many rows as R has columns.
    bool ComputeMatrixProduct(const IKwSymMatrix& s, IKwRectMatrix& target) const;
    /// target = R^T S R2; S has as many rows as R and as R2.
    bool ComputeR1TransSR2(const IKwSymMatrix& s, const IKwRectMatrix& r2, IKwRectMatrix& target) const;
    /// This matrix becomes B R; B has as many rows as R, which may be this matrix.
    bool ComputeBlockDiagSR(const KwSymBlockDiagMatrix& b, const IKwRectMatrix& r);
    /// Y := a R + Y, R being square of the order of Y; its lower triangle is used.
    bool ComputeAXpY(double a, KwSymMatrix& y) const;
    /// R := R - S, R being square of the order of S.
    bool SubtractSymMatrix(const IKwSymMatrix& s);
    /// Returns: trace(R S), R being square of the order of S; 0.0 otherwise.
    double TraceOfProductSqS(const IKwSymMatrix& s) const;
    /// Returns: trace of R times the part of S of the order of R that starts at row and column first; 0.0 when R is not
    ///          square or the part lies outside S.
    double TraceOfProductSubMatSym(const IKwSymMatrix& s, int first) const;

    // ---- Decomposition: KwRectMatrix_qr.cpp ----

    /// Householder QR of this matrix A, r >= c, which is unchanged: A = Q U with U upper triangular.
    /// Shape:   u gets order c, element (i, j), i <= j, of U standing at its symmetric place; h gets r x c, column j
    ///          holding, from row j on, the vector h of reflection j, I - h h^T / h[j], and zeros above.
    /// Returns: false when r < c, when the matrix is invalid or when memory fails.
    /// Note:    U^T U = A^T A; h[j] is 0 where no reflection was needed. The diagonal of U has the sign that makes the
    ///          reflection stable, opposite to that of the element it replaces.
    /// Source:  LINPACK DQRDC, without pivoting [Dongarra et al. 1979].
    bool QRDecompositionH(KwSymMatrix& u, KwRectMatrix& h) const;

    // ---- Dumps: KwRectMatrix_display.cpp ----

    void Display() const override;
    void DisplayF() const override;

private:
    void CopyFrom(const KwRectMatrix& other);
    bool HasRow(int i) const { return i >= 0 && i < fNRows; }
    bool HasCol(int j) const { return j >= 0 && j < fNCols; }
    const double* RowData(int i) const;
    double* RowData(int i);

    std::int32_t fNRows;
    std::int32_t fNCols;
    std::vector<double> fData;
};

}  // namespace KwMath_930
