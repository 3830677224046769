// The interface through which every kind of rectangular matrix is reached.
#pragma once

#include <vector>

#include "numerics/Export.h"

namespace KwMath_930 {

class KwRectMatrix;
class KwSparseVector;

/// A rectangular matrix R of doubles, r rows by c columns, whatever its storage. No data. Operations are declared in
/// slot order; the destructor is slot 0, and a number stands at each operation. Indices count from 0. No operation
/// throws.
/// Unless an operation says otherwise:
/// - sizes and indices are checked before anything is written; a mismatch or an invalid operand gives false, 0.0 or -1
///   and changes nothing; so does memory that fails, except that a target whose own storage failed becomes invalid;
/// - a target whose size differs is resized; it may be an operand or this matrix;
/// - a vector that is read may be longer than needed.
/// Note:    slots count in the order of declaration; MSVC lays adjacent overloads out in reverse (docs/windows.md).
class KW_EXPORT IKwRectMatrix {
public:
    /// The kinds of rectangular matrix.
    enum RectMatrixType {
        kDenseRectMatrix = 0,  ///< KwRectMatrix: all elements, row by row
        kSparseRectMatrix = 1  ///< KwSparseRectMatrix: the elements that are not 0, row by row
    };

    IKwRectMatrix() = default;
    IKwRectMatrix(const IKwRectMatrix&) = default;
    IKwRectMatrix& operator=(const IKwRectMatrix&) = default;
    virtual ~IKwRectMatrix();  // slot 0

    /// Returns: the kind of the matrix.
    virtual RectMatrixType GetMatrixType() const = 0;  // slot 1
    /// Returns: true when both counts are >= 0.
    virtual bool IsValidMatrix() const = 0;  // slot 2
    /// Returns: the number of rows; -1 for an invalid matrix, one whose storage could not be allocated.
    virtual int GetNRows() const = 0;  // slot 3
    /// Returns: the number of columns; -1 for an invalid matrix.
    virtual int GetNCols() const = 0;  // slot 4
    /// Shape:   0 <= i < rows, 0 <= j < columns, unchecked.
    /// Returns: element (i, j).
    virtual double GetElem(int i, int j) const = 0;  // slot 5
    /// Copies row i to row, which is resized to the number of columns if its size differs.
    /// Returns: false unless 0 <= i < rows, or when row could not be allocated; row is unchanged then.
    virtual bool GetRow(int i, std::vector<double>& row) const = 0;  // slot 6
    /// Copies column j to column, which is resized to the number of rows if its size differs.
    /// Returns: false unless 0 <= j < columns, or when column could not be allocated; column is unchanged then.
    virtual bool GetCol(int j, std::vector<double>& column) const = 0;  // slot 7
    /// Appends a row that holds v, 0 elsewhere.
    /// Returns: the new number of rows; -1 when v.GetMinVecSize() exceeds the columns, nothing changed then, or when
    ///          memory fails, the matrix invalid then.
    virtual int AddRow(const KwSparseVector& v) = 0;  // slot 8
    /// Appends a row of zeros.
    /// Returns: the new number of rows; -1 when memory fails, the matrix invalid then.
    virtual int AddRow() = 0;  // slot 9
    /// Sets every element to 0; the size is kept.
    virtual void Clear() = 0;  // slot 10
    /// Returns: the Euclidean norm of column j, scaled against overflow; minus the largest double for a bad index.
    virtual double ColNorm(int j) const = 0;  // slot 11
    /// target = R B; B has as many rows as R has columns.
    virtual bool ComputeMatrixProduct(const IKwRectMatrix& b, IKwRectMatrix& target) const = 0;  // slot 12
    /// target = R B^T; B has as many columns as R.
    virtual bool ComputeProductMatrixTrans(const IKwRectMatrix& b, KwRectMatrix& target) const = 0;  // slot 13
    /// out = R v.
    /// Returns: false when v has fewer elements than there are columns; true also for 0 rows.
    virtual bool ComputeRV(const std::vector<double>& v, std::vector<double>& out) const = 0;  // slot 14
    /// out = v^T R.
    /// Returns: false when v has fewer elements than there are rows.
    virtual bool ComputeVR(const std::vector<double>& v, std::vector<double>& out) const = 0;  // slot 15
    /// Copies column j to the first elements of v, which is resized only if it is shorter.
    virtual bool CopyColToVec(int j, std::vector<double>& v) const = 0;  // slot 16
    /// Copies the rows of source from row `from` on over the rows of this matrix from row `to` on, as many as fit.
    /// Returns: false when the columns differ, `from` is outside source or `to` outside this matrix.
    virtual bool CopyRows(const IKwRectMatrix& source, int from, int to) = 0;  // slot 17
    /// Copies row i over row j of target, which has as many columns and is not resized.
    virtual bool CopyRowToRow(int i, int j, IKwRectMatrix& target) const = 0;  // slot 18
    /// target = count copies of R on the diagonal, 0 elsewhere.
    /// Returns: false for count < 1.
    virtual bool CreateBlockDiagonal(int count, IKwRectMatrix& target) const = 0;  // slot 19
    /// Returns: column i times column j.
    virtual double DotProductCol(int i, int j) const = 0;  // slot 20
    /// Returns: row i times row j.
    virtual double DotProductRows(int i, int j) const = 0;  // slot 21
    /// Returns: row i times column j of b, which has as many rows as this matrix has columns.
    virtual double DotProductRowCol(int i, const IKwRectMatrix& b, int j) const = 0;  // slot 22
    /// Returns: row i times row j of b, which has as many columns.
    virtual double DotProductRowRow(int i, const IKwRectMatrix& b, int j) const = 0;  // slot 23
    /// target = the listed columns in list order; repeats are allowed.
    virtual bool ExtractColumns(const std::vector<int>& columns, IKwRectMatrix& target) const = 0;  // slot 24
    /// target = the listed rows in list order; repeats are allowed.
    virtual bool ExtractRows(const std::vector<int>& rows, IKwRectMatrix& target) const = 0;  // slot 25
    /// v[offset + k inc] += a R(k,j) for k = 0 .. rows-1.
    /// Returns: false for a bad j and, if check is set, when a place lies outside v.
    /// Note:    without check every place must lie in v.
    virtual bool IncrVecByColumn(int j, std::vector<double>& v, int offset, int inc, double a,
                                 bool check) const = 0;  // slot 26
    /// Returns: true when every element of row i is 0; false for a bad index, without columns, or for a NaN.
    virtual bool IsRowZero(int i) const = 0;  // slot 27
    /// Makes the size nRows x nCols, a negative count being 0.
    /// Returns: false when the allocation failed; the matrix is invalid then.
    /// Note:    the elements are kept only if the number of columns stays.
    virtual bool Resize(int nRows, int nCols) = 0;  // slot 28
    /// Returns: the Euclidean norm of row i, as ColNorm.
    virtual double RowNorm(int i) const = 0;  // slot 29
    /// Shape:   0 <= i < rows, 0 <= j < columns, unchecked.
    /// Returns: true after setting element (i, j); false when memory fails.
    virtual bool SetElem(int i, int j, double value) = 0;  // slot 30
    /// As Resize, then sets every element to 0 if zero is true.
    virtual bool SetNRowsCols(int nRows, int nCols, bool zero) = 0;  // slot 31
    /// Row i becomes v, 0 elsewhere.
    /// Returns: false for a bad row or when v.GetMinVecSize() exceeds the columns.
    virtual bool SetRow(int i, const KwSparseVector& v) = 0;  // slot 32
    /// target gets the shape of R and the elements moved by shift columns: target(i, j + shift) = R(i, j). Vacated
    /// places are 0, elements pushed out are lost; a negative shift moves to the left.
    virtual bool ShiftColumns(int shift, IKwRectMatrix& target) const = 0;  // slot 33
    /// As ShiftColumns, for rows: target(i + shift, j) = R(i, j).
    virtual bool ShiftRows(int shift, IKwRectMatrix& target) const = 0;  // slot 34
    /// Sets to 0 count elements of row i from column first on.
    /// Returns: false when a place lies outside the row.
    virtual bool ZeroOutRowPart(int i, int first, int count) = 0;  // slot 35
    /// Dumps the matrix as it is stored.
    virtual void Display() const = 0;  // slot 36
    /// Dumps the full matrix, row by row, in full precision.
    virtual void DisplayF() const = 0;  // slot 37
};

}  // namespace KwMath_930
