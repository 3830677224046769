// Text from strangers, made safe for a terminal.
#pragma once

#include <string>
#include <string_view>

#include "runtime/Export.h"

namespace brevix {

/// Returns: the text on one line: control characters and marks that turn the writing direction are escaped (\n, \x1b,
/// \u202e), so is each byte that is not UTF-8; a text of more than a mebibyte is cut.
BREVIX_RUNTIME_API std::string printableText(std::string_view text);

/// Returns: the length in bytes of the UTF-8 character at the start of a text that is not empty; 0 where there is none.
BREVIX_RUNTIME_API std::size_t utf8Length(std::string_view text);

}  // namespace brevix
