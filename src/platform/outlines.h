// The outlines of shapes and of their strokes as polygons: filling one needs neither the toolkit's
// stroker nor memory of its own. Plain arithmetic; each appends to `points`.
#pragma once

#include <vector>

#include <QtCore/QPointF>
#include <QtCore/QRectF>

namespace vm {

using Points = std::vector<QPointF>;

/// An ellipse, all around. `scale` is how many pixels a unit is: larger ones need more corners.
void AddEllipse(Points& points, const QRectF& rect, double scale);

/// A line of `width` with ends cut off square; nothing for a point.
void AddLineStroke(Points& points, QPointF from, QPointF to, double width);

/// The ring that a pen of `width` leaves along an ellipse: its outer edge, then its inner one the
/// other way round.
void AddEllipseStroke(Points& points, const QRectF& rect, double width, double scale);

/// The same along a part of a circle (radians, y-down), ends cut off square; nothing for a negative
/// radius.
void AddArcStroke(Points& points, QPointF center, double radius, double start, double sweep,
                  double width, double scale);

/// A rectangle with round corners `across` wide (two radii), from the middle of its left edge on.
void AddRoundRect(Points& points, const QRectF& rect, double across, double scale);

} // namespace vm
