// Numbers as texts by a pattern of the C function printf.
#include "host/transform/NumberFormat.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "host/transform/cast.h"

namespace KwBrevix_930 {

namespace {

constexpr std::string_view kWholeConversions = "diuoxX";
constexpr std::string_view kUnsignedConversions = "uoxX";
constexpr std::string_view kPrefixConversions = "oxX";

bool IsOneOf(char letter, std::string_view letters) {
    return letters.find(letter) != std::string_view::npos;
}

// A number of digits at the start of a text, which it takes away; none counts as 0.
std::optional<int> TakeNumber(std::string_view& rest) {
    int number = 0;
    const auto parsed = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (parsed.ec == std::errc::result_out_of_range || number < 0 || number > NumberFormat::kWidthLimit)
        return std::nullopt;
    rest.remove_prefix(static_cast<std::size_t>(parsed.ptr - rest.data()));
    return number;
}

// Text up to a conversion, with %% undone. Returns nothing for a % at the end.
std::optional<std::string> TakeText(std::string_view& rest) {
    std::string text;
    while (!rest.empty()) {
        if (rest.front() == '%' && !rest.starts_with("%%"))
            return rest.size() > 1 ? std::optional(text) : std::nullopt;
        text += rest.front();
        rest.remove_prefix(rest.front() == '%' ? 2 : 1);
    }
    return text;
}

std::string UpperAscii(std::string text) {
    for (char& letter : text)
        letter = letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    return text;
}

std::string WholeDigits(double size, char conversion) {
    char buffer[80];
    const int base = conversion == 'o' ? 8 : IsOneOf(conversion, "xX") ? 16 : 10;
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, static_cast<std::uint64_t>(size), base);
    return {buffer, written.ptr};
}

std::string RealDigits(double size, char conversion, int precision) {
    // 309 digits before the point.
    char buffer[512];
    const auto format = IsOneOf(conversion, "fF")   ? std::chars_format::fixed
                        : IsOneOf(conversion, "eE") ? std::chars_format::scientific
                                                    : std::chars_format::general;
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, size, format, precision);
    return {buffer, written.ptr};
}

}  // namespace

std::optional<NumberFormat> NumberFormat::Parse(std::string_view pattern) {
    NumberFormat format;
    const auto before = TakeText(pattern);
    if (!before || pattern.empty())
        return std::nullopt;
    format.fBefore = *before;
    for (pattern.remove_prefix(1); !pattern.empty() && IsOneOf(pattern.front(), "-+ 0#"); pattern.remove_prefix(1)) {
        format.fIsLeft = format.fIsLeft || pattern.front() == '-';
        format.fHasPlus = format.fHasPlus || pattern.front() == '+';
        format.fHasBlank = format.fHasBlank || pattern.front() == ' ';
        format.fHasZeros = format.fHasZeros || pattern.front() == '0';
        format.fHasPrefix = format.fHasPrefix || pattern.front() == '#';
    }
    const auto width = TakeNumber(pattern);
    bool isGood = width.has_value();
    format.fWidth = width.value_or(0);
    if (isGood && pattern.starts_with('.')) {
        pattern.remove_prefix(1);
        format.fPrecision = TakeNumber(pattern);
        isGood = format.fPrecision.has_value();
    }
    while (!pattern.empty() && IsOneOf(pattern.front(), "hlLqjzt"))
        pattern.remove_prefix(1);
    if (!isGood || pattern.empty() || !IsOneOf(pattern.front(), "diuoxXfFeEgG"))
        return std::nullopt;
    format.fConversion = pattern.front();
    pattern.remove_prefix(1);
    const auto after = TakeText(pattern);
    if (!after || !pattern.empty() || (format.fHasPrefix && !IsOneOf(format.fConversion, kPrefixConversions)))
        return std::nullopt;
    format.fAfter = *after;
    return format;
}

std::string NumberFormat::Digits(double size) const {
    if (!IsOneOf(fConversion, kWholeConversions)) {
        std::string digits = RealDigits(size, fConversion, fPrecision.value_or(6));
        return IsOneOf(fConversion, "FEG") ? UpperAscii(std::move(digits)) : digits;
    }
    std::string digits = size == 0.0 && fPrecision == 0 ? std::string() : WholeDigits(size, fConversion);
    const auto fewest = static_cast<std::size_t>(fPrecision.value_or(1));
    if (digits.size() < fewest)
        digits.insert(0, fewest - digits.size(), '0');
    if (fHasPrefix && fConversion == 'o' && !digits.starts_with('0'))
        digits.insert(digits.begin(), '0');
    return fConversion == 'X' ? UpperAscii(std::move(digits)) : digits;
}

std::optional<std::string> NumberFormat::Format(double number) const {
    const bool isWhole = IsOneOf(fConversion, kWholeConversions);
    const bool isUnsigned = IsOneOf(fConversion, kUnsignedConversions);
    if (isWhole)
        number = RoundHalfUp(number);
    if (!std::isfinite(number) || (isWhole && std::fabs(number) >= 0x1p63) || (isUnsigned && number < 0.0))
        return std::nullopt;
    // A whole number has no negative zero.
    const bool isNegative = isWhole ? number < 0.0 : std::signbit(number);
    std::string head;
    if (isNegative)
        head += '-';
    else if (!isUnsigned && (fHasPlus || fHasBlank))
        head += fHasPlus ? '+' : ' ';
    if (fHasPrefix && fConversion != 'o' && number != 0.0)
        head += fConversion == 'X' ? "0X" : "0x";
    const std::string digits = Digits(std::fabs(number));
    const std::size_t length = head.size() + digits.size();
    const auto width = static_cast<std::size_t>(fWidth);
    const std::size_t padding = length < width ? width - length : 0;
    if (fIsLeft)
        return fBefore + head + digits + std::string(padding, ' ') + fAfter;
    if (fHasZeros && !(isWhole && fPrecision))
        return fBefore + head + std::string(padding, '0') + digits + fAfter;
    return fBefore + std::string(padding, ' ') + head + digits + fAfter;
}

}  // namespace KwBrevix_930
