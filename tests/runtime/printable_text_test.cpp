// Text from strangers, made safe for a terminal.
#include "runtime/printable_text.h"

#include <gtest/gtest.h>

namespace {

using brevix::printableText;

TEST(PrintableText, PlainTextStaysAsItIs) {
    EXPECT_EQ(printableText("model.pmml: the field 'très foncé' ☃ \xF0\x9F\x8D\xB7"),
              "model.pmml: the field 'très foncé' ☃ \xF0\x9F\x8D\xB7");
}

TEST(PrintableText, ControlCharactersAreEscaped) {
    EXPECT_EQ(printableText("a\nb\r\tc\x1b[31m\x7f"), "a\\nb\\r\\tc\\x1b[31m\\x7f");
    EXPECT_EQ(printableText(std::string_view("a\0b", 3)), "a\\x00b");
    EXPECT_EQ(printableText("\xC2\x9B"
                            "31m"),
              "\\x9b31m");
}

TEST(PrintableText, MarksThatTurnTheWritingAreEscaped) {
    EXPECT_EQ(printableText("a\xE2\x80\xAE"
                            "b\xE2\x81\xA6"
                            "c\xE2\x80\xA8"),
              "a\\u202eb\\u2066c\\u2028");
}

TEST(PrintableText, BytesThatAreNotUtf8AreEscaped) {
    EXPECT_EQ(printableText("tr\xE8s"), "tr\\xe8s");
    EXPECT_EQ(printableText("\xC0\x80|\xED\xA0\x80|\xF5\x80\x80\x80|\xE2\x82"),
              "\\xc0\\x80|\\xed\\xa0\\x80|\\xf5\\x80\\x80\\x80|\\xe2\\x82");
}

TEST(PrintableText, EndlessTextIsCut) {
    EXPECT_LT(printableText(std::string(10 << 20, 'a')).size(), (1u << 20) + 100);
}

}  // namespace
