// Time per call of each member beside Boost.Math and R's nmath: over random arguments of the ordinary range, and over
// those of its reference table, which go to the ends of every range. Benchmarks are named BM_<Member>,
// BM_<Member>_boost and BM_<Member>_nmath; those over the tables begin with BM_table_,
// those with the tolerance of nmath's sums with BM_rough_.
#include <benchmark/benchmark.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "benchmarks/distributions/peers.h"
#include "benchmarks/distributions/random_arguments.h"
#include "tests/numerics/distributions/reference_table.h"

namespace {

using random_arguments::Arguments;

void Run(benchmark::State& state, const std::function<double(const std::vector<double>&)>& member,
         const Arguments& arguments) {
    std::size_t next = 0;
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(member(arguments[next]));
        next = next + 1 < arguments.size() ? next + 1 : 0;
    }
}

void Register(const std::string& name, const peers::Members& members, const std::string& member,
              const Arguments& arguments) {
    const auto found = members.find(member);
    if (found != members.end()) {
        benchmark::RegisterBenchmark(name.c_str(), [called = found->second, arguments](benchmark::State& state) {
            Run(state, called, arguments);
        });
    }
}

Arguments TableArguments(const std::string& member) {
    Arguments arguments;
    for (const auto& row : distribution_tables::ReadTable(BREVIX_SOURCE_DIR, member)) {
        arguments.push_back(row.arguments);
    }
    return arguments;
}

// The sums of nmath end at these tolerances: here ours at the same.
void RegisterAtTolerance(const peers::Members& nmath) {
    using KwMath_930::KwDistFun;
    const double unit = std::numeric_limits<double>::epsilon();
    const peers::Members members = {{"NonCentralCdfF",
                                     [unit](const std::vector<double>& v) {
                                         return KwDistFun::NonCentralCdfF(v[0], v[1], v[2], v[3], 1e-9 / unit);
                                     }},
                                    {"NonCentralCdfT", [unit](const std::vector<double>& v) {
                                         return KwDistFun::NonCentralCdfT(v[0], v[1], v[2], 1e-12 / unit);
                                     }}};
    for (const auto& [member, own] : members) {
        const Arguments arguments = random_arguments::Draw(member);
        Register("BM_rough_" + member, members, member, arguments);
        Register("BM_rough_" + member + "_nmath", nmath, member, arguments);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const peers::Members boost = peers::Boost();
    const peers::Members nmath = peers::Nmath();
    for (const auto& [member, own] : distribution_tables::Members()) {
        for (const auto& [prefix, arguments] :
             {std::pair("BM_", random_arguments::Draw(member)), std::pair("BM_table_", TableArguments(member))}) {
            Register(prefix + member, distribution_tables::Members(), member, arguments);
            Register(prefix + member + "_boost", boost, member, arguments);
            Register(prefix + member + "_nmath", nmath, member, arguments);
        }
    }
    RegisterAtTolerance(nmath);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
