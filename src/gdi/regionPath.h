// Replays the shape list of a region as paths.
#pragma once

#include <vector>

#include <QtGui/QPainterPath>

class CRgn;

namespace vm {

class GraphicsContext;

/// One path for each part of the list between combine marks; the region is what they have in
/// common.
std::vector<QPainterPath> RegionPaths(const CRgn& region);

/// Clips to the region; to nothing when it is empty.
void ClipToRegion(GraphicsContext& context, const CRgn& region);

/// A rectangle with circular corners as wide as the smaller of `width` and `height`, from the
/// middle of the left edge on.
QPainterPath CreateRoundRectPath(const QRectF& rect, double width, double height);

} // namespace vm
