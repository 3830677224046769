// SVMModel: scoring many cases in one call. The cases are read one by one, decided together, and voted on one by one;
// whatever a case does, it does as in GetScore.
// Test: SVMModel_batch_test.cpp.
#include <algorithm>
#include <exception>
#include <numeric>

#include "host/ExtendedPrecision.h"
#include "host/ScoreDictVar.h"
#include "svm/SVMModel.h"
#include "svm/SVMModelWorkspace.h"
#include "svm/plan/ScoringPlan.h"
#include "svm/status_codes.h"

namespace KwBrevix_930 {

namespace {

// So many are read before they are decided: enough to fill tiles, few enough that their values stay in the cache; and
// of large cases fewer, so that a batch of them takes hardly more memory than one.
constexpr std::size_t kMostTogether = 64;
constexpr std::size_t kMostNumbers = std::size_t{1} << 17;

}  // namespace

std::size_t SVMModel::GetDecisionCount() const {
    return fData->GetIsClassification() ? fData->GetMachines().size() : 1;
}

std::size_t SVMModel::GetMostTogether() const {
    const std::size_t machineCount = fData ? GetDecisionCount() : 0;
    return std::clamp(kMostNumbers / (fInputVars.size() + machineCount + 1), std::size_t{1}, kMostTogether);
}

void SVMModel::ScoreCases(std::size_t count, const ScoreCaseRecord* const* records, ScoreResult** results,
                          Status* statuses, bool flag) {
    const std::size_t together = GetMostTogether();
    const ExtendedPrecision precision;
    Lent<Workspace> lent;
    // What an exception leaves out keeps this.
    std::fill_n(statuses, count, kMissingStatus);
    for (std::size_t first = 0; first < count; first += together) {
        const std::size_t some = std::min(together, count - first);
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
    const std::size_t machineCount = GetDecisionCount();
    const bool hasPlan = IsPlannedFor(machineCount, fInputVars.size());
    if (hasPlan) {
        work.sources.resize(fInputVars.size());
        for (std::size_t column = 0; column < fInputVars.size(); ++column)
            work.sources[column] = work.columns.data() + column * stride;
        DecideColumns(cases, work);
    }
    // As every case that was read, with each column in its place.
    work.values.resize(fInputVars.size());
    work.indices.resize(fInputVars.size());
    std::iota(work.indices.begin(), work.indices.end(), 0);
    for (std::size_t k = 0; k < cases; ++k) {
        const std::size_t place = work.places[k];
        if (hasPlan) {
            TakeDecisions(work.batchDecisions.data() + k * machineCount, machineCount, work);
            statuses[place] = FillResult(work, results[place]);
            continue;
        }
        for (std::size_t column = 0; column < work.values.size(); ++column)
            work.values[column] = work.columns[column * stride + k];
        statuses[place] = DecideCase(results[place], work);
    }
}

// By the plan, from work.sources.
void SVMModel::DecideColumns(std::size_t cases, Workspace& work) const {
    work.batchDecisions.resize(cases * GetDecisionCount());
    fPlan->DecideBatch(cases, work.sources.data(), work.batchDecisions.data(), work.plan);
}

void SVMModel::TakeDecisions(const double* decisions, std::size_t count, Workspace& work) {
    work.decisions.assign(decisions, decisions + count);
}

bool SVMModel::ScoreNumbers(std::size_t count, const double* const* columns, std::size_t columnCount, double* numbers,
                            Status* statuses) {
    if (!fDictVarIndicesReady || !fTargetVar || !fData || !IsPlannedFor(GetDecisionCount(), fInputVars.size()))
        return false;
    const auto* categories = fTargetVar->GetCategories();
    if ((categories ? categories->size() : 0) != fTargetCategoryValues.size())
        return false;
    const ExtendedPrecision precision;
    Lent<Workspace> lent;
    Workspace& work = *lent;
    if (!FindSources(0, 0, columns, columnCount, work))
        return false;
    // What an exception leaves out keeps this.
    std::fill_n(statuses, count, kMissingStatus);
    const std::size_t together = GetMostTogether();
    const std::size_t width = GetNumberCount();
    for (std::size_t first = 0; first < count; first += together) {
        const std::size_t some = std::min(together, count - first);
        FindSources(first, some, columns, columnCount, work);
        DecideColumns(some, work);
        for (std::size_t i = 0; i < some; ++i) {
            const double* decisions = work.batchDecisions.data() + i * GetDecisionCount();
            statuses[first + i] = FillNumbers(decisions, numbers + (first + i) * width, work);
            if (statuses[first + i].IsError())
                Trace(statuses[first + i]);
        }
    }
    return true;
}

std::size_t SVMModel::GetNumberCount() const {
    return fData->GetIsClassification() ? 2 + fTargetCategoryValues.size() : 4;
}

// What FillResult makes of the same decision values.
SVMModel::Status SVMModel::FillNumbers(const double* decisions, double* numbers, Workspace& work) const {
    if (!fData->GetIsClassification()) {
        WriteRegression(*decisions, numbers);
        return {};
    }
    if (HasVoteTableFor(GetDecisionCount())) {
        const std::size_t picks = FindPicks(decisions);
        const std::size_t width = GetNumberCount();
        std::copy_n(fVoteTable.numbers.data() + picks * width, width, numbers);
        return fVoteTable.statuses[picks];
    }
    TakeDecisions(decisions, GetDecisionCount(), work);
    const Status status = CastVote(work.decisions, work.vote);
    return status.IsError() ? status : WriteVote(work.vote, numbers);
}

// Where the values of some cases begin, column by column of the vector space. Returns: false when a variable is not
// among the given ones, or its values are not such as the column needs.
bool SVMModel::FindSources(std::size_t first, std::size_t cases, const double* const* columns, std::size_t columnCount,
                           Workspace& work) const {
    const auto& kinds = fData->GetVectorFieldKinds();
    if (kinds.size() != fInputVars.size())
        return false;
    work.sources.resize(fInputVars.size());
    work.columns.resize(fInputVars.size() * cases);
    for (std::size_t column = 0; column < fInputVars.size(); ++column) {
        const ScoreDictVar* variable = fInputVars[column];
        const int index = variable ? variable->GetIndex() : -1;
        if (index < 0 || static_cast<std::size_t>(index) >= columnCount || !columns[index])
            return false;
        const double* values = columns[index] + first;
        const bool isCategory = kinds[column] == SVMVectorField::kCategoricalPredictor;
        if (variable->IsString() != isCategory || (!isCategory && kinds[column] != SVMVectorField::kFieldRef))
            return false;
        work.sources[column] = values;
        if (!isCategory)
            continue;
        const double category = fData->GetVectorFields()[column]->categoryIndex;
        double* encoded = work.columns.data() + column * cases;
        std::transform(values, values + cases, encoded, [=](double value) { return value == category ? 1.0 : 0.0; });
        work.sources[column] = encoded;
    }
    return true;
}

}  // namespace KwBrevix_930
