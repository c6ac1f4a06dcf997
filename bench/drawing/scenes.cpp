#include "scenes.h"

#include <random>

#include <QtGui/QImage>

namespace bench {

const std::string_view kText = "The quick brown foxes";

namespace {

using Draw = void (Drawer::*)(const Mark&);

// Marks of one size, spread over the picture.
std::vector<Mark> Spread(std::size_t count, int width, int height, unsigned seed) {
    std::minstd_rand random(seed);
    std::vector<Mark> marks;
    for (std::size_t i = 0; i < count; ++i) {
        const int left = static_cast<int>(random() % static_cast<unsigned>(kWidth - width));
        const int top = static_cast<int>(random() % static_cast<unsigned>(kHeight - height));
        marks.push_back({left, top, left + width, top + height, random() % kPalette.size()});
    }
    return marks;
}

Primitive Shapes(const std::string& name, Draw draw, int width, int height) {
    constexpr int kCount = 1000;
    return {name, kCount, [=, marks = Spread(kCount, width, height, 1)](Drawer& drawer) {
                for (const Mark& mark : marks) (drawer.*draw)(mark);
            }};
}

Primitive Text() {
    constexpr int kCount = 1000;
    return {"text-21-glyphs", kCount, [marks = Spread(kCount, 160, 20, 2)](Drawer& drawer) {
                for (const Mark& mark : marks) drawer.Text(mark, kText);
            }};
}

Primitive Blits(const std::string& name, int width, int height, const Piece& piece) {
    constexpr int kCount = 1000;
    return {"blit-" + name, kCount, [=, marks = Spread(kCount, width, height, 8)](Drawer& drawer) {
                for (const Mark& mark : marks) drawer.Blit(mark, piece);
            }};
}

// Half of them down, half across.
std::vector<Mark> Lines() {
    std::vector<Mark> lines = Spread(500, 120, 0, 3);
    const std::vector<Mark> down = Spread(500, 0, 90, 4);
    lines.insert(lines.end(), down.begin(), down.end());
    return lines;
}

} // namespace

std::vector<Primitive> Primitives() {
    return {Shapes("fill-1x1", &Drawer::Fill, 1, 1),
            Shapes("fill-20x20", &Drawer::Fill, 20, 20),
            Shapes("fill-100x100", &Drawer::Fill, 100, 100),
            Shapes("line-across-100", &Drawer::Line, 100, 0),
            Shapes("line-down-100", &Drawer::Line, 0, 100),
            Shapes("line-diagonal-100x60", &Drawer::Line, 100, 60),
            Shapes("frame-60x40", &Drawer::Frame, 60, 40),
            Shapes("ellipse-40x30", &Drawer::Ellipse, 40, 30),
            Shapes("ellipse-200x150", &Drawer::Ellipse, 200, 150),
            Text(),
            Blits("opaque-32x32", 32, 32, {Sheet::Opaque, 0, 0}),
            Blits("opaque-200x150", 200, 150, {Sheet::Opaque, 0, 0}),
            Blits("alpha-32x32", 32, 32, {Sheet::Alpha, 0, 0}),
            Blits("alpha-200x150", 200, 150, {Sheet::Alpha, 0, 0}),
            Blits("opaque-part-16x24", 16, 24, {Sheet::Opaque, 97, 211}),
            Blits("alpha-part-16x24", 16, 24, {Sheet::Alpha, 97, 211}),
            Blits("half-opaque-16x16", 16, 16, {Sheet::Opaque, 0, 0, true}),
            Blits("half-opaque-100x75", 100, 75, {Sheet::Opaque, 0, 0, true}),
            Blits("half-alpha-32x32", 32, 32, {Sheet::Alpha, 0, 0, true}),
            Blits("keyed-32x32", 32, 32, {Sheet::Keyed, 0, 0}),
            Blits("keyed-200x150", 200, 150, {Sheet::Keyed, 0, 0})};
}

QImage SheetPixels(Sheet sheet) {
    const bool opaque = sheet == Sheet::Opaque;
    QImage image(kSheetSize, kSheetSize,
                 opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < kSheetSize; ++y)
        for (int x = 0; x < kSheetSize; ++x) {
            const bool solid = opaque || (x / 4 + y / 4) % 4 != 0;
            const QRgb color = qRgba(x & 255, y & 255, x * y & 255, solid ? 255 : x & 255);
            const bool keyed = sheet == Sheet::Keyed && (x / 8 + y / 8) % 2;
            image.setPixel(x, y, keyed ? 0xFF000000 | kKey : qPremultiply(color));
        }
    return image;
}

Scene WholePaint(Texts texts) {
    return [=, lines = Lines(), frames = Spread(1000, 60, 40, 5), fills = Spread(1000, 20, 20, 6),
            places = Spread(texts == Texts::With ? 200 : 0, 160, 20, 7)](Drawer& drawer) {
        for (const Mark& mark : fills) drawer.Fill(mark);
        for (const Mark& mark : lines) drawer.Line(mark);
        for (const Mark& mark : frames) drawer.Frame(mark);
        for (const Mark& mark : places) drawer.Text(mark, kText);
    };
}

} // namespace bench
