#include "core/macroman.h"

#include <set>

#include <gmock/gmock.h>

using testing::Eq;
using testing::Optional;

TEST(MacRoman, EveryCodeHasACharacterOfItsOwnAndComesBack) {
    std::set<char16_t> seen;
    for (int code = 0; code < 256; ++code) {
        const char16_t unit = vm::MacRomanToUnicode(static_cast<unsigned char>(code));
        EXPECT_TRUE(seen.insert(unit).second) << code;
        EXPECT_THAT(vm::UnicodeToMacRoman(unit), Optional(Eq(code)));
    }
}

TEST(MacRoman, KnownCharacters) {
    EXPECT_EQ(vm::FromMacRoman("A\x8A\x9F\xA5\xAA\xC9\xD1\xDB\xF5\xFF"),
              u"A\u00E4\u00FC\u2022\u2122\u2026\u2014\u20AC\u0131\u02C7"_qs);
    EXPECT_EQ(vm::UnicodeToMacRoman(u'\u0416'), std::nullopt);
    EXPECT_EQ(vm::UnicodeToMacRoman(u'\u0080'), std::nullopt);
    EXPECT_EQ(vm::UnicodeToMacRoman(u'\uFFFF'), std::nullopt);
}

TEST(MacRoman, StrictFailsWhereLossyWritesAQuestionMark) {
    const QString good = u"Gr\u00FC\u00DFe"_qs;
    EXPECT_THAT(vm::ToMacRoman(good), Optional(Eq("Gr\x9F\xA7"
                                                  "e")));
    EXPECT_EQ(vm::ToMacRomanLossy(good), "Gr\x9F\xA7"
                                         "e");
    const QString bad = u"a\u0416\U0001F3B9z"_qs;
    EXPECT_EQ(vm::ToMacRoman(bad), std::nullopt);
    EXPECT_EQ(vm::ToMacRomanLossy(bad), "a??z"); // one for a surrogate pair
    EXPECT_EQ(vm::ToMacRomanLossy(QString(QChar(0xD83C)) + u'z'), "?z");
}

TEST(MacRoman, AsciiIsSevenBitsAndKeepsNul) {
    const std::string text("a\0\x7F", 3);
    const auto decoded = vm::FromAscii(text);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->size(), 3);
    EXPECT_THAT(vm::ToAscii(*decoded), Optional(Eq(text)));
    EXPECT_EQ(vm::FromAscii("a\x80"), std::nullopt);
    EXPECT_EQ(vm::ToAscii(u"a\u0080"_qs), std::nullopt);
}
