// The result of one case of a regression model.
#include "svm/SVMRegResult.h"

#include <utility>

namespace KwBrevix_930 {

SVMRegResult::SVMRegResult(const ScoreDictVar* target)
    : fTarget(target), fPrediction(std::make_unique<NumericValue>(NumericValue::GetSysmisValue())) {}

SVMRegResult::SVMRegResult(const SVMRegResult& other)
    : ScoreRegResult(other),
      fTarget(other.fTarget),
      fPrediction(other.fPrediction ? other.fPrediction->Clone() : nullptr),
      fStdDev(other.fStdDev),
      fLower(other.fLower),
      fUpper(other.fUpper) {}

SVMRegResult& SVMRegResult::operator=(const SVMRegResult& other) {
    SVMRegResult copy(other);
    fTarget = copy.fTarget;
    fPrediction = std::move(copy.fPrediction);
    fStdDev = copy.fStdDev;
    SetCI(copy.fLower, copy.fUpper);
    return *this;
}

SVMRegResult::~SVMRegResult() = default;

void SVMRegResult::SetPrediction(ScoreValue* prediction) {
    if (prediction != fPrediction.get())
        fPrediction.reset(prediction);
}

const ScoreValue* SVMRegResult::GetPrediction() const {
    return fPrediction.get();
}

const ScoreDictVar* SVMRegResult::GetTarget() const {
    return fTarget;
}

void SVMRegResult::SetConfidence(double) {}

double SVMRegResult::GetConfidence() const {
    return -1.0;
}

ScoreResult::ResultType SVMRegResult::GetScoreResultType() const {
    return kSVMRegression;
}

void SVMRegResult::SetStdDev(double deviation) {
    fStdDev = deviation;
}

double SVMRegResult::GetStdDev() const {
    return fStdDev;
}

void SVMRegResult::SetPredictedNumber(double number) {
    if (auto* numeric = dynamic_cast<NumericValue*>(fPrediction.get()))
        numeric->SetDoubleValue(number);
    else
        fPrediction = std::make_unique<NumericValue>(number);
}

}  // namespace KwBrevix_930
