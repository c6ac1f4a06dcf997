// What controls of the toolkit draw from image lists.
#pragma once

#include <QtGui/QImage>

#include <vmcore/gdi/CImageList.h>

namespace vm {

/// A bitmap of the list as it is now; a null image without list, entry or bitmap, and when one of
/// them has been destroyed.
QImage PixelsOf(HIMAGELIST list, int index);

} // namespace vm
