// A text as a source of bytes, handed out in pieces of any length.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>

#include "runtime/ByteSource.h"

namespace test_support {

class TextSource : public brevix::ByteSource {
public:
    explicit TextSource(std::string text, std::size_t pieceSize = 1 << 20)
        : fText(std::move(text)), fPieceSize(pieceSize) {}

    std::size_t read(char* target, std::size_t most) override {
        const std::size_t count = std::min({most, fPieceSize, fText.size() - fPlace});
        std::memcpy(target, fText.data() + fPlace, count);
        fPlace += count;
        return count;
    }
    const std::string& getName() const override { return fName; }

private:
    std::string fText;
    std::size_t fPieceSize;
    std::size_t fPlace = 0;
    std::string fName = "cases.csv";
};

/// Bytes without end: a start, then a pattern again and again.
class EndlessSource : public brevix::ByteSource {
public:
    EndlessSource(std::string start, std::string pattern) : fStart(std::move(start)), fPattern(std::move(pattern)) {}

    std::size_t read(char* target, std::size_t most) override {
        for (std::size_t i = 0; i < most; ++i, ++fPlace)
            target[i] = fPlace < fStart.size() ? fStart[fPlace] : fPattern[(fPlace - fStart.size()) % fPattern.size()];
        return most;
    }
    const std::string& getName() const override { return fName; }
    std::size_t getReadCount() const { return fPlace; }

private:
    std::string fStart;
    std::string fPattern;
    std::size_t fPlace = 0;
    std::string fName = "endless";
};

}  // namespace test_support
