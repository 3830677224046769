// Some rows of a table.
#include "runtime/RowBatch.h"

#include <algorithm>

namespace brevix {

void RowBatch::clear() {
    fRowCount = 0;
    fText.resize(KwBrevix_930::ShortDecimal::kFront);
}

void RowBatch::append(const Row& row) {
    Row::Cell* cells = addRow(row.fCells.size());
    std::copy(row.fCells.begin(), row.fCells.end(), cells);
    for (std::size_t i = 0; i < fWidth; ++i)
        cells[i].start += fText.size();
    appendText(row.fText);
}

void RowBatch::makeRoom() {
    fCells.resize(2 * fRowCount * fWidth);
}

}  // namespace brevix
