// Holds results against expected ones: those of a table, or those that a model brings along.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "runtime/Export.h"
#include "runtime/OutputColumn.h"
#include "runtime/TableReader.h"

namespace brevix {

class ScoringModel;
struct OutputValue;
struct PreparedDocument;

/// How far a result may be from what is expected.
struct BREVIX_RUNTIME_API Tolerance {
    /// Relative to the expected value.
    double precision = 1e-6;
    /// An expected value this close to zero is zero, and then the result must be as close.
    double zeroThreshold = 1e-16;

    /// Returns: whether the result is near enough. NaN is near NaN only, an infinity near itself only.
    bool accepts(double expected, double actual) const;
};

struct Difference {
    /// Counted from 1.
    std::uint64_t row = 0;
    std::string column;
    std::string expected;
    /// What the model gives; of a row that fails, its status; empty where it gives nothing.
    std::string actual;
    /// |actual - expected| / |expected|; nothing where that is no number.
    std::optional<double> relativeError;
};

struct VerificationTally {
    std::uint64_t rowCount = 0;
    std::uint64_t differingRowCount = 0;
    /// Values that were compared, and those among them that differ.
    std::uint64_t valueCount = 0;
    std::uint64_t differenceCount = 0;
    /// Values whose expectation is missing; they are not compared.
    std::uint64_t unexpectedCount = 0;
};

/// Hears of each difference, in the order of rows and columns.
using DifferenceSink = std::function<void(const Difference&)>;

struct VerificationOptions {
    TableKind inputKind = TableKind::kCsv;
    Tolerance tolerance = {};
    /// Texts that stand for a missing cell, beside the empty one.
    std::vector<std::string> missingTexts = {};
};

/// Scores each row of a table and compares the results with those columns of it that have the name of an output column.
/// Memory does not grow with the number of rows.
/// Fails: Error for a table that cannot be read, lacks an input, or has nothing to compare.
BREVIX_RUNTIME_API VerificationTally verifyTable(const ScoringModel& model, ByteSource& source,
                                                 const VerificationOptions& options,
                                                 const DifferenceSink& onDifference);

/// Scores the rows of the model's own ModelVerification and compares them, each field with its own tolerance. prepared:
/// the document that the model was opened from.
/// Fails: Error, without the file's name, where there is no such element, it cannot be read, or expects nothing.
BREVIX_RUNTIME_API VerificationTally verifyModel(const ScoringModel& model, const PreparedDocument& prepared,
                                                 const DifferenceSink& onDifference);

}  // namespace brevix
