// Rewrites what exporters write and the translator does not read.
#pragma once

#include <string>
#include <vector>

#include "runtime/Export.h"

namespace brevix {

class ModelDocument;

/// Rewrites a document in place, in time linear in its size. The kinds of change are listed in docs/pmml-support.md.
/// Returns: one note for each kind of change that was made, with its count.
/// Fails: one Error that names all that cannot be read or would be scored wrongly, such as an array that is none.
BREVIX_RUNTIME_API std::vector<std::string> prepareDocument(const ModelDocument& document);

}  // namespace brevix
