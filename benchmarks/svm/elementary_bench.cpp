// exp and pow of many values beside the platform's own functions; time is for one value.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "svm/elementary/exact_exp.h"
#include "svm/elementary/exact_pow.h"

namespace {

std::vector<double> draw(std::size_t count, double low, double high) {
    std::mt19937_64 generator(31);
    std::uniform_real_distribution<double> number(low, high);
    std::vector<double> values(count);
    for (double& value : values)
        value = number(generator);
    return values;
}

// Many rounds of different arguments, so that a processor does not learn them.
constexpr std::size_t kRounds = 64;

template <class Compute>
void run(benchmark::State& state, double low, double high, const Compute& compute) {
    const auto n = static_cast<std::size_t>(state.range(0));
    const auto x = draw(n * kRounds, low, high);
    std::vector<double> y(n);
    std::size_t round = 0;
    for (auto _ : state) {
        compute(x.data() + n * (round++ % kRounds), y.data(), n);
        benchmark::DoNotOptimize(y.data());
        benchmark::ClobberMemory();
    }
    state.counters["value"] = benchmark::Counter(
        static_cast<double>(n), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_Exp(benchmark::State& state) {
    run(state, -20.0, 0.0, [](const double* x, double* y, std::size_t n) { KwSVM_700::Exp(1.0, x, y, n); });
}

void BM_StdExp(benchmark::State& state) {
    run(state, -20.0, 0.0, [](const double* x, double* y, std::size_t n) {
        std::transform(x, x + n, y, [](double value) { return std::exp(value); });
    });
}

void BM_Pow(benchmark::State& state) {
    const auto degree = static_cast<double>(state.range(1));
    run(state, -3.0, 30.0, [degree](const double* x, double* y, std::size_t n) { KwSVM_700::Pow(x, degree, y, n); });
}

void BM_StdPow(benchmark::State& state) {
    const auto degree = static_cast<double>(state.range(1));
    run(state, -3.0, 30.0, [degree](const double* x, double* y, std::size_t n) {
        std::transform(x, x + n, y, [degree](double value) { return std::pow(value, degree); });
    });
}

BENCHMARK(BM_Exp)->Arg(8)->Arg(58)->Arg(1024);
BENCHMARK(BM_StdExp)->Arg(8)->Arg(58)->Arg(1024);
BENCHMARK(BM_Pow)->ArgsProduct({{58, 1024}, {2, 3, 5, 8}});
BENCHMARK(BM_StdPow)->ArgsProduct({{58, 1024}, {2, 3, 5, 8}});

}  // namespace
