// What a document asks for and is not built: refused when it is opened, never ignored.
#pragma once

#include <string>
#include <vector>

#include "runtime/Export.h"

namespace KwBrevix_930 {
class ScoreDictionary;
class TransformationDictionary;
}  // namespace KwBrevix_930

namespace brevix {

class ModelDocument;

/// Fails: Error with code 260115, as the translator would, for a document without a SupportVectorMachineModel beneath
/// its root; it says so where one is nested in another model. One Error that names every DataField and MiningField that
/// cannot be read, with the code of the first.
void requireModel(const ModelDocument& document);

/// Fails: always, with Error 260115: the document holds its model inside another one, and why it cannot be read there.
[[noreturn]] void refuseNested(const ModelDocument& document, const std::string& why);

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

/// Looks for everything in a prepared document that has no effect, in time linear in its size: other models, support
/// vectors without an instance, instances without a support vector, extensions behind the first, counts that are not
/// what they count, categories that the target does not declare, fields of other usages, and elements that are not
/// read. Returns: one note for each kind, with its count.
BREVIX_RUNTIME_API std::vector<std::string> noteIgnored(const ModelDocument& document);

/// Returns: a name or a value as messages show it.
inline std::string quoted(const std::string& text) {
    return "'" + text + "'";
}

/// Throws all complaints as one Error, behind an opening; does nothing where there are none. Of more than ten the rest
/// is counted.
void throwComplaints(const std::vector<std::string>& complaints,
                     const std::string& opening = "not supported: ", int code = 0);

}  // namespace brevix
