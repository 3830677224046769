// The texts of numbers that come again and again.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace brevix {

/// Results repeat few numbers: statuses, shares of votes. Each text is made once, and again only when another number
/// has taken its place. For one thread.
class NumberTexts {
public:
    /// Returns: the shortest text of a number, valid until the next call.
    std::string_view get(double number);

private:
    struct Entry {
        std::uint64_t bits = 0;
        std::string text;
    };

    std::array<Entry, 64> fEntries;
};

}  // namespace brevix
