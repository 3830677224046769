// The texts of numbers that come again and again.
#include "runtime/NumberTexts.h"

#include <bit>

#include "host/number_text.h"

namespace brevix {

std::string_view NumberTexts::get(double number) {
    const auto bits = std::bit_cast<std::uint64_t>(number);
    // The multiplier of Knuth's multiplicative hashing, 2^64 over the golden ratio.
    Entry& entry = fEntries[(bits * 0x9e3779b97f4a7c15) >> 58];
    if (entry.bits != bits || entry.text.empty()) {
        entry.bits = bits;
        entry.text.clear();
        KwBrevix_930::AppendNumber(entry.text, number);
    }
    return entry.text;
}

}  // namespace brevix
