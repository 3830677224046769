// One row of a table while it is read.
#include "runtime/Row.h"

namespace brevix {

void Row::clear() {
    fText.clear();
    for (Cell& cell : fCells)
        cell = Cell();
}

void Row::set(std::size_t column, Kind kind, std::string_view text) {
    fCells[column] = {fText.size(), static_cast<std::uint32_t>(text.size()), text.empty() ? kMissing : kind};
    fText += text;
}

}  // namespace brevix
