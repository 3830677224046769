// Which kind of table a file holds.
#include "tools/table_kind.h"

#include <algorithm>
#include <filesystem>

namespace brevix {

namespace {

TableKind kindOfName(const std::string& path) {
    std::string ending = std::filesystem::path(path).extension().string();
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
