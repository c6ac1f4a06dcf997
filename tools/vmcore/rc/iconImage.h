// The images of an icon file: pictures with a mask, pictures with transparency, and whole PNG files. The
// toolkit's own reader passes the masks of images with many colours over.
#pragma once

#include <QtCore/QByteArray>
#include <QtGui/QImage>

namespace vm::rc {

bool IsIconFile(const QByteArray& bytes);
int IconImageCount(const QByteArray& bytes);
/// The largest that can be read, of the same size that with more colours; null when there is none.
QImage BestIconImage(const QByteArray& bytes);

} // namespace vm::rc
