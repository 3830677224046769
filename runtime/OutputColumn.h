// One column of a model's results.
#pragma once

#include <string>

namespace brevix {

struct OutputColumn {
    /// Which part of an Outcome the column shows.
    enum Content {
        kPrediction,
        kConfidence,
        kProbability,
        kPredictedProbability,
        kStdDev,
        kLower,
        kUpper,
        kStatus,
        kField
    };

    std::string name;
    Content content;
    /// The PMML data type of the values; a value may always be absent.
    std::string type;
    /// What the column shows: a feature of PMML's OutputField, or "intervalLower", "intervalUpper" or "status".
    std::string feature;
    /// The category whose probability or residual it is; empty otherwise.
    std::string value = {};
    /// kProbability: which category; otherwise -1.
    int category = -1;
    /// kField: which of Outcome::fields; otherwise -1.
    int field = -1;
};

}  // namespace brevix
