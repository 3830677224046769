// Numbers as texts by a pattern of the C function printf, the same under every locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace KwBrevix_930 {

/// A pattern that holds exactly one conversion: %[flags][width][.precision][length]{d i u o x X f F e E g G}, beside
/// text and %%. Flags are - + blank 0 and, for o, x and X, #; width and precision at most kWidthLimit; lengths mean
/// nothing.
class NumberFormat {
public:
    static constexpr int kWidthLimit = 100;

    /// Returns: nothing for any other pattern.
    static std::optional<NumberFormat> Parse(std::string_view pattern);

    /// Returns: the text; nothing for a number that the conversion cannot show: one that is not finite, a negative one
    /// for u, o, x and X, and one beyond 2^63 for these and for d and i.
    /// Note: for conversions of whole numbers the number is rounded as a cast to integer rounds it.
    std::optional<std::string> Format(double number) const;

private:
    std::string Digits(double size) const;

    std::string fBefore;
    std::string fAfter;
    bool fIsLeft = false;
    bool fHasPlus = false;
    bool fHasBlank = false;
    bool fHasZeros = false;
    bool fHasPrefix = false;
    int fWidth = 0;
    std::optional<int> fPrecision;
    char fConversion = 'd';
};

}  // namespace KwBrevix_930
