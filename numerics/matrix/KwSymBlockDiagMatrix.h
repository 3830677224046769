// The symmetric block-diagonal matrix: square blocks along the diagonal, each dense or itself a diagonal.
#pragma once

#include <cstdint>
#include <vector>

#include "numerics/Export.h"
#include "numerics/containers/KwBitSet.h"
#include "numerics/matrix/IKwSymMatrix.h"
#include "numerics/matrix/KwSymMatrix.h"

namespace KwMath_930 {

/// Symmetric matrix of order n that is 0 outside square blocks along its diagonal. Only the blocks are stored: a dense
/// one as its lower triangle, a diagonal one as its diagonal. Row i of the lower triangle is one run of stored
/// elements, (i, first) .. (i, i). As an IKwSymMatrix every operation gives what the full matrix would give.
/// Fails:   never throws. When memory for its own storage fails the matrix becomes invalid, GetNRows() is -1. A write
///          outside the blocks is refused unless the value is 0; the members that would do one change nothing.
/// Note:    the factor, the inverse and the products of a factor with its transpose stay within the blocks and are
///          formed block by block; in products with other matrices this factor costs only its blocks. Products with
///          vectors leave the zeros outside the blocks out: an infinity or NaN of the vector stays within its block.
class KW_EXPORT KwSymBlockDiagMatrix : public IKwSymMatrix {
public:
    // ---- Storage, blocks: KwSymBlockDiagMatrix_storage.cpp ----

    /// A matrix of order 0 without blocks.
    KwSymBlockDiagMatrix();
    /// Blocks of these sizes, all 0; block k is itself only a diagonal when bit k is set (bits beyond the set count as
    /// clear).
    /// Note:    a size below 1 or an order beyond the range of int makes an invalid matrix.
    KwSymBlockDiagMatrix(const std::vector<int>& blockSizes, const KwBitSet& isDiagonal);
    KwSymBlockDiagMatrix(const KwSymBlockDiagMatrix& other) : KwSymBlockDiagMatrix() { CopyFrom(other); }
    KwSymBlockDiagMatrix& operator=(const KwSymBlockDiagMatrix& other) {
        if (this != &other) {
            CopyFrom(other);
        }
        return *this;
    }
    ~KwSymBlockDiagMatrix() override;

    /// Returns: the number of diagonal blocks.
    int GetNBlocks() const;
    /// Returns: the size of one block; -1 for a bad index.
    int GetBlockSize(int block) const;
    /// Returns: the sizes of all blocks.
    const std::vector<int>& GetBlockSizes() const;
    /// Returns: true when the block is itself only a diagonal; false also for a bad index.
    bool GetIsBlockDiagonal(int block) const;
    /// Gives a dense block, owned by this matrix.
    /// Returns: false for a bad index or a diagonal block; dense is unchanged then.
    bool GetDenseBlock(int block, const KwSymMatrix*& dense) const;
    /// Gives the diagonal of a diagonal block, owned by this matrix.
    /// Returns: false for a bad index or a dense block; diagonal is unchanged then.
    bool GetDiagonalBlock(int block, const std::vector<double>*& diagonal) const;
    /// Gives the column of the first stored element of a row; the stored run ends at the diagonal.
    /// Returns: false for a bad index; first is unchanged then.
    bool GetIndexFirstInRow(int row, int& first) const;
    /// As the form above, with the stored elements (row, first) .. (row, row), owned by this matrix.
    bool GetIndexFirstInRow(int row, int& first, const double*& values) const;

    SymMatrixType GetType() const override;
    int GetNRows() const override;
    bool IsValidMatrix() const override;
    void Clear() override;
    bool Resize(int n) override;
    bool SetNRows(int n, bool zero) override;

    // ---- Elements and rows: KwSymBlockDiagMatrix_access.cpp ----

    double GetElem(int i, int j) const override;
    void GetDiagonal(std::vector<double>& diagonal) const override;
    bool GetRow(int i, std::vector<double>& row) const override;
    bool IncrVecByRow(int i, std::vector<double>& v, int offset, int inc, double a, bool check) const override;
    bool IsZeroRow(int i, const KwBitSet& ignored) const override;
    bool PutRow(int i, const std::vector<double>& row) override;
    bool SetElem(int i, int j, double value) override;
    bool SetRowColToConst(int i, double value) override;
    bool ZeroOut(int i) override;

    // ---- Scaling, trace, extremes: KwSymBlockDiagMatrix_elementwise.cpp ----

    void AddToDiagonal(double value) override;
    void ChangeSign() override;
    bool ComputeAXpY(double a, const IKwSymMatrix& x) override;
    void MaxMinDiag(double& largest, double& smallest) const override;
    void MaxMinDiagOffDiag(double& largestDiag, double& smallestDiag, double& largestOff,
                           double& smallestOff) const override;
    void MultiplyByNumber(double factor) override;
    double Trace() const override;
    double TraceOfProduct(const IKwSymMatrix& m) const override;
    void ZeroOutNonDiag(double tol) override;

    // ---- Cholesky factor, solving, inverse, determinant: KwSymBlockDiagMatrix_cholesky.cpp ----

    int CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target, double& minDiag) const override;
    int CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target, KwBitSet& zeros) const override;
    int CholInverse(const std::vector<double>& ref, double tol, IKwSymMatrix& target) const override;
    bool ComputeDeterminant(double tol, double* det) const override;
    void GetNCheckDiagonal(std::vector<double>& diagonal, double a, double b) const override;
    int LTChol(double tol, double& minDiag, bool check) override;
    int LTChol(const std::vector<double>& ref, double tol, KwBitSet& zeros, bool check) override;
    int LTChol(const std::vector<double>& ref, double tol, bool check) override;
    int LTDetInverse(double* det, int job) override;
    bool LTInverse() override;
    void LTLLTrans() override;
    void LTLTransL() override;
    int LTSolve(const std::vector<double>& b, double tol, std::vector<double>& x) override;

    // ---- Products with vectors, quadratic forms: KwSymBlockDiagMatrix_vector_products.cpp ----

    double ComputeDotProduct2Rows(int i, int j) const override;
    bool ComputeLTransV(const std::vector<int>& indices, const std::vector<double>& values,
                        std::vector<double>& out) const override;
    bool ComputeLTransV(const std::vector<double>& v, std::vector<double>& out) const override;
    bool ComputeLV(const std::vector<int>& indices, const std::vector<double>& values,
                   std::vector<double>& out) const override;
    bool ComputeLV(const std::vector<double>& v, std::vector<double>& out) const override;
    double ComputeRowDotProductS(int i, const std::vector<double>& packed, int j) const override;
    double ComputeRowDotProductS(int i, const IKwSymMatrix& m, int j) const override;
    double ComputeRVD(int i, const double* v, int inc) const override;
    double ComputeRVD(int i, const std::vector<double>& v, int inc) const override;
    bool ComputeSV(int k, const std::vector<double>& v, std::vector<double>& out) const override;
    bool ComputeSV(const std::vector<double>& v, std::vector<double>& out) const override;
    double ComputeVSV(const IKwRectMatrix& r, int i) const override;
    double ComputeVSV(const std::vector<double>& v) const override;
    double ComputeVSW(const std::vector<double>& x, int a, int b, int inc) const override;
    double ComputeVSW(const double* v, int incv, const double* w, int incw) const override;
    double ComputeVSW(const std::vector<double>& v, const std::vector<double>& w) const override;
    double ComputeVSWParts(const double* v, int nv, const double* w, int nw) const override;
    double ComputeVSWParts(const std::vector<double>& v, int nv, const std::vector<double>& w, int nw) const override;
    /// The n elements v[offset], v[offset + inc], ... become their row product with L, v^T L, in place.
    /// Returns: false when inc is 0 for n > 1 or a place lies outside v.
    bool ComputeVecPartByL(std::vector<double>& v, int offset, int inc) const;
    /// The same for count elements and the leading count rows of L, walked with a step that grows by one: element k
    /// stands at offset + k inc + k(k-1)/2.
    /// Returns: false unless 0 <= count <= n, or when a place lies outside v.
    bool ComputeVecIIncrPartByL(std::vector<double>& v, int offset, int inc, int count) const;
    /// The same for the elements (row, first) .. (row, first + count - 1) of the symmetric matrix whose lower triangle
    /// packed holds.
    /// Returns: false unless 0 <= count <= n, or when an element lies outside packed.
    bool ComputeSymRowByL(std::vector<double>& packed, int row, int first, int count) const;
    /// The n elements of v from offset on become their row product with L.
    /// Returns: the sum of their squares; 0.0 when a place lies outside v, nothing changed then.
    double ComputeProductLAndSquare(std::vector<double>& v, int offset) const;
    /// dot = the sum over rows i of L(i, col) times the element i of v, which stands at offset + i inc + i(i-1)/2.
    /// Returns: false for a bad column or when an element that is read lies outside v; dot is unchanged then.
    bool DotProductColVecIIncrPart(int col, const std::vector<double>& v, int offset, int inc, double& dot) const;
    /// dot = the sum over rows i of L(i, col) S(row, first + i).
    /// Returns: false for a bad column or when an element that is read lies outside S; dot is unchanged then.
    bool DotProductLColDenseRowPart(int col, const KwSymMatrix& s, int row, int first, double& dot) const;

    // ---- Products with matrices, extraction: KwSymBlockDiagMatrix_matrix_products.cpp ----

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
    bool ExtractFirstNRows(IKwSymMatrix& target) const override;
    bool ExtractSubmatrix(const std::vector<int>& rows, IKwSymMatrix& target) const override;
    double TraceOfProductOfThree(const IKwSymMatrix& m, const IKwSymMatrix& n) const override;

    // ---- Dumps: KwSymBlockDiagMatrix_display.cpp ----

    void Display() const override;
    void DisplayF() const override;

private:
    void CopyFrom(const KwSymBlockDiagMatrix& other);
    void Invalidate();
    void Swap(KwSymBlockDiagMatrix& other);
    bool HasRow(int i) const { return i >= 0 && i < fNRows; }
    bool HasBlock(int k) const { return k >= 0 && k < fNBlocks; }
    bool CopyTo(KwSymMatrix& dense) const;
    int EndOfRun(int column) const;
    const double* RowRun(int row, int& first) const;
    double* RowRun(int row, int& first);
    template <class Visit>
    void VisitTriangles(Visit visit);
    template <class Place>
    void MultiplyRowByL(double* values, int count, Place place) const;
    int Factor(const std::vector<double>& ref, double tol, KwBitSet* zeros, bool check);

    std::int32_t fNRows;
    std::int32_t fNBlocks;
    std::vector<int> fBlockSizes;
    std::vector<int> fFirstRows;   // of each block
    std::vector<int> fBlockOfRow;  // of each row
    KwBitSet fIsDiagonal;          // of each block
    std::vector<int> fPlaces;      // of each block in the list of its kind
    std::vector<KwSymMatrix> fDenseBlocks;
    std::vector<std::vector<double>> fDiagonalBlocks;
};

}  // namespace KwMath_930
