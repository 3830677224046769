// A model that is ready to score. This is the one header that a program needs which embeds scoring.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/Error.h"
#include "runtime/Export.h"
#include "runtime/InputField.h"
#include "runtime/Outcome.h"
#include "runtime/OutputColumn.h"
#include "runtime/Record.h"

namespace KwBrevix_930 {
class CaseRecord;
class DictVar;
class IBatchModel;
class ScoreDictVar;
class ScoreModel;
class ScoreResult;
class ScoreTranslator;
class ScoreValue;
}  // namespace KwBrevix_930

namespace KwScore {
class KwStatus;
}

namespace brevix {

class ModelDocument;
class OutputProgram;
class PlainCases;
class PluginLibrary;
class TargetRules;
struct PreparedDocument;

/// Whether a missing input is replaced where the model says by what; otherwise the case ends with 90029.
enum class MissingPolicy { kUseReplacement = 0, kMarkAsMissing = 1, kLeavePrediction = 2 };

struct ModelOptions {
    /// Whether the document is rewritten first where exporters write what the translator does not read.
    bool prepares = true;
    /// No confidence, probabilities, deviation or interval.
    bool predictsOnly = false;
    MissingPolicy missingPolicy = MissingPolicy::kUseReplacement;
    /// The plug-in's path; empty: beside the program, beside this library, or in the install directory.
    std::string plugin = {};
};

/// Once open, a model does not change: any number of threads may use it at once, each with a record and an outcome of
/// its own.
class BREVIX_RUNTIME_API ScoringModel {
public:
    /// Opens the document in a file, or the document that a text is.
    /// Fails: Error, with the numeric code where there is one; the first form names the file.
    static std::unique_ptr<ScoringModel> openFile(const std::string& path, const ModelOptions& options = {});
    static std::unique_ptr<ScoringModel> openText(std::string_view text, const ModelOptions& options = {});
    /// Opens a document that was prepared before; options.prepares does not matter. Not for programs that embed.
    static std::unique_ptr<ScoringModel> openPrepared(const PreparedDocument& prepared, const ModelOptions& options);
    ScoringModel(const ScoringModel&) = delete;
    ScoringModel& operator=(const ScoringModel&) = delete;
    ~ScoringModel();

    bool isClassification() const { return fIsClassification; }
    const std::string& getTargetName() const { return fTargetName; }
    /// Returns: the target's categories in order; empty for a regression model.
    const std::vector<std::string>& getCategories() const { return fCategories; }
    /// Returns: the fields that a record must be given, in dictionary order; all others have no effect.
    const std::vector<InputField>& getInputs() const { return fInputs; }
    /// Returns: the columns of a result table, the status last.
    const std::vector<OutputColumn>& getOutputColumns() const { return fColumns; }
    /// Returns: the place of the input, or of the output column, of that name; nothing where there is none.
    std::optional<std::size_t> findInput(std::string_view name) const;
    std::optional<std::size_t> findOutputColumn(std::string_view name) const;
    /// Returns: the raw fields that a derived field reads in the end, sorted; none for a name that is no derived field.
    std::vector<std::string> listSources(const std::string& derivedField) const;
    /// Returns: one sentence for each kind of change that was made to the document, and for what was left out.
    const std::vector<std::string>& getNotes() const { return fNotes; }
    /// Returns: those of them that tell what has no effect.
    const std::vector<std::string>& getIgnored() const { return fIgnored; }

    /// Returns: a new record with all inputs missing; it must not outlive the model.
    Record makeRecord() const;
    /// Scores one record. outcome: overwritten, so that its memory serves the next case.
    void score(const Record& record, Outcome& outcome) const;
    /// Scores many records, some dozens at a time being enough: the outcomes of scoring each alone, but sooner.
    /// outcomes: at least as many; those of the records are overwritten.
    void score(std::span<const Record> records, std::span<Outcome> outcomes) const;

    // For whoever scores tables: the way without records, for cases that nothing is missing or wrong in.

    /// Returns: room for such cases; null where the model has no such way.
    std::unique_ptr<PlainCases> makePlainCases() const;
    /// Returns: the variable of each input, which tells what stands for a text in such a case.
    const std::vector<const KwBrevix_930::DictVar*>& getInputVariables() const { return fInputVariables; }
    /// Scores the first of the cases.
    /// Fails:   Error where the plug-in does not take them after all.
    void score(PlainCases& cases, std::size_t count) const;
    /// Makes the outcome of a case that was scored: that of scoring its record. outcome: overwritten.
    void readOutcome(const PlainCases& cases, std::size_t place, Outcome& outcome) const;

    /// Returns: what an outcome of this model holds for a column.
    OutputValue getValue(const Outcome& outcome, const OutputColumn& column) const;

private:
    ScoringModel(std::unique_ptr<PluginLibrary> plugin, const PreparedDocument& prepared, const ModelOptions& options);

    static std::unique_ptr<ScoringModel> open(std::unique_ptr<PluginLibrary> plugin, const PreparedDocument& prepared,
                                              const ModelOptions& options);
    void describeTarget();
    void describeFields(const ModelDocument& document);
    void describeOutput(const ModelDocument& document);
    std::vector<std::string> listInputs(const ModelDocument& document) const;
    void warmUp() const;
    void read(const Record& record, const KwScore::KwStatus& status, Outcome& outcome) const;
    void clear(const KwScore::KwStatus& status, Outcome& outcome) const;
    void applyTargetRules(Outcome& outcome) const;
    int findCategory(const KwBrevix_930::ScoreValue* prediction) const;
    void readClassification(const KwBrevix_930::ScoreResult& result, Outcome& outcome) const;
    void readRegression(const KwBrevix_930::ScoreResult& result, Outcome& outcome) const;
    void readNumbers(std::span<const double> result, Outcome& outcome) const;

    // In this order: what came from the plug-in ends before the plug-in.
    std::unique_ptr<PluginLibrary> fPlugin;
    std::unique_ptr<KwBrevix_930::ScoreTranslator> fTranslator;
    std::unique_ptr<KwBrevix_930::ScoreModel> fModel;
    // The model again where it scores many cases at once; null otherwise.
    KwBrevix_930::IBatchModel* fBatchModel;
    MissingPolicy fMissingPolicy;
    const KwBrevix_930::ScoreDictVar* fTarget = nullptr;
    bool fIsClassification = false;
    std::string fTargetName;
    std::vector<std::string> fCategories;
    std::unique_ptr<const TargetRules> fTargetRules;
    // Null where nothing is to be computed.
    std::unique_ptr<const OutputProgram> fOutputProgram;
    std::vector<InputField> fInputs;
    // Where the inputs stand in the host's records, and their variables.
    std::vector<int> fInputPlaces;
    std::vector<const KwBrevix_930::DictVar*> fInputVariables;
    std::vector<OutputColumn> fColumns;
    std::vector<std::string> fNotes;
    std::vector<std::string> fIgnored;
};

}  // namespace brevix
