// Order of the virtual operations, kinds and layouts of the rectangular matrices.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

#include "numerics/matrix/KwRectMatrix.h"
#include "numerics/matrix/KwSparseRectMatrix.h"
#include "numerics/matrix/KwSparseVector.h"
#include "numerics/matrix/KwSymMatrix.h"
#include "tests/numerics/matrix/declared_slots.h"
#include "tests/support/virtual_slot.h"

namespace {

using KwMath_930::IKwRectMatrix;
using KwMath_930::KwRectMatrix;
using KwMath_930::KwSparseRectMatrix;
using KwMath_930::KwSparseVector;
using KwMath_930::KwSymMatrix;
using matrix_samples::Entry;
using matrix_samples::ExpectInOrder;
using Vector = std::vector<double>;

// The operations of the interface in slot order.
template <class Matrix>
std::vector<Entry> RectInterfaceEntries() {
    return {
        {1, VirtualSlot(static_cast<IKwRectMatrix::RectMatrixType (Matrix::*)() const>(&Matrix::GetMatrixType))},
        {2, VirtualSlot(static_cast<bool (Matrix::*)() const>(&Matrix::IsValidMatrix))},
        {3, VirtualSlot(static_cast<int (Matrix::*)() const>(&Matrix::GetNRows))},
        {4, VirtualSlot(static_cast<int (Matrix::*)() const>(&Matrix::GetNCols))},
        {5, VirtualSlot(static_cast<double (Matrix::*)(int, int) const>(&Matrix::GetElem))},
        {6, VirtualSlot(static_cast<bool (Matrix::*)(int, Vector&) const>(&Matrix::GetRow))},
        {7, VirtualSlot(static_cast<bool (Matrix::*)(int, Vector&) const>(&Matrix::GetCol))},
        {8, VirtualSlot(static_cast<int (Matrix::*)(const KwSparseVector&)>(&Matrix::AddRow))},
        {9, VirtualSlot(static_cast<int (Matrix::*)()>(&Matrix::AddRow))},
        {10, VirtualSlot(static_cast<void (Matrix::*)()>(&Matrix::Clear))},
        {11, VirtualSlot(static_cast<double (Matrix::*)(int) const>(&Matrix::ColNorm))},
        {12, VirtualSlot(static_cast<bool (Matrix::*)(const IKwRectMatrix&, IKwRectMatrix&) const>(
                 &Matrix::ComputeMatrixProduct))},
        {13, VirtualSlot(static_cast<bool (Matrix::*)(const IKwRectMatrix&, KwRectMatrix&) const>(
                 &Matrix::ComputeProductMatrixTrans))},
        {14, VirtualSlot(static_cast<bool (Matrix::*)(const Vector&, Vector&) const>(&Matrix::ComputeRV))},
        {15, VirtualSlot(static_cast<bool (Matrix::*)(const Vector&, Vector&) const>(&Matrix::ComputeVR))},
        {16, VirtualSlot(static_cast<bool (Matrix::*)(int, Vector&) const>(&Matrix::CopyColToVec))},
        {17, VirtualSlot(static_cast<bool (Matrix::*)(const IKwRectMatrix&, int, int)>(&Matrix::CopyRows))},
        {18, VirtualSlot(static_cast<bool (Matrix::*)(int, int, IKwRectMatrix&) const>(&Matrix::CopyRowToRow))},
        {19, VirtualSlot(static_cast<bool (Matrix::*)(int, IKwRectMatrix&) const>(&Matrix::CreateBlockDiagonal))},
        {20, VirtualSlot(static_cast<double (Matrix::*)(int, int) const>(&Matrix::DotProductCol))},
        {21, VirtualSlot(static_cast<double (Matrix::*)(int, int) const>(&Matrix::DotProductRows))},
        {22,
         VirtualSlot(static_cast<double (Matrix::*)(int, const IKwRectMatrix&, int) const>(&Matrix::DotProductRowCol))},
        {23,
         VirtualSlot(static_cast<double (Matrix::*)(int, const IKwRectMatrix&, int) const>(&Matrix::DotProductRowRow))},
        {24, VirtualSlot(static_cast<bool (Matrix::*)(const std::vector<int>&, IKwRectMatrix&) const>(
                 &Matrix::ExtractColumns))},
        {25, VirtualSlot(
                 static_cast<bool (Matrix::*)(const std::vector<int>&, IKwRectMatrix&) const>(&Matrix::ExtractRows))},
        {26, VirtualSlot(
                 static_cast<bool (Matrix::*)(int, Vector&, int, int, double, bool) const>(&Matrix::IncrVecByColumn))},
        {27, VirtualSlot(static_cast<bool (Matrix::*)(int) const>(&Matrix::IsRowZero))},
        {28, VirtualSlot(static_cast<bool (Matrix::*)(int, int)>(&Matrix::Resize))},
        {29, VirtualSlot(static_cast<double (Matrix::*)(int) const>(&Matrix::RowNorm))},
        {30, VirtualSlot(static_cast<bool (Matrix::*)(int, int, double)>(&Matrix::SetElem))},
        {31, VirtualSlot(static_cast<bool (Matrix::*)(int, int, bool)>(&Matrix::SetNRowsCols))},
        {32, VirtualSlot(static_cast<bool (Matrix::*)(int, const KwSparseVector&)>(&Matrix::SetRow))},
        {33, VirtualSlot(static_cast<bool (Matrix::*)(int, IKwRectMatrix&) const>(&Matrix::ShiftColumns))},
        {34, VirtualSlot(static_cast<bool (Matrix::*)(int, IKwRectMatrix&) const>(&Matrix::ShiftRows))},
        {35, VirtualSlot(static_cast<bool (Matrix::*)(int, int, int)>(&Matrix::ZeroOutRowPart))},
        {36, VirtualSlot(static_cast<void (Matrix::*)() const>(&Matrix::Display))},
        {37, VirtualSlot(static_cast<void (Matrix::*)() const>(&Matrix::DisplayF))},
    };
}

TEST(IKwRectMatrixSlots, OperationsAreDeclaredInSlotOrder) {
    ExpectInOrder(RectInterfaceEntries<IKwRectMatrix>());
    EXPECT_TRUE(std::has_virtual_destructor_v<IKwRectMatrix>);
    EXPECT_TRUE(std::is_abstract_v<IKwRectMatrix>);
    EXPECT_EQ(sizeof(IKwRectMatrix), sizeof(void*));
}

TEST(KwRectMatrixSlots, AreThoseOfTheInterface) {
    ExpectInOrder(RectInterfaceEntries<KwRectMatrix>());
    EXPECT_EQ(VirtualSlot(&KwRectMatrix::QRDecompositionH), -1);
    EXPECT_EQ(VirtualSlot(&KwRectMatrix::SubtractSymMatrix), -1);
}

TEST(KwSparseRectMatrixSlots, ItsOwnOperationsFollowThoseOfTheInterface) {
    std::vector<Entry> entries = RectInterfaceEntries<KwSparseRectMatrix>();
    entries.push_back(
        {38, VirtualSlot(static_cast<bool (KwSparseRectMatrix::*)(int, const int*&, const double*&) const>(
                 &KwSparseRectMatrix::GetRow))});
    entries.push_back({39, VirtualSlot(&KwSparseRectMatrix::GetSparseMatrixColumns)});
    ExpectInOrder(entries);
    EXPECT_EQ(VirtualSlot(&KwSparseRectMatrix::GetNNZRowElements), -1);
}

TEST(RectangularKinds, DenseIsZero) {
    EXPECT_EQ(KwRectMatrix().GetMatrixType(), 0);
    EXPECT_EQ(KwRectMatrix().GetMatrixType(), IKwRectMatrix::kDenseRectMatrix);
    EXPECT_EQ(KwSparseRectMatrix().GetMatrixType(), IKwRectMatrix::kSparseRectMatrix);
    EXPECT_NE(KwSparseRectMatrix().GetMatrixType(), 0);
}

TEST(KwRectMatrixLayout, TwoCountsAndTheDataInThatOrder) {
    struct Layout {
        void* table;
        std::int32_t nRows, nCols;
        Vector data;
    };
    EXPECT_EQ(sizeof(KwRectMatrix), sizeof(Layout));
    KwRectMatrix matrix(3, 2, true);
    const char* start = reinterpret_cast<const char*>(&matrix);
    std::int32_t counts[2];
    std::memcpy(counts, start + offsetof(Layout, nRows), sizeof counts);
    EXPECT_EQ(counts[0], 3);
    EXPECT_EQ(counts[1], 2);
    EXPECT_EQ(static_cast<const void*>(&matrix.AsVector()), start + offsetof(Layout, data));
}

TEST(KwSparseRectMatrixLayout, FourCountsThenFourLists) {
    struct Layout {
        void* table;
        std::int32_t counts[4];
        Vector lists[4];
    };
    EXPECT_EQ(sizeof(KwSparseRectMatrix), sizeof(Layout));
    KwSparseRectMatrix matrix(3, 2);
    const char* start = reinterpret_cast<const char*>(&matrix);
    std::int32_t counts[2];
    std::memcpy(counts, start + offsetof(Layout, counts), sizeof counts);
    EXPECT_EQ(counts[0], 3);
    EXPECT_EQ(counts[1], 2);
    EXPECT_EQ(static_cast<const void*>(&matrix.GetNNZRowElements()), start + offsetof(Layout, lists));
}

TEST(RectangularClasses, AreOpenToDerivation) {
    EXPECT_FALSE(std::is_final_v<KwRectMatrix>);
    EXPECT_FALSE(std::is_final_v<KwSparseRectMatrix>);
}

}  // namespace
