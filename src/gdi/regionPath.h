// Replays the shape list of a region.
#pragma once

#include <QtGui/QRegion>

class CRgn;

namespace vm {

class GraphicsContext;

// A combine mark between shapes means that what stands before it and what follows have to hold both;
// shapes without a mark unite. An empty region holds nothing.

/// Clips to the region.
void ClipToRegion(GraphicsContext& context, const CRgn& region);

/// Fills the region in the context's fill colour.
void FillRegion(GraphicsContext& context, const CRgn& region);

/// Strokes the outline of each shape, half of `width` on either side.
void StrokeRegion(GraphicsContext& context, const CRgn& region, double width);

/// The region as whole pixels: those whose middle lies within it.
QRegion RegionPixels(const CRgn& region);

} // namespace vm
