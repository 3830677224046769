// Time per call of each member over the arguments of its reference table, beside Boost.Math and R's nmath.
// Benchmarks are named BM_<Member> and BM_<Member>_boost, BM_<Member>_nmath.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "benchmarks/distributions/peers.h"
#include "tests/numerics/distributions/reference_table.h"

namespace {

using Arguments = std::vector<std::vector<double>>;

void Run(benchmark::State& state, const std::function<double(const std::vector<double>&)>& member,
         const Arguments& arguments) {
    std::size_t next = 0;
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(member(arguments[next]));
        next = next + 1 < arguments.size() ? next + 1 : 0;
    }
}

void Register(const std::string& name, const std::function<double(const std::vector<double>&)>& member,
              const Arguments& arguments) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [member, arguments](benchmark::State& state) { Run(state, member, arguments); });
}

}  // namespace

int main(int argc, char** argv) {
    const peers::Members boost = peers::Boost();
    const peers::Members nmath = peers::Nmath();
    for (const auto& [name, member] : distribution_tables::Members()) {
        Arguments arguments;
        for (const auto& row : distribution_tables::ReadTable(BREVIX_SOURCE_DIR, name)) {
            arguments.push_back(row.arguments);
        }
        Register("BM_" + name, member, arguments);
        if (const auto found = boost.find(name); found != boost.end()) {
            Register("BM_" + name + "_boost", found->second, arguments);
        }
        if (const auto found = nmath.find(name); found != nmath.end()) {
            Register("BM_" + name + "_nmath", found->second, arguments);
        }
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
