// SVMModel: scoring many cases in one call. The cases are read one by one, decided together, and voted on one by one;
// whatever a case does, it does as in GetScore.
// Test: SVMModel_batch_test.cpp.
#include <algorithm>
#include <exception>
#include <numeric>

#include "svm/SVMModel.h"
#include "svm/SVMModelWorkspace.h"
#include "svm/plan/ScoringPlan.h"
#include "svm/status_codes.h"

namespace KwBrevix_930 {

namespace {

// So many are read before they are decided: enough to fill tiles, few enough that their values stay in the cache.
constexpr std::size_t kMostTogether = 64;

}  // namespace

void SVMModel::ScoreCases(std::size_t count, const ScoreCaseRecord* const* records, ScoreResult** results,
                          Status* statuses, bool flag) {
    Lent<Workspace> lent;
    // What an exception leaves out keeps this.
    std::fill_n(statuses, count, kMissingStatus);
    for (std::size_t first = 0; first < count; first += kMostTogether) {
        const std::size_t some = std::min(kMostTogether, count - first);
        std::exception_ptr fault;
        const std::size_t read =
            ReadCases(some, records + first, results + first, statuses + first, flag, *lent, fault);
        DecideCases(some, results + first, statuses + first, *lent);
        for (std::size_t i = first; i < first + read; ++i)
            Trace(statuses[i]);
        if (fault)
            std::rethrow_exception(fault);
    }
}

// Cases that fail here have their status and stay out of places. Returns: how many were read before an exception, which
// becomes fault.
std::size_t SVMModel::ReadCases(std::size_t count, const ScoreCaseRecord* const* records, ScoreResult** results,
                                Status* statuses, bool flag, Workspace& work, std::exception_ptr& fault) {
    work.places.clear();
    work.columns.resize(count * fInputVars.size());
    for (std::size_t i = 0; i < count; ++i) {
        try {
            ReadOneOfCases(i, count, records[i], results[i], statuses[i], flag, work);
        } catch (...) {
            fault = std::current_exception();
            return i;
        }
    }
    return count;
}

// stride: the number of cases that the columns have room for.
void SVMModel::ReadOneOfCases(std::size_t place, std::size_t stride, const ScoreCaseRecord* record,
                              ScoreResult*& result, Status& status, bool flag, Workspace& work) {
    Status itsStatus = PrepareCase(record, result, flag);
    if (!itsStatus.IsError())
        itsStatus = ReadCase(*record, result, work);
    if (itsStatus.IsError()) {
        status = itsStatus;
        return;
    }
    work.places.push_back(place);
    for (std::size_t column = 0; column < fInputVars.size(); ++column)
        work.columns[column * stride + work.places.size() - 1] = work.values[column];
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
