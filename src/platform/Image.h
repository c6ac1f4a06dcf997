// Pixels shared by count: premultiplied ARGB32, or RGB32 when opaque. Never changed once made.
#pragma once

#include <QtGui/QImage>

namespace vm {

class Image {
public:
    /// Counts one reference. The pixels are converted when they are in another format.
    static Image* Make(const QImage& pixels);
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    Image* Retain();
    void Release(); ///< the last one frees the image
    const QImage& Pixels() const { return m_pixels; }

private:
    explicit Image(QImage pixels);
    ~Image() = default;

    int m_references = 1;
    QImage m_pixels;
};

} // namespace vm
