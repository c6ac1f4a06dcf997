// The pixels of a host's bitmap on a control of the toolkit, and which bitmap it was.
#pragma once

#include <QtGui/QPixmap>

#include <vmcore/core/types.h>

namespace vm {

QPixmap PictureOf(HBITMAP bitmap); ///< null for null and a bitmap without an image
HBITMAP ShownBitmap(const QWidget& control);
/// Returns the one before.
HBITMAP RememberBitmap(QWidget& control, HBITMAP bitmap);

} // namespace vm
