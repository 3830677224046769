// ScoringPlan: the decision values of one case, and of many.
#include "svm/plan/ScoringPlan.h"

#include <algorithm>

namespace KwBrevix_930::plan {

namespace {

// Tiles whose numbers and kernel values are worked on together: as many as fit a cache.
constexpr std::size_t kMostTiles = 8;
constexpr std::size_t kNumbersInCache = std::size_t{1} << 19;

// Fewer cases than this are no tile: one by one they take less time.
constexpr std::size_t kFewestInTile = 4;

// x: each stride behind the one before.
bool AreFinite(const double* x, std::size_t count, std::size_t stride = 1) {
    bool areFinite = true;
    for (std::size_t i = 0; i < count; ++i)
        areFinite &= x[stride * i] - x[stride * i] == 0.0;
    return areFinite;
}

// Cases that the tile lacks are zeros, and so are the numbers behind its last column.
void FillTile(std::size_t first, std::size_t cases, const double* const* columns, std::size_t columnCount,
              double* tile) {
    for (std::size_t p = 0; p < columnCount; ++p, tile += kTile) {
        if (cases == kTile)
            std::copy_n(columns[p] + first, kTile, tile);
        else
            std::fill(std::copy_n(columns[p] + first, cases, tile), tile + kTile, 0.0);
    }
    std::fill_n(tile, kTile, 0.0);
}

}  // namespace

void ScoringPlan::Decide(const double* values, double* decisions) const {
    PlanWorkspace work;
    Decide(values, decisions, work);
}

void ScoringPlan::Decide(const double* values, double* decisions, PlanWorkspace& work) const {
    std::copy_n(values, fColumns.size(), work.numbers.Grow(fColumns.size() + 1));
    DecideGathered(decisions, work);
}

// Of the case that stands in work.numbers.
void ScoringPlan::DecideGathered(double* decisions, PlanWorkspace& work) const {
    double* x = work.numbers.data();
    double* kernelValues = work.kernelValues.Grow(GetRowSpace() + 1);
    x[fColumns.size()] = 0.0;
    Evaluate(x, kernelValues, work);
    kernelValues[GetRowSpace()] = 0.0;
    fMachines->SumCase(kernelValues, decisions);
    for (std::size_t m = 0; m < fBiases.size(); ++m)
        decisions[m] += fBiases[m];
}

void ScoringPlan::Evaluate(const double* x, double* kernelValues, PlanWorkspace& work) const {
    if (fBits && fBits->EvaluateCase(x, kernelValues, work))
        return;
    if (fNeedsFinite && !AreFinite(x, fColumns.size())) {
        CallKernel(x, true, kernelValues, 1, work);
        return;
    }
    fSums->SumCase(x, kernelValues);
    fShape.Apply(kernelValues, fAppliedRows);
    if (!fMergedRows.empty())
        CallKernel(x, false, kernelValues, 1, work);
}

// For all rows, or for those alone that no layout holds. x: each stride behind the one before, and so the kernel
// values.
void ScoringPlan::CallKernel(const double* x, bool forAll, double* kernelValues, std::size_t stride,
                             PlanWorkspace& work) const {
    work.x.resize(fColumns.size());
    for (std::size_t p = 0; p < work.x.size(); ++p)
        work.x[p] = x[stride * p];
    const std::size_t count = forAll ? fRows.size() : fMergedRows.size();
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t row = forAll ? i : fMergedRows[i];
        kernelValues[stride * row] = fKernel.Evaluate(fColumns, work.x, fRows[row]->indices, fRows[row]->values);
    }
}

void ScoringPlan::DecideBatch(std::size_t count, const double* values, std::size_t stride, double* decisions) const {
    PlanWorkspace work;
    for (std::size_t p = 0; p < fColumns.size(); ++p)
        work.columns.push_back(values + stride * p);
    DecideBatch(count, work.columns.data(), decisions, work);
}

void ScoringPlan::DecideBatch(std::size_t count, const double* const* columns, double* decisions,
                              PlanWorkspace& work) const {
    const std::size_t perTile = (fColumns.size() + GetRowSpace() + 2) * kTile;
    const std::size_t together = std::clamp(kNumbersInCache / perTile, std::size_t{1}, kMostTiles) * kTile;
    std::size_t first = 0;
    while (count - first >= kFewestInTile) {
        const std::size_t some = std::min(together, count - first);
        const std::size_t cases = some % kTile < kFewestInTile && some > kTile ? some - some % kTile : some;
        DecideTiles(first, cases, columns, decisions, work);
        first += cases;
    }
    for (; first < count; first += kTile)
        DecideApart(first, std::min(kTile, count - first), columns, decisions, work);
}

// The cases of a tile one by one; it is filled all the same, so that each column is come to once.
void ScoringPlan::DecideApart(std::size_t first, std::size_t cases, const double* const* columns, double* decisions,
                              PlanWorkspace& work) const {
    double* x = work.numbers.Grow((fColumns.size() + 1) * (1 + kTile));
    double* tile = x + fColumns.size() + 1;
    FillTile(first, cases, columns, fColumns.size(), tile);
    for (std::size_t c = 0; c < cases; ++c) {
        for (std::size_t p = 0; p < fColumns.size(); ++p)
            x[p] = tile[p * kTile + c];
        DecideGathered(decisions + (first + c) * GetMachineCount(), work);
    }
}

void ScoringPlan::DecideTiles(std::size_t first, std::size_t cases, const double* const* columns, double* decisions,
                              PlanWorkspace& work) const {
    const std::size_t machines = GetMachineCount();
    const std::size_t numberStride = (fColumns.size() + 1) * kTile;
    const std::size_t sumStride = (GetRowSpace() + 1) * kTile;
    const std::size_t count = (cases + kTile - 1) / kTile;
    const Tiles tiles{count, work.numbers.Grow(count * numberStride), numberStride,
                      work.kernelValues.Grow(count * sumStride), sumStride};
    for (std::size_t i = 0; i < count; ++i)
        FillTile(first + i * kTile, std::min(kTile, cases - i * kTile), columns, fColumns.size(),
                 work.numbers.data() + i * numberStride);
    if (!fBits)
        fSums->SumTiles(tiles);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t its = std::min(kTile, cases - i * kTile);
        const Tiles tile{1, tiles.numbers + i * numberStride, numberStride, tiles.sums + i * sumStride, sumStride};
        EvaluateTile(tile, its, work);
        std::fill_n(tile.sums + GetRowSpace() * kTile, kTile, 0.0);
        fMachines->SumTile(tile.sums, work.sums.Grow(GetMachineCount() * kTile));
        const double* sums = work.sums.data();
        double* to = decisions + (first + i * kTile) * machines;
        for (std::size_t c = 0; c < its; ++c) {
            for (std::size_t m = 0; m < machines; ++m)
                *to++ = sums[m * kTile + c] + fBiases[m];
        }
    }
}

// tile: where there are no bits, the sums of its rows stand in it already.
void ScoringPlan::EvaluateTile(const Tiles& tile, std::size_t cases, PlanWorkspace& work) const {
    if (fBits) {
        if (fBits->EvaluateTile(tile.numbers, tile.sums, work))
            return;
        fSums->SumTiles(tile);
    }
    fShape.Apply(tile.sums, fRows.size() * kTile);
    const bool isFinite = !fNeedsFinite || AreFinite(tile.numbers, kTile * fColumns.size());
    for (std::size_t c = 0; c < cases && !(isFinite && fMergedRows.empty()); ++c) {
        const double* x = tile.numbers + c;
        CallKernel(x, !isFinite && !AreFinite(x, fColumns.size(), kTile), tile.sums + c, kTile, work);
    }
}

}  // namespace KwBrevix_930::plan
