// ScoringPlan: the decision values of one case, and of many.
#include "svm/plan/ScoringPlan.h"

#include <algorithm>

#include "svm/plan/AlignedArray.h"
#include "svm/plan/Scratch.h"

namespace KwBrevix_930::plan {

namespace {

// Numbers of a case, or kernel values, that one call keeps on the stack.
constexpr std::size_t kOnStack = 512;

bool AreFinite(const double* x, std::size_t count) {
    bool areFinite = true;
    for (std::size_t i = 0; i < count; ++i)
        areFinite &= x[i] - x[i] == 0.0;
    return areFinite;
}

}  // namespace

// What a batch works with: some tiles of cases and their kernel values, all of which fit a cache; one case apart; the
// sums of one tile.
struct ScoringPlan::Workspace {
    static constexpr std::size_t kMostTiles = 4;
    static constexpr std::size_t kNumbersInCache = std::size_t{1} << 18;

    Workspace(const ScoringPlan& plan, std::size_t cases)
        : columns(plan.GetColumnCount()),
          tileSpace((columns + 1) * kTile),
          valueSpace((plan.GetRowSpace() + 1) * kTile),
          tileCount(std::clamp(kNumbersInCache / (tileSpace + valueSpace), std::size_t{1},
                               std::min(kMostTiles, (cases + kTile - 1) / kTile))),
          numbers(tileCount * tileSpace),
          kernelValues(tileCount * valueSpace),
          x(columns),
          sums(plan.GetMachineCount() * kTile) {}

    // Cases that the last tile lacks are zeros. Returns: the tiles that there are.
    std::size_t Fill(std::size_t cases, const double* values, std::size_t stride) {
        const std::size_t filled = (cases + kTile - 1) / kTile;
        for (std::size_t p = 0; p < columns; ++p) {
            for (std::size_t i = 0; i < filled * kTile; ++i)
                numbers[i / kTile * tileSpace + p * kTile + i % kTile] = i < cases ? values[p * stride + i] : 0.0;
        }
        return filled;
    }

    void TakeCase(const double* tile, std::size_t c) {
        for (std::size_t p = 0; p < columns; ++p)
            x[p] = tile[p * kTile + c];
    }

    Tiles GetTiles(std::size_t first, std::size_t count) {
        return {count, numbers.data() + first * tileSpace, tileSpace, kernelValues.data() + first * valueSpace,
                valueSpace};
    }

    std::size_t columns;
    std::size_t tileSpace;
    std::size_t valueSpace;
    std::size_t tileCount;
    AlignedArray<double> numbers;
    AlignedArray<double> kernelValues;
    std::vector<double> x;
    std::vector<double> sums;
};

void ScoringPlan::Decide(const double* values, double* decisions) const {
    const std::size_t columns = fColumns.size();
    Scratch<double, kOnStack> x(columns + 1);
    std::copy_n(values, columns, x.data());
    x[columns] = 0.0;
    Scratch<double, kOnStack> kernelValues(GetRowSpace() + 1);
    Evaluate(x.data(), kernelValues.data());
    kernelValues[GetRowSpace()] = 0.0;
    fMachines->SumCase(kernelValues.data(), decisions);
    for (std::size_t m = 0; m < fBiases.size(); ++m)
        decisions[m] += fBiases[m];
}

void ScoringPlan::Evaluate(const double* x, double* kernelValues) const {
    if (fBits && fBits->Evaluate(x, kernelValues))
        return;
    const std::size_t columns = fColumns.size();
    if (fNeedsFinite && !AreFinite(x, columns)) {
        CallKernel({x, x + columns}, true, kernelValues, 1);
        return;
    }
    fSums->SumCase(x, kernelValues);
    fShape.Apply(kernelValues, fRows.size());
    if (!fMergedRows.empty())
        CallKernel({x, x + columns}, false, kernelValues, 1);
}

// For all rows, or for those alone that no layout holds. kernelValues[stride * row] is set.
void ScoringPlan::CallKernel(const std::vector<double>& x, bool forAll, double* kernelValues,
                             std::size_t stride) const {
    const std::size_t count = forAll ? fRows.size() : fMergedRows.size();
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t row = forAll ? i : fMergedRows[i];
        kernelValues[stride * row] = fKernel.Evaluate(fColumns, x, fRows[row]->indices, fRows[row]->values);
    }
}

void ScoringPlan::DecideBatch(std::size_t count, const double* values, std::size_t stride, double* decisions) const {
    if (count == 0)
        return;
    Workspace work(*this, count);
    const std::size_t machines = GetMachineCount();
    for (std::size_t first = 0; first < count; first += work.tileCount * kTile) {
        const std::size_t cases = std::min(work.tileCount * kTile, count - first);
        EvaluateTiles(work.Fill(cases, values + first, stride), work);
        for (std::size_t i = 0; i < cases; ++i) {
            if (i % kTile == 0)
                fMachines->SumTile(work.GetTiles(i / kTile, 1).sums, work.sums.data());
            for (std::size_t m = 0; m < machines; ++m)
                decisions[(first + i) * machines + m] = work.sums[m * kTile + i % kTile] + fBiases[m];
        }
    }
}

void ScoringPlan::EvaluateTiles(std::size_t count, Workspace& work) const {
    if (!fBits)
        fSums->SumTiles(work.GetTiles(0, count));
    for (std::size_t i = 0; i < count; ++i) {
        const Tiles tile = work.GetTiles(i, 1);
        if (fBits) {
            if (fBits->EvaluateTile(tile.numbers, tile.sums))
                continue;
            fSums->SumTiles(tile);
        }
        fShape.Apply(tile.sums, fRows.size() * kTile);
        CallKernelOfTile(tile, work);
    }
}

// Cases that the tile lacks are finite.
void ScoringPlan::CallKernelOfTile(const Tiles& tile, Workspace& work) const {
    const bool isFinite = !fNeedsFinite || AreFinite(tile.numbers, kTile * fColumns.size());
    if (isFinite && fMergedRows.empty())
        return;
    for (std::size_t c = 0; c < kTile; ++c) {
        work.TakeCase(tile.numbers, c);
        CallKernel(work.x, !isFinite && !AreFinite(work.x.data(), work.x.size()), tile.sums + c, kTile);
    }
}

}  // namespace KwBrevix_930::plan
