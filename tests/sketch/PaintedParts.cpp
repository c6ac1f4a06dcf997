#include "PaintedParts.h"

#include <QtGui/QImage>
#include <QtGui/QPalette>
#include <QtWidgets/QWidget>

namespace {

QImage PictureOf(QWidget& window) {
    return window.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

QRect Difference(const QImage& a, const QImage& b) {
    QRect box;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y)) box |= QRect(x, y, 1, 1);
    return box;
}

QImage PictureInColor(QWidget& window, QWidget& control, const QColor& color) {
    QPalette palette = control.palette();
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(role, color);
    control.setPalette(palette);
    return PictureOf(window);
}

} // namespace

QRect PaintedBy(QWidget& window, const QList<QWidget*>& widgets) {
    const QImage with = PictureOf(window);
    for (QWidget* widget : widgets) widget->hide();
    const QImage without = PictureOf(window);
    for (QWidget* widget : widgets) widget->show();
    return Difference(with, without);
}

QRect LettersOf(QWidget& window, QWidget& control) {
    const QPalette before = control.palette();
    const QImage red = PictureInColor(window, control, Qt::red);
    const QImage blue = PictureInColor(window, control, Qt::blue);
    control.setPalette(before);
    return Difference(red, blue);
}
