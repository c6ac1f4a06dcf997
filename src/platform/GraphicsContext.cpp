// State, clip and shapes; text is in GraphicsContextText.cpp.
#include "platform/GraphicsContext.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "core/guard.h"

namespace vm {
namespace {

// Every change of a clip gets a number of its own, so that a painter shared by several contexts
// knows whose clip it holds.
std::uint64_t NextClipSerial() {
    static std::uint64_t s_last = 0;
    return ++s_last;
}

bool IsWhole(double value) {
    return std::floor(value) == value;
}

bool IsWhole(const QRectF& rect) {
    return IsWhole(rect.left()) && IsWhole(rect.top()) && IsWhole(rect.right()) &&
           IsWhole(rect.bottom());
}

// An empty intersection must stay a rectangle without pixels, not become "no clip".
QRect Common(const QRect& a, const QRect& b) {
    const QRect both = a.intersected(b);
    return both.isValid() ? both : QRect(a.topLeft(), QSize(0, 0));
}

QPainterPath Closed(const QRectF& rect) {
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRect(rect);
    return path;
}

QPainterPath EllipseIn(const QRectF& rect) {
    QPainterPath path;
    path.addEllipse(rect);
    return path;
}

} // namespace

GraphicsContext& ContextOf(GraphicsContext* handle) {
    if (!handle) throw PlatformError("NullContext", "no graphics context is attached");
    return *handle;
}

GraphicsContext::GraphicsContext(std::shared_ptr<PaintTarget> target)
    : m_target(std::move(target)) {}

GraphicsContext::~GraphicsContext() = default;

GraphicsContext* GraphicsContext::ForView(std::shared_ptr<PaintTarget> target, QPoint origin,
                                          const QRegion& clip) {
    auto* context = new GraphicsContext(std::move(target));
    context->m_state.transform = QTransform::fromTranslate(origin.x(), origin.y());
    Clip& first = context->m_state.clip;
    first.rect = clip.isEmpty() ? QRect(origin, QSize(0, 0)) : clip.boundingRect();
    if (clip.rectCount() > 1) first.region = clip;
    first.serial = NextClipSerial();
    return context;
}

GraphicsContext* GraphicsContext::ForImage(int width, int height) {
    auto image = std::make_unique<QImage>(width, height, QImage::Format_ARGB32_Premultiplied);
    if (image->isNull()) throw PlatformError("NoImage", "no memory for the pixels");
    image->fill(Qt::transparent);
    auto* context =
        ForView(std::make_shared<PaintTarget>(image.get()), {}, QRegion(0, 0, width, height));
    context->m_image = std::move(image);
    return context;
}

GraphicsContext* GraphicsContext::Retain() {
    ++m_references;
    return this;
}

void GraphicsContext::Release() {
    if (--m_references > 0) return;
    if (m_image) m_target->End();
    delete this;
}

QImage GraphicsContext::Snapshot() const {
    return m_image ? m_image->copy() : QImage();
}

void GraphicsContext::Save() {
    m_saved.push_back(m_state);
}

void GraphicsContext::Restore() {
    if (m_saved.empty()) return;
    m_state = std::move(m_saved.back());
    m_saved.pop_back();
}

void GraphicsContext::SetAlpha(double alpha) {
    m_state.alpha = std::clamp(alpha, 0.0, 1.0);
}

void GraphicsContext::Translate(double dx, double dy) {
    m_state.transform.translate(dx, dy);
}

void GraphicsContext::Scale(double sx, double sy) {
    m_state.transform.scale(sx, sy);
}

QRectF GraphicsContext::ClipBoundingBox() const {
    const Clip& clip = m_state.clip;
    QRectF box = clip.region.isEmpty() ? clip.rect : clip.region.boundingRect() & clip.rect;
    for (auto* shape = clip.shapes.get(); shape; shape = shape->outer.get())
        box &= shape->path.boundingRect();
    return m_state.transform.inverted().mapRect(box);
}

void GraphicsContext::ClipToRect(const QRectF& rect) {
    const QRectF area = m_state.transform.mapRect(rect.normalized());
    const QRectF within = area & QRectF(m_state.clip.rect);
    if (!within.isEmpty() && !IsWhole(within)) return ClipToPath(Closed(rect.normalized()));
    m_state.clip.rect = Common(m_state.clip.rect, within.toRect());
    m_state.clip.serial = NextClipSerial();
}

void GraphicsContext::ClipToPath(const QPainterPath& path) {
    Clip& clip = m_state.clip;
    clip.shapes =
        std::make_shared<ClipShape>(ClipShape{m_state.transform.map(path), std::move(clip.shapes)});
    if (path.isEmpty()) clip.rect.setSize({0, 0});
    clip.serial = NextClipSerial();
}

// Whether the visible part of `rect` is made of whole pixels: these are filled without coverage
// arithmetic, with the same result and many times faster. Nothing visible is whole and empty.
bool GraphicsContext::WholePixels(const QRectF& rect, QRect& pixels) const {
    if (m_state.transform.type() > QTransform::TxScale) return false;
    const QRectF visible = m_state.transform.mapRect(rect.normalized()) & QRectF(m_state.clip.rect);
    pixels = visible.isEmpty() ? QRect() : visible.toRect();
    return visible.isEmpty() || IsWhole(visible);
}

void GraphicsContext::FillRect(const QRectF& rect) {
    QRect pixels;
    if (!WholePixels(rect, pixels)) return FillPath(Closed(rect.normalized()));
    m_target->FillPixels(pixels, m_state.fill, Paint());
}

void GraphicsContext::ClearRect(const QRectF& rect) {
    QRect pixels;
    if (!WholePixels(rect, pixels))
        pixels = m_state.transform.mapRect(rect.normalized()).toAlignedRect() & m_state.clip.rect;
    m_target->ClearPixels(pixels, Paint());
}

// The ring between the rectangle's outer and inner outline. Filling it has exact corners where a
// stroke's joints have not.
void GraphicsContext::StrokeRect(const QRectF& rect, double width) {
    const double half = std::max(width, 1.0) / 2;
    const QRectF area = rect.normalized();
    const QRectF outer = area.adjusted(-half, -half, half, half);
    const QRectF inner = area.adjusted(half, half, -half, -half);
    const QRgb fill = std::exchange(m_state.fill, m_state.stroke);
    QRect ignored;
    if (inner.width() <= 0 || inner.height() <= 0) {
        FillRect(outer);
    } else if (WholePixels(outer, ignored) && WholePixels(inner, ignored)) {
        FillRect({outer.left(), outer.top(), outer.width(), inner.top() - outer.top()});
        FillRect({outer.left(), inner.bottom(), outer.width(), outer.bottom() - inner.bottom()});
        FillRect({outer.left(), inner.top(), inner.left() - outer.left(), inner.height()});
        FillRect({inner.right(), inner.top(), outer.right() - inner.right(), inner.height()});
    } else {
        QPainterPath ring = Closed(outer);
        ring.setFillRule(Qt::OddEvenFill);
        ring.addRect(inner);
        FillPath(ring);
    }
    m_state.fill = fill;
}

void GraphicsContext::StrokeLine(QPointF from, QPointF to) {
    const double half = std::max(m_state.lineWidth, 1.0) / 2;
    QRectF covered = QRectF(from, to).normalized();
    if (from.x() == to.x()) covered.adjust(-half, 0, half, 0);
    if (from.y() == to.y()) covered.adjust(0, -half, 0, half);
    QRect pixels;
    if ((from.x() == to.x()) != (from.y() == to.y()) && WholePixels(covered, pixels))
        return m_target->FillPixels(pixels, m_state.stroke, Paint());
    QPainterPath path(from);
    path.lineTo(to);
    StrokePath(path);
}

void GraphicsContext::FillPath(const QPainterPath& path) {
    m_target->FillPath(m_state.transform.map(path), m_state.fill, Paint());
}

void GraphicsContext::StrokePath(const QPainterPath& path) {
    const bool mapped = OnlyMoves();
    m_target->StrokePath(mapped ? m_state.transform.map(path) : path, m_state.stroke,
                         m_state.lineWidth, mapped ? QTransform() : m_state.transform, Paint());
}

void GraphicsContext::FillEllipse(const QRectF& rect) {
    FillPath(EllipseIn(rect.normalized()));
}

void GraphicsContext::StrokeEllipse(const QRectF& rect) {
    StrokePath(EllipseIn(rect.normalized()));
}

void GraphicsContext::StrokeArc(QPointF center, double radius, double start, double end) {
    constexpr double kDegrees = 180 / std::numbers::pi;
    double sweep = std::fmod(start - end, 2 * std::numbers::pi);
    if (sweep < 0) sweep += 2 * std::numbers::pi;
    const QRectF circle(center.x() - radius, center.y() - radius, 2 * radius, 2 * radius);
    QPainterPath path; // the toolkit counts angles upwards against the clock
    path.arcMoveTo(circle, -start * kDegrees);
    path.arcTo(circle, -start * kDegrees, sweep * kDegrees);
    StrokePath(path);
}

} // namespace vm
