// A global operator new that counts, and fails on request. A test program that links failing_new.cpp gets it.
#pragma once

#include <cstddef>

namespace failing_new {

/// Returns: how many allocations were asked for since the program began.
std::size_t Count();

/// Returns: how many bytes the blocks have that are allocated now, with what the heap rounds them up by.
std::size_t GetLiveBytes();

/// Lets the next `succeeding` allocations succeed and the one after them fail, until the object dies.
class FailAfter {
public:
    explicit FailAfter(std::size_t succeeding);
    ~FailAfter();
    FailAfter(const FailAfter&) = delete;
    FailAfter& operator=(const FailAfter&) = delete;

    /// Returns: true when an allocation was made to fail.
    bool Failed() const;
};

/// Allocations above this size always fail, as on a machine without that much memory.
inline constexpr std::size_t kLargestAllocation = std::size_t{1} << 30;

}  // namespace failing_new
