// Scores a table: rows in, rows out, in the same order, on as many threads as wanted.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "runtime/ByteSource.h"
#include "runtime/Export.h"
#include "runtime/TableReader.h"

namespace brevix {

class OutputFile;
class ScoringModel;

struct TableOptions {
    TableKind inputKind = TableKind::kCsv;
    TableKind outputKind = TableKind::kCsv;
    /// Input columns that are copied in front of the results.
    std::vector<std::string> keptColumns = {};
    /// Texts that stand for a missing cell, beside the empty one.
    std::vector<std::string> missingTexts = {};
    /// 0: one for each processor.
    int threadCount = 0;
};

struct TableTally {
    std::uint64_t rowCount = 0;
    std::map<std::int32_t, std::uint64_t> rowCountByStatus;
};

/// What the caller of scoreTable wants to hear of; never called by two threads at once.
struct TableEvents {
    /// The table's first rows are read, nothing is written yet.
    std::function<void()> onStart = {};
    /// Some rows more are written.
    std::function<void(const TableTally&)> onRows = {};
};

/// Makes one result row for each row of the source. openOutput is called when the header of the source has been found
/// right. Memory does not grow with the number of rows.
/// Fails: Error for a source that cannot be read, or an output that cannot be written; the output is not committed,
/// here or ever.
BREVIX_RUNTIME_API TableTally scoreTable(const ScoringModel& model, ByteSource& source,
                                         const std::function<OutputFile&()>& openOutput, const TableOptions& options,
                                         const TableEvents& events);

}  // namespace brevix
