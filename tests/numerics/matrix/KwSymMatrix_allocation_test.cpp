// Memory: every allocation of every member made to fail in turn, and members that promise to allocate nothing.
#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <streambuf>
#include <vector>

#include "numerics/display/display.h"
#include "numerics/matrix/KwSymMatrix.h"
#include "tests/numerics/matrix/symmetric_samples.h"
#include "tests/support/failing_new.h"

namespace {

using failing_new::FailAfter;
using KwMath_930::KwSymMatrix;
using symmetric_samples::RandomMatrix;
using symmetric_samples::RandomVector;
using Vector = std::vector<double>;

void ExpectInvalid(const KwSymMatrix& matrix) {
    EXPECT_FALSE(matrix.IsValidMatrix());
    EXPECT_EQ(matrix.GetNRows(), -1);
    EXPECT_TRUE(matrix.AsVectorConst().empty());
}

// Swallows all text without allocating.
class NullBuffer : public std::streambuf {
protected:
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize length) override { return length; }
};

TEST(KwSymMatrixAllocation, ConstructorsMakeAnInvalidMatrix) {
    const FailAfter failure(0);
    const KwSymMatrix plain(5, true);
    EXPECT_TRUE(failure.Failed());
    ExpectInvalid(plain);
    const FailAfter again(0);
    const KwSymMatrix blocked(2, 3, false);
    EXPECT_TRUE(again.Failed());
    ExpectInvalid(blocked);
    EXPECT_EQ(blocked.GetNBlocks(), 2);
    EXPECT_EQ(blocked.GetBlockSize(), 3);
}

TEST(KwSymMatrixAllocation, CopyAndAssignmentMakeTheTargetInvalid) {
    const KwSymMatrix source = RandomMatrix(5, 1);
    KwSymMatrix target = RandomMatrix(2, 2);
    {
        const FailAfter failure(0);
        const KwSymMatrix copy(source);
        EXPECT_TRUE(failure.Failed());
        ExpectInvalid(copy);
    }
    {
        const FailAfter failure(0);
        target = source;
        EXPECT_TRUE(failure.Failed());
    }
    ExpectInvalid(target);
    target = source;
    EXPECT_EQ(target.AsVectorConst(), source.AsVectorConst());
}

TEST(KwSymMatrixAllocation, StaticStorageFunctionsReportIt) {
    Vector data = {1.5};
    int nRows = 4;
    {
        const FailAfter failure(0);
        EXPECT_FALSE(KwSymMatrix::ResizeNRows(data, nRows));
    }
    EXPECT_EQ(nRows, -1);
    EXPECT_TRUE(data.empty());
    const Vector source(10, 2.5);
    Vector target;
    {
        const FailAfter failure(0);
        EXPECT_FALSE(KwSymMatrix::ResizeNCopy(target, source));
    }
    EXPECT_TRUE(KwSymMatrix::ResizeNCopy(target, source));
    EXPECT_EQ(target, source);
}

TEST(KwSymMatrixAllocation, SizesBeyondMemoryMakeAnInvalidMatrix) {
    KwSymMatrix matrix = RandomMatrix(3, 1);
    EXPECT_FALSE(matrix.Resize(1000000));
    ExpectInvalid(matrix);
    EXPECT_FALSE(matrix.SetNRows(1000000, true));
    ExpectInvalid(matrix);
    EXPECT_TRUE(matrix.Resize(3));
}

TEST(KwSymMatrixAllocation, MembersThatReplaceTheMatrixLeaveItInvalid) {
    const Vector v = RandomVector(6, 3);
    const std::function<bool(KwSymMatrix&)> members[] = {
        [](KwSymMatrix& matrix) { return matrix.Resize(6); },
        [](KwSymMatrix& matrix) { return matrix.SetNRows(6, true); },
        [&](KwSymMatrix& matrix) { return matrix.SetToVV(v); },
        [&](KwSymMatrix& matrix) { return matrix.SetToVW(v, v); },
        [](KwSymMatrix& matrix) { return matrix.SetToVV(matrix.AsVectorConst()); },
        [](KwSymMatrix& matrix) { return matrix.SetToVW(matrix.AsVectorConst(), matrix.AsVectorConst()); },
    };
    for (const auto& member : members) {
        KwSymMatrix matrix = RandomMatrix(2, 1);
        {
            const FailAfter failure(0);
            EXPECT_FALSE(member(matrix));
            EXPECT_TRUE(failure.Failed());
        }
        ExpectInvalid(matrix);
    }
}

TEST(KwSymMatrixAllocation, MembersThatFillAVectorLeaveItAndTheMatrix) {
    const KwSymMatrix matrix = RandomMatrix(5, 1);
    const Vector v = RandomVector(6, 2);
    const Vector before = matrix.AsVectorConst();
    const Vector small = {7.5, 8.5};
    Vector out = small;
    {
        const FailAfter failure(0);
        EXPECT_FALSE(matrix.GetRow(1, out));
        EXPECT_TRUE(failure.Failed());
    }
    EXPECT_EQ(out, small);
    {
        const FailAfter failure(0);
        matrix.GetDiagonal(out);
        EXPECT_TRUE(failure.Failed());
    }
    EXPECT_EQ(out, small);
    {
        const FailAfter failure(0);
        EXPECT_FALSE(matrix.ComputeSV(v, out));
        EXPECT_TRUE(failure.Failed());
    }
    EXPECT_EQ(out, small);
    out = v;
    {
        const FailAfter failure(0);
        EXPECT_FALSE(matrix.ComputeSV(out, out));
        EXPECT_TRUE(failure.Failed());
    }
    EXPECT_EQ(out, v);
    EXPECT_EQ(matrix.AsVectorConst(), before);
}

TEST(KwSymMatrixAllocation, DumpsSurviveEveryFailure) {
    const KwSymMatrix matrix = RandomMatrix(12, 1);
    NullBuffer buffer;
    std::ostream stream(&buffer);
    std::ostream* const before = KwDisplay_930::GetOutStream();
    KwDisplay_930::SetOutStream(stream);
    const std::function<void()> dumps[] = {[&] { matrix.Display(); }, [&] { matrix.DisplayF(); },
                                           [&] { matrix.DisplayS(); }};
    for (const auto& dump : dumps) {
        std::size_t succeeding = 0;
        for (bool failed = true; failed; ++succeeding) {
            const FailAfter failure(succeeding);
            EXPECT_NO_THROW(dump());
            failed = failure.Failed();
        }
        EXPECT_GT(succeeding, 1u);
    }
    KwDisplay_930::SetOutStream(*before);
}

TEST(KwSymMatrixAllocation, AccessUpdatesAndFormsAllocateNothing) {
    KwSymMatrix matrix = RandomMatrix(9, 1);
    const Vector v = RandomVector(9, 2);
    Vector row(9);
    double a = 0, b = 0, c = 0, d = 0;
    const std::size_t before = failing_new::Count();
    matrix.GetRow(3, row);
    matrix.PutRow(3, row);
    matrix.GetDiagonal(row);
    matrix.SetRowColToConst(2, 1.5);
    matrix.ZeroOut(1);
    matrix.SetElem(3, 4, matrix.GetElem(4, 3));
    matrix.SetElem(5, matrix.GetElem(6));
    matrix.UpdateXX(v, 0.5);
    matrix.IncrementByVV(v.data(), 0.5);
    matrix.SetToVV(v);
    matrix.SetToVW(v, v);
    matrix.ComputeSV(v, row);
    matrix.AddToDiagonal(matrix.ComputeVSV(v) + matrix.ComputeVSW(v, row) + matrix.Trace());
    matrix.MaxMinDiagOffDiag(a, b, c, d);
    matrix.ZeroOutNonDiag(1e-9);
    matrix.ZeroOutAllSmall(1e-9);
    matrix.AdjustOffDiagCorr(0.1);
    matrix.DeleteOneRow(4);
    EXPECT_EQ(failing_new::Count(), before);
}

}  // namespace
