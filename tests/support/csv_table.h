// A small reader of the tables that tests compare with: a header, then cells that may be quoted.
#pragma once

#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace test_support {

struct CsvTable {
    std::vector<std::string> header;
    std::vector<std::vector<std::string>> rows;

    std::size_t Column(const std::string& name) const {
        for (std::size_t i = 0; i < header.size(); ++i) {
            if (header[i] == name)
                return i;
        }
        throw std::runtime_error("no column " + name);
    }
    bool HasColumn(const std::string& name) const {
        for (const auto& column : header) {
            if (column == name)
                return true;
        }
        return false;
    }
};

inline std::vector<std::string> SplitCsvLine(const std::string& line) {
    std::vector<std::string> cells(1);
    bool isQuoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"' && isQuoted && i + 1 < line.size() && line[i + 1] == '"')
            cells.back() += line[i++];
        else if (line[i] == '"')
            isQuoted = !isQuoted;
        else if (line[i] == ',' && !isQuoted)
            cells.emplace_back();
        else if (line[i] != '\r')
            cells.back() += line[i];
    }
    return cells;
}

inline CsvTable ReadCsv(const std::string& path) {
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error("cannot open " + path);
    CsvTable table;
    std::string line;
    while (std::getline(file, line)) {
        if (table.header.empty())
            table.header = SplitCsvLine(line);
        else
            table.rows.push_back(SplitCsvLine(line));
    }
    return table;
}

}  // namespace test_support
