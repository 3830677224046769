// The columns of a result table, and what is to be computed for them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "runtime/Outcome.h"
#include "runtime/OutputColumn.h"
#include "runtime/OutputProgram.h"

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

/// Reads the OutputFields of a model. program: a new one, which is given a step for each OutputField; it becomes null
/// where all that they ask for stands in an outcome anyway.
/// Returns: prediction, confidence and probabilities, or prediction, deviation and interval; the OutputFields of the
/// model that are final results; the status. An OutputField that gives a column of that name a second time adds none.
/// Fails: one Error that names each OutputField that asks for what a support vector machine does not have, or whose
/// name another column has; Error with the code of an expression that cannot be read.
std::vector<OutputColumn> listOutputColumns(const ModelDocument& document, const TargetDescription& target,
                                            std::unique_ptr<OutputProgram>& program);

/// Returns: the number that a column shows of an outcome, which must outlive it; null where it is absent, and for the
/// columns of the status and of computed fields.
const double* findNumber(const Outcome& outcome, const OutputColumn& column);

}  // namespace brevix
