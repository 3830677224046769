// The values that a variable declares to stand for a missing one.
#pragma once

#include <memory>
#include <vector>

#include "host/ScoreValue.h"

namespace KwBrevix_930 {

class BREVIX_HOST_API ScoreMissingValueSet {
public:
    ScoreMissingValueSet();
    ScoreMissingValueSet(const ScoreMissingValueSet& other);
    ScoreMissingValueSet& operator=(const ScoreMissingValueSet& other);
    virtual ~ScoreMissingValueSet();

    void Add(std::unique_ptr<ScoreValue> value);

    bool IsEmpty() const { return fValues.empty(); }
    /// Returns: whether an equal value was added; here a number that is NaN equals another.
    bool Contains(const ScoreValue& value) const { return !fValues.empty() && ContainsEqual(value); }

private:
    bool ContainsEqual(const ScoreValue& value) const;

    std::vector<std::unique_ptr<ScoreValue>> fValues;
};

}  // namespace KwBrevix_930
