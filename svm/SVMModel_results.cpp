// SVMModel: filling the result of a case.
#include "svm/SVMModel.h"

#include <cmath>

#include "host/NumericValue.h"
#include "svm/SVMClsResult.h"
#include "svm/SVMRegResult.h"
#include "svm/status_codes.h"

namespace KwBrevix_930 {

namespace {

// What 1 - 0.95 yields in double precision; kept exactly.
constexpr double kOutsideInterval = 0.050000000000000044;

}  // namespace

SVMModel::Status SVMModel::FillSVMClsResult(const Vote& vote, ScoreResult*& result) const {
    const bool isKnown = vote.category >= 0 && static_cast<std::size_t>(vote.category) < fTargetCategoryValues.size();
    ScoreValue* category = isKnown ? fTargetCategoryValues[static_cast<std::size_t>(vote.category)] : nullptr;
    if (!category || !result || result->GetScoreResultType() != ScoreResult::kSVMClassification)
        return kInvalidStatus;
    result->SetPrediction(category);
    return FillSVMZARNClsResult(vote, result);
}

SVMModel::Status SVMModel::FillSVMZARNClsResult(const Vote& vote, ScoreResult*& result) const {
    const std::size_t count = fTargetCategoryValues.size();
    const bool isKnown = vote.category >= 0 && static_cast<std::size_t>(vote.category) < count;
    if (fPredictionOnly || !isKnown || vote.probabilities.size() != count)
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
    if (fPredictionOnly || !fData || fData->GetMachines().empty())
        return {};
    const auto* machine = fData->GetMachines().front().get();
    if (!machine || !machine->extension)
        return {};
    const double scale = fData->GetHasStandardDeviation() ? machine->extension->standardDeviation : 0.0;
    if (scale == NumericValue::GetSysmisValue())
        return {};
    auto& regression = static_cast<SVMRegResult&>(*result);
    regression.SetStdDev(scale);
    const double halfWidth = -(std::log(kOutsideInterval) * scale);
    regression.SetCI(decision - halfWidth, decision + halfWidth);
    return {};
}

}  // namespace KwBrevix_930
