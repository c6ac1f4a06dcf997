// The few calls that every contestant draws a scene with. Each draws through its own interface in the
// way its users write it; a call sets all the state it depends on, as the handlers of ported programs
// do.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

class CDC;
class QImage;
class QPainter;
using cairo_t = struct _cairo;

namespace bench {

/// Where, and the number of a colour. A line runs from (left, top) to (right, bottom).
struct Mark {
    int left, top, right, bottom;
    std::size_t color;
};

constexpr std::array<std::uint32_t, 8> kPalette = {0x1A2B3C, 0xC03020, 0x208040, 0x3050C0,
                                                   0xE0A010, 0x707880, 0x902090, 0xF4F4F4};
constexpr int kTextSize = 12;

/// Artwork of kSheetSize squared: no pixel alike, some of it translucent, some of it of the key colour.
enum class Sheet { Opaque, Alpha, Keyed };
constexpr int kSheetSize = 512;
constexpr std::uint32_t kKey = 0xFF00FF;
QImage SheetPixels(Sheet sheet); ///< 32 bits a pixel, premultiplied or without alpha

/// What a blit draws; `half` takes twice the mark's width and height and scales them smoothly.
struct Piece {
    Sheet sheet;
    int x, y;
    bool half = false;
};

class Drawer {
public:
    virtual ~Drawer() = default;
    virtual void Fill(const Mark& mark) = 0;
    virtual void Line(const Mark& mark) = 0;
    virtual void Frame(const Mark& mark) = 0;
    virtual void Ellipse(const Mark& mark) = 0; ///< filled, with an outline of the next colour
    virtual void Text(const Mark& mark, std::string_view text) = 0; ///< its top left at the mark
    virtual int TextWidth(std::string_view text) = 0;
    virtual void Blit(const Mark& mark, const Piece& piece) = 0;
};

// On an image of 32-bit pixels, which the drawer uses until it goes away.
std::unique_ptr<Drawer> OursOn(QImage& image);
/// Lines of one pixel have pens of `penWidth`: a little more than 1 is faster and stronger.
std::unique_ptr<Drawer> PlainOn(QImage& image, double penWidth = 1);
std::unique_ptr<Drawer> CairoOn(QImage& image);

// With what a paint handler has.
std::unique_ptr<Drawer> OursWith(CDC& dc);
std::unique_ptr<Drawer> PlainWith(QPainter& painter);

} // namespace bench
