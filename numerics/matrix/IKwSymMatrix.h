// The interface through which every kind of symmetric matrix is reached.
#pragma once

#include <vector>

#include "numerics/Export.h"

namespace KwMath_930 {

/// A symmetric matrix of doubles, of order n, whatever its storage. No data. Operations are declared in slot order;
/// the destructor is slot 0, and a number stands at each operation.
/// Indices count from 0. Element (i, j) and element (j, i) are one value. No operation throws.
class KW_EXPORT IKwSymMatrix {
public:
    /// The kinds of symmetric matrix.
    enum SymMatrixType {
        kDenseSymMatrix = 0  ///< KwSymMatrix: one packed lower triangle
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
    /// Sets every element to 0; the order is kept.
    virtual void Clear() = 0;  // slot 12
    /// The product S v, into out, which is resized to n if its size differs and may be v itself.
    /// Returns: false when v has fewer than n elements, when the matrix is invalid or when memory fails, out unchanged
    ///          then; true otherwise, also for n = 0.
    virtual bool ComputeSV(const std::vector<double>& v, std::vector<double>& out) const = 0;  // slot 38
    /// Returns: v^T S v; 0.0 when v does not have exactly n elements or n < 1.
    virtual double ComputeVSV(const std::vector<double>& v) const = 0;  // slot 40
    /// Returns: v^T S w; 0.0 when v or w does not have exactly n elements or n < 1.
    virtual double ComputeVSW(const std::vector<double>& v, const std::vector<double>& w) const = 0;  // slot 43
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
