// Symmetric matrix, storage: construction, copies, size, blocks, removal of a row. The storage is the packed lower
// triangle, so the leading principal submatrix keeps its place when the vector grows or shrinks.
// Test: KwSymMatrix_storage_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <algorithm>
#include <limits>

#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930 {

namespace {

// An order beyond the range of int becomes the largest int, whose triangle is beyond any allocation too.
int OrderOfBlocks(int nBlocks, int blockSize) {
    const std::int64_t order = std::int64_t{nBlocks} * blockSize;
    return static_cast<int>(std::min<std::int64_t>(order, std::numeric_limits<int>::max()));
}

}  // namespace

KwSymMatrix::KwSymMatrix() : fNRows(0), fNBlocks(0), fBlockSize(0) {}

// The elements of a new vector are 0, so the zero flags ask for nothing more.
KwSymMatrix::KwSymMatrix(int nBlocks, int blockSize, bool /*zero*/) : KwSymMatrix() {
    if (nBlocks < 1 || blockSize < 1) {
        return;
    }
    fNBlocks = nBlocks;
    fBlockSize = blockSize;
    fNRows = OrderOfBlocks(nBlocks, blockSize);
    ResizeNRows(fData, fNRows);
}

KwSymMatrix::KwSymMatrix(int n, bool /*zero*/) : fNRows(std::max(n, 0)), fNBlocks(1), fBlockSize(fNRows) {
    ResizeNRows(fData, fNRows);
}

KwSymMatrix::KwSymMatrix(const KwSymMatrix& other) : IKwSymMatrix(other) {
    CopyFrom(other);
}

KwSymMatrix& KwSymMatrix::operator=(const KwSymMatrix& other) {
    if (this != &other) {
        CopyFrom(other);
    }
    return *this;
}

KwSymMatrix::~KwSymMatrix() = default;

void KwSymMatrix::CopyFrom(const KwSymMatrix& other) {
    fNRows = other.fNRows;
    fNBlocks = other.fNBlocks;
    fBlockSize = other.fBlockSize;
    if (!ResizeNCopy(fData, other.fData)) {
        fNRows = -1;
        fData.clear();
    }
}

bool KwSymMatrix::ResizeNRows(std::vector<double>& data, int& nRows) {
    if (nRows > 0) {
        try {
            data.resize(packed_triangle::Size(nRows));
        } catch (...) {
            nRows = -1;
        }
    }
    if (nRows <= 0) {
        data.clear();
    }
    return nRows >= 0;
}

bool KwSymMatrix::ResizeNCopy(std::vector<double>& target, const std::vector<double>& source) {
    if (&target == &source) {
        return true;
    }
    try {
        target = source;
    } catch (...) {
        return false;
    }
    return true;
}

KwSymMatrix::SymMatrixType KwSymMatrix::GetType() const {
    return kDenseSymMatrix;
}

int KwSymMatrix::GetNRows() const {
    return fNRows;
}

bool KwSymMatrix::IsValidMatrix() const {
    return fNRows >= 0;
}

int KwSymMatrix::GetNBlocks() const {
    return fNBlocks;
}

int KwSymMatrix::GetBlockSize() const {
    return fBlockSize;
}

bool KwSymMatrix::SetNBlocks(int nBlocks) {
    if (nBlocks < 1 || fNRows < 1 || fNRows % nBlocks != 0) {
        return false;
    }
    fNBlocks = nBlocks;
    fBlockSize = fNRows / nBlocks;
    return true;
}

bool KwSymMatrix::Resize(int n) {
    fNRows = std::max(n, 0);
    fNBlocks = 1;
    fBlockSize = fNRows;
    return ResizeNRows(fData, fNRows);
}

bool KwSymMatrix::SetNRows(int n, bool zero) {
    fNRows = std::max(n, 0);
    fNBlocks = n >= 0 ? 1 : 0;
    fBlockSize = fNRows;
    const bool resized = ResizeNRows(fData, fNRows);
    if (resized && zero) {
        Clear();
    }
    return resized;
}

// The first row of a diagonal block; -1 when there is no such block, or not all of it lies in the matrix.
int KwSymMatrix::FirstRowOfBlock(int block) const {
    const std::int64_t first = std::int64_t{block} * fBlockSize;
    return block >= 0 && block < fNBlocks && fBlockSize > 0 && first + fBlockSize <= fNRows ? static_cast<int>(first)
                                                                                            : -1;
}

// Becomes the matrix of this triangle, in one block; packed gets the storage given up.
void KwSymMatrix::TakeOver(int order, std::vector<double>& packed) {
    fNRows = fBlockSize = order;
    fNBlocks = 1;
    fData.swap(packed);
}

void KwSymMatrix::Clear() {
    std::fill(fData.begin(), fData.end(), 0.0);
}

bool KwSymMatrix::DeleteOneRow(int i) {
    if (i < 0 || i >= fNRows) {
        return false;
    }
    // The rows above stay; row i goes; each row below moves up without its element of column i.
    double* target = fData.data() + packed_triangle::RowStart(i);
    for (int k = i + 1; k < fNRows; ++k) {
        const double* row = fData.data() + packed_triangle::RowStart(k);
        target = std::copy(row, row + i, target);
        target = std::copy(row + i + 1, row + k + 1, target);
    }
    --fNRows;
    fBlockSize = fNRows;
    fData.resize(packed_triangle::Size(fNRows));
    return true;
}

std::vector<double>& KwSymMatrix::AsVector() {
    return fData;
}

const std::vector<double>& KwSymMatrix::AsVectorConst() const {
    return fData;
}

}  // namespace KwMath_930
