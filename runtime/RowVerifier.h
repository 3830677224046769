// Scores rows with expected results and compares, one after the other.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "runtime/Outcome.h"
#include "runtime/ScoringModel.h"
#include "runtime/verification.h"

namespace brevix {

class RowVerifier {
public:
    /// One column that is expected.
    struct Column {
        OutputColumn column;
        Tolerance tolerance;
    };

    /// model, onDifference: must outlive the verifier.
    RowVerifier(const ScoringModel& model, std::vector<Column> columns, const DifferenceSink& onDifference);

    /// Returns: the row's inputs, to be filled before verify.
    Record& getRecord() { return fRecord; }
    /// text: of the column of that place; empty for a missing expectation.
    void expect(std::size_t column, std::string_view text) { fExpected[column] = text; }
    /// Scores and compares one row. The record keeps its values, and so do the expectations.
    void verify();

    const VerificationTally& getTally() const { return fTally; }

private:
    const ScoringModel& fModel;
    std::vector<Column> fColumns;
    const DifferenceSink& fOnDifference;
    Record fRecord;
    Outcome fOutcome;
    std::vector<std::string> fExpected;
    VerificationTally fTally;
};

}  // namespace brevix
