// The same picture on devices of other ratios, and with or without the toolkit's painter.
#include <vmcore/gdi/CDC.h>

#include <algorithm>
#include <cmath>

#include <gmock/gmock.h>

#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CFont.h>
#include <vmcore/gdi/CPen.h>
#include <vmcore/gdi/CRgn.h>

#include "gdi/Canvas.h"

namespace {

constexpr int kWidth = 80;
constexpr int kHeight = 60;

// What `draw` makes of a white image of kWidth x kHeight units.
QImage Draw(double ratio, QImage::Format format, void (*draw)(CDC&)) {
    QImage image((QSizeF(kWidth, kHeight) * ratio).toSize(), format);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    auto target = std::make_shared<vm::PaintTarget>(&image);
    auto* view = vm::GraphicsContext::ForView(target, {2, 1}, QRegion(0, 0, kWidth, kHeight));
    CDC dc;
    dc.Attach(view);
    draw(dc);
    dc.Detach();
    view->Release();
    target.reset();
    image.setDevicePixelRatio(1);
    return image;
}

QImage Draw(double ratio, void (*draw)(CDC&)) {
    return Draw(ratio, QImage::Format_ARGB32_Premultiplied, draw);
}

// Whole pixels only: fills, frames, lines of each width and direction, clips, an erased hole.
void DrawWhole(CDC& dc) {
    CBrush red(RGB(200, 0, 0)), blue(RGB(0, 0, 200));
    dc.FillRect(CRect(0, 0, 11, 7), &red);
    dc.FillRect(CRect(11, 0, 22, 7), &blue); // touches the first
    dc.FrameRect(CRect(3, 9, 26, 22), &blue);
    for (int width = 1; width <= 3; ++width) {
        CPen pen(PS_SOLID, width, RGB(0, 120, 0));
        dc.SelectObject(&pen);
        dc.MoveTo(30, 7 * width);
        dc.LineTo(61, 7 * width);
        dc.MoveTo(30 + 9 * width, 50);
        dc.LineTo(30 + 9 * width, 27);
    }
    dc.SelectStockObject(BLACK_PEN);
    dc.SetPixel(70, 3, RGB(1, 2, 3));
    dc.GetClip();
    dc.IntersectClipRect(5, 31, 23, 43);
    dc.FillRect(CRect(-1000000, 20, 0x7FFFFFFF, 50), &red);
    dc.SetClip();
    CRgn region;
    region.CreateRectRgn(63, 20, 71, 29);
    dc.FrameRgn(&region, &blue, 1, 1);
}

void DrawText12(CDC& dc) {
    CFont font;
    font.CreateFont(12, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
    dc.SelectObject(&font);
    dc.SetTextColor(RGB(10, 20, 130));
    const char* const lines[] = {"Hamburg", "illiljy,W", "(AV/T)", "0123456"};
    for (int i = 0; i < 4; ++i) dc.TextOut(3 + i, 14 * i, lines[i], 0);
    dc.TextOut(64, 50, "beyond the edge", 0);
}

void DrawCurves(CDC& dc) {
    CPen pen(PS_SOLID, 1, RGB(0, 0, 0)), wide(PS_SOLID, 4, RGB(0, 0, 160));
    CBrush brush(RGB(240, 180, 0));
    dc.SelectObject(&brush);
    dc.SelectObject(&pen);
    dc.Ellipse(3, 2, 40, 27);
    dc.RoundRect(44, 3, 74, 26, 12, 12);
    dc.MoveTo(2, 30);
    dc.LineTo(70, 38);
    dc.SelectObject(&wide);
    dc.Arc(5, 32, 30, 57, 30, 40, 5, 50);
    dc.MoveTo(40, 55);
    dc.LineTo(76, 33);
    dc.Ellipse(50, 40, 90, 80); // over the edges
    dc.SelectStockObject(BLACK_PEN);
}

// The largest difference of a colour component.
int Distance(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b))});
}

int WorstPixel(const QImage& a, const QImage& b) {
    int worst = a.size() == b.size() ? 0 : 256;
    for (int y = 0; worst < 256 && y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            worst = std::max(worst, Distance(a.pixel(x, y), b.pixel(x, y)));
    return worst;
}

double Darkness(const QImage& image) {
    double sum = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) sum += 255 - qGray(image.pixel(x, y));
    return sum;
}

} // namespace

TEST(DeviceRatio, WholePixelsStaySharpAndWhereTheyWere) {
    const QImage plain = Draw(1, DrawWhole);
    for (const double ratio : {1.25, 1.5, 1.75, 2.0, 3.0}) {
        SCOPED_TRACE(ratio);
        const QImage scaled = Draw(ratio, DrawWhole);
        const auto unitOf = [ratio](int pixel, int most) { // a middle between two: the first
            return std::min(static_cast<int>(std::ceil((pixel + 0.5) / ratio)) - 1, most - 1);
        };
        int wrong = 0;
        for (int y = 0; y < scaled.height(); ++y) {
            for (int x = 0; x < scaled.width(); ++x)
                wrong += scaled.pixel(x, y) != plain.pixel(unitOf(x, kWidth), unitOf(y, kHeight));
        }
        EXPECT_EQ(wrong, 0);
    }
}

TEST(DeviceRatio, ClipBoxAndTextWidthAreTheSame) {
    for (const double ratio : {1.0, 1.25, 1.5, 2.0}) {
        SCOPED_TRACE(ratio);
        Draw(ratio, [](CDC& dc) {
            CRect box;
            dc.GetClipBox(&box);
            EXPECT_EQ(box.left, -2); // the view's origin lies at 2, 1
            EXPECT_EQ(box.right, kWidth - 2);
            EXPECT_EQ(box.bottom, kHeight - 1);
            dc.IntersectClipRect(3, 5, 9, 11);
            dc.GetClipBox(&box);
            EXPECT_EQ(box.left, 3);
            EXPECT_EQ(box.Width(), 6);
            EXPECT_EQ(box.Height(), 6);
            CFont font;
            font.CreateFont(12, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
            dc.SelectObject(&font);
            EXPECT_EQ(dc.TextWidth(dc.GetSafeHdc(), "Hamburg", 7), 49);
        });
    }
}

// Averaged over the pixels of each unit, a text or a curve has the ratio's own finer edges but the
// same place and weight.
TEST(DeviceRatio, TextAndCurvesKeepPlaceAndWeight) {
    for (const auto draw : {DrawText12, DrawCurves}) {
        const QImage plain = Draw(1, draw);
        for (const double ratio : {1.5, 2.0}) {
            SCOPED_TRACE(ratio);
            const QImage scaled = Draw(ratio, draw);
            EXPECT_NEAR(Darkness(scaled) / Darkness(plain) / (ratio * ratio), 1, 0.07);
            const QImage small =
                scaled.scaled(plain.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            double difference = 0;
            for (int y = 0; y < kHeight; ++y)
                for (int x = 0; x < kWidth; ++x)
                    difference += Distance(small.pixel(x, y), plain.pixel(x, y));
            EXPECT_LT(difference / (kWidth * kHeight), 8);
        }
    }
}

// Some image formats are written without the painter. One that goes through it must look the same.
TEST(DirectDrawing, EqualsThePaintedOne) {
    const struct {
        const char* name;
        void (*draw)(CDC&);
        int tolerance; // blending and curves are counted differently, by a few levels
    } cases[] = {
        {"whole pixels", DrawWhole, 0}, {"text", DrawText12, 1}, {"curves", DrawCurves, 12}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const QImage painted = Draw(1, QImage::Format_RGB888, c.draw);
        EXPECT_LE(WorstPixel(Draw(1, QImage::Format_RGB32, c.draw), painted), c.tolerance);
        EXPECT_LE(WorstPixel(Draw(1, c.draw), painted), c.tolerance);
        EXPECT_GT(Darkness(painted), 0);
    }
}

TEST(DirectDrawing, AlphaAppliesToTextAndCurves) {
    for (const auto draw : {DrawText12, DrawCurves}) {
        const auto half = [](void (*inner)(CDC&), QImage::Format format) {
            static void (*s_inner)(CDC&);
            s_inner = inner;
            return Draw(1, format, [](CDC& dc) {
                dc.SetAlphaTransparency(100);
                s_inner(dc);
            });
        };
        EXPECT_LE(WorstPixel(half(draw, QImage::Format_RGB32), half(draw, QImage::Format_RGB888)),
                  12);
    }
}

TEST(DirectDrawing, ClipCutsCurvesExactly) {
    const QImage whole = Draw(1, DrawCurves);
    const QImage clipped = Draw(1, [](CDC& dc) {
        dc.IntersectClipRect(10, 10, 50, 45);
        DrawCurves(dc);
    });
    const QRect inside(12, 11, 40, 35); // in the image, where the view begins at 2, 1
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x)
            ASSERT_EQ(clipped.pixel(x, y), inside.contains(x, y) ? whole.pixel(x, y) : 0xFFFFFFFFu)
                << x << ',' << y;
}
