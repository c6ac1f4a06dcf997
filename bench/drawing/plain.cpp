// The toolkit's painter, used in the plain way: antialiased strokes along the middle of the pixels,
// and the state saved and restored around a clip.
#include <QtGui/QFontMetricsF>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include "Drawer.h"

namespace bench {
namespace {

QColor ColorOf(const Mark& mark) {
    return QColor::fromRgb(kPalette[mark.color]);
}

QPen PenOf(const QColor& color, double width) {
    return {color, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin};
}

QRectF RectOf(const Mark& mark) {
    return {QPointF(mark.left, mark.top), QPointF(mark.right, mark.bottom)};
}

// The sheet as a program that uses the toolkit keeps it: what has the key colour is already gone.
QImage KeptSheet(Sheet sheet) {
    QImage image = SheetPixels(sheet);
    for (int y = 0; sheet == Sheet::Keyed && y < kSheetSize; ++y)
        for (int x = 0; x < kSheetSize; ++x)
            if (image.pixel(x, y) == (0xFF000000 | kKey)) image.setPixel(x, y, 0);
    return image;
}

QFont TextFont() {
    QFont font("Liberation Sans");
    font.setPixelSize(kTextSize);
    return font;
}

class Plain : public Drawer {
public:
    explicit Plain(QPainter& painter, double penWidth = 1)
        : m_painter(painter), m_penWidth(penWidth), m_font(TextFont()),
          m_metrics(m_font, painter.device()) {
        m_painter.setRenderHint(QPainter::Antialiasing);
        m_painter.setFont(m_font);
    }

    void Fill(const Mark& mark) override { m_painter.fillRect(RectOf(mark), ColorOf(mark)); }

    void Line(const Mark& mark) override {
        m_painter.setPen(PenOf(ColorOf(mark), m_penWidth));
        QPointF from(mark.left, mark.top), to(mark.right, mark.bottom);
        const QPointF half(mark.left == mark.right ? 0.5 : 0, mark.top == mark.bottom ? 0.5 : 0);
        m_painter.drawLine(from + half, to + half);
    }

    void Frame(const Mark& mark) override {
        m_painter.save();
        m_painter.setClipRect(RectOf(mark), Qt::IntersectClip);
        m_painter.setPen(PenOf(ColorOf(mark), 2));
        m_painter.setBrush(Qt::NoBrush);
        m_painter.drawRect(RectOf(mark));
        m_painter.restore();
    }

    void Ellipse(const Mark& mark) override {
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(ColorOf(mark));
        m_painter.drawEllipse(RectOf(mark));
        Mark outline = mark;
        outline.color = (mark.color + 1) % kPalette.size();
        m_painter.setPen(PenOf(ColorOf(outline), 1.0001)); // at 1 the outline is too faint
        m_painter.setBrush(Qt::NoBrush);
        m_painter.drawEllipse(RectOf(mark));
    }

    void Text(const Mark& mark, std::string_view text) override {
        m_painter.setPen(ColorOf(mark));
        m_painter.drawText(QPointF(mark.left, mark.top + m_metrics.ascent()),
                           QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())));
    }

    int TextWidth(std::string_view text) override {
        return static_cast<int>(m_metrics.horizontalAdvance(
            QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()))));
    }

    void Blit(const Mark& mark, const Piece& piece) override {
        const QRect target(QPoint(mark.left, mark.top), QPoint(mark.right - 1, mark.bottom - 1));
        const QSize size = piece.half ? target.size() * 2 : target.size();
        m_painter.setRenderHint(QPainter::SmoothPixmapTransform, piece.half);
        m_painter.drawImage(target, m_sheets[static_cast<std::size_t>(piece.sheet)],
                            QRect(QPoint(piece.x, piece.y), size));
    }

private:
    QPainter& m_painter;
    double m_penWidth;
    std::array<QImage, 3> m_sheets = {KeptSheet(Sheet::Opaque), KeptSheet(Sheet::Alpha),
                                      KeptSheet(Sheet::Keyed)};
    QFont m_font;
    QFontMetricsF m_metrics;
};

struct OwnPainter {
    explicit OwnPainter(QImage& image) : painter(&image) {}
    QPainter painter;
};

class PlainOnImage : private OwnPainter, public Plain {
public:
    PlainOnImage(QImage& image, double penWidth) : OwnPainter(image), Plain(painter, penWidth) {}
};

} // namespace

std::unique_ptr<Drawer> PlainOn(QImage& image, double penWidth) {
    return std::make_unique<PlainOnImage>(image, penWidth);
}

std::unique_ptr<Drawer> PlainWith(QPainter& painter) {
    return std::make_unique<Plain>(painter);
}

} // namespace bench
