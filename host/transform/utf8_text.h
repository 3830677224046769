// Characters of UTF-8 texts. A byte that belongs to no character counts as one by itself.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace KwBrevix_930 {

std::size_t CountCharacters(std::string_view text);

/// Returns: the characters from one on, counted from 0, as many as there are and at most so many.
std::string_view CharactersFrom(std::string_view text, std::size_t first, std::size_t count);

/// The letters of ASCII, Latin-1, Latin Extended-A, Greek and Cyrillic in the other case; all others stay as they are,
/// and so do letters whose other case is not a single letter of these.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);

}  // namespace KwBrevix_930
