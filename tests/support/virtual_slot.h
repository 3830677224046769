// Reads the slot of a virtual function back from a pointer to it, so that a test can compare an order of declaration
// with a table: EXPECT_EQ(VirtualSlot(&KwSymMatrix::GetType), 1). Overloads are picked by a cast.
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

// In the Itanium C++ ABI as x86-64 uses it, a pointer to a virtual member function holds 1 + 8 * (index in the virtual
// table), which tells it from the even address of a non-virtual one. The destructor takes two entries, complete and
// deleting; here it counts as one slot.
#if !defined(__x86_64__) || defined(_MSC_VER)
#error "VirtualSlot knows only the Itanium C++ ABI of x86-64"
#endif

/// Slot of a virtual function in its class, the destructor (in slot destructorSlot) counted once.
/// Shape:   destructorSlot is 0 where the virtual destructor is declared first; the number of operations declared
/// before
///          it otherwise.
/// Returns: the slot, counted from 0; -1 when the function is not virtual.
/// Note:    for single inheritance: a function of a second base has a table, and slots, of its own.
template <class Member>
int VirtualSlot(Member member, int destructorSlot = 0) {
    static_assert(std::is_member_function_pointer_v<Member>);
    std::ptrdiff_t entry = 0;
    std::memcpy(&entry, &member, sizeof entry);
    if (entry % 2 == 0) {
        return -1;
    }
    const int index = static_cast<int>((entry - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)));
    return index < destructorSlot ? index : index - 1;
}
