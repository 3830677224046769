// The texts of numbers that come again and again.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "runtime/Export.h"

namespace brevix {

/// Results repeat few numbers: statuses, shares of votes. Each text is made once, and again only when another number
/// has taken its place. For one thread.
class BREVIX_RUNTIME_API NumberTexts {
public:
    /// No text is longer; behind each there are as many bytes to read.
    static constexpr std::size_t kLongest = 32;

    /// Returns: the shortest text of a number, valid until the next call.
    std::string_view get(double number) {
        const auto bits = std::bit_cast<std::uint64_t>(number);
        // The multiplier of Knuth's multiplicative hashing, 2^64 over the golden ratio.
        Entry& entry = fEntries[(bits * 0x9e3779b97f4a7c15) >> 58];
        if (entry.bits != bits || entry.length == 0)
            write(number, entry);
        return {entry.text, entry.length};
    }

private:
    struct Entry {
        std::uint64_t bits = 0;
        std::size_t length = 0;
        char text[kLongest] = {};
    };

    static void write(double number, Entry& entry);

    std::array<Entry, 64> fEntries;
};

}  // namespace brevix
