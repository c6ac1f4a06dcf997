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

// Rounds the edges, not the size: what touched still touches.
QRectF RoundedEdges(const QRectF& rect) {
    const auto round = [](double value) { return std::floor(value + 0.5); };
    return {QPointF(round(rect.left()), round(rect.top())),
            QPointF(round(rect.right()), round(rect.bottom()))};
}

// An empty intersection must stay a rectangle without pixels, not become "no clip".
QRect Common(const QRect& a, const QRect& b) {
    const QRect both = a.intersected(b);
    return both.isValid() ? both : QRect(a.topLeft(), QSize(0, 0));
}

// A rectangle that is a million pixels wide needs no arithmetic beyond what an int holds.
QRectF Within(const QRectF& rect, const QRect& clip) {
    const double left = std::max<double>(clip.left(), rect.left());
    const double top = std::max<double>(clip.top(), rect.top());
    const double right = std::min<double>(clip.left() + clip.width(), rect.right());
    const double bottom = std::min<double>(clip.top() + clip.height(), rect.bottom());
    return {QPointF(left, top), QPointF(right, bottom)};
}

QPainterPath Closed(const QRectF& rect) {
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRect(rect);
    return path;
}

// The same for a region of whole units on a device whose pixels are smaller.
QRegion PixelsOf(const QRegion& region, const QTransform& toPixels) {
    QRegion pixels;
    for (const QRect& rect : region)
        pixels += RoundedEdges(toPixels.mapRect(QRectF(rect))).toRect();
    return pixels;
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
    const QTransform toPixels = target->ToPixels();
    auto* context = new GraphicsContext(std::move(target));
    context->SetTransform(QTransform::fromTranslate(origin.x(), origin.y()) * toPixels);
    const QRegion pixels = PixelsOf(clip, toPixels);
    Clip& first = context->m_state.clip;
    first.rect = pixels.isEmpty() ? QRect() : pixels.boundingRect();
    if (pixels.rectCount() > 1)
        first.shapes = std::make_shared<ClipShape>(ClipShape{{}, pixels, nullptr});
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

void GraphicsContext::SetTransform(const QTransform& transform) {
    m_state.transform = transform;
    m_state.moves = transform.type() <= QTransform::TxTranslate;
}

void GraphicsContext::Translate(double dx, double dy) {
    SetTransform(QTransform(m_state.transform).translate(dx, dy));
}

void GraphicsContext::Scale(double sx, double sy) {
    SetTransform(QTransform(m_state.transform).scale(sx, sy));
}

double GraphicsContext::PixelsPerUnit() const {
    return m_state.moves ? 1 : std::sqrt(std::abs(m_state.transform.determinant()));
}

QRectF GraphicsContext::ToPixels(const QRectF& rect) const {
    const QRectF area = rect.normalized();
    if (!m_state.moves) return m_state.transform.mapRect(area);
    return area.translated(m_state.transform.dx(), m_state.transform.dy());
}

// Under a scale a rectangle of whole units is one of whole pixels too, so that it is as sharp as on
// a screen of the ratio 1 and still touches its neighbours.
QRectF GraphicsContext::Snapped(const QRectF& rect) const {
    const QRectF area = ToPixels(rect);
    const bool scales = !m_state.moves && m_state.transform.type() == QTransform::TxScale;
    return scales && IsWhole(rect) ? RoundedEdges(area) : area;
}

// In whole units where the pixels are not units: the host knows no others.
QRectF GraphicsContext::ClipBoundingBox() const {
    const Clip& clip = m_state.clip;
    QRectF box = clip.rect;
    for (auto* shape = clip.shapes.get(); shape; shape = shape->outer.get()) box &= shape->Bounds();
    const bool whole = !m_state.moves && IsWhole(box);
    box = m_state.transform.inverted().mapRect(box);
    return whole ? RoundedEdges(box) : box;
}

void GraphicsContext::ClipToRect(const QRectF& rect) {
    const QRectF within = Within(Snapped(rect), m_state.clip.rect);
    if (within.isEmpty()) {
        m_state.clip.rect.setSize({0, 0});
    } else if (IsWhole(within)) {
        m_state.clip.rect = Common(m_state.clip.rect, within.toRect());
    } else {
        return ClipToPath(Closed(rect.normalized()));
    }
    m_state.clip.serial = NextClipSerial();
}

void GraphicsContext::ClipToPath(const QPainterPath& path) {
    Clip& clip = m_state.clip;
    clip.shapes = std::make_shared<ClipShape>(
        ClipShape{m_state.transform.map(path), {}, std::move(clip.shapes)});
    if (path.isEmpty()) clip.rect.setSize({0, 0});
    clip.serial = NextClipSerial();
}

// Whether the visible part of `rect` is made of whole pixels: these are filled without coverage
// arithmetic, with the same result and many times faster. Nothing visible is whole and empty.
bool GraphicsContext::WholePixels(const QRectF& rect, QRect& pixels) const {
    const QRectF visible = Within(Snapped(rect), m_state.clip.rect);
    if (!(visible.left() < visible.right()) || !(visible.top() < visible.bottom())) {
        pixels = QRect();
        return true;
    }
    const int left = static_cast<int>(visible.left()), right = static_cast<int>(visible.right());
    const int top = static_cast<int>(visible.top()), bottom = static_cast<int>(visible.bottom());
    pixels = QRect(QPoint(left, top), QPoint(right - 1, bottom - 1));
    return left == visible.left() && top == visible.top() && right == visible.right() &&
           bottom == visible.bottom();
}

void GraphicsContext::FillRect(const QRectF& rect) {
    QRect pixels;
    if (!WholePixels(rect, pixels)) return FillPath(Closed(rect.normalized()));
    m_target->FillPixels(pixels, m_state.fill, Paint());
}

void GraphicsContext::ClearRect(const QRectF& rect) {
    QRect pixels;
    if (!WholePixels(rect, pixels))
        pixels = Within(ToPixels(rect), m_state.clip.rect).toAlignedRect();
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
    inner.width() <= 0 || inner.height() <= 0 ? FillRect(outer) : FillRing(outer, inner);
    m_state.fill = fill;
}

void GraphicsContext::FillRing(const QRectF& outer, const QRectF& inner) {
    QRect ignored;
    if (!WholePixels(outer, ignored) || !WholePixels(inner, ignored)) {
        QPainterPath ring = Closed(outer);
        ring.setFillRule(Qt::OddEvenFill);
        ring.addRect(inner);
        return FillPath(ring);
    }
    FillRect({outer.left(), outer.top(), outer.width(), inner.top() - outer.top()});
    FillRect({outer.left(), inner.bottom(), outer.width(), outer.bottom() - inner.bottom()});
    FillRect({outer.left(), inner.top(), inner.left() - outer.left(), inner.height()});
    FillRect({inner.right(), inner.top(), outer.right() - inner.right(), inner.height()});
}

void GraphicsContext::StrokeLine(QPointF from, QPointF to) {
    const double half = StrokeWidth() / 2;
    QRectF covered = QRectF(from, to).normalized();
    if (from.x() == to.x()) covered.adjust(-half, 0, half, 0);
    if (from.y() == to.y()) covered.adjust(0, -half, 0, half);
    QRect pixels;
    if ((from.x() == to.x()) != (from.y() == to.y()) && WholePixels(covered, pixels))
        return m_target->FillPixels(pixels, m_state.stroke, Paint());
    FillOutline(m_state.stroke, [&] { AddLineStroke(m_points, from, to, StrokeWidth()); });
}

void GraphicsContext::FillPath(const QPainterPath& path) {
    m_target->FillPath(m_state.transform.map(path), m_state.fill, Paint());
}

void GraphicsContext::StrokePath(const QPainterPath& path) {
    const bool mapped = OnlyMoves();
    m_target->StrokePath(mapped ? m_state.transform.map(path) : path, m_state.stroke,
                         m_state.lineWidth, mapped ? QTransform() : m_state.transform, Paint());
}

template <class AddPoints>
void GraphicsContext::FillOutline(QRgb color, AddPoints&& addPoints) {
    m_points.clear();
    addPoints();
    if (m_state.moves) {
        const QPointF origin(m_state.transform.dx(), m_state.transform.dy());
        for (QPointF& point : m_points) point += origin;
    } else {
        for (QPointF& point : m_points) point = m_state.transform.map(point);
    }
    m_target->FillPolygon(m_points, color, Paint());
}

void GraphicsContext::FillEllipse(const QRectF& rect) {
    FillOutline(m_state.fill, [&] { AddEllipse(m_points, rect.normalized(), PixelsPerUnit()); });
}

void GraphicsContext::StrokeEllipse(const QRectF& rect) {
    FillOutline(m_state.stroke, [&] {
        AddEllipseStroke(m_points, rect.normalized(), StrokeWidth(), PixelsPerUnit());
    });
}

void GraphicsContext::StrokeArc(QPointF center, double radius, double start, double end) {
    constexpr double kFullTurn = 2 * std::numbers::pi;
    double sweep = std::fmod(start - end, kFullTurn);
    if (sweep < 0) sweep += kFullTurn;
    FillOutline(m_state.stroke, [&] {
        AddArcStroke(m_points, center, radius, start, -sweep, StrokeWidth(), PixelsPerUnit());
    });
}

void GraphicsContext::FillRoundRect(const QRectF& rect, double across) {
    FillOutline(m_state.fill,
                [&] { AddRoundRect(m_points, rect.normalized(), across, PixelsPerUnit()); });
}

// The outer edge one way round, and the inner one back.
void GraphicsContext::StrokeRoundRect(const QRectF& rect, double across) {
    const double width = StrokeWidth();
    const QRectF outer = rect.normalized();
    const QRectF inner = outer.adjusted(width, width, -width, -width);
    FillOutline(m_state.stroke, [&] {
        AddRoundRect(m_points, outer, across, PixelsPerUnit());
        m_points.push_back(m_points.front());
        if (inner.width() <= 0 || inner.height() <= 0) return;
        const auto middle = static_cast<std::ptrdiff_t>(m_points.size());
        AddRoundRect(m_points, inner, across - 2 * width, PixelsPerUnit());
        m_points.push_back(m_points[static_cast<std::size_t>(middle)]);
        std::reverse(m_points.begin() + middle, m_points.end());
    });
}

} // namespace vm
