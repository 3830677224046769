// DisplayDV of n values on a stream that drops them, beside snprintf of the same values one by one.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <ostream>
#include <random>
#include <streambuf>
#include <vector>

#include "numerics/display/display.h"

namespace {

class Sink : public std::streambuf {
protected:
    std::streamsize xsputn(const char*, std::streamsize length) override { return length; }
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
};

std::vector<double> Values(std::int64_t n) {
    std::mt19937_64 generator(70);
    std::uniform_real_distribution<double> number(-1.0, 1.0);
    std::vector<double> values(static_cast<std::size_t>(n));
    for (double& value : values)
        value = number(generator);
    return values;
}

void BM_DisplayDV(benchmark::State& state) {
    Sink sink;
    std::ostream stream(&sink);
    std::ostream* const before = KwDisplay_930::GetOutStream();
    KwDisplay_930::SetOutStream(stream);
    const std::vector<double> values = Values(state.range(0));
    for (auto step : state)
        KwDisplay_930::DisplayDV("values", values, true);
    KwDisplay_930::SetOutStream(*before);
}

void BM_DisplayDV_snprintf(benchmark::State& state) {
    const std::vector<double> values = Values(state.range(0));
    char text[32];
    for (auto step : state) {
        for (const double value : values) {
            std::snprintf(text, sizeof text, " %.17g", value);
            benchmark::DoNotOptimize(text);
        }
    }
}

BENCHMARK(BM_DisplayDV)->Arg(1000)->Arg(10000)->Arg(100000)->Arg(1000000);
BENCHMARK(BM_DisplayDV_snprintf)->Arg(1000)->Arg(10000)->Arg(100000)->Arg(1000000);

}  // namespace
