// Every built-in function against a table of values: numbers to a few units in the last place, texts exactly.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "host/number_text.h"
#include "tests/host/DerivedFields.h"
#include "tests/support/csv_table.h"

namespace {

struct Row {
    std::string function;
    std::string expected;
    std::vector<std::string> arguments;
};

std::vector<Row> ReadRows() {
    std::ifstream file(BREVIX_SOURCE_DIR "/tests/reference/transform/built_in_functions.csv");
    std::vector<Row> rows;
    std::string line;
    while (std::getline(file, line)) {
        if (line.starts_with('#') || line == "function,expected,arguments")
            continue;
        std::vector<std::string> cells = test_support::SplitCsvLine(line);
        for (std::string& cell : cells) {
            for (std::size_t at; (at = cell.find("\\n")) != std::string::npos;)
                cell.replace(at, 2, "\n");
        }
        rows.push_back({cells.at(0), cells.at(1), {cells.begin() + 2, cells.end()}});
    }
    return rows;
}

bool IsText(const std::string& value) {
    return value.starts_with('\'');
}

bool IsBoolean(const std::string& value) {
    return value == "true" || value == "false";
}

// The field of an argument, of the type that its value has.
std::string FieldOf(const std::string& name, const std::string& value) {
    const std::string type = IsText(value) ? "string" : IsBoolean(value) ? "boolean" : "double";
    return "<DataField name='" + name + "' dataType='" + type + "'><Value value='bad' property='invalid'/></DataField>";
}

std::string Escaped(const std::string& text) {
    std::string result;
    for (const char letter : text)
        result += letter == '<' ? "&lt;" : letter == '&' ? "&amp;" : std::string(1, letter);
    return result;
}

// A value that says its type, for one that does not: of another argument in the row, or of the function's first row.
class Types {
public:
    explicit Types(const std::vector<Row>& rows) {
        for (const Row& row : rows) {
            for (std::size_t i = 0; i < row.arguments.size(); ++i) {
                if (IsTyped(row.arguments[i]))
                    fFirst.emplace(std::pair(row.function, i), row.arguments[i]);
            }
        }
    }

    std::string Of(const Row& row, std::size_t i) const {
        const auto found = fFirst.find({row.function, i});
        return IsTyped(row.arguments[i]) || found == fFirst.end() ? row.arguments[i] : found->second;
    }

private:
    static bool IsTyped(const std::string& value) { return value != "missing" && value != "invalid"; }

    std::map<std::pair<std::string, std::size_t>, std::string> fFirst;
};

// What a function gives over fields with the row's values.
std::string Compute(const Row& row, const Types& types) {
    std::string fields;
    std::string apply = "<Apply function='" + Escaped(row.function) + "'>";
    for (std::size_t i = 0; i < row.arguments.size(); ++i) {
        const std::string name = "a" + std::to_string(i);
        fields += FieldOf(name, types.Of(row, i));
        apply += "<FieldRef field='" + name + "'/>";
    }
    const std::string type = IsText(row.expected) ? "string" : "double";
    DerivedFields derived(fields, "<DerivedField name='d' optype='categorical' dataType='" + type + "'>" + apply +
                                      "</Apply></DerivedField>");
    for (std::size_t i = 0; i < row.arguments.size(); ++i) {
        const std::string& value = row.arguments[i];
        const std::string name = "a" + std::to_string(i);
        if (value == "missing")
            derived.SetMissing(name);
        else if (value == "invalid")
            derived.Set(name, "bad");
        else
            derived.Set(name, IsBoolean(value) ? value : value.substr(1));
    }
    return derived.Derive("d");
}

bool IsExpected(const std::string& found, const std::string& expected) {
    if (IsText(expected))
        return found == expected + "'";
    if (IsBoolean(expected))
        return found == (expected == "true" ? "1" : "0");
    if (!expected.starts_with('#'))
        return found == expected;
    const auto one = KwBrevix_930::ParseNumber(found);
    const auto other = KwBrevix_930::ParseNumber(expected.substr(1));
    return one && other && std::fabs(*one - *other) <= 4.0 * std::numeric_limits<double>::epsilon() * std::fabs(*other);
}

std::string Described(const Row& row) {
    std::string text = row.function + "(";
    for (const std::string& argument : row.arguments)
        text += " " + argument;
    return text + " )";
}

TEST(BuiltInFunctions, GiveTheValuesOfTheTable) {
    const std::vector<Row> rows = ReadRows();
    ASSERT_GT(rows.size(), 700u);
    const Types types(rows);
    for (const Row& row : rows) {
        std::string found;
        try {
            found = Compute(row, types);
        } catch (const std::exception& error) {
            found = error.what();
        }
        EXPECT_TRUE(IsExpected(found, row.expected))
            << Described(row) << " gives " << found << ", not " << row.expected;
    }
}

// All that the standard has.
const char* const kNames[] = {"+",
                              "-",
                              "*",
                              "/",
                              "min",
                              "max",
                              "sum",
                              "avg",
                              "median",
                              "product",
                              "log10",
                              "ln",
                              "sqrt",
                              "abs",
                              "exp",
                              "pow",
                              "threshold",
                              "floor",
                              "ceil",
                              "round",
                              "modulo",
                              "isMissing",
                              "isNotMissing",
                              "isValid",
                              "isNotValid",
                              "equal",
                              "notEqual",
                              "lessThan",
                              "lessOrEqual",
                              "greaterThan",
                              "greaterOrEqual",
                              "and",
                              "or",
                              "not",
                              "isIn",
                              "isNotIn",
                              "if",
                              "uppercase",
                              "lowercase",
                              "substring",
                              "trimBlanks",
                              "formatNumber",
                              "formatDatetime",
                              "concat",
                              "replace",
                              "matches",
                              "stringLength",
                              "dateDaysSinceYear",
                              "dateSecondsSinceYear",
                              "dateSecondsSinceMidnight",
                              "rint",
                              "expm1",
                              "hypot",
                              "ln1p",
                              "sin",
                              "asin",
                              "sinh",
                              "cos",
                              "acos",
                              "cosh",
                              "tan",
                              "atan",
                              "tanh",
                              "erf",
                              "normalCDF",
                              "normalIDF",
                              "normalPDF",
                              "stdNormalCDF",
                              "stdNormalIDF",
                              "stdNormalPDF"};

TEST(BuiltInFunctions, HaveFiveRowsOrMoreEach) {
    std::map<std::string, int> counts;
    for (const Row& row : ReadRows())
        ++counts[row.function];
    for (const char* name : kNames)
        EXPECT_GE(counts[name], 5) << name;
    EXPECT_EQ(counts.size(), std::size(kNames));
}

}  // namespace
