// Reads the tables of tests/reference: remarks, a line of column names, rows of numbers.
#pragma once

#include <algorithm>
#include <charconv>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace test_support {

/// Returns: the number that the whole text writes, decimal or as a hex float (0x1.8p-3).
inline double ParseReferenceNumber(const std::string& text) {
    const bool isNegative = text.starts_with("-");
    const bool isHex = text.find("0x") != std::string::npos;
    const char* begin = text.data() + (isNegative ? 1 : 0) + (isHex ? 2 : 0);
    const char* end = text.data() + text.size();
    double magnitude = 0.0;
    const auto [stop, error] =
        std::from_chars(begin, end, magnitude, isHex ? std::chars_format::hex : std::chars_format::general);
    if (error != std::errc() || stop != end)
        throw std::runtime_error("no number: " + text);
    return isNegative ? -magnitude : magnitude;
}

/// Returns: the rows of tests/reference/<name>, all of which have the given number of columns and are at least one.
inline std::vector<std::vector<double>> ReadReferenceRows(const std::string& name, std::size_t columns) {
    std::ifstream file(std::string(BREVIX_SOURCE_DIR) + "/tests/reference/" + name);
    std::vector<std::vector<double>> rows;
    std::string line;
    bool isNamed = false;
    while (std::getline(file, line)) {
        if (line.starts_with("#"))
            continue;
        if (!isNamed) {
            isNamed = true;
            continue;
        }
        rows.emplace_back();
        for (std::size_t begin = 0; begin <= line.size();) {
            const std::size_t end = std::min(line.find(',', begin), line.size());
            rows.back().push_back(ParseReferenceNumber(line.substr(begin, end - begin)));
            begin = end + 1;
        }
        if (rows.back().size() != columns)
            throw std::runtime_error(name + ": wrong number of columns: " + line);
    }
    if (rows.empty())
        throw std::runtime_error(name + ": no rows");
    return rows;
}

}  // namespace test_support
