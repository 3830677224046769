// Each level-1 routine on n elements, dense and at every second place, beside the reference BLAS and OpenBLAS where the
// build found them. Vectors of 8000000 elements lie beyond the last-level cache.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <random>

#include "benchmarks/blas1/BlasPeer.h"
#include "numerics/blas1/Blas1.h"

namespace {

using KwMath_930::Blas1;

constexpr int kLengths[] = {10, 100, 1000, 10000, 100000, 1000000, 8000000};
constexpr int kIncrements[] = {1, 2};
constexpr int kCheckedLength = 1003;

// Factors that keep repeated results inside the range, so that no time goes into denormal numbers.
constexpr double kSignChange = -1.0;
constexpr double kSmallShare = 1e-9;
constexpr double kC = 0.8;
constexpr double kS = 0.6;

double* Mutable(const double* x) {
    return const_cast<double*>(x);
}

// The subject under the calling form of its peers.
const Level1Routines kSubject = {
    [](const int* n, double* x, const int* incx, double* y, const int* incy) { Blas1::DSwap(*n, x, *incx, y, *incy); },
    [](const int* n, const double* alpha, double* x, const int* incx) { Blas1::DScal(*n, *alpha, x, *incx); },
    [](const int* n, const double* x, const int* incx, double* y, const int* incy) {
        Blas1::DCopy(*n, Mutable(x), *incx, y, *incy);
    },
    [](const int* n, const double* alpha, const double* x, const int* incx, double* y, const int* incy) {
        Blas1::Daxpy(*n, *alpha, Mutable(x), *incx, y, *incy);
    },
    [](const int* n, double* x, const int* incx, double* y, const int* incy, const double* c, const double* s) {
        Blas1::DRot(*n, x, *incx, y, *incy, *c, *s);
    },
    [](const int* n, const double* x, const int* incx, const double* y, const int* incy) {
        return Blas1::DDot(*n, Mutable(x), *incx, Mutable(y), *incy);
    },
    [](const int* n, const double* x, const int* incx) { return Blas1::DNrm2(*n, Mutable(x), *incx); },
    [](const int* n, const double* x, const int* incx) { return Blas1::DASum(*n, Mutable(x), *incx); },
    [](const int* n, const double* x, const int* incx) { return Blas1::IDAMax(*n, Mutable(x), *incx); },
};

struct Workload {
    Workload(int length, int increment) : n(length), inc(increment) {
        std::mt19937_64 generator(60);
        std::uniform_real_distribution<double> number(-1.0, 1.0);
        const std::size_t cells = static_cast<std::size_t>(n) * static_cast<std::size_t>(inc);
        for (std::vector<double>* vector : {&x, &y}) {
            vector->resize(cells);
            for (double& value : *vector)
                value = number(generator);
        }
    }

    int n;
    int inc;
    std::vector<double> x;
    std::vector<double> y;
};

// One call on the workload; the value, or 0 where vectors change.
using Call = double (*)(const Level1Routines& routines, Workload& w);

struct Routine {
    const char* name;
    Call call;
};

const Routine kRoutines[] = {
    {"DSwap",
     [](const Level1Routines& r, Workload& w) {
         r.swap(&w.n, w.x.data(), &w.inc, w.y.data(), &w.inc);
         return 0.0;
     }},
    {"DScal",
     [](const Level1Routines& r, Workload& w) {
         r.scal(&w.n, &kSignChange, w.x.data(), &w.inc);
         return 0.0;
     }},
    {"DCopy",
     [](const Level1Routines& r, Workload& w) {
         r.copy(&w.n, w.x.data(), &w.inc, w.y.data(), &w.inc);
         return 0.0;
     }},
    {"Daxpy",
     [](const Level1Routines& r, Workload& w) {
         r.axpy(&w.n, &kSmallShare, w.x.data(), &w.inc, w.y.data(), &w.inc);
         return 0.0;
     }},
    {"DRot",
     [](const Level1Routines& r, Workload& w) {
         r.rot(&w.n, w.x.data(), &w.inc, w.y.data(), &w.inc, &kC, &kS);
         return 0.0;
     }},
    {"DDot", [](const Level1Routines& r, Workload& w) { return r.dot(&w.n, w.x.data(), &w.inc, w.y.data(), &w.inc); }},
    {"DNrm2", [](const Level1Routines& r, Workload& w) { return r.nrm2(&w.n, w.x.data(), &w.inc); }},
    {"DASum", [](const Level1Routines& r, Workload& w) { return r.asum(&w.n, w.x.data(), &w.inc); }},
    {"IDAMax",
     [](const Level1Routines& r, Workload& w) { return static_cast<double>(r.amax(&w.n, w.x.data(), &w.inc)); }},
};

bool AreClose(const std::vector<double>& a, const std::vector<double>& b) {
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!(std::abs(a[i] - b[i]) <= 1e-14))
            return false;
    }
    return true;
}

// Ends the program unless the peer computes what the subject computes.
void DemandSameWork(const Routine& routine, const BlasPeer& peer) {
    for (const int inc : kIncrements) {
        Workload mine(kCheckedLength, inc);
        Workload theirs = mine;
        const double value = routine.call(kSubject, mine);
        const double other = routine.call(peer.Routines(), theirs);
        if (!(std::abs(value - other) <= 1e-11 * (1.0 + std::abs(value))) || !AreClose(mine.x, theirs.x) ||
            !AreClose(mine.y, theirs.y)) {
            std::cerr << routine.name << " and that of " << peer.Name() << " disagree\n";
            std::exit(1);
        }
    }
}

void Register(const std::string& name, const Routine& routine, const Level1Routines& routines) {
    auto* registered = benchmark::RegisterBenchmark(name.c_str(), [&routine, &routines](benchmark::State& state) {
        Workload workload(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
        for (auto step : state) {
            benchmark::DoNotOptimize(routine.call(routines, workload));
            benchmark::ClobberMemory();
        }
    });
    for (const int inc : kIncrements) {
        for (const int n : kLengths)
            registered->Args({n, inc});
    }
}

}  // namespace

int main(int argc, char** argv) {
    setenv("OPENBLAS_NUM_THREADS", "1", 1);
    std::vector<std::unique_ptr<BlasPeer>> peers;
    peers.push_back(BlasPeer::Load("libblas", BREVIX_BENCHMARK_BLAS));
    peers.push_back(BlasPeer::Load("openblas", BREVIX_BENCHMARK_OPENBLAS));
    for (const Routine& routine : kRoutines) {
        const std::string name = std::string("BM_") + routine.name;
        Register(name, routine, kSubject);
        for (const auto& peer : peers) {
            if (peer == nullptr)
                continue;
            DemandSameWork(routine, *peer);
            Register(name + "_" + peer->Name(), routine, peer->Routines());
        }
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
