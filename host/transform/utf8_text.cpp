// Characters of UTF-8 texts.
#include "host/transform/utf8_text.h"

#include <cstdint>

namespace KwBrevix_930 {

namespace {

// A continuation byte belongs to the character before it.
bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// The length of the character at the start of a text that is not empty.
std::size_t CharacterLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    for (std::size_t i = 1; i < length; ++i) {
        if (i == text.size() || !IsContinuation(text[i]))
            return 1;
    }
    return length;
}

// A range of letters: upper case first to last, each this far below its lower case. A step of 2: pairs, upper before
// lower.
struct LetterRange {
    std::uint32_t first;
    std::uint32_t last;
    std::uint32_t distance;
    std::uint32_t step;
};

// Latin Extended-A leaves out the letters whose case is a matter of language or of two letters.
constexpr LetterRange kLetters[] = {
    {'A', 'Z', 32, 1},       {0x00C0, 0x00D6, 32, 1}, {0x00D8, 0x00DE, 32, 1}, {0x0100, 0x012E, 1, 2},
    {0x0132, 0x0136, 1, 2},  {0x0139, 0x0147, 1, 2},  {0x014A, 0x0176, 1, 2},  {0x0179, 0x017D, 1, 2},
    {0x0386, 0x0386, 38, 1}, {0x0388, 0x038A, 37, 1}, {0x038C, 0x038C, 64, 1}, {0x038E, 0x038F, 63, 1},
    {0x0391, 0x03A1, 32, 1}, {0x03A3, 0x03AB, 32, 1}, {0x0400, 0x040F, 80, 1}, {0x0410, 0x042F, 32, 1},
    {0x0460, 0x0480, 1, 2},  {0x048A, 0x04BE, 1, 2},  {0x04D0, 0x052E, 1, 2},
};

std::uint32_t ToUpper(std::uint32_t letter) {
    if (letter == 0x00FF)
        return 0x0178;
    if (letter == 0x03C2)
        return 0x03A3;
    for (const LetterRange& range : kLetters) {
        const std::uint32_t upper = letter - range.distance;
        if (upper >= range.first && upper <= range.last && (upper - range.first) % range.step == 0)
            return upper;
    }
    return letter;
}

std::uint32_t ToLower(std::uint32_t letter) {
    if (letter == 0x0178)
        return 0x00FF;
    for (const LetterRange& range : kLetters) {
        if (letter >= range.first && letter <= range.last && (letter - range.first) % range.step == 0)
            return letter + range.distance;
    }
    return letter;
}

// All letters that have another case take one or two bytes.
std::string Mapped(std::string_view text, std::uint32_t (*map)(std::uint32_t)) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        const auto lead = static_cast<unsigned char>(text[0]);
        if (length == 1 && lead < 0x80) {
            result += static_cast<char>(map(lead));
        } else if (length == 2) {
            const std::uint32_t letter = map(((lead & 0x1FU) << 6) | (static_cast<unsigned char>(text[1]) & 0x3FU));
            result += static_cast<char>(0xC0 | (letter >> 6));
            result += static_cast<char>(0x80 | (letter & 0x3F));
        } else {
            result += text.substr(0, length);
        }
        text.remove_prefix(length);
    }
    return result;
}

}  // namespace

std::size_t CountCharacters(std::string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); ++count)
        text.remove_prefix(CharacterLength(text));
    return count;
}

std::string_view CharactersFrom(std::string_view text, std::size_t first, std::size_t count) {
    for (; first > 0 && !text.empty(); --first)
        text.remove_prefix(CharacterLength(text));
    std::size_t length = 0;
    for (; count > 0 && length < text.size(); --count)
        length += CharacterLength(text.substr(length));
    return text.substr(0, length);
}

std::string UpperCase(std::string_view text) {
    return Mapped(text, &ToUpper);
}

std::string LowerCase(std::string_view text) {
    return Mapped(text, &ToLower);
}

}  // namespace KwBrevix_930
