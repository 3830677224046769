// Comma-separated and tab-separated tables. Rows with quotes are cut into cells by libcsv. Its call-backs are C: what
// they throw is kept until its call has returned.
#include "runtime/CsvReader.h"

#include <csv.h>

#include <algorithm>
#include <new>
#include <unordered_map>
#include <utility>

#include "runtime/CellMarks.h"
#include "runtime/Error.h"

namespace brevix {

namespace {

constexpr std::size_t kBufferStep = 64 * 1024;

int isNeverBlank(unsigned char) {
    return 0;
}

std::string listed(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "'" : ", '") + name + "'";
    return text;
}

// Which column of the table each wanted one is, turned around. Fails: one Error for all that are lacking or repeated.
std::vector<int> findColumns(const std::vector<std::string>& header, const std::vector<std::string>& wanted,
                             const std::vector<bool>& isOptional, const std::string& table) {
    std::unordered_map<std::string, int> wantedByName;
    for (const std::string& name : wanted)
        wantedByName.emplace(name, static_cast<int>(wantedByName.size()));
    std::vector<int> wantedByColumn;
    std::vector<int> timesSeen(wanted.size());
    std::vector<std::string> repeated;
    for (const std::string& name : header) {
        const auto found = wantedByName.find(name);
        wantedByColumn.push_back(found == wantedByName.end() ? -1 : found->second);
        if (found != wantedByName.end() && ++timesSeen[static_cast<std::size_t>(found->second)] == 2)
            repeated.push_back(name);
    }
    std::vector<std::string> lacking;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (timesSeen[i] == 0 && (isOptional.empty() || !isOptional[i]))
            lacking.push_back(wanted[i]);
    }
    std::string text;
    if (!lacking.empty())
        text = (lacking.size() == 1 ? "the table lacks the column " : "the table lacks the columns ") + listed(lacking);
    if (!repeated.empty())
        text += (text.empty() ? "" : "; ") + std::string("the header repeats ") + listed(repeated);
    if (!text.empty())
        throw Error(table + ": " + text);
    return wantedByColumn;
}

std::vector<std::size_t> findLacking(std::size_t wantedCount, const std::vector<int>& wantedByColumn) {
    std::vector<bool> isThere(wantedCount);
    for (const int wanted : wantedByColumn) {
        if (wanted >= 0)
            isThere[static_cast<std::size_t>(wanted)] = true;
    }
    std::vector<std::size_t> lacking;
    for (std::size_t i = 0; i < wantedCount; ++i) {
        if (!isThere[i])
            lacking.push_back(i);
    }
    return lacking;
}

}  // namespace

CsvReader::CsvReader(ByteSource& source, char separator, const std::vector<std::string>& columns,
                     const std::vector<bool>& isOptional)
    : fChunks(source),
      fName(source.getName()),
      fWanted(columns),
      fIsOptional(isOptional),
      fParser(std::make_unique<csv_parser>()),
      fSeparator(separator),
      fRow(columns.size()) {
    csv_init(fParser.get(), CSV_STRICT | CSV_STRICT_FINI | CSV_REPALL_NL);
    csv_set_delim(fParser.get(), static_cast<unsigned char>(separator));
    csv_set_space_func(fParser.get(), isNeverBlank);
    csv_set_blk_size(fParser.get(), kBufferStep);
    try {
        readHeader();
    } catch (...) {
        csv_free(fParser.get());
        throw;
    }
}

CsvReader::~CsvReader() {
    csv_free(fParser.get());
}

void CsvReader::readHeader() {
    while (!fHasHeader && !fIsAtEnd)
        feed();
    if (!fHasHeader)
        fail("the table is empty: it has no header row");
}

bool CsvReader::read(RowBatch& batch) {
    while (fRows.getRowCount() == 0 && !fIsAtEnd)
        feed();
    std::swap(batch, fRows);
    fRows.clear();
    return batch.getRowCount() > 0;
}

bool CsvReader::hasColumn(std::size_t column) const {
    return std::find(fWantedByColumn.begin(), fWantedByColumn.end(), static_cast<int>(column)) != fWantedByColumn.end();
}

// libcsv reads a line at a time; in between, rows that need nothing of it are taken as they stand.
void CsvReader::feed() {
    std::string_view text = fChunks.next();
    fIsAtEnd = text.empty();
    if (fIsAtEnd)
        finish();
    while (!text.empty()) {
        if (fIsBetweenRows && fHasHeader)
            text = takePlainRows(text);
        const std::string_view line = text.substr(0, text.find('\n') + 1);
        parse(line.empty() ? text : line);
        text.remove_prefix(line.empty() ? text.size() : line.size());
    }
}

void CsvReader::parse(std::string_view text) {
    fIsBetweenRows = fIsBetweenRows && text.empty();
    check(csv_parse(fParser.get(), text.data(), text.size(), onCell, onRow, this) == text.size());
}

void CsvReader::finish() {
    check(csv_fini(fParser.get(), onCell, onRow, this) == 0);
}

void CsvReader::check(bool isRead) const {
    if (fFault)
        std::rethrow_exception(fFault);
    if (!isRead && csv_error(fParser.get()) != CSV_EPARSE)
        throw std::bad_alloc();
    if (!isRead)
        fail(getPlace() + (fIsAtEnd ? ": a quote is not closed" : ": a quote stands where none may stand"));
    if (fParser->entry_pos > kCellLimit)
        fail(getPlace() + ": the cell is longer than " + std::to_string(kCellLimit) +
             " bytes; perhaps a quote is not closed");
}

namespace {

// Cuts the row at start: as many cells as the header has, neither quotes nor line ends in them. base: the place of the
// text. cells: those are set whose columns are wanted.
// Returns: where the next row starts; start for any other row.
inline std::size_t cutPlainRow(std::string_view text, std::size_t start, std::size_t base, char separator,
                               const std::vector<int>& wantedByColumn, CellMarks& marks, Row::Cell* cells) {
    const auto isMark = [text](std::size_t place, char mark) { return place < text.size() && text[place] == mark; };
    const auto take = [&](int wanted, std::size_t cell, std::size_t end) {
        if (wanted >= 0)
            cells[wanted] = {base + cell, static_cast<std::uint32_t>(end - cell),
                             end == cell ? Row::kMissing : Row::kText};
    };
    std::size_t cell = start;
    const int* wanted = wantedByColumn.data();
    for (const int* last = wanted + wantedByColumn.size() - 1; wanted != last; ++wanted) {
        const std::size_t end = marks.next();
        if (!isMark(end, separator))
            return start;
        take(*wanted, cell, end);
        cell = end + 1;
    }
    const std::size_t end = marks.next();
    const std::size_t lineEnd = isMark(end, '\r') ? marks.next() : end;
    // An empty line is no row, or one that is not plain.
    if (!isMark(lineEnd, '\n') || lineEnd > end + 1 || end == start)
        return start;
    take(*wanted, cell, end);
    return lineEnd + 1;
}

}  // namespace

// Returns: the text from the first row on that is not plain, or not complete.
std::string_view CsvReader::takePlainRows(std::string_view text) {
    if (fEmptyLineCount > 0)
        return text;
    CellMarks marks(text, fSeparator);
    const std::size_t base = fRows.getTextSize();
    std::size_t taken = 0;
    for (;;) {
        Row::Cell* cells = fRows.addRow(fWanted.size());
        for (const std::size_t column : fLackingColumns)
            cells[column] = Row::Cell();
        const std::size_t next = cutPlainRow(text, taken, base, fSeparator, fWantedByColumn, marks, cells);
        if (next == taken)
            break;
        taken = next;
        ++fRowCount;
    }
    fRows.dropRow();
    fRows.appendText(text.substr(0, taken));
    return text.substr(taken);
}

void CsvReader::onCell(void* text, std::size_t length, void* self) {
    auto& reader = *static_cast<CsvReader*>(self);
    if (reader.fFault)
        return;
    try {
        reader.takeCell({static_cast<const char*>(text), length});
    } catch (...) {
        reader.fFault = std::current_exception();
    }
}

void CsvReader::onRow(int lineEnd, void* self) {
    auto& reader = *static_cast<CsvReader*>(self);
    if (reader.fFault)
        return;
    try {
        reader.fIsBetweenRows = lineEnd == CSV_LF;
        reader.takeRow(lineEnd);
    } catch (...) {
        reader.fFault = std::current_exception();
    }
}

void CsvReader::takeCell(std::string_view text) {
    if (text.size() > kCellLimit)
        fail(getPlace() + ": the cell is longer than " + std::to_string(kCellLimit) + " bytes");
    if (!fHasHeader)
        takeHeaderCell(text);
    else if (fCellCount < fWantedByColumn.size() && fWantedByColumn[fCellCount] >= 0)
        fRow.set(static_cast<std::size_t>(fWantedByColumn[fCellCount]), Row::kText, text);
    ++fCellCount;
}

void CsvReader::takeHeaderCell(std::string_view text) {
    fHeaderSize += text.size() + 1;
    if (fHeaderSize > kHeaderLimit)
        fail("the header is longer than " + std::to_string(kHeaderLimit) + " bytes");
    fHeader.emplace_back(text);
}

void CsvReader::takeRow(int lineEnd) {
    // The second half of CRLF ends no row of its own.
    if (fCellCount == 0 && lineEnd == CSV_LF && fFollowsCarriageReturn) {
        fFollowsCarriageReturn = false;
        return;
    }
    fFollowsCarriageReturn = lineEnd == CSV_CR;
    if (!fHasHeader) {
        if (fHeader.empty())
            fHeader.emplace_back();
        fHasHeader = true;
        fWantedByColumn = findColumns(fHeader, fWanted, fIsOptional, fName);
        fLackingColumns = findLacking(fWanted.size(), fWantedByColumn);
    } else if (fCellCount == 0 && fHeader.size() > 1) {
        ++fEmptyLineCount;
    } else {
        takeDataRow();
    }
    fCellCount = 0;
}

void CsvReader::takeDataRow() {
    const std::size_t cellCount = fCellCount == 0 ? 1 : fCellCount;
    if (fEmptyLineCount > 0 || cellCount != fHeader.size())
        fail("row " + std::to_string(fRowCount + 1) + " has " + std::to_string(fEmptyLineCount > 0 ? 0 : cellCount) +
             " cells where the header has " + std::to_string(fHeader.size()));
    fRows.append(fRow);
    fRow.clear();
    ++fRowCount;
}

std::string CsvReader::getPlace() const {
    std::string place = fHasHeader ? "row " + std::to_string(fRowCount + fEmptyLineCount + 1) : "the header";
    place += ", column " + std::to_string(fCellCount + 1);
    if (fHasHeader && fCellCount < fHeader.size())
        place += " '" + fHeader[fCellCount] + "'";
    return place;
}

void CsvReader::fail(const std::string& what) const {
    throw Error(fName + ": " + what);
}

namespace {

struct SplitLine {
    std::vector<std::string> cells;
    bool hasFailed = false;
};

}  // namespace

std::vector<std::string> CsvReader::splitLine(const std::string& line) {
    csv_parser parser;
    csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI);
    csv_set_space_func(&parser, isNeverBlank);
    SplitLine split;
    const auto onCell = [](void* text, std::size_t length, void* target) {
        auto& result = *static_cast<SplitLine*>(target);
        try {
            result.cells.emplace_back(static_cast<const char*>(text), length);
        } catch (...) {
            result.hasFailed = true;
        }
    };
    const bool isRead = csv_parse(&parser, line.data(), line.size(), onCell, nullptr, &split) == line.size() &&
                        csv_fini(&parser, onCell, nullptr, &split) == 0;
    csv_free(&parser);
    if (split.hasFailed)
        throw std::bad_alloc();
    if (!isRead)
        throw Error("the quotes in " + line + " are wrong");
    return split.cells;
}

}  // namespace brevix
