// Where the cells of plain rows end.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string_view>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace brevix {

/// Goes from one character that ends a cell, or may, to the next: separators, quotes and both characters of line ends.
/// Looks at 64 characters at a time.
class CellMarks {
public:
    /// text: must outlive this object.
    CellMarks(std::string_view text, char separator)
        : fText(text), fSeparator(separator), fMarks(look(text, separator)) {}

    /// Returns: the place of the next one; the text's size behind the last.
    std::size_t next() {
        while (fMarks == 0) {
            fFirst += kAtOnce;
            if (fFirst >= fText.size())
                return fText.size();
            fMarks = look(fText.substr(fFirst), fSeparator);
        }
        const auto place = static_cast<std::size_t>(std::countr_zero(fMarks));
        fMarks &= fMarks - 1;
        return fFirst + place;
    }

private:
    static constexpr std::size_t kAtOnce = 64;

    // Of the first characters of a text. Not of this object, which then need not be in memory.
    [[gnu::noinline]] static std::uint64_t look(std::string_view text, char separator) {
        if (text.size() >= kAtOnce)
            return find(text.data(), separator);
        char last[kAtOnce] = {};
        std::copy(text.begin(), text.end(), last);
        return find(last, separator);
    }

#if defined(__SSE2__)
    static std::uint64_t find(const char* text, char mark) {
        const __m128i separator = _mm_set1_epi8(mark);
        const __m128i quote = _mm_set1_epi8('"');
        const __m128i carriageReturn = _mm_set1_epi8('\r');
        const __m128i lineFeed = _mm_set1_epi8('\n');
        std::uint64_t marks = 0;
        for (std::size_t i = 0; i < kAtOnce; i += 16) {
            const __m128i some = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
            const __m128i cells = _mm_or_si128(_mm_cmpeq_epi8(some, separator), _mm_cmpeq_epi8(some, quote));
            const __m128i lines = _mm_or_si128(_mm_cmpeq_epi8(some, carriageReturn), _mm_cmpeq_epi8(some, lineFeed));
            marks |= std::uint64_t{static_cast<std::uint16_t>(_mm_movemask_epi8(_mm_or_si128(cells, lines)))} << i;
        }
        return marks;
    }
#else
    static std::uint64_t find(const char* text, char separator) {
        std::uint64_t marks = 0;
        for (std::size_t i = 0; i < kAtOnce; ++i) {
            const char c = text[i];
            marks |= std::uint64_t{c == separator || c == '"' || c == '\r' || c == '\n'} << i;
        }
        return marks;
    }
#endif

    std::string_view fText;
    char fSeparator;
    std::size_t fFirst = 0;
    std::uint64_t fMarks;
};

}  // namespace brevix
