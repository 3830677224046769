// Text from strangers, made safe for a terminal.
#include "runtime/printable_text.h"

#include <charconv>
#include <cstdint>

namespace brevix {

namespace {

constexpr std::size_t kLongestText = 1 << 20;

unsigned char byteAt(std::string_view text, std::size_t place) {
    return static_cast<unsigned char>(text[place]);
}

std::uint32_t decode(std::string_view character) {
    if (character.size() == 1)
        return byteAt(character, 0);
    std::uint32_t point = byteAt(character, 0) & (0x7Fu >> character.size());
    for (std::size_t i = 1; i < character.size(); ++i)
        point = (point << 6) | (byteAt(character, i) & 0x3Fu);
    return point;
}

bool turnsWriting(std::uint32_t point) {
    return point == 0x200E || point == 0x200F || (point >= 0x2028 && point <= 0x202E) ||
           (point >= 0x2066 && point <= 0x2069);
}

void appendHex(std::string& out, std::uint32_t value, std::size_t digits) {
    char buffer[8];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, value, 16);
    const auto length = static_cast<std::size_t>(written.ptr - buffer);
    out.append(digits > length ? digits - length : 0, '0');
    out.append(buffer, length);
}

void appendEscaped(std::string& out, std::uint32_t point) {
    if (point == '\n')
        out += "\\n";
    else if (point == '\r')
        out += "\\r";
    else if (point == '\t')
        out += "\\t";
    else {
        out += point < 0x100 ? "\\x" : "\\u";
        appendHex(out, point, point < 0x100 ? 2 : 4);
    }
}

}  // namespace

std::size_t utf8Length(std::string_view text) {
    const unsigned char lead = byteAt(text, 0);
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(text, i) & 0xC0) != 0x80)
            return 0;
    }
    static constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const std::uint32_t point = decode(text.substr(0, length));
    const bool isSurrogate = point >= 0xD800 && point < 0xE000;
    return point < kSmallest[length] || point > 0x10FFFF || isSurrogate ? 0 : length;
}

std::string printableText(std::string_view text) {
    std::string out;
    for (std::size_t place = 0; place < text.size();) {
        if (out.size() > kLongestText)
            return out + "...";
        const std::string_view rest = text.substr(place);
        const std::size_t length = utf8Length(rest);
        const std::uint32_t point = length == 0 ? byteAt(rest, 0) : decode(rest.substr(0, length));
        const bool isControl = point < 0x20 || (point >= 0x7F && point < 0xA0);
        if (length == 0 || isControl || turnsWriting(point))
            appendEscaped(out, point);
        else
            out += rest.substr(0, length);
        place += length == 0 ? 1 : length;
    }
    return out;
}

}  // namespace brevix
