// Turns outcomes into the text of a result table. What does not change from row to row is made once.
#include "runtime/RowWriter.h"

#include <cmath>
#include <unordered_set>

#include <nlohmann/json.hpp>

#include "runtime/Error.h"
#include "runtime/ScoringModel.h"

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

// Returns: what most columns show, where it is there; null otherwise.
const double* findNumber(const Outcome& outcome, const OutputColumn& column) {
    if (column.content == OutputColumn::kProbability)
        return static_cast<std::size_t>(column.category) < outcome.probabilities.size()
                   ? &outcome.probabilities[static_cast<std::size_t>(column.category)]
                   : nullptr;
    if (column.content == OutputColumn::kConfidence)
        return outcome.confidence ? &*outcome.confidence : nullptr;
    return nullptr;
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
      fLineEnd(isJson() ? "}\n" : "\n") {
    for (const std::string& name : nameColumns(fKept, model)) {
        const bool isFirst = fPrefixes.empty();
        std::string prefix(isFirst ? 0 : 1, fSeparator);
        if (isJson()) {
            prefix.assign(1, isFirst ? '{' : ',');
            appendJsonText(prefix, name);
            prefix += ':';
        }
        fPrefixes.push_back(prefix);
    }
    for (const std::string& category : model.getCategories())
        appendTyped(fCategoryTexts.emplace_back(), category, model.getOutputColumns().front());
}

std::string RowWriter::makeHeader() const {
    std::string header;
    if (isJson())
        return header;
    const auto names = nameColumns(fKept, fModel);
    for (std::size_t i = 0; i < names.size(); ++i) {
        header += fPrefixes[i];
        appendText(header, names[i]);
    }
    return header + fLineEnd;
}

void RowWriter::append(std::string& out, const RowBatch& batch, std::size_t row, const Outcome& outcome,
                       NumberTexts& texts) const {
    std::size_t place = 0;
    for (const KeptColumn& column : fKept) {
        out += fPrefixes[place++];
        appendKept(out, batch, row, column.place);
    }
    for (const OutputColumn& column : fModel.getOutputColumns()) {
        out += fPrefixes[place++];
        appendResult(out, column, outcome, texts);
    }
    out += fLineEnd;
}

void RowWriter::appendKept(std::string& out, const RowBatch& batch, std::size_t row, std::size_t column) const {
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
    if (column.content == OutputColumn::kPrediction && outcome.category >= 0) {
        out += fCategoryTexts[static_cast<std::size_t>(outcome.category)];
        return;
    }
    if (const double* number = findNumber(outcome, column))
        return appendNumber(out, *number, texts);
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
    if (isJson())
        out += "null";
}

}  // namespace brevix
