// The reader of artwork. The input is a PNG file, mostly a broken one: whatever comes out is an image
// in one of the two formats, with pixels that are valid in it, or none.
#include "platform/pngImage.h"

#include <algorithm>

#include "target.h"

using fuzz::Require;

namespace {

bool IsPremultiplied(QRgb pixel) {
    return std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)}) <= qAlpha(pixel);
}

void RequireValidLine(const QRgb* line, int width, bool isOpaque) {
    for (int x = 0; x < width; ++x) {
        Require(!isOpaque || qAlpha(line[x]) == 255, "an opaque image is opaque");
        Require(IsPremultiplied(line[x]), "no component is above the alpha");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QImage image = vm::DecodePng(
        QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    if (image.isNull()) return 0;
    const bool isOpaque = image.format() == QImage::Format_RGB32;
    Require(isOpaque || image.format() == QImage::Format_ARGB32_Premultiplied, "a format we draw");
    for (int y = 0; y < image.height(); ++y)
        RequireValidLine(reinterpret_cast<const QRgb*>(image.constScanLine(y)), image.width(),
                         isOpaque);
    return 0;
}
