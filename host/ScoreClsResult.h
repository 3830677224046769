// The result of one case of a classification model.
#pragma once

#include <utility>
#include <vector>

#include "host/ScoreResult.h"

namespace KwBrevix_930 {

/// Abstract; slots follow those of ScoreResult.
class BREVIX_HOST_API ScoreClsResult : public ScoreResult {
public:
    using ValuePercent = std::pair<ScoreValue*, double>;

    ScoreClsResult() {}
    ScoreClsResult(const ScoreClsResult&) = default;
    ScoreClsResult& operator=(const ScoreClsResult&) = default;
    ~ScoreClsResult() override;

    /// Slot 7. Adds the probability of one category; the value is not owned.
    virtual bool AddValuePercent(ScoreValue* value, double percent) = 0;
    /// Slot 8.
    /// Returns: the probability of the category that equals value; -1.0 where there is none.
    virtual double GetPercent(const ScoreValue* value) const = 0;
    /// Slot 9.
    /// Returns: all categories with their probabilities, in the order in which they were added.
    virtual const std::vector<ValuePercent>& GetAllValuePercent() const = 0;
};

}  // namespace KwBrevix_930
