// A value's label.
#pragma once

#include "host/Export.h"

namespace KwBrevix_930 {

/// The text shown for one value of a variable. The base of a host's own class; models do not look inside.
class BREVIX_HOST_API ScoreValueLabel {
public:
    ScoreValueLabel() {}
    ScoreValueLabel(const ScoreValueLabel&) = default;
    ScoreValueLabel& operator=(const ScoreValueLabel&) = default;
    virtual ~ScoreValueLabel();
};

}  // namespace KwBrevix_930
