// Order of the virtual operations, kind and layout of the dense symmetric matrix.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

#include "numerics/matrix/IKwSymMatrix.h"
#include "numerics/matrix/KwSymMatrix.h"
#include "tests/support/virtual_slot.h"

namespace {

using KwMath_930::IKwSymMatrix;
using KwMath_930::KwSymMatrix;
using Vector = std::vector<double>;

struct Entry {
    int slot;      // the number of the operation in the complete table
    int declared;  // its place among the operations declared so far
};

// The operations of a class in slot order; those of the interface first.
template <class Matrix>
std::vector<Entry> InterfaceEntries() {
    return {
        {1, VirtualSlot(&Matrix::GetType)},
        {2, VirtualSlot(&Matrix::GetNRows)},
        {3, VirtualSlot(&Matrix::IsValidMatrix)},
        {4, VirtualSlot(static_cast<double (Matrix::*)(int, int) const>(&Matrix::GetElem))},
        {5, VirtualSlot(&Matrix::GetDiagonal)},
        {6, VirtualSlot(&Matrix::GetRow)},
        {7, VirtualSlot(&Matrix::AddToDiagonal)},
        {8, VirtualSlot(&Matrix::ChangeSign)},
        {12, VirtualSlot(&Matrix::Clear)},
        {38, VirtualSlot(static_cast<bool (Matrix::*)(const Vector&, Vector&) const>(&Matrix::ComputeSV))},
        {40, VirtualSlot(static_cast<double (Matrix::*)(const Vector&) const>(&Matrix::ComputeVSV))},
        {43, VirtualSlot(static_cast<double (Matrix::*)(const Vector&, const Vector&) const>(&Matrix::ComputeVSW))},
        {59, VirtualSlot(&Matrix::MaxMinDiag)},
        {60, VirtualSlot(&Matrix::MaxMinDiagOffDiag)},
        {61, VirtualSlot(&Matrix::MultiplyByNumber)},
        {62, VirtualSlot(&Matrix::PutRow)},
        {63, VirtualSlot(&Matrix::Resize)},
        {64, VirtualSlot(static_cast<bool (Matrix::*)(int, int, double)>(&Matrix::SetElem))},
        {65, VirtualSlot(&Matrix::SetNRows)},
        {66, VirtualSlot(&Matrix::SetRowColToConst)},
        {67, VirtualSlot(&Matrix::Trace)},
        {70, VirtualSlot(&Matrix::ZeroOut)},
        {71, VirtualSlot(&Matrix::ZeroOutNonDiag)},
        {72, VirtualSlot(&Matrix::Display)},
        {73, VirtualSlot(&Matrix::DisplayF)},
    };
}

// Operations of the table that do not exist yet leave no gap: the places are consecutive, the numbers ascend.
void ExpectInOrder(const std::vector<Entry>& entries) {
    int place = 1;
    int last = 0;
    for (const Entry& entry : entries) {
        EXPECT_EQ(entry.declared, place) << "slot " << entry.slot;
        EXPECT_GT(entry.slot, last);
        last = entry.slot;
        ++place;
    }
}

TEST(IKwSymMatrixSlots, OperationsAreDeclaredInSlotOrder) {
    ExpectInOrder(InterfaceEntries<IKwSymMatrix>());
    EXPECT_TRUE(std::has_virtual_destructor_v<IKwSymMatrix>);
    EXPECT_TRUE(std::is_abstract_v<IKwSymMatrix>);
    EXPECT_EQ(sizeof(IKwSymMatrix), sizeof(void*));
}

TEST(KwSymMatrixSlots, ItsOwnOperationsFollowThoseOfTheInterface) {
    std::vector<Entry> entries = InterfaceEntries<KwSymMatrix>();
    entries.push_back({74, VirtualSlot(&KwSymMatrix::AdjustOffDiagCorr)});
    entries.push_back({77, VirtualSlot(static_cast<double (KwSymMatrix::*)(int) const>(&KwSymMatrix::GetElem))});
    ExpectInOrder(entries);
}

TEST(KwSymMatrixSlots, OtherMembersAreNotVirtual) {
    EXPECT_EQ(VirtualSlot(&KwSymMatrix::GetNBlocks), -1);
    EXPECT_EQ(VirtualSlot(&KwSymMatrix::UpdateXX), -1);
    EXPECT_EQ(VirtualSlot(&KwSymMatrix::ZeroOutAllSmall), -1);
    EXPECT_EQ(VirtualSlot(&KwSymMatrix::DisplayS), -1);
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
