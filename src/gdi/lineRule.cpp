#include "gdi/lineRule.h"

#include <cmath>
#include <utility>

namespace vm {
namespace {

// Start and end along the line's axis.
std::pair<double, double> Along(double from, double to, double width) {
    const double excess = width < 2 ? 0 : width - 1;
    if (to >= from) return {from, to - excess};
    const double shift = std::floor((width + 1) / 2);
    return {from + shift, to + shift + excess};
}

} // namespace

LineSegment AlignLine(int cx, int cy, int x, int y, int width) {
    const double offset = width % 2 != 0 ? 0.5 : 0;
    const double dx = std::abs(double{0} + cx - x);
    const double dy = std::abs(double{0} + cy - y);
    if (x == cx && dy >= 2) {
        const auto [start, end] = Along(cy, y, width);
        return {cx + offset, start, cx + offset, end};
    }
    if (y == cy && dx >= 2) {
        const auto [start, end] = Along(cx, x, width);
        return {start, cy + offset, end, cy + offset};
    }
    return {double(cx), double(cy), double(x), double(y)};
}

} // namespace vm
