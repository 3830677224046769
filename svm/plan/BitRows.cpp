// Support vectors of zeros and ones, for cases of zeros and ones.
#include "svm/plan/BitRows.h"

#include <algorithm>

#include "svm/plan/RowSums.h"

namespace KwBrevix_930::plan {

namespace {

std::size_t CountWords(std::size_t columns) {
    return (columns + kWordBits - 1) / kWordBits;
}

}  // namespace

BitRows::BitRows(std::size_t rows, std::size_t columns, const KernelShape& shape, const Loops& loops)
    : fColumns(columns),
      fWords(CountWords(columns)),
      fShape(shape),
      fLoops(loops.bits),
      fCount(shape.TakesDistance() ? fLoops.differing : fLoops.common),
      fBits(WholeBlocks(rows) * fWords),
      fConstants(WholeBlocks(rows)) {}

double BitRows::GetByteCount(std::size_t rows, std::size_t columns, std::size_t largestConstant) {
    const auto all = static_cast<double>(WholeBlocks(rows));
    const double sums = static_cast<double>(columns) + static_cast<double>(largestConstant) + 1.0;
    return sizeof(BitRows) + AlignedArray<std::uint64_t>::GetByteCount(all * static_cast<double>(CountWords(columns))) +
           all * sizeof(std::uint32_t) + sums * sizeof(double);
}

std::size_t BitRows::CountConstant(const MergedVector& vector) {
    return static_cast<std::size_t>(std::count(vector.unmatched.begin(), vector.unmatched.end(), 1.0));
}

void BitRows::Set(std::size_t row, const MergedVector& vector) {
    std::uint64_t* words = fBits.data() + row / kBlock * fWords * kBlock + row % kBlock;
    for (const MergedVector::Entry& entry : vector.matched) {
        const auto column = static_cast<std::size_t>(entry.column);
        if (entry.value == 1.0)
            words[column / kWordBits * kBlock] |= std::uint64_t{1} << column % kWordBits;
    }
    if (fShape.TakesDistance())
        fConstants[row] = static_cast<std::uint32_t>(CountConstant(vector));
}

void BitRows::Finish() {
    const auto largest = std::max_element(fConstants.begin(), fConstants.end());
    const std::size_t count = fColumns + (largest != fConstants.end() ? *largest : 0) + 1;
    fValues.resize(count);
    for (std::size_t sum = 0; sum < count; ++sum)
        fValues[sum] = static_cast<double>(sum);
    fShape.Apply(fValues.data(), count);
}

bool BitRows::EvaluateCase(const double* x, double* kernelValues, PlanWorkspace& work) const {
    std::uint64_t* words = work.words.Grow(fWords);
    if (!fLoops.packCase(fColumns, x, words))
        return false;
    for (std::size_t first = 0; first < fConstants.size(); first += kBlock) {
        std::uint64_t counts[kBlock];
        fCount.oneCase(fWords, fBits.data() + first * fWords, words, counts);
        for (std::size_t i = 0; i < kBlock; ++i)
            kernelValues[first + i] = fValues[counts[i] + fConstants[first + i]];
    }
    return true;
}

bool BitRows::EvaluateTile(const double* tile, double* kernelValues, PlanWorkspace& work) const {
    std::uint64_t* words = work.words.Grow(fWords * kTile);
    if (!fLoops.packTile(fColumns, tile, words))
        return false;
    for (std::size_t first = 0; first < fConstants.size(); first += kBlock) {
        std::uint64_t counts[kBlock * kTile];
        fCount.oneTile(fWords, fBits.data() + first * fWords, words, counts);
        for (std::size_t i = 0; i < kBlock; ++i) {
            const double* values = fValues.data() + fConstants[first + i];
            for (std::size_t c = 0; c < kTile; ++c)
                *kernelValues++ = values[counts[i * kTile + c]];
        }
    }
    return true;
}

}  // namespace KwBrevix_930::plan
