// Symmetric matrix, systems that are not positive definite. The packed lower triangle by rows is an upper one by
// columns, which LINPACK's packed routines factorise as it stands; they work on a copy, so that a failure leaves the
// matrix. Test: KwSymMatrix_indefinite_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "numerics/containers/KwBitSet.h"
#include "numerics/linpack/Linpack.h"
#include "numerics/matrix/matrix_operand.h"
#include "numerics/matrix/packed_cholesky.h"
#include "numerics/matrix/packed_triangle.h"
#include "numerics/matrix/resize_target.h"

namespace KwMath_930 {

using packed_triangle::Index;

namespace {

// A packed matrix and its pivots after the factorisation with symmetric pivoting.
struct IndefiniteFactor {
    std::vector<double> packed;
    std::vector<int> pivots;
    double reciprocalCondition;

    IndefiniteFactor(const std::vector<double>& matrix, int order)
        : packed(matrix), pivots(static_cast<std::size_t>(order)) {
        std::vector<double> work(static_cast<std::size_t>(order));
        reciprocalCondition = Linpack::Dspco(packed.data(), order, pivots.data(), work.data());
    }

    void Solve(std::vector<double>& x) {
        Linpack::Dspsl(packed.data(), static_cast<int>(pivots.size()), pivots.data(), x.data());
    }
};

std::vector<double> Leading(const std::vector<double>& v, int count) {
    return std::vector<double>(v.begin(), v.begin() + count);
}

// Solves in place, x holding the right-hand side before, and leaves the factor in the packed matrix.
// Returns: false, nothing changed, when the matrix is singular within tol. May throw std::bad_alloc, nothing changed.
bool SolveRegular(std::vector<double>& matrix, int order, double tol, std::vector<double>& x) {
    if (order == 0) {
        return true;
    }
    IndefiniteFactor factor(matrix, order);
    if (!(factor.reciprocalCondition > tol)) {
        return false;
    }
    factor.Solve(x);
    matrix.swap(factor.packed);
    return true;
}

bool IsAllFinite(const std::vector<double>& values) {
    return std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

// One rotation of Jacobi's method: makes element (p, q) of the square matrix 0 and carries the eigenvectors, the rows
// of vectors, along.
void Rotate(std::vector<double>& square, std::vector<double>& vectors, std::size_t n, std::size_t p, std::size_t q) {
    const double theta = (square[q * n + q] - square[p * n + p]) / (2.0 * square[p * n + q]);
    const double tangent = std::copysign(1.0, theta) / (std::abs(theta) + std::hypot(theta, 1.0));
    const double cosine = 1.0 / std::hypot(tangent, 1.0);
    const double sine = tangent * cosine;
    const auto rotate = [=](double& a, double& b) {
        const double before = a;
        a = cosine * a - sine * b;
        b = sine * before + cosine * b;
    };
    for (std::size_t k = 0; k < n; ++k) {
        rotate(square[k * n + p], square[k * n + q]);
    }
    for (std::size_t k = 0; k < n; ++k) {
        rotate(square[p * n + k], square[q * n + k]);
        rotate(vectors[p * n + k], vectors[q * n + k]);
    }
    square[p * n + q] = square[q * n + p] = 0.0;
}

// Turns the square matrix into the diagonal one of its eigenvalues, vectors into the eigenvectors, one a row.
// Source: cyclic Jacobi method [Golub and Van Loan 8.5].
void Diagonalise(std::vector<double>& square, std::vector<double>& vectors, std::size_t n) {
    constexpr int kMostSweeps = 60;
    for (std::size_t i = 0; i < n; ++i) {
        vectors[i * n + i] = 1.0;
    }
    bool isRotated = true;
    for (int sweep = 0; isRotated && sweep < kMostSweeps; ++sweep) {
        isRotated = false;
        for (std::size_t p = 0; p + 1 < n; ++p) {
            for (std::size_t q = p + 1; q < n; ++q) {
                const double scale = std::sqrt(std::abs(square[p * n + p])) * std::sqrt(std::abs(square[q * n + q]));
                const double element = std::abs(square[p * n + q]);
                if (element > std::numeric_limits<double>::epsilon() * scale &&
                    element > std::numeric_limits<double>::min()) {
                    Rotate(square, vectors, n, p, q);
                    isRotated = true;
                }
            }
        }
    }
}

// The solution of least norm of the matrix scaled to a largest element of 1, eigenvalues within tol of 0 left out.
std::vector<double> SolveByEigenvalues(std::vector<double> square, double tol, const std::vector<double>& b) {
    const std::size_t n = b.size();
    double scale = 0.0;
    for (const double element : square) {
        scale = std::max(scale, std::abs(element));
    }
    std::vector<double> x(n);
    if (scale == 0.0) {
        return x;
    }
    for (double& element : square) {
        element /= scale;
    }
    std::vector<double> vectors(n * n);
    Diagonalise(square, vectors, n);
    double largest = 0.0;
    for (std::size_t i = 0; i < n; ++i) {
        largest = std::max(largest, std::abs(square[i * n + i]));
    }
    const double threshold = std::max(tol, static_cast<double>(n) * std::numeric_limits<double>::epsilon()) * largest;
    for (std::size_t i = 0; i < n; ++i) {
        const double value = square[i * n + i];
        if (std::abs(value) > threshold) {
            double product = 0.0;
            for (std::size_t k = 0; k < n; ++k) {
                product += vectors[i * n + k] * b[k];
            }
            product /= value * scale;
            for (std::size_t k = 0; k < n; ++k) {
                x[k] += product * vectors[i * n + k];
            }
        }
    }
    return x;
}

}  // namespace

bool KwSymMatrix::SolveIndefinite(double tol, const std::vector<double>& b, std::vector<double>& x) try {
    if (fNRows < 0 || !(tol >= 0.0) || std::cmp_less(b.size(), fNRows)) {
        return false;
    }
    std::vector<double> solution = Leading(b, fNRows);
    if (!SolveRegular(fData, fNRows, tol, solution)) {
        return false;
    }
    x.swap(solution);
    return true;
} catch (...) {
    return false;
}

bool KwSymMatrix::SolveIndefinite(const KwBitSet& skip, const std::vector<double>& b, std::vector<double>& x) try {
    if (fNRows < 0 || std::cmp_less(b.size(), fNRows)) {
        return false;
    }
    KwSymMatrix rest(*this);
    std::vector<double> solution = Leading(b, fNRows);
    if (!rest.IsValidMatrix()) {
        return false;
    }
    for (int i = 0; i < fNRows; ++i) {
        if (skip.IsIn(i)) {
            rest.KwSymMatrix::ZeroOut(i);
            solution[static_cast<std::size_t>(i)] = 0.0;
        }
    }
    double scale = 0.0;
    for (const double element : rest.fData) {
        scale = std::max(scale, std::abs(element));
    }
    for (int i = 0; i < fNRows; ++i) {
        if (skip.IsIn(i)) {
            rest.fData[Index(i, i)] = scale > 0.0 ? scale : 1.0;
        }
    }
    // Singular to working precision is LINPACK's test, 1 + rcond = 1.
    if (!rest.SolveIndefinite(std::numeric_limits<double>::epsilon() / 2.0, solution, solution)) {
        return false;
    }
    fData.swap(rest.fData);
    x.swap(solution);
    return true;
} catch (...) {
    return false;
}

bool KwSymMatrix::SolveIndefiniteGI(double tol, const std::vector<double>& b, std::vector<double>& x) try {
    if (fNRows < 0 || !(tol >= 0.0) || std::cmp_less(b.size(), fNRows)) {
        return false;
    }
    std::vector<double> solution = Leading(b, fNRows);
    if (!SolveRegular(fData, fNRows, tol, solution)) {
        if (!IsAllFinite(fData)) {
            return false;
        }
        solution = SolveByEigenvalues(ToSquare(fData.data(), fNRows), tol, solution);
    }
    x.swap(solution);
    return true;
} catch (...) {
    return false;
}

int KwSymMatrix::TransformToPositiveDefinite(double tol, bool& changed, double& shift) try {
    constexpr double kGrowth = 10.0;
    if (fNRows < 0 || !(tol >= 0.0 && tol < 1.0)) {
        return -1;
    }
    double scale = 0.0;
    for (const double element : fData) {
        scale = std::max(scale, std::abs(element));
    }
    scale = scale > 0.0 ? scale : 1.0;
    double tried = 0.0;
    std::vector<double> ref;
    for (int attempt = 0; IsAllFinite(fData) && std::isfinite(tried); ++attempt) {
        KwSymMatrix factor(*this);
        factor.KwSymMatrix::AddToDiagonal(tried);
        factor.KwSymMatrix::GetNCheckDiagonal(ref, tol, 1.0);
        if (!factor.IsValidMatrix() || std::cmp_not_equal(ref.size(), fNRows)) {
            return -1;
        }
        if (packed_cholesky::Factor(factor.fData.data(), fNRows, ref.data(), tol, nullptr) == 0) {
            KwSymMatrix::AddToDiagonal(tried);
            changed = attempt > 0;
            shift = tried;
            return attempt;
        }
        tried = attempt == 0 ? scale * std::numeric_limits<double>::epsilon() : tried * kGrowth;
    }
    return -1;
} catch (...) {
    return -1;
}

}  // namespace KwMath_930
