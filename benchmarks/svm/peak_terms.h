// How many terms of a squared distance one core can add, as the bound of what a kernel may reach.
#pragma once

namespace benchmarks {

/// Adds (x - y)^2 in packs that stay in registers, as many sums side by side as the plan's loops have, without fused
/// operations and without memory; the fastest of some short runs in processor time.
/// level: a version of the plan's loops, by name.
/// Returns: terms a second; 0 for a version that is not known here.
double MeasurePeakTerms(const char* level);

}  // namespace benchmarks
