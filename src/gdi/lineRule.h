// Where a line with a pen of whole width runs so that it covers the pixels that Win32 would.
#pragma once

namespace vm {

struct LineSegment {
    double x1, y1, x2, y2;
    bool operator==(const LineSegment&) const = default;
};

/// The stroke for a line from (cx, cy) to (x, y). Axis-aligned lines of two pixels and more exclude
/// the end pixel, others run exactly from point to point. `width` is the pen record's whole 32-bit
/// width, which for a stock pen is 65537: its axis-aligned lines run off, and must.
LineSegment AlignLine(int cx, int cy, int x, int y, int width);

} // namespace vm
