// Pixels shared by count: what bitmaps, pattern brushes and image objects hold. They are premultiplied
// ARGB32, or RGB32 when opaque. A context can be opened that draws into them; who reads the pixels
// sees what has been drawn so far. Main thread only.
#pragma once

#include <QtGui/QImage>

namespace vm {

class GraphicsContext;

class Image {
public:
    /// Counts one reference. The pixels are converted when they are in another format. Null for a
    /// null image.
    static Image* Make(const QImage& pixels);
    /// Transparent pixels. Null for a size below 1 and for more bytes than an image may have.
    static Image* MakeBlank(int width, int height);
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    Image* Retain();
    void Release(); ///< the last one frees the image and ends its context
    const QImage& Pixels() const { return m_pixels; }
    /// An image of its own with the pixels as they are now.
    Image* Copy() const;
    /// The pixels with those that equal the opaque `key` made transparent. Kept for the next time,
    /// unless they may have changed by then.
    QImage WithoutColor(QRgb key);

    /// The context that draws into the pixels, made on the first call. It belongs to the image; who
    /// keeps it counts a reference and finds it ended ("DeadContext") when the image has gone.
    GraphicsContext* Context();
    /// Frees the context when nobody else keeps it.
    void CloseUnusedContext();

private:
    explicit Image(QImage pixels);
    ~Image();
    void CloseContext();
    bool MayHaveChanged() const;

    int m_references = 1;
    QImage m_pixels; // stays where it is: the context paints on it
    GraphicsContext* m_context = nullptr;
    QImage m_withoutColor;
    QRgb m_key = 0;
};

} // namespace vm
