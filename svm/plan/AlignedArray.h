// An array of plain numbers that starts at a cache line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <vector>

namespace KwBrevix_930::plan {

/// Zero at first. Its memory comes from the ordinary operator new, which knows no such alignment everywhere.
template <class T>
class AlignedArray {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    static constexpr std::size_t kAlignment = 64;

    AlignedArray() = default;
    explicit AlignedArray(std::size_t size) : fMemory(size + kAlignment / sizeof(T)), fSize(size) {
        const std::size_t past = reinterpret_cast<std::uintptr_t>(fMemory.data()) % kAlignment;
        fOffset = past == 0 ? 0 : (kAlignment - past) / sizeof(T);
    }
    // A copy would lie elsewhere.
    AlignedArray(const AlignedArray&) = delete;
    AlignedArray& operator=(const AlignedArray&) = delete;
    AlignedArray(AlignedArray&&) noexcept = default;
    AlignedArray& operator=(AlignedArray&&) noexcept = default;
    ~AlignedArray() = default;

    /// Returns: how many bytes an array of so many elements takes.
    static double GetByteCount(double size) { return size * sizeof(T) + kAlignment; }

    /// Makes room for size elements where there is less; what the elements held is lost then.
    /// Returns: the first element.
    T* Grow(std::size_t size) {
        if (size > fSize)
            *this = AlignedArray(size);
        return data();
    }

    T* data() { return fMemory.data() + fOffset; }
    const T* data() const { return fMemory.data() + fOffset; }
    std::size_t size() const { return fSize; }
    T& operator[](std::size_t i) { return data()[i]; }
    const T& operator[](std::size_t i) const { return data()[i]; }

private:
    std::vector<T> fMemory;
    std::size_t fSize = 0;
    std::size_t fOffset = 0;
};

}  // namespace KwBrevix_930::plan
