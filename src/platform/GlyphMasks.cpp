#include "platform/GlyphMasks.h"

#include <cmath>

#include <QtGui/QGlyphRun>
#include <QtGui/QImage>
#include <QtGui/QPainter>

namespace vm {
namespace {

QRect InkedRect(const QImage& image) {
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(row[x]) != 0) box |= QRect(x, y, 1, 1);
    }
    return box;
}

} // namespace

// The glyph in opaque white: the alpha is its coverage.
void GlyphMasks::Make(GlyphMask& mask, const QRawFont& font, std::uint32_t glyph, int step) {
    const QRectF box = font.boundingRect(glyph);
    const double reach = std::max(
        {std::abs(box.left()), std::abs(box.right()), std::abs(box.top()), std::abs(box.bottom())});
    const int margin = static_cast<int>(std::ceil(reach)) + 2;
    QImage image(2 * margin, 2 * margin, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QPointF origin(margin + (step + 0.5) / kSteps, margin);
    QGlyphRun run;
    run.setRawFont(font);
    run.setRawData(&glyph, &origin, 1);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::white);
    painter.drawGlyphRun({}, run);
    painter.end();
    Keep(mask, image, margin);
}

void GlyphMasks::Keep(GlyphMask& mask, const QImage& image, int margin) {
    const QRect inked = InkedRect(image);
    mask.offset = static_cast<std::uint32_t>(m_bytes.size());
    mask.left = static_cast<std::int16_t>(inked.left() - margin);
    mask.top = static_cast<std::int16_t>(inked.top() - margin);
    mask.width = static_cast<std::int16_t>(inked.width());
    mask.height = static_cast<std::int16_t>(inked.height());
    for (int y = inked.top(); y <= inked.bottom(); ++y)
        for (int x = inked.left(); x <= inked.right(); ++x)
            m_bytes.push_back(static_cast<std::uint8_t>(qAlpha(image.pixel(x, y))));
}

} // namespace vm
