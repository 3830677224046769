// Turns outcomes into the text of a result table.
#pragma once

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
    /// Appends one row, with its line end. texts: the calling thread's own.
    void append(std::string& out, const RowBatch& batch, std::size_t row, const Outcome& outcome,
                NumberTexts& texts) const;

    /// Returns: whether kind's numbers, texts and absent values are those of JSON.
    bool isJson() const { return fKind == TableKind::kJsonLines; }

private:
    void appendKept(std::string& out, const RowBatch& batch, std::size_t row, std::size_t column) const;
    void appendResult(std::string& out, const OutputColumn& column, const Outcome& outcome, NumberTexts& texts) const;
    void appendNumber(std::string& out, double number, NumberTexts& texts) const;
    void appendTyped(std::string& out, const std::string& text, const OutputColumn& column) const;
    void appendText(std::string& out, std::string_view text) const;
    void appendAbsent(std::string& out) const;

    TableKind fKind;
    char fSeparator;
    const ScoringModel& fModel;
    std::vector<KeptColumn> fKept;
    // What stands in front of each cell, kept columns first, and behind the last.
    std::vector<std::string> fPrefixes;
    std::string fLineEnd;
    // The categories as cells.
    std::vector<std::string> fCategoryTexts;
};

}  // namespace brevix
