// The result of one case of a regression model.
#pragma once

#include "host/ScoreResult.h"

namespace KwBrevix_930 {

/// Abstract; slots follow those of ScoreResult.
class BREVIX_HOST_API ScoreRegResult : public ScoreResult {
public:
    ScoreRegResult() {}
    ScoreRegResult(const ScoreRegResult&) = default;
    ScoreRegResult& operator=(const ScoreRegResult&) = default;
    ~ScoreRegResult() override;

    /// Slot 7.
    virtual void SetStdDev(double deviation) = 0;
    /// Slot 8.
    /// Returns: the standard deviation, -1.0 where there is none.
    virtual double GetStdDev() const = 0;
};

}  // namespace KwBrevix_930
