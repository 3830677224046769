// The product with a vector, bit for bit against the full loop summed from left to right.
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

Vector Product(const Square& square, const Vector& v) {
    Vector product;
    for (const Vector& row : square) {
        double sum = 0.0;
        for (std::size_t j = 0; j < row.size(); ++j) {
            sum += row[j] * v[j];
        }
        product.push_back(sum);
    }
    return product;
}

TEST(KwSymMatrixComputeSV, AgreesWithTheLoopBitForBit) {
    for (const int order : kOrders) {
        const KwSymMatrix matrix = RandomMatrix(order, 21);
        const Vector v = RandomVector(order, 22);
        for (const std::size_t size : {std::size_t{0}, v.size(), v.size() + 4}) {
            Vector out(size, 99.0);
            EXPECT_TRUE(matrix.ComputeSV(v, out));
            EXPECT_EQ(out, Product(ToSquare(matrix), v));
        }
    }
}

TEST(KwSymMatrixComputeSV, UsesOnlyTheLeadingElementsOfALongerVector) {
    const KwSymMatrix matrix = FromPacked(2, {1.5, -2, 3});
    Vector out;
    EXPECT_TRUE(matrix.ComputeSV({2, 4, std::nan("")}, out));
    EXPECT_EQ(out, (Vector{-5, 8}));
}

TEST(KwSymMatrixComputeSV, ShortVectorIsRefusedAndLeavesTheResult) {
    const KwSymMatrix matrix = RandomMatrix(3, 21);
    Vector out = {7.5};
    EXPECT_FALSE(matrix.ComputeSV({1, 2}, out));
    EXPECT_EQ(out, Vector{7.5});
}

TEST(KwSymMatrixComputeSV, ResultMayReplaceTheVector) {
    const KwSymMatrix matrix = RandomMatrix(7, 21);
    Vector v = RandomVector(9, 22);
    const Vector expected = Product(ToSquare(matrix), v);
    EXPECT_TRUE(matrix.ComputeSV(v, v));
    EXPECT_EQ(v, expected);
}

TEST(KwSymMatrixComputeSV, EmptyMatrixSucceedsAndAnInvalidOneDoesNot) {
    Vector out = {7.5};
    EXPECT_FALSE(KwSymMatrix(std::numeric_limits<int>::max(), true).ComputeSV({1.0}, out));
    EXPECT_EQ(out, Vector{7.5});
    EXPECT_TRUE(KwSymMatrix().ComputeSV({1.0}, out));
    EXPECT_TRUE(out.empty());
}

TEST(KwSymMatrixComputeSV, NaNAndInfinityReachExactlyTheSumsTheyEnter) {
    const double infinity = std::numeric_limits<double>::infinity();
    Vector out;
    EXPECT_TRUE(FromPacked(2, {1.5, 0, infinity}).ComputeSV({2, 1}, out));
    EXPECT_EQ(out, (Vector{3, infinity}));
    EXPECT_TRUE(FromPacked(2, {1.5, 0, infinity}).ComputeSV({infinity, 0}, out));
    EXPECT_EQ(out[0], infinity);
    EXPECT_TRUE(std::isnan(out[1]));
}

TEST(KwSymMatrixComputeSV, LeadingPart) {
    const KwSymMatrix matrix = RandomMatrix(7, 1);
    const Vector v = RandomVector(7, 2);
    for (int k = 0; k <= 7; ++k) {
        KwSymMatrix leading(matrix);
        leading.Resize(k);
        Vector expected, out(2);
        ASSERT_TRUE(leading.ComputeSV(v, expected));
        EXPECT_TRUE(matrix.ComputeSV(k, v, out));
        EXPECT_EQ(out, expected);
        out = v;
        EXPECT_TRUE(matrix.ComputeSV(k, out, out));
        EXPECT_EQ(out, expected);
    }
    Vector out = {7.5};
    EXPECT_FALSE(matrix.ComputeSV(8, RandomVector(9, 1), out));
    EXPECT_FALSE(matrix.ComputeSV(-1, v, out));
    EXPECT_FALSE(matrix.ComputeSV(3, {1, 2}, out));
    EXPECT_EQ(out, Vector{7.5});
}

TEST(KwSymMatrixSubSymComputeSV, IsTheInnerPartTimesTheVector) {
    const KwSymMatrix matrix = RandomMatrix(6, 1);
    const Vector v = RandomVector(7, 2);
    for (int first = 0; first <= 6; ++first) {
        Vector expected(static_cast<std::size_t>(6 - first)), out(1);
        for (int i = first; i < 6; ++i) {
            for (int j = first; j < 6; ++j) {
                expected[static_cast<std::size_t>(i - first)] +=
                    matrix.GetElem(i, j) * v[static_cast<std::size_t>(j - first)];
            }
        }
        EXPECT_TRUE(matrix.SubSymComputeSV(v, out, first));
        EXPECT_EQ(out, expected);
        out = v;
        EXPECT_TRUE(matrix.SubSymComputeSV(out, out, first));
        EXPECT_EQ(out, expected);
    }
    Vector out = {7.5};
    EXPECT_FALSE(matrix.SubSymComputeSV(v, out, 7));
    EXPECT_FALSE(matrix.SubSymComputeSV(v, out, -1));
    EXPECT_FALSE(matrix.SubSymComputeSV({1, 2}, out, 3));
    EXPECT_EQ(out, Vector{7.5});
}

TEST(KwSymMatrixTriangleProducts, AgreeWithTheLoops) {
    for (const int n : kOrders) {
        const KwSymMatrix matrix = RandomMatrix(n, 1);
        const matrix_samples::Square l = matrix_samples::Lower(matrix_samples::Full(matrix));
        const Vector v = RandomVector(n + 1, 2);
        Vector out(2);
        EXPECT_TRUE(matrix.ComputeLV(v, out));
        EXPECT_EQ(out, matrix_samples::Times(l, v));
        EXPECT_TRUE(matrix.ComputeLTransV(v, out));
        matrix_samples::ExpectNear(out, matrix_samples::Times(matrix_samples::Transposed(l), v));
        const Vector transposed = out;
        out = v;
        EXPECT_TRUE(matrix.ComputeLV(out, out));
        EXPECT_EQ(out, matrix_samples::Times(l, v));
        out = v;
        EXPECT_TRUE(matrix.ComputeLTransV(out, out));
        EXPECT_EQ(out, transposed);
    }
    Vector out = {7.5};
    EXPECT_FALSE(RandomMatrix(3, 1).ComputeLV({1, 2}, out));
    EXPECT_FALSE(RandomMatrix(3, 1).ComputeLTransV({1, 2}, out));
    EXPECT_EQ(out, Vector{7.5});
}

TEST(KwSymMatrixTriangleProducts, WithASparseVectorWhoseRepeatsAddUp) {
    const KwSymMatrix matrix = RandomMatrix(6, 1);
    const std::vector<int> indices = {4, 0, 4};
    const Vector values = {1.5, -2.5, 0.75};
    Vector expected, out;
    ASSERT_TRUE(matrix.ComputeLV({-2.5, 0, 0, 0, 2.25, 0}, expected));
    EXPECT_TRUE(matrix.ComputeLV(indices, values, out));
    matrix_samples::ExpectNear(out, expected);
    ASSERT_TRUE(matrix.ComputeLTransV({-2.5, 0, 0, 0, 2.25, 0}, expected));
    EXPECT_TRUE(matrix.ComputeLTransV(indices, values, out));
    matrix_samples::ExpectNear(out, expected);
    Vector inPlace(values);
    EXPECT_TRUE(matrix.ComputeLTransV(indices, inPlace, inPlace));
    EXPECT_EQ(inPlace, out);
    EXPECT_TRUE(matrix.ComputeLV(indices, values, out));
    inPlace = values;
    EXPECT_TRUE(matrix.ComputeLV(indices, inPlace, inPlace));
    EXPECT_EQ(inPlace, out);
    EXPECT_FALSE(matrix.ComputeLV({6}, {1.5}, out));
    EXPECT_FALSE(matrix.ComputeLTransV({-1}, {1.5}, out));
    EXPECT_FALSE(matrix.ComputeLV({1, 2}, {1.5}, out));
    EXPECT_FALSE(matrix.ComputeLTransV({1}, {1.5, 2}, out));
    EXPECT_EQ(out, inPlace);
}

TEST(KwSymMatrixVecPartByL, IsTheRowProductInPlace) {
    for (const int n : kOrders) {
        const KwSymMatrix matrix = RandomMatrix(n, 1);
        const Vector x = RandomVector(n, 2);
        Vector product;
        ASSERT_TRUE(matrix.ComputeLTransV(x, product));
        for (const int inc : {1, 2, -3}) {
            Vector v(static_cast<std::size_t>(3 * n + 2), 7.5), expected(v);
            const int offset = inc > 0 ? 1 : 3 * n;
            for (int k = 0; k < n; ++k) {
                v[static_cast<std::size_t>(offset + k * inc)] = x[static_cast<std::size_t>(k)];
                expected[static_cast<std::size_t>(offset + k * inc)] = product[static_cast<std::size_t>(k)];
            }
            EXPECT_TRUE(matrix.ComputeVecPartByL(v, offset, inc));
            EXPECT_EQ(v, expected);
        }
        Vector v(static_cast<std::size_t>(2 + 2 * n + n * n), 7.5), expected(v);
        for (int k = 0; k < n; ++k) {
            v[static_cast<std::size_t>(1 + 2 * k + k * (k - 1) / 2)] = x[static_cast<std::size_t>(k)];
            expected[static_cast<std::size_t>(1 + 2 * k + k * (k - 1) / 2)] = product[static_cast<std::size_t>(k)];
        }
        EXPECT_TRUE(matrix.ComputeVecIIncPartByL(v, 1, 2));
        EXPECT_EQ(v, expected);
    }
}

TEST(KwSymMatrixVecPartByL, RefusesPlacesOutsideTheVector) {
    const KwSymMatrix matrix = RandomMatrix(3, 1);
    Vector v = {1, 2, 3, 4};
    EXPECT_FALSE(matrix.ComputeVecPartByL(v, 2, 1));
    EXPECT_FALSE(matrix.ComputeVecPartByL(v, -1, 1));
    EXPECT_FALSE(matrix.ComputeVecPartByL(v, 1, -1));
    EXPECT_FALSE(matrix.ComputeVecPartByL(v, 1, 0));
    EXPECT_FALSE(matrix.ComputeVecPartByL(v, 0, std::numeric_limits<int>::max()));
    EXPECT_FALSE(matrix.ComputeVecIIncPartByL(v, 1, 1));
    EXPECT_FALSE(matrix.ComputeVecIIncPartByL(v, -1, 1));
    EXPECT_EQ(v, (Vector{1, 2, 3, 4}));
}

TEST(KwSymMatrixIncrVecByRow, AddsAMultipleOfTheRow) {
    const KwSymMatrix matrix = RandomMatrix(3, 1);
    for (const int inc : {1, 2, -2, 0}) {
        Vector v = RandomVector(8, 2), expected(v);
        for (int k = 0; k < 3; ++k) {
            expected[static_cast<std::size_t>(5 + (inc > 0 ? -4 : 0) + k * inc)] += 1.75 * matrix.GetElem(1, k);
        }
        EXPECT_TRUE(matrix.IncrVecByRow(1, v, 5 + (inc > 0 ? -4 : 0), inc, 1.75, true));
        EXPECT_EQ(v, expected);
    }
    Vector v = {1, 2, 3};
    EXPECT_FALSE(matrix.IncrVecByRow(3, v, 0, 1, 1.75, false));
    EXPECT_FALSE(matrix.IncrVecByRow(-1, v, 0, 1, 1.75, false));
    EXPECT_FALSE(matrix.IncrVecByRow(1, v, 1, 1, 1.75, true));
    EXPECT_FALSE(matrix.IncrVecByRow(1, v, 1, -1, 1.75, true));
    EXPECT_EQ(v, (Vector{1, 2, 3}));
    EXPECT_TRUE(matrix.IncrVecByRow(1, v, 0, 1, 1.75, false));
}

}  // namespace
