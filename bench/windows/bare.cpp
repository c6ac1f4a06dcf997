// The same program, made with the toolkit alone: [WIDTH HEIGHT].
#include <cstdlib>

#include <QtCore/QTimer>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include "resident.h"

namespace {

class Pane : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(200, 220, 240));
        painter.drawText(20, 32, "Hello");
        if (!m_painted) {
            std::puts("painted");
            std::fflush(stdout);
            QTimer::singleShot(300, qApp, [] {
                std::printf("%ld\n", ResidentKilobytes());
                QApplication::quit();
            });
        }
        m_painted = true;
    }

private:
    bool m_painted = false;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QWidget window;
    const bool isSized = argc > 2;
    const QSize size(isSized ? std::atoi(argv[1]) : 400, isSized ? std::atoi(argv[2]) : 200);
    window.setGeometry(QRect(QPoint(60, 60), size));
    Pane pane(&window);
    pane.setGeometry(QRect(QPoint(), size));
    window.show();
    return application.exec();
}
