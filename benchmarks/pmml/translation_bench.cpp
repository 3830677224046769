// Translation of big documents from memory, beside the time that the XML library alone takes to build their DOM.
// BM_Translate is parsing and translation together; its time divided by that of BM_BuildDom with the same argument is
// what translation costs in all. Both report bytes a second, which stay the same as documents grow.
#include <cstdint>
#include <memory>
#include <random>
#include <string>

#include <benchmark/benchmark.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "host/DocumentParser.h"
#include "host/ScoreModel.h"
#include "host/number_text.h"
#include "plugin/SVMTranslator.h"

namespace {

using KwBrevix_930::NumberText;

constexpr int kColumns = 200;

std::string Head(int categories) {
    std::string text = R"(<PMML xmlns="http://www.dmg.org/PMML-4_4" version="4.4"><Header/><DataDictionary>)";
    for (int i = 1; i <= kColumns; ++i)
        text += R"(<DataField name="x)" + std::to_string(i) + R"(" optype="continuous" dataType="double"/>)";
    text += R"(<DataField name="y" optype="categorical" dataType="string">)";
    for (int k = 0; k < categories; ++k)
        text += R"(<Value value="c)" + std::to_string(k) + R"("/>)";
    text += R"(</DataField></DataDictionary><SupportVectorMachineModel functionName="classification")"
            R"( classificationMethod="OneAgainstOne"><MiningSchema><MiningField name="y" usageType="target"/>)";
    for (int i = 1; i <= kColumns; ++i)
        text += R"(<MiningField name="x)" + std::to_string(i) + R"("/>)";
    text += "</MiningSchema>\n<RadialBasisKernelType gamma=\"0.0625\"/>\n<VectorDictionary><VectorFields>";
    for (int i = 1; i <= kColumns; ++i)
        text += R"(<FieldRef field="x)" + std::to_string(i) + R"("/>)";
    return text + "</VectorFields>\n";
}

void AppendInstance(std::string& text, int number, int entries, std::mt19937_64& random) {
    std::uniform_real_distribution<double> value(-1.0, 1.0);
    const int stride = kColumns / entries;
    text += "<VectorInstance id=\"" + std::to_string(number) + "\"><REAL-SparseArray n=\"" + std::to_string(kColumns) +
            "\"><Indices>";
    for (int i = 0; i < entries; ++i)
        text += std::to_string(1 + i * stride) + ' ';
    text += "</Indices><REAL-Entries>";
    for (int i = 0; i < entries; ++i)
        text += NumberText(value(random)) + ' ';
    text += "</REAL-Entries></REAL-SparseArray></VectorInstance>\n";
}

void AppendMachine(std::string& text, int target, int alternate, int vectors, std::mt19937_64& random) {
    std::uniform_real_distribution<double> value(-1.0, 1.0);
    text += "<SupportVectorMachine targetCategory=\"c" + std::to_string(target) + "\" alternateTargetCategory=\"c" +
            std::to_string(alternate) + "\">\n<SupportVectors>\n";
    for (int i = 0; i < vectors; ++i)
        text += "<SupportVector vectorId=\"" + std::to_string(i) + "\"/>\n";
    text += "</SupportVectors>\n<Coefficients absoluteValue=\"0.375\">\n";
    for (int i = 0; i < vectors; ++i)
        text += "<Coefficient value=\"" + NumberText(value(random)) + "\"/>\n";
    text += "</Coefficients>\n</SupportVectorMachine>\n";
}

// One machine for each pair of categories; each names the first vectors of the dictionary.
std::string Document(int instances, int entries, int categories, int vectors) {
    std::mt19937_64 random(20240611);
    std::string text = Head(categories);
    for (int i = 0; i < instances; ++i)
        AppendInstance(text, i, entries, random);
    text += "</VectorDictionary>\n";
    for (int i = 0; i < categories; ++i) {
        for (int k = i + 1; k < categories; ++k)
            AppendMachine(text, i, k, vectors, random);
    }
    return text + "</SupportVectorMachineModel></PMML>\n";
}

// Two categories, one machine, instances of 50 entries.
std::string ManyInstances(int instances) {
    return Document(instances, 50, 2, instances);
}

// Ten categories, 45 machines, each over all instances.
std::string SharedInstances(int instances) {
    return Document(instances, 50, 10, instances);
}

using Generator = std::string (*)(int);

void BuildDom(benchmark::State& state, Generator generate) {
    KwBrevix_930::DocumentParser::Initialize();
    const std::string text = generate(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(), "document");
        xercesc::XercesDOMParser parser;
        parser.setDoNamespaces(true);
        parser.parse(source);
        benchmark::DoNotOptimize(parser.getDocument());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * static_cast<std::int64_t>(state.iterations()));
    state.counters["MB"] = static_cast<double>(text.size()) * 1e-6;
}

void Translate(benchmark::State& state, Generator generate) {
    const std::string text = generate(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        KwBrevix_930::SVMTranslator translator;
        const std::unique_ptr<KwBrevix_930::ScoreModel> model(translator.ParseFromTree(text, std::string()));
        benchmark::DoNotOptimize(model.get());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * static_cast<std::int64_t>(state.iterations()));
    state.counters["MB"] = static_cast<double>(text.size()) * 1e-6;
}

void BM_BuildDom_ManyInstances(benchmark::State& state) {
    BuildDom(state, ManyInstances);
}

void BM_Translate_ManyInstances(benchmark::State& state) {
    Translate(state, ManyInstances);
}

void BM_BuildDom_SharedInstances(benchmark::State& state) {
    BuildDom(state, SharedInstances);
}

void BM_Translate_SharedInstances(benchmark::State& state) {
    Translate(state, SharedInstances);
}

BENCHMARK(BM_BuildDom_ManyInstances)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Translate_ManyInstances)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildDom_SharedInstances)->Arg(60)->Arg(600)->Arg(6000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Translate_SharedInstances)->Arg(60)->Arg(600)->Arg(6000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
