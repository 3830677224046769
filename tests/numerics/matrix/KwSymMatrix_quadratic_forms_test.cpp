// Quadratic forms against the full double loop: exactly for small whole numbers, to rounding for random ones.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "numerics/matrix/KwSymMatrix.h"
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

}  // namespace
