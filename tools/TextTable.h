// Tables for a terminal.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brevix {

/// Columns stand side by side, as wide as their widest cell; no line is wider than 100 columns.
class TextTable {
public:
    static constexpr std::size_t kWidth = 100;

    explicit TextTable(std::vector<std::string> headings) : fRows{std::move(headings)} {}

    /// cells: one for each heading; their control characters are escaped. Where the columns take too much room, the
    /// widest lose the ends of their cells.
    void add(std::vector<std::string> cells);
    bool isEmpty() const { return fRows.size() == 1; }
    /// Returns: the headings and the rows, each with its line end.
    std::string makeText() const;

private:
    std::vector<std::size_t> chooseWidths() const;

    std::vector<std::vector<std::string>> fRows;
};

/// Returns: how many columns of a terminal a text takes.
std::size_t displayWidth(std::string_view text);
/// Returns: the text, or its start and "..." where it takes more columns than most.
std::string elided(const std::string& text, std::size_t most);
/// Returns: the text cut at blanks into lines of at most TextTable::kWidth columns, each with a line end; the first
/// starts with a heading, the others are indented by its width.
std::string wrapped(const std::string& heading, const std::string& text);
/// Returns: the names with commas between them; of many that take more than most columns the rest is counted.
std::string listed(const std::vector<std::string>& names, std::size_t most);

}  // namespace brevix
