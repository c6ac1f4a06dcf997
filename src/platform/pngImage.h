// PNG files to images, in the two formats that images have. Files are hosts' artwork and downloads:
// what is broken, too large or no PNG gives no image.
#pragma once

#include <QtCore/QByteArray>
#include <QtGui/QImage>

namespace vm {

/// Bytes of the largest picture, as pixels or as a file.
constexpr qint64 kLargestImage = 1 << 30;

bool IsTooLarge(QSize size);

/// Null when `bytes` are no whole PNG file. Its pixel density and its colour profile do not count.
QImage DecodePng(const QByteArray& bytes);

/// Null when there is no such file, too.
QImage ReadPng(const QString& path);

/// Premultiplied ARGB32, or RGB32 when every pixel is opaque: the formats that draw fastest.
QImage ForDrawing(QImage pixels);

} // namespace vm
