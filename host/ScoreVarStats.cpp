// What is known of a variable beyond its declaration.
#include "host/ScoreVarStats.h"

#include <utility>

namespace KwBrevix_930 {

ScoreVarStats::ScoreVarStats() = default;
ScoreVarStats::~ScoreVarStats() = default;

ScoreVarStats::ScoreVarStats(const ScoreVarStats& other)
    : fMissingReplacement(other.fMissingReplacement ? other.fMissingReplacement->Clone() : nullptr),
      fEncodedReplacements(other.fEncodedReplacements) {}

ScoreVarStats& ScoreVarStats::operator=(const ScoreVarStats& other) {
    ScoreVarStats copy(other);
    std::swap(fMissingReplacement, copy.fMissingReplacement);
    std::swap(fEncodedReplacements, copy.fEncodedReplacements);
    return *this;
}

void ScoreVarStats::SetMissingReplacement(std::unique_ptr<ScoreValue> value) {
    fMissingReplacement = std::move(value);
}

void ScoreVarStats::SetEncodedMissingReplacement(const std::string& encodedValue, const std::string& replacement) {
    fEncodedReplacements[encodedValue] = replacement;
}

const std::string* ScoreVarStats::GetEncodedMissingReplacement(const std::string& encodedValue) const {
    const auto found = fEncodedReplacements.find(encodedValue);
    return found == fEncodedReplacements.end() ? nullptr : &found->second;
}

}  // namespace KwBrevix_930
