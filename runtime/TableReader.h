// Tables of cases, row by row.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/ByteSource.h"

namespace brevix {

enum class TableKind { kCsv, kTsv, kJsonLines };

/// One row's wanted cells.
class Row {
public:
    enum Kind : std::uint8_t { kMissing, kText, kNumber, kBoolean };

    struct Cell {
        Kind kind = kMissing;
        std::size_t start = 0;
        std::size_t length = 0;
    };

    explicit Row(std::size_t width) : fCells(width) {}

    /// Makes all cells missing.
    void clear();
    /// text: copied; an empty one leaves the cell missing.
    void set(std::size_t column, Kind kind, std::string_view text);

private:
    friend class RowBatch;
    std::vector<Cell> fCells;
    std::string fText;
};

/// Some rows that follow each other. Columns are counted in the order in which they were asked for.
class RowBatch {
public:
    void clear();
    void append(const Row& row);

    std::size_t getRowCount() const { return fRowCount; }
    Row::Kind getKind(std::size_t row, std::size_t column) const { return fCells[row * fWidth + column].kind; }
    /// Returns: the cell's text as it stands in the table; numbers too.
    std::string_view getText(std::size_t row, std::size_t column) const {
        const Row::Cell& cell = fCells[row * fWidth + column];
        return std::string_view(fText).substr(cell.start, cell.length);
    }

private:
    std::size_t fRowCount = 0;
    std::size_t fWidth = 0;
    std::vector<Row::Cell> fCells;
    std::string fText;
};

/// Abstract. A cell is bytes: one that is not UTF-8 is a value like any other, and no declared category equals it.
class TableReader {
public:
    TableReader() = default;
    TableReader(const TableReader&) = delete;
    TableReader& operator=(const TableReader&) = delete;
    virtual ~TableReader() = default;

    /// Reads on until there is at least one row. Memory depends on the longest row, not on the number of rows.
    /// Returns: false at the end of the table, and no rows. Fails: Error that names the table, the row (counted from 1
    /// behind the header) and the column.
    virtual bool read(RowBatch& batch) = 0;
};

/// Starts reading a table, header included. source: must outlive the reader. columns: those that are wanted, no name
/// twice; others are passed over. Fails: one Error that lists every wanted column that the table lacks or repeats.
/// In JSON Lines no column can be lacking: a key that a row does not have is a missing cell.
std::unique_ptr<TableReader> openTable(TableKind kind, ByteSource& source, const std::vector<std::string>& columns);

/// Returns: the cells of one line of comma-separated values. Fails: Error for quotes that are wrong.
std::vector<std::string> splitCommaLine(const std::string& line);

}  // namespace brevix
