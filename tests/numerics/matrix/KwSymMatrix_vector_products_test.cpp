// The product with a vector, bit for bit against the full loop summed from left to right.
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

}  // namespace
