// A device context on an offscreen image, and what it drew.
#pragma once

#include <string>
#include <vector>

#include <QtGui/QImage>

#include <vmcore/gdi/CDC.h>

#include "platform/GraphicsContext.h"
#include "support/LogCapture.h"
#include "support/PixelGrid.h"

using Rows = std::vector<std::string>;

/// Fails on log lines that the test does not take.
class Canvas {
public:
    Canvas(int width, int height) : context(vm::GraphicsContext::ForImage(width, height)) {
        dc.Attach(context);
    }
    ~Canvas() {
        dc.Detach();
        context->Release();
    }
    QImage Pixels() const { return context->Snapshot(); }
    Rows Picture() const { return PixelGrid(Pixels()); }
    /// 0xAARRGGBB, not premultiplied.
    unsigned At(int x, int y) const { return Pixels().pixel(x, y); }

    LogCapture log;
    vm::GraphicsContext* context;
    CDC dc;
};

/// The smallest rectangle around all pixels that are not transparent, as "left,top,right,bottom";
/// "nothing" without any.
inline std::string Inked(const QImage& image) {
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) != 0) box |= QRect(x, y, 1, 1);
    if (box.isEmpty()) return "nothing";
    return QString::asprintf("%d,%d,%d,%d", box.left(), box.top(), box.right() + 1,
                             box.bottom() + 1)
        .toStdString();
}

/// The sum of all coverage in pixels.
inline double InkedArea(const QImage& image) {
    double area = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) area += qAlpha(image.pixel(x, y)) / 255.0;
    return area;
}
