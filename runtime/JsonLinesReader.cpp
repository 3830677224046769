// Tables with one JSON object in each line.
#include "runtime/JsonLinesReader.h"

#include <limits>

#include <nlohmann/json.hpp>

#include "runtime/Error.h"

namespace brevix {

namespace {

using Json = nlohmann::json;

// Takes the events of one line; the first fault ends the reading.
class LineEvents : public nlohmann::json_sax<Json> {
public:
    LineEvents(const std::unordered_map<std::string, std::size_t>& columnByKey, Row& row)
        : fColumnByKey(columnByKey), fRow(row), fSeen(columnByKey.size()) {}

    const std::string& getFault() const { return fFault; }

    bool null() override { return take(Row::kMissing, {}); }
    bool boolean(bool value) override { return take(Row::kBoolean, value ? "true" : "false"); }
    bool number_integer(number_integer_t value) override { return take(Row::kNumber, std::to_string(value)); }
    bool number_unsigned(number_unsigned_t value) override { return take(Row::kNumber, std::to_string(value)); }
    bool number_float(number_float_t, const string_t& text) override { return take(Row::kNumber, text); }
    bool string(string_t& value) override { return take(Row::kText, value); }
    bool binary(binary_t&) override { return false; }

    bool key(string_t& name) override {
        if (fDepth != 1)
            return true;
        const auto found = fColumnByKey.find(name);
        fColumn = found == fColumnByKey.end() ? kNoColumn : found->second;
        if (fColumn == kNoColumn)
            return true;
        if (fSeen[fColumn])
            return fail("the key '" + name + "' stands twice");
        fSeen[fColumn] = true;
        fKey = name;
        return true;
    }

    bool start_object(std::size_t) override { return fDepth == 0 ? descend() : startNested(); }
    bool start_array(std::size_t) override { return fDepth == 0 ? fail("it is not an object") : startNested(); }
    bool end_object() override { return ascend(); }
    bool end_array() override { return ascend(); }

    bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception&) override {
        return fail("it is not JSON at byte " + std::to_string(position));
    }

private:
    static constexpr std::size_t kNoColumn = std::numeric_limits<std::size_t>::max();

    bool take(Row::Kind kind, std::string_view text) {
        if (fDepth == 0)
            return fail("it is not an object");
        if (fDepth == 1 && fColumn != kNoColumn)
            fRow.set(fColumn, kind, text);
        return true;
    }

    bool startNested() {
        if (fDepth == 1 && fColumn != kNoColumn)
            return fail("the key '" + fKey + "' holds a list or an object");
        if (fDepth >= JsonLinesReader::kNestingLimit)
            return fail("it is nested more than " + std::to_string(JsonLinesReader::kNestingLimit) + " deep");
        return descend();
    }

    bool descend() {
        ++fDepth;
        return true;
    }

    bool ascend() {
        --fDepth;
        return true;
    }

    bool fail(const std::string& what) {
        if (fFault.empty())
            fFault = what;
        return false;
    }

    const std::unordered_map<std::string, std::size_t>& fColumnByKey;
    Row& fRow;
    std::vector<bool> fSeen;
    int fDepth = 0;
    std::size_t fColumn = kNoColumn;
    std::string fKey;
    std::string fFault;
};

bool isBlank(std::string_view line) {
    return line.find_first_not_of(" \t\r") == std::string_view::npos;
}

}  // namespace

JsonLinesReader::JsonLinesReader(ByteSource& source, const std::vector<std::string>& columns)
    : fChunks(source), fName(source.getName()), fWidth(columns.size()), fRow(columns.size()) {
    for (const std::string& column : columns)
        fColumnByKey.emplace(column, fColumnByKey.size());
}

bool JsonLinesReader::read(RowBatch& batch) {
    batch.clear();
    while (batch.getRowCount() == 0 && !fIsAtEnd) {
        if (fText.empty())
            takeChunk(batch);
        takeText(batch);
    }
    return batch.getRowCount() > 0;
}

// At the end the line that is open ends too.
void JsonLinesReader::takeChunk(RowBatch& batch) {
    fText = fChunks.next();
    fIsAtEnd = fText.empty();
    if (fIsAtEnd && !fUnfinished.empty())
        takeLine(fUnfinished, batch);
}

void JsonLinesReader::takeText(RowBatch& batch) {
    for (auto end = fText.find('\n'); end != std::string_view::npos; end = fText.find('\n')) {
        if (batch.getRowCount() * fWidth >= kMostCells)
            return;
        if (fUnfinished.empty()) {
            takeLine(fText.substr(0, end), batch);
        } else {
            fUnfinished += fText.substr(0, end);
            takeLine(fUnfinished, batch);
            fUnfinished.clear();
        }
        fText.remove_prefix(end + 1);
    }
    fUnfinished += fText;
    fText = {};
    if (fUnfinished.size() > kLineLimit)
        fail("it is longer than " + std::to_string(kLineLimit) + " bytes");
}

void JsonLinesReader::takeLine(std::string_view line, RowBatch& batch) {
    if (isBlank(line)) {
        fHasEmptyLine = true;
        return;
    }
    if (fHasEmptyLine)
        fail("it is an empty line");
    LineEvents events(fColumnByKey, fRow);
    fRow.clear();
    if (!Json::sax_parse(line.begin(), line.end(), &events))
        fail(events.getFault());
    batch.append(fRow);
    ++fRowCount;
}

void JsonLinesReader::fail(const std::string& what) const {
    throw Error(fName + ": row " + std::to_string(fRowCount + 1) + ": " + what);
}

}  // namespace brevix
