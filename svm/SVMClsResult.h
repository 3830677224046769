// The result of one case of a classification model.
#pragma once

#include <memory>
#include <vector>

#include "host/ScoreClsResult.h"
#include "host/ScoreValue.h"

namespace KwBrevix_930 {

class ScoreDictVar;

/// The prediction points at one of the model's category values and is not owned, and so do the values of the list: a
/// result must not outlive its model. The exception is a prediction set by SetOwnedPrediction.
class SVMClsResult : public ScoreClsResult {
public:
    /// target: not owned.
    explicit SVMClsResult(const ScoreDictVar* target);
    SVMClsResult(const SVMClsResult& other);
    SVMClsResult& operator=(const SVMClsResult& other);
    ~SVMClsResult() override;

    /// prediction: not owned. A prediction that is owned so far is deleted.
    void SetPrediction(ScoreValue* prediction) override;
    const ScoreValue* GetPrediction() const override;
    const ScoreDictVar* GetTarget() const override;
    void SetConfidence(double confidence) override;
    double GetConfidence() const override;
    ResultType GetScoreResultType() const override;

    /// Appends at the end, whether or not an equal value is there already.
    /// Returns: true.
    bool AddValuePercent(ScoreValue* value, double percent) override;
    double GetPercent(const ScoreValue* value) const override;
    const std::vector<ValuePercent>& GetAllValuePercent() const override;

    /// Fills the list anew: the probability of each value, in their order, of which there are as many.
    void SetValuePercents(const std::vector<ScoreValue*>& values, const std::vector<double>& percents);
    /// Empties the list of categories and probabilities.
    void RemoveValuePercent();

    /// Takes a prediction over, such as one that marks a missing input.
    void SetOwnedPrediction(std::unique_ptr<ScoreValue> prediction);

private:
    const ScoreDictVar* fTarget;
    ScoreValue* fPrediction = nullptr;
    std::vector<ValuePercent> fValuePercents;
    double fConfidence = -1.0;
    // Holds the prediction where it is owned, otherwise null.
    std::unique_ptr<ScoreValue> fOwnedPrediction;
};

}  // namespace KwBrevix_930
