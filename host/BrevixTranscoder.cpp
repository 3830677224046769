// UTF-16 to UTF-8 and back.
#include "host/BrevixTranscoder.h"

#include <cstdint>

namespace KwBrevix_930 {

namespace {

constexpr std::uint32_t kReplacementCharacter = 0xFFFD;

bool IsHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

void AppendUtf8(std::string& out, std::uint32_t point) {
    if (point < 0x80) {
        out += static_cast<char>(point);
        return;
    }
    if (point < 0x800) {
        out += static_cast<char>(0xC0 | (point >> 6));
    } else {
        if (point < 0x10000) {
            out += static_cast<char>(0xE0 | (point >> 12));
        } else {
            out += static_cast<char>(0xF0 | (point >> 18));
            out += static_cast<char>(0x80 | ((point >> 12) & 0x3F));
        }
        out += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
    }
    out += static_cast<char>(0x80 | (point & 0x3F));
}

void AppendUtf16(std::basic_string<XMLCh>& out, std::uint32_t point) {
    if (point >= 0x10000) {
        out += static_cast<XMLCh>(0xD800 + ((point - 0x10000) >> 10));
        point = 0xDC00 + ((point - 0x10000) & 0x3FF);
    }
    out += static_cast<XMLCh>(point);
}

int TrailingByteCount(unsigned char lead) {
    if (lead < 0x80)
        return 0;
    if (lead >= 0xC2 && lead < 0xE0)
        return 1;
    if (lead >= 0xE0 && lead < 0xF0)
        return 2;
    return lead >= 0xF0 && lead < 0xF5 ? 3 : -1;
}

bool IsValidPoint(std::uint32_t point, int trailing) {
    static constexpr std::uint32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    return point >= kSmallest[trailing] && point < 0x110000 && !(point >= 0xD800 && point < 0xE000);
}

// Reads one character at a position and moves behind it; behind one byte where that starts no character.
std::uint32_t ReadUtf8(std::string_view text, std::size_t& position) {
    const auto lead = static_cast<unsigned char>(text[position++]);
    const int trailing = TrailingByteCount(lead);
    if (trailing < 0 || text.size() - position < static_cast<std::size_t>(trailing))
        return kReplacementCharacter;
    std::uint32_t point = trailing == 0 ? lead : lead & (0x3Fu >> trailing);
    for (int i = 0; i < trailing; ++i) {
        const auto byte = static_cast<unsigned char>(text[position + static_cast<std::size_t>(i)]);
        if ((byte & 0xC0) != 0x80)
            return kReplacementCharacter;
        point = (point << 6) | (byte & 0x3Fu);
    }
    if (!IsValidPoint(point, trailing))
        return kReplacementCharacter;
    position += static_cast<std::size_t>(trailing);
    return point;
}

}  // namespace

BrevixTranscoder::~BrevixTranscoder() = default;

std::string BrevixTranscoder::ToNarrow(const XMLCh* text) const {
    std::string narrow;
    for (; text && *text; ++text) {
        std::uint32_t point = *text;
        if (IsHighSurrogate(point) && IsLowSurrogate(text[1]))
            point = 0x10000 + ((point - 0xD800) << 10) + (*++text - 0xDC00u);
        else if (IsHighSurrogate(point) || IsLowSurrogate(point))
            point = kReplacementCharacter;
        AppendUtf8(narrow, point);
    }
    return narrow;
}

std::basic_string<XMLCh> BrevixTranscoder::ToWide(std::string_view text) const {
    std::basic_string<XMLCh> wide;
    for (std::size_t position = 0; position < text.size();)
        AppendUtf16(wide, ReadUtf8(text, position));
    return wide;
}

}  // namespace KwBrevix_930
