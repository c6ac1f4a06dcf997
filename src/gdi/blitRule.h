// Which part of a blit there is, on plain rectangles.
#pragma once

#include <optional>

#include <QtCore/QRectF>

namespace vm {

struct BlitRects {
    QRectF target;
    QRectF source;
    bool operator==(const BlitRects&) const = default;
};

/// The part of a draw of `source` into `target` whose source lies on an image of `size`: the rest of
/// the target is left as it is. Nothing when there is no such part, or when a width or a height is
/// below 1.
std::optional<BlitRects> PartOnImage(const BlitRects& asked, QSize size);

} // namespace vm
