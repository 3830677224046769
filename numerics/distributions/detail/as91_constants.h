// Constants of the inverse chi-square's starting values.
// Source: Best and Roberts, Algorithm AS 91, Appl. Statist. 24 (1975).
#pragma once

namespace KwMath_930::detail {

// Deliberate: the published constants are held in single precision.
inline constexpr double kStartTolerance = static_cast<double>(0.01f);
inline constexpr double kWilsonHilferty = static_cast<double>(0.222222f);
inline constexpr double kSmallDf = static_cast<double>(0.32f);
inline constexpr double kSmallTail = static_cast<double>(1.24f);

}  // namespace KwMath_930::detail
