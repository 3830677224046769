// The columns of a result table.
#pragma once

#include <string>
#include <vector>

namespace brevix {

class ModelDocument;

struct OutputColumn {
    enum Content { kPrediction, kConfidence, kProbability, kPredictedProbability, kStdDev, kLower, kUpper, kStatus };

    std::string name;
    Content content;
    /// kProbability: which category; otherwise -1.
    int category = -1;
};

/// What the columns of a model's results depend on.
struct TargetDescription {
    std::string name;
    bool isClassification = false;
    /// In category order; empty for a regression model.
    std::vector<std::string> categories;
};

/// Returns: prediction, confidence and probabilities, or prediction, deviation and interval; the OutputFields of the
/// model; the status. An OutputField that gives a column of that name a second time adds none.
/// Fails: one Error that names each OutputField that asks for what is not built, or whose name another column has.
std::vector<OutputColumn> listOutputColumns(const ModelDocument& document, const TargetDescription& target);

}  // namespace brevix
