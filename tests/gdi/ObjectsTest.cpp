#include <gmock/gmock.h>

#include <cstdlib>
#include <cstring>

#include <vmcore/gdi/CBitmap.h>
#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CFont.h>
#include <vmcore/gdi/CPen.h>
#include <vmcore/gdi/CRgn.h>
#include <vmcore/gdi/syscolors.h>

#include "gdi/shutdown.h"
#include "support/LogCapture.h"
#include "support/MessageBoxRecorder.h"

using testing::ElementsAre;

namespace {

const tagEXTLOGPEN& PenOf(HGDIOBJ handle) {
    return *static_cast<tagEXTLOGPEN*>(handle);
}
const tagLOGBRUSH& BrushOf(HGDIOBJ handle) {
    return *static_cast<tagLOGBRUSH*>(handle);
}

} // namespace

TEST(StockObjects, BrushesShareOneRecord) {
    const struct {
        int index;
        UINT style;
        COLORREF color;
    } cases[] = {{0, 0, 0xFFFFFF}, {1, 0, 0xC0C0C0}, {2, 0, 0x808080},
                 {3, 0, 0x404040}, {4, 0, 0x000000}, {5, 1, 0x000000}};
    const HGDIOBJ first = GetStockObject(0);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.index);
        EXPECT_EQ(GetStockObject(c.index), first);
        EXPECT_EQ(BrushOf(first).lbStyle, c.style);
        EXPECT_EQ(BrushOf(first).lbColor, c.color);
    }
}

TEST(StockObjects, DarkPensKeepTheStyleThatWasThere) {
    const HGDIOBJ pen = GetStockObject(WHITE_PEN);
    EXPECT_EQ(PenOf(pen).elpWidth, 0x00010001u);
    EXPECT_EQ(PenOf(pen).elpColor, 0xFFFFFFu);
    EXPECT_EQ(GetStockObject(NULL_PEN), pen);
    EXPECT_EQ(PenOf(pen).elpPenStyle, 0u);
    EXPECT_EQ(PenOf(pen).elpWidth, 0u);
    EXPECT_EQ(PenOf(pen).elpBrushStyle, 5u);
    static_cast<tagEXTLOGPEN*>(pen)->elpPenStyle = 2;
    GetStockObject(BLACK_PEN);
    EXPECT_EQ(PenOf(pen).elpPenStyle, 2u);
    EXPECT_EQ(PenOf(pen).elpBrushStyle, 0u);
    EXPECT_EQ(PenOf(pen).elpWidth, 0x00010001u);
    GetStockObject(WHITE_PEN);
    EXPECT_EQ(PenOf(pen).elpPenStyle, 0u);
}

TEST(StockObjects, Fonts) {
    const auto& font = *static_cast<tagFONTRECORD*>(GetStockObject(SYSTEM_FONT));
    EXPECT_EQ(font.lfHeight, 16);
    EXPECT_EQ(GetStockObject(ANSI_VAR_FONT), &font);
    EXPECT_EQ(font.lfHeight, 12);
    EXPECT_EQ(font.lfWidth, 8);
    EXPECT_EQ(font.lfWeight, 400);
    EXPECT_EQ(font.lfQuality, 0xE8);
    EXPECT_STREQ(font.lfFaceName, "Arial");
}

TEST(StockObjects, OtherIndicesAreReported) {
    MessageBoxRecorder boxes;
    for (const int index : {-3, 9, 10, 11, 14}) {
        EXPECT_EQ(GetStockObject(index), nullptr);
        const auto text =
            "GetStockObject() - info on object " + std::to_string(index) + " requested!";
        EXPECT_THAT(boxes.Take(), ElementsAre(ShownBox{text, "VM Core", 0}));
    }
}

TEST(SystemColours, TableAndRange) {
    MessageBoxRecorder boxes;
    EXPECT_EQ(GetSysColor(0), 0xFFFFFFu);
    EXPECT_EQ(GetSysColor(10), 0x404040u);
    EXPECT_EQ(GetSysColor(12), 0xFFFF00u);
    EXPECT_EQ(GetSysColor(13), 0xC0C0C0u);
    EXPECT_EQ(GetSysColor(14), 0u);
    EXPECT_EQ(GetSysColor(-1), 0u);
    EXPECT_THAT(boxes.Take(),
                ElementsAre(ShownBox{"GetSysColor: undefined color - 14", "VM Core Errror", 0},
                            ShownBox{"GetSysColor: undefined color - -1", "VM Core Errror", 0}));
}

TEST(SystemColours, EachIndexHasABrushOfItsOwn) {
    const HBRUSH two = GetSysColorBrush(2);
    const HBRUSH twelve = GetSysColorBrush(12);
    EXPECT_NE(two, twelve);
    EXPECT_EQ(BrushOf(two).lbColor, 0xC0C0C0u);
    EXPECT_EQ(BrushOf(twelve).lbColor, 0xFFFF00u);
    EXPECT_TRUE(isSystemObject(two));
    MessageBoxRecorder boxes;
    EXPECT_TRUE(isSystemObject(GetSysColorBrush(19)));
    EXPECT_EQ(GetSysColorBrush(20), nullptr);
    EXPECT_EQ(boxes.Take().size(), 2u);
}

TEST(GdiObjects, SharedRecordsAreNeverFreed) {
    CBrush brush;
    EXPECT_FALSE(brush.DeleteObject());
    EXPECT_TRUE(brush.Attach(GetSysColorBrush(3)));
    EXPECT_TRUE(brush.DeleteObject());
    EXPECT_EQ(brush.GetSafeHandle(), nullptr);
    EXPECT_TRUE(DeleteObject(GetStockObject(0)));
    EXPECT_FALSE(DeleteObject(nullptr));
    CPen pen(PS_SOLID, 1, 0);
    EXPECT_TRUE(DeleteObject(pen.Detach()));
}

// In a process of its own: the flag is never taken back.
TEST(GdiObjectsDeathTest, RecordsOutliveTheVerifiedCloseRequest) {
    const auto paintLate = [] {
        vm::SetCloseRequestVerified();
        CPen pen(PS_DASH, 3, 0x112233);
        const auto* record = static_cast<tagEXTLOGPEN*>(pen.GetSafeHandle());
        const bool deleted = pen.DeleteObject() && !pen.GetSafeHandle();
        CPen other(PS_NULL, 9, 0); // would take the place of a freed record
        std::exit(deleted && record->elpPenStyle == PS_DASH && record->elpWidth == 3 ? 0 : 1);
    };
    EXPECT_EXIT(paintLate(), testing::ExitedWithCode(0), "");
}

TEST(GdiObjects, GetObjectKnowsFontRecordsOnly) {
    CFont font;
    font.CreateFont(-12, -7, 0, 0, 700, 1, 0, 0, 0, 0, 0, 0, 0, "Arial");
    tagFONTRECORD out{};
    EXPECT_EQ(GetObject(font, 60, &out), 0);
    EXPECT_EQ(out.lfHeight, 0);
    EXPECT_EQ(GetObject(font, 72, &out), 72);
    EXPECT_EQ(out.lfHeight, 12);
    EXPECT_EQ(out.lfWidth, 7);
    EXPECT_STREQ(out.lfFaceName, "Arial");
}

TEST(Pen, WidthBelowOneIsReportedAndOne) {
    LogCapture log;
    tagLOGBRUSH brush{BS_SOLID, 0x112233, 7};
    const unsigned int entries[] = {4, 5, 6};
    CPen pen(0, 0, &brush, 3, entries);
    EXPECT_THAT(log.TakeErrors(),
                ElementsAre("Internal Error! CPen::CPen width < 1. Setting Width to 1\n"));
    const tagEXTLOGPEN& record = PenOf(pen);
    EXPECT_EQ(record.elpWidth, 1u);
    EXPECT_EQ(record.elpColor, 0x112233u);
    EXPECT_EQ(record.elpHatch, 7u);
    ASSERT_EQ(record.elpNumEntries, 3u);
    EXPECT_EQ(std::memcmp(record.elpStyleEntry, entries, sizeof entries), 0);
}

TEST(Pen, IndirectTakesTheFirstWidthCoordinate) {
    tagLOGPEN source{PS_NULL, {3, 9}, 0x445566};
    CPen pen;
    EXPECT_TRUE(pen.CreatePenIndirect(&source));
    EXPECT_EQ(PenOf(pen).elpPenStyle, 5u);
    EXPECT_EQ(PenOf(pen).elpWidth, 3u);
    EXPECT_EQ(PenOf(pen).elpColor, 0x445566u);
    MessageBoxRecorder boxes;
    EXPECT_EQ(pen.GetExtLogPen(nullptr), 0);
    EXPECT_THAT(boxes.Take(), ElementsAre(ShownBox{"CPen::GetExtLogPen() not defined or used in DV",
                                                   "VM Core", 0}));
}

TEST(Brush, SolidReusesItsRecord) {
    CBrush brush;
    tagLOGBRUSH out{};
    EXPECT_EQ(brush.GetLogBrush(&out), 0);
    EXPECT_TRUE(brush.CreateSolidBrush(0x010203));
    void* const record = brush;
    EXPECT_TRUE(brush.CreateSolidBrush(0x040506));
    EXPECT_EQ(static_cast<void*>(brush), record);
    EXPECT_NE(brush.GetLogBrush(&out), 0);
    EXPECT_EQ(out.lbColor, 0x040506u);
    EXPECT_EQ(brush.GetLogBrush(nullptr), 0);
}

TEST(Region, CreatingTwiceAddsUpAndSetRectStartsAgain) {
    CRgn region;
    POINT points[] = {{1, 2}, {3, 4}};
    EXPECT_EQ(region.CreateRectRgn(0, 0, 4, 4), 1);
    EXPECT_EQ(region.CreatePolygonRgn(points, 2, 1), 1);
    EXPECT_EQ(region.CreateEllipticRgn(0, 0, 4, 4), 1);
    ASSERT_EQ(region.GetShapeCount(), 3);
    EXPECT_EQ(std::vector<LONG>(region.GetShape(1), region.GetShape(1) + 6),
              (std::vector<LONG>{RGNSHAPE_POLYGON, 2, 1, 2, 3, 4}));
    region.SetRectRgn(5, 6, 7, 8);
    ASSERT_EQ(region.GetShapeCount(), 1);
    EXPECT_EQ(region.GetShape(0)[1], 5);
    EXPECT_EQ(region.GetShape(1), nullptr);
    EXPECT_TRUE(region.DeleteObject());
    EXPECT_FALSE(region.DeleteObject());
}

TEST(Region, CombineMovesTheFirstAndCopiesTheSecond) {
    const auto codes = [](const CRgn& region) {
        std::vector<int> result;
        for (int i = 0; i < region.GetShapeCount(); ++i) result.push_back(region.GetShape(i)[0]);
        return result;
    };
    CRgn a, b, target;
    a.CreateRectRgn(0, 0, 1, 1);
    b.CreateEllipticRgn(0, 0, 1, 1);
    target.CreateRectRgn(0, 0, 9, 9);
    EXPECT_EQ(target.CombineRgn(&a, nullptr, RGN_AND), 0);
    EXPECT_EQ(target.CombineRgn(&a, &b, RGN_AND), 1);
    EXPECT_THAT(codes(a), ElementsAre());
    EXPECT_THAT(codes(b), ElementsAre(3));
    EXPECT_THAT(codes(target), ElementsAre(0, 4, 3));
    EXPECT_EQ(target.CombineRgn(&target, &b, RGN_OR), 1); // onto itself
    EXPECT_THAT(codes(target), ElementsAre(0, 4, 3, 3));
}

TEST(Region, RectInRegionIsSilentOnlyWhenEmpty) {
    MessageBoxRecorder boxes;
    CRgn region;
    const RECT rect{0, 0, 1, 1};
    EXPECT_FALSE(region.RectInRegion(&rect));
    EXPECT_TRUE(boxes.Take().empty());
    region.CreateRectRgn(0, 0, 4, 4);
    EXPECT_FALSE(region.RectInRegion(&rect));
    EXPECT_THAT(boxes.Take(), ElementsAre(ShownBox{"CRgn::RectInRegion call not implemented",
                                                   "Internal error", 0}));
}

TEST(WinColour, ConvertsBothWays) {
    for (unsigned value = 0; value < 256; ++value) {
        const COLORREF color = RGB(value, 255 - value, value / 2);
        EXPECT_EQ(WinColor(color).GetColorRef(), color) << value;
    }
    WinColor color(RGB(1, 2, 3));
    EXPECT_EQ(color.GetPlatformColor(), 0xFF010203u);
    color.SetRGBColor({0xFFFF, 0x8000, 0});
    EXPECT_EQ(color.GetColorRef(), RGB(255, 127, 0));
    EXPECT_EQ(color.GetRGBColor().green, 0x8000);
    color.MakeTransparent();
    EXPECT_EQ(color.GetPlatformColor(), 0u);
    color.SetColorRef(0);
    EXPECT_EQ(color.GetPlatformColor(), 0xFF000000u);
}
