// Arrays as a caller has them: the elements that the storage of a matrix names, and around and between them cells that
// hold a NaN of their own. Who reads one spoils the result; who writes one is found out.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <functional>

#include "tests/numerics/linpack/Matrix.h"

namespace linpack_samples {

/// Where the elements (i, j), counted from 0, of a matrix stand.
struct Layout {
    int rows;
    int columns;
    int ld;
    std::size_t length;
    std::function<bool(int, int)> contains;
    std::function<std::ptrdiff_t(int, int)> index;
};

inline Layout Full(int rows, int columns, int spare = 3) {
    const int ld = rows + spare;
    return {rows,
            columns,
            ld,
            static_cast<std::size_t>(ld * columns),
            [](int, int) { return true; },
            [ld](int i, int j) { return std::ptrdiff_t{j} * ld + i; }};
}

inline Layout Upper(int n) {
    Layout layout = Full(n, n);
    layout.contains = [](int i, int j) { return i <= j; };
    return layout;
}

inline Layout Lower(int n) {
    Layout layout = Full(n, n);
    layout.contains = [](int i, int j) { return i >= j; };
    return layout;
}

inline Layout Packed(int n) {
    return {n,
            n,
            0,
            static_cast<std::size_t>(n * (n + 1) / 2),
            [](int i, int j) { return i <= j; },
            [](int i, int j) { return std::ptrdiff_t{j} * (j + 1) / 2 + i; }};
}

/// Band with ml diagonals below and mu above; with fill, room for ml more above.
inline Layout Band(int n, int ml, int mu, bool fill) {
    const int above = fill ? ml + mu : mu;
    const int ld = above + ml + 1 + 2;
    return {n,
            n,
            ld,
            static_cast<std::size_t>(ld * n),
            [ml, above](int i, int j) { return i - j <= ml && j - i <= above; },
            [above, ld](int i, int j) { return std::ptrdiff_t{j} * ld + above + i - j; }};
}

/// The cells of a layout with guards.
class Guarded {
public:
    /// Elements that isSet refuses stay guard values, but may be written.
    Guarded(Layout layout, const Matrix& values, const std::function<bool(int, int)>& isSet = {})
        : fLayout(std::move(layout)), fCells(fLayout.length + 2 * kMargin, Guard()), fIsOpen(fCells.size()) {
        Visit([&](int i, int j) {
            if (!isSet || isSet(i, j)) {
                fCells[Cell(i, j)] = values(i, j);
            }
            fIsOpen[Cell(i, j)] = true;
        });
    }
    /// A vector.
    explicit Guarded(const Vector& values) : Guarded(Full(static_cast<int>(values.size()), 1), FromVector(values)) {}
    /// A vector of n elements that are still guard values.
    explicit Guarded(int n) : Guarded(Full(n, 1), Matrix(n, 1), [](int, int) { return false; }) {}

    ~Guarded() { EXPECT_TRUE(GuardsAreKept()) << "a cell outside of the array was written"; }
    Guarded(const Guarded&) = default;
    Guarded& operator=(const Guarded&) = delete;

    double* Data() { return fCells.data() + kMargin; }
    int Ld() const { return fLayout.ld; }
    double operator()(int i, int j) const { return fCells[Cell(i, j)]; }
    double operator[](int i) const { return fCells[Cell(i, 0)]; }

    /// The elements as a plain matrix, 0 where the layout has none.
    Matrix Read() const {
        Matrix result(fLayout.rows, fLayout.columns);
        Visit([&](int i, int j) { result(i, j) = fCells[Cell(i, j)]; });
        return result;
    }
    Vector ReadVector() const { return Read().values; }

private:
    static constexpr std::size_t kMargin = 9;
    static double Guard() { return std::bit_cast<double>(std::uint64_t{0x7ff80000dead5eed}); }
    static Matrix FromVector(const Vector& values) {
        Matrix result(static_cast<int>(values.size()), 1);
        result.values = values;
        return result;
    }

    template <class Action>
    void Visit(Action action) const {
        for (int j = 0; j < fLayout.columns; ++j) {
            for (int i = 0; i < fLayout.rows; ++i) {
                if (fLayout.contains(i, j)) {
                    action(i, j);
                }
            }
        }
    }
    std::size_t Cell(int i, int j) const { return kMargin + static_cast<std::size_t>(fLayout.index(i, j)); }
    bool GuardsAreKept() const {
        for (std::size_t k = 0; k < fCells.size(); ++k) {
            if (!fIsOpen[k] && std::bit_cast<std::uint64_t>(fCells[k]) != std::bit_cast<std::uint64_t>(Guard())) {
                return false;
            }
        }
        return true;
    }

    Layout fLayout;
    Vector fCells;
    std::vector<bool> fIsOpen;
};

/// Integers with guards.
class GuardedInts {
public:
    explicit GuardedInts(int n, const std::vector<int>& values = {})
        : fCells(static_cast<std::size_t>(n) + 2 * kMargin, kGuard), fCount(static_cast<std::size_t>(n)) {
        std::copy(values.begin(), values.end(), fCells.begin() + kMargin);
    }
    ~GuardedInts() {
        for (std::size_t k = 0; k < kMargin; ++k) {
            EXPECT_EQ(fCells[k], kGuard);
            EXPECT_EQ(fCells[kMargin + fCount + k], kGuard);
        }
    }
    GuardedInts(const GuardedInts&) = default;
    GuardedInts& operator=(const GuardedInts&) = delete;

    int* Data() { return fCells.data() + kMargin; }
    int operator[](int i) const { return fCells[kMargin + static_cast<std::size_t>(i)]; }
    std::vector<int> Read() const {
        const auto first = fCells.begin() + kMargin;
        return std::vector<int>(first, first + static_cast<std::ptrdiff_t>(fCount));
    }

private:
    static constexpr std::size_t kMargin = 4;
    static constexpr int kGuard = -1234567;
    std::vector<int> fCells;
    std::size_t fCount;
};

/// The largest |residual| that a backward stable solution of order n may have, ||b - A x|| in norm1.
inline double ResidualBound(const Matrix& a, const Vector& x, int n) {
    return 4.0 * n * kEps * Norm1(a) * Norm1(x);
}

inline double Residual(const Matrix& a, const Vector& x, const Vector& b) {
    return Distance(a * x, b);
}

}  // namespace linpack_samples
