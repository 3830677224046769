// The missing value of the numerics library: what a routine returns when it has no result.
#pragma once

#include "numerics/Export.h"

namespace KwCommon_930 {

/// The system-wide missing value, the most negative finite double.
class KW_EXPORT KwMV {
public:
    /// Returns: the missing value, -1.7976931348623157e308 (bits 0xFFEFFFFFFFFFFFFF).
    static double Missing();

    /// Returns: true when value equals the missing value exactly; a NaN or an infinity is not missing.
    static bool IsMissing(double value);
};

}  // namespace KwCommon_930
