// Tables of cases, row by row.
#include "runtime/TableReader.h"

#include "runtime/CsvReader.h"
#include "runtime/JsonLinesReader.h"

namespace brevix {

void Row::clear() {
    fText.clear();
    for (Cell& cell : fCells)
        cell = Cell();
}

void Row::set(std::size_t column, Kind kind, std::string_view text) {
    fCells[column] = {text.empty() ? kMissing : kind, fText.size(), text.size()};
    fText += text;
}

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

std::unique_ptr<TableReader> openTable(TableKind kind, ByteSource& source, const std::vector<std::string>& columns) {
    if (kind == TableKind::kJsonLines)
        return std::make_unique<JsonLinesReader>(source, columns);
    return std::make_unique<CsvReader>(source, kind == TableKind::kTsv ? '\t' : ',', columns);
}

}  // namespace brevix
