// How images reach the painter: copied straight into its pixels where that is the same, and smoothed
// when their size changes.
#include "platform/PaintTarget.h"

#include <algorithm>

#include <QtGui/QPaintEngine>

#include "platform/blitRows.h"

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

SourceRows RowsFrom(const QImage& image, QPoint first) {
    const auto stride = static_cast<std::size_t>(image.bytesPerLine());
    const SourceRows rows{image.constBits(), stride};
    return {reinterpret_cast<const uchar*>(rows.Row(first.y()) + first.x()), stride};
}

PixelRows RowsFrom(const PixelRows& pixels, QPoint first) {
    return {reinterpret_cast<uchar*>(pixels.Row(first.y()) + first.x()), pixels.stride};
}

// Where there is much to blend, what a call of the painter costs is nothing, and its loop is the best.
bool IsForPainter(QSize size) {
    constexpr int kMostPixels = 64 * 64;
    return size.width() * size.height() > kMostPixels;
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

// Whole pixels at their own or half their size; what is cut off at the top left is cut off the source.
bool PaintTarget::BlitDirectly(const QImage& image, const QRectF& target, const QRectF& source,
                               const PaintState& state) const {
    const bool opaque = image.format() == QImage::Format_RGB32;
    if (!m_raster || state.alpha != 1 || !state.clip.IsRectangle()) return false;
    if (!opaque && image.format() != QImage::Format_ARGB32_Premultiplied) return false;
    QRect to, from;
    if (!ToWhole(target, to) || !ToWhole(source, from)) return false;
    const bool halved = from.width() == 2 * to.width() && from.height() == 2 * to.height();
    if (!halved && to.size() != from.size()) return false;
    const QRect within = to & state.clip.rect & m_raster->rect();
    if (within.isEmpty()) return true;
    if (!halved && !opaque && IsForPainter(within.size())) return false;
    const QPoint first = from.topLeft() + (within.topLeft() - to.topLeft()) * (halved ? 2 : 1);
    const auto blit = halved ? opaque ? HalveRows : BlendHalvedRows : opaque ? CopyRows : BlendRows;
    blit(RowsFrom(Pixels(), within.topLeft()), RowsFrom(image, first), within.size());
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
    if (&image == m_device)
        return DrawImage(image.copy(source.toRect()), target, {QPointF(), source.size()}, state);
    if (BlitDirectly(image, target, source, state)) return;
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
