// SVMModel: filling the result of a case.
#include "svm/SVMModel.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "host/NumericValue.h"
#include "svm/SVMClsResult.h"
#include "svm/SVMRegResult.h"
#include "svm/status_codes.h"

namespace KwBrevix_930 {

namespace {

// What 1 - 0.95 yields in double precision; kept exactly.
constexpr double kOutsideInterval = 0.050000000000000044;

}  // namespace

bool SVMModel::IsKnownCategory(std::int32_t category) const {
    return category >= 0 && static_cast<std::size_t>(category) < fTargetCategoryValues.size() &&
           fTargetCategoryValues[static_cast<std::size_t>(category)];
}

// Whether the result shows confidence and probabilities.
bool SVMModel::HasProbabilities(const Vote& vote) const {
    return !fPredictionOnly && vote.probabilities.size() == fTargetCategoryValues.size();
}

SVMModel::Status SVMModel::FillSVMClsResult(const Vote& vote, ScoreResult*& result) const {
    if (!IsKnownCategory(vote.category) || !result || result->GetScoreResultType() != ScoreResult::kSVMClassification)
        return kInvalidStatus;
    result->SetPrediction(fTargetCategoryValues[static_cast<std::size_t>(vote.category)]);
    return FillSVMZARNClsResult(vote, result);
}

SVMModel::Status SVMModel::FillSVMZARNClsResult(const Vote& vote, ScoreResult*& result) const {
    const bool isInRange = vote.category >= 0 && static_cast<std::size_t>(vote.category) < fTargetCategoryValues.size();
    if (!isInRange || !HasProbabilities(vote))
        return {};
    auto& categories = static_cast<SVMClsResult&>(*result);
    categories.SetValuePercents(fTargetCategoryValues, vote.probabilities);
    categories.SetConfidence(vote.confidence);
    return {};
}

SVMModel::Status SVMModel::FillSVMRegResult(double decision, ScoreResult*& result) const {
    if (!result || result->GetScoreResultType() != ScoreResult::kSVMRegression)
        return kInvalidStatus;
    static_cast<SVMRegResult&>(*result).SetPredictedNumber(decision);
    return FillSVMZARNRegResult(decision, result);
}

SVMModel::Status SVMModel::FillSVMZARNRegResult(double decision, ScoreResult*& result) const {
    Deviation found;
    if (!FindDeviation(decision, found))
        return {};
    auto& regression = static_cast<SVMRegResult&>(*result);
    regression.SetStdDev(found.deviation);
    regression.SetCI(found.lower, found.upper);
    return {};
}

// Returns: false where the result shows none.
bool SVMModel::FindDeviation(double decision, Deviation& found) const {
    if (fPredictionOnly || !fData || fData->GetMachines().empty())
        return false;
    const auto* machine = fData->GetMachines().front().get();
    if (!machine || !machine->extension)
        return false;
    const double scale = fData->GetHasStandardDeviation() ? machine->extension->standardDeviation : 0.0;
    if (scale == NumericValue::GetSysmisValue())
        return false;
    const double halfWidth = -(std::log(kOutsideInterval) * scale);
    found = {scale, decision - halfWidth, decision + halfWidth};
    return true;
}

// What FillSVMClsResult puts into a result, as ScoreNumbers gives it.
SVMModel::Status SVMModel::WriteVote(const Vote& vote, double* numbers) const {
    if (!IsKnownCategory(vote.category))
        return kInvalidStatus;
    *numbers++ = vote.category;
    if (HasProbabilities(vote)) {
        *numbers++ = vote.confidence;
        std::copy(vote.probabilities.begin(), vote.probabilities.end(), numbers);
    } else {
        *numbers++ = -1.0;
        std::fill_n(numbers, fTargetCategoryValues.size(), 0.0);
    }
    return {};
}

// The same of FillSVMRegResult.
void SVMModel::WriteRegression(double decision, double* numbers) const {
    Deviation found{-1.0, NumericValue::GetSysmisValue(), NumericValue::GetSysmisValue()};
    FindDeviation(decision, found);
    const double all[4] = {decision, found.deviation, found.lower, found.upper};
    std::copy(std::begin(all), std::end(all), numbers);
}

}  // namespace KwBrevix_930
