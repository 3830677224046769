// What scoring one record gives.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace brevix {

/// One value of a result.
struct OutputValue {
    enum Kind { kAbsent, kNumber, kText };

    Kind kind = kAbsent;
    double number = 0.0;
    std::string text = {};
};

/// The status of a case that fails for a missing input.
inline constexpr std::int32_t kMissingInput = 90029;

/// With a status other than 0, nothing else is set. An absent value is one that the model does not give.
struct Outcome {
    /// 0, or 90027: an input is invalid or the vote failed; 90029: an input is missing.
    std::int32_t status = 0;
    /// Classification: the place of the predicted category among the target's; -1 where there is none.
    int category = -1;
    /// Regression: the predicted number.
    std::optional<double> number;
    std::optional<double> confidence;
    /// One for each category, in category order; empty where the model gives none.
    std::vector<double> probabilities;
    std::optional<double> stdDev;
    /// The bounds of the 95% interval.
    std::optional<double> lower;
    std::optional<double> upper;
    /// What the model's Output computes beside.
    std::vector<OutputValue> fields;
};

}  // namespace brevix
