// Some rows of a table.
#include "runtime/RowBatch.h"

namespace brevix {

void RowBatch::clear() {
    fRowCount = 0;
    fCells.clear();
    fText.clear();
}

void RowBatch::append(const Row& row) {
    appendCells(row.fCells);
    for (std::size_t i = fCells.size() - fWidth; i < fCells.size(); ++i)
        fCells[i].start += fText.size();
    appendText(row.fText);
}

void RowBatch::appendCells(const std::vector<Row::Cell>& cells) {
    fWidth = cells.size();
    fCells.insert(fCells.end(), cells.begin(), cells.end());
    ++fRowCount;
}

}  // namespace brevix
