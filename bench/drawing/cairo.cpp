// Cairo on the same pixels.
#include <cairo.h>

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
    }
    ~Cairo() override {
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

private:
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
};

} // namespace

std::unique_ptr<Drawer> CairoOn(QImage& image) {
    return std::make_unique<Cairo>(image);
}

} // namespace bench
