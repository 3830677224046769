// Support vectors of whose columns few are there, spread out among zeros when they are summed.
#include "svm/plan/SpreadRows.h"

#include <algorithm>
#include <tuple>

#include "svm/plan/AlignedArray.h"

namespace KwBrevix_930::plan {

namespace {

std::size_t CountStarts(std::size_t rows, std::size_t columns) {
    return WholeBlocks(rows) / kBlock * ((columns + kStretch - 1) / kStretch) + 1;
}

}  // namespace

SpreadRows::SpreadRows(std::size_t rows, std::size_t columns, std::size_t entryCount, const TermLoops& terms)
    : fRows(rows), fColumns(columns), fTerms(terms) {
    fStarts.reserve(CountStarts(rows, columns));
    fPlaces.reserve(entryCount);
    fValues.reserve(entryCount);
}

double SpreadRows::GetByteCount(std::size_t rows, std::size_t columns, std::size_t entryCount) {
    return sizeof(SpreadRows) + static_cast<double>(CountStarts(rows, columns)) * sizeof(std::size_t) +
           static_cast<double>(entryCount) * (sizeof(Place) + sizeof(double));
}

void SpreadRows::Add(const MergedVector& vector) {
    for (const MergedVector::Entry& entry : vector.matched) {
        const auto column = static_cast<std::size_t>(entry.column);
        fBlock.push_back(
            {column / kStretch, static_cast<Place>(column % kStretch * kBlock + fAdded % kBlock), entry.value});
    }
    ++fAdded;
    if (fAdded % kBlock == 0)
        FinishBlock();
}

void SpreadRows::Finish() {
    if (fAdded % kBlock != 0)
        FinishBlock();
    fStarts.push_back(fPlaces.size());
    fBlock = std::vector<Entry>();
}

// In the order of places, so that the first ones have long been written when the sums begin with them.
void SpreadRows::FinishBlock() {
    std::sort(fBlock.begin(), fBlock.end(), [](const Entry& a, const Entry& b) {
        return std::tie(a.stretch, a.place) < std::tie(b.stretch, b.place);
    });
    auto entry = fBlock.begin();
    for (std::size_t stretch = 0; stretch < CountStretches(); ++stretch) {
        fStarts.push_back(fPlaces.size());
        for (; entry != fBlock.end() && entry->stretch == stretch; ++entry) {
            fPlaces.push_back(entry->place);
            fValues.push_back(entry->value);
        }
    }
    fBlock.clear();
}

// use(stretch): of each block in turn.
template <class Use>
void SpreadRows::ForAllStretches(const Use& use) const {
    alignas(AlignedArray<double>::kAlignment) double numbers[kStretch * kBlock] = {};
    const std::size_t* start = fStarts.data();
    for (std::size_t row = 0; row < fRows; row += kBlock) {
        for (std::size_t column = 0; column < fColumns; column += kStretch, ++start) {
            for (std::size_t i = start[0]; i < start[1]; ++i)
                numbers[fPlaces[i]] = fValues[i];
            use(BlockStretch{row, std::min(kBlock, fRows - row), column, std::min(kStretch, fColumns - column),
                             numbers});
            for (std::size_t i = start[0]; i < start[1]; ++i)
                numbers[fPlaces[i]] = 0.0;
        }
    }
}

void SpreadRows::SumCase(const double* x, double* sums) const {
    ForAllStretches([&](const BlockStretch& stretch) {
        fTerms.addToCase(stretch.columns, stretch.numbers, x + stretch.firstColumn, sums + stretch.firstRow,
                         stretch.firstColumn == 0);
    });
}

void SpreadRows::SumTiles(const Tiles& tiles) const {
    ForAllStretches([&](const BlockStretch& stretch) { AddToTiles(fTerms, stretch, tiles); });
}

}  // namespace KwBrevix_930::plan
