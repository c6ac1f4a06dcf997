// Cairo on the same pixels.
#include <cairo.h>

#include <algorithm>
#include <cstring>
#include <numbers>
#include <string>

#include <QtGui/QImage>

#include "Drawer.h"

namespace bench {
namespace {

class Cairo : public Drawer {
public:
    explicit Cairo(QImage& image)
        : m_surface(cairo_image_surface_create_for_data(
              image.bits(),
              image.format() == QImage::Format_RGB32 ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32,
              image.width(), image.height(), static_cast<int>(image.bytesPerLine()))),
          m_context(cairo_create(m_surface)) {
        cairo_set_line_width(m_context, 1);
        cairo_select_font_face(m_context, "Arial", CAIRO_FONT_SLANT_NORMAL,
                               CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(m_context, kTextSize);
        cairo_font_extents(m_context, &m_extents);
        for (std::size_t i = 0; i < m_sheets.size(); ++i)
            m_sheets[i] = SheetSurface(static_cast<Sheet>(i));
    }
    ~Cairo() override {
        for (cairo_surface_t* sheet : m_sheets) cairo_surface_destroy(sheet);
        cairo_destroy(m_context);
        cairo_surface_destroy(m_surface);
    }
    Cairo(const Cairo&) = delete;
    Cairo& operator=(const Cairo&) = delete;

    void Fill(const Mark& mark) override {
        UseColor(mark.color);
        AddRect(mark);
        cairo_fill(m_context);
    }

    void Line(const Mark& mark) override {
        UseColor(mark.color);
        const double dx = mark.left == mark.right ? 0.5 : 0;
        const double dy = mark.top == mark.bottom ? 0.5 : 0;
        cairo_move_to(m_context, mark.left + dx, mark.top + dy);
        cairo_line_to(m_context, mark.right + dx, mark.bottom + dy);
        cairo_stroke(m_context);
    }

    void Frame(const Mark& mark) override {
        cairo_save(m_context);
        AddRect(mark);
        cairo_clip(m_context);
        UseColor(mark.color);
        cairo_set_line_width(m_context, 2);
        AddRect(mark);
        cairo_stroke(m_context);
        cairo_restore(m_context);
    }

    void Ellipse(const Mark& mark) override {
        cairo_save(m_context);
        cairo_translate(m_context, (mark.left + mark.right) / 2.0, (mark.top + mark.bottom) / 2.0);
        cairo_scale(m_context, (mark.right - mark.left) / 2.0, (mark.bottom - mark.top) / 2.0);
        cairo_arc(m_context, 0, 0, 1, 0, 2 * std::numbers::pi);
        cairo_close_path(m_context);
        cairo_restore(m_context);
        UseColor(mark.color);
        cairo_fill_preserve(m_context);
        UseColor((mark.color + 1) % kPalette.size());
        cairo_stroke(m_context);
    }

    void Text(const Mark& mark, std::string_view text) override {
        UseColor(mark.color);
        cairo_move_to(m_context, mark.left, mark.top + m_extents.ascent);
        cairo_show_text(m_context, text.data()); // all texts of the scenes end in NUL
    }

    int TextWidth(std::string_view text) override {
        cairo_text_extents_t extents;
        cairo_text_extents(m_context, text.data(), &extents);
        return static_cast<int>(extents.x_advance);
    }

    void Blit(const Mark& mark, const Piece& piece) override {
        cairo_surface_t* const sheet = m_sheets[static_cast<std::size_t>(piece.sheet)];
        cairo_save(m_context);
        cairo_translate(m_context, mark.left, mark.top);
        cairo_rectangle(m_context, 0, 0, mark.right - mark.left, mark.bottom - mark.top);
        if (piece.half) cairo_scale(m_context, 0.5, 0.5);
        cairo_set_source_surface(m_context, sheet, -piece.x, -piece.y);
        if (piece.half)
            cairo_pattern_set_filter(cairo_get_source(m_context), CAIRO_FILTER_BILINEAR);
        cairo_fill(m_context);
        cairo_restore(m_context);
    }

private:
    // A surface with pixels of its own.
    static cairo_surface_t* SheetSurface(Sheet sheet) {
        const QImage image = SheetPixels(sheet);
        const bool opaque = image.format() == QImage::Format_RGB32;
        cairo_surface_t* const surface = cairo_image_surface_create(
            opaque ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32, kSheetSize, kSheetSize);
        std::memcpy(cairo_image_surface_get_data(surface), image.constBits(),
                    static_cast<std::size_t>(image.sizeInBytes()));
        auto* const pixels =
            reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface));
        if (sheet == Sheet::Keyed)
            std::replace(pixels, pixels + kSheetSize * kSheetSize, 0xFF000000 | kKey, 0U);
        cairo_surface_mark_dirty(surface);
        return surface;
    }

    void UseColor(std::size_t number) {
        const std::uint32_t rgb = kPalette[number];
        cairo_set_source_rgb(m_context, (rgb >> 16 & 255) / 255.0, (rgb >> 8 & 255) / 255.0,
                             (rgb & 255) / 255.0);
    }
    void AddRect(const Mark& mark) {
        cairo_rectangle(m_context, mark.left, mark.top, mark.right - mark.left,
                        mark.bottom - mark.top);
    }

    cairo_surface_t* m_surface;
    cairo_t* m_context;
    cairo_font_extents_t m_extents{};
    std::array<cairo_surface_t*, 3> m_sheets{};
};

} // namespace

std::unique_ptr<Drawer> CairoOn(QImage& image) {
    return std::make_unique<Cairo>(image);
}

} // namespace bench
