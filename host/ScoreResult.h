// The result of one case, whatever the model.
#pragma once

#include "host/Export.h"

namespace KwBrevix_930 {

class ScoreDictVar;
class ScoreValue;

/// Abstract; virtual operations stand in slot order, slot 0 is the destructor.
class BREVIX_HOST_API ScoreResult {
public:
    enum ResultType { kSVMClassification = 18, kSVMRegression = 19 };

    ScoreResult() {}
    ScoreResult(const ScoreResult&) = default;
    ScoreResult& operator=(const ScoreResult&) = default;
    virtual ~ScoreResult();

    /// Slot 1. The implementing class says who owns the prediction.
    virtual void SetPrediction(ScoreValue* prediction) = 0;
    /// Slot 2.
    /// Returns: the prediction, owned by the result or the model; null where there is none.
    virtual const ScoreValue* GetPrediction() const = 0;
    /// Slot 3. Returns: the target variable, owned by the host.
    virtual const ScoreDictVar* GetTarget() const = 0;
    /// Slot 4.
    virtual void SetConfidence(double confidence) = 0;
    /// Slot 5. Returns: the confidence, -1.0 where there is none.
    virtual double GetConfidence() const = 0;
    /// Slot 6. Returns: which result class this is.
    virtual ResultType GetScoreResultType() const = 0;
};

}  // namespace KwBrevix_930
