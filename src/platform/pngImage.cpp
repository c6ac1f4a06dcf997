#include "platform/pngImage.h"

#include <algorithm>
#include <utility>

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtGui/QImageReader>

namespace vm {
namespace {

bool IsOpaque(const QImage& argb) {
    for (int y = 0; y < argb.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(argb.constScanLine(y));
        if (!std::all_of(line, line + argb.width(), [](QRgb p) { return qAlpha(p) == 255; }))
            return false;
    }
    return true;
}

} // namespace

bool IsTooLarge(QSize size) {
    return qint64{size.width()} * size.height() >
           kLargestImage / 4; // the product with 4 may not fit
}

QImage ForDrawing(QImage pixels) {
    if (pixels.isNull()) return pixels;
    if (pixels.hasAlphaChannel())
        pixels = std::move(pixels).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (!pixels.hasAlphaChannel() || IsOpaque(pixels))
        pixels = std::move(pixels).convertToFormat(QImage::Format_RGB32);
    return pixels;
}

QImage DecodePng(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "png");
    reader.setAutoDetectImageFormat(false);
    if (IsTooLarge(reader.size())) return {};
    return ForDrawing(reader.read());
}

QImage ReadPng(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.isSequential() || file.size() > kLargestImage)
        return {};
    return DecodePng(file.readAll());
}

} // namespace vm
