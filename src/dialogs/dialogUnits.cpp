#include "dialogs/dialogUnits.h"

#include <cstdint>

#include <QtCore/QVariant>
#include <QtGui/QFontMetrics>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QWidget>

namespace vm {
namespace {

constexpr int kLineMargin = 1; // of a line, above and below its text
constexpr int kUnitsAcross = 4;
constexpr int kUnitsDown = 8;

// Rounded to the nearest, halves away from zero.
int MulDivide(int number, int numerator, int denominator) {
    const std::int64_t product = std::int64_t{number} * numerator;
    const std::int64_t half = product < 0 ? -denominator / 2 : denominator / 2;
    return static_cast<int>((product + half) / denominator);
}

class Scale {
public:
    Scale(const QSize& from, const QSize& to) : m_from(from), m_to(to) {}

    int Across(int x) const { return MulDivide(x, m_to.width(), m_from.width()); }
    int Down(int y) const { return MulDivide(y, m_to.height(), m_from.height()); }
    QSize Of(const QSize& size) const { return {Across(size.width()), Down(size.height())}; }
    QRect Of(const QRect& rect) const {
        const QPoint topLeft(Across(rect.x()), Down(rect.y()));
        const QPoint end(Across(rect.x() + rect.width()), Down(rect.y() + rect.height()));
        return {topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())};
    }
    /// The largest possible one stays what it is.
    QSize OfLimit(const QSize& size) const {
        const QSize scaled = Of(size);
        return {size.width() >= QWIDGETSIZE_MAX ? size.width() : scaled.width(),
                size.height() >= QWIDGETSIZE_MAX ? size.height() : scaled.height()};
    }

private:
    QSize m_from;
    QSize m_to;
};

void ScaleWidget(QWidget& widget, const Scale& scale, bool isRoot) {
    const QRect drawn = widget.geometry();
    widget.setMaximumSize(scale.OfLimit(widget.maximumSize()));
    widget.setMinimumSize(scale.Of(widget.minimumSize()));
    if (isRoot)
        widget.resize(scale.Of(drawn.size()));
    else if (widget.testAttribute(Qt::WA_Resized) || widget.testAttribute(Qt::WA_Moved))
        widget.setGeometry(scale.Of(drawn));
}

int RoomForText(const QLineEdit& line) {
    QStyleOptionFrame option;
    option.initFrom(&line);
    option.lineWidth = line.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &line);
    return line.style()->subElementRect(QStyle::SE_LineEditContents, &option, &line).height() -
           2 * kLineMargin;
}

void MakeRoomForText(QWidget& widget) {
    auto* line = qobject_cast<QLineEdit*>(&widget);
    if (!line || !line->hasFrame() || !line->testAttribute(Qt::WA_Resized)) return;
    if (RoomForText(*line) < line->fontMetrics().height()) line->setFrame(false);
}

} // namespace

QSize DialogBaseOf(const QFont& font) {
    static const QString kLetters =
        QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    const QFontMetrics metrics(font);
    const int across = (metrics.horizontalAdvance(kLetters) / 26 + 1) / 2;
    return QSize(across, metrics.height()).expandedTo(QSize(1, 1));
}

QSize DialogBaseOf(const QWidget& root) {
    const QSize kept = root.property(kDialogBaseProperty).toSize();
    return kept.isEmpty() ? DialogBaseOf(root.font()) : kept;
}

RECT UnitsToPixels(const RECT& units, const QSize& base) {
    const Scale scale(QSize(kUnitsAcross, kUnitsDown), base);
    return {scale.Across(units.left), scale.Down(units.top), scale.Across(units.right),
            scale.Down(units.bottom)};
}

void ScaleToFont(const std::vector<QWidget*>& widgets) {
    if (widgets.empty()) return;
    QWidget& root = *widgets.front();
    const QSize from = root.property(kDialogBaseProperty).toSize();
    if (from.isEmpty()) return;
    const QSize to = DialogBaseOf(root.font());
    const Scale scale(from, to);
    for (QWidget* widget : widgets) ScaleWidget(*widget, scale, widget == &root);
    for (QWidget* widget : widgets) MakeRoomForText(*widget);
    root.setProperty(kDialogBaseProperty, to);
}

} // namespace vm
