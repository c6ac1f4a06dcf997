// A bundle in a temporary folder that the pictures of a test are loaded from.
#pragma once

#include <string>

#include <QtCore/QBuffer>
#include <QtGui/QImage>

#include <vmcore/app/lifecycle.h>

#include "support/TemporaryHome.h"

inline std::string PngOf(const QImage& image) {
    QBuffer buffer;
    image.save(&buffer, "png");
    return buffer.data().toStdString();
}

class Artwork {
public:
    Artwork() {
        m_home.Write("Art.app/Contents/Info.plist", "");
        AfxSetDVBundle(VMBundleWithPath((m_home.Path() / "Art.app").c_str()));
    }
    ~Artwork() { AfxSetDVBundle(nullptr); }
    /// The path of the file.
    std::string Add(int id, const std::string& bytes) const {
        return m_home.Write("Art.app/Contents/Resources/Bitmap_" + std::to_string(id) + ".png",
                            bytes);
    }
    std::string Add(int id, const QImage& image) const { return Add(id, PngOf(image)); }

private:
    TemporaryHome m_home;
};

/// Pixels that all differ, opaque: x in red, y in green.
inline QImage Gradient(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) image.setPixel(x, y, qRgb(10 + 3 * x, 10 + 3 * y, 99));
    return image;
}
