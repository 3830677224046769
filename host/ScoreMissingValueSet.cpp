// The values that a variable declares to stand for a missing one.
#include "host/ScoreMissingValueSet.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace KwBrevix_930 {

namespace {

bool IsNaN(const ScoreValue& value) {
    return value.GetType() == ScoreValue::kNumeric && std::isnan(value.GetDouble());
}

}  // namespace

ScoreMissingValueSet::ScoreMissingValueSet() = default;
ScoreMissingValueSet::~ScoreMissingValueSet() = default;

ScoreMissingValueSet::ScoreMissingValueSet(const ScoreMissingValueSet& other) {
    for (const auto& value : other.fValues)
        fValues.emplace_back(value->Clone());
}

ScoreMissingValueSet& ScoreMissingValueSet::operator=(const ScoreMissingValueSet& other) {
    ScoreMissingValueSet copy(other);
    std::swap(fValues, copy.fValues);
    return *this;
}

void ScoreMissingValueSet::Add(std::unique_ptr<ScoreValue> value) {
    fValues.push_back(std::move(value));
}

bool ScoreMissingValueSet::ContainsEqual(const ScoreValue& value) const {
    return std::any_of(fValues.begin(), fValues.end(), [&value](const auto& declared) {
        return *declared == value || (IsNaN(*declared) && IsNaN(value));
    });
}

}  // namespace KwBrevix_930
