#include "paintEvent.h"

#include <vmcore/gdi/CPaintDC.h>
#include <vmcore/wnd/CWnd.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QBackingStore>
#include <QtGui/QPainter>
#include <QtWidgets/QWidget>

namespace bench {
namespace {

// Calls the scene in its paint handler and keeps the time of the last one.
class OurWindow : public CWnd {
public:
    explicit OurWindow(const Scene& scene) : m_scene(scene) {
        Create("", "ours", WS_VISIBLE, RECT{0, 0, kWidth, kHeight}, nullptr, 0);
        m_content.Create("", "", WS_VISIBLE, RECT{0, 0, kWidth, kHeight}, this, 1);
        m_content.owner = this;
        ShowWindow(5);
    }
    double Paint() {
        m_content.Invalidate();
        m_content.UpdateWindow();
        return m_time;
    }

private:
    class Content : public CWnd {
    public:
        int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
            if (message != WM_PAINT) return CWnd::MessageMap(message, wParam, lParam);
            owner->m_time = NanosecondsPer(1000, [this] {
                CPaintDC dc(this);
                owner->m_scene(*OursWith(dc));
            });
            return 1;
        }
        OurWindow* owner = nullptr;
    };

    Scene m_scene;
    Content m_content;
    double m_time = 0;
};

class PeerWindow : public QWidget {
public:
    using Handler = std::function<void(QWidget&)>;
    explicit PeerWindow(Handler handler) : m_handler(std::move(handler)) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setGeometry(0, 0, kWidth, kHeight);
        show();
    }
    double Paint() {
        update();
        QCoreApplication::sendPostedEvents(this, QEvent::UpdateRequest);
        return m_time;
    }

protected:
    void paintEvent(QPaintEvent*) override {
        m_time = NanosecondsPer(1000, [this] { m_handler(*this); });
    }

private:
    Handler m_handler;
    double m_time = 0;
};

QImage& BackingImage(QWidget& window) {
    return *dynamic_cast<QImage*>(window.backingStore()->paintDevice());
}

} // namespace

std::vector<Figure> ComparePaintEvents(int rounds, const Scene& scene) {
    OurWindow ours(scene);
    PeerWindow plain([&](QWidget& window) {
        QPainter painter(&window);
        scene(*PlainWith(painter));
    });
    PeerWindow cairo([&](QWidget& window) { scene(*CairoOn(BackingImage(window))); });
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    const auto figures = CompareAll(rounds, {{"ours", [&] { return ours.Paint(); }},
                                             {"QPainter", [&] { return plain.Paint(); }},
                                             {"Cairo", [&] { return cairo.Paint(); }}});
    ours.DestroyWindow();
    return figures;
}

} // namespace bench
