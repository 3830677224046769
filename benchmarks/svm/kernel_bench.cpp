// Each kernel, dense and sparse, beside a plain loop; time is for one evaluation. The case has all n columns, as in
// scoring; of a sparse support vector's columns, half are there.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <iostream>
#include <random>

#include "svm/SVMKFLinear.h"
#include "svm/SVMKFPolynomial.h"
#include "svm/SVMKFRBF.h"
#include "svm/SVMKFSigmoid.h"

namespace {

using Indices = std::vector<std::int32_t>;
using Values = std::vector<double>;

constexpr double kGamma = 0.0625;
constexpr double kCoef0 = 0.375;
constexpr double kDegree = 3.0;

// Enough vectors that a processor does not learn the pattern of one.
constexpr std::size_t kVectorCount = 64;

struct SparseVector {
    Indices indices;
    Values values;
};

// One case, and support vectors to evaluate it with.
struct Workload {
    explicit Workload(std::size_t n) {
        std::mt19937_64 generator(20 + n);
        std::uniform_real_distribution<double> number(-1.0, 1.0);
        std::bernoulli_distribution isPresent(0.5);
        for (std::size_t i = 0; i < n; ++i) {
            x.indices.push_back(static_cast<std::int32_t>(i));
            x.values.push_back(number(generator));
        }
        for (std::size_t k = 0; k < kVectorCount; ++k) {
            for (std::size_t i = 0; i < n; ++i) {
                dense[k].push_back(number(generator));
                if (isPresent(generator)) {
                    sparse[k].indices.push_back(static_cast<std::int32_t>(i));
                    sparse[k].values.push_back(dense[k].back());
                }
            }
        }
    }

    SparseVector x;
    std::array<Values, kVectorCount> dense;
    std::array<SparseVector, kVectorCount> sparse;
};

// The plain loops, over the terms x[i] y[i] or (x[i] - y[i])^2.
template <class Term>
double PlainSum(const Values& x, const Values& y, Term term) {
    double sum = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i)
        sum += term(x[i], y[i]);
    return sum;
}

template <class Term>
double PlainSum(const SparseVector& x, const SparseVector& y, Term term) {
    double sum = 0.0;
    std::size_t p = 0;
    std::size_t q = 0;
    while (p < x.indices.size() || q < y.indices.size()) {
        const bool hasX = p < x.indices.size() && (q == y.indices.size() || x.indices[p] <= y.indices[q]);
        const bool hasY = q < y.indices.size() && (p == x.indices.size() || y.indices[q] <= x.indices[p]);
        sum += term(hasX ? x.values[p] : 0.0, hasY ? y.values[q] : 0.0);
        p += hasX ? 1 : 0;
        q += hasY ? 1 : 0;
    }
    return sum;
}

double Product(double a, double b) {
    return a * b;
}

double SquaredDifference(double a, double b) {
    return (a - b) * (a - b);
}

// A kernel, and its value by the plain loop.
struct Linear {
    KwSVM_700::SVMKFLinear kernel;

    template <class Vector>
    static double Plain(const Vector& x, const Vector& y) {
        return PlainSum(x, y, Product);
    }
};

struct Polynomial {
    KwSVM_700::SVMKFPolynomial kernel{kGamma, kCoef0, kDegree};

    template <class Vector>
    static double Plain(const Vector& x, const Vector& y) {
        return std::pow(kGamma * PlainSum(x, y, Product) + kCoef0, kDegree);
    }
};

struct RBF {
    KwSVM_700::SVMKFRBF kernel{kGamma};

    template <class Vector>
    static double Plain(const Vector& x, const Vector& y) {
        return std::exp(-(kGamma * PlainSum(x, y, SquaredDifference)));
    }
};

struct Sigmoid {
    KwSVM_700::SVMKFSigmoid kernel{kGamma, kCoef0};

    template <class Vector>
    static double Plain(const Vector& x, const Vector& y) {
        return std::tanh(kGamma * PlainSum(x, y, Product) + kCoef0);
    }
};

// As scoring calls it: through the abstract class.
double Evaluate(const KwSVM_700::SVMKernelFunction& kernel, const Values& x, const Values& y) {
    return kernel.Evaluate(x, y);
}

double Evaluate(const KwSVM_700::SVMKernelFunction& kernel, const SparseVector& x, const SparseVector& y) {
    return kernel.Evaluate(x.indices, x.values, y.indices, y.values);
}

template <class Subject, class Vector>
void Measure(benchmark::State& state, const Vector& x, const std::array<Vector, kVectorCount>& vectors) {
    const Subject subject;
    for (const Vector& y : vectors) {
        if (Evaluate(subject.kernel, x, y) != Subject::Plain(x, y))
            state.SkipWithError("the plain loop says something else");
    }
    const KwSVM_700::SVMKernelFunction* kernel = &subject.kernel;
    benchmark::DoNotOptimize(kernel);
    std::size_t k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Evaluate(*kernel, x, vectors[k]));
        k = (k + 1) % kVectorCount;
    }
}

template <class Subject, class Vector>
void MeasurePlain(benchmark::State& state, const Vector& x, const std::array<Vector, kVectorCount>& vectors) {
    std::size_t k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Subject::Plain(x, vectors[k]));
        k = (k + 1) % kVectorCount;
    }
}

Workload MakeWorkload(const benchmark::State& state) {
    return Workload(static_cast<std::size_t>(state.range(0)));
}

template <class Subject>
void BM_Dense(benchmark::State& state) {
    const Workload workload = MakeWorkload(state);
    Measure<Subject>(state, workload.x.values, workload.dense);
}

template <class Subject>
void BM_DensePlain(benchmark::State& state) {
    const Workload workload = MakeWorkload(state);
    MeasurePlain<Subject>(state, workload.x.values, workload.dense);
}

template <class Subject>
void BM_Sparse(benchmark::State& state) {
    const Workload workload = MakeWorkload(state);
    Measure<Subject>(state, workload.x, workload.sparse);
}

template <class Subject>
void BM_SparsePlain(benchmark::State& state) {
    const Workload workload = MakeWorkload(state);
    MeasurePlain<Subject>(state, workload.x, workload.sparse);
}

template <class Subject>
void Register(const std::string& name) {
    benchmark::RegisterBenchmark((name + "_dense").c_str(), BM_Dense<Subject>)->Arg(4)->Arg(30)->Arg(784);
    benchmark::RegisterBenchmark((name + "_dense_plain").c_str(), BM_DensePlain<Subject>)->Arg(4)->Arg(30)->Arg(784);
    benchmark::RegisterBenchmark((name + "_sparse").c_str(), BM_Sparse<Subject>)->Arg(4)->Arg(30)->Arg(784);
    benchmark::RegisterBenchmark((name + "_sparse_plain").c_str(), BM_SparsePlain<Subject>)->Arg(4)->Arg(30)->Arg(784);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    Register<Linear>("BM_SVMKFLinear");
    Register<Polynomial>("BM_SVMKFPolynomial");
    Register<RBF>("BM_SVMKFRBF");
    Register<Sigmoid>("BM_SVMKFSigmoid");
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
