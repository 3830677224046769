// UTF-16 to UTF-8 and back.
#include "host/BrevixTranscoder.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using KwBrevix_930::BrevixTranscoder;
using Wide = std::basic_string<XMLCh>;

const BrevixTranscoder kUtf8Transcoder;
const std::string kReplacementCharacter = "\xEF\xBF\xBD";

std::string Narrow(const Wide& text) {
    return kUtf8Transcoder.ToNarrow(text.c_str());
}

TEST(BrevixTranscoder, WritesOneToFourBytes) {
    EXPECT_EQ(Narrow({0x01, 0x41, 0x7F}), "\x01\x41\x7F");
    EXPECT_EQ(Narrow({0x80, 0xE9, 0x7FF}), "\xC2\x80\xC3\xA9\xDF\xBF");
    EXPECT_EQ(Narrow({0x800, 0x20AC, 0xD7FF, 0xE000, 0xFFFF}),
              "\xE0\xA0\x80\xE2\x82\xAC\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF");
    EXPECT_EQ(Narrow({0xD800, 0xDC00, 0xD83D, 0xDE00, 0xDBFF, 0xDFFF}),
              "\xF0\x90\x80\x80\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF");
}

TEST(BrevixTranscoder, ReadsOneToFourBytes) {
    EXPECT_EQ(kUtf8Transcoder.ToWide("A\x7F"), (Wide{0x41, 0x7F}));
    EXPECT_EQ(kUtf8Transcoder.ToWide("\xC2\x80\xDF\xBF"), (Wide{0x80, 0x7FF}));
    EXPECT_EQ(kUtf8Transcoder.ToWide("\xE0\xA0\x80\xEF\xBF\xBF"), (Wide{0x800, 0xFFFF}));
    EXPECT_EQ(kUtf8Transcoder.ToWide("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"), (Wide{0xD800, 0xDC00, 0xDBFF, 0xDFFF}));
}

TEST(BrevixTranscoder, TakesNullAndEmptyForEmpty) {
    EXPECT_EQ(kUtf8Transcoder.ToNarrow(nullptr), "");
    EXPECT_EQ(Narrow({}), "");
    EXPECT_EQ(kUtf8Transcoder.ToWide(""), Wide());
    EXPECT_EQ(kUtf8Transcoder.ToWide(std::string_view()), Wide());
}

TEST(BrevixTranscoder, ReplacesALoneSurrogate) {
    EXPECT_EQ(Narrow({0x41, 0xD83D}), "A" + kReplacementCharacter);
    EXPECT_EQ(Narrow({0xD83D, 0x42}), kReplacementCharacter + "B");
    EXPECT_EQ(Narrow({0xDE00, 0x43}), kReplacementCharacter + "C");
    EXPECT_EQ(Narrow({0xDE00, 0xD83D}), kReplacementCharacter + kReplacementCharacter);
    EXPECT_EQ(Narrow({0xD83D, 0xD83D, 0xDE00}), kReplacementCharacter + "\xF0\x9F\x98\x80");
}

TEST(BrevixTranscoder, ReplacesEachByteThatIsNoCharacter) {
    const auto expectReplaced = [](std::string_view text, std::size_t count) {
        const Wide wide = kUtf8Transcoder.ToWide(std::string(text) + "z");
        EXPECT_EQ(wide, Wide(count, 0xFFFD) + static_cast<XMLCh>('z')) << testing::PrintToString(text);
    };
    expectReplaced("\x80", 1);
    expectReplaced("\xBF\xBF", 2);
    expectReplaced("\xC3", 1);
    expectReplaced("\xE2\x82", 2);
    expectReplaced("\xF0\x9F\x98", 3);
    expectReplaced("\xF5\x80\x80\x80", 4);
    expectReplaced("\xFE", 1);
    expectReplaced("\xFF", 1);
}

TEST(BrevixTranscoder, ReplacesOverlongFormsSurrogatesAndWhatLiesBeyondUnicode) {
    for (const char* text : {"\xC0\x80", "\xC1\xBF"})
        EXPECT_EQ(kUtf8Transcoder.ToWide(text), Wide(2, 0xFFFD));
    for (const char* text : {"\xE0\x80\x80", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF"})
        EXPECT_EQ(kUtf8Transcoder.ToWide(text), Wide(3, 0xFFFD));
    for (const char* text : {"\xF0\x80\x80\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80"})
        EXPECT_EQ(kUtf8Transcoder.ToWide(text), Wide(4, 0xFFFD));
}

TEST(BrevixTranscoder, ReplacesAnUnfinishedCharacterAtTheEnd) {
    EXPECT_EQ(kUtf8Transcoder.ToWide("a\xE2\x82"), (Wide{'a', 0xFFFD, 0xFFFD}));
    EXPECT_EQ(kUtf8Transcoder.ToWide(std::string_view("\xF0\x9F\x98\x80", 3)), Wide(3, 0xFFFD));
}

TEST(BrevixTranscoder, EveryCharacterComesBack) {
    for (std::uint32_t point = 1; point < 0x110000; ++point) {
        if (point >= 0xD800 && point < 0xE000)
            continue;
        Wide wide;
        if (point >= 0x10000) {
            wide += static_cast<XMLCh>(0xD800 + ((point - 0x10000) >> 10));
            wide += static_cast<XMLCh>(0xDC00 + (point & 0x3FF));
        } else {
            wide += static_cast<XMLCh>(point);
        }
        ASSERT_EQ(kUtf8Transcoder.ToWide(kUtf8Transcoder.ToNarrow(wide.c_str())), wide) << point;
    }
}

TEST(BrevixTranscoder, ReadsAnyBytesWithoutFailing) {
    std::mt19937 random(5);
    for (int i = 0; i < 20'000; ++i) {
        std::string bytes(random() % 12, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(0x70 + random() % 0x90);
        const std::string once = kUtf8Transcoder.ToNarrow(kUtf8Transcoder.ToWide(bytes).c_str());
        ASSERT_EQ(kUtf8Transcoder.ToNarrow(kUtf8Transcoder.ToWide(once).c_str()), once);
    }
}

}  // namespace
