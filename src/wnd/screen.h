// The screens as the toolkit's rectangles.
#pragma once

#include <QtCore/QRect>

namespace vm {

/// All screens together; empty without a display.
QRect VirtualScreen();

} // namespace vm
