// What a document asks for and is not built: refused when it is opened, never ignored.
#pragma once

#include <string>
#include <vector>

namespace KwBrevix_930 {
class ScoreDictionary;
class TransformationDictionary;
}  // namespace KwBrevix_930

namespace brevix {

class ModelDocument;

/// Fails: Error with code 260115, as the translator would, for a document without a SupportVectorMachineModel beneath
/// its root; it says so where one is nested in another model.
void requireModel(const ModelDocument& document);

/// Finds the raw fields that the model's vectors read, through derived fields too. transformations: may be null.
/// Returns: their names, in dictionary order.
/// Fails: Error that names each vector field that is unknown, or a text where a number is needed.
std::vector<std::string> findInputs(const ModelDocument& document, const KwBrevix_930::ScoreDictionary& dictionary,
                                    const KwBrevix_930::TransformationDictionary* transformations);

/// Looks for what would change results and is not built, in the MiningFields of the inputs and in Targets. dictionary:
/// the inputs' variables.
/// Fails: one Error that names every such element, attribute and field.
void refuseUnbuilt(const ModelDocument& document, const KwBrevix_930::ScoreDictionary& dictionary,
                   const std::vector<std::string>& inputs);

/// Returns: one note for each thing beside the model that is left out of account, such as a second model.
std::vector<std::string> noteIgnored(const ModelDocument& document);

/// Throws all complaints as one Error; does nothing where there are none. Of more than ten the rest is counted.
void throwComplaints(const std::vector<std::string>& complaints);

}  // namespace brevix
