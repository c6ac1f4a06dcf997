// Rectangles of the toolkit as hosts know them.
#pragma once

#include <QtCore/QRect>

#include <vmcore/core/geometry.h>

namespace vm {

inline RECT RectOf(const QRect& rect) {
    return {rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()};
}

} // namespace vm
