#include "platform/outlines.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vm {
namespace {

constexpr double kFullTurn = 2 * std::numbers::pi;
constexpr double kTolerance = 0.06; // pixels that a corner may lie off the curve
constexpr double kMostCorners = 4096;

int CornersFor(double radius, double sweep, double scale) {
    const double pixels = std::max(radius * scale, 0.25);
    const double step = 2 * std::acos(1 - std::min(kTolerance / pixels, 0.5));
    const double corners = std::ceil(std::abs(sweep) / step);
    return static_cast<int>(std::clamp(corners, 4.0, kMostCorners)); // also for what is no number
}

// Directions around a circle in equal steps, without a sine for each.
class Turn {
public:
    Turn(double start, double step)
        : m_at(std::cos(start), std::sin(start)), m_step(std::cos(step), std::sin(step)) {}
    QPointF Next() {
        const QPointF now = m_at;
        m_at = {now.x() * m_step.x() - now.y() * m_step.y(),
                now.x() * m_step.y() + now.y() * m_step.x()};
        return now;
    }

private:
    QPointF m_at;
    QPointF m_step;
};

// The points of an ellipse moved outwards by `by` along its normals.
void AddMoved(Points& points, const QRectF& rect, double by, int corners, double sweep) {
    const QPointF center = rect.center();
    const double a = rect.width() / 2, b = rect.height() / 2;
    Turn turn(0, sweep / corners);
    for (int i = 0; i <= corners; ++i) {
        const QPointF at = turn.Next();
        const double nx = at.x() * b, ny = at.y() * a;
        const double length = std::sqrt(nx * nx + ny * ny);
        const double shift = length > 0 ? by / length : 0;
        points.push_back(center + QPointF(at.x() * a + nx * shift, at.y() * b + ny * shift));
    }
}

void AddCorner(Points& points, QPointF center, double radius, double start, double scale) {
    const int corners = CornersFor(radius, kFullTurn / 4, scale);
    Turn turn(start, kFullTurn / 4 / corners);
    for (int i = 0; i <= corners; ++i) points.push_back(center + turn.Next() * radius);
}

} // namespace

void AddEllipse(Points& points, const QRectF& rect, double scale) {
    const double radius = std::max(rect.width(), rect.height()) / 2;
    AddMoved(points, rect, 0, CornersFor(radius, kFullTurn, scale), kFullTurn);
}

void AddLineStroke(Points& points, QPointF from, QPointF to, double width) {
    const QPointF along = to - from;
    const double length = std::hypot(along.x(), along.y());
    if (!(length > 0)) return;
    const QPointF side = QPointF(-along.y(), along.x()) * (width / 2 / length);
    points.insert(points.end(), {from + side, to + side, to - side, from - side});
}

// An inner edge that would turn inside out shrinks to the middle: the ring is a full ellipse then.
void AddEllipseStroke(Points& points, const QRectF& rect, double width, double scale) {
    const double half = width / 2;
    const double radius = std::max(rect.width(), rect.height()) / 2 + half;
    const int corners = CornersFor(radius, kFullTurn, scale);
    AddMoved(points, rect, half, corners, kFullTurn);
    if (std::min(rect.width(), rect.height()) <= width) return;
    AddMoved(points, rect, -half, corners, -kFullTurn);
}

void AddArcStroke(Points& points, QPointF center, double radius, double start, double sweep,
                  double width, double scale) {
    if (!(radius >= 0)) return;
    const double outer = radius + width / 2, inner = std::max(radius - width / 2, 0.0);
    const int corners = CornersFor(outer, sweep, scale);
    Turn out(start, sweep / corners), back(start + sweep, -sweep / corners);
    for (int i = 0; i <= corners; ++i) points.push_back(center + out.Next() * outer);
    for (int i = 0; i <= corners; ++i) points.push_back(center + back.Next() * inner);
}

void AddRoundRect(Points& points, const QRectF& rect, double across, double scale) {
    const double r = std::clamp(across / 2, 0.0, std::min(rect.width(), rect.height()) / 2);
    points.emplace_back(rect.left(), rect.center().y());
    AddCorner(points, rect.topLeft() + QPointF(r, r), r, kFullTurn / 2, scale);
    AddCorner(points, rect.topRight() + QPointF(-r, r), r, kFullTurn * 3 / 4, scale);
    AddCorner(points, rect.bottomRight() + QPointF(-r, -r), r, 0, scale);
    AddCorner(points, rect.bottomLeft() + QPointF(r, -r), r, kFullTurn / 4, scale);
}

} // namespace vm
