#include "platform/Image.h"

#include <utility>

namespace vm {

Image::Image(QImage pixels) : m_pixels(std::move(pixels)) {}

Image* Image::Make(const QImage& pixels) {
    return new Image(pixels.convertToFormat(
        pixels.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32));
}

Image* Image::Retain() {
    ++m_references;
    return this;
}

void Image::Release() {
    if (--m_references == 0) delete this;
}

} // namespace vm
