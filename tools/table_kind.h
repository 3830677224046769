// Which kind of table a file holds.
#pragma once

#include <string>

#include "runtime/TableReader.h"

namespace brevix {

/// option: "csv", "tsv", "jsonl", or empty: then the file's name tells, and otherwise the table is comma-separated.
TableKind chooseTableKind(const std::string& option, const std::string& path);

}  // namespace brevix
