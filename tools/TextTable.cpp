// Tables for a terminal.
#include "tools/TextTable.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

#include "runtime/printable_text.h"

namespace brevix {

namespace {

constexpr std::size_t kGap = 2;
constexpr std::string_view kEllipsis = "...";

struct PointRange {
    std::uint32_t first;
    std::uint32_t last;
};

// Characters of the scripts and symbols that terminals show two columns wide.
constexpr PointRange kWide[] = {{0x1100, 0x115F},   {0x2E80, 0xA4CF},   {0xAC00, 0xD7A3},  {0xF900, 0xFAFF},
                                {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},  {0x1F300, 0x1F64F},
                                {0x1F680, 0x1F6FF}, {0x1F900, 0x1FAFF}, {0x20000, 0x3FFFD}};
// Marks that stand on the character before them.
constexpr PointRange kCombining[] = {{0x0300, 0x036F}, {0x1AB0, 0x1AFF}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}};

template <std::size_t count>
bool isIn(const PointRange (&ranges)[count], std::uint32_t point) {
    return std::any_of(ranges, ranges + count,
                       [point](const PointRange& range) { return point >= range.first && point <= range.last; });
}

std::uint32_t pointOf(std::string_view character) {
    const auto lead = static_cast<unsigned char>(character[0]);
    std::uint32_t point = character.size() == 1 ? lead : lead & (0x7Fu >> character.size());
    for (std::size_t i = 1; i < character.size(); ++i)
        point = (point << 6) | (static_cast<unsigned char>(character[i]) & 0x3Fu);
    return point;
}

std::size_t widthOf(std::string_view character) {
    const std::uint32_t point = pointOf(character);
    return isIn(kCombining, point) ? 0 : isIn(kWide, point) ? 2 : 1;
}

// Hands on each character of a text until one is refused.
template <class Take>
void forEachCharacter(std::string_view text, const Take& take) {
    while (!text.empty()) {
        const std::size_t length = std::max<std::size_t>(utf8Length(text), 1);
        if (!take(text.substr(0, length)))
            return;
        text.remove_prefix(length);
    }
}

// The length in bytes of the longest start of a text that takes no more columns than most.
std::size_t fittingLength(std::string_view text, std::size_t most) {
    std::size_t width = 0;
    std::size_t length = 0;
    forEachCharacter(text, [&](std::string_view character) {
        width += widthOf(character);
        if (width > most)
            return false;
        length += character.size();
        return true;
    });
    return length;
}

}  // namespace

std::size_t displayWidth(std::string_view text) {
    std::size_t width = 0;
    forEachCharacter(text, [&](std::string_view character) {
        width += widthOf(character);
        return true;
    });
    return width;
}

std::string elided(const std::string& text, std::size_t most) {
    if (displayWidth(text) <= most)
        return text;
    const std::size_t room = most > kEllipsis.size() ? most - kEllipsis.size() : 0;
    return text.substr(0, fittingLength(text, room)) + std::string(kEllipsis.substr(0, most));
}

std::string wrapped(const std::string& heading, const std::string& text) {
    const std::size_t room = TextTable::kWidth - displayWidth(heading);
    const std::string indent(displayWidth(heading), ' ');
    std::string lines;
    std::string_view rest = text;
    do {
        std::size_t length = fittingLength(rest, room);
        const std::size_t blank = rest.rfind(' ', length);
        const bool isCutAtBlank = length < rest.size() && blank != std::string_view::npos && blank > 0;
        if (isCutAtBlank)
            length = blank;
        lines += (lines.empty() ? heading : indent) + std::string(rest.substr(0, length)) + "\n";
        rest.remove_prefix(length + (isCutAtBlank ? 1 : 0));
    } while (!rest.empty());
    return lines;
}

std::string listed(const std::vector<std::string>& names, std::size_t most) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string next = text + (i == 0 ? "" : ", ") + names[i];
        const std::string rest = " and " + std::to_string(names.size() - i) + " more";
        if (i > 0 && displayWidth(next) + (i + 1 < names.size() ? rest.size() : 0) > most)
            return text + rest;
        text = next;
    }
    return text;
}

void TextTable::add(std::vector<std::string> cells) {
    for (std::string& cell : cells)
        cell = printableText(cell);
    fRows.push_back(std::move(cells));
}

std::vector<std::size_t> TextTable::chooseWidths() const {
    std::vector<std::size_t> widths(fRows.front().size());
    for (const auto& row : fRows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], displayWidth(row[i]));
    }
    const std::size_t room = kWidth - kGap * (widths.size() - 1);
    while (std::accumulate(widths.begin(), widths.end(), std::size_t{0}) > room)
        --*std::max_element(widths.begin(), widths.end());
    return widths;
}

std::string TextTable::makeText() const {
    const auto widths = chooseWidths();
    std::string text;
    for (const auto& row : fRows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string cell = elided(row[i], widths[i]);
            line += cell + std::string(widths[i] - displayWidth(cell) + kGap, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

}  // namespace brevix
