// The result of one case of a classification model.
#include "svm/SVMClsResult.h"

#include <utility>

namespace KwBrevix_930 {

SVMClsResult::SVMClsResult(const ScoreDictVar* target) : fTarget(target) {}

SVMClsResult::SVMClsResult(const SVMClsResult& other)
    : ScoreClsResult(other),
      fTarget(other.fTarget),
      fPrediction(other.fPrediction),
      fValuePercents(other.fValuePercents),
      fConfidence(other.fConfidence) {
    if (other.fOwnedPrediction)
        SetOwnedPrediction(std::unique_ptr<ScoreValue>(other.fOwnedPrediction->Clone()));
}

SVMClsResult& SVMClsResult::operator=(const SVMClsResult& other) {
    if (this == &other)
        return *this;
    SVMClsResult copy(other);
    fTarget = copy.fTarget;
    fPrediction = copy.fPrediction;
    fValuePercents.swap(copy.fValuePercents);
    fConfidence = copy.fConfidence;
    fOwnedPrediction = std::move(copy.fOwnedPrediction);
    return *this;
}

SVMClsResult::~SVMClsResult() = default;

void SVMClsResult::SetPrediction(ScoreValue* prediction) {
    if (prediction == fPrediction)
        return;
    fPrediction = prediction;
    fOwnedPrediction.reset();
}

void SVMClsResult::SetOwnedPrediction(std::unique_ptr<ScoreValue> prediction) {
    fPrediction = prediction.get();
    fOwnedPrediction = std::move(prediction);
}

const ScoreValue* SVMClsResult::GetPrediction() const {
    return fPrediction;
}

const ScoreDictVar* SVMClsResult::GetTarget() const {
    return fTarget;
}

void SVMClsResult::SetConfidence(double confidence) {
    fConfidence = confidence;
}

double SVMClsResult::GetConfidence() const {
    return fConfidence;
}

ScoreResult::ResultType SVMClsResult::GetScoreResultType() const {
    return kSVMClassification;
}

bool SVMClsResult::AddValuePercent(ScoreValue* value, double percent) {
    fValuePercents.emplace_back(value, percent);
    return true;
}

double SVMClsResult::GetPercent(const ScoreValue* value) const {
    for (const auto& [category, percent] : fValuePercents) {
        if (category && category->Equal(value, false, false))
            return percent;
    }
    return -1.0;
}

const std::vector<ScoreClsResult::ValuePercent>& SVMClsResult::GetAllValuePercent() const {
    return fValuePercents;
}

void SVMClsResult::SetValuePercents(const std::vector<ScoreValue*>& values, const std::vector<double>& percents) {
    fValuePercents.resize(values.size());
    for (std::size_t k = 0; k < values.size(); ++k)
        fValuePercents[k] = {values[k], percents[k]};
}

void SVMClsResult::RemoveValuePercent() {
    fValuePercents.clear();
}

}  // namespace KwBrevix_930
