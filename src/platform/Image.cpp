#include "platform/Image.h"

#include <algorithm>
#include <utility>

#include "platform/GraphicsContext.h"
#include "platform/pngImage.h"

namespace vm {

Image::Image(QImage pixels) : m_pixels(std::move(pixels)) {}

Image::~Image() {
    CloseContext();
}

Image* Image::Make(const QImage& pixels) {
    QImage converted = ForDrawing(pixels);
    return converted.isNull() ? nullptr : new Image(std::move(converted));
}

Image* Image::MakeBlank(int width, int height) {
    if (width < 1 || height < 1 || IsTooLarge({width, height})) return nullptr;
    QImage pixels(width, height, QImage::Format_ARGB32_Premultiplied);
    if (pixels.isNull()) return nullptr;
    pixels.fill(Qt::transparent);
    return new Image(std::move(pixels));
}

Image* Image::Retain() {
    ++m_references;
    return this;
}

void Image::Release() {
    if (--m_references == 0) delete this;
}

// The copy shares the pixels until one of the two is drawn into; pixels that are being painted on
// are copied at once.
Image* Image::Copy() const {
    return new Image(m_pixels);
}

QImage Image::WithoutColor(QRgb key) {
    if (m_key == key && !m_withoutColor.isNull() && !MayHaveChanged()) return m_withoutColor;
    QImage keyed = m_pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < keyed.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(keyed.scanLine(y));
        std::replace(line, line + keyed.width(), key, QRgb{0});
    }
    m_key = key;
    return m_withoutColor = std::move(keyed);
}

GraphicsContext* Image::Context() {
    if (!m_context) m_context = GraphicsContext::ForBitmap(*this, m_pixels);
    return m_context;
}

void Image::CloseUnusedContext() {
    if (m_context && m_context->References() == 1) CloseContext();
}

void Image::CloseContext() {
    if (!m_context) return;
    if (MayHaveChanged()) m_withoutColor = {};
    m_context->LetGoOfBitmap();
    std::exchange(m_context, nullptr)->Release();
}

bool Image::MayHaveChanged() const {
    return m_context && m_context->HasDrawn();
}

} // namespace vm
