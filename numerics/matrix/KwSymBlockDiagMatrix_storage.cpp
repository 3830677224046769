// Block-diagonal matrix, storage: construction, copies, size, the blocks and the stored runs of rows.
// Test: KwSymBlockDiagMatrix_test.cpp.
#include "numerics/matrix/KwSymBlockDiagMatrix.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

#include "numerics/matrix/packed_triangle.h"

namespace KwMath_930 {

KwSymBlockDiagMatrix::KwSymBlockDiagMatrix() : fNRows(0), fNBlocks(0) {}

KwSymBlockDiagMatrix::KwSymBlockDiagMatrix(const std::vector<int>& blockSizes, const KwBitSet& isDiagonal)
    : KwSymBlockDiagMatrix() {
    try {
        std::int64_t order = 0;
        for (const int size : blockSizes) {
            order += std::max(size, 0);
        }
        const bool isValid = std::all_of(blockSizes.begin(), blockSizes.end(), [](int size) { return size >= 1; });
        if (!isValid || order > std::numeric_limits<int>::max()) {
            Invalidate();
            return;
        }
        fBlockSizes = blockSizes;
        fNBlocks = static_cast<int>(blockSizes.size());
        fIsDiagonal.Resize(fNBlocks, false);
        // A list that grew would copy its blocks, and a copy that fails does not throw.
        fDenseBlocks.reserve(blockSizes.size());
        for (int block = 0; block < fNBlocks; ++block) {
            const int size = blockSizes[static_cast<std::size_t>(block)];
            const bool isBlockDiagonal = isDiagonal.IsIn(block);
            fIsDiagonal.Set(block, isBlockDiagonal);
            fFirstRows.push_back(fNRows);
            fBlockOfRow.insert(fBlockOfRow.end(), static_cast<std::size_t>(size), block);
            fPlaces.push_back(static_cast<int>(isBlockDiagonal ? fDiagonalBlocks.size() : fDenseBlocks.size()));
            if (isBlockDiagonal) {
                fDiagonalBlocks.emplace_back(static_cast<std::size_t>(size));
            } else if (!fDenseBlocks.emplace_back(size, true).IsValidMatrix()) {
                Invalidate();
                return;
            }
            fNRows += size;
        }
    } catch (...) {
        Invalidate();
    }
}

KwSymBlockDiagMatrix::~KwSymBlockDiagMatrix() = default;

void KwSymBlockDiagMatrix::CopyFrom(const KwSymBlockDiagMatrix& other) {
    try {
        fNRows = other.fNRows;
        fNBlocks = other.fNBlocks;
        fBlockSizes = other.fBlockSizes;
        fFirstRows = other.fFirstRows;
        fBlockOfRow = other.fBlockOfRow;
        fIsDiagonal = other.fIsDiagonal;
        fPlaces = other.fPlaces;
        fDenseBlocks = other.fDenseBlocks;
        fDiagonalBlocks = other.fDiagonalBlocks;
        const auto isValid = [](const KwSymMatrix& block) { return block.IsValidMatrix(); };
        if (!std::all_of(fDenseBlocks.begin(), fDenseBlocks.end(), isValid)) {
            Invalidate();
        }
    } catch (...) {
        Invalidate();
    }
}

void KwSymBlockDiagMatrix::Invalidate() {
    fNRows = -1;
    fNBlocks = 0;
    fBlockSizes.clear();
    fFirstRows.clear();
    fBlockOfRow.clear();
    fIsDiagonal.Resize(0, false);
    fPlaces.clear();
    fDenseBlocks.clear();
    fDiagonalBlocks.clear();
}

IKwSymMatrix::SymMatrixType KwSymBlockDiagMatrix::GetType() const {
    return kBlockDiagSymMatrix;
}

int KwSymBlockDiagMatrix::GetNRows() const {
    return fNRows;
}

bool KwSymBlockDiagMatrix::IsValidMatrix() const {
    return fNRows >= 0;
}

// One dense block afterwards, as new elements have no other place.
bool KwSymBlockDiagMatrix::Resize(int n) try {
    const int order = std::max(n, 0);
    KwSymBlockDiagMatrix resized(std::vector<int>(order > 0 ? 1 : 0, order), KwBitSet());
    for (int i = 0; resized.IsValidMatrix() && i < std::min<int>(order, fNRows); ++i) {
        int first = 0;
        const double* run = RowRun(i, first);
        int start = 0;
        std::copy_n(run, i + 1 - first, resized.RowRun(i, start) + first);
    }
    Swap(resized);
    return IsValidMatrix();
} catch (...) {
    Invalidate();
    return false;
}

void KwSymBlockDiagMatrix::Swap(KwSymBlockDiagMatrix& other) {
    std::swap(fNRows, other.fNRows);
    std::swap(fNBlocks, other.fNBlocks);
    std::swap(fIsDiagonal, other.fIsDiagonal);
    fBlockSizes.swap(other.fBlockSizes);
    fFirstRows.swap(other.fFirstRows);
    fBlockOfRow.swap(other.fBlockOfRow);
    fPlaces.swap(other.fPlaces);
    fDenseBlocks.swap(other.fDenseBlocks);
    fDiagonalBlocks.swap(other.fDiagonalBlocks);
}

bool KwSymBlockDiagMatrix::SetNRows(int n, bool zero) {
    const bool isResized = Resize(n);
    if (isResized && zero) {
        Clear();
    }
    return isResized;
}

void KwSymBlockDiagMatrix::Clear() {
    for (KwSymMatrix& block : fDenseBlocks) {
        block.Clear();
    }
    for (std::vector<double>& block : fDiagonalBlocks) {
        std::fill(block.begin(), block.end(), 0.0);
    }
}

int KwSymBlockDiagMatrix::GetNBlocks() const {
    return fNBlocks;
}

int KwSymBlockDiagMatrix::GetBlockSize(int block) const {
    return HasBlock(block) ? fBlockSizes[static_cast<std::size_t>(block)] : -1;
}

const std::vector<int>& KwSymBlockDiagMatrix::GetBlockSizes() const {
    return fBlockSizes;
}

bool KwSymBlockDiagMatrix::GetIsBlockDiagonal(int block) const {
    return fIsDiagonal.IsIn(block);
}

bool KwSymBlockDiagMatrix::GetDenseBlock(int block, const KwSymMatrix*& dense) const {
    if (!HasBlock(block) || GetIsBlockDiagonal(block)) {
        return false;
    }
    dense = &fDenseBlocks[static_cast<std::size_t>(fPlaces[static_cast<std::size_t>(block)])];
    return true;
}

bool KwSymBlockDiagMatrix::GetDiagonalBlock(int block, const std::vector<double>*& diagonal) const {
    if (!HasBlock(block) || !GetIsBlockDiagonal(block)) {
        return false;
    }
    diagonal = &fDiagonalBlocks[static_cast<std::size_t>(fPlaces[static_cast<std::size_t>(block)])];
    return true;
}

bool KwSymBlockDiagMatrix::GetIndexFirstInRow(int row, int& first) const {
    const double* values = nullptr;
    return GetIndexFirstInRow(row, first, values);
}

bool KwSymBlockDiagMatrix::GetIndexFirstInRow(int row, int& first, const double*& values) const {
    if (!HasRow(row)) {
        return false;
    }
    values = RowRun(row, first);
    return true;
}

// The stored elements (row, first) .. (row, row).
const double* KwSymBlockDiagMatrix::RowRun(int row, int& first) const {
    const auto block = static_cast<std::size_t>(fBlockOfRow[static_cast<std::size_t>(row)]);
    const int inBlock = row - fFirstRows[block];
    const auto place = static_cast<std::size_t>(fPlaces[block]);
    if (fIsDiagonal.IsIn(static_cast<int>(block))) {
        first = row;
        return fDiagonalBlocks[place].data() + inBlock;
    }
    first = fFirstRows[block];
    return fDenseBlocks[place].AsVectorConst().data() + packed_triangle::RowStart(inBlock);
}

double* KwSymBlockDiagMatrix::RowRun(int row, int& first) {
    return const_cast<double*>(static_cast<const KwSymBlockDiagMatrix&>(*this).RowRun(row, first));
}

// The row after the last one whose stored run reaches this column.
int KwSymBlockDiagMatrix::EndOfRun(int column) const {
    const auto block = static_cast<std::size_t>(fBlockOfRow[static_cast<std::size_t>(column)]);
    return fIsDiagonal.IsIn(static_cast<int>(block)) ? column + 1 : fFirstRows[block] + fBlockSizes[block];
}

// Makes dense the full matrix.
bool KwSymBlockDiagMatrix::CopyTo(KwSymMatrix& dense) const {
    if (fNRows < 0 || !dense.SetNRows(fNRows, true)) {
        return false;
    }
    for (int i = 0; i < fNRows; ++i) {
        int first = 0;
        const double* run = RowRun(i, first);
        std::copy_n(run, i + 1 - first, dense.AsVector().data() + packed_triangle::Index(i, first));
    }
    return true;
}

}  // namespace KwMath_930
