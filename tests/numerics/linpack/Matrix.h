// A plain matrix for expectations: values by columns, products as naive loops, and samples with entropy.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

namespace linpack_samples {

constexpr double kEps = std::numeric_limits<double>::epsilon();
using Vector = std::vector<double>;

struct Matrix {
    Matrix(int rowCount, int columnCount)
        : rows(rowCount), columns(columnCount), values(static_cast<std::size_t>(rowCount * columnCount)) {}

    double& operator()(int i, int j) { return values[static_cast<std::size_t>(j * rows + i)]; }
    double operator()(int i, int j) const { return values[static_cast<std::size_t>(j * rows + i)]; }

    int rows;
    int columns;
    Vector values;
};

inline Matrix Identity(int n) {
    Matrix result(n, n);
    for (int i = 0; i < n; ++i) {
        result(i, i) = 1.0;
    }
    return result;
}

inline Matrix Transposed(const Matrix& a) {
    Matrix result(a.columns, a.rows);
    for (int j = 0; j < a.columns; ++j) {
        for (int i = 0; i < a.rows; ++i) {
            result(j, i) = a(i, j);
        }
    }
    return result;
}

inline Matrix operator*(const Matrix& a, const Matrix& b) {
    Matrix result(a.rows, b.columns);
    for (int j = 0; j < b.columns; ++j) {
        for (int k = 0; k < a.columns; ++k) {
            const double factor = b(k, j);
            const double* from = a.values.data() + k * a.rows;
            double* to = result.values.data() + j * a.rows;
            for (int i = 0; i < a.rows; ++i) {
                to[i] += from[i] * factor;
            }
        }
    }
    return result;
}

inline Vector operator*(const Matrix& a, const Vector& x) {
    Vector result(static_cast<std::size_t>(a.rows));
    for (int j = 0; j < a.columns; ++j) {
        for (int i = 0; i < a.rows; ++i) {
            result[static_cast<std::size_t>(i)] += a(i, j) * x[static_cast<std::size_t>(j)];
        }
    }
    return result;
}

inline Matrix operator-(Matrix a, const Matrix& b) {
    for (std::size_t k = 0; k < a.values.size(); ++k) {
        a.values[k] -= b.values[k];
    }
    return a;
}

inline double Norm1(const Vector& x) {
    double sum = 0.0;
    for (const double value : x) {
        sum += std::abs(value);
    }
    return sum;
}

/// The largest sum of magnitudes of a column; NaN when there is one.
inline double Norm1(const Matrix& a) {
    double largest = 0.0;
    for (int j = 0; j < a.columns; ++j) {
        double sum = 0.0;
        for (int i = 0; i < a.rows; ++i) {
            sum += std::abs(a(i, j));
        }
        largest = sum > largest || std::isnan(sum) ? sum : largest;
    }
    return largest;
}

inline double Distance(const Vector& x, const Vector& y) {
    double sum = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        sum += std::abs(x[i] - y[i]);
    }
    return sum;
}

/// The values of a's upper triangle, mirrored, or zero below with mirror false.
inline Matrix FromUpper(const Matrix& a, bool mirror) {
    Matrix result(a.rows, a.columns);
    for (int j = 0; j < a.columns; ++j) {
        for (int i = 0; i <= std::min(j, a.rows - 1); ++i) {
            result(i, j) = a(i, j);
            if (mirror) {
                result(j, i) = a(i, j);
            }
        }
    }
    return result;
}

// ---- Samples

/// Numbers in (-1, 1) with all bits used; the same on every machine.
class Source {
public:
    explicit Source(unsigned seed) : fEngine(seed * 2654435761u + 17u) {}
    double Next() {
        const std::uint64_t high = fEngine();
        const std::uint64_t low = fEngine();
        const double unit =
            (static_cast<double>(high >> 5) * 67108864.0 + static_cast<double>(low >> 6)) / 9007199254740992.0;
        return 2.0 * unit - 1.0;
    }

private:
    std::mt19937 fEngine;
};

inline Vector RandomVector(int n, unsigned seed) {
    Source source(seed);
    Vector x(static_cast<std::size_t>(n));
    for (double& value : x) {
        value = source.Next();
    }
    return x;
}

inline Matrix RandomMatrix(int rows, int columns, unsigned seed) {
    Matrix a(rows, columns);
    a.values = RandomVector(rows * columns, seed);
    return a;
}

enum class Kind { kRandom, kGraded, kIllConditioned, kIntegers, kSparse };
constexpr Kind kKinds[] = {Kind::kRandom, Kind::kGraded, Kind::kIllConditioned, Kind::kIntegers, Kind::kSparse};

/// A matrix of the kind: graded by rows and columns over 20 powers of ten; rows all but equal; small integers with many
/// ties; three quarters zeros.
inline Matrix Sample(Kind kind, int rows, int columns, unsigned seed) {
    Matrix a = RandomMatrix(rows, columns, seed);
    for (int j = 0; j < columns; ++j) {
        for (int i = 0; i < rows; ++i) {
            double& element = a(i, j);
            switch (kind) {
                case Kind::kRandom:
                    break;
                case Kind::kGraded:
                    element *= std::pow(10.0, -10.0 * (i + j) / (rows + columns));
                    break;
                case Kind::kIllConditioned:
                    element = 1.0 / (i + j + 1.375) + 1e-9 * element;
                    break;
                case Kind::kIntegers:
                    element = std::round(3.0 * element);
                    break;
                case Kind::kSparse:
                    element = (i * 7 + j * 5 + static_cast<int>(seed)) % 4 == 0 || i == j ? element : 0.0;
                    break;
            }
        }
    }
    return a;
}

/// The orders that every routine is tested with: 1 to 40 and 200.
inline std::vector<int> Orders() {
    std::vector<int> orders;
    for (int n = 1; n <= 40; ++n) {
        orders.push_back(n);
    }
    orders.push_back(200);
    return orders;
}

/// a with everything outside ml lower and mu upper diagonals set to zero.
inline Matrix Banded(Matrix a, int ml, int mu) {
    for (int j = 0; j < a.columns; ++j) {
        for (int i = 0; i < a.rows; ++i) {
            if (i - j > ml || j - i > mu) {
                a(i, j) = 0.0;
            }
        }
    }
    return a;
}

}  // namespace linpack_samples
