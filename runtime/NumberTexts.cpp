// The texts of numbers that come again and again.
#include "runtime/NumberTexts.h"

#include "host/number_text.h"

namespace brevix {

void NumberTexts::write(double number, Entry& entry) {
    entry.bits = std::bit_cast<std::uint64_t>(number);
    entry.length = static_cast<std::size_t>(KwBrevix_930::WriteNumber(entry.text, number) - entry.text);
}

}  // namespace brevix
