// The labels of a variable's values.
#pragma once

#include "host/Export.h"

namespace KwBrevix_930 {

/// All value labels of a variable. The base of a host's own class; models do not look inside.
class BREVIX_HOST_API ScoreValueLabelSet {
public:
    ScoreValueLabelSet() {}
    ScoreValueLabelSet(const ScoreValueLabelSet&) = default;
    ScoreValueLabelSet& operator=(const ScoreValueLabelSet&) = default;
    virtual ~ScoreValueLabelSet();
};

}  // namespace KwBrevix_930
