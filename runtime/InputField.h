// What a model wants to be given.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace brevix {

/// One field of the cases that a model scores.
struct InputField {
    /// A range of valid numbers; an absent bound is open to infinity.
    struct Range {
        std::optional<double> lower;
        std::optional<double> upper;
        bool includesLower = true;
        bool includesUpper = true;
    };

    std::string name;
    /// The PMML data type: "double", "integer", "string", "boolean", "date" and so on.
    std::string type;
    /// "continuous", "ordinal" or "categorical".
    std::string kind;
    /// The declared valid values, in order; with no values and no ranges, every value of the data type is valid.
    std::vector<std::string> values;
    std::vector<Range> ranges;
    /// What stands in for a missing value; nothing where a missing value stays missing.
    std::optional<std::string> missingReplacement;
    /// What becomes of a value that is not valid: "returnInvalid" (status 90027), "asIs", "asMissing" or "asValue".
    std::string invalidTreatment;
    /// Whether tables may lack the field: the result then lacks what is computed from it, and nothing else.
    bool isOptional = false;
};

}  // namespace brevix
