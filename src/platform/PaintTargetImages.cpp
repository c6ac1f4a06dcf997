// How images reach the painter: copied straight into its pixels where that is the same, and smoothed
// when their size changes.
#include "platform/PaintTarget.h"

#include <cmath>
#include <cstring>

#include <QtGui/QPaintEngine>

namespace vm {
namespace {

// The toolkit's scaling looks at four pixels of the source for one: enough down to half the size.
constexpr double kSmallestScale = 0.5;

bool IsWhole(const QRectF& rect) {
    return rect == QRectF(rect.toRect());
}

// `source` of the image with exactly the size that it will have on the device.
QImage Shrunk(const QImage& image, const QRectF& source, const QSizeF& size) {
    const QSize whole(std::max(1, qRound(size.width())), std::max(1, qRound(size.height())));
    return image.copy(source.toAlignedRect())
        .scaled(whole, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

bool PaintTarget::IsPage() const {
    const QPaintEngine* engine = m_painter ? m_painter->paintEngine() : nullptr;
    return engine && engine->type() == QPaintEngine::Pdf;
}

// An opaque image that keeps its size replaces the pixels under it.
bool PaintTarget::CopyDirectly(const QImage& image, const QRectF& target, const QRectF& source,
                               const PaintState& state) const {
    if (!m_raster || image.format() != QImage::Format_RGB32 || state.alpha != 1 ||
        !state.clip.IsRectangle() || target.size() != source.size() || !IsWhole(target) ||
        !IsWhole(source))
        return false;
    const QRect within = target.toRect() & state.clip.rect & m_raster->rect();
    const QPoint from = source.toRect().topLeft() + within.topLeft() - target.toRect().topLeft();
    const auto bytes = static_cast<std::size_t>(within.width()) * sizeof(QRgb);
    auto* base = const_cast<uchar*>(m_raster->constBits()); // bits() might copy the pixels
    for (int y = 0; y < within.height(); ++y)
        std::memcpy(base + (within.y() + y) * m_raster->bytesPerLine() + within.x() * 4,
                    image.constScanLine(from.y() + y) + from.x() * 4, bytes);
    return true;
}

void PaintTarget::DrawImage(const QImage& image, const QRectF& target, const QRectF& source,
                            const PaintState& state) {
    QPainter& painter = Painter();
    if (&image == painter.device())
        return DrawImage(image.copy(source.toRect()), target, {QPointF(), source.size()}, state);
    if (CopyDirectly(image, target, source, state)) return;
    Prepare(target, {}, state);
    const QSizeF size = painter.deviceTransform().mapRect(target).size();
    const bool isScaled = size != source.size();
    const double scale = std::min(size.width() / source.width(), size.height() / source.height());
    painter.setRenderHint(QPainter::SmoothPixmapTransform, isScaled);
    if (scale < kSmallestScale && !IsPage()) {
        const QImage small = Shrunk(image, source, size);
        painter.drawImage(target, small, small.rect());
    } else {
        painter.drawImage(target, image, source);
    }
}

} // namespace vm
