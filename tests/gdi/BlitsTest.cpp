#include <vmcore/gdi/CDC.h>

#include <algorithm>
#include <cstdlib>
#include <functional>

#include <QtGui/QPainter>

#include <gmock/gmock.h>

#include <vmcore/gdi/CBitmap.h>
#include <vmcore/gdi/CBrush.h>

#include "gdi/Artwork.h"
#include "gdi/Canvas.h"
#include "platform/Image.h"

using testing::ElementsAre;

namespace {

// A bitmap loaded from `pixels` and selected into a memory context.
class Source {
public:
    explicit Source(const QImage& pixels) {
        m_art.Add(1, pixels);
        EXPECT_TRUE(m_bitmap.LoadBitmap(1u));
        dc.SelectObject(&m_bitmap);
    }

private:
    Artwork m_art;
    CBitmap m_bitmap;

public:
    CDC dc;
};

QImage CheckerBoard(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, (x + y) % 2 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
    return image;
}

// A device context on an image.
class Screen {
public:
    /// 20 x 20 units at a device ratio, transparent.
    explicit Screen(double ratio) : Screen(Transparent(ratio)) {}
    explicit Screen(const QImage& pixels) : image(pixels.copy()) {
        m_target = std::make_shared<vm::PaintTarget>(&image);
        const QSize units = image.deviceIndependentSize().toSize();
        auto* context = vm::GraphicsContext::ForView(m_target, {}, QRegion({{}, units}));
        dc.Attach(context);
        context->Release();
    }
    ~Screen() {
        m_target->End();
        dc.Detach();
    }

    QImage image;
    CDC dc;

private:
    static QImage Transparent(double ratio) {
        QImage image(qRound(20 * ratio), qRound(20 * ratio), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        return image;
    }

    std::shared_ptr<vm::PaintTarget> m_target;
};

// Pixels of every alpha, and runs of opaque and of missing ones.
QImage Translucent(int width, int height) {
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int run = (x / 9 + y) % 3;
            const int alpha = run == 0 ? 255 : run == 1 ? 0 : (7 * x + 31 * y) & 255;
            image.setPixel(x, y, qRgba(5 * x & 255, 11 * y & 255, x * y & 255, alpha));
        }
    return image;
}

int WorstComponent(const QImage& a, const QImage& b) {
    int worst = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            for (int shift = 0; shift < 32; shift += 8)
                worst = std::max(worst, std::abs(static_cast<int>(a.pixel(x, y) >> shift & 255) -
                                                 static_cast<int>(b.pixel(x, y) >> shift & 255)));
    return worst;
}

QImage Ground(QImage::Format format) {
    QImage image(80, 60, format);
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 80; ++x) image.setPixel(x, y, qRgb(3 * x, 255 - 4 * y, 99));
    return image;
}

} // namespace

struct BlitRow {
    const char* name;
    std::function<BOOL(CDC&, CDC*)> draw;
    BOOL result;
    std::string inked; // of a canvas of 20 x 20; the source is a gradient of 10 x 8
    QPoint at;         // a pixel, and which of the source it shows
    QPoint shows;
};
void PrintTo(const BlitRow& row, std::ostream* out) {
    *out << row.name;
}
constexpr QPoint kAny(-1, -1);
class Blit : public testing::TestWithParam<BlitRow> {};

TEST_P(Blit, DrawsThePartThatThereIsUpright) {
    const BlitRow& row = GetParam();
    const QImage pixels = Gradient(10, 8);
    Source source(pixels);
    Canvas canvas(20, 20);
    EXPECT_EQ(row.draw(canvas.dc, &source.dc), row.result);
    EXPECT_EQ(Inked(canvas.Pixels()), row.inked);
    if (row.inked != "nothing" && row.shows != kAny) {
        EXPECT_EQ(canvas.Pixels().pixel(row.at), pixels.pixel(row.shows));
    }
}

constexpr int kHuge = 0x7FFFFFFF;
INSTANTIATE_TEST_SUITE_P(
    Forms, Blit,
    testing::Values(
        BlitRow{"whole",
                [](CDC& d, CDC* s) { return d.BitBlt(3, 4, 10, 8, s, 0, 0, SRCCOPY); },
                TRUE,
                "3,4,13,12",
                {4, 4},
                {1, 0}},
        BlitRow{"part, another operation",
                [](CDC& d, CDC* s) { return d.BitBlt(3, 4, 2, 3, s, 5, 5, SRCINVERT); },
                TRUE,
                "3,4,5,7",
                {3, 6},
                {5, 7}},
        BlitRow{"beyond the right and lower edge",
                [](CDC& d, CDC* s) { return d.BitBlt(1, 1, 15, 15, s, 8, 5, 0); },
                TRUE,
                "1,1,3,4",
                {2, 3},
                {9, 7}},
        BlitRow{"beyond the left and upper edge",
                [](CDC& d, CDC* s) { return d.BitBlt(1, 1, 15, 15, s, -2, -3, 0); },
                TRUE,
                "3,4,13,12",
                {3, 4},
                {0, 0}},
        BlitRow{"target partly outside",
                [](CDC& d, CDC* s) { return d.BitBlt(-4, 15, 10, 8, s, 0, 0, 0); },
                TRUE,
                "0,15,6,20",
                {0, 19},
                {4, 4}},
        BlitRow{"outside the source",
                [](CDC& d, CDC* s) { return d.BitBlt(0, 0, 5, 5, s, 10, 0, 0); },
                FALSE,
                "nothing",
                {},
                {}},
        BlitRow{"empty",
                [](CDC& d, CDC* s) { return d.BitBlt(0, 0, 0, 5, s, 0, 0, 0); },
                FALSE,
                "nothing",
                {},
                {}},
        BlitRow{"negative",
                [](CDC& d, CDC* s) { return d.BitBlt(5, 5, -5, 5, s, 5, 0, 0); },
                FALSE,
                "nothing",
                {},
                {}},
        BlitRow{"huge",
                [](CDC& d, CDC* s) { return d.BitBlt(0, 0, kHuge, kHuge, s, 0, 0, 0); },
                TRUE,
                "0,0,10,8",
                {9, 7},
                {9, 7}},
        BlitRow{"far outside",
                [](CDC& d, CDC* s) { return d.BitBlt(-kHuge - 1, 0, 9, 9, s, -kHuge - 1, 0, 0); },
                FALSE,
                "nothing",
                {},
                {}},
        BlitRow{"no source",
                [](CDC& d, CDC*) { return d.BitBlt(0, 0, 5, 5, nullptr, 0, 0, 0); },
                FALSE,
                "nothing",
                {},
                {}},
        BlitRow{"a view as the source",
                [](CDC& d, CDC*) { return d.BitBlt(0, 0, 5, 5, &d, 0, 0, 0); },
                TRUE,
                "nothing",
                {},
                {}},
        BlitRow{"keyed, a view as the source",
                [](CDC& d, CDC*) { return d.BitBltTransparent(0, 0, 5, 5, &d, 0, 0, 0); },
                TRUE,
                "nothing",
                {},
                {}},
        BlitRow{"keyed",
                [](CDC& d, CDC* s) {
                    return d.BitBltX2Transparent(2, 3, 9, 8, s, 1, 0, RGB(40, 10, 99));
                },
                TRUE,
                "2,3,11,11",
                {3, 3},
                {2, 0}},
        BlitRow{"half scale",
                [](CDC& d, CDC* s) { return d.BitBltX2(10, 10, 5, 4, s, 0, 0, SRCCOPY); },
                TRUE,
                "10,10,15,14",
                {},
                kAny},
        BlitRow{"half scale, part that there is",
                [](CDC& d, CDC* s) { return d.BitBltX2(0, 0, 5, 5, s, 4, 0, SRCCOPY); },
                TRUE,
                "0,0,3,4",
                {},
                kAny},
        BlitRow{"stretched to its own size",
                [](CDC& d, CDC* s) { return d.StretchBlt(3, 3, 4, 4, s, 2, 1, 4, 4, 0); },
                TRUE,
                "3,3,7,7",
                {3, 6},
                {2, 4}},
        BlitRow{"stretched, part that there is",
                [](CDC& d, CDC* s) { return d.StretchBltX2(0, 0, 20, 16, s, -5, 0, 10, 8, 0); },
                TRUE,
                "10,0,20,16",
                {},
                kAny},
        BlitRow{"stretched beyond all bounds",
                [](CDC& d, CDC* s) { return d.StretchBlt(-9, -9, kHuge, kHuge, s, 0, 0, 1, 1, 0); },
                TRUE,
                "0,0,20,20",
                {7, 7},
                {0, 0}},
        BlitRow{"stretched from nothing",
                [](CDC& d, CDC* s) { return d.StretchBlt(0, 0, 20, 20, s, 0, 0, 0, 8, 0); },
                FALSE,
                "nothing",
                {},
                {}}));

TEST(Blits, DetachedTargetOrEndedViewGivesNothing) {
    Source source(Gradient(4, 4));
    CDC detached;
    EXPECT_FALSE(detached.BitBlt(0, 0, 4, 4, &source.dc, 0, 0, SRCCOPY));
    EXPECT_FALSE(detached.StretchBltTransparent(0, 0, 4, 4, &source.dc, 0, 0, 4, 4, 0));
    LogCapture log;
    QImage image = CheckerBoard(4, 4);
    auto target = std::make_shared<vm::PaintTarget>(&image);
    auto* context = vm::GraphicsContext::ForView(target, {}, QRegion(0, 0, 4, 4));
    CDC dead;
    dead.Attach(context);
    context->Release();
    target->End();
    EXPECT_FALSE(dead.BitBltX2(0, 0, 2, 2, &source.dc, 0, 0, SRCCOPY));
    EXPECT_FALSE(dead.BitBltTransparent(0, 0, 4, 4, &source.dc, 0, 0, 0));
    EXPECT_THAT(log.TakeLog(), ElementsAre("exception at CDC::BitBlt() - DeadContext",
                                           "exception at CDC::BitBltTransparent() - DeadContext"));
}

// The direct copy of opaque images against the painter, with what keeps it from being direct.
TEST(Blits, CopiesLookAlikeUnderClipAlphaAndFormat) {
    const QImage opaque = Gradient(12, 12);
    QImage translucent = opaque.convertToFormat(QImage::Format_ARGB32);
    for (int i = 0; i < 12; ++i) translucent.setPixel(i, i, qRgba(200, 100, 50, 20 * i));
    for (const QImage& pixels : {opaque, translucent}) {
        Source source(pixels);
        Canvas canvas(20, 20);
        canvas.dc.IntersectClipRect(2, 2, 18, 10);
        canvas.dc.BitBlt(1, 1, 12, 12, &source.dc, 0, 0, SRCCOPY);
        canvas.dc.SetAlphaTransparency(100);
        canvas.dc.BitBlt(8, 4, 12, 12, &source.dc, 0, 0, SRCCOPY);
        QImage plain(20, 20, QImage::Format_ARGB32_Premultiplied);
        plain.fill(Qt::transparent);
        QPainter painter(&plain);
        painter.setClipRect(2, 2, 16, 8);
        painter.drawImage(1, 1, pixels);
        painter.setOpacity(1 - 100 / 255.0);
        painter.drawImage(8, 4, pixels);
        painter.end();
        EXPECT_EQ(canvas.Pixels(), plain);
    }
}

// Small ones are blended without the painter; each must be the picture that it makes.
TEST(Blits, BlendsAreThePaintersToTheLastBit) {
    const QImage pixels = Translucent(90, 70);
    Source source(pixels);
    const QImage premultiplied = pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QRect parts[] = {{0, 0, 32, 32},   {5, 7, 19, 3},  {40, 9, 1, 40},  {3, 3, 2, 2},
                           {70, 50, 17, 20}, {0, 0, 90, 70}, {-4, -6, 30, 30}};
    for (const auto format : {QImage::Format_ARGB32_Premultiplied, QImage::Format_RGB32}) {
        for (const QRect& part : parts) {
            SCOPED_TRACE(testing::Message() << part.x() << ',' << part.y() << ' ' << part.width());
            Screen ours(Ground(format));
            ours.dc.BitBlt(13, -2, part.width(), part.height(), &source.dc, part.x(), part.y(),
                           SRCCOPY);
            QImage painted = Ground(format);
            QPainter(&painted).drawImage(QPoint(13, -2), premultiplied, part);
            EXPECT_EQ(ours.image, painted);
        }
    }
}

// Halving goes past the painter too, which rounds more often.
TEST(Blits, HalvesAreThePaintersMeans) {
    const QImage translucent = Translucent(80, 80);
    for (const QImage& pixels : {translucent, translucent.convertToFormat(QImage::Format_RGB32)}) {
        Source source(pixels);
        const bool opaque = pixels.format() == QImage::Format_RGB32;
        const QImage kept =
            opaque ? pixels : pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        for (const QRect& part : {QRect(0, 0, 80, 80), QRect(3, 4, 14, 30), QRect(78, 2, 2, 4)}) {
            SCOPED_TRACE(testing::Message() << part.x() << ',' << part.y() << ' ' << part.width());
            const QRect target(QPoint(-5, 7), part.size() / 2);
            Screen ours(Ground(QImage::Format_RGB32));
            ours.dc.BitBltX2(-5, 7, target.width(), target.height(), &source.dc, part.x(), part.y(),
                             SRCCOPY);
            QImage painted = Ground(QImage::Format_RGB32);
            QPainter painter(&painted);
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.drawImage(target, kept, part);
            painter.end();
            EXPECT_LE(WorstComponent(ours.image, painted), opaque ? 1 : 2);
        }
    }
}

TEST(Blits, ColourKeyFollowsTheKeyAndWhatIsDrawn) {
    QImage pixels(4, 1, QImage::Format_ARGB32);
    pixels.fill(Qt::black);
    pixels.setPixel(1, 0, qRgb(255, 0, 255));
    pixels.setPixel(2, 0, qRgb(255, 1, 255));
    pixels.setPixel(3, 0, qRgba(255, 0, 255, 128));
    Source source(pixels);
    const auto show = [&](COLORREF key) {
        Canvas canvas(4, 1);
        EXPECT_TRUE(canvas.dc.BitBltTransparent(0, 0, 4, 1, &source.dc, 0, 0, key));
        return canvas.Picture().front();
    };
    EXPECT_EQ(show(RGB(255, 0, 255)), "#.xx"); // exact, and only opaque ones
    EXPECT_EQ(show(RGB(0, 0, 0)), ".xxx");
    CBrush brush(COLORREF{0});
    source.dc.FillRect(CRect(2, 0, 3, 1), &brush);
    EXPECT_EQ(show(RGB(0, 0, 0)), ".x.x");
    source.dc.FillRect(CRect(1, 0, 2, 1), &brush);
    EXPECT_EQ(show(RGB(0, 0, 0)), "...x");
    Canvas wide(8, 1);
    EXPECT_TRUE(wide.dc.StretchBltTransparent(0, 0, 8, 1, &source.dc, 0, 0, 4, 1, 0));
    EXPECT_EQ(wide.At(0, 0), 0u);
    EXPECT_EQ(qAlpha(wide.At(7, 0)), 128);
}

TEST(Blits, BetweenBitmapsAndWithinOne) {
    CBitmap target;
    target.CreateCompatibleBitmap(nullptr, 6, 1);
    CDC memory;
    memory.SelectObject(&target);
    Source source(CheckerBoard(4, 1));
    EXPECT_TRUE(memory.BitBlt(0, 0, 4, 1, &source.dc, 0, 0, SRCCOPY));
    EXPECT_FALSE(memory.BitBltTransparent(0, 0, 4, 1, &source.dc, 0, 0, 0)); // not into a bitmap
    tagBITMAP record;
    target.GetBitmap(&record);
    EXPECT_THAT(PixelGrid(record.bmBits->Pixels()), ElementsAre("#.#..."));
    EXPECT_EQ(record.bmBits->Pixels().pixel(3, 0), 0xFFFFFFFFu);
    EXPECT_EQ(record.bmBits->Pixels().pixel(4, 0), 0u);
    const QImage pixels = Gradient(5, 9);
    Source scrolled(pixels); // within one the two parts overlap
    EXPECT_TRUE(scrolled.dc.BitBlt(1, 2, 5, 9, &scrolled.dc, 0, 0, SRCCOPY));
    Canvas canvas(5, 9);
    EXPECT_TRUE(canvas.dc.BitBlt(0, 0, 5, 9, &scrolled.dc, 0, 0, SRCCOPY));
    EXPECT_EQ(canvas.At(0, 8), pixels.pixel(0, 8));
    EXPECT_EQ(canvas.Pixels().convertToFormat(QImage::Format_RGB32).copy(1, 2, 4, 7),
              pixels.copy(0, 0, 4, 7));
}

// The neighbours in a sheet of artwork must not shine through at the edges.
TEST(Blits, HalvedArtworkIsTheMeanOfItsOwnPixelsOnly) {
    QImage sheet(60, 60, QImage::Format_RGB32);
    sheet.fill(Qt::red);
    QPainter(&sheet).drawImage(10, 10, CheckerBoard(40, 40));
    Source source(sheet);
    Canvas canvas(40, 40);
    EXPECT_TRUE(canvas.dc.BitBltX2(10, 10, 20, 20, &source.dc, 10, 10, SRCCOPY));
    EXPECT_EQ(Inked(canvas.Pixels()), "10,10,30,30");
    for (int y = 10; y < 30; ++y)
        for (int x = 10; x < 30; ++x) {
            const QRgb pixel = canvas.At(x, y);
            ASSERT_EQ(pixel, qRgb(qRed(pixel), qRed(pixel), qRed(pixel))) << x << "," << y;
            ASSERT_NEAR(qRed(pixel), 127, 1) << x << "," << y;
        }
}

TEST(Blits, FarSmallerEveryPixelStillCounts) {
    QImage lines(40, 40, QImage::Format_RGB32);
    lines.fill(Qt::black);
    for (int x = 0; x < 40; x += 10) QPainter(&lines).fillRect(x, 0, 1, 40, Qt::white);
    Source source(lines);
    Canvas canvas(4, 4);
    EXPECT_TRUE(canvas.dc.StretchBlt(0, 0, 4, 4, &source.dc, 0, 0, 40, 40, SRCCOPY));
    EXPECT_NEAR(qRed(canvas.At(1, 2)), 255 / 10, 2);
    EXPECT_NEAR(qRed(canvas.At(3, 0)), 255 / 10, 2);
}

TEST(BitBlt, ErasedPartOfAnOpaquePictureIsBlackNotAHole) {
    Source source(Gradient(4, 4));
    source.dc.EraseRect(CRect(1, 1, 3, 3));
    Canvas canvas(4, 4);
    EXPECT_EQ(canvas.dc.BitBlt(0, 0, 4, 4, &source.dc, 0, 0, 0), 1);
    EXPECT_EQ(canvas.At(1, 1), 0xFF000000U);
    EXPECT_EQ(canvas.At(0, 0), Gradient(4, 4).pixel(0, 0));
}

TEST(HighDensity, SameLayoutAndArtworkAtItsFullResolution) {
    const QImage artwork = CheckerBoard(16, 16);
    Source source(artwork);
    for (const double ratio : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(ratio);
        Screen screen(ratio);
        EXPECT_TRUE(screen.dc.BitBltX2(2, 4, 8, 8, &source.dc, 0, 0, SRCCOPY));
        EXPECT_TRUE(screen.dc.BitBlt(11, 3, 5, 5, &source.dc, 0, 0, SRCCOPY)); // odd at 1.5
        const auto box = [&](int l, int t, int r, int b) {
            return QRect(QPoint(qRound(l * ratio), qRound(t * ratio)),
                         QPoint(qRound(r * ratio) - 1, qRound(b * ratio) - 1));
        };
        QImage covered(screen.image.size(), QImage::Format_ARGB32_Premultiplied);
        covered.fill(Qt::transparent);
        QPainter painter(&covered);
        painter.fillRect(box(2, 4, 10, 12), Qt::black);
        painter.fillRect(box(11, 3, 16, 8), Qt::black);
        painter.end();
        EXPECT_EQ(screen.image.createAlphaMask(), covered.createAlphaMask());
        QImage shown = screen.image.copy(box(2, 4, 10, 12)).convertToFormat(QImage::Format_RGB32);
        shown.setDevicePixelRatio(1);
        if (ratio == 2) {
            EXPECT_EQ(shown, artwork);
        }
    }
}
