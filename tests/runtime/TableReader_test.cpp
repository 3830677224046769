// Comma-separated, tab-separated and JSON Lines tables, cut into cells.
#include "runtime/TableReader.h"

#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "runtime/CsvReader.h"
#include "runtime/Error.h"
#include "runtime/JsonLinesReader.h"
#include "tests/runtime/TextSource.h"

namespace {

using brevix::RowBatch;
using brevix::TableKind;
using test_support::EndlessSource;
using test_support::TextSource;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

using Rows = std::vector<std::vector<std::string>>;

// Missing cells show as <>, numbers as #1.5, booleans as ?true.
std::string show(const RowBatch& batch, std::size_t row, std::size_t column) {
    static const std::string kMarks[] = {"<>", "", "#", "?"};
    return kMarks[batch.getKind(row, column)] + std::string(batch.getText(row, column));
}

Rows readFrom(brevix::ByteSource& source, TableKind kind, const std::vector<std::string>& columns) {
    const auto reader = brevix::openTable(kind, source, columns);
    Rows rows;
    RowBatch batch;
    while (reader->read(batch)) {
        EXPECT_GT(batch.getRowCount(), 0u);
        for (std::size_t row = 0; row < batch.getRowCount(); ++row) {
            rows.emplace_back();
            for (std::size_t column = 0; column < columns.size(); ++column)
                rows.back().push_back(show(batch, row, column));
        }
    }
    EXPECT_FALSE(reader->read(batch));
    return rows;
}

// Reads a text whole and in small pieces: it must not matter where the pieces end.
Rows readText(const std::string& text, const std::vector<std::string>& columns, TableKind kind = TableKind::kCsv) {
    TextSource whole(text);
    const Rows rows = readFrom(whole, kind, columns);
    for (const std::size_t pieceSize : {1u, 2u, 3u, 7u}) {
        TextSource pieces(text, pieceSize);
        EXPECT_EQ(rows, readFrom(pieces, kind, columns)) << "in pieces of " << pieceSize;
    }
    return rows;
}

std::string faultOf(const std::string& text, const std::vector<std::string>& columns,
                    TableKind kind = TableKind::kCsv) {
    try {
        TextSource source(text);
        readFrom(source, kind, columns);
    } catch (const brevix::Error& fault) {
        return fault.what();
    }
    return "no fault";
}

TEST(CsvReader, GivesTheWantedColumnsInTheOrderAskedFor) {
    EXPECT_EQ(readText("a,b,c\n1.5,2,3\n4,5,6.25\n", {"c", "a"}), (Rows{{"3", "1.5"}, {"6.25", "4"}}));
}

TEST(CsvReader, QuotedCellsHoldSeparatorsQuotesAndLineEnds) {
    EXPECT_EQ(readText("a,\"b \"\"x\"\"\"\n\"1,5\",\"two\r\nlines\"\n", {"a", "b \"x\""}),
              (Rows{{"1,5", "two\r\nlines"}}));
}

TEST(CsvReader, BlanksAreKept) {
    EXPECT_EQ(readText(" a,b\n 1 ,\" 2 \"\n", {" a", "b"}), (Rows{{" 1 ", " 2 "}}));
}

TEST(CsvReader, EmptyCellsAreMissingQuotedOrNot) {
    EXPECT_EQ(readText("a,b,c\n,\"\",3\n", {"a", "b", "c"}), (Rows{{"<>", "<>", "3"}}));
}

TEST(CsvReader, LinesEndInLfCrlfOrCr) {
    const Rows rows{{"1", "2"}, {"3", "4"}};
    EXPECT_EQ(readText("a,b\n1,2\n3,4\n", {"a", "b"}), rows);
    EXPECT_EQ(readText("a,b\r\n1,2\r\n3,4\r\n", {"a", "b"}), rows);
    EXPECT_EQ(readText("a,b\r1,2\r3,4\r", {"a", "b"}), rows);
    EXPECT_EQ(readText("a,b\r\n\"1\",\"2\"\r\n3,4", {"a", "b"}), rows);
}

TEST(CsvReader, ByteOrderMarkIsSkipped) {
    EXPECT_EQ(readText("\xEF\xBB\xBF"
                       "a,b\n1,2\n",
                       {"a"}),
              (Rows{{"1"}}));
}

TEST(CsvReader, Utf16IsRefusedByName) {
    EXPECT_THAT(faultOf(std::string("\xFF\xFE"
                                    "a\0\n\0",
                                    6),
                        {"a"}),
                HasSubstr("UTF-16"));
}

TEST(CsvReader, EmptyLineInAnOnlyColumnIsOneMissingCell) {
    EXPECT_EQ(readText("a\n1\n\n2\n\n", {"a"}), (Rows{{"1"}, {"<>"}, {"2"}, {"<>"}}));
    EXPECT_EQ(readText("a\r\n1\r\n\r\n2\r\n", {"a"}), (Rows{{"1"}, {"<>"}, {"2"}}));
}

TEST(CsvReader, EmptyLinesAmongSeveralColumnsAreAllowedAtTheEndOnly) {
    EXPECT_EQ(readText("a,b\n1,2\n\n\r\n\n", {"a"}), (Rows{{"1"}}));
    EXPECT_EQ(faultOf("a,b\n1,2\n\n3,4\n", {"a"}), "cases.csv: row 2 has 0 cells where the header has 2");
}

TEST(CsvReader, RaggedRowsAreRefusedByNumber) {
    EXPECT_EQ(faultOf("a,b\n1,2\n3\n", {"a"}), "cases.csv: row 2 has 1 cells where the header has 2");
    EXPECT_EQ(faultOf("a,b\n1,2,3\n", {"a"}), "cases.csv: row 1 has 3 cells where the header has 2");
    EXPECT_EQ(faultOf("a,b\n1,2\n,,\n", {"a"}), "cases.csv: row 2 has 3 cells where the header has 2");
}

TEST(CsvReader, AllLackingAndRepeatedColumnsAreListedAtOnce) {
    EXPECT_EQ(faultOf("a,b,b,z,z\n", {"c", "b", "d,e"}),
              "cases.csv: the table lacks the columns 'c', 'd,e'; the header repeats 'b'");
    EXPECT_EQ(faultOf("a,b\n", {"c"}), "cases.csv: the table lacks the column 'c'");
}

TEST(CsvReader, RepeatedColumnThatNobodyWantsDoesNotMatter) {
    EXPECT_EQ(readText("a,b,b\n1,2,3\n", {"a"}), (Rows{{"1"}}));
}

TEST(CsvReader, EmptyTableHasNoHeader) {
    EXPECT_EQ(faultOf("", {"a"}), "cases.csv: the table is empty: it has no header row");
    EXPECT_EQ(faultOf("\xEF\xBB\xBF", {"a"}), "cases.csv: the table is empty: it has no header row");
}

TEST(CsvReader, HeaderAloneGivesNoRows) {
    EXPECT_EQ(readText("a,b\n", {"b"}), Rows{});
    EXPECT_EQ(readText("a,b", {"b"}), Rows{});
}

TEST(CsvReader, WrongQuotesAreRefusedByRowAndColumn) {
    EXPECT_EQ(faultOf("a,b\n1,2\n3,x\"y\n", {"a"}),
              "cases.csv: row 2, column 2 'b': a quote stands where none may stand");
    EXPECT_EQ(faultOf("a,b\n\"1\"x,2\n", {"a"}), "cases.csv: row 1, column 1 'a': a quote stands where none may stand");
    EXPECT_EQ(faultOf("a,b\n1,\"2\n3,4\n", {"a"}), "cases.csv: row 1, column 2 'b': a quote is not closed");
    EXPECT_EQ(faultOf("a,\"b\n", {"a"}), "cases.csv: the header, column 2: a quote is not closed");
}

// What a text gives, read in pieces of a length: its rows, or the fault.
std::string outcomeOf(const std::string& text, std::size_t pieceSize) {
    try {
        TextSource source(text, pieceSize);
        std::string outcome;
        for (const auto& row : readFrom(source, TableKind::kCsv, {"b", "a"}))
            outcome += row[0] + '|' + row[1] + ';';
        return outcome;
    } catch (const brevix::Error& fault) {
        return fault.what();
    }
}

// In pieces of one byte every row goes through libcsv, in one piece those that are plain do not.
TEST(CsvReader, PlainRowsAndLibcsvAgreeOnRandomTables) {
    static const char* kTokens[] = {"1.5", "x", "", " ", "\"q\"", "\"a,\nb\"", "\"\"\"\"", "\"", "y\r", "\xE4"};
    static const char* kEnds[] = {"\n", "\n", "\n", "\r\n", "\r\n", "\r", "\n\n", ""};
    std::mt19937_64 engine(831);
    for (int table = 0; table < 4000; ++table) {
        std::string text = "a,b,c\n";
        // Tables with few of the odd tokens get far before a fault.
        const std::size_t tokenCount = table % 2 == 0 ? 7 : 10;
        for (std::size_t row = engine() % 8; row > 0; --row) {
            const std::size_t cellCount = engine() % 12 == 0 ? engine() % 5 : 3;
            for (std::size_t cell = 0; cell < cellCount; ++cell)
                text += (cell > 0 ? "," : "") + std::string(kTokens[engine() % tokenCount]);
            text += kEnds[engine() % (table % 3 == 0 ? 3 : 8)];
        }
        ASSERT_EQ(outcomeOf(text, 1 << 20), outcomeOf(text, 1)) << text;
    }
}

// Batches serve again and again: a column that the table lacks stays missing, whatever stood in its place.
TEST(CsvReader, OptionalColumnsThatAreLackingAreMissingInEveryRow) {
    RowBatch batch;
    for (const std::size_t pieceSize : {std::size_t{1}, std::size_t{1} << 20}) {
        for (const char* name : {"b", "c"}) {
            const std::string table = std::string("a,") + name + "\n1,2\n\"3\",4\n5,\n";
            TextSource source(table, pieceSize);
            const auto reader = brevix::openTable(TableKind::kCsv, source, {"a", "b", "c"}, {false, true, true});
            const bool hasB = *name == 'b';
            Rows rows;
            while (reader->read(batch)) {
                for (std::size_t row = 0; row < batch.getRowCount(); ++row)
                    rows.push_back(
                        {show(batch, row, 0), show(batch, row, hasB ? 1 : 2), show(batch, row, hasB ? 2 : 1)});
            }
            EXPECT_EQ(rows, (Rows{{"1", "2", "<>"}, {"3", "4", "<>"}, {"5", "<>", "<>"}}));
        }
    }
}

TEST(CsvReader, QuoteThatNeverClosesEndsInBoundedMemory) {
    EndlessSource source("a,b\n1,\"", "0123456,\n");
    try {
        readFrom(source, TableKind::kCsv, {"a"});
        FAIL() << "an endless cell was read";
    } catch (const brevix::Error& fault) {
        EXPECT_THAT(fault.what(), AllOf(HasSubstr("row 1, column 2 'b'"), HasSubstr("1048576 bytes")));
    }
    EXPECT_LT(source.getReadCount(), brevix::CsvReader::kCellLimit + (1u << 18));
}

TEST(CsvReader, EndlessRowEndsAtTheLengthOfTheHeaderOnly) {
    // Cells that nobody wants cost no memory; the row is found ragged when it ends.
    std::string row = "a,b\n";
    row.append(200000, ',');
    EXPECT_EQ(faultOf(row + "\n", {"a"}), "cases.csv: row 1 has 200001 cells where the header has 2");
}

TEST(CsvReader, EndlessHeaderEndsInBoundedMemory) {
    EndlessSource source("", "abcdefg,");
    EXPECT_THROW(readFrom(source, TableKind::kCsv, {"a"}), brevix::Error);
    EXPECT_LT(source.getReadCount(), brevix::CsvReader::kHeaderLimit + (1u << 18));
}

TEST(CsvReader, CellOfExactlyTheLimitIsRead) {
    const std::string cell(brevix::CsvReader::kCellLimit, 'q');
    TextSource fits("a\n" + cell + "\n");
    EXPECT_EQ(readFrom(fits, TableKind::kCsv, {"a"})[0][0].size(), cell.size());
    EXPECT_THAT(faultOf("a\n" + cell + "q\n", {"a"}), HasSubstr("row 1, column 1"));
}

TEST(CsvReader, BytesThatAreNotUtf8AreKeptAsTheyAre) {
    EXPECT_EQ(readText("a\ntr\xE8s\n", {"a"}), (Rows{{"tr\xE8s"}}));
    EXPECT_EQ(readText(std::string("a\nx\0y\n", 6), {"a"}), (Rows{{std::string("x\0y", 3)}}));
}

TEST(CsvReader, TabsSeparateTsvWithTheSameQuotes) {
    EXPECT_EQ(readText("a\tb\n1,5\t\"x\ty\"\n", {"a", "b"}, TableKind::kTsv), (Rows{{"1,5", "x\ty"}}));
}

TEST(CsvReader, SplitLineTakesQuotedNames) {
    EXPECT_THAT(brevix::CsvReader::splitLine("a,\"b,c\", d"), ElementsAre("a", "b,c", " d"));
    EXPECT_THROW(brevix::CsvReader::splitLine("a,\"b"), brevix::Error);
}

TEST(JsonLinesReader, KeysAreColumnsAndKindsAreKept) {
    EXPECT_EQ(readText("{\"a\":1.50,\"b\":\"t\\u00e9\",\"c\":true}\n{\"c\":false,\"b\":null}\r\n", {"a", "b", "c"},
                       TableKind::kJsonLines),
              (Rows{{"#1.50", "t\xC3\xA9", "?true"}, {"<>", "<>", "?false"}}));
    EXPECT_EQ(readText("{\"a\":-12,\"b\":18446744073709551615}", {"a", "b"}, TableKind::kJsonLines),
              (Rows{{"#-12", "#18446744073709551615"}}));
}

TEST(JsonLinesReader, EmptyTextIsMissing) {
    EXPECT_EQ(readText("{\"a\":\"\"}\n", {"a"}, TableKind::kJsonLines), (Rows{{"<>"}}));
}

TEST(JsonLinesReader, UnwantedKeysMayHoldAnything) {
    EXPECT_EQ(readText("{\"z\":{\"a\":[1,{\"a\":2}]},\"a\":3,\"y\":[]}\n", {"a"}, TableKind::kJsonLines),
              (Rows{{"#3"}}));
}

TEST(JsonLinesReader, WrongLinesAreRefusedByRow) {
    const auto fault = [](const std::string& text) { return faultOf(text, {"a"}, TableKind::kJsonLines); };
    EXPECT_EQ(fault("{\"a\":1}\n{\"a\":}\n"), "cases.csv: row 2: it is not JSON at byte 6");
    EXPECT_EQ(fault("[1]\n"), "cases.csv: row 1: it is not an object");
    EXPECT_EQ(fault("7\n"), "cases.csv: row 1: it is not an object");
    EXPECT_EQ(fault("{\"a\":[1]}\n"), "cases.csv: row 1: the key 'a' holds a list or an object");
    EXPECT_EQ(fault("{\"a\":1,\"a\":2}\n"), "cases.csv: row 1: the key 'a' stands twice");
    EXPECT_EQ(fault("{\"a\":1}\n\n{\"a\":2}\n"), "cases.csv: row 2: it is an empty line");
    EXPECT_THAT(fault("{\"a\":1} {\"a\":2}\n"), HasSubstr("row 1: it is not JSON"));
    EXPECT_THAT(fault("{\"a\":\"\xE8\"}\n"), HasSubstr("row 1: it is not JSON"));
    EXPECT_THAT(fault("{\"a\":NaN}\n"), HasSubstr("row 1: it is not JSON"));
}

TEST(JsonLinesReader, EmptyLinesAtTheEndAndEmptyTablesGiveNoRows) {
    EXPECT_EQ(readText("{\"a\":1}\n\n \n", {"a"}, TableKind::kJsonLines), (Rows{{"#1"}}));
    EXPECT_EQ(readText("", {"a"}, TableKind::kJsonLines), Rows{});
}

TEST(JsonLinesReader, DeepNestingIsRefused) {
    const std::string deep = "{\"z\":" + std::string(100000, '[');
    EXPECT_EQ(faultOf(deep, {"a"}, TableKind::kJsonLines), "cases.csv: row 1: it is nested more than 64 deep");
}

// Each row has a cell for every column, though it says nothing of them.
TEST(JsonLinesReader, ShortRowsOfManyColumnsComeInSmallBatches) {
    constexpr std::size_t kRows = 30000;
    std::vector<std::string> columns;
    for (int i = 0; i < 3000; ++i)
        columns.push_back("c" + std::to_string(i));
    std::string text;
    for (std::size_t i = 0; i < kRows; ++i)
        text += i % 1000 == 7 ? "{\"c2999\":" + std::to_string(i) + "}\n" : "{}\n";
    text.pop_back();
    TextSource source(text);
    const auto reader = brevix::openTable(TableKind::kJsonLines, source, columns);
    RowBatch batch;
    std::size_t count = 0;
    while (reader->read(batch)) {
        EXPECT_LT(batch.getRowCount() * columns.size(), brevix::JsonLinesReader::kMostCells + columns.size());
        for (std::size_t row = 0; row < batch.getRowCount(); ++row, ++count)
            EXPECT_EQ(show(batch, row, 2999), count % 1000 == 7 ? "#" + std::to_string(count) : "<>");
    }
    EXPECT_EQ(count, kRows);
}

TEST(JsonLinesReader, EndlessLineEndsInBoundedMemory) {
    EndlessSource source("{\"a\":\"", "0123456 ");
    EXPECT_THROW(readFrom(source, TableKind::kJsonLines, {"a"}), brevix::Error);
    EXPECT_LT(source.getReadCount(), brevix::JsonLinesReader::kLineLimit + (1u << 18));
}

}  // namespace
