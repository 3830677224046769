// Some rows of a table.
#include "runtime/RowBatch.h"

namespace brevix {

void RowBatch::clear() {
    fRowCount = 0;
    fCells.clear();
    fText.clear();
}

void RowBatch::append(const Row& row) {
    append(row.fCells, row.fText);
}

void RowBatch::append(const std::vector<Row::Cell>& cells, std::string_view text) {
    fWidth = cells.size();
    const std::size_t first = fCells.size();
    fCells.insert(fCells.end(), cells.begin(), cells.end());
    for (std::size_t i = first; i < fCells.size(); ++i)
        fCells[i].start += fText.size();
    fText += text;
    ++fRowCount;
}

}  // namespace brevix
