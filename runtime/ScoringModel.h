// A model that is ready to score: the document parsed, prepared and translated by the plug-in.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/CaseRecord.h"
#include "host/ScoreModel.h"
#include "runtime/Outcome.h"
#include "runtime/output_columns.h"

namespace KwBrevix_930 {
class ScoreResult;
class ScoreTranslator;
}  // namespace KwBrevix_930

namespace brevix {

class ModelDocument;
class PluginLibrary;

struct ModelOptions {
    /// Whether the document is rewritten first where exporters write what the translator does not read.
    bool prepares = true;
    bool predictsOnly = false;
    KwBrevix_930::ScoreModel::MVPolicy missingPolicy = KwBrevix_930::ScoreModel::kUseReplacement;
    /// The plug-in's path; empty: PluginLibrary::findDefault().
    std::string plugin = {};
};

/// Scores its own first case while it is opened; from then on any number of threads may score at once, each with a
/// record of its own.
class ScoringModel {
public:
    /// Opens the document in a file, or the document that a text is.
    /// Fails: Error, with the numeric code where there is one; the first form names the file.
    static std::unique_ptr<ScoringModel> openFile(const std::string& path, const ModelOptions& options = {});
    static std::unique_ptr<ScoringModel> openText(std::string_view text, const ModelOptions& options = {});
    ScoringModel(const ScoringModel&) = delete;
    ScoringModel& operator=(const ScoringModel&) = delete;
    ~ScoringModel();

    bool isClassification() const { return fTarget.isClassification; }
    const std::string& getTargetName() const { return fTarget.name; }
    /// Returns: the target's categories in order; empty for a regression model.
    const std::vector<std::string>& getCategories() const { return fTarget.categories; }
    /// Returns: the fields that a record must be given, in dictionary order; all others have no effect.
    const std::vector<std::string>& getInputs() const { return fInputs; }
    /// Returns: the columns of a result table, the status last.
    const std::vector<OutputColumn>& getOutputColumns() const { return fColumns; }
    /// Returns: one sentence for each kind of change that was made to the document, and for what was left out.
    const std::vector<std::string>& getNotes() const { return fNotes; }

    /// Returns: a new record with all fields missing; it must not outlive the model. Its GetIndex knows the inputs.
    std::unique_ptr<KwBrevix_930::CaseRecord> makeRecord() const;
    /// Scores one record. outcome: overwritten, so that its memory serves the next case.
    void score(const KwBrevix_930::CaseRecord& record, Outcome& outcome) const;

private:
    ScoringModel(std::unique_ptr<PluginLibrary> plugin, const ModelDocument& document, const ModelOptions& options,
                 std::vector<std::string> notes);

    template <class Parse>
    static std::unique_ptr<ScoringModel> open(std::unique_ptr<PluginLibrary> plugin, const ModelOptions& options,
                                              const Parse& parse);
    void describeTarget();
    void warmUp() const;
    void readClassification(const KwBrevix_930::ScoreResult& result, Outcome& outcome) const;
    void readRegression(const KwBrevix_930::ScoreResult& result, Outcome& outcome) const;

    // In this order: what came from the plug-in ends before the plug-in.
    std::unique_ptr<PluginLibrary> fPlugin;
    std::unique_ptr<KwBrevix_930::ScoreTranslator> fTranslator;
    std::unique_ptr<KwBrevix_930::ScoreModel> fModel;
    TargetDescription fTarget;
    std::vector<std::string> fInputs;
    std::vector<OutputColumn> fColumns;
    std::vector<std::string> fNotes;
};

}  // namespace brevix
