// brevix score: a model and a table in, a table of results out.
#include "tools/ScoreCommand.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>

#include <CLI/CLI.hpp>

#include "runtime/CsvReader.h"
#include "runtime/Error.h"
#include "runtime/InputFile.h"
#include "runtime/OutputFile.h"
#include "runtime/ScoringModel.h"
#include "runtime/platform/files.h"
#include "runtime/score_table.h"
#include "tools/Report.h"
#include "tools/UsageError.h"
#include "tools/remove_on_signal.h"
#include "tools/table_kind.h"

namespace brevix {

namespace {

constexpr int kMostThreads = 1024;

std::vector<std::string> splitNames(const std::string& list) {
    try {
        return CsvReader::splitLine(list);
    } catch (const Error& fault) {
        throw UsageError(std::string("--keep: ") + fault.what());
    }
}

}  // namespace

ScoreCommand::ScoreCommand(CLI::App& app) {
    const CLI::IsMember isFormat({"csv", "tsv", "jsonl"});
    app.add_option("MODEL", fModel, "the PMML document")->required();
    app.add_option("INPUT", fInput, "the table, - for standard input");
    app.add_option("-o,--output", fOutput, "the result, - for standard output; it appears when it is complete");
    app.add_option("--format", fOutputFormat, "csv, tsv or jsonl; otherwise OUTPUT's name tells, or csv")
        ->check(isFormat);
    app.add_option("--input-format", fInputFormat, "csv, tsv or jsonl; otherwise INPUT's name tells, or csv")
        ->check(isFormat);
    app.add_flag("--prediction-only", fPredictsOnly, "no confidence, probabilities, deviation or interval");
    app.add_option("--missing-policy", fMissingPolicy,
                   "0 replaces missing cells where the model says by what; 1 and 2 do not")
        ->check(CLI::Range(0, 2));
    app.add_option("--threads", fThreadCount, "how many threads score; otherwise one for each processor")
        ->check(CLI::Range(1, kMostThreads));
    app.add_option("--keep", fKeepLists, "input columns to copy in front: COL,COL (quoted as in CSV)")
        ->allow_extra_args(false);
    app.add_option("--na", fMissingTexts, "a text that stands for a missing cell (repeatable)")
        ->allow_extra_args(false);
    app.add_flag("--as-is", fIsAsIs, "hand the document to the plug-in unprepared");
    app.add_flag("--fail-on-error", fFailsOnError, "exit with 3 when some row has a status other than 0");
    app.add_option("--plugin", fPlugin, "the plug-in library");
    auto* progress = app.add_flag("--progress", fWantsProgress, "show progress");
    app.add_flag("--no-progress", fWantsNoProgress, "show no progress")->excludes(progress);
    app.add_flag("--quiet", fIsQuiet, "write errors only");
}

std::vector<std::string> ScoreCommand::listKeptColumns() const {
    std::vector<std::string> columns;
    std::set<std::string> known;
    for (const std::string& list : fKeepLists) {
        for (const std::string& column : splitNames(list)) {
            if (!known.insert(column).second)
                throw UsageError("--keep names the column '" + column + "' twice");
            columns.push_back(column);
        }
    }
    return columns;
}

void ScoreCommand::checkOutput() const {
    std::error_code ignored;
    if (fOutput.empty())
        throw UsageError("--output names no file");
    if (fOutput != "-" && std::filesystem::equivalent(platform::toPath(fOutput), platform::toPath(fModel), ignored))
        throw UsageError("the result would replace the model " + fModel);
}

bool ScoreCommand::showsProgress() const {
    return !fIsQuiet && !fWantsNoProgress && (fWantsProgress || platform::isTerminal(platform::kStandardError));
}

namespace {

// A kept column stands beside those of the result, so it must not have the name of one.
void checkKeptColumns(const std::vector<std::string>& kept, const ScoringModel& model) {
    for (const OutputColumn& column : model.getOutputColumns()) {
        if (std::find(kept.begin(), kept.end(), column.name) != kept.end())
            throw UsageError("--keep names the column '" + column.name + "', which the result has itself");
    }
}

}  // namespace

int ScoreCommand::run() {
    checkOutput();
    TableOptions options;
    options.inputKind = chooseTableKind(fInputFormat, fInput);
    options.outputKind = chooseTableKind(fOutputFormat, fOutput);
    options.keptColumns = listKeptColumns();
    options.missingTexts = fMissingTexts;
    options.threadCount = fThreadCount;
    const auto model =
        ScoringModel::openFile(fModel, {!fIsAsIs, fPredictsOnly, static_cast<MissingPolicy>(fMissingPolicy), fPlugin});
    checkKeptColumns(options.keptColumns, *model);
    std::optional<InputFile> input(fInput);
    std::optional<OutputFile> output;
    Report report(fIsQuiet, showsProgress());
    const auto openOutput = [&]() -> OutputFile& {
        output.emplace(fOutput);
        removeOnSignal(output->getTemporaryPath());
        return *output;
    };
    const TableEvents events = {[&] { report.writeNotes(fModel, model->getNotes()); },
                                [&](const TableTally& tally) { report.writeProgress(tally); }};
    const TableTally tally = scoreTable(*model, *input, openOutput, options, events);
    // Some systems replace no file that is open, and the output may be the input.
    input.reset();
    output->commit();
    removeOnSignal("");
    report.writeClosingLine(tally);
    const auto good = tally.rowCountByStatus.find(0);
    const std::uint64_t goodCount = good == tally.rowCountByStatus.end() ? 0 : good->second;
    return fFailsOnError && goodCount != tally.rowCount ? 3 : 0;
}

}  // namespace brevix
