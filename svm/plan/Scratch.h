// Working memory of one call: on the stack where it is small.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace KwBrevix_930::plan {

/// size elements, not initialised. Up to kOnStack of them need no allocation.
template <class T, std::size_t kOnStack>
class Scratch {
public:
    explicit Scratch(std::size_t size) : fLarge(size > kOnStack ? size : 0) {}
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    T* data() { return fLarge.empty() ? fSmall.data() : fLarge.data(); }
    T& operator[](std::size_t i) { return data()[i]; }

private:
    std::array<T, kOnStack> fSmall;
    std::vector<T> fLarge;
};

}  // namespace KwBrevix_930::plan
