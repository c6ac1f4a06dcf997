#include "scenes.h"

#include <random>

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
            Text()};
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
