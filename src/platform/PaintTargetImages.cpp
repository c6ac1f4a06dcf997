// How images reach the painter: copied straight into its pixels where that is the same, and smoothed
// when their size changes.
#include "platform/PaintTarget.h"

#include <algorithm>
#include <cstring>

#include <QtGui/QPaintEngine>

namespace vm {
namespace {

// The toolkit's scaling looks at four pixels of the source for one: enough down to half the size.
constexpr double kSmallestScale = 0.5;

// The rectangle in whole pixels, if it is made of them; its values are known to be small.
bool ToWhole(const QRectF& rect, QRect& whole) {
    whole = QRect(static_cast<int>(rect.x()), static_cast<int>(rect.y()),
                  static_cast<int>(rect.width()), static_cast<int>(rect.height()));
    return whole.x() == rect.x() && whole.y() == rect.y() && whole.width() == rect.width() &&
           whole.height() == rect.height();
}

// `to` lies within `target`, `from` is where it comes from in `source`.
void CopyPixels(const QImage& target, const QRect& to, const QImage& source, QPoint from) {
    const qsizetype stride = target.bytesPerLine();
    const qsizetype sourceStride = source.bytesPerLine();
    const auto bytes = static_cast<std::size_t>(to.width()) * sizeof(QRgb);
    // bits() might copy the pixels
    auto* line = const_cast<uchar*>(target.constBits()) + to.y() * stride + to.x() * 4;
    const uchar* sourceLine = source.constBits() + from.y() * sourceStride + from.x() * 4;
    for (int y = 0; y < to.height(); ++y, line += stride, sourceLine += sourceStride)
        std::memcpy(line, sourceLine, bytes);
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
        !state.clip.IsRectangle())
        return false;
    QRect to, from;
    if (!ToWhole(target, to) || !ToWhole(source, from) || to.size() != from.size()) return false;
    const QRect within = to & state.clip.rect & m_raster->rect();
    if (!within.isEmpty())
        CopyPixels(*m_raster, within, image, from.topLeft() + within.topLeft() - to.topLeft());
    return true;
}

void PaintTarget::UseSmoothing(bool wanted) {
    if (m_smooth == wanted) return;
    m_painter->setRenderHint(QPainter::SmoothPixmapTransform, wanted);
    m_smooth = wanted;
}

void PaintTarget::DrawImage(const QImage& image, const QRectF& target, const QRectF& source,
                            const PaintState& state) {
    QPainter& painter = Painter();
    if (&image == painter.device())
        return DrawImage(image.copy(source.toRect()), target, {QPointF(), source.size()}, state);
    if (CopyDirectly(image, target, source, state)) return;
    Prepare(target, {}, state);
    const QSizeF size = m_raster ? target.size() : painter.deviceTransform().mapRect(target).size();
    UseSmoothing(size != source.size());
    const double scale = std::min(size.width() / source.width(), size.height() / source.height());
    if (scale < kSmallestScale && !IsPage()) {
        const QImage small = Shrunk(image, source, size);
        painter.drawImage(target, small, small.rect());
    } else {
        painter.drawImage(target, image, source);
    }
}

} // namespace vm
