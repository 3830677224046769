// Some rows of a table.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "runtime/Row.h"

namespace brevix {

/// Some rows that follow each other. Columns are counted in the order in which they were asked for.
class RowBatch {
public:
    void clear();
    void append(const Row& row);
    /// Appends a row whose text follows: cells, one for each column, start where the text that appendText is given next
    /// will stand.
    void appendCells(const std::vector<Row::Cell>& cells);
    /// text: of all rows whose cells were appended since the last text.
    void appendText(std::string_view text) { fText += text; }
    std::size_t getTextSize() const { return fText.size(); }

    std::size_t getRowCount() const { return fRowCount; }
    Row::Kind getKind(std::size_t row, std::size_t column) const { return fCells[row * fWidth + column].kind; }
    /// Returns: the cell's text as it stands in the table; numbers too.
    std::string_view getText(std::size_t row, std::size_t column) const {
        const Row::Cell& cell = fCells[row * fWidth + column];
        return {fText.data() + cell.start, cell.length};
    }

private:
    std::size_t fRowCount = 0;
    std::size_t fWidth = 0;
    std::vector<Row::Cell> fCells;
    std::string fText;
};

}  // namespace brevix
