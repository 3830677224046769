// A model that is ready to score: the document parsed, prepared and translated by the plug-in.
#include "runtime/ScoringModel.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <new>
#include <system_error>

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "host/BXException.h"
#include "host/NumericValue.h"
#include "host/ScoreClsResult.h"
#include "host/ScoreDictVar.h"
#include "host/ScoreDictionary.h"
#include "host/ScoreTranslator.h"
#include "host/ScoringLog.h"
#include "runtime/Error.h"
#include "runtime/ModelDocument.h"
#include "runtime/PluginLibrary.h"
#include "runtime/preparation.h"
#include "runtime/refusals.h"
#include "svm/SVMRegResult.h"

namespace brevix {

namespace {

using KwBrevix_930::BrevixTranscoder;
using KwBrevix_930::BXException;
using KwBrevix_930::NumericValue;
using KwBrevix_930::ScoreResult;

// The document is read by libraries with exceptions of their own: whatever they throw becomes an Error.
template <class Step>
auto withOneErrorType(const Step& step) {
    try {
        return step();
    } catch (const BXException& fault) {
        throw Error(fault.what(), fault.GetErrorCode());
    } catch (const xercesc::OutOfMemoryException&) {
        throw std::bad_alloc();
    } catch (const xercesc::XMLException& fault) {
        throw Error(BrevixTranscoder().ToNarrow(fault.getMessage()));
    } catch (const xercesc::DOMException& fault) {
        throw Error(BrevixTranscoder().ToNarrow(fault.getMessage()));
    }
}

std::unique_ptr<PluginLibrary> loadPlugin(const ModelOptions& options) {
    return std::make_unique<PluginLibrary>(options.plugin.empty() ? PluginLibrary::findDefault() : options.plugin);
}

std::ifstream openStream(const std::string& path) {
    if (std::filesystem::is_directory(path))
        throw Error("it is a directory");
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        throw Error("it cannot be opened: " + std::generic_category().message(errno));
    return stream;
}

std::optional<double> presentValue(double value, double absent) {
    return value == absent ? std::nullopt : std::optional(value);
}

std::optional<double> presentValue(double value) {
    return presentValue(value, NumericValue::GetSysmisValue());
}

}  // namespace

template <class Parse>
std::unique_ptr<ScoringModel> ScoringModel::open(std::unique_ptr<PluginLibrary> plugin, const ModelOptions& options,
                                                 const Parse& parse) {
    return withOneErrorType([&] {
        const ModelDocument document(parse());
        requireModel(document);
        auto notes = options.prepares ? prepareDocument(document) : std::vector<std::string>();
        return std::unique_ptr<ScoringModel>(new ScoringModel(std::move(plugin), document, options, std::move(notes)));
    });
}

std::unique_ptr<ScoringModel> ScoringModel::openFile(const std::string& path, const ModelOptions& options) {
    auto plugin = loadPlugin(options);
    try {
        return open(std::move(plugin), options, [&path] {
            std::ifstream stream = openStream(path);
            return KwBrevix_930::DocumentParser().ParseStream(stream);
        });
    } catch (const Error& fault) {
        throw Error(path + ": " + fault.what(), fault.getCode());
    }
}

std::unique_ptr<ScoringModel> ScoringModel::openText(std::string_view text, const ModelOptions& options) {
    return open(loadPlugin(options), options, [text] { return KwBrevix_930::DocumentParser().ParseText(text); });
}

ScoringModel::ScoringModel(std::unique_ptr<PluginLibrary> plugin, const ModelDocument& document,
                           const ModelOptions& options, std::vector<std::string> notes)
    : fPlugin(std::move(plugin)),
      fTranslator(fPlugin->makeTranslator()),
      fModel(fTranslator->ParseFromTree(&document.getDocument(), std::string())),
      fNotes(std::move(notes)) {
    if (!fModel || !fModel->GetDictionary() || !fModel->GetTargetVar())
        throw Error("the plug-in gives no model with fields and a target");
    describeTarget();
    fInputs = findInputs(document, *fModel->GetDictionary(), fModel->GetTransformationDictionary());
    refuseUnbuilt(document, *fModel->GetDictionary(), fInputs);
    fColumns = listOutputColumns(document, fTarget);
    const auto ignored = noteIgnored(document);
    fNotes.insert(fNotes.end(), ignored.begin(), ignored.end());
    fModel->SetMissingValuePolicy(options.missingPolicy);
    fModel->SetPredictionOnly(options.predictsOnly);
    warmUp();
}

ScoringModel::~ScoringModel() = default;

void ScoringModel::describeTarget() {
    const auto* target = fModel->GetTargetVar();
    fTarget.name = target->GetName();
    fTarget.isClassification = fModel->GetModelType() == KwBrevix_930::ScoreModel::kSVMClassification;
    if (!fTarget.isClassification || !target->GetCategories())
        return;
    for (const auto& category : *target->GetCategories())
        fTarget.categories.push_back(category.name);
}

std::unique_ptr<KwBrevix_930::CaseRecord> ScoringModel::makeRecord() const {
    return std::make_unique<KwBrevix_930::CaseRecord>(*fModel->GetDictionary());
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
    score(*makeRecord(), outcome);
}

void ScoringModel::score(const KwBrevix_930::CaseRecord& record, Outcome& outcome) const {
    outcome.category = -1;
    outcome.number.reset();
    outcome.confidence.reset();
    outcome.probabilities.clear();
    outcome.stdDev.reset();
    outcome.lower.reset();
    outcome.upper.reset();
    ScoreResult* given = nullptr;
    const KwScore::KwStatus status = fModel->GetScore(&record, given, false);
    const std::unique_ptr<const ScoreResult> result(given);
    outcome.status = status.IsError() ? status.GetErrorCode() : 0;
    if (status.IsError() || !result)
        return;
    if (fTarget.isClassification)
        readClassification(*result, outcome);
    else
        readRegression(*result, outcome);
}

void ScoringModel::readClassification(const ScoreResult& result, Outcome& outcome) const {
    const int category = fModel->GetTargetVar()->GetCategoryIndex(result.GetPrediction());
    outcome.category = category < static_cast<int>(fTarget.categories.size()) ? category : -1;
    outcome.confidence = presentValue(result.GetConfidence(), -1.0);
    const auto& percents = static_cast<const KwBrevix_930::ScoreClsResult&>(result).GetAllValuePercent();
    for (const auto& [value, percent] : percents)
        outcome.probabilities.push_back(percent);
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

}  // namespace brevix
