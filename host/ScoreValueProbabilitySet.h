// The probabilities of a variable's values.
#pragma once

#include "host/Export.h"

namespace KwBrevix_930 {

/// Prior probabilities, one a value. The base of a host's own class; models do not look inside.
class BREVIX_HOST_API ScoreValueProbabilitySet {
public:
    ScoreValueProbabilitySet() {}
    ScoreValueProbabilitySet(const ScoreValueProbabilitySet&) = default;
    ScoreValueProbabilitySet& operator=(const ScoreValueProbabilitySet&) = default;
    virtual ~ScoreValueProbabilitySet();
};

}  // namespace KwBrevix_930
