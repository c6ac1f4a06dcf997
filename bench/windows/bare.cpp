// The same program, made with the toolkit alone.
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
        painter.fillRect(0, 0, 400, 200, QColor(200, 220, 240));
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
    window.setGeometry(60, 60, 400, 200);
    Pane pane(&window);
    pane.setGeometry(0, 0, 400, 200);
    window.show();
    return application.exec();
}
