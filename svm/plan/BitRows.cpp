// Support vectors of zeros and ones, for cases of zeros and ones.
#include "svm/plan/BitRows.h"

#include <algorithm>

namespace KwBrevix_930::plan {

namespace {

constexpr std::size_t kWordBits = 64;

// Returns: false when one is no bit; words is then of no use.
bool PackBits(const double* numbers, std::size_t columns, std::uint64_t* words) {
    bool areBits = true;
    for (std::size_t first = 0; first < columns && areBits; first += kWordBits) {
        const std::size_t count = std::min(kWordBits, columns - first);
        std::uint64_t word = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const double number = numbers[first + i];
            areBits &= BitRows::IsBit(number);
            word |= std::uint64_t{number == 1.0} << i;
        }
        words[first / kWordBits] = word;
    }
    return areBits;
}

}  // namespace

BitRows::BitRows(std::size_t rows, std::size_t columns, const KernelShape& shape, const Loops& loops)
    : fColumns(columns),
      fWords((columns + kWordBits - 1) / kWordBits),
      fShape(shape),
      fCount(shape.TakesDistance() ? loops.countDiffering : loops.countCommon),
      fBits(rows * fWords),
      fConstants(rows) {}

void BitRows::Set(std::size_t row, const MergedVector& vector) {
    for (const MergedVector::Entry& entry : vector.matched) {
        const auto column = static_cast<std::size_t>(entry.column);
        if (entry.value == 1.0)
            fBits[row * fWords + column / kWordBits] |= std::uint64_t{1} << column % kWordBits;
    }
    if (fShape.TakesDistance())
        fConstants[row] = static_cast<std::uint32_t>(std::count(vector.unmatched.begin(), vector.unmatched.end(), 1.0));
}

void BitRows::Finish() {
    const auto largest = std::max_element(fConstants.begin(), fConstants.end());
    const std::size_t count = fColumns + (largest != fConstants.end() ? *largest : 0) + 1;
    fValues.resize(count);
    for (std::size_t sum = 0; sum < count; ++sum)
        fValues[sum] = static_cast<double>(sum);
    fShape.Apply(fValues.data(), count);
}

bool BitRows::Evaluate(const double* x, double* kernel, PlanWorkspace& work) const {
    std::uint64_t* words = work.words.Grow(fWords);
    if (!PackBits(x, fColumns, words))
        return false;
    constexpr std::size_t kAtOnce = 256;
    std::uint32_t counts[kAtOnce];
    for (std::size_t first = 0; first < fConstants.size(); first += kAtOnce) {
        const std::size_t rows = std::min(kAtOnce, fConstants.size() - first);
        fCount(fWords, rows, fBits.data() + first * fWords, words, counts);
        for (std::size_t i = 0; i < rows; ++i)
            kernel[first + i] = fValues[counts[i] + fConstants[first + i]];
    }
    return true;
}

}  // namespace KwBrevix_930::plan
