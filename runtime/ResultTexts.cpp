// The texts of results that come again and again.
#include "runtime/ResultTexts.h"

#include <bit>
#include <cstring>

namespace brevix {

// The multiplier of Knuth's multiplicative hashing, 2^64 over the golden ratio.
std::size_t ResultTexts::findPlace(std::span<const double> result) {
    std::uint64_t hash = 0;
    for (const double number : result)
        hash = (std::rotl(hash, 29) ^ std::bit_cast<std::uint64_t>(number)) * 0x9e3779b97f4a7c15;
    return static_cast<std::size_t>(hash >> (64 - kPlaceBits));
}

const std::string* ResultTexts::find(std::span<const double> result) const {
    if (result.empty() || result.size() > kMostNumbers)
        return nullptr;
    const Entry& entry = fEntries[findPlace(result)];
    const bool isTheSame = entry.result.size() == result.size() &&
                           std::memcmp(entry.result.data(), result.data(), result.size_bytes()) == 0;
    return isTheSame ? &entry.text : nullptr;
}

void ResultTexts::keep(std::span<const double> result, std::string_view text) {
    if (result.empty() || result.size() > kMostNumbers)
        return;
    Entry& entry = fEntries[findPlace(result)];
    entry.result.assign(result.begin(), result.end());
    entry.text = text;
}

}  // namespace brevix
