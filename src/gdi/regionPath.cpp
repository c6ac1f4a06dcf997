#include "gdi/regionPath.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <vmcore/gdi/CRgn.h>

#include <QtGui/QPainterPath>

#include "platform/GraphicsContext.h"
#include "platform/outlines.h"

namespace vm {
namespace {

QRectF RectOf(const LONG* words) {
    return QRectF(QPointF(words[0], words[1]), QPointF(words[2], words[3])).normalized();
}

// Circular corners, as CDC::RoundRect draws them.
void AddRoundRect(QPainterPath& path, const QRectF& rect, double across) {
    Points points;
    vm::AddRoundRect(points, rect, across, 1);
    path.addPolygon(QPolygonF(QList<QPointF>(points.begin(), points.end())));
    path.closeSubpath();
}

// The toolkit counts the width of a rectangle in a path in 32 bits.
double Near(double coordinate) {
    constexpr double kFarthest = 1 << 29;
    return std::clamp(coordinate, -kFarthest, kFarthest);
}

void AddPolygon(QPainterPath& path, int count, const LONG* words) {
    for (int i = 0; i < count; ++i, words += 2) {
        const QPointF point(Near(words[0]), Near(words[1]));
        i == 0 ? path.moveTo(point) : path.lineTo(point);
    }
    path.closeSubpath();
}

void AddRect(QPainterPath& path, const QRectF& rect) {
    path.addRect({QPointF(Near(rect.left()), Near(rect.top())),
                  QPointF(Near(rect.right()), Near(rect.bottom()))});
}

void AddShape(QPainterPath& path, const LONG* shape) {
    switch (shape[0]) {
    case RGNSHAPE_RECT:
        AddRect(path, RectOf(shape + 1));
        break;
    case RGNSHAPE_ROUNDRECT:
        AddRoundRect(path, RectOf(shape + 1), std::min(shape[5], shape[6]));
        break;
    case RGNSHAPE_POLYGON:
        AddPolygon(path, shape[1], shape + 2);
        break;
    case RGNSHAPE_ELLIPSE:
        path.addEllipse(RectOf(shape + 1));
        break;
    default:
        break;
    }
}

QPainterPath EmptyPath() {
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    return path;
}

bool IsSingleRect(const CRgn& region) {
    return region.GetShapeCount() == 1 && region.GetShape(0)[0] == RGNSHAPE_RECT;
}

// One path for each part of the list between combine marks; the region is what they have in common.
std::vector<QPainterPath> RegionPaths(const CRgn& region) {
    std::vector<QPainterPath> paths{EmptyPath()};
    for (int i = 0; i < region.GetShapeCount(); ++i) {
        const LONG* const shape = region.GetShape(i);
        if (shape[0] == RGNSHAPE_COMBINE)
            paths.push_back(EmptyPath());
        else
            AddShape(paths.back(), shape);
    }
    return paths;
}

} // namespace

void ClipToRegion(GraphicsContext& context, const CRgn& region) {
    if (IsSingleRect(region)) return context.ClipToRect(RectOf(region.GetShape(0) + 1));
    for (const QPainterPath& path : RegionPaths(region)) context.ClipToPath(path);
}

void FillRegion(GraphicsContext& context, const CRgn& region) {
    if (IsSingleRect(region)) return context.FillRect(RectOf(region.GetShape(0) + 1));
    const auto paths = RegionPaths(region);
    for (std::size_t i = 0; i + 1 < paths.size(); ++i) context.ClipToPath(paths[i]);
    context.FillPath(paths.back());
}

void StrokeRegion(GraphicsContext& context, const CRgn& region, double width) {
    context.SetLineWidth(width);
    for (int i = 0; i < region.GetShapeCount(); ++i) {
        const LONG* const shape = region.GetShape(i);
        if (shape[0] == RGNSHAPE_RECT) {
            context.StrokeRect(RectOf(shape + 1), width);
        } else {
            QPainterPath path = EmptyPath();
            AddShape(path, shape);
            context.StrokePath(path);
        }
    }
}

QRegion RegionPixels(const CRgn& region) {
    QRegion common;
    bool first = true;
    for (const QPainterPath& path : RegionPaths(region)) {
        QRegion part;
        for (const QPolygonF& polygon : path.toSubpathPolygons())
            part += QRegion(polygon.toPolygon(), Qt::WindingFill);
        common = std::exchange(first, false) ? part : common & part;
    }
    return common;
}

} // namespace vm
