// Quadratic forms against the full double loop: exactly for small whole numbers, to rounding for random ones.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "numerics/matrix/KwSymMatrix.h"
#include "tests/numerics/matrix/matrix_samples.h"
#include "tests/numerics/matrix/symmetric_samples.h"

namespace {

using KwMath_930::KwSymMatrix;
using symmetric_samples::FromPacked;
using symmetric_samples::kOrders;
using symmetric_samples::RandomMatrix;
using symmetric_samples::RandomVector;
using symmetric_samples::Square;
using symmetric_samples::ToSquare;
using Vector = std::vector<double>;

struct Form {
    double value = 0.0;
    double magnitude = 0.0;  // the sum of the absolute terms
};

Form FullLoop(const KwSymMatrix& matrix, const Vector& v, const Vector& w) {
    const Square square = ToSquare(matrix);
    Form form;
    for (std::size_t i = 0; i < v.size(); ++i) {
        for (std::size_t j = 0; j < w.size(); ++j) {
            const double term = v[i] * square[i][j] * w[j];
            form.value += term;
            form.magnitude += std::abs(term);
        }
    }
    return form;
}

TEST(KwSymMatrixQuadraticForm, AgreesWithTheFullLoopToRounding) {
    for (const int order : kOrders) {
        const KwSymMatrix matrix = RandomMatrix(order, 51);
        const Vector v = RandomVector(order, 52);
        const Vector w = RandomVector(order, 53);
        // Two sums of n^2 terms in different orders: each is within about (2n + 2) eps of the sum of magnitudes.
        const double tolerance = (4 * order + 4) * std::numeric_limits<double>::epsilon();
        const Form vsw = FullLoop(matrix, v, w);
        const Form vsv = FullLoop(matrix, v, v);
        EXPECT_NEAR(matrix.ComputeVSW(v, w), vsw.value, tolerance * vsw.magnitude) << order;
        EXPECT_NEAR(matrix.ComputeVSV(v), vsv.value, tolerance * vsv.magnitude) << order;
    }
}

TEST(KwSymMatrixQuadraticForm, IsExactForWholeNumbers) {
    for (const int order : kOrders) {
        KwSymMatrix matrix = RandomMatrix(order, 61);
        Vector v = RandomVector(order, 62);
        Vector w = RandomVector(order, 63);
        for (Vector* numbers : {&matrix.AsVector(), &v, &w}) {
            for (double& number : *numbers) {
                number = std::round(100 * number);
            }
        }
        EXPECT_EQ(matrix.ComputeVSW(v, w), FullLoop(matrix, v, w).value);
        EXPECT_EQ(matrix.ComputeVSV(v), FullLoop(matrix, v, v).value);
    }
}

TEST(KwSymMatrixQuadraticForm, WrongSizeGivesZero) {
    const KwSymMatrix matrix = FromPacked(2, {1.5, -2, 3});
    EXPECT_EQ(matrix.ComputeVSW({1, 2}, {1, 2, 3}), 0.0);
    EXPECT_EQ(matrix.ComputeVSW({1}, {1, 2}), 0.0);
    EXPECT_EQ(matrix.ComputeVSW({1, 2, 3}, {1, 2, 3}), 0.0);
    EXPECT_EQ(matrix.ComputeVSV({1}), 0.0);
    EXPECT_EQ(matrix.ComputeVSV({1, 2, 3}), 0.0);
    EXPECT_NE(matrix.ComputeVSW({1, 2}, {1, 2}), 0.0);
}

TEST(KwSymMatrixQuadraticForm, EmptyAndInvalidMatricesGiveZero) {
    EXPECT_EQ(KwSymMatrix().ComputeVSW({}, {}), 0.0);
    EXPECT_EQ(KwSymMatrix().ComputeVSV({}), 0.0);
    EXPECT_EQ(KwSymMatrix(std::numeric_limits<int>::max(), true).ComputeVSV({}), 0.0);
}

TEST(KwSymMatrixQuadraticForm, NaNIsNotLost) {
    const KwSymMatrix matrix = FromPacked(3, {1, std::nan(""), 2, 3, 4, 5});
    EXPECT_TRUE(std::isnan(matrix.ComputeVSV({0, 0, 1})));
    EXPECT_TRUE(std::isnan(matrix.ComputeVSW({0, 0, 1}, {0, 0, 1})));
}

// The form by its definition, over rows and columns first .. first+count-1.
double NaiveForm(const KwSymMatrix& matrix, int first, int count, const Vector& v, const Vector& w) {
    double form = 0.0;
    for (int i = 0; i < count; ++i) {
        for (int j = 0; j < count; ++j) {
            form +=
                v[static_cast<std::size_t>(i)] * matrix.GetElem(first + i, first + j) * w[static_cast<std::size_t>(j)];
        }
    }
    return form;
}

TEST(KwSymMatrixForms, OfStridedElementsAgreeWithTheLoop) {
    for (const int n : kOrders) {
        const KwSymMatrix matrix = RandomMatrix(n, 1);
        const Vector x = RandomVector(4 * n + 8, 2);
        Vector v, w, growing;
        for (int k = 0; k < n; ++k) {
            v.push_back(x[static_cast<std::size_t>(1 + 2 * k)]);
            w.push_back(x[static_cast<std::size_t>(4 + 2 * k)]);
        }
        const double expected = NaiveForm(matrix, 0, n, v, w);
        const double scale = 100.0 * n;
        matrix_samples::ExpectNear(matrix.ComputeVSW(x, 1, 4, 2), expected, scale);
        matrix_samples::ExpectNear(matrix.ComputeVSW(x.data() + 1, 2, w.data(), 1), expected, scale);
        Vector spread(static_cast<std::size_t>(2 + 3 * n + n * n));
        for (int k = 0; k < n; ++k) {
            spread[static_cast<std::size_t>(2 + 3 * k + k * (k - 1) / 2)] = w[static_cast<std::size_t>(k)];
        }
        matrix_samples::ExpectNear(matrix.ComputeVSWii(x, 1, 2, spread, 2, 3), expected, scale);
        matrix_samples::ExpectNear(matrix.ComputeViiSW(spread, 2, 3, x, 1, 2), expected, scale);
    }
    const KwSymMatrix matrix = RandomMatrix(3, 1);
    const Vector five(5, 1.5);
    EXPECT_EQ(matrix.ComputeVSW(five, 0, 3, 1), 0.0);
    EXPECT_EQ(matrix.ComputeVSW(five, -1, 1, 1), 0.0);
    EXPECT_EQ(matrix.ComputeVSW(five, 0, 1, -1), 0.0);
    EXPECT_EQ(matrix.ComputeVSWii(five, 0, 1, five, 0, 2), 0.0);
    EXPECT_EQ(matrix.ComputeVSWii(five, 0, 3, five, 0, 1), 0.0);
    EXPECT_EQ(matrix.ComputeViiSW(five, 0, 2, five, 0, 1), 0.0);
}

TEST(KwSymMatrixForms, OfPartsUseOnlyTheCountsGiven) {
    const KwSymMatrix matrix = RandomMatrix(6, 1);
    const Vector v = RandomVector(6, 2), w = RandomVector(6, 3);
    for (int nv = 0; nv <= 6; ++nv) {
        for (int nw = 0; nw <= 6; ++nw) {
            double expected = 0.0;
            for (int i = 0; i < nv; ++i) {
                for (int j = 0; j < nw; ++j) {
                    expected += v[static_cast<std::size_t>(i)] * matrix.GetElem(i, j) * w[static_cast<std::size_t>(j)];
                }
            }
            matrix_samples::ExpectNear(matrix.ComputeVSWParts(v, nv, w, nw), expected, 100.0);
            EXPECT_EQ(matrix.ComputeVSWParts(v.data(), nv, w.data(), nw), matrix.ComputeVSWParts(v, nv, w, nw));
        }
    }
    EXPECT_EQ(matrix.ComputeVSWParts(v, 7, w, 2), 0.0);
    EXPECT_EQ(matrix.ComputeVSWParts(v, 2, w, -1), 0.0);
    EXPECT_EQ(matrix.ComputeVSWParts(Vector{1}, 2, w, 2), 0.0);
    EXPECT_EQ(matrix.ComputeVSWParts(v.data(), -1, w.data(), 2), 0.0);
}

TEST(KwSymMatrixForms, OfInnerPartsAgreeWithTheLoop) {
    KwSymMatrix matrix = RandomMatrix(6, 1);
    const Vector v = RandomVector(6, 2), w = RandomVector(6, 3);
    for (int first = 0; first <= 6; ++first) {
        for (int count = 0; first + count <= 6; ++count) {
            const Vector partV(v.begin() + first, v.begin() + first + count);
            const Vector partW(w.begin() + first, w.begin() + first + count);
            const double expected = NaiveForm(matrix, first, count, partV, partW);
            matrix_samples::ExpectNear(matrix.ComputeVSSubWParts(v, w, first, count), expected, 100.0);
            matrix_samples::ExpectNear(matrix.ComputeVSymSubW(partV, partW, first, count), expected, 100.0);
            if (first + count == 6) {
                matrix_samples::ExpectNear(matrix.SubSymComputeVSW(partV, partW, first), expected, 100.0);
            }
        }
    }
    EXPECT_EQ(matrix.ComputeVSSubWParts(v, w, 2, 5), 0.0);
    EXPECT_EQ(matrix.ComputeVSSubWParts(v, {1, 2}, 2, 2), 0.0);
    EXPECT_EQ(matrix.ComputeVSymSubW(v, w, 0, 5), 0.0);
    EXPECT_EQ(matrix.ComputeVSymSubW({1}, {1}, -1, 1), 0.0);
    EXPECT_EQ(matrix.SubSymComputeVSW({1}, {1}, 4), 0.0);
    EXPECT_EQ(matrix.SubSymComputeVSW({}, {}, 7), 0.0);
    ASSERT_TRUE(matrix.SetNBlocks(3));
    const Vector two = {1.5, -2.5}, other = {0.5, 3.5};
    for (int block = 0; block < 3; ++block) {
        matrix_samples::ExpectNear(matrix.ComputeBlockVSV(block, two), NaiveForm(matrix, 2 * block, 2, two, two),
                                   100.0);
        matrix_samples::ExpectNear(matrix.ComputeBlockVSW(block, two, other),
                                   NaiveForm(matrix, 2 * block, 2, two, other), 100.0);
    }
    EXPECT_EQ(matrix.ComputeBlockVSV(3, two), 0.0);
    EXPECT_EQ(matrix.ComputeBlockVSV(-1, two), 0.0);
    EXPECT_EQ(matrix.ComputeBlockVSV(1, {1}), 0.0);
    EXPECT_EQ(matrix.ComputeBlockVSW(1, two, {1}), 0.0);
}

TEST(KwSymMatrixForms, OfSparseVectors) {
    const KwSymMatrix matrix = RandomMatrix(5, 1);
    const double expected = NaiveForm(matrix, 0, 5, {0, 2.5, 0, 0, -1.5}, {0.5, 0, 0, 3.5, 0});
    matrix_samples::ExpectNear(matrix.ComputeSpVSSpW({4, 1}, {-1.5, 2.5}, {0, 3, 3}, {0.5, 3, 0.5}), expected, 100.0);
    EXPECT_EQ(matrix.ComputeSpVSSpW({}, {}, {1}, {1.5}), 0.0);
    EXPECT_EQ(matrix.ComputeSpVSSpW({5}, {1.5}, {1}, {1.5}), 0.0);
    EXPECT_EQ(matrix.ComputeSpVSSpW({1}, {1.5}, {-1}, {1.5}), 0.0);
    EXPECT_EQ(matrix.ComputeSpVSSpW({1}, {1.5, 2}, {1}, {1.5}), 0.0);
}

TEST(KwSymMatrixForms, OfARowOfAnotherSizeIsZero) {
    const KwSymMatrix matrix = RandomMatrix(3, 1);
    EXPECT_EQ(matrix.ComputeVSV(matrix_samples::RandomRect(2, 4, 1), 0), 0.0);
    EXPECT_EQ(matrix.ComputeVSV(matrix_samples::RandomRect(2, 3, 1), 2), 0.0);
    EXPECT_EQ(matrix.ComputeVSV(matrix_samples::RandomRect(2, 3, 1), -1), 0.0);
}

TEST(KwSymMatrixForms, SquareRootOfWhatIsNotPositiveIsZero) {
    const KwSymMatrix matrix = FromPacked(2, {4, 0, -9});
    EXPECT_EQ(matrix.SquareRootVSV({1.5, 0}), 3.0);
    EXPECT_EQ(matrix.SquareRootVSV({0, 1.5}), 0.0);
    EXPECT_EQ(matrix.SquareRootVSV({0, 0}), 0.0);
    EXPECT_EQ(matrix.SquareRootVSV({1.5}), 0.0);
}

}  // namespace
