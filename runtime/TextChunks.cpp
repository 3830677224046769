// A source's text, piece by piece.
#include "runtime/TextChunks.h"

#include "runtime/Error.h"

namespace brevix {

namespace {

constexpr std::size_t kChunkSize = 64 * 1024;

}  // namespace

TextChunks::TextChunks(ByteSource& source) : fSource(source), fBuffer(kChunkSize) {}

std::string_view TextChunks::next() {
    if (fIsFirst) {
        fIsFirst = false;
        const std::string_view text = first();
        if (!text.empty())
            return text;
    }
    return {fBuffer.data(), fSource.read(fBuffer.data(), fBuffer.size())};
}

// Enough bytes to see a byte order mark.
std::string_view TextChunks::first() {
    std::size_t length = 0;
    while (length < 3) {
        const std::size_t count = fSource.read(fBuffer.data() + length, fBuffer.size() - length);
        if (count == 0)
            break;
        length += count;
    }
    const std::string_view text(fBuffer.data(), length);
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"))
        throw Error(fSource.getName() + ": the table is UTF-16, but it must be UTF-8");
    return text.starts_with("\xEF\xBB\xBF") ? text.substr(3) : text;
}

}  // namespace brevix
