#include "controls/bitmapPicture.h"

#include <QtCore/QVariant>
#include <QtWidgets/QWidget>

#include <vmcore/gdi/gdiobjects.h>

#include "platform/Image.h"

namespace vm {

constexpr char kBitmapProperty[] = "bitmap";

QPixmap PictureOf(HBITMAP bitmap) {
    const auto* record = static_cast<const tagBITMAP*>(bitmap);
    // A copy: the host may draw into the bitmap while it is shown.
    return record && record->bmBits ? QPixmap::fromImage(record->bmBits->Pixels().copy())
                                    : QPixmap();
}

HBITMAP ShownBitmap(const QWidget& control) {
    return control.property(kBitmapProperty).value<void*>();
}

HBITMAP RememberBitmap(QWidget& control, HBITMAP bitmap) {
    const HBITMAP before = ShownBitmap(control);
    control.setProperty(kBitmapProperty, QVariant::fromValue(bitmap));
    return before;
}

} // namespace vm
