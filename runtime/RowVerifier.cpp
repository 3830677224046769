// Scores rows with expected results and compares, one after the other.
#include "runtime/RowVerifier.h"

#include <algorithm>
#include <cmath>

#include "host/number_text.h"

namespace brevix {

namespace {

using KwBrevix_930::NumberText;
using KwBrevix_930::ParseNumber;

// As the cells of boolean fields may say it.
std::optional<bool> truthOf(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    if (text == "true" || text == "1")
        return true;
    return text == "false" || text == "0" ? std::optional(false) : std::nullopt;
}

bool isSameText(const OutputValue& actual, const std::string& expected, const std::string& type) {
    if (actual.text == expected)
        return true;
    if (type == "boolean")
        return truthOf(actual.text) && truthOf(actual.text) == truthOf(expected);
    // A category of a number field may be written in several ways.
    const auto number = type == "string" ? std::nullopt : ParseNumber(actual.text);
    return number && number == ParseNumber(expected);
}

bool isAccepted(const OutputValue& actual, const std::string& expected, const RowVerifier::Column& column) {
    if (actual.kind == OutputValue::kAbsent)
        return false;
    if (actual.kind == OutputValue::kText)
        return isSameText(actual, expected, column.column.type);
    const auto number = ParseNumber(expected);
    if (column.column.content == OutputColumn::kStatus)
        return number == actual.number;
    return number && column.tolerance.accepts(*number, actual.number);
}

std::optional<double> relativeError(const OutputValue& actual, const std::string& expected) {
    const auto number = ParseNumber(expected);
    if (actual.kind != OutputValue::kNumber || !number)
        return std::nullopt;
    const double error = std::abs(actual.number - *number) / std::abs(*number);
    return std::isfinite(error) ? std::optional(error) : std::nullopt;
}

std::string showActual(const OutputValue& actual, const Outcome& outcome) {
    if (actual.kind == OutputValue::kAbsent)
        return outcome.status == 0 ? "" : "status " + std::to_string(outcome.status);
    return actual.kind == OutputValue::kText ? actual.text : NumberText(actual.number);
}

}  // namespace

bool Tolerance::accepts(double expected, double actual) const {
    if (std::isnan(expected) || std::isnan(actual))
        return std::isnan(expected) && std::isnan(actual);
    if (std::isinf(expected) || std::isinf(actual))
        return expected == actual;
    if (std::abs(expected) <= zeroThreshold)
        return std::abs(actual) <= zeroThreshold;
    const double one = expected * (1.0 - precision);
    const double other = expected * (1.0 + precision);
    return actual >= std::min(one, other) && actual <= std::max(one, other);
}

RowVerifier::RowVerifier(const ScoringModel& model, std::vector<Column> columns, const DifferenceSink& onDifference)
    : fModel(model),
      fColumns(std::move(columns)),
      fOnDifference(onDifference),
      fRecord(model.makeRecord()),
      fExpected(fColumns.size()) {}

void RowVerifier::verify() {
    fModel.score(fRecord, fOutcome);
    ++fTally.rowCount;
    const std::uint64_t before = fTally.differenceCount;
    for (std::size_t i = 0; i < fColumns.size(); ++i) {
        const std::string& expected = fExpected[i];
        if (expected.empty()) {
            ++fTally.unexpectedCount;
            continue;
        }
        ++fTally.valueCount;
        const OutputValue actual = fModel.getValue(fOutcome, fColumns[i].column);
        if (isAccepted(actual, expected, fColumns[i]))
            continue;
        ++fTally.differenceCount;
        fOnDifference({fTally.rowCount, fColumns[i].column.name, expected, showActual(actual, fOutcome),
                       relativeError(actual, expected)});
    }
    fTally.differingRowCount += fTally.differenceCount > before ? 1 : 0;
}

}  // namespace brevix
