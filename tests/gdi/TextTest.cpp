#include <vmcore/gdi/CDC.h>

#include <gmock/gmock.h>

#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CFont.h>
#include <vmcore/gdi/syscolors.h>

#include "gdi/Canvas.h"
#include "gdi/faceRules.h"

using testing::ElementsAre;

namespace {

CFont& MakeFont(CFont& font, const char* face, int height, int width = 0) {
    EXPECT_TRUE(font.CreateFont(height, width, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, face)) << face;
    return font;
}

// Metrics with round numbers.
constexpr vm::FontMetrics kMetrics{.ascender = 10.75,
                                   .descender = -2.5,
                                   .leading = 0.5,
                                   .capHeight = 8,
                                   .maxAdvance = 13,
                                   .italicAngle = 0,
                                   .underlineThickness = 1};

} // namespace

TEST(FaceRules, NumberOfAFace) {
    const struct {
        const char* name;
        int number;
    } cases[] = {{"Arial", 2001},
                 {"ARIAL BOLD", 2002},
                 {"Arial Black", 2001},
                 {"Verdana Bold", 7204},
                 {"verdana", 7203},
                 {"Verdana Bold Italic", 7203},
                 {"Aria", 0},
                 {"Helvetica", 0},
                 {"", 0}};
    for (const auto& c : cases) EXPECT_EQ(vm::FaceNumberOf(c.name), c.number) << c.name;
}

TEST(FaceRules, CorrectionsOfTwoFaces) {
    const struct {
        int face, ascender, moved;
    } cases[] = {{7203, 11, 0}, {7203, 12, -1}, {7203, 13, -1}, {7203, 14, 0}, {7204, 12, 0},
                 {2002, 8, 0},  {2002, 9, 1},   {2002, 10, 1},  {2002, 11, 0}, {2001, 9, 0}};
    for (const auto& c : cases) {
        int y = 50;
        CDC::TextAdjustY(y, c.face, c.ascender);
        EXPECT_EQ(y - 50, c.moved) << "face " << c.face << " ascender " << c.ascender;
    }
}

TEST(FaceRules, Alignment) {
    EXPECT_EQ(vm::AlignedX(100, 40, TA_CENTER), 80);
    EXPECT_EQ(vm::AlignedX(100, 41, TA_CENTER | TA_RIGHT), 80); // centring wins
    EXPECT_EQ(vm::AlignedX(100, 40, TA_RIGHT), 59);
    EXPECT_EQ(vm::AlignedX(100, 40, 14), 100);
    EXPECT_EQ(vm::AlignedY(20, kMetrics, 14), 30.75);
    EXPECT_EQ(vm::AlignedY(20, kMetrics, TA_TOP | TA_BOTTOM), 30.75);
    EXPECT_EQ(vm::AlignedY(20, kMetrics, TA_BOTTOM), 17.5);
    EXPECT_EQ(vm::AlignedY(20, kMetrics, TA_BASELINE), 20);
}

TEST(FaceRules, PlaceInTheRectangleOfDrawText) {
    const tagRECT rect{10, 20, 61, 40};
    EXPECT_EQ(vm::DrawTextX(rect, 30, DT_LEFT), 10);
    EXPECT_EQ(vm::DrawTextX(rect, 31, DT_CENTER), 20); // both halves rounded down
    EXPECT_EQ(vm::DrawTextX(rect, 30, DT_RIGHT | DT_CENTER), 30);
    EXPECT_EQ(vm::DrawTextY(rect, kMetrics, 0, DT_TOP), 30.75);
    EXPECT_EQ(vm::DrawTextY(rect, kMetrics, 0, DT_BOTTOM), 37);
    EXPECT_EQ(vm::DrawTextY(rect, kMetrics, 2002, DT_BOTTOM), 38); // the face's correction
    EXPECT_EQ(vm::DrawTextY(rect, kMetrics, 2002, DT_VCENTER), 33);
}

TEST(FaceRules, LinesEndAtLineCharactersAndWhereWordsNoLongerFit) {
    const vm::FontFace* const mono = vm::FontFace::Find("Courier New", 10); // 6 pixels a character
    const auto split = [&](std::string_view text, unsigned int format = DT_MULTILINE,
                           double room = 31) {
        vm::TextLines lines(text, format, mono, room);
        std::vector<std::string> all;
        for (std::string_view line; lines.Next(line);) all.emplace_back(line);
        return all;
    };
    EXPECT_THAT(split("ab"), ElementsAre("ab"));
    EXPECT_THAT(split("a\nb\rc"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(split("a\r\nb"), ElementsAre("a", "", "b"));
    EXPECT_THAT(split(std::string_view("a\0b", 3)), ElementsAre("a", "b"));
    EXPECT_THAT(split("\n"), ElementsAre("", ""));
    EXPECT_THAT(split("a\nbc de fg hi", 0), ElementsAre("a\nbc de fg hi"));
    const auto wrap = [&](std::string_view text, double room = 31) {
        return split(text, DT_WORDBREAK, room);
    };
    EXPECT_THAT(wrap("ab cd ef"), ElementsAre("ab cd", "ef"));
    EXPECT_THAT(wrap("ab   cdef gh\ni"), ElementsAre("ab", "cdef", "gh", "i"));
    EXPECT_THAT(wrap("overlong ab"), ElementsAre("overlong", "ab"));
    EXPECT_THAT(wrap("  ab", 1), ElementsAre("  ab"));
    EXPECT_THAT(wrap("abcde  \nf"), ElementsAre("abcde  ", "f"));
    EXPECT_THAT(wrap("", 0), ElementsAre(""));
}

TEST(TextExtent, IsEstimatedFromTheRecord) {
    CDC dc;
    EXPECT_EQ(dc.GetTextExtent("abc", 99).cx, 36);
    EXPECT_EQ(dc.GetTextExtent("abc", 3).cy, 12);
    LogCapture log;
    CFont narrow, wide;
    dc.SelectObject(&MakeFont(narrow, "Arial", 12));
    EXPECT_EQ(dc.GetTextExtent("abc", 3).cx, 22);
    EXPECT_EQ(dc.GetTextExtent(CString("abc")).cy, 12);
    dc.SelectObject(&MakeFont(wide, "Arial", -14, -5));
    EXPECT_EQ(dc.GetTextExtent("abc", 4).cx, 20);
    EXPECT_THAT(log.TakeLog(), testing::Each("exception at CDC::ApplyFont() - NullContext"));
}

TEST(TextOut, EmptyTextDrawsNothing) {
    Canvas canvas(20, 20);
    EXPECT_FALSE(canvas.dc.TextOut(0, 0, "", 0));
    EXPECT_FALSE(canvas.dc.TextOut(0, 0, nullptr, 5));
    EXPECT_EQ(Inked(canvas.Pixels()), "nothing");
}

TEST(TextOut, AlignsAtTheMeasuredWidth) {
    const struct {
        unsigned int align;
        int shift;
    } cases[] = {{14, 0}, {TA_TOP | TA_CENTER, -1}, {TA_TOP | TA_RIGHT, -2}};
    CFont font;
    MakeFont(font, "Arial", 12);
    QImage plain;
    for (const auto& c : cases) {
        Canvas canvas(120, 20);
        canvas.dc.SelectObject(&font);
        canvas.dc.SetTextAlign(c.align);
        const int width = canvas.dc.TextWidth(canvas.dc.GetSafeHdc(), "Hxlgh", -1);
        EXPECT_GT(width, 20);
        const int shift = c.shift == 0 ? 0 : c.shift == -1 ? -(width / 2) : -width - 1;
        EXPECT_TRUE(canvas.dc.TextOut(50 - shift, 2, "Hxlgh", 0)); // lands where the plain one does
        if (plain.isNull()) plain = canvas.Pixels();
        EXPECT_NE(Inked(plain), "nothing");
        EXPECT_EQ(canvas.Pixels(), plain) << "alignment " << c.align;
    }
}

TEST(TextOut, TopBottomAndBaselineAreTheFontsOwn) {
    CFont font;
    MakeFont(font, "Arial", 12); // ascender 10.86, descender -2.54
    const struct {
        unsigned int align;
        int bottom; // of a letter that stands on the baseline
    } cases[] = {{TA_TOP, 31}, {TA_BASELINE, 20}, {TA_BOTTOM, 17}};
    for (const auto& c : cases) {
        Canvas canvas(30, 40);
        canvas.dc.SelectObject(&font);
        canvas.dc.SetTextAlign(c.align);
        canvas.dc.TextOut(10, 20, "H", 1);
        const std::string box = Inked(canvas.Pixels());
        EXPECT_EQ(box.substr(box.rfind(',') + 1), std::to_string(c.bottom)) << c.align;
    }
}

TEST(TextOut, UpdatesTheCurrentPositionOnRequest) {
    Canvas canvas(80, 20);
    CFont font;
    canvas.dc.SelectObject(&MakeFont(font, "Arial", 12));
    canvas.dc.SetTextAlign(TA_TOP | TA_UPDATECP);
    canvas.dc.MoveTo(5, 1);
    canvas.dc.TextOut(40, 15, "ab", 2);
    canvas.dc.TextOut(70, 15, "c", 1);
    Canvas expected(80, 20);
    expected.dc.SelectObject(&font);
    expected.dc.TextOut(5, 1, "ab", 2);
    const int end = 5 + static_cast<int>(expected.context->Font()->Width("ab"));
    expected.dc.TextOut(end, 1, "c", 1);
    EXPECT_EQ(canvas.Pixels(), expected.Pixels());
}

TEST(TextOut, LeavesColoursAndUsesTheTextColour) {
    Canvas canvas(30, 20);
    CFont font;
    canvas.dc.SelectObject(&MakeFont(font, "Arial", 18));
    canvas.dc.SetTextColor(RGB(255, 0, 0));
    canvas.dc.TextOut(2, 0, "H", 1);
    EXPECT_EQ(canvas.context->FillColor(), 0xFF000000u);
    bool pure = false;
    const QImage image = canvas.Pixels();
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 30; ++x) {
            EXPECT_EQ(qGreen(image.pixel(x, y)) + qBlue(image.pixel(x, y)), 0);
            pure |= image.pixel(x, y) == 0xFFFF0000u;
        }
    EXPECT_TRUE(pure);
}

TEST(TextOut, RomanCodesAboveAsciiAndControlCodes) {
    CFont font;
    MakeFont(font, "Arial", 12);
    Canvas canvas(10, 10);
    canvas.dc.SelectObject(&font);
    const HDC handle = canvas.dc.GetSafeHdc();
    const int plain = canvas.dc.TextWidth(handle, "eeeeeeeeee", 10);
    EXPECT_EQ(canvas.dc.TextWidth(handle, "\x8E\x8E\x8E\x8E\x8E\x8E\x8E\x8E\x8E\x8E", 10), plain);
    EXPECT_EQ(canvas.dc.TextWidth(handle, "e\ne\te\x7F", 6), canvas.dc.TextWidth(handle, "eee", 3));
}

TEST(ExtTextOut, OptionsFillAndClipTheRectangle) {
    Canvas canvas(40, 20);
    CFont font;
    canvas.dc.SelectObject(&MakeFont(font, "Arial", 12));
    canvas.dc.SetBkColor(RGB(0, 255, 0));
    EXPECT_FALSE(canvas.dc.ExtTextOut(0, 0, ETO_OPAQUE, CRect(0, 0, 9, 9), nullptr, 0, nullptr));
    canvas.dc.ExtTextOut(2, 2, ETO_OPAQUE, CRect(20, 4, 30, 8), "", 0, nullptr);
    EXPECT_EQ(Inked(canvas.Pixels()), "20,4,30,8"); // although the background mode is transparent
    EXPECT_EQ(canvas.At(20, 4), 0xFF00FF00u);
    canvas.dc.EraseRect(CRect(0, 0, 40, 20));
    EXPECT_TRUE(canvas.dc.ExtTextOut(0, 0, ETO_CLIPPED, CRect(3, 4, 9, 7), "HHHH", 0, nullptr));
    EXPECT_EQ(Inked(canvas.Pixels()), "3,4,8,7"); // the stems reach further up and down
    CRect box;
    canvas.dc.GetClipBox(&box);
    EXPECT_EQ(box.right, 40);
}

TEST(TextOut, OpaqueModePaintsTheCellsOfTheText) {
    Canvas canvas(40, 20);
    CFont font;
    canvas.dc.SelectObject(&MakeFont(font, "Arial", 12));
    canvas.dc.SetBkColor(RGB(0, 255, 0));
    canvas.dc.SetBkMode(OPAQUE);
    canvas.dc.TextOut(4, 2, "  ", 2);
    EXPECT_EQ(Inked(canvas.Pixels()), "4,2,11,16");
}

TEST(DrawText, SplitsLinesOnlyOnRequest) {
    CFont font;
    MakeFont(font, "Arial", 12);
    const auto bottom = [&](unsigned int format) {
        Canvas canvas(60, 60);
        canvas.dc.SelectObject(&font);
        canvas.dc.DrawText("H\nH", 3, CRect(0, 0, 60, 60), format);
        const std::string box = Inked(canvas.Pixels());
        return std::stoi(box.substr(box.rfind(',') + 1));
    };
    EXPECT_EQ(bottom(0), 11);
    EXPECT_EQ(bottom(DT_MULTILINE), 25); // one line of 13.8 pixels below
}

TEST(DrawText, ClipsToTheRectangleAndRestoresTheClip) {
    Canvas canvas(60, 30);
    CFont font;
    canvas.dc.SelectObject(&MakeFont(font, "Verdana", 20));
    CRect rect(10, 5, 20, 12);
    EXPECT_GT(canvas.dc.DrawText(CString("HHHH"), rect, DT_VCENTER | DT_CENTER), 0);
    EXPECT_EQ(Inked(canvas.Pixels()).substr(0, 3), "10,");
    EXPECT_THAT(Inked(canvas.Pixels()), testing::EndsWith(",20,12"));
    EXPECT_EQ(canvas.dc.DrawText(nullptr, 0, rect, 0), 0);
    CRect box;
    canvas.dc.GetClipBox(&box);
    EXPECT_EQ(box.right, 60);
}

TEST(DrawText, MeasuresInsteadOfDrawing) {
    Canvas canvas(60, 60);
    CFont font;
    canvas.dc.SelectObject(&MakeFont(font, "Courier New", 10));
    CRect rect(5, 7, 36, 8);
    const int height = canvas.dc.DrawText("ab cd ef", 8, rect, DT_CALCRECT | DT_WORDBREAK);
    EXPECT_EQ(height, 22); // two lines of 11.3
    EXPECT_EQ(rect.left, 5);
    EXPECT_EQ(rect.right, 36);
    EXPECT_EQ(rect.bottom, 30);
    canvas.dc.DrawText("ab", 2, rect, DT_CALCRECT);
    EXPECT_EQ(rect.right, 18);
    EXPECT_EQ(rect.bottom, 19);
    EXPECT_EQ(Inked(canvas.Pixels()), "nothing");
    CRect small(20, 20, 21, 21);
    canvas.dc.DrawText("H", 1, small, DT_NOCLIP);
    EXPECT_NE(Inked(canvas.Pixels()), "nothing");
}

TEST(Text, OfAnySizeAtAnyPlaceDrawsWhatIsVisible) {
    constexpr int kLeast = -2147483647 - 1, kMost = 2147483647;
    Canvas canvas(20, 20);
    CDC& dc = canvas.dc;
    dc.SetBkMode(OPAQUE);
    for (const int height : {12, kMost, kLeast}) {
        CFont font;
        dc.SelectObject(&MakeFont(font, "Arial Bold", height, kLeast));
        tagTEXTMETRIC metrics{};
        EXPECT_TRUE(dc.GetTextMetrics(&metrics));
        EXPECT_GT(metrics.tmAscent, 9);
        EXPECT_GT(dc.TextWidth(dc.GetSafeHdc(), "HH", 2), 12);
        EXPECT_EQ(dc.GetTextExtent("HH", 2).cx, kMost);
        for (const int place : {kLeast, kMost})
            for (const unsigned align : {14u, 1u, 16u, 32u, 64u}) {
                dc.SetTextAlign(align);
                dc.MoveTo(place, place);
                EXPECT_TRUE(dc.TextOut(place, place, "HH", 2));
            }
        for (const int edge : {kLeast, kMost})
            for (const unsigned format : {0u, 4u, 8u, 16u, 32u, 64u, 512u, 1024u}) {
                CRect rect(edge, kMost, -1 - edge, kLeast);
                dc.DrawText("HH\nH", 4, rect, format | DT_NOCLIP);
            }
    }
    EXPECT_EQ(Inked(canvas.Pixels()), "nothing");
}

TEST(TextWidth, MovesTheTextPositionAndDrawsNothing) {
    Canvas canvas(60, 30);
    CFont font;
    canvas.dc.SelectObject(&MakeFont(font, "Arial", 12));
    const int width = canvas.dc.TextWidth(canvas.dc.GetSafeHdc(), "abc", 3);
    EXPECT_EQ(Inked(canvas.Pixels()), "nothing");
    const CPoint before = canvas.dc.MoveTo(0, 0);
    EXPECT_EQ(before.x, width);
    EXPECT_EQ(before.y, 20);
}

TEST(TextMetrics, AreTruncatedFromTheFont) {
    Canvas canvas(10, 10);
    CFont font;
    canvas.dc.SelectObject(&MakeFont(font, "Arial", 12)); // 10.863, -2.543, leading 0.393, 13.125
    tagTEXTMETRIC metrics{};
    EXPECT_TRUE(canvas.dc.GetTextMetrics(&metrics));
    EXPECT_EQ(metrics.tmAscent, 10);
    EXPECT_EQ(metrics.tmDescent, 2);
    EXPECT_EQ(metrics.tmHeight, 12);
    EXPECT_EQ(metrics.tmInternalLeading, 4);
    EXPECT_EQ(metrics.tmExternalLeading, 0);
    EXPECT_EQ(metrics.tmMaxCharWidth,
              static_cast<LONG>(canvas.context->Font()->Metrics().maxAdvance));
    EXPECT_EQ(metrics.tmAveCharWidth, metrics.tmMaxCharWidth * 7 / 10);
    EXPECT_EQ(metrics.tmWeight, 500);
    tagTEXTMETRIC byHandle{};
    EXPECT_TRUE(GetTextMetrics(canvas.dc.GetSafeHdc(), &byHandle));
    EXPECT_EQ(byHandle.tmAscent, 10);
    EXPECT_FALSE(GetTextMetrics(nullptr, &byHandle));
    CDC none;
    EXPECT_FALSE(none.GetTextMetrics(&metrics));
}

TEST(FontSelection, StockFontIsFoundByItsNameAndComesBack) {
    Canvas canvas(10, 10);
    EXPECT_EQ(canvas.dc.GetCurrentFont(), nullptr);
    EXPECT_EQ(canvas.context->Font()->Size(), 8);
    CFont stock, arial;
    stock.Attach(GetStockObject(SYSTEM_FONT));
    EXPECT_EQ(canvas.dc.SelectObject(&stock), nullptr);
    EXPECT_EQ(canvas.context->Font()->Size(), 16);
    EXPECT_EQ(canvas.dc.SelectObject(&MakeFont(arial, "Arial", 9)), &stock);
    EXPECT_EQ(canvas.dc.GetCurrentFont(), &arial);
    EXPECT_EQ(canvas.context->Font()->Size(), 9);
}
