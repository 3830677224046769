// A plug-in around the real one: it counts how its models are asked to score, and does not offer to score many cases in
// one call, refuses them or lets some fail where a test wants that.
#include "tests/runtime/wrapping_plugin.h"

#include <memory>
#include <utility>

#include "host/BaseTranslator.h"
#include "host/IBatchModel.h"
#include "host/ScoreModel.h"
#include "runtime/PluginLibrary.h"

namespace KwBrevix_930 {
namespace {

using KwScore::KwStatus;

test_support::WrappingPlugin g_plugin;

// Hands everything on.
class WrappedModel : public ScoreModel {
public:
    explicit WrappedModel(std::unique_ptr<ScoreModel> model) : fModel(std::move(model)) {}

    void SetScoreDictionary(ScoreDictionary* dictionary) override { fModel->SetScoreDictionary(dictionary); }
    void SetTransformationScoreDictionary(TransformationDictionary* dictionary) override {
        fModel->SetTransformationScoreDictionary(dictionary);
    }
    void SetResultScoreDictionary(ScoreDictionary* dictionary) override {
        fModel->SetResultScoreDictionary(dictionary);
    }
    void SetVarRole(const std::string& name, VarRole role) override { fModel->SetVarRole(name, role); }
    void SetVarRole(const ScoreDictVar* variable, VarRole role) override { fModel->SetVarRole(variable, role); }
    void SetMissingValuePolicy(MVPolicy policy) override { fModel->SetMissingValuePolicy(policy); }
    void SetVersionInfo(ScoreVersionInfo* version) override { fModel->SetVersionInfo(version); }
    void SetPredictionOnly(bool predictionOnly) override { fModel->SetPredictionOnly(predictionOnly); }
    VarRole GetVarRole(const std::string& name) const override { return fModel->GetVarRole(name); }
    VarRole GetVarRole(const ScoreDictVar* variable) const override { return fModel->GetVarRole(variable); }
    const ScoreVersionInfo* GetVersionInfo() const override { return fModel->GetVersionInfo(); }
    ScoreDictionary* GetVarsOfRole(VarRole role) const override { return fModel->GetVarsOfRole(role); }
    const ScoreDictVar* GetTargetVar() const override { return fModel->GetTargetVar(); }
    ScoreDictionary* GetDictionary() const override { return fModel->GetDictionary(); }
    TransformationDictionary* GetTransformationDictionary() const override {
        return fModel->GetTransformationDictionary();
    }
    ScoreDictionary* GetResultDictionary() const override { return fModel->GetResultDictionary(); }
    KwStatus GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool flag) override {
        ++g_plugin.singleCalls;
        return fModel->GetScore(record, result, flag);
    }
    MVPolicy GetMissingValuePolicy() const override { return fModel->GetMissingValuePolicy(); }
    ModelType GetModelType() const override { return fModel->GetModelType(); }
    bool GetPredictionOnly() const override { return fModel->GetPredictionOnly(); }
    void Display(std::ostream& stream) const override { fModel->Display(stream); }
    void SetScoreDictionary(ScoreDictionary* dictionary, bool owned) override {
        fModel->SetScoreDictionary(dictionary, owned);
    }
    void SetTransformationScoreDictionary(TransformationDictionary* dictionary, bool owned) override {
        fModel->SetTransformationScoreDictionary(dictionary, owned);
    }

protected:
    std::unique_ptr<ScoreModel> fModel;
};

class WrappedBatchModel : public WrappedModel, public IBatchModel {
public:
    using WrappedModel::WrappedModel;

    void ScoreCases(std::size_t count, const ScoreCaseRecord* const* records, ScoreResult** results, KwStatus* statuses,
                    bool flag) override {
        ++g_plugin.batchCalls;
        g_plugin.casesInBatches += count;
        dynamic_cast<IBatchModel&>(*fModel).ScoreCases(count, records, results, statuses, flag);
    }
    bool ScoreNumbers(std::size_t count, const double* const* columns, std::size_t columnCount, double* numbers,
                      KwScore::KwStatus* statuses) override {
        if (count > 0 && g_plugin.refusesNumbers)
            return false;
        g_plugin.batchCalls += count > 0 ? 1 : 0;
        const bool isTaken =
            dynamic_cast<IBatchModel&>(*fModel).ScoreNumbers(count, columns, columnCount, numbers, statuses);
        for (std::size_t i = 0; i < count; ++i) {
            ++g_plugin.casesInBatches;
            if (g_plugin.failsEach > 0 && g_plugin.casesInBatches % g_plugin.failsEach == 0)
                statuses[i] = KwStatus(4711, true);
        }
        return isTaken;
    }
};

class WrappingTranslator : public BaseTranslator {
public:
    explicit WrappingTranslator(std::unique_ptr<ScoreTranslator> translator)
        : BaseTranslator(""), fTranslator(std::move(translator)) {}

    using BaseTranslator::ParseFromTree;
    ScoreModel* ParseFromTree(xercesc::DOMElement* dataDictionary, xercesc::DOMElement* transformations,
                              xercesc::DOMElement* model, const std::string& transcoder) override {
        return Wrap(fTranslator->ParseFromTree(dataDictionary, transformations, model, transcoder));
    }
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& transcoder) override {
        return Wrap(fTranslator->ParseFromTree(document, transcoder));
    }

private:
    static ScoreModel* Wrap(ScoreModel* made) {
        std::unique_ptr<ScoreModel> model(made);
        if (g_plugin.offersBatches)
            return new WrappedBatchModel(std::move(model));
        return new WrappedModel(std::move(model));
    }

    std::unique_ptr<ScoreTranslator> fTranslator;
};

}  // namespace
}  // namespace KwBrevix_930

KwBrevix_930::ScoreTranslator* GiveMyTranslator() {
    static const brevix::PluginLibrary plugin(BREVIX_PLUGIN);
    return new KwBrevix_930::WrappingTranslator(plugin.makeTranslator());
}

test_support::WrappingPlugin* GetWrappingPlugin() {
    return &KwBrevix_930::g_plugin;
}
