// The scoring plan on models at random, one case at a time and in batches, beside the plain loops and LIBSVM; time is
// for one case, from a finished vector to all decision values.
#include <benchmark/benchmark.h>
#include <libsvm/svm.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <iostream>
#include <memory>
#include <numeric>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "benchmarks/svm/LibsvmPeer.h"
#include "benchmarks/svm/peak_terms.h"
#include "svm/SVMKFLinear.h"
#include "svm/SVMKFPolynomial.h"
#include "svm/SVMKFRBF.h"
#include "svm/elementary/elementary_kernels.h"
#include "svm/elementary/exact_exp.h"
#include "svm/elementary/exact_pow.h"
#include "svm/plan/ScoringPlan.h"

namespace {

using benchmarks::LibsvmPeer;
using KwBrevix_930::ST_SUPPORTVECTORMACHINE;
using KwBrevix_930::SVMModelData;
using KwBrevix_930::SVMVectorInstance;
using KwBrevix_930::plan::PlanTarget;
using KwBrevix_930::plan::PlanWorkspace;
using KwBrevix_930::plan::ScoringPlan;
using Values = std::vector<double>;

constexpr std::size_t kCases = 64;

// Both sum the same terms, in another order at most.
constexpr double kTolerance = 1e-12;

struct Shape {
    const char* name;
    std::int32_t kernel;
    std::size_t columns;
    std::size_t vectors;
    // One machine for each pair.
    std::size_t categories;
    double density;
    bool isBinary;
};

constexpr Shape kShapes[] = {
    {"rbf_4x58_3_machines", SVMModelData::kRadialBasis, 4, 58, 3, 1.0, false},
    {"rbf_30x1000_1_machine", SVMModelData::kRadialBasis, 30, 1000, 2, 1.0, false},
    {"rbf_784x6000_45_machines", SVMModelData::kRadialBasis, 784, 6000, 10, 1.0, false},
    {"linear_300x5000", SVMModelData::kLinear, 300, 5000, 2, 1.0, false},
    {"poly3_50x2000_10_machines", SVMModelData::kPolynomial, 50, 2000, 5, 1.0, false},
    {"rbf_1000x2000_sparse", SVMModelData::kRadialBasis, 1000, 2000, 2, 0.1, false},
    {"linear_1000x2000_sparse", SVMModelData::kLinear, 1000, 2000, 2, 0.1, false},
    {"rbf_1000x2000_bits", SVMModelData::kRadialBasis, 1000, 2000, 2, 0.1, true},
};

std::unique_ptr<KwSVM_700::SVMKernelFunction> MakeKernel(const SVMModelData& data) {
    switch (data.GetKernelType()) {
        case SVMModelData::kLinear:
            return std::make_unique<KwSVM_700::SVMKFLinear>();
        case SVMModelData::kPolynomial:
            return std::make_unique<KwSVM_700::SVMKFPolynomial>(data.GetGamma(), data.GetCoef0(), data.GetDegree());
        default:
            return std::make_unique<KwSVM_700::SVMKFRBF>(data.GetGamma());
    }
}

// Which version of the loops a plan calls: the processor's best, or the one that every processor of the family has.
enum class Level { kFastest, kBaseline };

PlanTarget TargetOf(Level level) {
    if (level == Level::kFastest)
        return {};
    static const KwSVM_700::ExactExp exp(KwSVM_700::kBaselineElementaryKernels);
    static const KwSVM_700::ExactPow pow(KwSVM_700::kBaselineElementaryKernels);
    return {.loops = &KwBrevix_930::plan::kBaselineLoops, .elementary = {&exp, &pow}};
}

// A model whose numbers are exact in single precision, as those of images are, and kCases cases. A vector belongs to
// one category and to all its machines.
class Subject {
public:
    explicit Subject(const Shape& shape) : fShape(shape), fRandom(shape.columns + shape.vectors) {
        MakeModel();
        fKernel = MakeKernel(fData);
        for (const Level level : {Level::kFastest, Level::kBaseline})
            fPlans.push_back(ScoringPlan::Make(fData, *fKernel, shape.columns, TargetOf(level)));
        fPeer = std::make_unique<LibsvmPeer>(fData);
        fIndices.resize(shape.columns);
        std::iota(fIndices.begin(), fIndices.end(), 0);
        fColumns.resize(shape.columns * kCases);
        for (std::size_t i = 0; i < kCases; ++i)
            AddCase(i);
        Compare();
    }

    std::string GetName() const { return fShape.name; }
    std::size_t GetMachineCount() const { return fData.GetMachines().size(); }
    const LibsvmPeer& GetPeer() const { return *fPeer; }
    const ScoringPlan& GetPlan(Level level) const { return *fPlans[static_cast<std::size_t>(level)]; }
    // The numbers of all support vectors, zeros included.
    double GetTermCount() const { return static_cast<double>(fShape.columns) * static_cast<double>(fShape.vectors); }
    const Values& GetCase(std::size_t i) const { return fCases[i]; }
    const svm_node* GetNodes(std::size_t i) const { return fNodes[i].data(); }
    const double* GetColumns() const { return fColumns.data(); }

    // As the model does without a plan.
    void DecidePlainly(const Values& x, Values& decisions) const {
        for (std::size_t m = 0; m < decisions.size(); ++m) {
            const ST_SUPPORTVECTORMACHINE& machine = *fData.GetMachines()[m];
            double sum = 0.0;
            for (std::size_t k = 0; k < machine.coefficients.size(); ++k) {
                const SVMVectorInstance& vector = *machine.supportVectors[k];
                sum += fKernel->Evaluate(fIndices, x, vector.indices, vector.values) * machine.coefficients[k];
            }
            decisions[m] = sum + machine.bias;
        }
    }

private:
    double Number() {
        if (!std::bernoulli_distribution(fShape.density)(fRandom))
            return 0.0;
        return fShape.isBinary ? 1.0 : static_cast<double>(std::uniform_real_distribution<float>(0.0F, 1.0F)(fRandom));
    }

    void MakeModel() {
        fData.SetIsClassification(true);
        fData.SetIsMaxWins(true);
        fData.SetTargetCategoryCount(static_cast<std::int32_t>(fShape.categories));
        fData.SetKernelType(fShape.kernel);
        fData.SetGamma(1.0 / static_cast<double>(fShape.columns));
        fData.SetCoef0(0.375);
        fData.SetDegree(3.0);
        for (std::size_t v = 0; v < fShape.vectors; ++v)
            AddVector("v" + std::to_string(v));
        for (std::size_t i = 0; i < fShape.categories; ++i) {
            for (std::size_t j = i + 1; j < fShape.categories; ++j)
                AddMachine(i, j);
        }
    }

    void AddVector(const std::string& id) {
        auto vector = std::make_unique<SVMVectorInstance>();
        for (std::size_t p = 0; p < fShape.columns; ++p) {
            const double number = Number();
            if (number == 0.0 && fShape.density < 1.0)
                continue;
            vector->indices.push_back(static_cast<std::int32_t>(p));
            vector->values.push_back(number);
        }
        fVectors.push_back(vector.get());
        fData.GetVectorInstances().emplace(id, std::move(vector));
    }

    // The vectors stand category by category.
    void AddMachine(std::size_t i, std::size_t j) {
        auto machine = std::make_unique<ST_SUPPORTVECTORMACHINE>();
        machine->targetCategoryIndex = static_cast<std::int32_t>(i);
        machine->alternateTargetCategoryIndex = static_cast<std::int32_t>(j);
        machine->bias = 0.8125;
        for (const std::size_t category : {i, j}) {
            const std::size_t end = fShape.vectors * (category + 1) / fShape.categories;
            for (std::size_t v = fShape.vectors * category / fShape.categories; v < end; ++v) {
                const double weight = std::uniform_real_distribution<double>(0.0, 1.0)(fRandom);
                machine->supportVectors.push_back(fVectors[v]);
                machine->coefficients.push_back(category == i ? weight : -weight);
            }
        }
        fData.GetMachines().push_back(std::move(machine));
    }

    void AddCase(std::size_t i) {
        fCases.emplace_back(fShape.columns);
        for (std::size_t p = 0; p < fShape.columns; ++p)
            fColumns[p * kCases + i] = fCases.back()[p] = Number();
        fNodes.push_back(LibsvmPeer::MakeCase(fIndices, fCases.back()));
    }

    // Refuses a model of which not all ways say the same: the same bits, or nearly so for LIBSVM.
    void Compare() const {
        std::vector<Values> plain(2, Values(GetMachineCount()));
        for (std::size_t i = 0; i < plain.size(); ++i) {
            DecidePlainly(fCases[i], plain[i]);
            ComparePeer(i, plain[i]);
        }
        for (const auto& plan : fPlans)
            ComparePlan(plan.get(), plain);
    }

    void ComparePeer(std::size_t i, const Values& plain) const {
        Values peers(GetMachineCount());
        svm_predict_values(fPeer->GetModel(), fNodes[i].data(), peers.data());
        const double scale = 100.0 * static_cast<double>(fShape.vectors);
        for (std::size_t m = 0; m < plain.size(); ++m) {
            if (!(std::fabs(fPeer->GetDecision(peers, m) - plain[m]) <= kTolerance * scale))
                throw std::runtime_error(GetName() + ": LIBSVM says something else");
        }
    }

    // plain: the decisions of the first cases.
    void ComparePlan(const ScoringPlan* plan, const std::vector<Values>& plain) const {
        if (!plan)
            throw std::runtime_error(GetName() + ": no plan");
        Values batch(kCases * GetMachineCount());
        plan->DecideBatch(kCases, fColumns.data(), kCases, batch.data());
        for (std::size_t i = 0; i < plain.size(); ++i) {
            Values planned(GetMachineCount());
            plan->Decide(fCases[i].data(), planned.data());
            if (planned != plain[i] || !std::equal(planned.begin(), planned.end(), &batch[i * GetMachineCount()]))
                throw std::runtime_error(GetName() + ": the plan has other bits");
        }
    }

    Shape fShape;
    std::mt19937_64 fRandom;
    SVMModelData fData;
    std::vector<SVMVectorInstance*> fVectors;
    std::unique_ptr<KwSVM_700::SVMKernelFunction> fKernel;
    // By level.
    std::vector<std::unique_ptr<const ScoringPlan>> fPlans;
    std::unique_ptr<LibsvmPeer> fPeer;
    std::vector<std::int32_t> fIndices;
    std::vector<Values> fCases;
    Values fColumns;
    std::vector<LibsvmPeer::Case> fNodes;
};

// The larger models are made when they are asked for.
const Subject& Find(const Shape& shape) {
    static std::unique_ptr<Subject> subjects[std::size(kShapes)];
    std::unique_ptr<Subject>& subject = subjects[&shape - kShapes];
    if (!subject)
        subject = std::make_unique<Subject>(shape);
    return *subject;
}

// decide: of one case.
template <class Decide>
void Measure(benchmark::State& state, std::size_t machines, Decide decide) {
    Values decisions(machines);
    std::size_t i = 0;
    for (auto _ : state) {
        decide(i, decisions);
        benchmark::ClobberMemory();
        i = (i + 1) % kCases;
    }
}

template <Level kLevel>
void BM_Plan(benchmark::State& state, const Shape& shape) {
    const Subject& subject = Find(shape);
    PlanWorkspace work;
    Measure(state, subject.GetMachineCount(), [&](std::size_t i, Values& decisions) {
        subject.GetPlan(kLevel).Decide(subject.GetCase(i).data(), decisions.data(), work);
    });
}

// Beside time a radial basis has its share of the peak: how much of the time the differences, squares and sums would
// take alone, if nothing had to be fetched.
template <Level kLevel>
void BM_Batch(benchmark::State& state, const Shape& shape) {
    const Subject& subject = Find(shape);
    const ScoringPlan& plan = subject.GetPlan(kLevel);
    const double peak = benchmarks::MeasurePeakTerms(TargetOf(kLevel).loops->name);
    Values decisions(kCases * subject.GetMachineCount());
    std::vector<const double*> columns;
    for (std::size_t p = 0; p < plan.GetColumnCount(); ++p)
        columns.push_back(subject.GetColumns() + p * kCases);
    PlanWorkspace work;
    while (state.KeepRunningBatch(kCases)) {
        plan.DecideBatch(kCases, columns.data(), decisions.data(), work);
        benchmark::ClobberMemory();
    }
    if (peak > 0.0 && shape.kernel == SVMModelData::kRadialBasis && !shape.isBinary)
        state.counters["share_of_peak"] =
            benchmark::Counter(subject.GetTermCount() / peak, benchmark::Counter::kIsIterationInvariantRate);
}

void BM_Plain(benchmark::State& state, const Shape& shape) {
    const Subject& subject = Find(shape);
    Measure(state, subject.GetMachineCount(),
            [&](std::size_t i, Values& decisions) { subject.DecidePlainly(subject.GetCase(i), decisions); });
}

void BM_Libsvm(benchmark::State& state, const Shape& shape) {
    const Subject& subject = Find(shape);
    Measure(state, subject.GetMachineCount(), [&](std::size_t i, Values& decisions) {
        svm_predict_values(subject.GetPeer().GetModel(), subject.GetNodes(i), decisions.data());
    });
}

void Register(const Shape& shape) {
    const std::string name = shape.name;
    const auto add = [&](const std::string& subject, void (*measure)(benchmark::State&, const Shape&)) {
        benchmark::RegisterBenchmark((subject + "/" + name).c_str(),
                                     [&shape, measure](benchmark::State& state) { measure(state, shape); });
    };
    add("BM_Plan", BM_Plan<Level::kFastest>);
    add("BM_Plan_batch", BM_Batch<Level::kFastest>);
    add("BM_Plan_baseline", BM_Plan<Level::kBaseline>);
    add("BM_Plan_baseline_batch", BM_Batch<Level::kBaseline>);
    add("BM_Plan_plain", BM_Plain);
    add("BM_Plan_svm_predict_values", BM_Libsvm);
}

}  // namespace

int main(int argc, char** argv) try {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    for (const Shape& shape : kShapes)
        Register(shape);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
} catch (const std::exception& error) {
    std::cerr << "plan_bench: " << error.what() << '\n';
    return 1;
}
