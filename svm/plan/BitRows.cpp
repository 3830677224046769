// Support vectors of zeros and ones, for cases of zeros and ones.
#include "svm/plan/BitRows.h"

#include <algorithm>

#include "svm/plan/Scratch.h"

namespace KwBrevix_930::plan {

namespace {

constexpr std::size_t kWordBits = 64;

// Cases with as many columns are packed on the stack.
constexpr std::size_t kWordsOnStack = 64;

// numbers: each stride after the one before. Returns: false when one is no bit; words is then of no use.
template <std::size_t kStride>
bool PackBits(const double* numbers, std::size_t columns, std::uint64_t* words) {
    bool areBits = true;
    for (std::size_t first = 0; first < columns && areBits; first += kWordBits) {
        const std::size_t count = std::min(kWordBits, columns - first);
        std::uint64_t word = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const double number = numbers[(first + i) * kStride];
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

bool BitRows::Evaluate(const double* x, double* kernel) const {
    Scratch<std::uint64_t, kWordsOnStack> words(fWords);
    if (!PackBits<1>(x, fColumns, words.data()))
        return false;
    constexpr std::size_t kAtOnce = 256;
    std::uint32_t counts[kAtOnce];
    for (std::size_t first = 0; first < fConstants.size(); first += kAtOnce) {
        const std::size_t rows = std::min(kAtOnce, fConstants.size() - first);
        fCount(fWords, rows, fBits.data() + first * fWords, words.data(), counts);
        for (std::size_t i = 0; i < rows; ++i)
            kernel[first + i] = fValues[counts[i] + fConstants[first + i]];
    }
    return true;
}

// A row stands where a case stands above: it is counted with each of the cases.
bool BitRows::EvaluateTile(const double* tile, double* kernel) const {
    Scratch<std::uint64_t, kTile * kWordsOnStack> words(kTile * fWords);
    for (std::size_t c = 0; c < kTile; ++c) {
        if (!PackBits<kTile>(tile + c, fColumns, words.data() + c * fWords))
            return false;
    }
    std::uint32_t counts[kTile];
    for (std::size_t row = 0; row < fConstants.size(); ++row) {
        fCount(fWords, kTile, words.data(), fBits.data() + row * fWords, counts);
        for (std::size_t c = 0; c < kTile; ++c)
            kernel[row * kTile + c] = fValues[counts[c] + fConstants[row]];
    }
    return true;
}

}  // namespace KwBrevix_930::plan
