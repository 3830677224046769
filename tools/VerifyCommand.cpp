// brevix verify: a model's results against expected ones.
#include "tools/VerifyCommand.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "host/number_text.h"
#include "runtime/InputFile.h"
#include "runtime/OutputFile.h"
#include "runtime/PreparedDocument.h"
#include "runtime/ScoringModel.h"
#include "runtime/one_error_type.h"
#include "runtime/verification.h"
#include "tools/Report.h"
#include "tools/TextTable.h"
#include "tools/UsageError.h"
#include "tools/table_kind.h"

namespace brevix {

namespace {

// The first differences, as a table; the rest is counted.
class DifferenceTable {
public:
    explicit DifferenceTable(std::uint64_t most) : fMost(most) {}

    void add(const Difference& difference) {
        if (fCount++ >= fMost)
            return;
        const auto& error = difference.relativeError;
        fTable.add({std::to_string(difference.row), difference.column, difference.expected, difference.actual,
                    error ? KwBrevix_930::NumberText(*error) : ""});
    }

    std::string makeText() const {
        if (fCount == 0)
            return "";
        const std::string rest = fCount > fMost ? "... and " + std::to_string(fCount - fMost) + " more\n" : "";
        return (fTable.isEmpty() ? "" : fTable.makeText()) + rest;
    }

private:
    TextTable fTable{{"row", "column", "expected", "actual", "relative error"}};
    std::uint64_t fMost;
    std::uint64_t fCount = 0;
};

std::string counted(std::uint64_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string makeClosingLine(const VerificationTally& tally) {
    std::string line = counted(tally.rowCount, "row") + ", " + counted(tally.valueCount, "value") + " compared";
    if (tally.unexpectedCount > 0)
        line += ", " + std::to_string(tally.unexpectedCount) + " without expectation";
    if (tally.differenceCount == 0)
        return line + ": no difference\n";
    return line + ": " + counted(tally.differenceCount, "difference") + " in " +
           counted(tally.differingRowCount, "row") + "\n";
}

}  // namespace

VerifyCommand::VerifyCommand(CLI::App& app) {
    app.add_option("MODEL", fModel, "the PMML document")->required();
    app.add_option("EXPECTED", fTable,
                   "a table of cases with expected results, - for standard input; otherwise the model's own");
    const CLI::Validator anyTolerance(
        [](const std::string& text) {
            const auto number = KwBrevix_930::ParseNumber(text);
            return number && *number >= 0.0 ? "" : text + " is no number from 0 on";
        },
        "NUMBER");
    fTableOptions = {
        app.add_option("--precision", fPrecision, "the relative error that is accepted")->check(anyTolerance),
        app.add_option("--zero-threshold", fZeroThreshold, "what counts as zero")->check(anyTolerance),
        app.add_option("--input-format", fInputFormat, "csv, tsv or jsonl; otherwise EXPECTED's name tells, or csv")
            ->check(CLI::IsMember({"csv", "tsv", "jsonl"})),
        app.add_option("--na", fMissingTexts, "a text that stands for a missing cell (repeatable)")
            ->allow_extra_args(false)};
    app.add_option("--most", fMostDifferences, "how many differences are listed");
    app.add_option("--missing-policy", fMissingPolicy,
                   "0 replaces missing cells where the model says by what; 1 and 2 do not")
        ->check(CLI::Range(0, 2));
    app.add_flag("--as-is", fIsAsIs, "hand the document to the plug-in unprepared");
    app.add_option("--plugin", fPlugin, "the plug-in library");
    app.add_flag("--quiet", fIsQuiet, "write no notes on the document");
}

int VerifyCommand::run() {
    for (const CLI::Option* option : fTableOptions) {
        if (fTable.empty() && option->count() > 0)
            throw UsageError(option->get_name() + " is for tables of expected results");
    }
    DifferenceTable differences(fMostDifferences);
    const DifferenceSink onDifference = [&](const Difference& difference) { differences.add(difference); };
    ModelOptions options;
    options.missingPolicy = static_cast<MissingPolicy>(fMissingPolicy);
    options.plugin = fPlugin;
    const auto prepared = withFileName(fModel, [&] { return PreparedDocument::openFile(fModel, !fIsAsIs); });
    const auto model = withFileName(fModel, [&] { return ScoringModel::openPrepared(prepared, options); });
    VerificationTally tally;
    if (fTable.empty()) {
        tally = withFileName(fModel, [&] { return verifyModel(*model, prepared, onDifference); });
    } else {
        InputFile input(fTable);
        tally = verifyTable(*model, input,
                            {chooseTableKind(fInputFormat, fTable), {fPrecision, fZeroThreshold}, fMissingTexts},
                            onDifference);
    }
    Report(fIsQuiet, false).writeNotes(fModel, model->getNotes());
    OutputFile output("-");
    output.write(differences.makeText() + makeClosingLine(tally));
    output.commit();
    return tally.differenceCount > 0 ? 3 : 0;
}

}  // namespace brevix
