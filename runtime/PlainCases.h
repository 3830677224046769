// Cases on their way to being scored without records.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "host/KwStatus.h"
#include "host/ScoreResult.h"

namespace brevix {

/// Some cases of which every input has a plain value, as DictVar::ReadPlain gives them. For one thread, and ended
/// before its model.
class PlainCases {
public:
    static constexpr std::size_t kMost = 64;

    /// Returns: where the numbers of an input belong, kMost of them.
    double* getNumbers(std::size_t input) { return &fNumbers[input * kMost]; }

private:
    friend class ScoringModel;

    std::vector<double> fNumbers;
    // At the places of the host's records, the numbers of the inputs.
    std::vector<const double*> fColumns;
    // What the plug-in fills, case after case.
    std::vector<std::unique_ptr<KwBrevix_930::ScoreResult>> fResults;
    std::array<KwScore::KwStatus, kMost> fStatuses;
};

}  // namespace brevix
