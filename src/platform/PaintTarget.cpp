#include "platform/PaintTarget.h"

#include <algorithm>
#include <cwchar>
#include <vector>

#include <QtGui/QPen>

#include "core/guard.h"

namespace vm {
namespace {

// At a width of 1 or less the toolkit strokes with its cosmetic stroker, whose coverage on
// diagonals and curves is too low.
constexpr double kThinnestStroke = 1.0001;
constexpr double kMiterLimit = 10;

// The image behind a painter whose pixels are 32-bit words as colours are, else null.
const QImage* WritableImage(const QPainter& painter) {
    const auto* image = dynamic_cast<const QImage*>(painter.device());
    if (!image || image->devicePixelRatio() != 1) return nullptr;
    const bool fits = image->format() == QImage::Format_RGB32 ||
                      image->format() == QImage::Format_ARGB32_Premultiplied;
    return fits ? image : nullptr;
}

} // namespace

PaintTarget::PaintTarget(QPainter* painter)
    : m_painter(painter), m_raster(WritableImage(*painter)) {
    m_painter->setRenderHint(QPainter::Antialiasing);
}

PaintTarget::PaintTarget(QPaintDevice* device) : m_device(device) {}

PaintTarget::~PaintTarget() = default;

void PaintTarget::End() {
    m_device = nullptr;
    m_painter = nullptr;
    m_raster = nullptr;
    m_own.reset();
}

QPainter& PaintTarget::Painter() {
    if (m_painter) return *m_painter;
    auto own = std::make_unique<QPainter>();
    if (!m_device || !own->begin(m_device))
        throw PlatformError("DeadContext", "the device is gone");
    m_own = std::move(own);
    m_painter = m_own.get();
    m_painter->setRenderHint(QPainter::Antialiasing);
    m_raster = WritableImage(*m_painter);
    return *m_painter;
}

// Straight into the device's pixels: three to five times faster than through the painter, which
// keeps nothing back that would come later. A widget's painter has a clip of its own that cannot be
// seen here, and its device is no image.
bool PaintTarget::FillDirectly(const QRect& rect, QRgb color, const PaintState& state) const {
    static_assert(sizeof(wchar_t) == sizeof(QRgb));
    if (!m_raster || qAlpha(color) != 255 || state.alpha != 1 || !state.clip.IsRectangle())
        return false;
    const QRect within = rect & m_raster->rect();
    const std::size_t stride = static_cast<std::size_t>(m_raster->bytesPerLine());
    uchar* line = const_cast<uchar*>(m_raster->constBits()) + // bits() might copy the pixels
                  static_cast<std::size_t>(within.top()) * stride;
    for (int y = within.top(); y <= within.bottom(); ++y, line += stride)
        std::wmemset(reinterpret_cast<wchar_t*>(line) + within.left(), static_cast<wchar_t>(color),
                     static_cast<std::size_t>(within.width()));
    return true;
}

void PaintTarget::FillPixels(const QRect& rect, QRgb color, const PaintState& state) {
    QPainter& painter = Painter();
    if (rect.isEmpty() || FillDirectly(rect, color, state)) return;
    Prepare(rect, {}, state);
    painter.fillRect(rect, QColor::fromRgba(color));
}

void PaintTarget::ClearPixels(const QRect& rect, const PaintState& state) {
    QPainter& painter = Painter();
    if (rect.isEmpty()) return;
    Prepare(rect, {}, state);
    if (IsPage()) return painter.fillRect(rect, Qt::white); // what shows through is the paper
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(rect, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void PaintTarget::FillPath(const QPainterPath& path, QRgb color, const PaintState& state) {
    Prepare(path.controlPointRect(), {}, state);
    Painter().fillPath(path, QColor::fromRgba(color));
}

void PaintTarget::StrokePath(const QPainterPath& path, QRgb color, double width,
                             const QTransform& transform, const PaintState& state) {
    const double reach = width * kMiterLimit + 1;
    const QRectF bounds = path.controlPointRect().adjusted(-reach, -reach, reach, reach);
    Prepare(transform.mapRect(bounds), transform, state);
    UsePen(color, std::max(width, kThinnestStroke));
    Painter().strokePath(path, Painter().pen());
}

void PaintTarget::DrawGlyphs(const QGlyphRun& glyphs, const QRectF& bounds, QRgb color,
                             const QTransform& transform, const PaintState& state) {
    Prepare(transform.mapRect(bounds), transform, state);
    if (m_penColor != color || m_penWidth < 0) UsePen(color, kThinnestStroke);
    Painter().drawGlyphRun({}, glyphs);
}

void PaintTarget::Prepare(const QRectF& bounds, const QTransform& transform,
                          const PaintState& state) {
    QPainter& painter = Painter();
    UseClip(bounds, state.clip);
    UseTransform(transform);
    if (m_alpha == state.alpha) return;
    painter.setOpacity(state.alpha);
    m_alpha = state.alpha;
}

// A rectangular clip that holds the whole drawing need not be set at all, and a wider one that is
// set may stay.
void PaintTarget::UseClip(const QRectF& bounds, const Clip& clip) {
    if (m_clipSerial == clip.serial) return;
    const bool needed = !clip.IsRectangle() || !QRectF(clip.rect).contains(bounds);
    if (!needed && (m_clipSerial == 0 || QRectF(m_clipRect).contains(bounds))) return;
    UseTransform({});
    if (needed) {
        SetPainterClip(clip);
    } else {
        m_painter->setClipping(false);
        m_clipSerial = 0;
    }
}

void PaintTarget::SetPainterClip(const Clip& clip) {
    m_painter->setClipRect(clip.rect);
    if (!clip.region.isEmpty()) m_painter->setClipRegion(clip.region, Qt::IntersectClip);
    std::vector<const ClipShape*> shapes;
    for (auto* shape = clip.shapes.get(); shape; shape = shape->outer.get())
        shapes.push_back(shape);
    std::for_each(shapes.rbegin(), shapes.rend(), [this](const ClipShape* shape) {
        m_painter->setClipPath(shape->path, Qt::IntersectClip);
    });
    m_clipSerial = clip.serial;
    m_clipRect = clip.IsRectangle() ? clip.rect : QRect();
}

void PaintTarget::UseTransform(const QTransform& transform) {
    const bool wanted = !transform.isIdentity();
    if (!wanted && !m_transformed) return;
    m_painter->setTransform(transform);
    m_transformed = wanted;
}

void PaintTarget::UsePen(QRgb color, double width) {
    if (m_penColor == color && m_penWidth == width) return;
    m_painter->setPen(
        QPen(QColor::fromRgba(color), width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    m_penColor = color;
    m_penWidth = width;
}

} // namespace vm
