// Products of the symmetric matrix with matrices of every kind, against naive loops.
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "tests/numerics/matrix/matrix_samples.h"

namespace {

using KwMath_930::KwRectMatrix;
using KwMath_930::KwSparseRectMatrix;
using KwMath_930::KwSymBlockDiagMatrix;
using KwMath_930::KwSymMatrix;
using matrix_samples::ExpectNear;
using matrix_samples::Full;
using matrix_samples::Lower;
using matrix_samples::RandomBlocks;
using matrix_samples::RandomMatrix;
using matrix_samples::RandomRect;
using matrix_samples::RandomVector;
using matrix_samples::RectOfEveryKind;
using matrix_samples::Square;
using matrix_samples::SymOfEveryKind;
using matrix_samples::Times;
using matrix_samples::Trace;
using matrix_samples::Transposed;
using matrix_samples::Vector;

const std::vector<int> kSmallOrders = {0, 1, 2, 3, 5, 8, 17, 70};

// A target that has blocks and another order, to see both replaced.
KwSymMatrix OtherTarget() {
    return KwSymMatrix(2, 2, true);
}

void ExpectOneBlock(const KwSymMatrix& target, int order) {
    EXPECT_EQ(target.GetNRows(), order);
    EXPECT_EQ(target.GetNBlocks(), 1);
    EXPECT_EQ(target.GetBlockSize(), order);
}

TEST(KwSymMatrixProducts, WithOneSymmetricOperandAgreeWithTheLoops) {
    for (const int n : kSmallOrders) {
        const KwSymMatrix s = RandomMatrix(n, 1);
        const Square full = Full(s);
        for (const auto& operand : SymOfEveryKind(n, 2)) {
            const Square m = Full(*operand);
            KwSymMatrix target = OtherTarget();
            EXPECT_TRUE(s.ComputeGSG(*operand, target));
            ExpectOneBlock(target, n);
            ExpectNear(Full(target), Times(Times(m, full), m));
            EXPECT_TRUE(s.ComputeLSLTrans(*operand, target));
            ExpectNear(Full(target), Times(Times(Lower(full), m), Transposed(Lower(full))));
            EXPECT_TRUE(s.ComputeLTransSL(*operand, target, n));
            ExpectNear(Full(target), Times(Times(Transposed(Lower(full)), m), Lower(full)));
            KwRectMatrix rect;
            EXPECT_TRUE(s.ComputeSS(*operand, rect));
            ExpectNear(Full(rect), Times(full, m));
            ExpectNear(s.TraceOfProduct(*operand), Trace(Times(full, m)), n);
            ExpectNear(s.TraceOfProductOfThree(*operand, s), Trace(Times(Times(full, m), full)), 100.0 * n);
        }
    }
}

TEST(KwSymMatrixProducts, WithTwoSymmetricOperandsGiveTheLowerTriangle) {
    for (const int n : kSmallOrders) {
        const KwSymMatrix g = RandomMatrix(n, 1);
        const Square full = Full(g);
        for (const auto& m : SymOfEveryKind(n, 2)) {
            for (const auto& other : SymOfEveryKind(n, 3)) {
                KwSymMatrix target = OtherTarget();
                Vector work(3, 2.5);
                EXPECT_TRUE(g.ComputeMGN(*m, *other, target));
                ExpectNear(Full(target), Times(Times(Full(*m), full), Full(*other)), true);
                EXPECT_TRUE(g.ComputeGMGNG(*m, *other, target, work));
                ExpectNear(Full(target), Times(Times(Times(Times(full, Full(*m)), full), Full(*other)), full), true);
                ExpectOneBlock(target, n);
            }
        }
    }
}

TEST(KwSymMatrixProducts, WithRectangularOperandsAgreeWithTheLoops) {
    for (const int n : kSmallOrders) {
        const KwSymMatrix s = RandomMatrix(n, 1);
        const Square full = Full(s);
        for (const int m : {0, 1, 4, 9}) {
            for (const auto& wide : RectOfEveryKind(m, n, 2)) {
                const Square r = Full(*wide);
                KwRectMatrix rect(3, 3, true);
                KwSymMatrix target = OtherTarget();
                EXPECT_TRUE(s.ComputeRS(*wide, rect));
                ExpectNear(Full(rect), Times(r, full, n));
                EXPECT_TRUE(s.ComputeRSRTrans(*wide, target));
                const Square form = Times(Times(r, full, n), Transposed(r, n), m);
                ExpectNear(Full(target), form, false, 10.0);
                ExpectOneBlock(target, m);
                for (int i = 0; i < m; ++i) {
                    const double square = form[static_cast<std::size_t>(i)][static_cast<std::size_t>(i)];
                    ExpectNear(s.ComputeVSV(*wide, i), square, 100.0 * n);
                }
            }
            for (const auto& tall : RectOfEveryKind(n, m, 3)) {
                const Square r = Full(*tall);
                const Square rTrans = Transposed(r, m);
                KwRectMatrix rect;
                KwSymMatrix target = OtherTarget();
                EXPECT_TRUE(s.ComputeRTransS(*tall, rect));
                ExpectNear(Full(rect), Times(rTrans, full, n));
                EXPECT_TRUE(s.ComputeRTransSR(*tall, target));
                ExpectNear(Full(target), Times(Times(rTrans, full, n), r, m), false, 10.0);
                ExpectOneBlock(target, m);
                const Vector v = RandomVector(n + 1, 4);
                Vector out(1);
                EXPECT_TRUE(s.ComputeRTransSV(*tall, v, out));
                ExpectNear(Square{out}, Square{Times(rTrans, Times(full, v))}, false, 100.0);
            }
        }
    }
}

TEST(KwSymMatrixProducts, GMGScalesRowsAndColumns) {
    for (const int n : kSmallOrders) {
        const KwSymMatrix s = RandomMatrix(n, 1);
        const Vector g = RandomVector(n, 2);
        Square expected = Full(s);
        for (std::size_t i = 0; i < g.size(); ++i) {
            for (std::size_t j = 0; j < g.size(); ++j) {
                expected[i][j] *= g[i] * g[j];
            }
        }
        KwSymMatrix target = OtherTarget();
        EXPECT_TRUE(s.ComputeGMG(g, target));
        EXPECT_EQ(Full(target), expected);
        EXPECT_TRUE(s.ComputeRDiagSRDiagTrans(g, target));
        EXPECT_EQ(Full(target), expected);
        EXPECT_FALSE(s.ComputeGMG(RandomVector(n + 1, 2), target));
        EXPECT_EQ(Full(target), expected);
    }
}

TEST(KwSymMatrixProducts, STransSIsTheSquare) {
    for (const int n : kSmallOrders) {
        const KwSymMatrix s = RandomMatrix(n, 1);
        KwSymMatrix target = OtherTarget();
        EXPECT_TRUE(s.ComputeSTransS(target));
        ExpectNear(Full(target), Times(Full(s), Full(s)));
    }
}

TEST(KwSymMatrixProducts, LeadingRowsOfLTransSL) {
    const KwSymMatrix s = RandomMatrix(7, 1);
    const KwSymMatrix m = RandomMatrix(7, 2);
    for (int k = 0; k <= 7; ++k) {
        KwSymMatrix leadingS(s);
        KwSymMatrix leadingM(m);
        leadingS.Resize(k);
        leadingM.Resize(k);
        KwSymMatrix target;
        EXPECT_TRUE(s.ComputeLTransSL(m, target, k));
        const Square l = Lower(Full(leadingS));
        ExpectNear(Full(target), Times(Times(Transposed(l), Full(leadingM)), l));
    }
    KwSymMatrix target = OtherTarget();
    EXPECT_FALSE(s.ComputeLTransSL(m, target, 8));
    EXPECT_FALSE(s.ComputeLTransSL(m, target, -1));
    EXPECT_EQ(target.GetNRows(), 4);
}

TEST(KwSymMatrixProducts, ThatReplaceTheMatrixTakeTheOrderOfTheResult) {
    for (const auto& r : RectOfEveryKind(6, 4, 2)) {
        const Square full = Full(*r);
        KwSymMatrix s(3, 2, true);
        EXPECT_TRUE(s.ComputeRTransByR(*r));
        ExpectOneBlock(s, 4);
        ExpectNear(Full(s), Times(Transposed(full), full));
        EXPECT_TRUE(s.ComputeRByRTrans(*r));
        ExpectOneBlock(s, 6);
        ExpectNear(Full(s), Times(full, Transposed(full)));
        for (const auto& m : SymOfEveryKind(6, 3)) {
            EXPECT_TRUE(s.ComputeRTransSymR(*r, *m));
            ExpectOneBlock(s, 4);
            ExpectNear(Full(s), Times(Times(Transposed(full), Full(*m)), full), false, 10.0);
        }
        const KwSymBlockDiagMatrix blocks = RandomBlocks(6, 4);
        EXPECT_TRUE(s.ComputeRTransBlockDiagR(*r, blocks));
        ExpectNear(Full(s), Times(Times(Transposed(full), Full(blocks)), full), false, 10.0);
        const Vector before = s.AsVectorConst();
        EXPECT_FALSE(s.ComputeRTransSymR(*r, RandomMatrix(5, 1)));
        EXPECT_FALSE(s.ComputeRTransBlockDiagR(*r, RandomBlocks(5, 1)));
        EXPECT_EQ(s.AsVectorConst(), before);
    }
}

TEST(KwSymMatrixProducts, TheOperandThatIsTheMatrixItselfIsReadFirst) {
    const KwRectMatrix r = RandomRect(5, 3, 2);
    KwSymMatrix s = RandomMatrix(5, 1);
    const Square full = Full(s);
    EXPECT_TRUE(s.ComputeRTransSymR(r, s));
    ExpectNear(Full(s), Times(Times(Transposed(Full(r)), full), Full(r)), false, 10.0);
}

TEST(KwSymMatrixProducts, SecondFormAddsToTheTarget) {
    const KwSymMatrix s = RandomMatrix(5, 1);
    for (const auto& r : RectOfEveryKind(3, 5, 2)) {
        const Square product = Times(Times(Full(*r), Full(s)), Transposed(Full(*r)));
        KwSymMatrix target = RandomMatrix(3, 3);
        Square expected = Full(target);
        for (std::size_t i = 0; i < 3; ++i) {
            for (std::size_t j = 0; j < 3; ++j) {
                expected[i][j] += product[i][j];
            }
        }
        EXPECT_TRUE(s.ComputeRSRTrans2(*r, target));
        ExpectNear(Full(target), expected, false, 10.0);
        KwSymMatrix other = RandomMatrix(4, 3);
        EXPECT_TRUE(s.ComputeRSRTrans2(*r, other));
        ExpectNear(Full(other), product, false, 10.0);
    }
}

// Each product with the target being an operand gives what a distinct target gets.
TEST(KwSymMatrixProducts, TargetsMayBeOperands) {
    const KwSymMatrix s = RandomMatrix(6, 1);
    const KwSymMatrix m = RandomMatrix(6, 2);
    KwSymMatrix expected;
    Vector work;
    s.ComputeGMGNG(m, m, expected, work);
    KwSymMatrix target(m);
    EXPECT_TRUE(s.ComputeGMGNG(target, target, target, work));
    EXPECT_EQ(Full(target), Full(expected));
    target = s;
    EXPECT_TRUE(target.ComputeGMGNG(m, m, target, work));
    EXPECT_EQ(Full(target), Full(expected));
    s.ComputeGSG(m, expected);
    target = s;
    EXPECT_TRUE(target.ComputeGSG(m, target));
    EXPECT_EQ(Full(target), Full(expected));
    s.ComputeLSLTrans(m, expected);
    target = s;
    EXPECT_TRUE(target.ComputeLSLTrans(m, target));
    EXPECT_EQ(Full(target), Full(expected));
    s.ComputeSTransS(expected);
    target = s;
    EXPECT_TRUE(target.ComputeSTransS(target));
    EXPECT_EQ(Full(target), Full(expected));
    KwRectMatrix rect = RandomRect(6, 6, 3);
    KwRectMatrix product;
    s.ComputeRS(rect, product);
    EXPECT_TRUE(s.ComputeRS(rect, rect));
    EXPECT_EQ(Full(rect), Full(product));
}

TEST(KwSymMatrixProducts, RefuseAnotherSizeAndChangeNothing) {
    const KwSymMatrix s = RandomMatrix(4, 1);
    const KwSymMatrix invalid(std::numeric_limits<int>::max(), true);
    for (const KwSymMatrix& other : {RandomMatrix(5, 2), KwSymMatrix(), invalid}) {
        KwSymMatrix target = OtherTarget();
        KwRectMatrix rect(1, 2, true);
        Vector work(3, 1.5);
        EXPECT_FALSE(s.ComputeGSG(other, target));
        EXPECT_FALSE(s.ComputeMGN(s, other, target));
        EXPECT_FALSE(s.ComputeMGN(other, s, target));
        EXPECT_FALSE(s.ComputeGMGNG(s, other, target, work));
        EXPECT_FALSE(s.ComputeLSLTrans(other, target));
        EXPECT_FALSE(s.ComputeLTransSL(other, target, 2));
        EXPECT_FALSE(s.ComputeSS(other, rect));
        EXPECT_EQ(s.TraceOfProduct(other), 0.0);
        EXPECT_EQ(s.TraceOfProductOfThree(s, other), 0.0);
        EXPECT_EQ(target.GetNBlocks(), 2);
        EXPECT_EQ(rect.GetNCols(), 2);
        EXPECT_EQ(work, Vector(3, 1.5));
    }
    const KwRectMatrix r = RandomRect(3, 5, 1);
    KwSymMatrix target = OtherTarget();
    KwRectMatrix rect(1, 2, true);
    Vector out = {2.5};
    EXPECT_FALSE(s.ComputeRS(r, rect));
    EXPECT_FALSE(s.ComputeRTransS(r, rect));
    EXPECT_FALSE(s.ComputeRSRTrans(r, target));
    EXPECT_FALSE(s.ComputeRSRTrans2(r, target));
    EXPECT_FALSE(s.ComputeRTransSR(r, target));
    EXPECT_FALSE(s.ComputeRTransSV(r, RandomVector(4, 1), out));
    EXPECT_FALSE(s.ComputeRTransSV(RandomRect(4, 2, 1), RandomVector(3, 1), out));
    EXPECT_EQ(out, Vector{2.5});
    EXPECT_EQ(rect.GetNRows(), 1);
    EXPECT_EQ(target.GetNBlocks(), 2);
}

TEST(KwSymMatrixProducts, RefuseATargetThatIsNotDense) {
    const KwSymMatrix s = RandomMatrix(4, 1);
    const KwRectMatrix r = RandomRect(4, 4, 1);
    KwSymBlockDiagMatrix target = RandomBlocks(4, 5);
    const Square before = Full(target);
    Vector work;
    EXPECT_FALSE(s.ComputeGSG(s, target));
    EXPECT_FALSE(s.ComputeMGN(s, s, target));
    EXPECT_FALSE(s.ComputeGMGNG(s, s, target, work));
    EXPECT_FALSE(s.ComputeLSLTrans(s, target));
    EXPECT_FALSE(s.ComputeLTransSL(s, target, 4));
    EXPECT_FALSE(s.ComputeRSRTrans(r, target));
    EXPECT_FALSE(s.ComputeRSRTrans2(r, target));
    EXPECT_FALSE(s.ComputeRTransSR(r, target));
    EXPECT_FALSE(s.ComputeSTransS(target));
    EXPECT_FALSE(s.ExtractSubmatrix({0, 1}, target));
    EXPECT_EQ(Full(target), before);
}

TEST(KwSymMatrixProducts, SparseTargetsReceiveTheElementsThatAreNotZero) {
    const KwSymMatrix s = symmetric_samples::FromPacked(2, {2.5, 0, 1.5});
    KwSparseRectMatrix target(3, 3);
    EXPECT_TRUE(s.ComputeSS(s, target));
    EXPECT_EQ(Full(target), (Square{{6.25, 0}, {0, 2.25}}));
    EXPECT_EQ(target.GetNNZRowElements(), (std::vector<int>{1, 1}));
}

// The target is resized, and asked for its kind, through its virtual operations.
class WatchedTarget : public KwSymMatrix {
public:
    bool Resize(int n) override {
        sizes.push_back(n);
        return KwSymMatrix::Resize(n);
    }
    bool SetElem(int i, int j, double value) override {
        ++writes;
        return KwSymMatrix::SetElem(i, j, value);
    }
    using KwSymMatrix::SetElem;
    std::vector<int> sizes;
    int writes = 0;
};

TEST(KwSymMatrixProducts, DerivedTargetsAreWrittenThroughTheirVirtualOperations) {
    const KwSymMatrix s = RandomMatrix(3, 1);
    WatchedTarget target;
    EXPECT_TRUE(s.ComputeSTransS(target));
    EXPECT_EQ(target.sizes, std::vector<int>{3});
    EXPECT_EQ(target.writes, 6);
    ExpectNear(Full(target), Times(Full(s), Full(s)));
}

TEST(KwSymMatrixProducts, KeepScalesFarFromOne) {
    for (const double scale : {1e-150, 1e150}) {
        KwSymMatrix s = RandomMatrix(5, 1);
        const KwRectMatrix r = RandomRect(5, 3, 2);
        KwSymMatrix expected, target;
        s.ComputeRTransSR(r, expected);
        s.MultiplyByNumber(scale);
        s.ComputeRTransSR(r, target);
        target.MultiplyByNumber(1.0 / scale);
        ExpectNear(Full(target), Full(expected));
    }
}

TEST(KwSymMatrixProducts, CarryNaNToWhatItTouches) {
    KwSymMatrix s = RandomMatrix(3, 1);
    s.SetElem(2, 0, std::numeric_limits<double>::quiet_NaN());
    KwRectMatrix rect;
    EXPECT_TRUE(s.ComputeSS(RandomMatrix(3, 2), rect));
    EXPECT_TRUE(std::isnan(rect.GetElem(0, 1)));
    EXPECT_TRUE(std::isnan(rect.GetElem(2, 1)));
    EXPECT_FALSE(std::isnan(rect.GetElem(1, 1)));
}

// Beyond the 256 columns that are worked on together, and with every remainder of a tile.
TEST(KwSymMatrixProducts, OfLargeOrdersAgreeWithTheLoops) {
    for (const int n : {200, 257, 263}) {
        const KwSymMatrix s = RandomMatrix(n, 1);
        const Square full = Full(s);
        for (const int m : {1, 8, 11}) {
            const KwRectMatrix tall = RandomRect(n, m, 2);
            const Square r = Full(tall), half = Times(full, r, m), form = Times(Transposed(r), half, m);
            KwRectMatrix wide(m, n, true), rect;
            for (int i = 0; i < n; ++i) {
                for (int j = 0; j < m; ++j) {
                    wide.SetElem(j, i, tall.GetElem(i, j));
                }
            }
            KwSymMatrix target;
            EXPECT_TRUE(s.ComputeRTransSR(tall, target));
            ExpectNear(Full(target), form, false, 100.0);
            EXPECT_TRUE(s.ComputeRSRTrans(wide, target));
            ExpectNear(Full(target), form, false, 100.0);
            EXPECT_TRUE(s.ComputeRTransS(tall, rect));
            ExpectNear(Full(rect), Transposed(half), false, 10.0);
            EXPECT_TRUE(s.ComputeRS(wide, rect));
            ExpectNear(Full(rect), Transposed(half), false, 10.0);
        }
    }
    const KwSymMatrix s = RandomMatrix(200, 1);
    for (const auto& m : SymOfEveryKind(200, 2)) {
        KwRectMatrix rect;
        EXPECT_TRUE(s.ComputeSS(*m, rect));
        ExpectNear(Full(rect), Times(Full(s), Full(*m)), false, 10.0);
    }
}

// A derived matrix reads its own storage, not itself through the interface.
class WatchedRows : public KwSymMatrix {
public:
    explicit WatchedRows(const KwSymMatrix& matrix) : KwSymMatrix(matrix) {}
    bool GetRow(int i, Vector& row) const override {
        ++reads;
        return KwSymMatrix::GetRow(i, row);
    }
    mutable int reads = 0;
};

TEST(KwSymMatrixProducts, OwnStorageIsReadDirectlyAndOperandsOfOtherTypesRowByRow) {
    const WatchedRows s(RandomMatrix(4, 1)), operand(RandomMatrix(4, 2));
    const KwRectMatrix r = RandomRect(4, 4, 3);
    KwSymMatrix target;
    KwRectMatrix rect;
    Vector work;
    EXPECT_TRUE(s.ComputeRSRTrans(r, target) && s.ComputeRSRTrans2(r, target) && s.ComputeRTransSR(r, target));
    EXPECT_TRUE(s.ComputeRS(r, rect) && s.ComputeRTransS(r, rect) && s.ComputeSTransS(target));
    EXPECT_TRUE(s.ComputeSS(operand, rect));
    EXPECT_EQ(operand.reads, 4);
    EXPECT_TRUE(s.ComputeGMGNG(RandomMatrix(4, 3), RandomMatrix(4, 3), target, work));
    EXPECT_EQ(s.reads, 0);
}

TEST(KwSymMatrixProducts, TheRemainingTargetsMayBeOperandsToo) {
    const KwSymMatrix s = RandomMatrix(6, 1), m = RandomMatrix(6, 2), o = RandomMatrix(6, 3);
    const KwRectMatrix r = RandomRect(6, 6, 4);
    KwSymMatrix expected, target(s);
    s.ComputeMGN(m, o, expected);
    EXPECT_TRUE(target.ComputeMGN(m, o, target));
    EXPECT_EQ(Full(target), Full(expected));
    target = o;
    EXPECT_TRUE(s.ComputeMGN(m, target, target));
    EXPECT_EQ(Full(target), Full(expected));
    s.ComputeLTransSL(m, expected, 4);
    target = m;
    EXPECT_TRUE(s.ComputeLTransSL(target, target, 4));
    EXPECT_EQ(Full(target), Full(expected));
    s.ComputeRTransSR(r, expected);
    target = s;
    EXPECT_TRUE(target.ComputeRTransSR(r, target));
    EXPECT_EQ(Full(target), Full(expected));
    s.ComputeRSRTrans(r, expected);
    target = s;
    EXPECT_TRUE(target.ComputeRSRTrans(r, target));
    EXPECT_EQ(Full(target), Full(expected));
    const Vector g = RandomVector(6, 5);
    s.ComputeGMG(g, expected);
    target = s;
    EXPECT_TRUE(target.ComputeGMG(g, target));
    EXPECT_EQ(Full(target), Full(expected));
    KwRectMatrix product, rect(r);
    s.ComputeRTransS(r, product);
    EXPECT_TRUE(s.ComputeRTransS(rect, rect));
    EXPECT_EQ(Full(rect), Full(product));
    Vector out = g, plain;
    ASSERT_TRUE(s.ComputeRTransSV(r, g, plain));
    EXPECT_TRUE(s.ComputeRTransSV(r, out, out));
    EXPECT_EQ(out, plain);
}

}  // namespace
