// Which kind of table a file holds.
#include "tools/table_kind.h"

#include <algorithm>

#include "runtime/platform/files.h"

namespace brevix {

namespace {

TableKind kindOfName(const std::string& path) {
    std::string ending = platform::toText(platform::toPath(path).extension());
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    if (ending == ".tsv" || ending == ".tab")
        return TableKind::kTsv;
    if (ending == ".jsonl" || ending == ".ndjson")
        return TableKind::kJsonLines;
    return TableKind::kCsv;
}

}  // namespace

TableKind chooseTableKind(const std::string& option, const std::string& path) {
    if (option.empty())
        return kindOfName(path);
    return option == "csv" ? TableKind::kCsv : option == "tsv" ? TableKind::kTsv : TableKind::kJsonLines;
}

}  // namespace brevix
