// The result of one case of a regression model.
#pragma once

#include <memory>

#include "host/NumericValue.h"
#include "host/ScoreRegResult.h"

namespace KwBrevix_930 {

class ScoreDictVar;

/// Owns its prediction. The accessors of the interval are inline, so that a host may read it without linking this
/// library: after GetScoreResultType() has answered kSVMRegression, a result is of this class.
class SVMRegResult : public ScoreRegResult {
public:
    /// target: not owned. The prediction starts as the system-missing value.
    explicit SVMRegResult(const ScoreDictVar* target);
    SVMRegResult(const SVMRegResult& other);
    SVMRegResult& operator=(const SVMRegResult& other);
    ~SVMRegResult() override;

    /// Takes the prediction over and deletes the old one.
    void SetPrediction(ScoreValue* prediction) override;
    const ScoreValue* GetPrediction() const override;
    const ScoreDictVar* GetTarget() const override;
    /// Does nothing: a regression result has no confidence.
    void SetConfidence(double confidence) override;
    /// Returns: -1.0.
    double GetConfidence() const override;
    ResultType GetScoreResultType() const override;
    void SetStdDev(double deviation) override;
    double GetStdDev() const override;

    /// The bounds of the 95% interval; the system-missing value until set.
    void SetCI(double lower, double upper) {
        fLower = lower;
        fUpper = upper;
    }
    void GetCI(double& lower, double& upper) const {
        lower = fLower;
        upper = fUpper;
    }

    /// Makes the prediction a number: in place where it is numeric, otherwise by a new value.
    void SetPredictedNumber(double number);

private:
    const ScoreDictVar* fTarget;
    std::unique_ptr<ScoreValue> fPrediction;
    double fStdDev = -1.0;
    double fLower = NumericValue::GetSysmisValue();
    double fUpper = NumericValue::GetSysmisValue();
};

}  // namespace KwBrevix_930
