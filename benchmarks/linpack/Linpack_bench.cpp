// Factor and solve, general, band, packed, QR and singular values, beside reference LAPACK and the LINPACK that R
// compiles, where the build found them. A factorisation is measured with the copy of its matrix.
#include <benchmark/benchmark.h>

#include <functional>
#include <random>
#include <vector>

#include "benchmarks/linpack/FortranPeer.h"
#include "numerics/linpack/Linpack.h"

namespace {

using KwMath_930::Linpack;
using Vector = std::vector<double>;

// One matrix in every storage, and room for what the routines give.
struct Workspace {
    Workspace(int order, int diagonals)
        : n(order),
          m(diagonals),
          size(static_cast<std::size_t>(n)),
          general(Random(size * size)),
          definite(general),
          packed(size * (size + 1) / 2),
          band(size * static_cast<std::size_t>(3 * m + 1)),
          definiteBand(size * static_cast<std::size_t>(m + 1)),
          b(Random(size)),
          x(size),
          z(size),
          s(size + 1),
          e(size + 1),
          work(size * 8 + 200),
          u(size * size),
          v(size * size),
          pivots(size) {
        for (std::size_t j = 0; j < size; ++j) {
            for (std::size_t i = 0; i <= j; ++i) {
                definite[j * size + i] = i == j ? 1.0 + static_cast<double>(n) : general[j * size + i];
                packed[j * (j + 1) / 2 + i] = definite[j * size + i];
            }
        }
        for (int j = 0; j < n; ++j) {
            for (int i = std::max(0, j - m); i <= std::min(n - 1, j + m); ++i) {
                const double element = general[static_cast<std::size_t>(j * n + i)];
                band[static_cast<std::size_t>(j * (3 * m + 1) + 2 * m + i - j)] = element;
                if (i <= j) {
                    definiteBand[static_cast<std::size_t>(j * (m + 1) + m + i - j)] = i == j ? 2.0 * m + 1.0 : element;
                }
            }
        }
    }

    static Vector Random(std::size_t count) {
        std::mt19937 engine(20261);
        std::uniform_real_distribution<double> uniform(-1.0, 1.0);
        Vector values(count);
        for (double& value : values) {
            value = uniform(engine);
        }
        return values;
    }

    int n;
    int m;
    std::size_t size;
    Vector general;
    Vector definite;
    Vector packed;
    Vector band;
    Vector definiteBand;
    Vector b;
    Vector a;  // what is factored
    Vector x;
    Vector z;
    Vector s;
    Vector e;
    Vector work;
    Vector u;
    Vector v;
    std::vector<int> pivots;
    int info = 0;
    int one = 1;
    int zero = 0;
    double none = 0.0;
    char upper = 'U';
    char no = 'N';
    char all = 'A';
};

using Step = std::function<void(Workspace&)>;

// Prepares once, then repeats: copies the matrix or the right side, and calls.
void Measure(benchmark::State& state, Workspace& w, const Step& prepare, const Step& copy, const Step& call) {
    prepare(w);
    for (auto run : state) {
        copy(w);
        call(w);
        benchmark::ClobberMemory();
    }
}

struct Subject {
    std::string name;
    Step prepare;
    Step copy;
    Step call;
};

void Register(const Subject& subject, const std::vector<std::pair<int, int>>& shapes) {
    for (const auto& [n, m] : shapes) {
        std::string name = subject.name;
        name.append("/").append(std::to_string(n));
        if (m > 0) {
            name.append("/").append(std::to_string(m));
        }
        benchmark::RegisterBenchmark(name.c_str(), [subject, n, m](benchmark::State& state) {
            Workspace w(n, m);
            Measure(state, w, subject.prepare, subject.copy, subject.call);
        });
    }
}

const std::vector<std::pair<int, int>> kFull = {{10, 0}, {100, 0}, {200, 0}, {1000, 0}};
const std::vector<std::pair<int, int>> kBands = {{10, 2}, {100, 2}, {100, 16}, {1000, 2}, {1000, 16}, {1000, 100}};

void Nothing(Workspace&) {}
void CopyGeneral(Workspace& w) {
    w.a = w.general;
}
void CopyDefinite(Workspace& w) {
    w.a = w.definite;
}
void CopyPacked(Workspace& w) {
    w.a = w.packed;
}
void CopyBand(Workspace& w) {
    w.a = w.band;
}
void CopyDefiniteBand(Workspace& w) {
    w.a = w.definiteBand;
}
void CopyRightSide(Workspace& w) {
    w.x = w.b;
}

Step Then(const Step& first, const Step& second) {
    return [first, second](Workspace& w) {
        first(w);
        second(w);
    };
}

// A factorisation, and the solution with what it left.
void RegisterPair(const std::string& owner, const std::string& factor, const std::string& solve, const Step& copy,
                  const Step& callFactor, const Step& callSolve, const std::vector<std::pair<int, int>>& shapes) {
    const std::string start = std::string("BM_").append(owner).append("_");
    Register({start + factor, Nothing, copy, callFactor}, shapes);
    Register({start + solve, Then(copy, callFactor), CopyRightSide, callSolve}, shapes);
}

void RegisterLinpack() {
    RegisterPair(
        "Linpack", "Dgefa", "Dgesl", CopyGeneral,
        [](Workspace& w) { w.info = Linpack::Dgefa(w.a.data(), w.n, w.n, w.pivots.data()); },
        [](Workspace& w) { Linpack::Dgesl(w.a.data(), w.n, w.n, w.pivots.data(), w.x.data(), 0); }, kFull);
    RegisterPair(
        "Linpack", "Dpofa", "Dposl", CopyDefinite, [](Workspace& w) { w.info = Linpack::Dpofa(w.a.data(), w.n, w.n); },
        [](Workspace& w) { Linpack::Dposl(w.a.data(), w.n, w.n, w.x.data()); }, kFull);
    RegisterPair(
        "Linpack", "Dppfa", "Dppsl", CopyPacked, [](Workspace& w) { w.info = Linpack::Dppfa(w.a.data(), w.n); },
        [](Workspace& w) { Linpack::Dppsl(w.a.data(), w.n, w.x.data()); }, kFull);
    RegisterPair(
        "Linpack", "Dspfa", "Dspsl", CopyPacked,
        [](Workspace& w) { w.info = Linpack::Dspfa(w.a.data(), w.n, w.pivots.data()); },
        [](Workspace& w) { Linpack::Dspsl(w.a.data(), w.n, w.pivots.data(), w.x.data()); }, kFull);
    RegisterPair(
        "Linpack", "Dgbfa", "Dgbsl", CopyBand,
        [](Workspace& w) { w.info = Linpack::Dgbfa(w.a.data(), 3 * w.m + 1, w.n, w.m, w.m, w.pivots.data()); },
        [](Workspace& w) { Linpack::Dgbsl(w.a.data(), 3 * w.m + 1, w.n, w.m, w.m, w.pivots.data(), w.x.data(), 0); },
        kBands);
    RegisterPair(
        "Linpack", "Dpbfa", "Dpbsl", CopyDefiniteBand,
        [](Workspace& w) { w.info = Linpack::Dpbfa(w.a.data(), w.m + 1, w.n, w.m); },
        [](Workspace& w) { Linpack::Dpbsl(w.a.data(), w.m + 1, w.n, w.m, w.x.data()); }, kBands);
    RegisterPair(
        "Linpack", "Dqrdc", "Dqrsl", CopyGeneral,
        [](Workspace& w) { Linpack::Dqrdc(w.a.data(), w.n, w.n, w.n, w.s.data(), nullptr, nullptr, 0); },
        [](Workspace& w) {
            w.info = Linpack::Dqrsl(w.a.data(), w.n, w.n, w.n, w.s.data(), w.x.data(), nullptr, w.x.data(), w.x.data(),
                                    nullptr, nullptr, 100);
        },
        kFull);
    Register({"BM_Linpack_Dqrdc_pivoted", Nothing, CopyGeneral,
              [](Workspace& w) {
                  std::fill(w.pivots.begin(), w.pivots.end(), 0);
                  Linpack::Dqrdc(w.a.data(), w.n, w.n, w.n, w.s.data(), w.pivots.data(), w.work.data(), 1);
              }},
             kFull);
    Register({"BM_Linpack_Dsvdc_values", Nothing, CopyGeneral,
              [](Workspace& w) {
                  w.info = Linpack::Dsvdc(w.a.data(), w.n, w.n, w.n, w.s.data(), w.e.data(), nullptr, 1, nullptr, 1,
                                          w.work.data(), 0);
              }},
             kFull);
    Register({"BM_Linpack_Dsvdc_vectors", Nothing, CopyGeneral,
              [](Workspace& w) {
                  w.info = Linpack::Dsvdc(w.a.data(), w.n, w.n, w.n, w.s.data(), w.e.data(), w.u.data(), w.n,
                                          w.v.data(), w.n, w.work.data(), 11);
              }},
             kFull);
}

void RegisterR(const FortranPeer& r) {
    RegisterPair(
        "R", "Dpofa", "Dposl", CopyDefinite, [&r](Workspace& w) { r.Call("dpofa_", w.a.data(), &w.n, &w.n, &w.info); },
        [&r](Workspace& w) { r.Call("dposl_", w.a.data(), &w.n, &w.n, w.x.data()); }, kFull);
    RegisterPair(
        "R", "Dpbfa", "Dpbsl", CopyDefiniteBand,
        [&r](Workspace& w) {
            const int ld = w.m + 1;
            r.Call("dpbfa_", w.a.data(), &ld, &w.n, &w.m, &w.info);
        },
        [&r](Workspace& w) {
            const int ld = w.m + 1;
            r.Call("dpbsl_", w.a.data(), &ld, &w.n, &w.m, w.x.data());
        },
        kBands);
    RegisterPair(
        "R", "Dqrdc", "Dqrsl", CopyGeneral,
        [&r](Workspace& w) {
            r.Call("dqrdc_", w.a.data(), &w.n, &w.n, &w.n, w.s.data(), w.pivots.data(), w.work.data(), &w.zero);
        },
        [&r](Workspace& w) {
            const int job = 100;
            r.Call("dqrsl_", w.a.data(), &w.n, &w.n, &w.n, w.s.data(), w.x.data(), &w.none, w.x.data(), w.x.data(),
                   &w.none, &w.none, &job, &w.info);
        },
        kFull);
    Register({"BM_R_Dqrdc_pivoted", Nothing, CopyGeneral,
              [&r](Workspace& w) {
                  std::fill(w.pivots.begin(), w.pivots.end(), 0);
                  r.Call("dqrdc_", w.a.data(), &w.n, &w.n, &w.n, w.s.data(), w.pivots.data(), w.work.data(), &w.one);
              }},
             kFull);
    Register({"BM_R_Dsvdc_values", Nothing, CopyGeneral,
              [&r](Workspace& w) {
                  r.Call("dsvdc_", w.a.data(), &w.n, &w.n, &w.n, w.s.data(), w.e.data(), &w.none, &w.one, &w.none,
                         &w.one, w.work.data(), &w.zero, &w.info);
              }},
             kFull);
    Register({"BM_R_Dsvdc_vectors", Nothing, CopyGeneral,
              [&r](Workspace& w) {
                  const int job = 11;
                  r.Call("dsvdc_", w.a.data(), &w.n, &w.n, &w.n, w.s.data(), w.e.data(), w.u.data(), &w.n, w.v.data(),
                         &w.n, w.work.data(), &job, &w.info);
              }},
             kFull);
}

// LAPACK's names for the same, registered under ours.
void RegisterLapack(const FortranPeer& lapack) {
    RegisterPair(
        "Lapack", "Dgefa", "Dgesl", CopyGeneral,
        [&lapack](Workspace& w) { lapack.Call("dgetrf_", &w.n, &w.n, w.a.data(), &w.n, w.pivots.data(), &w.info); },
        [&lapack](Workspace& w) {
            lapack.Call("dgetrs_", &w.no, &w.n, &w.one, w.a.data(), &w.n, w.pivots.data(), w.x.data(), &w.n, &w.info,
                        std::size_t{1});
        },
        kFull);
    RegisterPair(
        "Lapack", "Dpofa", "Dposl", CopyDefinite,
        [&lapack](Workspace& w) { lapack.Call("dpotrf_", &w.upper, &w.n, w.a.data(), &w.n, &w.info, std::size_t{1}); },
        [&lapack](Workspace& w) {
            lapack.Call("dpotrs_", &w.upper, &w.n, &w.one, w.a.data(), &w.n, w.x.data(), &w.n, &w.info, std::size_t{1});
        },
        kFull);
    RegisterPair(
        "Lapack", "Dppfa", "Dppsl", CopyPacked,
        [&lapack](Workspace& w) { lapack.Call("dpptrf_", &w.upper, &w.n, w.a.data(), &w.info, std::size_t{1}); },
        [&lapack](Workspace& w) {
            lapack.Call("dpptrs_", &w.upper, &w.n, &w.one, w.a.data(), w.x.data(), &w.n, &w.info, std::size_t{1});
        },
        kFull);
    RegisterPair(
        "Lapack", "Dspfa", "Dspsl", CopyPacked,
        [&lapack](Workspace& w) {
            lapack.Call("dsptrf_", &w.upper, &w.n, w.a.data(), w.pivots.data(), &w.info, std::size_t{1});
        },
        [&lapack](Workspace& w) {
            lapack.Call("dsptrs_", &w.upper, &w.n, &w.one, w.a.data(), w.pivots.data(), w.x.data(), &w.n, &w.info,
                        std::size_t{1});
        },
        kFull);
    RegisterPair(
        "Lapack", "Dgbfa", "Dgbsl", CopyBand,
        [&lapack](Workspace& w) {
            const int ld = 3 * w.m + 1;
            lapack.Call("dgbtrf_", &w.n, &w.n, &w.m, &w.m, w.a.data(), &ld, w.pivots.data(), &w.info);
        },
        [&lapack](Workspace& w) {
            const int ld = 3 * w.m + 1;
            lapack.Call("dgbtrs_", &w.no, &w.n, &w.m, &w.m, &w.one, w.a.data(), &ld, w.pivots.data(), w.x.data(), &w.n,
                        &w.info, std::size_t{1});
        },
        kBands);
    RegisterPair(
        "Lapack", "Dpbfa", "Dpbsl", CopyDefiniteBand,
        [&lapack](Workspace& w) {
            const int ld = w.m + 1;
            lapack.Call("dpbtrf_", &w.upper, &w.n, &w.m, w.a.data(), &ld, &w.info, std::size_t{1});
        },
        [&lapack](Workspace& w) {
            const int ld = w.m + 1;
            lapack.Call("dpbtrs_", &w.upper, &w.n, &w.m, &w.one, w.a.data(), &ld, w.x.data(), &w.n, &w.info,
                        std::size_t{1});
        },
        kBands);
    Register({"BM_Lapack_Dqrdc", Nothing, CopyGeneral,
              [&lapack](Workspace& w) {
                  const int length = static_cast<int>(w.u.size());
                  lapack.Call("dgeqrf_", &w.n, &w.n, w.a.data(), &w.n, w.s.data(), w.u.data(), &length, &w.info);
              }},
             kFull);
    const auto svd = [&lapack](Workspace& w, char* job) {
        const int length = static_cast<int>(w.work.size());
        lapack.Call("dgesvd_", job, job, &w.n, &w.n, w.a.data(), &w.n, w.s.data(), w.u.data(), &w.n, w.v.data(), &w.n,
                    w.work.data(), &length, &w.info, std::size_t{1}, std::size_t{1});
    };
    Register({"BM_Lapack_Dsvdc_values", Nothing, CopyGeneral, [svd](Workspace& w) { svd(w, &w.no); }}, kFull);
    Register({"BM_Lapack_Dsvdc_vectors", Nothing, CopyGeneral, [svd](Workspace& w) { svd(w, &w.all); }}, kFull);
}

}  // namespace

int main(int argc, char** argv) {
    const auto r = FortranPeer::Load(BREVIX_BENCHMARK_R);
    const auto lapack = FortranPeer::Load(BREVIX_BENCHMARK_LAPACK);
    RegisterLinpack();
    if (r != nullptr) {
        RegisterR(*r);
    }
    if (lapack != nullptr) {
        RegisterLapack(*lapack);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
