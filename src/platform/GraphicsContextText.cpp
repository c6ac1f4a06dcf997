// Text of the graphics context: glyph runs from the face's tables.
#include <array>
#include <optional>

#include <QtGui/QGlyphRun>

#include "platform/GraphicsContext.h"

namespace vm {

void GraphicsContext::ShowText(std::string_view text) {
    if (!m_state.font) return;
    if (m_state.textMode == TextMode::Fill) DrawGlyphRun(text);
    if (m_state.textMode == TextMode::Stroke) StrokeGlyphs(text);
    m_textPosition.rx() += m_state.font->Width(text);
}

void GraphicsContext::DrawGlyphRun(std::string_view text) {
    constexpr std::size_t kAtOnce = 256; // a longer text is drawn in pieces
    const FontFace& font = *m_state.font;
    const QTransform transform = OnlyMoves() ? QTransform() : m_state.transform;
    const QPointF origin = OnlyMoves() ? m_state.transform.map(m_textPosition) : m_textPosition;
    if (OnlyMoves() && m_target->DrawTextDirectly(font, text, origin, m_state.fill, Paint()))
        return;
    std::array<quint32, kAtOnce> glyphs;
    std::array<QPointF, kAtOnce> positions;
    double x = origin.x();
    for (std::size_t done = 0; done < text.size(); done += kAtOnce) {
        const std::string_view piece = text.substr(done, kAtOnce);
        const double start = x;
        int count = 0;
        for (const char c : piece) {
            const auto code = static_cast<unsigned char>(c);
            if (font.Glyph(code) == FontFace::kNoGlyph) continue;
            glyphs[static_cast<std::size_t>(count)] = font.Glyph(code);
            positions[static_cast<std::size_t>(count++)] = {x, origin.y()};
            x += font.Advance(code);
        }
        std::optional<QGlyphRun> ofPage;
        if (m_target->IsPage()) ofPage.emplace().setRawFont(font.Embeddable());
        QGlyphRun& run = ofPage ? *ofPage : font.Run();
        run.setRawData(glyphs.data(), positions.data(), count);
        const double reach = 2 * font.Size(); // beyond the advances and lines of any face
        const QRectF bounds(start - reach, origin.y() - reach, x - start + 2 * reach, 2 * reach);
        m_target->DrawGlyphs(run, bounds, m_state.fill, transform, Paint());
    }
}

void GraphicsContext::StrokeGlyphs(std::string_view text) {
    const FontFace& font = *m_state.font;
    QPainterPath outlines;
    QPointF position = m_textPosition;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (font.Glyph(code) == FontFace::kNoGlyph) continue;
        outlines.addPath(font.Raw().pathForGlyph(font.Glyph(code)).translated(position));
        position.rx() += font.Advance(code);
    }
    StrokePath(outlines);
}

} // namespace vm
