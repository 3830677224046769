// Some rows of a table.
#include "runtime/RowBatch.h"

namespace brevix {

void RowBatch::clear() {
    fRowCount = 0;
    fCells.clear();
    fText.clear();
}

void RowBatch::append(const Row& row) {
    fWidth = row.fCells.size();
    for (Row::Cell cell : row.fCells) {
        cell.start += fText.size();
        fCells.push_back(cell);
    }
    fText += row.fText;
    ++fRowCount;
}

}  // namespace brevix
