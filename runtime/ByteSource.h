// Where bytes come from.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace brevix {

class ByteSource {
public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    virtual ~ByteSource() = default;

    /// Waits for the next bytes, at least one and no more than most. Returns: how many; 0 at the end.
    /// Fails: Error that names the source.
    virtual std::size_t read(char* target, std::size_t most) = 0;
    /// Returns: what messages call this source.
    virtual const std::string& getName() const = 0;
};

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
