// Derived fields beside the scoring that they serve: 45 of them over 9 raw columns, as indicators of five columns'
// categories and lines through four, in a model of 60 support vectors. Time is for one row. BM_Score/derived scores
// them; BM_Score/raw is a model of as many numeric columns without a derived field.
#include <benchmark/benchmark.h>

#include <memory>
#include <random>
#include <stdexcept>
#include <string>

#include "host/CaseRecord.h"
#include "host/ScoreResult.h"
#include "host/number_text.h"
#include "host/transform/TransformationDictionary.h"
#include "plugin/SVMTranslator.h"
#include "svm/SVMModel.h"

namespace {

using KwBrevix_930::CaseRecord;
using KwBrevix_930::SVMModel;

constexpr int kTexts = 5;
constexpr int kNumbers = 4;
constexpr int kCategories = 8;
constexpr int kDerived = kTexts * kCategories + kNumbers + 1;
constexpr int kVectors = 60;

std::string Named(const std::string& tag, const std::string& name, const std::string& more) {
    return "<" + tag + " name=\"" + name + "\" " + more;
}

std::string RawFields() {
    std::string text;
    for (int i = 0; i < kTexts; ++i) {
        text += Named("DataField", "s" + std::to_string(i), R"(optype="categorical" dataType="string">)");
        for (int k = 0; k < kCategories; ++k)
            text += R"(<Value value="category )" + std::to_string(k) + R"("/>)";
        text += "</DataField>";
    }
    for (int i = 0; i < kNumbers; ++i)
        text += Named("DataField", "x" + std::to_string(i), R"(optype="continuous" dataType="double"/>)");
    return text;
}

std::string DerivedField(int number, const std::string& expression) {
    return Named("DerivedField", "d" + std::to_string(number), R"(optype="continuous" dataType="double">)") +
           expression + "</DerivedField>";
}

std::string DerivedFields() {
    std::string text;
    int number = 0;
    for (int i = 0; i < kTexts; ++i) {
        for (int k = 0; k < kCategories; ++k)
            text += DerivedField(number++, R"(<NormDiscrete field="s)" + std::to_string(i) + R"(" value="category )" +
                                               std::to_string(k) + R"("/>)");
    }
    for (int i = 0; i < kNumbers; ++i)
        text += DerivedField(number++, R"(<NormContinuous field="x)" + std::to_string(i) +
                                           R"("><LinearNorm orig="0" norm="-1.5"/><LinearNorm orig="3" norm="0.25"/>)"
                                           R"(</NormContinuous>)");
    return text + DerivedField(number, R"(<Apply function="*"><FieldRef field="x0"/><FieldRef field="x1"/></Apply>)");
}

// prefix: of the columns' names.
std::string Document(const std::string& fields, const std::string& derived, const std::string& prefix) {
    std::mt19937_64 random(20250117);
    std::uniform_real_distribution<double> value(-1.0, 1.0);
    std::string text = R"(<PMML version="4.4"><Header/><DataDictionary>)" + fields +
                       R"(<DataField name="y" optype="continuous" dataType="double"/></DataDictionary>)"
                       R"(<SupportVectorMachineModel functionName="regression"><MiningSchema>)"
                       R"(<MiningField name="y" usageType="target"/></MiningSchema><LocalTransformations>)" +
                       derived +
                       R"(</LocalTransformations><RadialBasisKernelType gamma="0.125"/><VectorDictionary>)"
                       "<VectorFields>";
    std::string indices;
    for (int i = 0; i < kDerived; ++i) {
        text += R"(<FieldRef field=")" + prefix + std::to_string(i) + R"("/>)";
        indices += std::to_string(i + 1) + " ";
    }
    text += "</VectorFields>";
    std::string supports;
    std::string coefficients;
    for (int v = 0; v < kVectors; ++v) {
        const std::string id = std::to_string(v);
        text += R"(<VectorInstance id=")" + id + R"("><REAL-SparseArray n=")" + std::to_string(kDerived) +
                "\"><Indices>" + indices + "</Indices><REAL-Entries>";
        for (int i = 0; i < kDerived; ++i)
            text += KwBrevix_930::NumberText(value(random)) + " ";
        text += "</REAL-Entries></REAL-SparseArray></VectorInstance>";
        supports += R"(<SupportVector vectorId=")" + id + R"("/>)";
        coefficients += R"(<Coefficient value=")" + KwBrevix_930::NumberText(value(random)) + R"("/>)";
    }
    return text + "</VectorDictionary><SupportVectorMachine><SupportVectors>" + supports +
           R"(</SupportVectors><Coefficients absoluteValue="0.375">)" + coefficients +
           "</Coefficients></SupportVectorMachine></SupportVectorMachineModel></PMML>";
}

std::unique_ptr<SVMModel> Translate(const std::string& text) {
    KwBrevix_930::SVMTranslator translator;
    std::unique_ptr<SVMModel> model(dynamic_cast<SVMModel*>(translator.ParseFromTree(text, std::string())));
    if (!model)
        throw std::runtime_error("no model");
    return model;
}

std::unique_ptr<SVMModel> DerivedModel() {
    return Translate(Document(RawFields(), DerivedFields(), "d"));
}

std::unique_ptr<SVMModel> RawModel() {
    std::string fields;
    for (int i = 0; i < kDerived; ++i)
        fields += Named("DataField", "c" + std::to_string(i), R"(optype="continuous" dataType="double"/>)");
    return Translate(Document(fields, "", "c"));
}

// A record in which every field has a value.
std::unique_ptr<CaseRecord> FilledRecord(const SVMModel& model) {
    auto record = std::make_unique<CaseRecord>(*model.GetDictionary());
    int number = 0;
    for (auto* variable : model.GetDictionary()->GetVars()) {
        const int index = record->GetIndex(variable->GetName());
        if (variable->IsString())
            record->SetText(index, "category " + std::to_string(number++ % kCategories));
        else
            record->SetNumber(index, 0.25 * ++number);
    }
    return record;
}

void Score(benchmark::State& state, SVMModel& model) {
    const auto record = FilledRecord(model);
    KwBrevix_930::ScoreResult* result = nullptr;
    for (auto _ : state) {
        if (model.GetScore(record.get(), result, false).IsError())
            state.SkipWithError("the row has no score");
        benchmark::DoNotOptimize(result);
    }
    delete result;
}

void BM_DerivedFields(benchmark::State& state) {
    const auto model = DerivedModel();
    const auto record = FilledRecord(*model);
    for (auto* variable : model->GetDictionary()->GetVars())
        variable->SetIndex(record->GetIndex(variable->GetName()));
    const auto* transformations = model->GetTransformationDictionary();
    for (auto _ : state)
        benchmark::DoNotOptimize(transformations->GetValuesForDerivedVars(record.get(), model->GetDictionary()));
}

void BM_Score(benchmark::State& state, bool isDerived) {
    const auto model = isDerived ? DerivedModel() : RawModel();
    Score(state, *model);
}

BENCHMARK(BM_DerivedFields);
BENCHMARK_CAPTURE(BM_Score, derived, true);
BENCHMARK_CAPTURE(BM_Score, raw, false);

}  // namespace

BENCHMARK_MAIN();
