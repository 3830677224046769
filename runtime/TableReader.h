// Tables of cases, row by row.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "runtime/ByteSource.h"
#include "runtime/Export.h"
#include "runtime/RowBatch.h"

namespace brevix {

enum class TableKind { kCsv, kTsv, kJsonLines };

/// Abstract. A cell is bytes: one that is not UTF-8 is a value like any other, and no declared category equals it.
class BREVIX_RUNTIME_API TableReader {
public:
    TableReader() = default;
    TableReader(const TableReader&) = delete;
    TableReader& operator=(const TableReader&) = delete;
    virtual ~TableReader() = default;

    /// Reads on until there is at least one row. Memory depends on the longest row, not on the number of rows.
    /// Returns: false at the end of the table, and no rows.
    /// Fails: Error that names the table, the row (counted from 1 behind the header) and the column.
    virtual bool read(RowBatch& batch) = 0;

    /// Returns: whether the table has the column of that place among those asked for. JSON Lines tell of no column
    /// beforehand: there it is true of all.
    virtual bool hasColumn(std::size_t column) const = 0;
};

/// Starts reading a table, header included. source: must outlive the reader. columns: those that are wanted, no name
/// twice; others are passed over. isOptional: for each of them whether the table may lack it, and its cells are missing
/// then; empty: none.
/// Fails: one Error that lists every required column that the table lacks, and every wanted one that it repeats. In
/// JSON Lines no column can be lacking: a key that a row does not have is a missing cell.
BREVIX_RUNTIME_API std::unique_ptr<TableReader> openTable(TableKind kind, ByteSource& source,
                                                          const std::vector<std::string>& columns,
                                                          const std::vector<bool>& isOptional = {});

}  // namespace brevix
