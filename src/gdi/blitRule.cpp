#include "gdi/blitRule.h"

namespace vm {

std::optional<BlitRects> PartOnImage(const BlitRects& asked, QSize size) {
    const auto& [target, source] = asked;
    if (target.width() < 1 || target.height() < 1) return std::nullopt;
    if (source.width() < 1 || source.height() < 1) return std::nullopt;
    if (source.left() >= 0 && source.top() >= 0 && source.right() <= size.width() &&
        source.bottom() <= size.height())
        return asked;
    const QRectF part = source & QRectF(QPointF(), QSizeF(size));
    if (part.isEmpty()) return std::nullopt;
    const double sx = target.width() / source.width();
    const double sy = target.height() / source.height();
    const QRectF covered(target.x() + (part.x() - source.x()) * sx,
                         target.y() + (part.y() - source.y()) * sy, part.width() * sx,
                         part.height() * sy);
    return BlitRects{covered, part};
}

} // namespace vm
