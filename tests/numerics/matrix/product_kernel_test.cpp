// The tile of a product: every version against the loop, bit for bit.
#include "numerics/matrix/product_kernel.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/numerics/matrix/symmetric_samples.h"

namespace {

using KwMath_930::kTileCols;
using KwMath_930::kTileRows;
using KwMath_930::TileKernel;
using KwMath_930::TransposedTileKernel;
using symmetric_samples::RandomVector;
using Vector = std::vector<double>;

std::vector<TileKernel> Versions() {
    std::vector<TileKernel> versions = {KwMath_930::AddTileBaseline, KwMath_930::FastestTileKernel()};
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2")) {
        versions.push_back(KwMath_930::AddTileAvx2);
    }
#endif
    return versions;
}

TEST(ProductKernel, AgreesWithTheLoopAndTouchesNothingElse) {
    for (const TileKernel addTile : Versions()) {
        for (const int k : {0, 1, 2, 3, 5, 64, 129}) {
            for (const double factor : {1.0, -1.0}) {
                const auto depth = static_cast<std::size_t>(k);
                std::vector<Vector> a, b, c;
                for (unsigned i = 0; i < kTileRows; ++i) {
                    a.push_back(RandomVector(k, i));
                    c.push_back(RandomVector(kTileCols + 4, 10 + i));
                }
                for (unsigned p = 0; p < depth; ++p) {
                    b.push_back(RandomVector(kTileCols + 3, 100 + p));
                }
                std::vector<Vector> expected(c);
                for (std::size_t i = 0; i < kTileRows; ++i) {
                    for (std::size_t j = 0; j < kTileCols; ++j) {
                        double sum = 0.0;
                        for (std::size_t p = 0; p < depth; ++p) {
                            sum += b[p][3 + j] * a[i][p];
                        }
                        expected[i][1 + j] += sum * factor;
                    }
                }
                std::vector<const double*> rowsOfA, rowsOfB;
                std::vector<double*> places;
                for (std::size_t i = 0; i < kTileRows; ++i) {
                    rowsOfA.push_back(a[i].data());
                    places.push_back(c[i].data() + 1);
                }
                for (const Vector& row : b) {
                    rowsOfB.push_back(row.data());
                }
                addTile(k, rowsOfA.data(), rowsOfB.data(), 3, factor, places.data());
                EXPECT_EQ(c, expected);
            }
        }
    }
}

TEST(ProductKernel, TransposedTileAgreesWithTheLoopAndTouchesNothingElse) {
    std::vector<TransposedTileKernel> versions = {KwMath_930::AddTransposedTileBaseline,
                                                  KwMath_930::FastestTransposedTileKernel()};
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2")) {
        versions.push_back(KwMath_930::AddTransposedTileAvx2);
    }
#endif
    constexpr int kLd = kTileCols + 3;
    for (const TransposedTileKernel addTransposed : versions) {
        for (const int k : {0, 1, 2, 3, 5, 64, 129}) {
            std::vector<Vector> a, b;
            for (unsigned i = 0; i < kTileRows; ++i) {
                a.push_back(RandomVector(k, i));
                b.push_back(RandomVector(kTileCols, 10 + i));
            }
            Vector c = RandomVector(1 + k * kLd, 20), expected(c);
            for (int j = 0; j < k; ++j) {
                for (std::size_t i = 0; i < kTileRows; ++i) {
                    for (int column = 0; column < kTileCols; ++column) {
                        expected[static_cast<std::size_t>(1 + j * kLd + column)] +=
                            b[i][static_cast<std::size_t>(column)] * a[i][static_cast<std::size_t>(j)];
                    }
                }
            }
            const double* rowsOfA[kTileRows];
            const double* rowsOfB[kTileRows];
            for (std::size_t i = 0; i < kTileRows; ++i) {
                rowsOfA[i] = a[i].data();
                rowsOfB[i] = b[i].data();
            }
            addTransposed(k, rowsOfA, rowsOfB, c.data() + 1, kLd);
            EXPECT_EQ(c, expected);
        }
    }
}

}  // namespace
