// SVMModel::GetScore on the example models, beside LIBSVM on the same vectors; time is for one case.
#include <benchmark/benchmark.h>
#include <libsvm/svm.h>

#include <cmath>
#include <exception>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "benchmarks/svm/LibsvmPeer.h"
#include "host/CaseRecord.h"
#include "host/ScoreClsResult.h"
#include "plugin/SVMTranslator.h"
#include "tests/support/SVMModelTestAccess.h"
#include "tests/support/csv_table.h"

namespace {

using benchmarks::LibsvmPeer;
using KwBrevix_930::CaseRecord;
using KwBrevix_930::ScoreClsResult;
using KwBrevix_930::ScoreResult;
using KwBrevix_930::SVMModel;
using KwBrevix_930::SVMModelTestAccess;

// Both sum the same terms, in another order at most.
constexpr double kTolerance = 1e-12;

std::unique_ptr<SVMModel> LoadModel(const std::string& path) {
    std::ifstream document(path);
    KwBrevix_930::SVMTranslator translator;
    std::unique_ptr<SVMModel> model(dynamic_cast<SVMModel*>(translator.ParseFromTree(document, std::string())));
    if (!model)
        throw std::runtime_error(path + ": no model");
    return model;
}

// A model with all its cases, as records and as LIBSVM's vectors.
class Example {
public:
    explicit Example(const std::string& name)
        : fName(name), fModel(LoadModel(Folder() + "model.pmml")), fPeer(*fModel->GetSupportVectorMachineModel()) {
        const auto table = test_support::ReadCsv(Folder() + "cases.csv");
        for (const auto& row : table.rows) {
            fRecords.push_back(std::make_unique<CaseRecord>(*fModel->GetDictionary()));
            for (std::size_t column = 0; column < table.header.size(); ++column) {
                const int index = fRecords.back()->GetIndex(table.header[column]);
                if (index >= 0)
                    fRecords.back()->SetText(index, row[column]);
            }
        }
        for (std::size_t row = 0; row < fRecords.size(); ++row)
            AddCase(row);
        if (fRecords.empty())
            throw std::runtime_error(name + ": no cases");
    }

    const std::string& GetName() const { return fName; }
    SVMModel& GetModel() { return *fModel; }
    const LibsvmPeer& GetPeer() const { return fPeer; }
    std::size_t GetCaseCount() const { return fRecords.size(); }
    const CaseRecord& GetRecord(std::size_t row) const { return *fRecords[row]; }
    const svm_node* GetCase(std::size_t row) const { return fCases[row].data(); }

private:
    std::string Folder() const { return std::string(BREVIX_SOURCE_DIR) + "/examples/" + fName + "/"; }

    // Scores the case by both ways, and refuses an example of which they do not say the same.
    void AddCase(std::size_t row) {
        ScoreResult* filled = nullptr;
        const bool isError = fModel->GetScore(fRecords[row].get(), filled, false).IsError();
        const std::unique_ptr<ScoreResult> result(filled);
        SVMModelTestAccess access(*fModel);
        bool isComplete = false;
        SVMModelTestAccess::Indices indices;
        SVMModelTestAccess::Values values;
        access.FillCaseRecord(filled, fRecords[row].get(), isComplete, indices, values);
        if (isError || !isComplete)
            throw std::runtime_error(fName + ": row " + std::to_string(row + 1) + " is not scored");
        fCases.push_back(LibsvmPeer::MakeCase(indices, values));
        const double uncertainty = CompareDecisions(row, indices, values);
        if (fPeer.HasProbabilities())
            CompareProbabilities(row, dynamic_cast<const ScoreClsResult&>(*result), uncertainty);
    }

    // Returns: the sum of |A| scale over the machines that have a sigmoid, to which errors of probabilities are in
    // proportion.
    double CompareDecisions(std::size_t row, const SVMModelTestAccess::Indices& indices,
                            const SVMModelTestAccess::Values& values) {
        std::vector<double> peers(fPeer.GetPairCount());
        svm_predict_values(fPeer.GetModel(), GetCase(row), peers.data());
        const auto& machines = fModel->GetSupportVectorMachineModel()->GetMachines();
        double uncertainty = 0.0;
        for (std::size_t m = 0; m < machines.size(); ++m) {
            double decision = 0.0;
            SVMModelTestAccess(*fModel).ScoreByKernel(indices, values, static_cast<std::int32_t>(m), decision);
            const double scale = Scale(*machines[m], indices, values);
            Compare(row, "machine " + std::to_string(m + 1), decision, fPeer.GetDecision(peers, m), scale);
            if (machines[m]->extension)
                uncertainty += std::fabs(machines[m]->extension->probabilityA) * scale;
        }
        return uncertainty;
    }

    // The sum of |coefficient * K| plus |bias|.
    double Scale(const KwBrevix_930::ST_SUPPORTVECTORMACHINE& machine, const SVMModelTestAccess::Indices& indices,
                 const SVMModelTestAccess::Values& values) const {
        double scale = std::fabs(machine.bias);
        for (std::size_t k = 0; k < machine.coefficients.size(); ++k) {
            const auto& vector = *machine.supportVectors[k];
            scale += std::fabs(fModel->GetKernel()->Evaluate(indices, values, vector.indices, vector.values) *
                               machine.coefficients[k]);
        }
        return scale;
    }

    void CompareProbabilities(std::size_t row, const ScoreClsResult& result, double uncertainty) {
        std::vector<double> peers(fModel->GetTargetCategories().size());
        svm_predict_probability(fPeer.GetModel(), GetCase(row), peers.data());
        const auto& percents = result.GetAllValuePercent();
        if (percents.size() != peers.size())
            throw std::runtime_error(fName + ": row " + std::to_string(row + 1) + " has no probabilities");
        for (std::size_t c = 0; c < peers.size(); ++c)
            Compare(row, "probability " + std::to_string(c + 1), percents[c].second, peers[c], 1.0 + uncertainty);
    }

    void Compare(std::size_t row, const std::string& what, double ours, double peers, double scale) const {
        if (!(std::fabs(ours - peers) <= kTolerance * scale))
            throw std::runtime_error(fName + ": row " + std::to_string(row + 1) + ", " + what + " is off by " +
                                     std::to_string((ours - peers) / scale * 1e12) + "e-12 of its scale");
    }

    std::string fName;
    std::unique_ptr<SVMModel> fModel;
    LibsvmPeer fPeer;
    std::vector<std::unique_ptr<CaseRecord>> fRecords;
    std::vector<LibsvmPeer::Case> fCases;
};

void BM_GetScore(benchmark::State& state, Example& example) {
    ScoreResult* result = nullptr;
    example.GetModel().GetScore(&example.GetRecord(0), result, false);
    const std::unique_ptr<ScoreResult> owner(result);
    std::size_t row = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(example.GetModel().GetScore(&example.GetRecord(row), result, false));
        row = row + 1 < example.GetCaseCount() ? row + 1 : 0;
    }
}

using Prediction = double (*)(const svm_model*, const svm_node*, double*);

void BM_Libsvm(benchmark::State& state, const Example& example, Prediction predict) {
    std::vector<double> numbers(example.GetPeer().GetPairCount() + 1);
    std::size_t row = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(predict(example.GetPeer().GetModel(), example.GetCase(row), numbers.data()));
        benchmark::ClobberMemory();
        row = row + 1 < example.GetCaseCount() ? row + 1 : 0;
    }
}

void Register(Example& example) {
    const std::string subject = "BM_SVMModel_GetScore";
    benchmark::RegisterBenchmark((subject + "/" + example.GetName()).c_str(),
                                 [&example](benchmark::State& state) { BM_GetScore(state, example); });
    benchmark::RegisterBenchmark(
        (subject + "_svm_predict_values/" + example.GetName()).c_str(),
        [&example](benchmark::State& state) { BM_Libsvm(state, example, svm_predict_values); });
    if (example.GetPeer().HasProbabilities())
        benchmark::RegisterBenchmark(
            (subject + "_svm_predict_probability/" + example.GetName()).c_str(),
            [&example](benchmark::State& state) { BM_Libsvm(state, example, svm_predict_probability); });
}

}  // namespace

int main(int argc, char** argv) try {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    std::vector<std::unique_ptr<Example>> examples;
    for (const char* name : {"iris", "breast_cancer", "digits", "diabetes", "wine_probability",
                             "breast_cancer_probability", "wine_binned"}) {
        examples.push_back(std::make_unique<Example>(name));
        Register(*examples.back());
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
} catch (const std::exception& error) {
    std::cerr << "scoring_bench: " << error.what() << '\n';
    return 1;
}
