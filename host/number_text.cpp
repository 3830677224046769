// Numbers from text and back by from_chars and to_chars.
#include "host/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>

#include "host/short_decimal.h"

namespace KwBrevix_930 {

namespace {

// Enough for the shortest text of every number.
constexpr std::size_t kLongestText = 32;

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kWhiteSpace);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kWhiteSpace) - first + 1);
}

// Whether a hexadecimal number starts here: behind the prefix stands a digit, or a point and a digit.
bool IsHexadecimal(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789abcdefABCDEF";
    if (!text.starts_with("0x") && !text.starts_with("0X"))
        return false;
    text.remove_prefix(text.substr(2).starts_with('.') ? 3 : 2);
    return !text.empty() && kDigits.find(text.front()) != std::string_view::npos;
}

// Position of the leading digit of a number that from_chars has accepted, as a power of its base: 0 for 3.5, -2 for
// 0.03.
long long LeadingDigitPower(std::string_view mantissa) {
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t digit = mantissa.find_first_not_of("0.");
    if (digit == std::string_view::npos)
        return 0;
    const auto distance = static_cast<long long>(point) - static_cast<long long>(digit);
    return distance > 0 ? distance - 1 : distance;
}

// from_chars does not say which way a number left the range: the size of its exponent does.
double OutOfRangeValue(std::string_view number, bool isHexadecimal) {
    const std::size_t mark = number.find_first_of(isHexadecimal ? "pP" : "eE");
    const std::string_view mantissa = number.substr(0, mark);
    long long exponent = 0;
    if (mark != std::string_view::npos) {
        std::string_view digits = number.substr(mark + 1);
        const bool isNegative = digits.starts_with('-');
        if (digits.starts_with('+') || isNegative)
            digits.remove_prefix(1);
        const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
        if (parsed.ec == std::errc::result_out_of_range)
            exponent = std::numeric_limits<long long>::max() / 2;
        if (isNegative)
            exponent = -exponent;
    }
    const long long power = LeadingDigitPower(mantissa) * (isHexadecimal ? 4 : 1) + exponent;
    return power > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

struct Scanned {
    double value = 0.0;
    const char* end = nullptr;
    bool isNumber = false;
};

// An unsigned number at the start of a text.
Scanned ScanUnsigned(std::string_view text, bool isHexadecimal) {
    Scanned result;
    if (text.starts_with('-') || text.starts_with('+'))
        return result;
    const char* last = text.data() + text.size();
    const auto format = isHexadecimal ? std::chars_format::hex : std::chars_format::general;
    const auto parsed = std::from_chars(text.data(), last, result.value, format);
    result.end = parsed.ptr;
    result.isNumber = parsed.ec != std::errc::invalid_argument;
    if (parsed.ec == std::errc::result_out_of_range) {
        const auto length = static_cast<std::size_t>(parsed.ptr - text.data());
        result.value = OutOfRangeValue(text.substr(0, length), isHexadecimal);
    }
    return result;
}

// The sign is taken off here: from_chars reads a minus but no plus, and knows no hexadecimal prefix.
Scanned ScanNumber(std::string_view text, bool allowHexadecimal) {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+'))
        text.remove_prefix(1);
    Scanned result =
        allowHexadecimal && IsHexadecimal(text) ? ScanUnsigned(text.substr(2), true) : ScanUnsigned(text, false);
    if (isNegative)
        result.value = -result.value;
    return result;
}

}  // namespace

double LeadingNumber(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kWhiteSpace);
    if (first == std::string_view::npos)
        return 0.0;
    const Scanned scanned = ScanNumber(text.substr(first), true);
    return scanned.isNumber ? scanned.value : 0.0;
}

std::optional<double> ParseNumber(std::string_view text) {
    double value = 0.0;
    if (ShortDecimal::Parse(text, value))
        return value;
    const std::string_view number = Trimmed(text);
    const Scanned scanned = ScanNumber(number, false);
    if (!scanned.isNumber || scanned.end != number.data() + number.size())
        return std::nullopt;
    return scanned.value;
}

std::optional<bool> ParseTruth(std::string_view text) {
    const auto isLetter = [](char c, char lower) { return c == lower || c == lower - 'a' + 'A'; };
    const auto is = [&](std::string_view word) {
        return std::equal(text.begin(), text.end(), word.begin(), word.end(), isLetter);
    };
    if (is("true"))
        return true;
    return is("false") ? std::optional(false) : std::nullopt;
}

std::string NumberText(double value) {
    std::string text;
    AppendNumber(text, value);
    return text;
}

void AppendNumber(std::string& text, double value) {
    char buffer[kLongestText];
    text.append(buffer, WriteNumber(buffer, value));
}

char* WriteNumber(char* text, double value) {
    if (std::isnan(value))
        return std::copy_n("nan", 3, text);
    return std::to_chars(text, text + kLongestText, value).ptr;
}

std::string PaddedNumber(int number, std::size_t width, char padding) {
    char buffer[kLongestText];
    const std::string_view text(buffer, std::to_chars(buffer, buffer + kLongestText, number).ptr);
    return std::string(text.size() < width ? width - text.size() : 0, padding).append(text);
}

}  // namespace KwBrevix_930
