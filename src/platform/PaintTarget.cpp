// The painter and its state; what goes past it is in PaintTargetDirect.cpp.
#include "platform/PaintTarget.h"

#include <algorithm>
#include <vector>

#include <QtGui/QPaintEngine>

#include "core/guard.h"

namespace vm {
namespace {

// At a width of 1 or less the toolkit strokes with its cosmetic stroker, whose coverage on
// diagonals and curves is too low.
constexpr double kThinnestStroke = 1.0001;
constexpr double kMiterLimit = 10;

// The image that the painter writes to, when its pixels are 32-bit words as colours are and are what
// drawing counts in; else null. For a widget that is the image behind its window.
const QImage* WritableImage(const QPainter& painter) {
    const auto* image = dynamic_cast<const QImage*>(painter.paintEngine()->paintDevice());
    if (!image || image->devicePixelRatio() != 1) return nullptr;
    const bool fits = image->format() == QImage::Format_RGB32 ||
                      image->format() == QImage::Format_ARGB32_Premultiplied;
    return fits ? image : nullptr;
}

QRectF BoundsOf(std::span<const QPointF> points) {
    double left = points[0].x(), right = left, top = points[0].y(), bottom = top;
    for (const QPointF& point : points) {
        left = std::min(left, point.x());
        right = std::max(right, point.x());
        top = std::min(top, point.y());
        bottom = std::max(bottom, point.y());
    }
    return {left, top, right - left, bottom - top};
}

} // namespace

PaintTarget::PaintTarget(QPainter* painter) : m_painter(painter) {
    Begin();
}

PaintTarget::PaintTarget(QPaintDevice* device) : m_device(device) {
    const double ratio = device->devicePixelRatio();
    m_toPixels.scale(ratio, ratio);
}

PaintTarget::~PaintTarget() = default;

void PaintTarget::Begin() {
    m_painter->setRenderHint(QPainter::Antialiasing);
    m_raster = WritableImage(*m_painter);
    m_toPixels = m_painter->deviceTransform();
    m_fromPixels = m_toPixels.inverted();
    m_painter->setTransform(m_fromPixels);
}

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
    Begin();
    return *m_painter;
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
    Prepare(rect, {}, {state.clip, 1});
    if (IsPage()) return painter.fillRect(rect, Qt::white);     // what shows through is the paper
    if (m_raster && m_raster->format() == QImage::Format_RGB32) // its pixels must stay opaque
        return painter.fillRect(rect, Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(rect, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void PaintTarget::FillPath(const QPainterPath& path, QRgb color, const PaintState& state) {
    Prepare(path.controlPointRect(), {}, state);
    Painter().fillPath(path, BrushOf(color));
}

void PaintTarget::FillPolygon(std::span<const QPointF> points, QRgb color,
                              const PaintState& state) {
    QPainter& painter = Painter();
    if (points.empty()) return;
    const QRectF bounds = BoundsOf(points);
    if (FillDirectly(points, bounds, color, state)) return;
    Prepare(bounds, {}, state);
    UseNoPen();
    UseBrush(color);
    painter.drawPolygon(points.data(), static_cast<int>(points.size()), Qt::WindingFill);
}

void PaintTarget::StrokePath(const QPainterPath& path, QRgb color, double width,
                             const QTransform& transform, const PaintState& state) {
    const double reach = width * kMiterLimit + 1;
    const QRectF bounds = path.controlPointRect().adjusted(-reach, -reach, reach, reach);
    Prepare(transform.mapRect(bounds), transform, state);
    Painter().strokePath(path, PenOf({color, std::max(width, kThinnestStroke)}));
}

void PaintTarget::DrawGlyphs(const QGlyphRun& glyphs, const QRectF& bounds, QRgb color,
                             const QTransform& transform, const PaintState& state) {
    Prepare(transform.mapRect(bounds), transform, state);
    UsePen({color, 0});
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
    std::vector<const ClipShape*> shapes;
    for (auto* shape = clip.shapes.get(); shape; shape = shape->outer.get())
        shapes.push_back(shape);
    std::for_each(shapes.rbegin(), shapes.rend(), [this](const ClipShape* shape) {
        if (shape->region.isEmpty())
            m_painter->setClipPath(shape->path, Qt::IntersectClip);
        else
            m_painter->setClipRegion(shape->region, Qt::IntersectClip);
    });
    m_clipSerial = clip.serial;
    m_clipRect = clip.IsRectangle() ? clip.rect : QRect();
}

void PaintTarget::UseTransform(const QTransform& transform) {
    const bool wanted = !transform.isIdentity();
    if (!wanted && !m_transformed) return;
    m_painter->setTransform(wanted ? transform * m_fromPixels : m_fromPixels);
    m_transformed = wanted;
}

template <class Tool, class Make>
const Tool& PaintTarget::Kept(ToolBox<Tool>& box, const Ink& ink, Make&& make) {
    const std::size_t size = std::min(box.count, box.inks.size());
    const auto end = box.inks.begin() + static_cast<std::ptrdiff_t>(size);
    const auto found = std::find(box.inks.begin(), end, ink);
    if (found != end) return box.tools[static_cast<std::size_t>(found - box.inks.begin())];
    const std::size_t place = box.count++ % box.inks.size();
    box.inks[place] = ink;
    return box.tools[place] = make();
}

const QBrush& PaintTarget::BrushOf(QRgb color) {
    return Kept(m_brushes, {color, 0}, [&] { return QBrush(QColor::fromRgba(color)); });
}

const QPen& PaintTarget::PenOf(const Ink& ink) {
    return Kept(m_pens, ink, [&] {
        return QPen(QColor::fromRgba(ink.color), ink.width, Qt::SolidLine, Qt::FlatCap,
                    Qt::MiterJoin);
    });
}

void PaintTarget::UseBrush(QRgb color) {
    if (m_hasBrush && m_brushColor == color) return;
    m_painter->setBrush(BrushOf(color));
    m_brushColor = color;
    m_hasBrush = true;
}

void PaintTarget::UsePen(const Ink& ink) {
    if (m_hasPen && m_pen == ink) return;
    m_painter->setPen(PenOf(ink));
    m_pen = ink;
    m_hasPen = true;
}

void PaintTarget::UseNoPen() {
    if (!m_hasPen) return;
    m_painter->setPen(Qt::NoPen);
    m_hasPen = false;
}

} // namespace vm
