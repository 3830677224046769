// Tables of cases, row by row.
#include "runtime/TableReader.h"

#include "runtime/CsvReader.h"
#include "runtime/JsonLinesReader.h"

namespace brevix {

std::unique_ptr<TableReader> openTable(TableKind kind, ByteSource& source, const std::vector<std::string>& columns,
                                       const std::vector<bool>& isOptional) {
    if (kind == TableKind::kJsonLines)
        return std::make_unique<JsonLinesReader>(source, columns);
    return std::make_unique<CsvReader>(source, kind == TableKind::kTsv ? '\t' : ',', columns, isOptional);
}

}  // namespace brevix
