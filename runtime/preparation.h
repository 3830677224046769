// Rewrites what exporters write and the translator does not read.
#pragma once

#include <string>
#include <vector>

namespace brevix {

class ModelDocument;

/// Rewrites a document in place, in time linear in its size: dense arrays, a target without categories, one-against-one
/// without its attribute, and the document's TransformationDictionary.
/// Returns: one note for each kind of change that was made, with its count.
/// Fails: Error for a dense array that cannot be one: its n is not the number of its entries, or a text is quoted in
/// it.
std::vector<std::string> prepareDocument(const ModelDocument& document);

}  // namespace brevix
