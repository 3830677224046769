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

// What a batch works with: a tile of cases, one of them apart, and the kernel values of both.
struct ScoringPlan::Workspace {
    Workspace(std::size_t columns, std::size_t rowSpace, std::size_t machines)
        : tile((columns + 1) * kTile),
          kernelValues((rowSpace + 1) * kTile),
          x(columns),
          bitValues(rowSpace),
          sums(machines * kTile) {}

    // Missing cases of the last tile are zeros.
    void FillTile(std::size_t count, const double* values, std::size_t stride) {
        for (std::size_t p = 0; p < x.size(); ++p) {
            for (std::size_t c = 0; c < kTile; ++c)
                tile[p * kTile + c] = c < count ? values[p * stride + c] : 0.0;
        }
    }

    void TakeCase(std::size_t c) {
        for (std::size_t p = 0; p < x.size(); ++p)
            x[p] = tile[p * kTile + c];
    }

    AlignedArray<double> tile;
    AlignedArray<double> kernelValues;
    std::vector<double> x;
    std::vector<double> bitValues;
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
    Workspace work(fColumns.size(), GetRowSpace(), GetMachineCount());
    for (std::size_t first = 0; first < count; first += kTile) {
        const std::size_t cases = std::min(kTile, count - first);
        work.FillTile(cases, values + first, stride);
        EvaluateTile(cases, work);
        fMachines->SumTile(work.kernelValues.data(), work.sums.data());
        for (std::size_t c = 0; c < cases; ++c) {
            double* its = decisions + (first + c) * GetMachineCount();
            for (std::size_t m = 0; m < GetMachineCount(); ++m)
                its[m] = work.sums[m * kTile + c] + fBiases[m];
        }
    }
}

void ScoringPlan::EvaluateTile(std::size_t cases, Workspace& work) const {
    if (fBits && EvaluateBits(cases, work))
        return;
    double* kernelValues = work.kernelValues.data();
    fSums->SumTile(work.tile.data(), kernelValues);
    fShape.Apply(kernelValues, fRows.size() * kTile);
    if (!fNeedsFinite && fMergedRows.empty())
        return;
    for (std::size_t c = 0; c < cases; ++c) {
        work.TakeCase(c);
        CallKernel(work.x, fNeedsFinite && !AreFinite(work.x.data(), work.x.size()), kernelValues + c, kTile);
    }
}

// Returns: false, with nothing of use done, when a case is not made of bits.
bool ScoringPlan::EvaluateBits(std::size_t cases, Workspace& work) const {
    for (std::size_t c = 0; c < cases; ++c) {
        work.TakeCase(c);
        if (!fBits->Evaluate(work.x.data(), work.bitValues.data()))
            return false;
        for (std::size_t row = 0; row < fRows.size(); ++row)
            work.kernelValues[row * kTile + c] = work.bitValues[row];
    }
    return true;
}

}  // namespace KwBrevix_930::plan
