// Tables with one JSON object in each line.
#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>

#include "runtime/Row.h"
#include "runtime/TableReader.h"
#include "runtime/TextChunks.h"

namespace brevix {

/// A key that is null or absent is a missing cell; numbers, texts and booleans are values; other keys are passed over,
/// whatever they hold. Empty lines are allowed at the end only.
class JsonLinesReader : public TableReader {
public:
    static constexpr std::size_t kLineLimit = 16 << 20;
    static constexpr int kNestingLimit = 64;
    /// A batch ends with the row that reaches so many cells: a row may say much less than it has columns.
    static constexpr std::size_t kMostCells = 1 << 16;

    JsonLinesReader(ByteSource& source, const std::vector<std::string>& columns);

    bool read(RowBatch& batch) override;
    bool hasColumn(std::size_t) const override { return true; }

private:
    void takeChunk(RowBatch& batch);
    void takeText(RowBatch& batch);
    void takeLine(std::string_view line, RowBatch& batch);
    [[noreturn]] void fail(const std::string& what) const;

    TextChunks fChunks;
    std::string fName;
    std::unordered_map<std::string, std::size_t> fColumnByKey;
    std::size_t fWidth;
    Row fRow;
    // What is left of the chunk.
    std::string_view fText;
    // The start of a line whose end has not come yet.
    std::string fUnfinished;
    bool fIsAtEnd = false;
    std::uint64_t fRowCount = 0;
    bool fHasEmptyLine = false;
};

}  // namespace brevix
