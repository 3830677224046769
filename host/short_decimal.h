// Plain decimals of few digits, as most tables have them. Internal.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace KwBrevix_930 {

/// Reads an optional minus, digits, and at most one point anywhere among them, of 16 characters and 15 digits at most:
/// the digits as a whole number and the power of ten are exact doubles then, so that their quotient is rounded once, as
/// a correct conversion is. Up to eight characters are read at once, without a loop or a branch for each.
/// Source: Clinger, How to read floating point numbers accurately, PLDI 1990.
class ShortDecimal {
public:
    /// Returns: false, and number is not set, for any other text, whether or not it is a number.
    static bool Parse(std::string_view text, double& number) {
        const bool isNegative = !text.empty() && text.front() == '-';
        text.remove_prefix(isNegative ? 1 : 0);
        if (text.size() - 1 >= 8)
            return ParseMore(text, isNegative, number);
        const std::uint64_t characters = Load(text.data(), text.size());
        return ParseEight((characters ^ '0' * kEachByte) << 8 * (8 - text.size()), text.size(), isNegative, number);
    }

    /// How many bytes in front of its end must be there to be read of a text that ParseWithFront is given.
    static constexpr std::size_t kFront = 8;

    /// The same, sooner: what stands in front of a short text is read along with it, and does not matter.
    static bool ParseWithFront(std::string_view text, double& number) {
        const bool isNegative = !text.empty() && text.front() == '-';
        const std::size_t size = text.size() - (isNegative ? 1 : 0);
        if (size - 1 >= 8)
            return ParseMore(text.substr(isNegative ? 1 : 0), isNegative, number);
        const char* first = text.data() + text.size() - kFront;
        const auto front = static_cast<unsigned>(8 * (8 - size));
        const std::uint64_t characters = FourBytes(first) | FourBytes(first + 4) << 32;
        return ParseEight((characters ^ '0' * kEachByte) >> front << front, size, isNegative, number);
    }

private:
    static constexpr double kPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    static constexpr unsigned kNone = ~0u;
    static constexpr std::uint64_t kEachByte = 0x0101010101010101;
    static constexpr std::uint64_t kHighBits = 0x80 * kEachByte;

    static double Quotient(std::int64_t digits, unsigned countBehindPoint, bool isNegative) {
        const double magnitude = static_cast<double>(digits) / kPowers[countBehindPoint];
        return std::bit_cast<double>(std::bit_cast<std::uint64_t>(magnitude) | std::uint64_t{isNegative} << 63);
    }

    static std::uint64_t Byte(const char* text, std::size_t place) {
        return std::uint64_t{static_cast<unsigned char>(*text)} << 8 * place;
    }

    static std::uint64_t FourBytes(const char* text) {
        return Byte(text, 0) | Byte(text + 1, 1) | Byte(text + 2, 2) | Byte(text + 3, 3);
    }

    // One to eight characters, the first one in the lowest byte.
    static std::uint64_t Load(const char* text, std::size_t size) {
        return size < 4 ? Byte(text, 0) | Byte(text + size / 2, size / 2) | Byte(text + size - 1, size - 1)
                        : FourBytes(text) | FourBytes(text + size - 4) << 8 * (size - 4);
    }

    // The number that eight digits are, the first one in the lowest byte: neighbours are joined to pairs, these to
    // fours, and these to all.
    static std::int64_t JoinDigits(std::uint64_t digits) {
        constexpr std::uint64_t kPairs = 0x000000ff000000ff;
        digits = digits * 10 + (digits >> 8);
        return static_cast<std::int64_t>(((digits & kPairs) * (100 + (std::uint64_t{1000000} << 32)) +
                                          (digits >> 16 & kPairs) * (1 + (std::uint64_t{10000} << 32))) >>
                                         32);
    }

    // digits: in each byte what a character differs from '0' by, the last one in the highest byte; zeros in front.
    static bool ParseEight(std::uint64_t digits, std::size_t size, bool isNegative, double& number) {
        const std::uint64_t others = digits ^ ('.' ^ '0') * kEachByte;
        const std::uint64_t points = (others - kEachByte) & ~others & kHighBits;
        unsigned countBehindPoint = 0;
        if (points != 0) {
            // What stands in front of the first point moves up by one place.
            const auto place = static_cast<unsigned>(std::countr_zero(points)) & ~7u;
            const std::uint64_t front = (std::uint64_t{1} << place) - 1;
            digits = (digits & ~(front << 8 | 0xff)) | (digits & front) << 8;
            countBehindPoint = 7 - place / 8;
        }
        const bool areDigits = (((digits + 0x76 * kEachByte) | digits) & kHighBits) == 0;
        if (!areDigits || size == (points != 0 ? 1u : 0u))
            return false;
        number = Quotient(JoinDigits(digits), countBehindPoint, isNegative);
        return true;
    }

    static bool ParseMore(std::string_view text, bool isNegative, double& number) {
        if (text.empty() || text.size() > 16)
            return false;
        std::int64_t digits = 0;
        unsigned digitCount = 0;
        unsigned pointPlace = kNone;
        for (const char c : text) {
            if (c >= '0' && c <= '9') {
                digits = 10 * digits + (c - '0');
                ++digitCount;
            } else if (c == '.' && pointPlace == kNone) {
                pointPlace = digitCount;
            } else {
                return false;
            }
        }
        if (digitCount > 15)
            return false;
        number = Quotient(digits, pointPlace == kNone ? 0 : digitCount - pointPlace, isNegative);
        return true;
    }
};

}  // namespace KwBrevix_930
