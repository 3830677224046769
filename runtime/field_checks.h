// Whether the fields of a document can be read.
#pragma once

namespace brevix {

class ModelDocument;

/// Reads every DataField and MiningField as the translator will.
/// Fails: one Error that names every one that cannot be read, with its element, its field and its line, and the numeric
/// code of the first.
void checkFields(const ModelDocument& document);

}  // namespace brevix
