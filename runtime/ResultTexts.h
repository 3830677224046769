// The texts of results that come again and again.
#pragma once

#include <bit>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/Export.h"

namespace brevix {

/// Votes have few outcomes. The text of each is made once, and again only when another has taken its place. For one
/// thread.
class BREVIX_RUNTIME_API ResultTexts {
public:
    /// Results of more numbers are not kept.
    static constexpr std::size_t kMostNumbers = 64;

    /// Returns: the text that is kept of the same numbers, bit for bit, valid until another one is; null where there is
    /// none.
    const std::string* find(std::span<const double> result) const {
        if (result.empty() || result.size() > kMostNumbers)
            return nullptr;
        const Entry& entry = fEntries[findPlace(result)];
        return entry.isOf(result) ? &entry.text : nullptr;
    }
    void keep(std::span<const double> result, std::string_view text);

private:
    struct Entry {
        std::vector<double> result;
        std::string text;

        bool isOf(std::span<const double> other) const {
            std::uint64_t difference = 0;
            for (std::size_t i = 0; i < other.size() && i < result.size(); ++i)
                difference |= std::bit_cast<std::uint64_t>(result[i]) ^ std::bit_cast<std::uint64_t>(other[i]);
            return difference == 0 && other.size() == result.size();
        }
    };

    static constexpr int kPlaceBits = 8;

    // The multiplier of Knuth's multiplicative hashing, 2^64 over the golden ratio.
    static std::size_t findPlace(std::span<const double> result) {
        std::uint64_t hash = 0;
        for (const double number : result)
            hash = (std::rotl(hash, 29) ^ std::bit_cast<std::uint64_t>(number)) * 0x9e3779b97f4a7c15;
        return static_cast<std::size_t>(hash >> (64 - kPlaceBits));
    }

    std::vector<Entry> fEntries = std::vector<Entry>(std::size_t{1} << kPlaceBits);
};

}  // namespace brevix
