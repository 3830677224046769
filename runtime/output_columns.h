// The columns of a result table.
#pragma once

#include <string>
#include <vector>

#include "runtime/OutputColumn.h"

namespace brevix {

class ModelDocument;

/// What the columns of a model's results depend on.
struct TargetDescription {
    std::string name;
    /// The PMML data type of predictions.
    std::string type;
    bool isClassification = false;
    /// In category order; empty for a regression model.
    std::vector<std::string> categories;
};

/// Returns: prediction, confidence and probabilities, or prediction, deviation and interval; the OutputFields of the
/// model; the status. An OutputField that gives a column of that name a second time adds none.
/// Fails: one Error that names each OutputField that asks for what is not built, or whose name another column has.
std::vector<OutputColumn> listOutputColumns(const ModelDocument& document, const TargetDescription& target);

}  // namespace brevix
