#include <vmcore/gdi/CFont.h>

#include <filesystem>

#include <gmock/gmock.h>

#include "core/macroman.h"
#include "platform/FontFace.h"
#include "platform/fontResolver.h"

namespace {

std::string FileFor(const char* name) {
    const auto path = vm::FindFontFile(name);
    return path ? std::filesystem::path(*path).filename().string() : "none";
}

} // namespace

TEST(FontResolver, SplitsStyleWordsOffTheEnd) {
    const struct {
        const char* name;
        vm::FaceStyle style;
    } cases[] = {
        {"Arial", {"Arial"}},
        {"Arial Bold Italic", {.family = "Arial", .bold = true, .italic = true}},
        {"verdana OBLIQUE", {.family = "verdana", .italic = true}},
        {"Arial Narrow", {.family = "Arial", .narrow = true}},
        {"Arial Black", {.family = "Arial", .black = true}},
        {"Arial-Bold", {.family = "Arial", .bold = true}},
        {"Bold", {"Bold"}},
        {"Bold Sans", {"Bold Sans"}},
    };
    for (const auto& c : cases) EXPECT_EQ(vm::SplitFaceName(c.name), c.style) << c.name;
}

TEST(FontResolver, FindsInstalledFacesAndStandIns) {
    const struct {
        const char* name;
        const char* file;
    } cases[] = {
        {"Liberation Sans", "LiberationSans-Regular.ttf"},
        {"LIBERATION SANS", "LiberationSans-Regular.ttf"},
        {"Liberation Sans Bold Italic", "LiberationSans-BoldItalic.ttf"},
        {"LiberationMono-Bold", "LiberationMono-Bold.ttf"}, // the PostScript name
        {"Arial", "LiberationSans-Regular.ttf"},
        {"Arial Bold", "LiberationSans-Bold.ttf"},
        {"Arial Black", "LiberationSans-Bold.ttf"},
        {"Arial Italic", "LiberationSans-Italic.ttf"},
        {"Times New Roman", "LiberationSerif-Regular.ttf"},
        {"Courier New Bold", "LiberationMono-Bold.ttf"},
        {"Verdana", "DejaVuSans.ttf"},
        {"verdana bold", "DejaVuSans-Bold.ttf"},
        {"Tahoma", "DejaVuSans.ttf"},
        {"Lucida Grande Bold", "DejaVuSans-Bold.ttf"},
        {"No Such Face", "none"},
        {"No Such Face Bold", "none"},
        {"", "none"},
    };
    for (const auto& c : cases) EXPECT_EQ(FileFor(c.name), c.file) << c.name;
}

TEST(FontFace, MetricsAreThoseOfTheFontsTables) {
    const vm::FontFace* arial = vm::FontFace::Find("Arial", 12);
    ASSERT_TRUE(arial);
    EXPECT_NEAR(arial->Metrics().ascender, 10.863, 0.001);
    EXPECT_NEAR(arial->Metrics().descender, -2.543, 0.001);
    EXPECT_NEAR(arial->Metrics().leading, 0.393, 0.001);
    EXPECT_NEAR(arial->Metrics().capHeight, 8.256, 0.001);
    const vm::FontFace* verdana = vm::FontFace::Find("Verdana", 12);
    ASSERT_TRUE(verdana);
    EXPECT_NEAR(verdana->Metrics().ascender, 11.139, 0.001);
    EXPECT_NEAR(verdana->Metrics().descender, -2.830, 0.001);
    EXPECT_NEAR(verdana->Metrics().capHeight, 8.75, 0.3); // its outline: the table has none
}

TEST(FontFace, IsOneRecordForANameAndSize) {
    EXPECT_EQ(vm::FontFace::Find("ARIAL", 12), vm::FontFace::Find("arial", 12));
    EXPECT_EQ(vm::FontFace::Find("", 0), vm::FontFace::Find("Arial", 12));
    EXPECT_NE(vm::FontFace::Find("Arial", 13), vm::FontFace::Find("Arial", 12));
    EXPECT_EQ(vm::FontFace::Find("No Such Face", 12), nullptr);
}

TEST(FontFace, WidthIsTheSumOfUnhintedAdvances) {
    const vm::FontFace* mono = vm::FontFace::Find("Courier New", 10);
    ASSERT_TRUE(mono);
    EXPECT_NEAR(mono->Width("0123456789"), 60.01, 0.2);
    EXPECT_EQ(mono->Width(""), 0);
    EXPECT_EQ(mono->Glyph('\n'), vm::FontFace::kNoGlyph);
}

TEST(RomanTable, KnownCodes) {
    EXPECT_EQ(vm::MacRomanToUnicode('A'), u'A');
    EXPECT_EQ(vm::MacRomanToUnicode(0x80), u'\u00C4');
    EXPECT_EQ(vm::MacRomanToUnicode(0x8E), u'\u00E9');
    EXPECT_EQ(vm::MacRomanToUnicode(0xA5), u'\u2022');
    EXPECT_EQ(vm::MacRomanToUnicode(0xDB), u'\u20AC');
    EXPECT_EQ(vm::MacRomanToUnicode(0xFF), u'\u02C7');
}

TEST(Font, RecordsOfTheCreatingCalls) {
    CFont font;
    tagLOGFONT record{};
    EXPECT_FALSE(font.GetLogFont(&record));
    EXPECT_TRUE(font.CreatePointFont(-125, "Verdana"));
    EXPECT_TRUE(font.GetLogFont(&record));
    EXPECT_EQ(record.lfHeight, 12);
    EXPECT_EQ(record.lfWidth, 8);
    EXPECT_EQ(record.lfWeight, 500);
    EXPECT_EQ(record.lfQuality, 0xE8);
    EXPECT_FALSE(font.CreateFont(9, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "No Such Face"));
    EXPECT_TRUE(font.GetLogFont(&record));
    EXPECT_EQ(record.lfHeight, 9);
    EXPECT_FALSE(font.CreateFont(9, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                                 "A face name that is longer than its thirty-two bytes"));
    EXPECT_TRUE(font.GetLogFont(&record));
    EXPECT_STREQ(record.lfFaceName, "A face name that is longer than");
}

TEST(Font, IsFilledFromAPlatformFont) {
    CFont font;
    tagLOGFONT record{};
    EXPECT_FALSE(font.SetNSFont(&record, nullptr));
    EXPECT_TRUE(font.SetNSFont(&record, vm::FontFace::Find("Arial Italic", 14)));
    EXPECT_EQ(record.lfHeight, 14);
    EXPECT_NE(record.lfItalic, 0);
    EXPECT_STREQ(record.lfFaceName, "Arial Italic");
    tagLOGFONT kept{};
    EXPECT_TRUE(font.GetLogFont(&kept));
    EXPECT_STREQ(kept.lfFaceName, "Arial Italic");
}
