// A source's text, piece by piece.
#pragma once

#include <string_view>
#include <vector>

#include "runtime/ByteSource.h"

namespace brevix {

/// A source's text in pieces of at most 64 KiB, without a byte order mark at its start.
class TextChunks {
public:
    /// source: must outlive this object.
    explicit TextChunks(ByteSource& source);

    /// Returns: the next piece, valid until the next call; empty at the end.
    /// Fails: Error for a text that starts as UTF-16 does.
    std::string_view next();

private:
    std::string_view first();

    ByteSource& fSource;
    std::vector<char> fBuffer;
    bool fIsFirst = true;
};

}  // namespace brevix
