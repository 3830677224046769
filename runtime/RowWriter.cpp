// Turns outcomes into the text of a result table. What does not change from row to row is made once.
#include "runtime/RowWriter.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_set>

#include <nlohmann/json.hpp>

#include "runtime/Error.h"
#include "runtime/ScoringModel.h"
#include "runtime/output_columns.h"

namespace brevix {

namespace {

std::vector<std::string> nameColumns(const std::vector<KeptColumn>& kept, const ScoringModel& model) {
    std::vector<std::string> names;
    for (const KeptColumn& column : kept)
        names.push_back(column.name);
    for (const OutputColumn& column : model.getOutputColumns())
        names.push_back(column.name);
    std::unordered_set<std::string> known;
    for (const std::string& name : names) {
        if (!known.insert(name).second)
            throw Error("the result would have two columns '" + name + "'");
    }
    return names;
}

void appendQuoted(std::string& out, std::string_view text, char separator) {
    const char special[] = {separator, '"', '\r', '\n'};
    if (text.find_first_of(std::string_view(special, sizeof special)) == std::string_view::npos) {
        out += text;
        return;
    }
    out += '"';
    for (const char c : text) {
        if (c == '"')
            out += '"';
        out += c;
    }
    out += '"';
}

void appendJsonText(std::string& out, std::string_view text) {
    out += nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace

RowWriter::RowWriter(TableKind kind, const ScoringModel& model, std::vector<KeptColumn> kept)
    : fKind(kind),
      fSeparator(kind == TableKind::kTsv ? '\t' : ','),
      fModel(model),
      fKept(std::move(kept)),
      fLineEnd(isJson() ? "}\n" : "\n"),
      fAbsent(isJson() ? "null" : "") {
    const auto names = nameColumns(fKept, model);
    for (std::size_t i = 0; i < names.size(); ++i) {
        std::string prefix(i == 0 ? 0 : 1, fSeparator);
        if (isJson()) {
            prefix.assign(1, i == 0 ? '{' : ',');
            appendJsonText(prefix, names[i]);
            prefix += ':';
        }
        if (i < fKept.size())
            fKeptPrefixes.push_back(prefix);
        else
            fResults.push_back({&model.getOutputColumns()[i - fKept.size()], Piece(prefix)});
    }
    // With room for quotes around a number.
    std::size_t longestCell = NumberTexts::kLongest + 2;
    for (const std::string& category : model.getCategories()) {
        std::string text;
        appendTyped(text, category, model.getOutputColumns().front());
        longestCell = std::max(longestCell, text.size());
        fCategoryTexts.emplace_back(text);
    }
    fLongest = 2 * Piece::kShort;
    for (const Result& result : fResults) {
        fIsFixed = fIsFixed && result.column->content != OutputColumn::kField;
        fLongest += result.prefix.get().size() + longestCell;
    }
}

RowWriter::Piece::Piece(const std::string& text) : fSize(text.size()), fIsLong(text.size() > kShort) {
    if (fIsLong)
        fLong = text;
    else
        text.copy(fText, kShort);
}

std::string RowWriter::makeHeader() const {
    std::string header;
    if (isJson())
        return header;
    const auto names = nameColumns(fKept, fModel);
    for (std::size_t i = 0; i < names.size(); ++i) {
        header += i < fKept.size() ? std::string_view(fKeptPrefixes[i]) : fResults[i - fKept.size()].prefix.get();
        appendText(header, names[i]);
    }
    header += fLineEnd.get();
    return header;
}

void RowWriter::appendKept(std::string& out, const RowBatch& batch, std::size_t row) const {
    for (std::size_t i = 0; i < fKept.size(); ++i) {
        out += fKeptPrefixes[i];
        appendCell(out, batch, row, fKept[i].place);
    }
}

void RowWriter::appendResults(std::string& out, const Outcome& outcome, NumberTexts& texts) const {
    if (fIsFixed)
        return appendFixed(out, outcome, texts);
    for (const Result& result : fResults) {
        out += result.prefix.get();
        appendResult(out, *result.column, outcome, texts);
    }
    out += fLineEnd.get();
}

// Makes room once for all results.
void RowWriter::appendFixed(std::string& out, const Outcome& outcome, NumberTexts& texts) const {
    const std::size_t start = out.size();
    out.resize(start + fLongest);
    char* to = out.data() + start;
    for (const Result& result : fResults) {
        to = result.prefix.write(to);
        if (result.column->content == OutputColumn::kPrediction && outcome.category >= 0)
            to = fCategoryTexts[static_cast<std::size_t>(outcome.category)].write(to);
        else if (const double* number = findNumber(outcome, *result.column))
            to = writeNumber(*number, texts, to);
        else if (result.column->content == OutputColumn::kStatus)
            to = writeNumber(outcome.status, texts, to);
        else
            to = fAbsent.write(to);
    }
    to = fLineEnd.write(to);
    out.resize(static_cast<std::size_t>(to - out.data()));
}

// JSON has no numbers that are not finite.
char* RowWriter::writeNumber(double number, NumberTexts& texts, char* to) const {
    const bool isQuoted = isJson() && !std::isfinite(number);
    if (isQuoted)
        *to++ = '"';
    const std::string_view text = texts.get(number);
    std::memcpy(to, text.data(), NumberTexts::kLongest);
    to += text.size();
    if (isQuoted)
        *to++ = '"';
    return to;
}

void RowWriter::appendCell(std::string& out, const RowBatch& batch, std::size_t row, std::size_t column) const {
    const Row::Kind kind = batch.getKind(row, column);
    const std::string_view text = batch.getText(row, column);
    if (kind == Row::kMissing)
        appendAbsent(out);
    else if (isJson() && kind != Row::kText)
        out += text;
    else
        appendText(out, text);
}

void RowWriter::appendResult(std::string& out, const OutputColumn& column, const Outcome& outcome,
                             NumberTexts& texts) const {
    const OutputValue value = fModel.getValue(outcome, column);
    switch (value.kind) {
        case OutputValue::kAbsent:
            return appendAbsent(out);
        case OutputValue::kNumber:
            return appendNumber(out, value.number, texts);
        case OutputValue::kText:
            return appendTyped(out, value.text, column);
    }
}

void RowWriter::appendNumber(std::string& out, double number, NumberTexts& texts) const {
    const std::string_view text = texts.get(number);
    if (isJson() && !std::isfinite(number))
        appendJsonText(out, text);
    else
        out += text;
}

// JSON has truth values of its own.
void RowWriter::appendTyped(std::string& out, const std::string& text, const OutputColumn& column) const {
    if (isJson() && column.type == "boolean" && (text == "true" || text == "false"))
        out += text;
    else
        appendText(out, text);
}

void RowWriter::appendText(std::string& out, std::string_view text) const {
    if (isJson())
        appendJsonText(out, text);
    else
        appendQuoted(out, text, fSeparator);
}

void RowWriter::appendAbsent(std::string& out) const {
    out += fAbsent.get();
}

}  // namespace brevix
