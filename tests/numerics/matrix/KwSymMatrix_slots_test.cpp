// Order of the virtual operations, kind and layout of the dense symmetric matrix.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

#include "numerics/matrix/IKwSymMatrix.h"
#include "numerics/matrix/KwSymBlockDiagMatrix.h"
#include "numerics/matrix/KwSymMatrix.h"
#include "tests/numerics/matrix/declared_slots.h"
#include "tests/support/virtual_slot.h"

namespace {

using KwMath_930::IKwRectMatrix;
using KwMath_930::IKwSymMatrix;
using KwMath_930::KwBitSet;
using KwMath_930::KwSymBlockDiagMatrix;
using KwMath_930::KwSymMatrix;
using matrix_samples::Entry;
using matrix_samples::ExpectInOrder;
using Vector = std::vector<double>;

// The operations of the interface in slot order.
template <class Matrix>
std::vector<Entry> SymInterfaceEntries() {
    return {
        {1, VirtualSlot(static_cast<IKwSymMatrix::SymMatrixType (Matrix::*)() const>(&Matrix::GetType))},
        {2, VirtualSlot(static_cast<int (Matrix::*)() const>(&Matrix::GetNRows))},
        {3, VirtualSlot(static_cast<bool (Matrix::*)() const>(&Matrix::IsValidMatrix))},
        {4, VirtualSlot(static_cast<double (Matrix::*)(int, int) const>(&Matrix::GetElem))},
        {5, VirtualSlot(static_cast<void (Matrix::*)(Vector&) const>(&Matrix::GetDiagonal))},
        {6, VirtualSlot(static_cast<bool (Matrix::*)(int, Vector&) const>(&Matrix::GetRow))},
        {7, VirtualSlot(static_cast<void (Matrix::*)(double)>(&Matrix::AddToDiagonal))},
        {8, VirtualSlot(static_cast<void (Matrix::*)()>(&Matrix::ChangeSign))},
        {9, VirtualSlot(static_cast<int (Matrix::*)(const Vector&, double, IKwSymMatrix&, double&) const>(
                &Matrix::CholInverse))},
        {10, VirtualSlot(static_cast<int (Matrix::*)(const Vector&, double, IKwSymMatrix&, KwBitSet&) const>(
                 &Matrix::CholInverse))},
        {11,
         VirtualSlot(static_cast<int (Matrix::*)(const Vector&, double, IKwSymMatrix&) const>(&Matrix::CholInverse))},
        {12, VirtualSlot(static_cast<void (Matrix::*)()>(&Matrix::Clear))},
        {13, VirtualSlot(static_cast<bool (Matrix::*)(double, const IKwSymMatrix&)>(&Matrix::ComputeAXpY))},
        {14, VirtualSlot(static_cast<bool (Matrix::*)(double, double*) const>(&Matrix::ComputeDeterminant))},
        {15, VirtualSlot(static_cast<double (Matrix::*)(int, int) const>(&Matrix::ComputeDotProduct2Rows))},
        {16, VirtualSlot(static_cast<bool (Matrix::*)(const Vector&, KwSymMatrix&) const>(&Matrix::ComputeGMG))},
        {17, VirtualSlot(
                 static_cast<bool (Matrix::*)(const IKwSymMatrix&, const IKwSymMatrix&, IKwSymMatrix&, Vector&) const>(
                     &Matrix::ComputeGMGNG))},
        {18, VirtualSlot(static_cast<bool (Matrix::*)(const IKwSymMatrix&, const IKwSymMatrix&, IKwSymMatrix&) const>(
                 &Matrix::ComputeMGN))},
        {19, VirtualSlot(static_cast<bool (Matrix::*)(const IKwSymMatrix&, IKwSymMatrix&) const>(&Matrix::ComputeGSG))},
        {20, VirtualSlot(
                 static_cast<bool (Matrix::*)(const IKwSymMatrix&, IKwSymMatrix&) const>(&Matrix::ComputeLSLTrans))},
        {21, VirtualSlot(static_cast<bool (Matrix::*)(const IKwSymMatrix&, IKwSymMatrix&, int) const>(
                 &Matrix::ComputeLTransSL))},
        {22, VirtualSlot(static_cast<bool (Matrix::*)(const std::vector<int>&, const Vector&, Vector&) const>(
                 &Matrix::ComputeLTransV))},
        {23, VirtualSlot(static_cast<bool (Matrix::*)(const Vector&, Vector&) const>(&Matrix::ComputeLTransV))},
        {24, VirtualSlot(static_cast<bool (Matrix::*)(const std::vector<int>&, const Vector&, Vector&) const>(
                 &Matrix::ComputeLV))},
        {25, VirtualSlot(static_cast<bool (Matrix::*)(const Vector&, Vector&) const>(&Matrix::ComputeLV))},
        {26,
         VirtualSlot(static_cast<double (Matrix::*)(int, const Vector&, int) const>(&Matrix::ComputeRowDotProductS))},
        {27, VirtualSlot(
                 static_cast<double (Matrix::*)(int, const IKwSymMatrix&, int) const>(&Matrix::ComputeRowDotProductS))},
        {28,
         VirtualSlot(static_cast<bool (Matrix::*)(const IKwRectMatrix&, IKwRectMatrix&) const>(&Matrix::ComputeRS))},
        {29, VirtualSlot(
                 static_cast<bool (Matrix::*)(const IKwRectMatrix&, IKwSymMatrix&) const>(&Matrix::ComputeRSRTrans))},
        {30, VirtualSlot(
                 static_cast<bool (Matrix::*)(const IKwRectMatrix&, IKwRectMatrix&) const>(&Matrix::ComputeRTransS))},
        {31, VirtualSlot(
                 static_cast<bool (Matrix::*)(const IKwRectMatrix&, IKwSymMatrix&) const>(&Matrix::ComputeRTransSR))},
        {32, VirtualSlot(static_cast<bool (Matrix::*)(const IKwRectMatrix&, const Vector&, Vector&) const>(
                 &Matrix::ComputeRTransSV))},
        {33, VirtualSlot(static_cast<double (Matrix::*)(int, const double*, int) const>(&Matrix::ComputeRVD))},
        {34, VirtualSlot(static_cast<double (Matrix::*)(int, const Vector&, int) const>(&Matrix::ComputeRVD))},
        {35, VirtualSlot(static_cast<bool (Matrix::*)(const IKwSymMatrix&, IKwRectMatrix&) const>(&Matrix::ComputeSS))},
        {36, VirtualSlot(static_cast<bool (Matrix::*)(IKwSymMatrix&) const>(&Matrix::ComputeSTransS))},
        {37, VirtualSlot(static_cast<bool (Matrix::*)(int, const Vector&, Vector&) const>(&Matrix::ComputeSV))},
        {38, VirtualSlot(static_cast<bool (Matrix::*)(const Vector&, Vector&) const>(&Matrix::ComputeSV))},
        {39, VirtualSlot(static_cast<double (Matrix::*)(const IKwRectMatrix&, int) const>(&Matrix::ComputeVSV))},
        {40, VirtualSlot(static_cast<double (Matrix::*)(const Vector&) const>(&Matrix::ComputeVSV))},
        {41, VirtualSlot(static_cast<double (Matrix::*)(const Vector&, int, int, int) const>(&Matrix::ComputeVSW))},
        {42, VirtualSlot(
                 static_cast<double (Matrix::*)(const double*, int, const double*, int) const>(&Matrix::ComputeVSW))},
        {43, VirtualSlot(static_cast<double (Matrix::*)(const Vector&, const Vector&) const>(&Matrix::ComputeVSW))},
        {44, VirtualSlot(static_cast<double (Matrix::*)(const double*, int, const double*, int) const>(
                 &Matrix::ComputeVSWParts))},
        {45, VirtualSlot(static_cast<double (Matrix::*)(const Vector&, int, const Vector&, int) const>(
                 &Matrix::ComputeVSWParts))},
        {46, VirtualSlot(static_cast<bool (Matrix::*)(IKwSymMatrix&) const>(&Matrix::ExtractFirstNRows))},
        {47, VirtualSlot(static_cast<bool (Matrix::*)(const std::vector<int>&, IKwSymMatrix&) const>(
                 &Matrix::ExtractSubmatrix))},
        {48, VirtualSlot(static_cast<void (Matrix::*)(Vector&, double, double) const>(&Matrix::GetNCheckDiagonal))},
        {49,
         VirtualSlot(static_cast<bool (Matrix::*)(int, Vector&, int, int, double, bool) const>(&Matrix::IncrVecByRow))},
        {50, VirtualSlot(static_cast<bool (Matrix::*)(int, const KwBitSet&) const>(&Matrix::IsZeroRow))},
        {51, VirtualSlot(static_cast<int (Matrix::*)(double, double&, bool)>(&Matrix::LTChol))},
        {52, VirtualSlot(static_cast<int (Matrix::*)(const Vector&, double, KwBitSet&, bool)>(&Matrix::LTChol))},
        {53, VirtualSlot(static_cast<int (Matrix::*)(const Vector&, double, bool)>(&Matrix::LTChol))},
        {54, VirtualSlot(static_cast<int (Matrix::*)(double*, int)>(&Matrix::LTDetInverse))},
        {55, VirtualSlot(static_cast<bool (Matrix::*)()>(&Matrix::LTInverse))},
        {56, VirtualSlot(static_cast<void (Matrix::*)()>(&Matrix::LTLLTrans))},
        {57, VirtualSlot(static_cast<void (Matrix::*)()>(&Matrix::LTLTransL))},
        {58, VirtualSlot(static_cast<int (Matrix::*)(const Vector&, double, Vector&)>(&Matrix::LTSolve))},
        {59, VirtualSlot(static_cast<void (Matrix::*)(double&, double&) const>(&Matrix::MaxMinDiag))},
        {60, VirtualSlot(
                 static_cast<void (Matrix::*)(double&, double&, double&, double&) const>(&Matrix::MaxMinDiagOffDiag))},
        {61, VirtualSlot(static_cast<void (Matrix::*)(double)>(&Matrix::MultiplyByNumber))},
        {62, VirtualSlot(static_cast<bool (Matrix::*)(int, const Vector&)>(&Matrix::PutRow))},
        {63, VirtualSlot(static_cast<bool (Matrix::*)(int)>(&Matrix::Resize))},
        {64, VirtualSlot(static_cast<bool (Matrix::*)(int, int, double)>(&Matrix::SetElem))},
        {65, VirtualSlot(static_cast<bool (Matrix::*)(int, bool)>(&Matrix::SetNRows))},
        {66, VirtualSlot(static_cast<bool (Matrix::*)(int, double)>(&Matrix::SetRowColToConst))},
        {67, VirtualSlot(static_cast<double (Matrix::*)() const>(&Matrix::Trace))},
        {68, VirtualSlot(static_cast<double (Matrix::*)(const IKwSymMatrix&) const>(&Matrix::TraceOfProduct))},
        {69, VirtualSlot(static_cast<double (Matrix::*)(const IKwSymMatrix&, const IKwSymMatrix&) const>(
                 &Matrix::TraceOfProductOfThree))},
        {70, VirtualSlot(static_cast<bool (Matrix::*)(int)>(&Matrix::ZeroOut))},
        {71, VirtualSlot(static_cast<void (Matrix::*)(double)>(&Matrix::ZeroOutNonDiag))},
        {72, VirtualSlot(static_cast<void (Matrix::*)() const>(&Matrix::Display))},
        {73, VirtualSlot(static_cast<void (Matrix::*)() const>(&Matrix::DisplayF))},
    };
}

TEST(IKwSymMatrixSlots, OperationsAreDeclaredInSlotOrder) {
    ExpectInOrder(SymInterfaceEntries<IKwSymMatrix>());
    EXPECT_TRUE(std::has_virtual_destructor_v<IKwSymMatrix>);
    EXPECT_TRUE(std::is_abstract_v<IKwSymMatrix>);
    EXPECT_EQ(sizeof(IKwSymMatrix), sizeof(void*));
}

TEST(KwSymMatrixSlots, ItsOwnOperationsFollowThoseOfTheInterface) {
    std::vector<Entry> entries = SymInterfaceEntries<KwSymMatrix>();
    entries.push_back({74, VirtualSlot(&KwSymMatrix::AdjustOffDiagCorr)});
    entries.push_back(
        {75,
         VirtualSlot(static_cast<bool (KwSymMatrix::*)(int, const Vector&, const Vector&, int, double&, double&) const>(
             &KwSymMatrix::ComputeRowDotProductS))});
    entries.push_back(
        {76, VirtualSlot(static_cast<bool (KwSymMatrix::*)(int, const IKwSymMatrix&, const IKwSymMatrix&, int, double&,
                                                           double&) const>(&KwSymMatrix::ComputeRowDotProductS))});
    entries.push_back({77, VirtualSlot(static_cast<double (KwSymMatrix::*)(int) const>(&KwSymMatrix::GetElem))});
    ExpectInOrder(entries);
}

TEST(KwSymBlockDiagMatrixSlots, AreThoseOfTheInterface) {
    ExpectInOrder(SymInterfaceEntries<KwSymBlockDiagMatrix>());
    EXPECT_EQ(VirtualSlot(&KwSymBlockDiagMatrix::GetNBlocks), -1);
    EXPECT_EQ(VirtualSlot(&KwSymBlockDiagMatrix::ComputeVecPartByL), -1);
}

TEST(KwSymBlockDiagMatrixSlots, ObjectHoldsTwoCountsThreeListsTheBitSetAndThreeListsInThatOrder) {
    struct Layout {
        void* table;
        std::int32_t nRows, nBlocks;
        std::vector<int> lists[3];
        KwBitSet bits;
        std::vector<int> others[3];
    };
    EXPECT_EQ(sizeof(KwSymBlockDiagMatrix), sizeof(Layout));
    const KwSymBlockDiagMatrix matrix({2, 3}, KwBitSet(2));
    const char* start = reinterpret_cast<const char*>(&matrix);
    std::int32_t counts[2];
    std::memcpy(counts, start + offsetof(Layout, nRows), sizeof counts);
    EXPECT_EQ(counts[0], 5);
    EXPECT_EQ(counts[1], 2);
    EXPECT_EQ(static_cast<const void*>(&matrix.GetBlockSizes()), start + offsetof(Layout, lists));
}

TEST(SymmetricClasses, AreOpenToDerivation) {
    EXPECT_FALSE(std::is_final_v<KwSymMatrix>);
    EXPECT_FALSE(std::is_final_v<KwSymBlockDiagMatrix>);
}

TEST(KwSymMatrixSlots, OtherMembersAreNotVirtual) {
    EXPECT_EQ(VirtualSlot(&KwSymMatrix::GetNBlocks), -1);
    EXPECT_EQ(VirtualSlot(&KwSymMatrix::UpdateXX), -1);
    EXPECT_EQ(VirtualSlot(&KwSymMatrix::ZeroOutAllSmall), -1);
    EXPECT_EQ(VirtualSlot(&KwSymMatrix::DisplayS), -1);
    EXPECT_EQ(VirtualSlot(&KwSymMatrix::LTSubstitute), -1);
    EXPECT_EQ(VirtualSlot(&KwSymMatrix::LTCholUpdateR1), -1);
    EXPECT_EQ(VirtualSlot(&KwSymMatrix::SweepOrig), -1);
    EXPECT_EQ(VirtualSlot(static_cast<bool (KwSymMatrix::*)(int, double)>(&KwSymMatrix::SetElem)), -1);
}

TEST(KwSymMatrixSlots, ObjectHoldsThreeCountsAndTheDataInThatOrder) {
    struct Layout {
        void* table;
        std::int32_t nRows, nBlocks, blockSize;
        Vector data;
    };
    EXPECT_EQ(sizeof(KwSymMatrix), sizeof(Layout));
    KwSymMatrix matrix(3, 2, true);
    const char* start = reinterpret_cast<const char*>(&matrix);
    std::int32_t counts[3];
    std::memcpy(counts, start + offsetof(Layout, nRows), sizeof counts);
    EXPECT_EQ(counts[0], 6);
    EXPECT_EQ(counts[1], 3);
    EXPECT_EQ(counts[2], 2);
    EXPECT_EQ(static_cast<const void*>(&matrix.AsVector()), start + offsetof(Layout, data));
}

TEST(KwSymMatrixKind, IsDenseSymmetricZero) {
    const KwSymMatrix matrix;
    EXPECT_EQ(matrix.GetType(), 0);
    EXPECT_EQ(matrix.GetType(), IKwSymMatrix::kDenseSymMatrix);
}

class Plain {
public:
    virtual void First() {}
    virtual void Second() {}
    virtual ~Plain() = default;
    virtual void Third() {}
    void NotVirtual() {}
};

TEST(VirtualSlot, CountsADestructorThatIsNotFirstOnce) {
    EXPECT_EQ(VirtualSlot(&Plain::First, 2), 0);
    EXPECT_EQ(VirtualSlot(&Plain::Second, 2), 1);
    EXPECT_EQ(VirtualSlot(&Plain::Third, 2), 3);
    EXPECT_EQ(VirtualSlot(&Plain::NotVirtual, 2), -1);
}

}  // namespace
