// The symmetric matrix beside reference LAPACK's packed routines, OpenBLAS's full ones and Eigen, where the build found
// them. A member that works in place is measured with the copy of its matrix, and so is its peer.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "benchmarks/linpack/FortranPeer.h"
#include "numerics/containers/KwBitSet.h"
#include "numerics/matrix/KwRectMatrix.h"
#include "numerics/matrix/KwSymMatrix.h"

#ifdef BREVIX_BENCHMARK_EIGEN
#include <Eigen/Dense>
#endif

namespace {

using KwMath_930::KwBitSet;
using KwMath_930::KwRectMatrix;
using KwMath_930::KwSymMatrix;
using Vector = std::vector<double>;

Vector Random(std::size_t size, unsigned seed) {
    std::mt19937 engine(seed);
    std::uniform_real_distribution<double> value(-1.0, 1.0);
    Vector v(size);
    for (double& element : v) {
        element = value(engine);
    }
    return v;
}

// A positive definite matrix of order n, packed, full, and as its factor; a right-hand side; a matrix with ten columns.
struct Case {
    explicit Case(int n) : order(n), rect(n, 10, true), full(Size() * Size()) {
        matrix.Resize(n);
        matrix.AsVector() = Random(matrix.AsVectorConst().size(), 1);
        matrix.AddToDiagonal(2.0 * n);
        matrix.GetDiagonal(diagonal);
        factor = matrix;
        factor.LTChol(diagonal, 1e-12, false);
        rect.AsVector() = Random(rect.AsVectorConst().size(), 2);
        vector = Random(Size(), 3);
        for (std::size_t i = 0; i < Size(); ++i) {
            for (std::size_t j = 0; j < Size(); ++j) {
                full[i * Size() + j] = matrix.GetElem(static_cast<int>(i), static_cast<int>(j));
            }
        }
    }
    std::size_t Size() const { return static_cast<std::size_t>(order); }

    int order;
    KwSymMatrix matrix, factor;
    KwRectMatrix rect;
    Vector diagonal, vector, full;
};

const FortranPeer* Lapack() {
    static const auto peer = FortranPeer::Load(BREVIX_BENCHMARK_LAPACK);
    return peer.get();
}
const FortranPeer* OpenBlas() {
    static const auto peer = FortranPeer::Load(BREVIX_BENCHMARK_OPENBLAS);
    return peer.get();
}

// The peers must compute the same: ends the program otherwise.
void Demand(double actual, double expected, const char* what) {
    if (!(std::abs(actual - expected) <= 1e-9 * (1.0 + std::abs(expected)))) {
        std::cerr << what << " differs: " << actual << ", " << expected << '\n';
        std::exit(1);
    }
}

using Body = std::function<void()>;

void Add(const std::string& name, int n, const std::function<Body(Case&)>& make) {
    benchmark::RegisterBenchmark((name + "/" + std::to_string(n)).c_str(), [n, make](benchmark::State& state) {
        Case data(n);
        const Body body = make(data);
        for (auto _ : state) {
            body();
            benchmark::ClobberMemory();
        }
    });
}

void AddOwn(int n) {
    Add("BM_KwSymMatrix_LTChol", n, [work = KwSymMatrix()](Case& c) mutable -> Body {
        return [&c, work]() mutable {
            work = c.matrix;
            work.LTChol(c.diagonal, 1e-12, false);
        };
    });
    Add("BM_KwSymMatrix_LTSubstitute", n,
        [](Case& c) -> Body { return [&c, x = Vector()]() mutable { c.factor.LTSubstitute(c.vector, x); }; });
    Add("BM_KwSymMatrix_CholInverse", n, [](Case& c) -> Body {
        return [&c, work = KwSymMatrix()]() mutable { c.matrix.CholInverse(c.diagonal, 1e-12, work); };
    });
    Add("BM_KwSymMatrix_UpdateXX", n, [](Case& c) -> Body { return [&c]() { c.matrix.UpdateXX(c.vector, 1e-9); }; });
    Add("BM_KwSymMatrix_ComputeSV", n,
        [](Case& c) -> Body { return [&c, x = Vector()]() mutable { c.matrix.ComputeSV(c.vector, x); }; });
    Add("BM_KwSymMatrix_ComputeRTransSR", n, [](Case& c) -> Body {
        return [&c, target = KwSymMatrix()]() mutable { c.matrix.ComputeRTransSR(c.rect, target); };
    });
    Add("BM_KwSymMatrix_Sweep", n, [](Case& c) -> Body {
        return
            [&c, swept = KwBitSet(c.order)]() mutable { c.matrix.Sweep(c.order / 2, 1e-12, c.diagonal, swept, false); };
    });
    Add("BM_KwSymMatrix_UpdateXX_sparse", n, [](Case& c) -> Body {
        for (std::size_t k = 0; k < c.vector.size(); ++k) {
            c.vector[k] = k % 10 == 0 ? c.vector[k] : 0.0;
        }
        return [&c]() { c.matrix.UpdateXX(c.vector, 1e-9); };
    });
}

void AddLapack(int n) {
    Add("BM_KwSymMatrix_LTChol_LAPACK_dpptrf", n, [](Case& c) -> Body {
        return [&c, work = Vector()]() mutable {
            work = c.matrix.AsVectorConst();
            int info = 0;
            Lapack()->Call("dpptrf_", "U", &c.order, work.data(), &info);
            benchmark::DoNotOptimize(work.data());
        };
    });
    Add("BM_KwSymMatrix_LTSubstitute_LAPACK_dpptrs", n, [](Case& c) -> Body {
        return [&c, x = Vector()]() mutable {
            x = c.vector;
            int info = 0;
            const int one = 1;
            Lapack()->Call("dpptrs_", "U", &c.order, &one, c.factor.AsVectorConst().data(), x.data(), &c.order, &info);
        };
    });
    Add("BM_KwSymMatrix_CholInverse_LAPACK_dpptri", n, [](Case& c) -> Body {
        return [&c, work = Vector()]() mutable {
            work = c.matrix.AsVectorConst();
            int info = 0;
            Lapack()->Call("dpptrf_", "U", &c.order, work.data(), &info);
            Lapack()->Call("dpptri_", "U", &c.order, work.data(), &info);
        };
    });
    Add("BM_KwSymMatrix_UpdateXX_BLAS_dspr", n, [](Case& c) -> Body {
        return [&c]() {
            const double weight = 1e-9;
            const int one = 1;
            Lapack()->Call("dspr_", "U", &c.order, &weight, c.vector.data(), &one, c.matrix.AsVector().data());
        };
    });
    Add("BM_KwSymMatrix_ComputeSV_BLAS_dspmv", n, [](Case& c) -> Body {
        return [&c, x = Vector(c.Size())]() mutable {
            const double alpha = 1.0, beta = 0.0;
            const int one = 1;
            Lapack()->Call("dspmv_", "U", &c.order, &alpha, c.matrix.AsVectorConst().data(), c.vector.data(), &one,
                           &beta, x.data(), &one);
        };
    });
}

void AddOpenBlas(int n) {
    Add("BM_KwSymMatrix_LTChol_OpenBLAS_dpotrf", n, [](Case& c) -> Body {
        return [&c, work = Vector()]() mutable {
            work = c.full;
            int info = 0;
            OpenBlas()->Call("dpotrf_", "L", &c.order, work.data(), &c.order, &info);
        };
    });
}

#ifdef BREVIX_BENCHMARK_EIGEN
using Dense = Eigen::MatrixXd;

Eigen::Map<const Dense> Full(const Case& c) {
    return Eigen::Map<const Dense>(c.full.data(), c.order, c.order);
}

void AddEigen(int n) {
    Add("BM_KwSymMatrix_LTChol_Eigen", n, [](Case& c) -> Body {
        return [&c, solver = Eigen::LLT<Dense>(Full(c))]() mutable { solver.compute(Full(c)); };
    });
    Add("BM_KwSymMatrix_LTSubstitute_Eigen", n, [](Case& c) -> Body {
        return [&c, solver = Eigen::LLT<Dense>(Full(c)), x = Eigen::VectorXd()]() mutable {
            x = solver.solve(Eigen::Map<const Eigen::VectorXd>(c.vector.data(), c.order));
        };
    });
    Add("BM_KwSymMatrix_CholInverse_Eigen", n, [](Case& c) -> Body {
        return [&c, inverse = Dense()]() mutable {
            inverse = Eigen::LLT<Dense>(Full(c)).solve(Dense::Identity(c.order, c.order));
        };
    });
    Add("BM_KwSymMatrix_ComputeSV_Eigen", n, [](Case& c) -> Body {
        return [&c, x = Eigen::VectorXd()]() mutable {
            x = Full(c).selfadjointView<Eigen::Lower>() * Eigen::Map<const Eigen::VectorXd>(c.vector.data(), c.order);
        };
    });
    Add("BM_KwSymMatrix_ComputeRTransSR_Eigen", n, [](Case& c) -> Body {
        using Rows = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
        return [&c, target = Dense()]() mutable {
            const Eigen::Map<const Rows> r(c.rect.AsVectorConst().data(), c.order, 10);
            target = r.transpose() * (Full(c).selfadjointView<Eigen::Lower>() * r);
        };
    });
}
#endif

void CheckPeers() {
    Case c(37);
    Vector x;
    c.factor.LTSubstitute(c.vector, x);
    if (Lapack() != nullptr) {
        Vector packed = c.matrix.AsVectorConst(), solution = c.vector;
        int info = 0;
        const int one = 1;
        Lapack()->Call("dpptrf_", "U", &c.order, packed.data(), &info);
        Lapack()->Call("dpptrs_", "U", &c.order, &one, packed.data(), solution.data(), &c.order, &info);
        Demand(x[17], solution[17], "the solution of LAPACK");
    }
    if (OpenBlas() != nullptr) {
        Vector work = c.full;
        int info = 0;
        OpenBlas()->Call("dpotrf_", "L", &c.order, work.data(), &c.order, &info);
        Demand(c.factor.GetElem(36, 36), work.back(), "the factor of OpenBLAS");
    }
#ifdef BREVIX_BENCHMARK_EIGEN
    const Eigen::VectorXd solution =
        Eigen::LLT<Dense>(Full(c)).solve(Eigen::Map<const Eigen::VectorXd>(c.vector.data(), c.order));
    Demand(x[17], solution[17], "the solution of Eigen");
#endif
}

}  // namespace

int main(int argc, char** argv) {
    CheckPeers();
    for (const int n : {10, 100, 1000, 3000}) {
        AddOwn(n);
        if (Lapack() != nullptr) {
            AddLapack(n);
        }
        if (OpenBlas() != nullptr) {
            AddOpenBlas(n);
        }
#ifdef BREVIX_BENCHMARK_EIGEN
        AddEigen(n);
#endif
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
