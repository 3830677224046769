// A thousand draws, beside the standard library's generator of the same sequence.
#include <benchmark/benchmark.h>

#include <random>

#include "numerics/random/KwRandomTwister.h"

namespace {

constexpr int kDraws = 1000;
constexpr std::uint32_t kSeed = 20261121;

void BM_GetInteger32(benchmark::State& state) {
    KwMath_930::KwRandomTwister generator;
    generator.Initialize(kSeed);
    if (generator.GetInteger32() != std::mt19937(kSeed)())
        state.SkipWithError("another sequence");
    for (auto step : state) {
        for (int k = 0; k < kDraws; ++k)
            benchmark::DoNotOptimize(generator.GetInteger32());
    }
}

void BM_GetInteger32_mt19937(benchmark::State& state) {
    std::mt19937 generator(kSeed);
    for (auto step : state) {
        for (int k = 0; k < kDraws; ++k)
            benchmark::DoNotOptimize(static_cast<std::uint32_t>(generator()));
    }
}

BENCHMARK(BM_GetInteger32);
BENCHMARK(BM_GetInteger32_mt19937);

}  // namespace
