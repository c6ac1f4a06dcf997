// The units of a view whose window object has a scale (CWnd::SetWindowScaling): a view that is shown
// twice as large has half the size for its host. Every position and size that a host sees of such a
// view goes through here.
#pragma once

#include <cmath>

#include <vmcore/wnd/CWnd.h>

namespace vm {

/// The scale of a child window; 1.0 when none is set, and for top-level windows, whose content is not
/// scaled.
inline double ScaleOf(const CWnd& wnd) {
    const double scale = wnd.scaleY;
    return wnd.nsWindow || !std::isfinite(scale) || scale <= 0.0 ? 1.0 : scale;
}

// Scales are of single precision: 10 at a scale of 1.1 is 11, not a trifle more.
inline constexpr double kScaleTolerance = 1e-4;

/// The host's pixel in which a pixel of the view lies.
inline int ToHost(int viewPixels, double scale) {
    return scale == 1.0 ? viewPixels
                        : static_cast<int>(std::floor(viewPixels / scale + kScaleTolerance));
}

/// The first pixel of the view that lies in a pixel of the host.
inline int ToView(int hostPixels, double scale) {
    return scale == 1.0 ? hostPixels
                        : static_cast<int>(std::ceil(hostPixels * scale - kScaleTolerance));
}

} // namespace vm
