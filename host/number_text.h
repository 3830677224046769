// Numbers from text and back, the same under every locale.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "host/Export.h"

namespace KwBrevix_930 {

/// The number at the start of a text, with the meaning that the C function atof has in the C locale: leading white
/// space is skipped; decimal and hexadecimal numbers, inf and nan are known; the rest of the text does not matter.
/// Returns: the number; 0.0 for a text that starts with none; an infinity on overflow; a zero on underflow.
BREVIX_HOST_API double LeadingNumber(std::string_view text);

/// A whole text as a number: white space around it is ignored, anything else beside the number is refused, hexadecimal
/// too. Overflow gives an infinity, underflow a zero; inf, INF, -INF and NaN are numbers.
/// Returns: the number, or nothing when the text is no number.
BREVIX_HOST_API std::optional<double> ParseNumber(std::string_view text);

/// Returns: the truth that a text is: true or false, in letters of either case and without white space around it;
/// nothing for another text.
BREVIX_HOST_API std::optional<bool> ParseTruth(std::string_view text);

/// Returns: the shortest decimal text that reads back to the same double; nan, inf or -inf when it is not finite.
BREVIX_HOST_API std::string NumberText(double value);
/// Appends the same text.
BREVIX_HOST_API void AppendNumber(std::string& text, double value);

/// Writes the same text, of at most 32 characters and without a zero byte.
/// Returns: its end.
BREVIX_HOST_API char* WriteNumber(char* text, double value);

/// Returns: the number, behind as much padding as makes it that wide.
std::string PaddedNumber(int number, std::size_t width, char padding = '0');

}  // namespace KwBrevix_930
