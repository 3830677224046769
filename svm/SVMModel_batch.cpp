// SVMModel: scoring many cases in one call. The cases are read one by one, decided together, and voted on one by one;
// whatever a case does, it does as in GetScore.
// Test: SVMModel_batch_test.cpp.
#include <algorithm>
#include <numeric>

#include "svm/SVMModel.h"
#include "svm/SVMModelWorkspace.h"
#include "svm/plan/ScoringPlan.h"

namespace KwBrevix_930 {

namespace {

// So many are read before they are decided: enough to fill tiles, few enough that their values stay in the cache.
constexpr std::size_t kMostTogether = 64;

}  // namespace

void SVMModel::ScoreCases(std::size_t count, const ScoreCaseRecord* const* records, ScoreResult** results,
                          Status* statuses, bool flag) {
    Lent<Workspace> lent;
    for (std::size_t first = 0; first < count; first += kMostTogether) {
        const std::size_t some = std::min(kMostTogether, count - first);
        ReadCases(some, records + first, results + first, statuses + first, flag, *lent);
        DecideCases(some, results + first, statuses + first, *lent);
        for (std::size_t i = first; i < first + some; ++i)
            Trace(statuses[i]);
    }
}

// Cases that fail here stay out of places.
void SVMModel::ReadCases(std::size_t count, const ScoreCaseRecord* const* records, ScoreResult** results,
                         Status* statuses, bool flag, Workspace& work) {
    const std::size_t columnCount = fInputVars.size();
    work.columns.resize(count * columnCount);
    work.places.clear();
    for (std::size_t i = 0; i < count; ++i) {
        statuses[i] = PrepareCase(records[i], results[i], flag);
        if (!statuses[i].IsError())
            statuses[i] = ReadCase(*records[i], results[i], work);
        if (statuses[i].IsError())
            continue;
        for (std::size_t column = 0; column < columnCount; ++column)
            work.columns[column * count + work.places.size()] = work.values[column];
        work.places.push_back(i);
    }
}

// stride: the number of cases that the columns have room for.
void SVMModel::DecideCases(std::size_t stride, ScoreResult** results, Status* statuses, Workspace& work) const {
    const std::size_t cases = work.places.size();
    if (cases == 0)
        return;
    const std::size_t machineCount = fData->GetIsClassification() ? fData->GetMachines().size() : 1;
    const bool hasPlan = IsPlannedFor(machineCount, fInputVars.size());
    if (hasPlan) {
        work.batchDecisions.resize(cases * machineCount);
        fPlan->DecideBatch(cases, work.columns.data(), stride, work.batchDecisions.data());
    }
    // As every case that was read, with each column in its place.
    work.values.resize(fInputVars.size());
    work.indices.resize(fInputVars.size());
    std::iota(work.indices.begin(), work.indices.end(), 0);
    for (std::size_t k = 0; k < cases; ++k) {
        const std::size_t place = work.places[k];
        if (hasPlan) {
            const auto first = work.batchDecisions.begin() + static_cast<std::ptrdiff_t>(k * machineCount);
            work.decisions.assign(first, first + static_cast<std::ptrdiff_t>(machineCount));
            statuses[place] = FillResult(work, results[place]);
            continue;
        }
        for (std::size_t column = 0; column < work.values.size(); ++column)
            work.values[column] = work.columns[column * stride + k];
        statuses[place] = DecideCase(results[place], work);
    }
}

}  // namespace KwBrevix_930
