// A model's description as text and as JSON.
#pragma once

#include <string>

namespace brevix {

struct ModelDescription;

/// Returns: the description in lines of at most 100 columns; control characters of the document are escaped, long lists
/// are cut and say how much they leave out.
std::string describeAsText(const ModelDescription& description);

/// Returns: the whole description as one JSON object, indented by two, with a line end.
std::string describeAsJson(const ModelDescription& description);

}  // namespace brevix
