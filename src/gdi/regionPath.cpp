#include "gdi/regionPath.h"

#include <algorithm>

#include <vmcore/gdi/CRgn.h>

#include "platform/GraphicsContext.h"

namespace vm {
namespace {

QRectF RectOf(const LONG* words) {
    return QRectF(QPointF(words[0], words[1]), QPointF(words[2], words[3])).normalized();
}

void AddPolygon(QPainterPath& path, int count, const LONG* words) {
    for (int i = 0; i < count; ++i, words += 2)
        i == 0 ? path.moveTo(words[0], words[1]) : path.lineTo(words[0], words[1]);
    path.closeSubpath();
}

void AddShape(QPainterPath& path, const LONG* shape) {
    switch (shape[0]) {
    case RGNSHAPE_RECT:
        path.addRect(RectOf(shape + 1));
        break;
    case RGNSHAPE_ROUNDRECT:
        path.addPath(CreateRoundRectPath(RectOf(shape + 1), shape[5], shape[6]));
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

} // namespace

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

void ClipToRegion(GraphicsContext& context, const CRgn& region) {
    if (IsSingleRect(region)) return context.ClipToRect(RectOf(region.GetShape(0) + 1));
    for (const QPainterPath& path : RegionPaths(region)) context.ClipToPath(path);
}

QPainterPath CreateRoundRectPath(const QRectF& rect, double width, double height) {
    const double l = rect.left(), t = rect.top(), r = rect.right(), b = rect.bottom();
    const double smallest = std::min({width, height, rect.width(), rect.height()});
    const double across = std::max(smallest, 0.0); // two radii
    QPainterPath path = EmptyPath();
    path.moveTo(l, rect.center().y());
    path.arcTo(l, t, across, across, 180, -90);
    path.arcTo(r - across, t, across, across, 90, -90);
    path.lineTo(r, rect.center().y());
    path.arcTo(r - across, b - across, across, across, 0, -90);
    path.arcTo(l, b - across, across, across, 270, -90);
    path.closeSubpath();
    return path;
}

} // namespace vm
