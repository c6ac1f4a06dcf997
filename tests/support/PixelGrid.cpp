#include "support/PixelGrid.h"

namespace {
char PixelCharacter(QRgb pixel) {
    if (qAlpha(pixel) == 0 || pixel == qRgb(255, 255, 255)) return '.';
    return pixel == qRgb(0, 0, 0) ? '#' : 'x';
}
} // namespace

std::vector<std::string> PixelGrid(const QImage& image) {
    std::vector<std::string> rows;
    for (int y = 0; y < image.height(); ++y) {
        std::string row;
        for (int x = 0; x < image.width(); ++x) row += PixelCharacter(image.pixel(x, y));
        rows.push_back(row);
    }
    return rows;
}
