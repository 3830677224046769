// Operands that come as interface, read once into plain rows, and results written to targets of any kind. Internal.
#pragma once

#include <vector>

#include "numerics/matrix/IKwRectMatrix.h"
#include "numerics/matrix/IKwSymMatrix.h"
#include "numerics/matrix/KwSparseVector.h"

namespace KwMath_930 {

/// A symmetric operand as a packed lower triangle: the storage itself for exactly the dense class, otherwise a copy
/// that is filled through the virtual operations.
class SymOperand {
public:
    /// Note:    may throw std::bad_alloc. matrix must outlive the operand.
    explicit SymOperand(const IKwSymMatrix& matrix);
    SymOperand(const SymOperand&) = delete;
    SymOperand& operator=(const SymOperand&) = delete;

    /// Returns: the order; -1 for an invalid matrix.
    int Order() const { return fOrder; }
    /// Returns: n(n+1)/2 elements, row by row.
    const double* Packed() const { return fPacked; }
    /// Returns: the full matrix, row by row.
    std::vector<double> Square() const;

private:
    int fOrder;
    const double* fPacked = nullptr;
    std::vector<double> fCopy;
};

/// A rectangular operand as rows one after another: the storage itself for exactly the dense class, otherwise a copy
/// that is filled through the virtual operations.
class RectOperand {
public:
    /// Note:    may throw std::bad_alloc. matrix must outlive the operand.
    explicit RectOperand(const IKwRectMatrix& matrix);
    RectOperand(const RectOperand&) = delete;
    RectOperand& operator=(const RectOperand&) = delete;

    /// Returns: the number of rows; -1 for an invalid matrix.
    int Rows() const { return fRows; }
    /// Returns: the number of columns; -1 for an invalid matrix.
    int Cols() const { return fCols; }
    /// Returns: row i.
    const double* Row(int i) const { return fData + static_cast<std::size_t>(i) * static_cast<std::size_t>(fCols); }
    /// Returns: the elements, row by row.
    const double* Data() const { return fData; }
    /// Returns: the transposed matrix, row by row.
    std::vector<double> Transposed() const;

private:
    int fRows;
    int fCols;
    const double* fData = nullptr;
    std::vector<double> fCopy;
};

/// Writes a packed triangle to a target of the dense kind, which is resized by its virtual Resize.
/// Returns: false when target is of another kind, nothing written then, or when its storage failed.
bool WriteTarget(IKwSymMatrix& target, int order, const std::vector<double>& packed);

/// Writes rows one after another to a target of any kind, which is resized; one that is not dense receives the elements
/// that are not 0.
/// Returns: false when storage of target failed.
bool WriteTarget(IKwRectMatrix& target, int nRows, int nCols, const std::vector<double>& elements);

/// Returns: the elements of a row that are not 0, as a sparse vector. May throw std::bad_alloc.
KwSparseVector ToSparse(const double* row, int nCols);

/// Returns: true when target can take a dense symmetric result.
inline bool IsDenseKind(const IKwSymMatrix& target) {
    return target.GetType() == IKwSymMatrix::kDenseSymMatrix;
}

/// Returns: a new matrix of nRows x nCols zeros, row by row. May throw std::bad_alloc or std::length_error.
std::vector<double> ZeroRows(int nRows, int nCols);

/// Returns: the transposed matrix of nRows x nCols elements, all row by row.
std::vector<double> Transposed(int nRows, int nCols, const double* elements);

/// Returns: the full matrix of a packed triangle of the given order, row by row.
std::vector<double> ToSquare(const double* packed, int order);

/// Returns: the lower triangle, packed, of a square matrix stored row by row.
std::vector<double> LowerTriangle(const std::vector<double>& square, int order);

}  // namespace KwMath_930
