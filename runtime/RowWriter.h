// Turns outcomes into the text of a result table.
#pragma once

#include <cstring>
#include <string>
#include <vector>

#include "runtime/NumberTexts.h"
#include "runtime/Outcome.h"
#include "runtime/OutputColumn.h"
#include "runtime/TableReader.h"

namespace brevix {

class ScoringModel;

/// A column of the input that is copied in front of the results.
struct KeptColumn {
    std::string name;
    /// Its place in the batches.
    std::size_t place = 0;
};

/// Immutable: any number of threads may write at once.
class RowWriter {
public:
    /// model: must outlive the writer.
    /// Fails: Error for two columns of one name.
    RowWriter(TableKind kind, const ScoringModel& model, std::vector<KeptColumn> kept);

    /// Returns: the header line; empty for JSON Lines.
    std::string makeHeader() const;
    bool keepsCells() const { return !fKept.empty(); }
    /// Appends the kept cells of one row, and then its results with the line end. texts: the calling thread's own.
    void appendKept(std::string& out, const RowBatch& batch, std::size_t row) const;
    void appendResults(std::string& out, const Outcome& outcome, NumberTexts& texts) const;

    /// Returns: whether kind's numbers, texts and absent values are those of JSON.
    bool isJson() const { return fKind == TableKind::kJsonLines; }

private:
    void appendCell(std::string& out, const RowBatch& batch, std::size_t row, std::size_t column) const;
    void appendFixed(std::string& out, const Outcome& outcome, NumberTexts& texts) const;
    char* writeNumber(double number, NumberTexts& texts, char* to) const;
    void appendResult(std::string& out, const OutputColumn& column, const Outcome& outcome, NumberTexts& texts) const;
    void appendNumber(std::string& out, double number, NumberTexts& texts) const;
    void appendTyped(std::string& out, const std::string& text, const OutputColumn& column) const;
    void appendText(std::string& out, std::string_view text) const;
    void appendAbsent(std::string& out) const;

    // A text that is written again and again: up to kShort characters with a copy of that length, which costs less than
    // asking how many there are.
    class Piece {
    public:
        static constexpr std::size_t kShort = 32;

        explicit Piece(const std::string& text);

        std::string_view get() const { return fIsLong ? std::string_view(fLong) : std::string_view(fText, fSize); }
        // Returns: where the text ends; kShort characters from its start on may be overwritten.
        char* write(char* to) const {
            if (fIsLong)
                return to + fLong.copy(to, fLong.size());
            std::memcpy(to, fText, kShort);
            return to + fSize;
        }

    private:
        char fText[kShort] = {};
        std::size_t fSize;
        bool fIsLong;
        std::string fLong;
    };

    // A column of results, with what stands in front of it.
    struct Result {
        const OutputColumn* column;
        Piece prefix;
    };

    TableKind fKind;
    char fSeparator;
    const ScoringModel& fModel;
    std::vector<KeptColumn> fKept;
    // What stands in front of each kept cell.
    std::vector<std::string> fKeptPrefixes;
    std::vector<Result> fResults;
    Piece fLineEnd;
    // The categories as cells.
    std::vector<Piece> fCategoryTexts;
    Piece fAbsent;
    // Whether all results are categories and finite numbers, and how long they are at most.
    bool fIsFixed = true;
    std::size_t fLongest = 0;
};

}  // namespace brevix
