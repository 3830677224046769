// Holds results against the expected ones of a table.
#include <algorithm>

#include "runtime/RowVerifier.h"
#include "runtime/verification.h"

namespace brevix {

namespace {

// The inputs of the model, then every output column that the table may expect.
struct TablePlan {
    std::vector<std::string> wanted;
    std::vector<bool> isOptional;
    std::size_t inputCount = 0;
    std::vector<OutputColumn> outputs;
};

TablePlan planTable(const ScoringModel& model) {
    TablePlan plan;
    for (const InputField& input : model.getInputs()) {
        plan.wanted.push_back(input.name);
        plan.isOptional.push_back(input.isOptional);
    }
    plan.inputCount = plan.wanted.size();
    for (const OutputColumn& column : model.getOutputColumns()) {
        // A column of that name is an input of the table then, not an expectation.
        if (model.findInput(column.name))
            continue;
        plan.wanted.push_back(column.name);
        plan.outputs.push_back(column);
    }
    plan.isOptional.resize(plan.wanted.size(), true);
    return plan;
}

// The rows of one table on their way to a verifier.
class TableVerifier {
public:
    TableVerifier(const ScoringModel& model, const TablePlan& plan, const TableReader& reader,
                  const VerificationOptions& options, const DifferenceSink& onDifference)
        : fMissingTexts(options.missingTexts),
          fInputCount(plan.inputCount),
          fVerifier(model, chooseColumns(plan, reader, options.tolerance), onDifference) {}

    void verify(const RowBatch& rows, std::size_t row) {
        for (std::size_t i = 0; i < fInputCount; ++i) {
            if (isMissing(rows, row, i))
                fVerifier.getRecord().setMissing(i);
            else
                fVerifier.getRecord().setText(i, rows.getText(row, i));
        }
        for (std::size_t i = 0; i < fPlaces.size(); ++i)
            fVerifier.expect(i, isMissing(rows, row, fPlaces[i]) ? "" : rows.getText(row, fPlaces[i]));
        fVerifier.verify();
    }

    const VerificationTally& getTally() const { return fVerifier.getTally(); }

private:
    std::vector<RowVerifier::Column> chooseColumns(const TablePlan& plan, const TableReader& reader,
                                                   const Tolerance& tolerance) {
        std::vector<RowVerifier::Column> columns;
        for (std::size_t i = 0; i < plan.outputs.size(); ++i) {
            if (!reader.hasColumn(plan.inputCount + i))
                continue;
            columns.push_back({plan.outputs[i], tolerance});
            fPlaces.push_back(plan.inputCount + i);
        }
        return columns;
    }

    bool isMissing(const RowBatch& rows, std::size_t row, std::size_t place) const {
        return rows.getKind(row, place) == Row::kMissing ||
               std::find(fMissingTexts.begin(), fMissingTexts.end(), rows.getText(row, place)) != fMissingTexts.end();
    }

    const std::vector<std::string>& fMissingTexts;
    std::size_t fInputCount;
    // Where the expectations stand in the table.
    std::vector<std::size_t> fPlaces;
    RowVerifier fVerifier;
};

[[noreturn]] void refuseEmptiness(const std::string& table, const TablePlan& plan) {
    static constexpr std::size_t kMostNames = 10;
    std::string names;
    for (std::size_t i = 0; i < plan.outputs.size() && i < kMostNames; ++i)
        names += (i == 0 ? "'" : ", '") + plan.outputs[i].name + "'";
    if (plan.outputs.size() > kMostNames)
        names += " and " + std::to_string(plan.outputs.size() - kMostNames) + " more";
    throw Error(table + ": there is nothing to compare: no row has a value in any of the columns " + names);
}

}  // namespace

VerificationTally verifyTable(const ScoringModel& model, ByteSource& source, const VerificationOptions& options,
                              const DifferenceSink& onDifference) {
    const TablePlan plan = planTable(model);
    const auto reader = openTable(options.inputKind, source, plan.wanted, plan.isOptional);
    TableVerifier verifier(model, plan, *reader, options, onDifference);
    RowBatch rows;
    while (reader->read(rows)) {
        for (std::size_t row = 0; row < rows.getRowCount(); ++row)
            verifier.verify(rows, row);
    }
    if (verifier.getTally().valueCount == 0)
        refuseEmptiness(source.getName(), plan);
    return verifier.getTally();
}

}  // namespace brevix
