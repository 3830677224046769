// How a variable's values are encoded.
#pragma once

#include "host/Export.h"

namespace KwBrevix_930 {

/// An encoding of values as numbers. The base of a host's own class; models do not look inside.
class BREVIX_HOST_API ScoreEncoder {
public:
    ScoreEncoder() {}
    ScoreEncoder(const ScoreEncoder&) = default;
    ScoreEncoder& operator=(const ScoreEncoder&) = default;
    virtual ~ScoreEncoder();
};

}  // namespace KwBrevix_930
