// Memory: every allocation of every member that allocates made to fail in turn. The member returns its failure value,
// lets nothing out, and leaves its operands; its target is unchanged or invalid.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "numerics/matrix/KwSparseVector.h"
#include "tests/numerics/matrix/matrix_samples.h"
#include "tests/support/failing_new.h"

namespace {

using failing_new::FailAfter;
using KwMath_930::IKwSymMatrix;
using KwMath_930::KwBitSet;
using KwMath_930::KwRectMatrix;
using KwMath_930::KwSparseRectMatrix;
using KwMath_930::KwSparseVector;
using KwMath_930::KwSymBlockDiagMatrix;
using KwMath_930::KwSymMatrix;
using matrix_samples::Full;
using matrix_samples::OtherRect;
using matrix_samples::OtherSym;
using matrix_samples::RandomBlocks;
using matrix_samples::RandomMatrix;
using matrix_samples::RandomRect;
using matrix_samples::RandomSparse;
using matrix_samples::RandomVector;
using matrix_samples::Square;
using matrix_samples::Vector;

// What a member may read and write, made anew for each attempt.
struct Scene {
    KwSymMatrix s = RandomMatrix(5, 1);
    KwSymMatrix m = RandomMatrix(5, 2);
    OtherSym other = OtherSym(RandomMatrix(5, 3));
    KwSymBlockDiagMatrix blocks = RandomBlocks(5, 4);
    KwRectMatrix r = RandomRect(5, 5, 5);
    KwSparseRectMatrix sparse = RandomSparse(5, 5, 6);
    Vector v = RandomVector(5, 7);
    KwSymMatrix target;
    KwRectMatrix rect;
    KwSparseRectMatrix sparseTarget;
    Vector out;
    std::vector<int> some = {0, 2};
    std::vector<int> places = {0, 1, 2, 3, 5};
    KwSparseVector sparseRow = KwSparseVector({0, 1, 2, 3}, {1.5, 2.5, 3.5, 4.5});
    Vector otherBefore = other.AsVectorConst();
    OtherRect otherRect = OtherRect(RandomRect(5, 5, 8));
    KwSymMatrix small = KwSymMatrix(2, true);
    KwSymMatrix singular = KwSymMatrix(5, true);
    KwSymMatrix factor = symmetric_samples::FromPacked(2, {5.5, 0.0, 5.5});
    Vector two = {1.5, 2.5};
    Vector c = Vector(2), sn = Vector(2);
    Vector inPlace = v;
    KwBitSet bits;
    KwBitSet full = KwBitSet(std::vector<bool>(5, true));
    double number = 0.0;
};

// True when the member says that it succeeded.
using Member = std::function<bool(Scene&)>;

// Fails allocation after allocation until the member gets through.
void ExpectFailuresReported(const std::string& name, const Member& member) {
    std::size_t failures = 0;
    for (bool isThrough = false; !isThrough; ++failures) {
        ASSERT_LT(failures, 500u) << name;
        Scene scene;
        const Scene before;
        bool isSuccess = true;
        bool hasFailed = false;
        {
            const FailAfter failure(failures);
            EXPECT_NO_THROW(isSuccess = member(scene)) << name;
            hasFailed = failure.Failed();
        }
        EXPECT_EQ(isSuccess, !hasFailed) << name << ", allocation " << failures;
        isThrough = !hasFailed;
        if (hasFailed) {
            EXPECT_EQ(Full(scene.s), Full(before.s)) << name;
            EXPECT_EQ(Full(scene.m), Full(before.m)) << name;
            EXPECT_EQ(Full(scene.r), Full(before.r)) << name;
            EXPECT_EQ(Full(scene.sparse), Full(before.sparse)) << name;
            EXPECT_EQ(Full(scene.blocks), Full(before.blocks)) << name;
            EXPECT_TRUE(!scene.target.IsValidMatrix() || scene.target.GetNRows() == 0) << name;
            EXPECT_TRUE(!scene.rect.IsValidMatrix() || scene.rect.GetNRows() == 0) << name;
            EXPECT_TRUE(scene.out.empty()) << name;
        }
    }
    EXPECT_GT(failures, 1u) << name << " allocates nothing";
}

TEST(MatrixAllocation, ProductsOfTheSymmetricMatrix) {
    const std::pair<const char*, Member> members[] = {
        {"AXpY", [](Scene& x) { return x.s.ComputeAXpY(0.5, x.other); }},
        {"GMG", [](Scene& x) { return x.s.ComputeGMG(x.v, x.target); }},
        {"GMGNG",
         [](Scene& x) {
             const bool isSuccess = x.s.ComputeGMGNG(x.m, x.other, x.target, x.out);
             x.out.clear();  // scratch
             return isSuccess;
         }},
        {"MGN", [](Scene& x) { return x.s.ComputeMGN(x.other, x.blocks, x.target); }},
        {"GSG", [](Scene& x) { return x.s.ComputeGSG(x.m, x.target); }},
        {"LSLTrans", [](Scene& x) { return x.s.ComputeLSLTrans(x.m, x.target); }},
        {"LTransSL", [](Scene& x) { return x.s.ComputeLTransSL(x.m, x.target, 4); }},
        {"RS", [](Scene& x) { return x.s.ComputeRS(x.r, x.rect); }},
        {"RS sparse", [](Scene& x) { return x.s.ComputeRS(x.sparse, x.sparseTarget); }},
        {"RSRTrans", [](Scene& x) { return x.s.ComputeRSRTrans(x.sparse, x.target); }},
        {"RSRTrans2", [](Scene& x) { return x.s.ComputeRSRTrans2(x.r, x.target); }},
        {"RTransS", [](Scene& x) { return x.s.ComputeRTransS(x.r, x.rect); }},
        {"RTransSR", [](Scene& x) { return x.s.ComputeRTransSR(x.r, x.target); }},
        {"RTransSV", [](Scene& x) { return x.s.ComputeRTransSV(x.r, x.v, x.out); }},
        {"SS", [](Scene& x) { return x.s.ComputeSS(x.blocks, x.rect); }},
        {"STransS", [](Scene& x) { return x.s.ComputeSTransS(x.target); }},
        {"RTransSymR", [](Scene& x) { return x.s.ComputeRTransSymR(x.r, x.m); }},
        {"RTransByR", [](Scene& x) { return x.s.ComputeRTransByR(x.r); }},
        {"RByRTrans", [](Scene& x) { return x.s.ComputeRByRTrans(x.r); }},
        {"SSubBSSub", [](Scene& x) { return x.s.ComputeSSubBSSub(x.blocks, 0, x.target); }},
        {"CornerBlock", [](Scene& x) { return x.s.UpdateXXCornerBlock(x.v, x.blocks, 0.5, 0); }},
        {"Augment", [](Scene& x) { return x.s.AugmentUsingBlockDiagL(x.blocks); }},
        {"TraceOfThree", [](Scene& x) { return x.s.TraceOfProductOfThree(x.m, x.m) != 0.0; }},
        {"Trace", [](Scene& x) { return x.s.TraceOfProduct(x.other) != 0.0; }},
        {"TraceSubMat", [](Scene& x) { return x.s.TraceOfProductSubMatSym(x.sparse, 0) != 0.0; }},
        {"VSV", [](Scene& x) { return x.s.ComputeVSV(x.sparse, 1) != 0.0; }},
        {"TraceSubSym", [](Scene& x) { return x.s.TraceOfProductSubSym(x.blocks, 0) != 0.0; }},
        {"RTransBlockDiagR", [](Scene& x) { return x.s.ComputeRTransBlockDiagR(x.r, x.blocks); }},
        {"derived RSRTrans", [](Scene& x) { return x.other.ComputeRSRTrans(x.r, x.target); }},
        {"derived RSRTrans2", [](Scene& x) { return x.other.ComputeRSRTrans2(x.r, x.target); }},
        {"RSRTrans2 into derived",
         [](Scene& x) {
             const bool isSuccess = x.s.ComputeRSRTrans2(x.r, x.other);
             EXPECT_EQ(isSuccess, x.other.AsVectorConst() != x.otherBefore);
             return isSuccess;
         }},
        {"derived RTransSR", [](Scene& x) { return x.other.ComputeRTransSR(x.r, x.target); }},
        {"derived R1TransSR2", [](Scene& x) { return x.otherRect.ComputeR1TransSR2(x.m, x.r, x.rect); }},
        {"aliased RTransSV",
         [](Scene& x) {
             const bool isSuccess = x.s.ComputeRTransSV(x.r, x.inPlace, x.inPlace);
             EXPECT_EQ(isSuccess, x.inPlace != x.v);
             return isSuccess;
         }},
    };
    for (const auto& [name, member] : members) {
        ExpectFailuresReported(name, member);
    }
}

TEST(MatrixAllocation, VectorsAndExtractions) {
    const std::pair<const char*, Member> members[] = {
        {"SV", [](Scene& x) { return x.s.ComputeSV(3, x.v, x.out); }},
        {"SubSV", [](Scene& x) { return x.s.SubSymComputeSV(x.v, x.out, 2); }},
        {"LV", [](Scene& x) { return x.s.ComputeLV(x.v, x.out); }},
        {"LTransV", [](Scene& x) { return x.s.ComputeLTransV(x.v, x.out); }},
        {"Submatrix", [](Scene& x) { return x.s.ExtractSubmatrix(x.some, x.target); }},
        {"H", [](Scene& x) { return x.s.ExtractH(x.full, x.target); }},
        {"LowTriangular", [](Scene& x) { return x.s.ExtractBlockInLowTriangular(2, 0, 2, 2, x.rect); }},
        {"LastRow", [](Scene& x) { return x.s.ExtractPartOfLastRow(1, 3, x.out); }},
        {"PCol", [](Scene& x) { return x.s.GetPCol(1, x.out); }},
        {"ExpandToRect", [](Scene& x) { return x.s.ExpandSymToRect(x.places, 6, x.rect); }},
        {"Expand", [](Scene& x) { return x.s.Expand(x.places, 6, x.target); }},
        {"Replace", [](Scene& x) { return x.s.ReplaceFirstRows(x.other); }},
        {"sparse LV", [](Scene& x) { return x.s.ComputeLV(x.some, x.two, x.out); }},
        {"sparse LTransV", [](Scene& x) { return x.s.ComputeLTransV(x.some, x.two, x.out); }},
        {"FirstNRows",
         [](Scene& x) {
             const bool isSuccess = x.s.ExtractFirstNRows(x.small);
             EXPECT_EQ(isSuccess, x.small.GetElem(0) != 0.0);
             return isSuccess;
         }},
        {"DiagBlock", [](Scene& x) { return x.s.ExtractDiagBlock(0, x.target); }},
        {"BlockAndLastRow", [](Scene& x) { return x.s.ExtractBlockAndLastRow(0, x.target); }},
        {"ExpandSym", [](Scene& x) { return x.s.ExpandSym(x.places, 6, x.target); }},
        {"RowToColumn", [](Scene& x) { return x.s.CopyRowToRColumn(2, 3, x.r); }},
    };
    for (const auto& [name, member] : members) {
        ExpectFailuresReported(name, member);
    }
}

TEST(MatrixAllocation, Solvers) {
    const std::pair<const char*, Member> members[] = {
        {"LTChol", [](Scene& x) { return x.s.LTChol(0.1, x.number, true) >= 0; }},
        {"LTChol bits", [](Scene& x) { return x.s.LTChol(x.v, 0.1, x.bits, false) >= 0; }},
        {"LTSubstitute", [](Scene& x) { return x.s.LTSubstitute(x.v, x.out) == 0; }},
        {"TSolveSubst", [](Scene& x) { return x.s.TSolveSubst(x.v, x.out, true); }},
        {"LTSolve", [](Scene& x) { return x.s.LTSolve(x.v, 0.1, x.out) >= 0; }},
        {"CholInverse", [](Scene& x) { return x.s.CholInverse(x.v, 0.1, x.target) >= 0; }},
        {"Determinant",
         [](Scene& x) {
             double det[2];
             return x.s.ComputeDeterminant(1e-9, det);
         }},
        {"SolveIndefinite", [](Scene& x) { return x.s.SolveIndefinite(1e-14, x.v, x.out); }},
        {"SolveIndefinite skip", [](Scene& x) { return x.s.SolveIndefinite(x.bits, x.v, x.out); }},
        {"CholInverse smallest", [](Scene& x) { return x.s.CholInverse(x.v, 0.1, x.target, x.number) >= 0; }},
        {"CholInverse bits",
         [](Scene& x) {
             const bool isSuccess = x.s.CholInverse(x.v, 0.1, x.target, x.bits) >= 0;
             EXPECT_EQ(x.bits.Size() > 0, isSuccess);
             return isSuccess;
         }},
        {"CholIndNonRed",
         [](Scene& x) {
             const bool isSuccess = x.s.CholIndNonRed(5, 0.1, x.some) >= 0;
             EXPECT_TRUE(isSuccess || x.some.size() == 2u);
             return isSuccess;
         }},
        {"SolveIndefiniteGI singular", [](Scene& x) { return x.singular.SolveIndefiniteGI(1e-12, x.v, x.out); }},
        {"LTSolve in place", [](Scene& x) { return x.s.LTSolve(x.inPlace, 0.1, x.inPlace) >= 0; }},
        {"GetRegCoeffs", [](Scene& x) { return x.s.GetRegCoeffs(x.out, x.full); }},
        {"Downdate",
         [](Scene& x) {
             const bool isSuccess = x.factor.LTCholDowndate(x.two, x.c, x.sn, true);
             EXPECT_EQ(isSuccess, x.factor.GetElem(0) != 5.5);
             return isSuccess;
         }},
        {"Transform",
         [](Scene& x) {
             bool changed = false;
             return x.s.TransformToPositiveDefinite(1e-9, changed, x.number) >= 0;
         }},
    };
    for (const auto& [name, member] : members) {
        ExpectFailuresReported(name, member);
    }
}

TEST(MatrixAllocation, SweepsWithTheirOwnReference) {
    for (const int form : {0, 1, 2}) {
        for (std::size_t failures = 0;; ++failures) {
            KwSymMatrix matrix(4, true);
            matrix.AddToDiagonal(2.5);
            KwBitSet swept(4);
            const std::vector<int> rows = {0, 1};
            double logDet = 0.0;
            int count = 0;
            bool hasFailed = false;
            {
                const FailAfter failure(failures);
                count = form == 0   ? matrix.SweepOnAll(0.1, swept, true, false, true, nullptr)
                        : form == 1 ? matrix.SweepOnSelected(rows, 0.1, swept, true, nullptr)
                                    : matrix.SweepOnMany(3, 0.1, true, swept, logDet, true, nullptr);
                hasFailed = failure.Failed();
            }
            EXPECT_EQ(count == -1, hasFailed);
            if (!hasFailed) {
                EXPECT_GT(failures, 0u);
                break;
            }
            EXPECT_EQ(swept.InSet(), 0);
            EXPECT_EQ(matrix.Trace(), 10.0);
        }
    }
}

TEST(MatrixAllocation, RectangularMembers) {
    const std::pair<const char*, Member> members[] = {
        {"GetRow", [](Scene& x) { return x.r.GetRow(1, x.out); }},
        {"GetCol", [](Scene& x) { return x.r.GetCol(1, x.out); }},
        {"CopyRows", [](Scene& x) { return x.r.CopyRows(x.sparse, 0, 1); }},
        {"Blocks", [](Scene& x) { return x.r.CreateBlockDiagonal(2, x.rect); }},
        {"Columns", [](Scene& x) { return x.r.ExtractColumns(x.some, x.rect); }},
        {"Rows", [](Scene& x) { return x.r.ExtractRows(x.some, x.rect); }},
        {"Shift", [](Scene& x) { return x.r.ShiftColumns(1, x.rect); }},
        {"Shift rows", [](Scene& x) { return x.r.ShiftRows(1, x.rect); }},
        {"RV", [](Scene& x) { return x.r.ComputeRV(x.v, x.out); }},
        {"VR", [](Scene& x) { return x.r.ComputeVR(x.v, x.out); }},
        {"Product", [](Scene& x) { return x.r.ComputeMatrixProduct(x.sparse, x.rect); }},
        {"Product trans", [](Scene& x) { return x.r.ComputeProductMatrixTrans(x.sparse, x.rect); }},
        {"Product sym", [](Scene& x) { return x.r.ComputeMatrixProduct(x.other, x.rect); }},
        {"R1TransSR2", [](Scene& x) { return x.r.ComputeR1TransSR2(x.m, x.sparse, x.rect); }},
        {"BlockDiagSR", [](Scene& x) { return x.rect.ComputeBlockDiagSR(x.blocks, x.r); }},
        {"Subtract", [](Scene& x) { return x.r.SubtractSymMatrix(x.other); }},
        {"TraceSqS", [](Scene& x) { return x.r.TraceOfProductSqS(x.other) != 0.0; }},
        {"TraceSubMat", [](Scene& x) { return x.r.TraceOfProductSubMatSym(x.other, 0) != 0.0; }},
        {"CopyColToVec", [](Scene& x) { return x.r.CopyColToVec(1, x.out); }},
        {"RowToRow", [](Scene& x) { return x.r.CopyRowToRow(1, 2, x.sparse); }},
    };
    for (const auto& [name, member] : members) {
        ExpectFailuresReported(name, member);
    }
    // The first of two targets may be written when the second fails.
    for (std::size_t failures = 0;; ++failures) {
        Scene scene;
        const FailAfter failure(failures);
        const bool isSuccess = scene.r.QRDecompositionH(scene.target, scene.rect);
        EXPECT_EQ(isSuccess, !failure.Failed());
        if (isSuccess) {
            break;
        }
    }
}

TEST(MatrixAllocation, AddRowLeavesAnInvalidMatrix) {
    KwRectMatrix dense(2, 3, true);
    KwSparseRectMatrix sparse(2, 3);
    const KwSparseVector v({1}, {2.5});
    {
        const FailAfter failure(0);
        EXPECT_EQ(dense.AddRow(), -1);
        EXPECT_TRUE(failure.Failed());
    }
    EXPECT_EQ(dense.GetNRows(), -1);
    EXPECT_EQ(dense.GetNCols(), -1);
    for (std::size_t failures = 0;; ++failures) {
        KwSparseRectMatrix matrix(sparse);
        const FailAfter failure(failures);
        const int rows = matrix.AddRow(v);
        if (!failure.Failed()) {
            EXPECT_EQ(rows, 3);
            break;
        }
        EXPECT_EQ(rows, -1);
        EXPECT_EQ(matrix.GetNCols(), -1);
        EXPECT_FALSE(matrix.IsValidMatrix());
    }
}

TEST(MatrixAllocation, SparseCopiesFailToAnInvalidMatrix) {
    const KwSparseRectMatrix source = RandomSparse(4, 3, 1);
    for (const bool isAssigned : {true, false}) {
        for (std::size_t failures = 0;; ++failures) {
            KwSparseRectMatrix matrix = RandomSparse(2, 2, 2);
            const FailAfter failure(failures);
            bool isValid = false;
            if (isAssigned) {
                isValid = (matrix = source).IsValidMatrix();
            } else {
                isValid = KwSparseRectMatrix(source).IsValidMatrix();
            }
            EXPECT_EQ(isValid, !failure.Failed());
            if (isValid) {
                EXPECT_GT(failures, 3u);
                break;
            }
        }
    }
}

TEST(MatrixAllocation, SparseMembers) {
    const std::pair<const char*, Member> members[] = {
        {"SetElem", [](Scene& x) { return x.sparse.SetElem(2, 1, 1.5); }},
        {"GetRow", [](Scene& x) { return x.sparse.GetRow(1, x.out); }},
        {"GetCol", [](Scene& x) { return x.sparse.GetCol(1, x.out); }},
        {"CopyRows", [](Scene& x) { return x.sparse.CopyRows(x.r, 0, 1); }},
        {"ZeroOutRowPart", [](Scene& x) { return x.sparse.ZeroOutRowPart(1, 0, 2); }},
        {"RV", [](Scene& x) { return x.sparse.ComputeRV(x.v, x.out); }},
        {"VR", [](Scene& x) { return x.sparse.ComputeVR(x.v, x.out); }},
        {"Product", [](Scene& x) { return x.sparse.ComputeMatrixProduct(x.r, x.rect); }},
        {"Product trans", [](Scene& x) { return x.sparse.ComputeProductMatrixTrans(x.r, x.rect); }},
        {"Rows", [](Scene& x) { return x.sparse.ExtractRows(x.some, x.rect); }},
        {"Columns",
         [](Scene& x) {
             std::vector<std::vector<int>> rows;
             std::vector<Vector> values;
             return x.sparse.GetSparseMatrixColumns(rows, values);
         }},
        {"SetRow", [](Scene& x) { return x.sparse.SetRow(2, x.sparseRow); }},
        {"ExtractColumns", [](Scene& x) { return x.sparse.ExtractColumns(x.some, x.rect); }},
        {"Shift", [](Scene& x) { return x.sparse.ShiftColumns(1, x.rect); }},
        {"Shift rows", [](Scene& x) { return x.sparse.ShiftRows(1, x.rect); }},
        {"Blocks", [](Scene& x) { return x.sparse.CreateBlockDiagonal(2, x.rect); }},
        {"ColNorm", [](Scene& x) { return x.sparse.ColNorm(1) >= 0.0; }},
        {"CopyColToVec", [](Scene& x) { return x.sparse.CopyColToVec(1, x.out); }},
        {"RowToRow", [](Scene& x) { return x.sparse.CopyRowToRow(1, 2, x.r); }},
    };
    for (const auto& [name, member] : members) {
        ExpectFailuresReported(name, member);
    }
}

TEST(MatrixAllocation, BlockDiagonalMembers) {
    const std::pair<const char*, Member> members[] = {
        {"AXpY", [](Scene& x) { return x.blocks.ComputeAXpY(0.0, x.other); }},
        {"SV", [](Scene& x) { return x.blocks.ComputeSV(x.v, x.out); }},
        {"LV", [](Scene& x) { return x.blocks.ComputeLV(x.v, x.out); }},
        {"LTransV", [](Scene& x) { return x.blocks.ComputeLTransV(x.v, x.out); }},
        {"GetRow", [](Scene& x) { return x.blocks.GetRow(1, x.out); }},
        {"LTChol", [](Scene& x) { return x.blocks.LTChol(0.1, x.number, true) >= 0; }},
        {"LTSolve", [](Scene& x) { return x.blocks.LTSolve(x.v, 0.1, x.out) >= 0; }},
        {"CholInverse", [](Scene& x) { return x.blocks.CholInverse(x.v, 0.1, x.target) >= 0; }},
        {"Determinant",
         [](Scene& x) {
             double det[2];
             return x.blocks.ComputeDeterminant(1e-9, det);
         }},
        {"STransS", [](Scene& x) { return x.blocks.ComputeSTransS(x.target); }},
        {"RS", [](Scene& x) { return x.blocks.ComputeRS(x.r, x.rect); }},
        {"VSV", [](Scene& x) { return x.blocks.ComputeVSV(x.r, 1) != 0.0; }},
        {"LTChol bits", [](Scene& x) { return x.blocks.LTChol(x.v, 0.1, x.bits, false) >= 0; }},
        {"GMG", [](Scene& x) { return x.blocks.ComputeGMG(x.v, x.target); }},
        {"GMGNG",
         [](Scene& x) {
             const bool isSuccess = x.blocks.ComputeGMGNG(x.m, x.other, x.target, x.out);
             x.out.clear();  // scratch
             return isSuccess;
         }},
        {"MGN", [](Scene& x) { return x.blocks.ComputeMGN(x.m, x.other, x.target); }},
        {"GSG", [](Scene& x) { return x.blocks.ComputeGSG(x.m, x.target); }},
        {"LSLTrans", [](Scene& x) { return x.blocks.ComputeLSLTrans(x.m, x.target); }},
        {"RTransS", [](Scene& x) { return x.blocks.ComputeRTransS(x.r, x.rect); }},
        {"RTransSR", [](Scene& x) { return x.blocks.ComputeRTransSR(x.r, x.target); }},
        {"RSRTrans", [](Scene& x) { return x.blocks.ComputeRSRTrans(x.r, x.target); }},
        {"RTransSV", [](Scene& x) { return x.blocks.ComputeRTransSV(x.r, x.v, x.out); }},
        {"SS", [](Scene& x) { return x.blocks.ComputeSS(x.m, x.rect); }},
        {"TraceOfThree", [](Scene& x) { return x.blocks.TraceOfProductOfThree(x.m, x.other) != 0.0; }},
        {"Submatrix", [](Scene& x) { return x.blocks.ExtractSubmatrix(x.some, x.target); }},
        {"CholInverse bits", [](Scene& x) { return x.blocks.CholInverse(x.v, 0.1, x.target, x.bits) >= 0; }},
    };
    for (const auto& [name, member] : members) {
        ExpectFailuresReported(name, member);
    }
}

TEST(MatrixAllocation, BlockDiagonalStorageFailsToAnInvalidMatrix) {
    const KwSymBlockDiagMatrix source = RandomBlocks(5, 1);
    const std::function<bool(KwSymBlockDiagMatrix&)> members[] = {
        [&](KwSymBlockDiagMatrix& matrix) { return (matrix = source).IsValidMatrix(); },
        [](KwSymBlockDiagMatrix& matrix) { return matrix.Resize(7); },
        [&](KwSymBlockDiagMatrix& matrix) {
            const KwSymBlockDiagMatrix copy(source);
            const bool isValid = copy.IsValidMatrix();
            if (!isValid) {
                matrix = copy;
            }
            return isValid;
        },
    };
    for (const auto& member : members) {
        for (std::size_t failures = 0;; ++failures) {
            KwSymBlockDiagMatrix matrix = RandomBlocks(3, 2);
            bool isValid = false, hasFailed = false;
            {
                const FailAfter failure(failures);
                EXPECT_NO_THROW(isValid = member(matrix));
                hasFailed = failure.Failed();
            }
            EXPECT_EQ(isValid, !hasFailed);
            EXPECT_EQ(matrix.GetNRows() < 0, hasFailed);
            if (!hasFailed) {
                EXPECT_GT(failures, 1u);
                break;
            }
        }
    }
}

// Several dense blocks: a list of them that grew would copy, and such a copy fails silently.
TEST(MatrixAllocation, BlockDiagonalConstructorIsValidOnlyWithEveryBlock) {
    const std::vector<int> sizes = {2, 3, 1, 4, 2, 3};
    KwBitSet isDiagonal(6);
    isDiagonal.Set(2, true);
    for (std::size_t failures = 0;; ++failures) {
        bool isValid = false, hasFailed = false, isWhole = true;
        {
            const FailAfter failure(failures);
            const KwSymBlockDiagMatrix matrix(sizes, isDiagonal);
            hasFailed = failure.Failed();
            isValid = matrix.IsValidMatrix();
            const KwSymMatrix* block = nullptr;
            for (int k = 0; isValid && k < 6; ++k) {
                isWhole = isWhole && (k == 2 || (matrix.GetDenseBlock(k, block) &&
                                                 block->GetNRows() == sizes[static_cast<std::size_t>(k)]));
            }
        }
        EXPECT_EQ(isValid, !hasFailed) << failures;
        EXPECT_TRUE(isWhole);
        if (isValid) {
            EXPECT_GT(failures, 6u);
            break;
        }
    }
}

// Allocation after allocation fails while a sparse target is written: invalid where the whole of it was, unchanged
// where a row or a column was.
TEST(MatrixAllocation, SparseTargetsAreLeftInvalidOrUnchanged) {
    const KwSymMatrix s = RandomMatrix(5, 1);
    const KwRectMatrix r = RandomRect(5, 5, 2);
    const std::vector<int> rows = {4, 1, 1};
    for (std::size_t failures = 0, form = 0; form < 4; ++failures) {
        KwSparseRectMatrix target = RandomSparse(5, 5, 3);
        const Square before = Full(target);
        bool isSuccess = false, hasFailed = false;
        {
            const FailAfter failure(failures);
            isSuccess = form == 0   ? s.ComputeRS(r, target)
                        : form == 1 ? r.ExtractRows(rows, target)
                        : form == 2 ? s.CopyRowToRColumn(2, 3, target)
                                    : r.CopyRowToRow(1, 4, target);
            hasFailed = failure.Failed();
        }
        EXPECT_EQ(isSuccess, !hasFailed) << form << ", " << failures;
        if (!isSuccess) {
            EXPECT_TRUE(form < 2 ? !target.IsValidMatrix() || Full(target) == before : Full(target) == before)
                << form << ", " << failures;
        } else {
            EXPECT_GT(failures, 2u);
            ++form;
            failures = static_cast<std::size_t>(-1);
        }
    }
}

TEST(MatrixAllocation, FactorisationsAndSweepsAllocateNothing) {
    KwSymMatrix matrix;
    ASSERT_TRUE(matrix.ComputeRTransByR(RandomRect(160, 150, 1)));
    const Vector ref(150, 1.0), b = RandomVector(150, 2);
    Vector x(150), c(150), sn(150);
    KwBitSet swept(150), zeros(150);
    double det[2];
    KwSymMatrix copy(matrix);
    const std::size_t before = failing_new::Count();
    matrix.Sweep(3, 1e-9, ref, swept, true);
    matrix.Sweep(3, 1e-9, ref.data(), swept, true);
    matrix.LTChol(ref, 1e-9, true);
    matrix.LTSubstitute(b, x);
    matrix.TSolveSubst(b, x, true);
    matrix.LTCholUpdateR1(x, c, sn);
    matrix.LTDetInverse(det, 11);
    matrix.LTLTransL();
    matrix.LTLLTrans();
    copy.LTSolve(b, 1e-9, x);
    copy.LTInverse();
    matrix.LTChol(ref, 1e-9, zeros, true);
    EXPECT_EQ(failing_new::Count(), before);
}

TEST(MatrixAllocation, ElementAccessOfTheRectangularMatrixAllocatesNothing) {
    KwRectMatrix matrix = RandomRect(6, 6, 1);
    const Vector v = RandomVector(6, 2);
    Vector out(6);
    const std::size_t before = failing_new::Count();
    matrix.GetRow(1, out);
    matrix.GetCol(2, out);
    matrix.SetElem(1, 2, matrix.GetElem(2, 1));
    matrix.ComputeRV(v, out);
    matrix.ComputeVR(v, out);
    matrix.IsRowZero(1);
    EXPECT_GT(matrix.ColNorm(1) + matrix.RowNorm(2) + matrix.DotProductRows(1, 2) + matrix.DotProductCol(1, 2), 0.0);
    EXPECT_EQ(failing_new::Count(), before);
}

}  // namespace
