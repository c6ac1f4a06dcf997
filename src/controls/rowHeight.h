// How high the rows of lists, list boxes and trees are.
#pragma once

#include <QtGui/QFontMetrics>

namespace vm {

inline int RowHeight(const QFontMetrics& font) {
    constexpr int kPadding = 5; // above and below the text together
    return font.height() + kPadding;
}

} // namespace vm
