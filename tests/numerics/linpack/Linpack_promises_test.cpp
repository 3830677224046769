// What holds for all forty routines, whatever they are given: they allocate nothing, print nothing, and may run on
// several threads at once. The matrices are large enough for the loops that are chosen at run time.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <random>
#include <thread>
#include <vector>

#include "numerics/linpack/Linpack.h"
#include "tests/support/failing_new.h"

namespace linpack_samples {
namespace {

using KwMath_930::Linpack;

constexpr int kN = 29;
constexpr int kLd = 31;
constexpr int kBelow = 3;
constexpr int kAbove = 2;
constexpr int kSquares = 3;
constexpr std::size_t kCells = static_cast<std::size_t>(kLd * kN);

// kZero and kNegative make the routines meet singular and indefinite matrices, kNaN what never converges.
enum class Input { kDominant, kRandom, kZero, kNegative, kNaN };
constexpr Input kInputs[] = {Input::kDominant, Input::kRandom, Input::kZero, Input::kNegative, Input::kNaN};

// The arrays of one caller. Nothing here allocates.
struct Arrays {
    Arrays(Input kind, unsigned seed) : input(kind), engine(seed) {
        Fill(a);
        Fill(u);
        Fill(v);
        for (Line* line : {&b, &x, &y, &z, &c, &s, &work}) {
            Fill(*line);
        }
        rho.fill(9.5);
    }
    // A full matrix, or with a row for it the diagonal of a band.
    void FillMatrix(int diagonalRow = -1) {
        Fill(a);
        for (int j = 0; j < kN; ++j) {
            double& element = a[static_cast<std::size_t>(j * kLd + (diagonalRow < 0 ? j : diagonalRow))];
            element += input == Input::kDominant ? kN : input == Input::kNegative ? -kN : 0.0;
        }
    }
    // The upper triangle column after column.
    void FillPacked() {
        Fill(a);
        for (std::size_t j = 0; j < std::size_t{kN}; ++j) {
            a[j * (j + 3) / 2] += input == Input::kDominant ? kN : input == Input::kNegative ? -kN : 0.0;
        }
    }
    // All results, to the bit.
    std::uint64_t Digest() const {
        std::uint64_t digest = 14695981039346656037u;
        const auto add = [&digest](std::uint64_t bits) { digest = (digest ^ bits) * 1099511628211u; };
        const auto addAll = [&add](const auto& numbers) {
            for (const double number : numbers) {
                add(std::bit_cast<std::uint64_t>(number));
            }
        };
        for (const Square* square : {&a, &u, &v}) {
            addAll(*square);
        }
        for (const Line* line : {&b, &x, &y, &z, &c, &s, &work}) {
            addAll(*line);
        }
        addAll(rho);
        addAll(det);
        for (const int number : pivots) {
            add(static_cast<std::uint64_t>(number));
        }
        for (const int number : inert) {
            add(static_cast<std::uint64_t>(number));
        }
        return digest;
    }

    using Square = std::array<double, kCells>;
    using Line = std::array<double, kN + 1>;
    Input input;
    std::mt19937 engine;
    Square a{};
    Square u{};
    Square v{};
    Line b{};
    Line x{};
    Line y{};
    Line z{};
    Line c{};
    Line s{};
    Line work{};
    std::array<double, kSquares> rho{};
    std::array<double, 2> det{};
    std::array<int, kN> pivots{};
    std::array<int, 3> inert{};

private:
    template <class Numbers>
    void Fill(Numbers& numbers) {
        for (double& number : numbers) {
            const double random = static_cast<double>(engine()) / 2147483648.0 - 1.0;
            number = input == Input::kZero  ? 0.0
                     : input == Input::kNaN ? std::numeric_limits<double>::quiet_NaN()
                                            : random;
        }
    }
};

double* At(auto& numbers) {
    return numbers.data();
}

int Dgefa(Arrays& w) {
    w.FillMatrix();
    return Linpack::Dgefa(At(w.a), kLd, kN, w.pivots.data());
}
int Dgbfa(Arrays& w) {
    w.FillMatrix(kBelow + kAbove);
    return Linpack::Dgbfa(At(w.a), kLd, kN, kBelow, kAbove, w.pivots.data());
}
int Dpofa(Arrays& w) {
    w.FillMatrix();
    return Linpack::Dpofa(At(w.a), kLd, kN);
}
int Dppfa(Arrays& w) {
    w.FillPacked();
    return Linpack::Dppfa(At(w.a), kN);
}
int Dpbfa(Arrays& w) {
    w.FillMatrix(kAbove);
    return Linpack::Dpbfa(At(w.a), kLd, kN, kAbove);
}
int Dsifa(Arrays& w) {
    w.FillMatrix();
    return Linpack::Dsifa(At(w.a), kLd, kN, w.pivots.data());
}
int Dspfa(Arrays& w) {
    w.FillPacked();
    return Linpack::Dspfa(At(w.a), kN, w.pivots.data());
}
void Dqrdc(Arrays& w) {
    w.FillMatrix();
    w.pivots.fill(0);
    Linpack::Dqrdc(At(w.a), kLd, kN, kN, At(w.x), w.pivots.data(), At(w.work), 1);
}

struct Routine {
    const char* name;
    double (*call)(Arrays& w);  // what it returns, 0 for none
};

const Routine kRoutines[] = {
    {"Dgeco",
     [](Arrays& w) {
         w.FillMatrix();
         return Linpack::Dgeco(At(w.a), kLd, kN, w.pivots.data(), At(w.z));
     }},
    {"Dgefa", [](Arrays& w) -> double { return Dgefa(w); }},
    {"Dgesl",
     [](Arrays& w) {
         Dgefa(w);
         Linpack::Dgesl(At(w.a), kLd, kN, w.pivots.data(), At(w.b), 0);
         Linpack::Dgesl(At(w.a), kLd, kN, w.pivots.data(), At(w.y), 1);
         return 0.0;
     }},
    {"Dgedi",
     [](Arrays& w) {
         Dgefa(w);
         Linpack::Dgedi(At(w.a), kLd, kN, w.pivots.data(), At(w.det), At(w.work), 11);
         return 0.0;
     }},
    {"Dgbco",
     [](Arrays& w) {
         w.FillMatrix(kBelow + kAbove);
         return Linpack::Dgbco(At(w.a), kLd, kN, kBelow, kAbove, w.pivots.data(), At(w.z));
     }},
    {"Dgbfa", [](Arrays& w) -> double { return Dgbfa(w); }},
    {"Dgbsl",
     [](Arrays& w) {
         Dgbfa(w);
         Linpack::Dgbsl(At(w.a), kLd, kN, kBelow, kAbove, w.pivots.data(), At(w.b), 0);
         Linpack::Dgbsl(At(w.a), kLd, kN, kBelow, kAbove, w.pivots.data(), At(w.y), 1);
         return 0.0;
     }},
    {"Dgbdi",
     [](Arrays& w) {
         Dgbfa(w);
         Linpack::Dgbdi(At(w.a), kLd, kN, kBelow, kAbove, w.pivots.data(), At(w.det));
         return 0.0;
     }},
    {"Dpoco",
     [](Arrays& w) {
         w.FillMatrix();
         return Linpack::Dpoco(At(w.a), kLd, kN, At(w.z));
     }},
    {"Dpofa", [](Arrays& w) -> double { return Dpofa(w); }},
    {"Dposl",
     [](Arrays& w) {
         Dpofa(w);
         Linpack::Dposl(At(w.a), kLd, kN, At(w.b));
         return 0.0;
     }},
    {"Dpodi",
     [](Arrays& w) {
         Dpofa(w);
         Linpack::Dpodi(At(w.a), kLd, kN, At(w.det), 11);
         return 0.0;
     }},
    {"Dppco",
     [](Arrays& w) {
         w.FillPacked();
         return Linpack::Dppco(At(w.a), kN, At(w.z));
     }},
    {"Dppfa", [](Arrays& w) -> double { return Dppfa(w); }},
    {"Dppsl",
     [](Arrays& w) {
         Dppfa(w);
         Linpack::Dppsl(At(w.a), kN, At(w.b));
         return 0.0;
     }},
    {"Dppdi",
     [](Arrays& w) {
         Dppfa(w);
         Linpack::Dppdi(At(w.a), kN, At(w.det), 11);
         return 0.0;
     }},
    {"Dpbco",
     [](Arrays& w) {
         w.FillMatrix(kAbove);
         return Linpack::Dpbco(At(w.a), kLd, kN, kAbove, At(w.z));
     }},
    {"Dpbfa", [](Arrays& w) -> double { return Dpbfa(w); }},
    {"Dpbsl",
     [](Arrays& w) {
         Dpbfa(w);
         Linpack::Dpbsl(At(w.a), kLd, kN, kAbove, At(w.b));
         return 0.0;
     }},
    {"Dpbdi",
     [](Arrays& w) {
         Dpbfa(w);
         Linpack::Dpbdi(At(w.a), kLd, kN, kAbove, At(w.det));
         return 0.0;
     }},
    {"Dsico",
     [](Arrays& w) {
         w.FillMatrix();
         return Linpack::Dsico(At(w.a), kLd, kN, w.pivots.data(), At(w.z));
     }},
    {"Dsifa", [](Arrays& w) -> double { return Dsifa(w); }},
    {"Dsisl",
     [](Arrays& w) {
         Dsifa(w);
         Linpack::Dsisl(At(w.a), kLd, kN, w.pivots.data(), At(w.b));
         return 0.0;
     }},
    {"Dsidi",
     [](Arrays& w) {
         Dsifa(w);
         Linpack::Dsidi(At(w.a), kLd, kN, w.pivots.data(), At(w.det), w.inert.data(), At(w.work), 111);
         return 0.0;
     }},
    {"Dspco",
     [](Arrays& w) {
         w.FillPacked();
         return Linpack::Dspco(At(w.a), kN, w.pivots.data(), At(w.z));
     }},
    {"Dspfa", [](Arrays& w) -> double { return Dspfa(w); }},
    {"Dspsl",
     [](Arrays& w) {
         Dspfa(w);
         Linpack::Dspsl(At(w.a), kN, w.pivots.data(), At(w.b));
         return 0.0;
     }},
    {"Dspdi",
     [](Arrays& w) {
         Dspfa(w);
         Linpack::Dspdi(At(w.a), kN, w.pivots.data(), At(w.det), w.inert.data(), At(w.work), 111);
         return 0.0;
     }},
    {"Dtrco",
     [](Arrays& w) {
         w.FillMatrix();
         const double lower = Linpack::Dtrco(At(w.a), kLd, kN, At(w.z), 0);
         return lower + Linpack::Dtrco(At(w.a), kLd, kN, At(w.y), 1);
     }},
    {"Dtrsl",
     [](Arrays& w) {
         w.FillMatrix();
         double infos = 0.0;
         for (const int job : {0, 1, 10, 11}) {
             infos += Linpack::Dtrsl(At(w.a), kLd, kN, At(w.b), job);
         }
         return infos;
     }},
    {"Dtrdi",
     [](Arrays& w) {
         w.FillMatrix();
         const int lower = Linpack::Dtrdi(At(w.a), kLd, kN, At(w.det), 110);
         return 100.0 * lower + Linpack::Dtrdi(At(w.a), kLd, kN, At(w.det), 111);
     }},
    {"Dgtsl", [](Arrays& w) -> double { return Linpack::Dgtsl(kN, At(w.x), At(w.y), At(w.z), At(w.b)); }},
    {"Dptsl",
     [](Arrays& w) {
         Linpack::Dptsl(kN, At(w.x), At(w.y), At(w.b));
         return 0.0;
     }},
    {"Dchdc",
     [](Arrays& w) -> double {
         w.FillMatrix();
         w.pivots.fill(0);
         return Linpack::Dchdc(At(w.a), kLd, kN, At(w.work), w.pivots.data(), 1);
     }},
    {"Dchud",
     [](Arrays& w) {
         w.FillMatrix();
         Linpack::Dchud(At(w.a), kLd, kN, At(w.x), At(w.v), kLd, kSquares, At(w.y), At(w.rho), At(w.c), At(w.s));
         return 0.0;
     }},
    {"Dchdd",
     [](Arrays& w) -> double {
         w.FillMatrix();
         return Linpack::Dchdd(At(w.a), kLd, kN, At(w.x), At(w.v), kLd, kSquares, At(w.y), At(w.rho), At(w.c), At(w.s));
     }},
    {"Dchex",
     [](Arrays& w) {
         w.FillMatrix();
         Linpack::Dchex(At(w.a), kLd, kN, 2, kN - 1, At(w.v), kLd, kSquares, At(w.c), At(w.s), 1);
         Linpack::Dchex(At(w.a), kLd, kN, 3, kN, At(w.v), kLd, kSquares, At(w.c), At(w.s), 2);
         return 0.0;
     }},
    {"Dqrdc",
     [](Arrays& w) {
         Dqrdc(w);
         return 0.0;
     }},
    {"Dqrsl",
     [](Arrays& w) -> double {
         Dqrdc(w);
         return Linpack::Dqrsl(At(w.a), kLd, kN, kN, At(w.x), At(w.y), At(w.z), At(w.b), At(w.c), At(w.s), At(w.work),
                               11111);
     }},
    {"Dsvdc",
     [](Arrays& w) -> double {
         w.FillMatrix();
         return Linpack::Dsvdc(At(w.a), kLd, kN, kN, At(w.s), At(w.c), At(w.u), kLd, At(w.v), kLd, At(w.work), 11);
     }},
};
static_assert(std::size(kRoutines) == 40);

TEST(LinpackPromises, NoRoutineAllocates) {
    for (const Routine& routine : kRoutines) {
        for (const Input input : kInputs) {
            Arrays arrays(input, 7);
            const std::size_t before = failing_new::Count();
            routine.call(arrays);
            const std::size_t after = failing_new::Count();
            EXPECT_EQ(after, before) << routine.name << ' ' << static_cast<int>(input);
        }
    }
}

TEST(LinpackPromises, NothingIsPrintedWhateverFails) {
    for (const Routine& routine : kRoutines) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        for (const Input input : kInputs) {
            Arrays arrays(input, 8);
            routine.call(arrays);
        }
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "") << routine.name;
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << routine.name;
    }
}

// What a caller with a seed of its own gets from a routine.
std::uint64_t DigestOf(const Routine& routine, unsigned seed) {
    std::uint64_t digest = 0;
    for (const Input input : kInputs) {
        Arrays arrays(input, seed);
        const auto result = std::bit_cast<std::uint64_t>(routine.call(arrays));
        digest = (digest ^ arrays.Digest() ^ result) * 1099511628211u;
    }
    return digest;
}

TEST(LinpackPromises, SeveralThreadsGetTheBitsThatOneGets) {
    constexpr unsigned kThreads = 4;
    constexpr int kRounds = 30;
    for (const Routine& routine : kRoutines) {
        std::array<std::array<std::uint64_t, kRounds>, kThreads> found{};
        std::vector<std::thread> threads;
        for (unsigned t = 0; t < kThreads; ++t) {
            threads.emplace_back([&routine, &mine = found[t], t] {
                std::generate(mine.begin(), mine.end(), [&routine, t] { return DigestOf(routine, t); });
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        for (unsigned t = 0; t < kThreads; ++t) {
            const std::uint64_t alone = DigestOf(routine, t);
            EXPECT_EQ(std::count(found[t].begin(), found[t].end(), alone), kRounds) << routine.name << " thread " << t;
            EXPECT_NE(alone, DigestOf(routine, t + 1)) << routine.name << ": the digest tells two callers apart";
        }
    }
}

}  // namespace
}  // namespace linpack_samples
