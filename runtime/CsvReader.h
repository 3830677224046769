// Comma-separated (RFC 4180) and tab-separated tables. Rows without quotes are cut into cells here, all others by
// libcsv.
#pragma once

#include <cstdint>
#include <exception>

#include "runtime/Export.h"
#include "runtime/Row.h"
#include "runtime/TableReader.h"
#include "runtime/TextChunks.h"

struct csv_parser;

namespace brevix {

/// Lines end in LF, CRLF or CR. Blanks in cells are kept. An empty line is a row with one missing cell where the table
/// has one column; otherwise it is allowed at the end of the table only.
class BREVIX_RUNTIME_API CsvReader : public TableReader {
public:
    /// No cell and no header is longer than this.
    static constexpr std::size_t kCellLimit = 1 << 20;
    static constexpr std::size_t kHeaderLimit = 16 << 20;

    CsvReader(ByteSource& source, char separator, const std::vector<std::string>& columns,
              const std::vector<bool>& isOptional = {});
    ~CsvReader() override;

    bool read(RowBatch& batch) override;
    bool hasColumn(std::size_t column) const override;

    /// Returns: the cells of one line of comma-separated values.
    /// Fails: Error for quotes that are wrong.
    static std::vector<std::string> splitLine(const std::string& line);

private:
    static void onCell(void* text, std::size_t length, void* self);
    static void onRow(int lineEnd, void* self);

    void feed();
    void parse(std::string_view text);
    void finish();
    void check(bool isRead) const;
    std::string_view takePlainRows(std::string_view text);
    void readHeader();
    void takeCell(std::string_view text);
    void takeHeaderCell(std::string_view text);
    void takeRow(int lineEnd);
    void takeDataRow();
    std::string getPlace() const;
    [[noreturn]] void fail(const std::string& what) const;

    TextChunks fChunks;
    std::string fName;
    std::vector<std::string> fWanted;
    std::vector<bool> fIsOptional;
    std::unique_ptr<csv_parser> fParser;
    std::exception_ptr fFault;
    std::vector<std::string> fHeader;
    std::size_t fHeaderSize = 0;
    bool fHasHeader = false;
    bool fIsAtEnd = false;
    // For each column of the table, which of the wanted ones it is; -1 for none.
    std::vector<int> fWantedByColumn;
    // The wanted ones that the table does not have.
    std::vector<std::size_t> fLackingColumns;
    char fSeparator;
    Row fRow;
    std::size_t fCellCount = 0;
    std::uint64_t fRowCount = 0;
    std::uint64_t fEmptyLineCount = 0;
    bool fFollowsCarriageReturn = false;
    // Whether the parser has just read the line feed that ends a row.
    bool fIsBetweenRows = false;
    // The rows that the last piece of text completed.
    RowBatch fRows;
};

}  // namespace brevix
