// The status codes that scoring a case ends with.
#pragma once

#include "host/KwStatus.h"

namespace KwBrevix_930 {

/// An input value is invalid, or no category can be chosen.
inline const KwScore::KwStatus kInvalidStatus(90027, true);

/// Something that scoring needs is missing: an input value, the record, the data, the target or the kernel.
inline const KwScore::KwStatus kMissingStatus(90029, true);

}  // namespace KwBrevix_930
