// The order in which a matrix class declares its operations.
#pragma once

#include <vector>

#include <gtest/gtest.h>

namespace matrix_samples {

struct Entry {
    int slot;      // the number of the operation in the table
    int declared;  // its slot in the class
};

inline void ExpectInOrder(const std::vector<Entry>& entries) {
    int slot = 1;
    for (const Entry& entry : entries) {
        EXPECT_EQ(entry.slot, slot);
        EXPECT_EQ(entry.declared, slot);
        ++slot;
    }
}

}  // namespace matrix_samples
