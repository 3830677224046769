// The reference tables of KwDistFun's members, and the members by name: for the tests, the report and the benchmark.
#pragma once

#include <charconv>
#include <fstream>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "numerics/distributions/KwDistFun.h"

namespace distribution_tables {

struct Row {
    std::vector<double> arguments;
    double expected = 0.0;
    double density = 0.0;  // of an inverse, at the result
};

using Member = std::function<double(const std::vector<double>&)>;

// Each member over plain doubles; flags are dropped, tolerances are the defaults.
inline const std::map<std::string, Member>& Members() {
    using F = KwMath_930::KwDistFun;
    using V = std::vector<double>;
    static const std::map<std::string, Member> members = {
        {"CdfStdNorm", [](const V& v) { return F::CdfStdNorm(v[0]); }},
        {"CdfNorm", [](const V& v) { return F::CdfNorm(v[0], v[1], v[2]); }},
        {"PdfNormalStandard", [](const V& v) { return F::PdfNormalStandard(v[0]); }},
        {"PdfNormal", [](const V& v) { return F::PdfNormal(v[0], v[1], v[2]); }},
        {"IdfStdNorm", [](const V& v) { return F::IdfStdNorm(v[0]); }},
        {"IdfNorm", [](const V& v) { return F::IdfNorm(v[0], v[1], v[2]); }},
        {"zarndnlgam", [](const V& v) { return F::zarndnlgam(v[0]); }},
        {"CdfChi", [](const V& v) { return F::CdfChi(v[0], v[1]); }},
        {"SigChi", [](const V& v) { return F::SigChi(v[0], v[1]); }},
        {"IdfChi", [](const V& v) { return F::IdfChi(v[0], v[1]); }},
        {"CdfGam", [](const V& v) { return F::CdfGam(v[0], v[1], v[2]); }},
        {"PdfGamma", [](const V& v) { return F::PdfGamma(v[0], v[1], v[2]); }},
        {"IdfGam", [](const V& v) { return F::IdfGam(v[0], v[1], v[2]); }},
        {"CdfBeta", [](const V& v) { return F::CdfBeta(v[0], v[1], v[2]); }},
        {"IdfBeta", [](const V& v) { return F::IdfBeta(v[0], v[1], v[2]); }},
        {"CdfT", [](const V& v) { return F::CdfT(v[0], v[1]); }},
        {"SigT", [](const V& v) { return F::SigT(v[0], v[1]); }},
        {"PdfT",
         [](const V& v) {
             long ier = 0;
             return F::PdfT(v[0], v[1], ier);
         }},
        {"IdfT", [](const V& v) { return F::IdfT(v[0], v[1], 0.0, 0.0); }},
        {"CdfF", [](const V& v) { return F::CdfF(v[0], v[1], v[2]); }},
        {"SigF", [](const V& v) { return F::SigF(v[0], v[1], v[2]); }},
        {"IdfF", [](const V& v) { return F::IdfF(v[0], v[1], v[2]); }},
        {"CdfBin",
         [](const V& v) {
             long ier = 0;
             return F::CdfBin(v[0], v[1], v[2], ier);
         }},
        {"PdfBin",
         [](const V& v) {
             long ier = 0;
             return F::PdfBin(v[0], v[1], v[2], ier);
         }},
        {"IdfBin",
         [](const V& v) {
             long ier = 0;
             return F::IdfBin(v[0], v[1], v[2], ier);
         }},
        {"PdfNegBin",
         [](const V& v) {
             long ier = 0;
             return F::PdfNegBin(v[0], v[1], v[2], ier);
         }},
        {"CDFHyper",
         [](const V& v) {
             int ier = 0;
             return F::CDFHyper(v[0], v[1], v[2], v[3], ier);
         }},
        {"PdfHyper",
         [](const V& v) {
             return F::PdfHyper(static_cast<long>(v[0]), static_cast<long>(v[1]), static_cast<long>(v[2]),
                                static_cast<long>(v[3]));
         }},
        {"NonCentralCdfChi", [](const V& v) { return F::NonCentralCdfChi(v[0], v[1], v[2]); }},
        {"NonCentralCdfF", [](const V& v) { return F::NonCentralCdfF(v[0], v[1], v[2], v[3], 0.0); }},
        {"NonCentralCdfT", [](const V& v) { return F::NonCentralCdfT(v[0], v[1], v[2], 0.0); }},
        {"NonCentralPdfT",
         [](const V& v) {
             long ier = 0;
             return F::NonCentralPdfT(v[0], v[1], v[2], ier);
         }},
        {"FindNCParamChi", [](const V& v) { return F::FindNCParamChi(v[0], v[1], v[2], 0.0); }},
        {"FindNCParamF", [](const V& v) { return F::FindNCParamF(v[0], v[1], v[2], v[3], 0.0); }},
        {"FindNCParamT", [](const V& v) { return F::FindNCParamT(v[0], v[1], v[2], 0.0, 0.0); }}};
    return members;
}

// A decimal or a hexadecimal number, whole cell.
inline double ParseNumber(std::string_view text) {
    bool isNegative = false;
    if (text.substr(0, 1) == "-") {
        isNegative = true;
        text.remove_prefix(1);
    }
    auto format = std::chars_format::general;
    if (text.substr(0, 2) == "0x") {
        format = std::chars_format::hex;
        text.remove_prefix(2);
    }
    double value = 0.0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), value, format);
    if (end.ec != std::errc() || end.ptr != text.data() + text.size()) {
        throw std::runtime_error("not a number: " + std::string(text));
    }
    return isNegative ? -value : value;
}

inline std::vector<std::string> SplitRow(const std::string& line) {
    std::vector<std::string> cells(1);
    for (const char c : line) {
        if (c == ',') {
            cells.emplace_back();
        } else {
            cells.back() += c;
        }
    }
    return cells;
}

// The table of a member; folder is the source tree's root.
inline std::vector<Row> ReadTable(const std::string& folder, const std::string& member) {
    const std::string path = folder + "/tests/reference/distributions/" + member + ".csv";
    std::ifstream file(path);
    if (!file) {
        throw std::runtime_error("cannot open " + path);
    }
    std::vector<Row> rows;
    std::vector<std::string> names;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        const auto cells = SplitRow(line);
        if (names.empty()) {
            names = cells;
            continue;
        }
        Row row;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const double value = ParseNumber(cells.at(i));
            if (names.at(i) == "expected") {
                row.expected = value;
            } else if (names[i] == "density") {
                row.density = value;
            } else {
                row.arguments.push_back(value);
            }
        }
        rows.push_back(row);
    }
    return rows;
}

}  // namespace distribution_tables
