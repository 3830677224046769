// A model that is ready to score: the document parsed, prepared and translated by the plug-in.
#include "runtime/ScoringModel.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "host/CaseRecord.h"
#include "host/DictVar.h"
#include "host/IBatchModel.h"
#include "host/NumericValue.h"
#include "host/ScoreClsResult.h"
#include "host/ScoreDictVar.h"
#include "host/ScoreDictionary.h"
#include "host/ScoreModel.h"
#include "host/ScoreTranslator.h"
#include "host/ScoringLog.h"
#include "host/transform/TransformationDictionary.h"
#include "runtime/ModelDocument.h"
#include "runtime/OutputProgram.h"
#include "runtime/PlainCases.h"
#include "runtime/PluginLibrary.h"
#include "runtime/PreparedDocument.h"
#include "runtime/TargetRules.h"
#include "runtime/input_fields.h"
#include "runtime/one_error_type.h"
#include "runtime/output_columns.h"
#include "runtime/refusals.h"
#include "svm/SVMRegResult.h"

namespace brevix {

namespace {

using KwBrevix_930::NumericValue;
using KwBrevix_930::ScoreResult;

std::unique_ptr<PluginLibrary> loadPlugin(const ModelOptions& options) {
    return std::make_unique<PluginLibrary>(options.plugin.empty() ? PluginLibrary::findDefault() : options.plugin);
}

std::optional<double> presentValue(double value, double absent) {
    return value == absent ? std::nullopt : std::optional(value);
}

std::optional<double> presentValue(double value) {
    return presentValue(value, NumericValue::GetSysmisValue());
}

}  // namespace

std::unique_ptr<ScoringModel> ScoringModel::open(std::unique_ptr<PluginLibrary> plugin,
                                                 const PreparedDocument& prepared, const ModelOptions& options) {
    return withOneErrorType(
        [&] { return std::unique_ptr<ScoringModel>(new ScoringModel(std::move(plugin), prepared, options)); });
}

std::unique_ptr<ScoringModel> ScoringModel::openFile(const std::string& path, const ModelOptions& options) {
    auto plugin = loadPlugin(options);
    return withFileName(
        path, [&] { return open(std::move(plugin), PreparedDocument::openFile(path, options.prepares), options); });
}

std::unique_ptr<ScoringModel> ScoringModel::openText(std::string_view text, const ModelOptions& options) {
    auto plugin = loadPlugin(options);
    return open(std::move(plugin), PreparedDocument::openText(text, options.prepares), options);
}

std::unique_ptr<ScoringModel> ScoringModel::openPrepared(const PreparedDocument& prepared,
                                                         const ModelOptions& options) {
    return open(loadPlugin(options), prepared, options);
}

ScoringModel::ScoringModel(std::unique_ptr<PluginLibrary> plugin, const PreparedDocument& prepared,
                           const ModelOptions& options)
    : fPlugin(std::move(plugin)),
      fTranslator(fPlugin->makeTranslator()),
      fModel(fTranslator->ParseFromTree(&prepared.document->getDocument(), std::string())),
      fBatchModel(dynamic_cast<KwBrevix_930::IBatchModel*>(fModel.get())),
      fMissingPolicy(options.missingPolicy),
      fNotes(prepared.notes) {
    if (!fModel || !fModel->GetDictionary() || !fModel->GetTargetVar())
        throw Error("the plug-in gives no model with fields and a target");
    describeTarget();
    describeOutput(*prepared.document);
    describeFields(*prepared.document);
    fIgnored = noteIgnored(*prepared.document);
    fIgnored.insert(fIgnored.end(), fTargetRules->getNotes().begin(), fTargetRules->getNotes().end());
    fNotes.insert(fNotes.end(), fIgnored.begin(), fIgnored.end());
    fModel->SetMissingValuePolicy(static_cast<KwBrevix_930::ScoreModel::MVPolicy>(options.missingPolicy));
    fModel->SetPredictionOnly(options.predictsOnly);
    warmUp();
}

ScoringModel::~ScoringModel() = default;

void ScoringModel::describeTarget() {
    const auto* target = fTarget = fModel->GetTargetVar();
    fTargetName = target->GetName();
    fIsClassification = fModel->GetModelType() == KwBrevix_930::ScoreModel::kSVMClassification;
    if (!fIsClassification || !target->GetCategories())
        return;
    for (const auto& category : *target->GetCategories())
        fCategories.push_back(category.name);
}

void ScoringModel::describeFields(const ModelDocument& document) {
    const auto& dictionary = *fModel->GetDictionary();
    const auto names = listInputs(document);
    refuseUnbuilt(document, dictionary, names);
    fInputs = describeInputs(document, dictionary, names);
    const KwBrevix_930::CaseRecord record(dictionary);
    for (InputField& input : fInputs) {
        input.isOptional = input.name == fTargetName;
        fInputPlaces.push_back(record.GetIndex(input.name));
        fInputVariables.push_back(&dynamic_cast<const KwBrevix_930::DictVar&>(*dictionary.FindVar(input.name)));
    }
}

void ScoringModel::describeOutput(const ModelDocument& document) {
    const auto& variable = *fModel->GetTargetVar();
    const TargetDescription target{fTargetName, describeType(document, variable), fIsClassification, fCategories};
    fTargetRules = std::make_unique<TargetRules>(document, target);
    OutputProgram::Target predicted{&variable, fCategories, fCategories};
    const auto* declared = dynamic_cast<const KwBrevix_930::DictVar*>(&variable);
    for (std::size_t i = 0; i < fCategories.size(); ++i) {
        const int category = static_cast<int>(i);
        if (const std::string* text = fTargetRules->findDisplayValue(category))
            predicted.displayValues[i] = *text;
        else if (declared)
            predicted.displayValues[i] = declared->GetDisplayValue(category);
    }
    auto program =
        std::make_unique<OutputProgram>(*fModel->GetDictionary(), fModel->GetTransformationDictionary(),
                                        std::move(predicted), fMissingPolicy == MissingPolicy::kUseReplacement);
    fColumns = listOutputColumns(document, target, program);
    fOutputProgram = std::move(program);
}

// What the vectors read, and what the Output reads beside; the target, whose value few tables know, is the last.
std::vector<std::string> ScoringModel::listInputs(const ModelDocument& document) const {
    const auto& dictionary = *fModel->GetDictionary();
    auto names = findInputs(document, dictionary, fModel->GetTransformationDictionary());
    if (!fOutputProgram)
        return names;
    std::unordered_set<std::string> wanted(names.begin(), names.end());
    for (const std::string& name : fOutputProgram->listRawFields())
        wanted.insert(name);
    names.clear();
    for (const auto* variable : dictionary.GetVars()) {
        if (wanted.contains(variable->GetName()) && variable->GetName() != fTargetName)
            names.push_back(variable->GetName());
    }
    if (wanted.contains(fTargetName))
        names.push_back(fTargetName);
    return names;
}

namespace {

template <class Named>
std::optional<std::size_t> findName(const std::vector<Named>& list, std::string_view name) {
    const auto found = std::find_if(list.begin(), list.end(), [name](const Named& one) { return one.name == name; });
    return found == list.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - list.begin()));
}

}  // namespace

std::optional<std::size_t> ScoringModel::findInput(std::string_view name) const {
    return findName(fInputs, name);
}

std::optional<std::size_t> ScoringModel::findOutputColumn(std::string_view name) const {
    return findName(fColumns, name);
}

std::vector<std::string> ScoringModel::listSources(const std::string& derivedField) const {
    const auto* transformations = fModel->GetTransformationDictionary();
    if (!transformations)
        return {};
    auto names = transformations->FindRawFields({derivedField});
    std::sort(names.begin(), names.end());
    return names;
}

Record ScoringModel::makeRecord() const {
    return Record(std::make_unique<KwBrevix_930::CaseRecord>(*fModel->GetDictionary()), fInputPlaces,
                  fOutputProgram ? fOutputProgram->makeSlots() : OutputSlots());
}

namespace {

// Keeps the trace of a case that no user asked for out of the log.
class TracePause {
public:
    TracePause() { KwBrevix_930::ScoringLog::GetInstance().SetTracing(false); }
    ~TracePause() { KwBrevix_930::ScoringLog::GetInstance().SetTracing(fWasTracing); }
    TracePause(const TracePause&) = delete;
    TracePause& operator=(const TracePause&) = delete;

private:
    const bool fWasTracing = KwBrevix_930::ScoringLog::GetInstance().IsTracing();
};

}  // namespace

// A model fixes the places of its variables when it meets its first record: one thread must do that alone.
void ScoringModel::warmUp() const {
    const TracePause pause;
    Outcome outcome;
    score(makeRecord(), outcome);
}

namespace {

// A result that the plug-in has made serves the record's next case too.
void keep(ScoreResult* result, std::unique_ptr<ScoreResult>& kept) {
    if (!kept)
        kept.reset(result);
}

}  // namespace

void ScoringModel::score(const Record& record, Outcome& outcome) const {
    ScoreResult* result = record.fResult.get();
    const KwScore::KwStatus status = fModel->GetScore(record.fCells.get(), result, false);
    keep(result, record.fResult);
    read(record, status, outcome);
}

namespace {

// Keeps what the plug-in has handed over when it ends, an exception being the end or not.
template <class Home>
class KeptResults {
public:
    KeptResults(std::size_t count, ScoreResult** results, Home home) : fCount(count), fResults(results), fHome(home) {}
    ~KeptResults() {
        for (std::size_t i = 0; i < fCount; ++i)
            keep(fResults[i], fHome(i));
    }
    KeptResults(const KeptResults&) = delete;
    KeptResults& operator=(const KeptResults&) = delete;

private:
    std::size_t fCount;
    ScoreResult** fResults;
    Home fHome;
};

}  // namespace

void ScoringModel::score(std::span<const Record> records, std::span<Outcome> outcomes) const {
    if (!fBatchModel) {
        for (std::size_t i = 0; i < records.size(); ++i)
            score(records[i], outcomes[i]);
        return;
    }
    constexpr std::size_t kMostTogether = 64;
    std::array<const KwBrevix_930::ScoreCaseRecord*, kMostTogether> cells;
    std::array<ScoreResult*, kMostTogether> results;
    std::array<KwScore::KwStatus, kMostTogether> statuses;
    for (std::size_t first = 0; first < records.size(); first += kMostTogether) {
        const auto some = records.subspan(first, std::min(kMostTogether, records.size() - first));
        for (std::size_t i = 0; i < some.size(); ++i) {
            cells[i] = some[i].fCells.get();
            results[i] = some[i].fResult.get();
        }
        {
            const KeptResults kept(
                some.size(), results.data(), [&](std::size_t i) -> auto& { return some[i].fResult; });
            fBatchModel->ScoreCases(some.size(), cells.data(), results.data(), statuses.data(), false);
        }
        for (std::size_t i = 0; i < some.size(); ++i)
            read(some[i], statuses[i], outcomes[first + i]);
    }
}

std::unique_ptr<PlainCases> ScoringModel::makePlainCases() const {
    // The Output reads the record. Results of very many numbers are few at a time as records.
    const std::size_t resultSize = fIsClassification ? 2 + fCategories.size() : 4;
    if (!fBatchModel || fOutputProgram || resultSize > PlainCases::kMostNumbers)
        return nullptr;
    auto cases = std::make_unique<PlainCases>();
    cases->fNumbers.resize(fInputs.size() * PlainCases::kMost);
    for (std::size_t i = 0; i < fInputs.size(); ++i) {
        const auto place = static_cast<std::size_t>(fInputPlaces[i]);
        cases->fColumns.resize(std::max(cases->fColumns.size(), place + 1));
        cases->fColumns[place] = cases->getNumbers(i);
    }
    cases->fResultSize = resultSize;
    cases->fResults.resize(resultSize * PlainCases::kMost);
    const bool isTaken = fBatchModel->ScoreNumbers(0, cases->fColumns.data(), cases->fColumns.size(), nullptr, nullptr);
    return isTaken ? std::move(cases) : nullptr;
}

void ScoringModel::score(PlainCases& cases, std::size_t count) const {
    if (!fBatchModel->ScoreNumbers(count, cases.fColumns.data(), cases.fColumns.size(), cases.fResults.data(),
                                   cases.fStatuses.data()))
        throw Error("the plug-in refuses plain numbers that it said it takes");
}

void ScoringModel::readOutcome(const PlainCases& cases, std::size_t place, Outcome& outcome) const {
    clear(cases.fStatuses[place], outcome);
    outcome.fields.clear();
    if (!cases.hasFailed(place))
        readNumbers(cases.getResult(place), outcome);
    applyTargetRules(outcome);
}

// Makes an outcome of what the plug-in says of a record.
void ScoringModel::read(const Record& record, const KwScore::KwStatus& status, Outcome& outcome) const {
    clear(status, outcome);
    if (!status.IsError() && record.fResult) {
        if (fIsClassification)
            readClassification(*record.fResult, outcome);
        else
            readRegression(*record.fResult, outcome);
    }
    applyTargetRules(outcome);
    if (fOutputProgram && outcome.status == 0)
        fOutputProgram->run(*record.fCells, record.fSlots, outcome);
    else
        outcome.fields.clear();
}

// All but what the Output computes.
void ScoringModel::clear(const KwScore::KwStatus& status, Outcome& outcome) const {
    outcome.category = -1;
    outcome.number.reset();
    outcome.confidence.reset();
    outcome.probabilities.clear();
    outcome.stdDev.reset();
    outcome.lower.reset();
    outcome.upper.reset();
    outcome.status = status.IsError() ? status.GetErrorCode() : 0;
}

void ScoringModel::applyTargetRules(Outcome& outcome) const {
    fTargetRules->rescale(outcome);
    if (fMissingPolicy == MissingPolicy::kUseReplacement)
        fTargetRules->replaceMissing(outcome, fModel->GetPredictionOnly());
}

// The numbers are those of IBatchModel::ScoreNumbers.
void ScoringModel::readNumbers(std::span<const double> result, Outcome& outcome) const {
    if (!fIsClassification) {
        outcome.number = presentValue(result[0]);
        outcome.stdDev = presentValue(result[1], -1.0);
        outcome.lower = presentValue(result[2]);
        outcome.upper = presentValue(result[3]);
        return;
    }
    outcome.category = static_cast<int>(result[0]);
    outcome.confidence = presentValue(result[1], -1.0);
    if (outcome.confidence)
        outcome.probabilities.assign(result.begin() + 2, result.end());
}

// A prediction is one of the target's own category values, as a rule.
int ScoringModel::findCategory(const KwBrevix_930::ScoreValue* prediction) const {
    if (const auto* categories = fTarget->GetCategories()) {
        for (std::size_t i = 0; i < fCategories.size(); ++i) {
            if ((*categories)[i].value.get() == prediction)
                return static_cast<int>(i);
        }
    }
    const int category = fTarget->GetCategoryIndex(prediction);
    return category < static_cast<int>(fCategories.size()) ? category : -1;
}

void ScoringModel::readClassification(const ScoreResult& result, Outcome& outcome) const {
    outcome.category = findCategory(result.GetPrediction());
    outcome.confidence = presentValue(result.GetConfidence(), -1.0);
    const auto& percents = static_cast<const KwBrevix_930::ScoreClsResult&>(result).GetAllValuePercent();
    outcome.probabilities.resize(percents.size());
    for (std::size_t i = 0; i < percents.size(); ++i)
        outcome.probabilities[i] = percents[i].second;
}

void ScoringModel::readRegression(const ScoreResult& result, Outcome& outcome) const {
    if (const auto* prediction = result.GetPrediction())
        outcome.number = presentValue(prediction->GetDouble());
    if (result.GetScoreResultType() != ScoreResult::kSVMRegression)
        return;
    outcome.stdDev = presentValue(static_cast<const KwBrevix_930::ScoreRegResult&>(result).GetStdDev(), -1.0);
    double lower = NumericValue::GetSysmisValue();
    double upper = lower;
    static_cast<const KwBrevix_930::SVMRegResult&>(result).GetCI(lower, upper);
    outcome.lower = presentValue(lower);
    outcome.upper = presentValue(upper);
}

OutputValue ScoringModel::getValue(const Outcome& outcome, const OutputColumn& column) const {
    const auto field = static_cast<std::size_t>(column.field);
    if (column.content == OutputColumn::kField)
        return field < outcome.fields.size() ? outcome.fields[field] : OutputValue{};
    if (column.content == OutputColumn::kStatus)
        return {OutputValue::kNumber, static_cast<double>(outcome.status)};
    if (column.content == OutputColumn::kPrediction && outcome.category >= 0)
        return {OutputValue::kText, 0.0, fCategories[static_cast<std::size_t>(outcome.category)]};
    const double* number = findNumber(outcome, column);
    return number ? OutputValue{OutputValue::kNumber, *number} : OutputValue{};
}

}  // namespace brevix
