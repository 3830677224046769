// Tells a program what the inputs of a model are.
#pragma once

#include <string>
#include <vector>

#include "runtime/InputField.h"

namespace KwBrevix_930 {
class ScoreDictVar;
class ScoreDictionary;
}  // namespace KwBrevix_930

namespace brevix {

class ModelDocument;

/// Returns: what dictionary and document say of the fields named, in the same order.
std::vector<InputField> describeInputs(const ModelDocument& document, const KwBrevix_930::ScoreDictionary& dictionary,
                                       const std::vector<std::string>& names);

/// Returns: the PMML data type of one field.
std::string describeType(const ModelDocument& document, const KwBrevix_930::ScoreDictVar& variable);

}  // namespace brevix
