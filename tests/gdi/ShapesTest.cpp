#include <vmcore/gdi/CDC.h>

#include <gmock/gmock.h>

#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CPen.h>
#include <vmcore/gdi/CRgn.h>

#include "gdi/Canvas.h"
#include "support/MessageBoxRecorder.h"

using testing::ElementsAre;

namespace {

// The rectangle filled with opaque black and nothing else, as a picture.
Rows Filled(int width, int height, const QRect& rect) {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x)
            if (image.rect().contains(x, y)) image.setPixel(x, y, 0xFF000000);
    return PixelGrid(image);
}

constexpr COLORREF kRed = RGB(255, 0, 0);

} // namespace

TEST(LineTo, CoversThePixelsOfEachWidthAndDirection) {
    const struct {
        int width, fromX, fromY, toX, toY;
        QRect pixels;
    } cases[] = {
        {1, 10, 5, 20, 5, {10, 5, 10, 1}}, // the end pixel is left out
        {1, 3, 2, 3, 10, {3, 2, 1, 8}},
        {1, 3, 10, 3, 2, {3, 3, 1, 8}}, // upwards both ends move down by one
        {1, 20, 5, 10, 5, {11, 5, 10, 1}},
        {1, 4, 4, 6, 4, {4, 4, 2, 1}},
        {2, 4, 4, 14, 4, {4, 3, 9, 2}}, // even widths lie around the coordinate
        {2, 14, 4, 4, 4, {6, 3, 9, 2}},
        {2, 8, 20, 8, 8, {7, 10, 2, 11}},
        {3, 4, 6, 14, 6, {4, 5, 8, 3}},
        {3, 14, 6, 4, 6, {8, 5, 8, 3}},
        {3, 6, 4, 6, 14, {5, 4, 3, 8}},
        {4, 8, 4, 8, 14, {6, 4, 4, 7}},
        {5, 20, 9, 8, 9, {15, 7, 8, 5}},
        {0, 4, 4, 4, 4, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "width " << c.width << " from " << c.fromX << ","
                                        << c.fromY << " to " << c.toX << "," << c.toY);
        Canvas canvas(26, 24);
        CPen pen(PS_SOLID, c.width, 0);
        canvas.dc.SelectObject(&pen);
        canvas.dc.MoveTo(c.fromX, c.fromY);
        EXPECT_TRUE(canvas.dc.LineTo(c.toX, c.toY));
        EXPECT_EQ(canvas.Picture(), Filled(26, 24, c.pixels));
    }
}

TEST(LineTo, DiagonalHasTheFullCoverageOfItsWidth) {
    Canvas canvas(50, 50);
    CPen pen(PS_SOLID, 1, 0);
    canvas.dc.SelectObject(&pen);
    canvas.dc.MoveTo(10, 10);
    canvas.dc.LineTo(40, 40);
    EXPECT_NEAR(InkedArea(canvas.Pixels()), 42.4, 1.5);
}

TEST(LineTo, ShortLineRunsFromCornerToCorner) {
    Canvas canvas(20, 10);
    CPen pen(PS_SOLID, 1, 0);
    canvas.dc.SelectObject(&pen);
    canvas.dc.MoveTo(10, 5);
    canvas.dc.LineTo(11, 5);
    EXPECT_NEAR(qAlpha(canvas.At(10, 4)), 128, 2);
    EXPECT_NEAR(qAlpha(canvas.At(10, 5)), 128, 2);
    EXPECT_EQ(Inked(canvas.Pixels()), "10,4,11,6");
}

TEST(LineTo, GoesOnFromWhereTheLastLineEndedAndLeavesTheTextPosition) {
    Canvas canvas(20, 12);
    CPen pen(PS_SOLID, 1, 0);
    canvas.dc.SelectObject(&pen);
    canvas.dc.MoveTo(2, 2);
    canvas.dc.LineTo(8, 2);
    canvas.dc.LineTo(8, 6);
    EXPECT_THAT(canvas.Picture(), testing::Contains("........#...........").Times(3));
    const CPoint before = canvas.dc.MoveTo(70000, 5);
    EXPECT_EQ(before.x, 2);
    EXPECT_EQ(before.y, 2);
    EXPECT_EQ(canvas.dc.MoveTo(0, 0).x, 4464); // 16 bits of it
}

TEST(LineTo, StockPenRunsOff) {
    Canvas canvas(12, 12);
    canvas.dc.MoveTo(6, 5); // computed with a width of 65537: the end lies far to the left
    canvas.dc.LineTo(10, 5);
    EXPECT_EQ(Inked(canvas.Pixels()), "0,5,6,6");
}

TEST(LineTo, UnknownPenStyleIsReportedEachTimeAndDrawsSolid) {
    Canvas canvas(20, 10);
    CPen pen(PS_DOT, 1, 0);
    canvas.dc.SelectObject(&pen);
    const char* const line =
        "CDC::ApplyPen() Internal error! undefined pen style = 2. Setting Pen to PS_SOLID\n";
    canvas.dc.MoveTo(2, 5);
    canvas.dc.LineTo(12, 5);
    EXPECT_THAT(canvas.log.TakeErrors(), ElementsAre(line));
    canvas.dc.LineTo(18, 5);
    EXPECT_THAT(canvas.log.TakeErrors(), ElementsAre(line));
    EXPECT_EQ(canvas.Picture(), Filled(20, 10, {2, 5, 16, 1}));
}

TEST(FrameRect, IsOnePixelInsideForEverySize) {
    for (int width = 0; width < 10; ++width) {
        for (int height = 0; height < 10; ++height) {
            SCOPED_TRACE(testing::Message() << width << " x " << height);
            Canvas canvas(14, 14);
            CBrush brush(COLORREF{0});
            canvas.dc.FrameRect(CRect(2, 2, 2 + width, 2 + height), &brush);
            Rows expected = Filled(14, 14, {2, 2, width, height});
            for (int y = 3; y < 1 + height; ++y)
                for (int x = 3; x < 1 + width; ++x)
                    expected[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] = '.';
            EXPECT_EQ(canvas.Picture(), expected);
        }
    }
}

TEST(Rectangle, IgnoresThePensWidthAndFillsOnlyWithABrushObject) {
    Canvas canvas(7, 6);
    CPen pen(PS_DASH, 3, 0);
    canvas.dc.SelectObject(&pen);
    canvas.dc.Rectangle(CRect(1, 1, 6, 5));
    EXPECT_THAT(canvas.Picture(),
                ElementsAre(".......", ".#####.", ".#...#.", ".#...#.", ".#####.", "......."));
    CBrush brush(kRed);
    canvas.dc.SelectObject(&brush);
    canvas.dc.Rectangle(CRect(1, 1, 6, 5));
    EXPECT_EQ(canvas.At(2, 2), 0xFFFF0000u);
    EXPECT_EQ(canvas.At(1, 1), 0xFF000000u);
}

TEST(FillRect, FillsWithTheBrushsColourWhateverItsStyle) {
    Canvas canvas(6, 4);
    CBrush solid(kRed);
    canvas.dc.FillRect(CRect(4, 3, 1, 1), &solid); // edges in the wrong order count the other way
    EXPECT_EQ(Inked(canvas.Pixels()), "1,1,4,3");
    EXPECT_EQ(canvas.At(1, 1), 0xFFFF0000u);
    CBrush hollow(static_cast<CBitmap*>(nullptr));
    canvas.dc.FillRect(CRect(0, 0, 1, 1), &hollow);
    EXPECT_EQ(canvas.At(0, 0), 0xFF000000u);
    CBrush none;
    canvas.dc.FillRect(CRect(0, 0, 6, 4), &none);
    canvas.dc.FillRect(CRect(0, 0, 6, 4), nullptr);
    EXPECT_EQ(Inked(canvas.Pixels()), "0,0,4,3");
}

TEST(EraseRect, MakesPixelsTransparentWhateverTheAlpha) {
    Canvas canvas(6, 1);
    CBrush brush(COLORREF{0});
    canvas.dc.FillRect(CRect(0, 0, 6, 1), &brush);
    canvas.dc.SetAlphaTransparency(128);
    canvas.dc.EraseRect(CRect(2, 0, 4, 1));
    EXPECT_THAT(canvas.Picture(), ElementsAre("##..##"));
    canvas.dc.FillRect(CRect(2, 0, 3, 1), &brush);
    EXPECT_NEAR(qAlpha(canvas.At(2, 0)), 127, 1);
}

TEST(Ellipse, IsFilledAndOutlined) {
    Canvas canvas(24, 24);
    CBrush brush(kRed);
    CPen pen(PS_NULL, 1, 0);
    canvas.dc.SelectObject(&brush);
    canvas.dc.SelectObject(&pen);
    EXPECT_TRUE(canvas.dc.Ellipse(2, 2, 22, 22));
    EXPECT_NEAR(InkedArea(canvas.Pixels()), 314.2, 6);
    EXPECT_EQ(canvas.At(12, 12), 0xFFFF0000u);
}

TEST(Ellipse, HollowBrushFillsWithTheColourUsedLast) {
    Canvas canvas(24, 24);
    CBrush red(kRed);
    canvas.dc.FillRect(CRect(0, 0, 1, 1), &red);
    canvas.dc.SelectStockObject(NULL_BRUSH);
    canvas.dc.Ellipse(CRect(2, 2, 22, 22));
    EXPECT_EQ(canvas.At(12, 12), 0xFFFF0000u);
}

TEST(Arc, RunsAgainstTheClockInTheTopLeftSquare) {
    Canvas canvas(44, 24);
    CPen pen(PS_SOLID, 1, 0);
    canvas.dc.SelectObject(&pen);
    // From the right of the circle over its top to its left: the circle is 20 wide, not 40.
    canvas.dc.Arc(2, 2, 42, 22, 22, 12, 2, 12);
    EXPECT_NEAR(InkedArea(canvas.Pixels()), 31.4, 3);
    const QImage pixels = canvas.Pixels();
    EXPECT_EQ(Inked(pixels.copy(0, 13, 44, 11)), "nothing");
    EXPECT_EQ(Inked(pixels.copy(24, 0, 20, 24)), "nothing");
    EXPECT_NE(Inked(pixels.copy(10, 0, 4, 4)), "nothing");
}

TEST(Arc, OfARectangleTheWrongWayRoundIsNothing) {
    Canvas canvas(44, 24);
    CPen pen(PS_SOLID, 1, 0);
    canvas.dc.SelectObject(&pen);
    EXPECT_TRUE(canvas.dc.Arc(32, 22, 12, 2, 32, 12, 12, 12));
    EXPECT_EQ(Inked(canvas.Pixels()), "nothing");
}

TEST(RoundRect, WithAPenWiderThanItselfKeepsInside) {
    Canvas canvas(40, 40);
    CPen pen(PS_SOLID, 10, 0);
    CBrush brush(kRed);
    canvas.dc.SelectObject(&pen);
    canvas.dc.SelectObject(&brush);
    canvas.dc.RoundRect(15, 15, 21, 21, 4, 4);
    EXPECT_EQ(Inked(canvas.Pixels()), "15,15,21,21");
}

TEST(RoundRect, KeepsInsideTheRectangleAndLeavesTheCornersFree) {
    Canvas canvas(30, 20);
    CPen pen(PS_SOLID, 1, 0);
    CBrush brush(kRed);
    canvas.dc.SelectObject(&pen);
    canvas.dc.SelectObject(&brush);
    EXPECT_TRUE(canvas.dc.RoundRect(2, 2, 28, 18, 8, 8));
    EXPECT_EQ(Inked(canvas.Pixels()), "2,2,28,18");
    EXPECT_EQ(qAlpha(canvas.At(2, 2)), 0);
    EXPECT_EQ(canvas.At(15, 2), 0xFF000000u);
    EXPECT_EQ(canvas.At(2, 10), 0xFF000000u);
    EXPECT_EQ(canvas.At(15, 10), 0xFFFF0000u);
}

TEST(SetPixel, SetsOnePixelAndReadsNone) {
    Canvas canvas(3, 3);
    EXPECT_EQ(canvas.dc.SetPixel(1, 1, kRed), 0u);
    EXPECT_EQ(canvas.At(1, 1), 0xFFFF0000u);
    EXPECT_EQ(Inked(canvas.Pixels()), "1,1,2,2");
    EXPECT_EQ(canvas.dc.GetPixel(1, 1), 0u);
}

TEST(DrawFocusRect, IsAHalfCoveredFrameOfTheLastLineColour) {
    Canvas canvas(12, 10);
    canvas.dc.DrawFocusRect(CRect(4, 4, 8, 6));
    EXPECT_EQ(Inked(canvas.Pixels()), "2,2,10,8");
    EXPECT_NEAR(qAlpha(canvas.At(2, 5)), 128, 1);
    EXPECT_NEAR(qAlpha(canvas.At(3, 5)), 128, 1);
    EXPECT_NEAR(qAlpha(canvas.At(2, 2)), 64, 1);
    EXPECT_NEAR(qAlpha(canvas.At(3, 3)), 192, 1);
    EXPECT_EQ(qAlpha(canvas.At(4, 4)), 0);
}

TEST(FillRgn, UnitesShapesAndIntersectsAtTheMark) {
    CRgn first, second, both;
    first.CreateRectRgn(0, 0, 2, 3);
    first.CreateRectRgn(4, 0, 6, 3);
    second.CreateRectRgn(1, 1, 5, 2);
    CBrush brush(COLORREF{0});
    Canvas united(6, 3);
    united.dc.FillRgn(&first, &brush);
    EXPECT_THAT(united.Picture(), ElementsAre("##..##", "##..##", "##..##"));
    both.CombineRgn(&first, &second, RGN_AND);
    Canvas common(6, 3);
    EXPECT_TRUE(common.dc.FillRgn(&both, &brush));
    EXPECT_THAT(common.Picture(), ElementsAre("......", ".#..#.", "......"));
}

TEST(FillRgn, CombinedRegionsOfEachMode) {
    const struct {
        int mode;
        Rows picture;
    } cases[] = {
        {RGN_AND, {"......", ".##...", "......"}},  {RGN_OR, {"###...", "######", "###..."}},
        {RGN_XOR, {"###...", "#..###", "###..."}},  {RGN_DIFF, {"###...", "#.....", "###..."}},
        {RGN_COPY, {"###...", "###...", "###..."}}, {77, {"###...", "######", "###..."}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.mode);
        CRgn first, second, both;
        first.CreateRectRgn(0, 0, 3, 3);
        second.CreateRectRgn(1, 1, 6, 2);
        EXPECT_TRUE(both.CombineRgn(&first, &second, c.mode));
        EXPECT_EQ(first.GetShapeCount(), 0);
        EXPECT_EQ(second.GetShapeCount(), 1);
        CBrush brush(COLORREF{0});
        Canvas filled(6, 3), clipped(6, 3);
        filled.dc.FillRgn(&both, &brush);
        EXPECT_EQ(filled.Picture(), c.picture);
        clipped.dc.SelectClipRgn(&both);
        clipped.dc.FillRect(CRect(0, 0, 6, 3), &brush);
        EXPECT_EQ(clipped.Picture(), c.picture);
    }
}

TEST(FillRgn, ShapesOfAnySizeAreIntersectedWhereTheyAreVisible) {
    constexpr int kLeast = -2147483647 - 1, kMost = 2147483647;
    POINT corners[] = {{kLeast, kLeast}, {4, kLeast}, {4, kMost}, {kLeast, kMost}};
    for (const bool asPolygon : {false, true}) {
        SCOPED_TRACE(asPolygon);
        CRgn left, middle, both;
        if (asPolygon)
            left.CreatePolygonRgn(corners, 4, 1);
        else
            left.CreateRectRgn(kLeast, kLeast, 4, kMost);
        middle.CreateRectRgn(1, 1, kMost, 2);
        both.CombineRgn(&left, &middle, RGN_AND);
        Canvas canvas(6, 3);
        CBrush brush(COLORREF{0});
        canvas.dc.FillRgn(&both, &brush);
        EXPECT_THAT(canvas.Picture(), ElementsAre("......", ".###..", "......"));
    }
}

TEST(Shapes, OfAnySizeDrawWhatIsVisible) {
    constexpr int kLeast = -2147483647 - 1, kMost = 2147483647;
    Canvas canvas(6, 3);
    CDC& dc = canvas.dc;
    CBrush brush(COLORREF{0}), red(kRed);
    CPen pen(PS_SOLID, 1, kRed);
    dc.SelectObject(&brush);
    dc.SelectObject(&pen);
    const CRect all(kLeast, kLeast, kMost, kMost), none(3, 1, 3, 1), turned(5, 3, 1, 0);
    dc.FrameRect(none, &red);
    dc.Rectangle(none);
    EXPECT_EQ(Inked(canvas.Pixels()), "nothing");
    for (const CRect& rect : {all, none, turned, CRect(kMost, kMost, kLeast, kLeast)}) {
        dc.Ellipse(rect);
        dc.RoundRect(rect, POINT{5, 5});
        dc.Arc(rect, POINT{kMost, 1}, POINT{1, kLeast});
        dc.DrawFocusRect(rect);
        dc.Rectangle(rect);
    }
    dc.SetPixel(kMost, kLeast, kRed);
    dc.MoveTo(kLeast, kLeast);
    dc.LineTo(kMost, 1);
    dc.EraseRect(all);
    EXPECT_EQ(Inked(canvas.Pixels()), "nothing");
    dc.FillRect(all, &brush);
    EXPECT_THAT(canvas.Picture(), testing::Each("######"));
}

TEST(FrameRgn, FramesInsideTheRegion) {
    Canvas canvas(8, 7);
    CRgn region;
    region.CreateRectRgn(1, 1, 7, 6);
    CBrush brush(COLORREF{0});
    EXPECT_TRUE(canvas.dc.FrameRgn(&region, &brush, 1, 1));
    EXPECT_THAT(canvas.Picture(), ElementsAre("........", ".######.", ".#....#.", ".#....#.",
                                              ".#....#.", ".######.", "........"));
}

TEST(DeviceContext, FixedResults) {
    Canvas canvas(4, 4);
    CDC& dc = canvas.dc;
    MessageBoxRecorder boxes;
    EXPECT_TRUE(dc.PolyDraw(nullptr, nullptr, 0));
    dc.InvertRect(CRect(0, 0, 4, 4));
    EXPECT_FALSE(dc.DrawIcon(0, 0, nullptr));
    EXPECT_FALSE(EndOffscreenWriting());
    EXPECT_EQ(dc.SelectObject(static_cast<void*>(&boxes)), nullptr);
    EXPECT_TRUE(boxes.Take().empty());
    EXPECT_FALSE(dc.ScrollDC(1, 1, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(dc.SelectClipRgn(nullptr, 1), 0);
    EXPECT_THAT(
        boxes.Take(),
        ElementsAre(
            ShownBox{
                "Currently not used and not defined in CGContext - need to use HIViewScrollRect",
                "Msg", 0},
            ShownBox{"CDC::SelectClipRgn never called - not implemented", "Msg", 0}));
    EXPECT_EQ(Inked(canvas.Pixels()), "nothing");
}
