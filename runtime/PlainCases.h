// Cases on their way to being scored without records.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "host/KwStatus.h"

namespace brevix {

/// Some cases of which every input has a plain value, as DictVar::ReadPlain gives them. For one thread, and for the
/// model that made it.
class PlainCases {
public:
    static constexpr std::size_t kMost = 64;
    /// A result has no more.
    static constexpr std::size_t kMostNumbers = 1 << 14;

    /// Returns: where the numbers of an input belong, kMost of them.
    double* getNumbers(std::size_t input) { return &fNumbers[input * kMost]; }

    /// Returns: whether a case that was scored has no result.
    bool hasFailed(std::size_t place) const { return fStatuses[place].IsError(); }
    /// Returns: the result of any other, which is the outcome in other words: equal numbers, equal outcomes.
    std::span<const double> getResult(std::size_t place) const {
        return {fResults.data() + place * fResultSize, fResultSize};
    }

private:
    friend class ScoringModel;

    std::vector<double> fNumbers;
    // At the places of the host's records, the numbers of the inputs.
    std::vector<const double*> fColumns;
    // What the plug-in fills, case after case.
    std::size_t fResultSize = 0;
    std::vector<double> fResults;
    std::array<KwScore::KwStatus, kMost> fStatuses;
};

}  // namespace brevix
