#include <vmcore/gdi/CDC.h>

#include <QtGui/QPainter>

#include <gmock/gmock.h>

#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CPen.h>
#include <vmcore/gdi/CRgn.h>

#include "gdi/Canvas.h"

using testing::ElementsAre;

namespace {

void FillAll(CDC& dc) {
    CBrush black(COLORREF{0});
    dc.FillRect(CRect(-100, -100, 100, 100), &black);
}

// A stroke and a text reach the painter's own clip, fills do not.
void StrokeAll(CDC& dc) {
    CPen wide(PS_SOLID, 200, 0);
    dc.SelectObject(&wide);
    dc.MoveTo(-100, -100);
    dc.LineTo(100, 100);
    dc.SelectStockObject(BLACK_PEN);
}

std::string BoxOf(CDC& dc) {
    CRect box(9, 9, 9, 9);
    EXPECT_EQ(dc.GetClipBox(&box), 0);
    return QString::asprintf("%d,%d,%d,%d", box.left, box.top, box.right, box.bottom).toStdString();
}

} // namespace

TEST(Clip, OnlyShrinksAndComesBackWithTheSavedState) {
    Canvas canvas(6, 3);
    canvas.dc.GetClip();
    canvas.dc.IntersectClipRect(1, 0, 4, 3);
    canvas.dc.IntersectClipRect(CRect(2, 1, 6, 3));
    EXPECT_EQ(BoxOf(canvas.dc), "2,1,4,3");
    EXPECT_EQ(canvas.dc.SelectClipRgn(nullptr), 1); // cannot widen
    StrokeAll(canvas.dc);
    EXPECT_THAT(canvas.Picture(), ElementsAre("......", "..##..", "..##.."));
    canvas.dc.SetClip();
    EXPECT_EQ(BoxOf(canvas.dc), "0,0,6,3");
    FillAll(canvas.dc);
    EXPECT_THAT(canvas.Picture(), ElementsAre("######", "######", "######"));
}

TEST(Clip, DisjointRectanglesLeaveNothing) {
    Canvas canvas(6, 3);
    CRect left(0, 0, 2, 3);
    canvas.dc.SetClipRect(&left);
    canvas.dc.IntersectClipRect(4, 0, 6, 3);
    FillAll(canvas.dc);
    StrokeAll(canvas.dc);
    canvas.dc.Ellipse(0, 0, 6, 3);
    EXPECT_EQ(Inked(canvas.Pixels()), "nothing");
}

TEST(Clip, RegionIsReplayedAsOnePath) {
    Canvas canvas(7, 4);
    CRgn region;
    region.CreateRectRgn(0, 0, 2, 2);
    region.CreateRectRgn(4, 1, 6, 4);
    canvas.dc.SelectClipRgn(&region);
    EXPECT_EQ(BoxOf(canvas.dc), "0,0,6,4");
    FillAll(canvas.dc);
    EXPECT_THAT(canvas.Picture(), ElementsAre("##.....", "##..##.", "....##.", "....##."));
}

TEST(Clip, ShapesOfARegion) {
    const struct {
        const char* name;
        void (*make)(CRgn&);
        double area;
    } cases[] = {
        {"ellipse", [](CRgn& r) { r.CreateEllipticRgn(2, 2, 22, 22); }, 314.2},
        {"polygon",
         [](CRgn& r) {
             POINT points[] = {{2, 2}, {22, 2}, {2, 22}};
             r.CreatePolygonRgn(points, 3, 1);
         },
         200},
        {"rounded", [](CRgn& r) { r.CreateRoundRectRgn(2, 2, 22, 22, 8, 8); }, 386.3},
        {"empty", [](CRgn&) {}, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Canvas canvas(24, 24);
        CRgn region;
        c.make(region);
        canvas.dc.SelectClipRgn(&region);
        FillAll(canvas.dc);
        EXPECT_NEAR(InkedArea(canvas.Pixels()), c.area, 6);
    }
}

// Two contexts of sibling views over one painter, drawn in turn: neither may see the other's clip,
// pen, alpha or origin.
TEST(SharedPainter, ContextsDoNotDisturbEachOther) {
    QImage image(8, 4, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    auto target = std::make_shared<vm::PaintTarget>(&image);
    auto* left = vm::GraphicsContext::ForView(target, {0, 0}, QRegion(0, 0, 4, 4));
    auto* right = vm::GraphicsContext::ForView(target, {4, 1}, QRegion(5, 1, 3, 2));
    CDC a, b;
    a.Attach(left);
    b.Attach(right);
    EXPECT_EQ(BoxOf(b), "1,0,4,2");
    a.IntersectClipRect(0, 0, 2, 1);
    a.SetAlphaTransparency(255);
    StrokeAll(a);
    StrokeAll(b);
    FillAll(a);
    a.Detach();
    b.Detach();
    left->Release();
    right->Release();
    target.reset();
    EXPECT_THAT(PixelGrid(image), ElementsAre("........", ".....###", ".....###", "........"));
}

TEST(SharedPainter, RegionOfSeveralRectanglesProtectsWhatLiesBetween) {
    QImage image(6, 2, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    auto target = std::make_shared<vm::PaintTarget>(&image);
    auto* view =
        vm::GraphicsContext::ForView(target, {}, QRegion(0, 0, 2, 2) | QRegion(4, 0, 2, 2));
    CDC dc;
    dc.Attach(view);
    FillAll(dc);
    dc.Detach();
    view->Release();
    target.reset();
    EXPECT_THAT(PixelGrid(image), ElementsAre("##..##", "##..##"));
}

// Fills reach the pixels of some image formats without the painter. A format that goes through it
// must look the same, at the image's edges too.
TEST(SharedPainter, DirectFillsEqualPaintedOnes) {
    const auto draw = [](QImage::Format format) {
        QImage image(40, 30, format);
        image.fill(Qt::white);
        auto target = std::make_shared<vm::PaintTarget>(&image);
        auto* view = vm::GraphicsContext::ForView(target, {3, 2}, QRegion(-5, -5, 80, 33));
        CDC dc;
        dc.Attach(view);
        CPen pen(PS_SOLID, 3, RGB(0, 90, 200));
        CBrush brush(RGB(200, 30, 10));
        dc.SelectObject(&pen);
        dc.FillRect(CRect(-20, -20, 9, 9), &brush);
        for (int i = 0; i < 8; ++i) {
            dc.MoveTo(5 * i, -4);
            dc.LineTo(5 * i, 60);
            dc.SetPixel(4 * i - 3, 3 * i - 3, RGB(i, 255, 30 * i));
        }
        dc.GetClip();
        dc.IntersectClipRect(10, 5, 33, 20);
        dc.SetAlphaTransparency(100);
        dc.FillRect(CRect(0, 0, 60, 12), &brush);
        dc.SetAlphaTransparency(0);
        dc.FrameRect(CRect(12, 0, 90, 18), &brush);
        dc.SetClip();
        dc.FillRect(CRect(30, 20, 99, 99), &brush);
        dc.Detach();
        view->Release();
        target.reset();
        return image.convertToFormat(QImage::Format_RGB32);
    };
    const QImage painted = draw(QImage::Format_RGB888);
    EXPECT_EQ(draw(QImage::Format_RGB32), painted);
    EXPECT_EQ(draw(QImage::Format_ARGB32_Premultiplied), painted);
}

TEST(SharedPainter, EndedTargetIsReportedAndDrawsNothing) {
    LogCapture log;
    QImage image(6, 2, QImage::Format_ARGB32_Premultiplied);
    auto target = std::make_shared<vm::PaintTarget>(&image);
    auto* view = vm::GraphicsContext::ForView(target, {}, QRegion(0, 0, 6, 2));
    CDC dc;
    dc.Attach(view);
    view->Release(); // the CDC keeps it
    target->End();
    FillAll(dc);
    EXPECT_FALSE(dc.TextOut(0, 0, "x", 1));
    EXPECT_THAT(log.TakeLog(), ElementsAre("exception at CDC::FillRect() - DeadContext",
                                           "exception at CDC::TextOut() - DeadContext"));
}
