// A window with 20 controls, and 10,000 child windows.
#include <memory>
#include <string>
#include <vector>

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>

#include <afxwin.h>

#include "harness.h"
#include "parts.h"

namespace bench {
namespace {

constexpr int kControls = 20;
constexpr int kPanes = 4; // of them drawn by the program, the rest labels

RECT PlaceOf(int index) {
    const int left = 10 + index % 4 * 90;
    const int top = 10 + index / 4 * 30;
    return {left, top, left + 80, top + 24};
}

QRect QtPlaceOf(int index) {
    const RECT place = PlaceOf(index);
    return {QPoint(place.left, place.top), QPoint(place.right - 1, place.bottom - 1)};
}

class Pane : public CWnd {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message != static_cast<int>(WM_PAINT)) return CWnd::MessageMap(message, wParam, lParam);
        CPaintDC dc(this);
        CBrush brush(RGB(200, 220, 240));
        CRect area(0, 0, 80, 24);
        dc.FillRect(area, &brush);
        return 1;
    }
};

void OurWindow() {
    CFrameWnd frame;
    frame.Create("", "bench", WS_OVERLAPPEDWINDOW, RECT{60, 60, 460, 260}, nullptr, nullptr);
    std::vector<std::unique_ptr<CWnd>> controls;
    for (int i = 0; i < kControls; ++i) {
        if (i < kPanes) {
            controls.push_back(std::make_unique<Pane>());
            controls.back()->Create("", "", WS_CHILD | WS_VISIBLE, PlaceOf(i), &frame, i + 1);
        } else {
            auto label = std::make_unique<CStatic>();
            label->Create("Label", WS_CHILD | WS_VISIBLE, PlaceOf(i), &frame, i + 1);
            controls.push_back(std::move(label));
        }
    }
    frame.ShowWindow(SW_SHOW);
    Settle();
    frame.DestroyWindow();
    Settle();
}

class QtPane : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(0, 0, 80, 24, QColor(200, 220, 240));
    }
};

void QtWindow() {
    auto* window = new QWidget;
    window->setGeometry(60, 60, 400, 200);
    for (int i = 0; i < kControls; ++i) {
        QWidget* const control =
            i < kPanes ? static_cast<QWidget*>(new QtPane(window)) : new QLabel("Label", window);
        control->setGeometry(QtPlaceOf(i));
    }
    window->show();
    Settle();
    window->hide();
    window->deleteLater();
    Settle();
}

} // namespace

void BenchWindowWithControls() {
    constexpr int kTimes = 20;
    const auto times = [](void (*body)()) {
        return [body] {
            return NanosecondsPer(kTimes,
                                  [&] {
                                      for (int i = 0; i < kTimes; ++i) body();
                                  }) /
                   1000;
        };
    };
    OurWindow(); // fonts and styles are loaded
    QtWindow();
    const Pair pair = Compare(11, times(OurWindow), times(QtWindow));
    Report("window-with-20-controls", pair.ours, "us", "QWidget and QLabel", pair.peer);
}

void BenchManyChildren() {
    constexpr int kChildren = 10000;
    CWnd parent;
    parent.Create("", "bench", WS_OVERLAPPEDWINDOW, RECT{60, 60, 460, 260}, nullptr, 0);
    parent.ShowWindow(SW_SHOW);
    auto* const window = new QWidget;
    window->setGeometry(60, 60, 400, 200);
    window->show();
    const auto ours = [&] {
        return NanosecondsPer(kChildren,
                              [&] {
                                  std::vector<std::unique_ptr<CWnd>> children;
                                  for (int i = 0; i < kChildren; ++i) {
                                      children.push_back(std::make_unique<Pane>());
                                      children.back()->Create("", "", WS_CHILD | WS_VISIBLE,
                                                              PlaceOf(i % 20), &parent,
                                                              static_cast<UINT>(i));
                                  }
                                  for (const auto& child : children) child->DestroyWindow();
                                  Settle();
                              }) /
               1000;
    };
    const auto peer = [&] {
        return NanosecondsPer(kChildren,
                              [&] {
                                  std::vector<QWidget*> children;
                                  for (int i = 0; i < kChildren; ++i) {
                                      children.push_back(new QtPane(window));
                                      children.back()->setGeometry(QtPlaceOf(i % 20));
                                      children.back()->show();
                                  }
                                  for (QWidget* child : children) {
                                      child->hide();
                                      child->deleteLater();
                                  }
                                  Settle();
                              }) /
               1000;
    };
    const Pair pair = Compare(5, ours, peer);
    Report("child-of-10000", pair.ours, "us", "QWidget", pair.peer);
    parent.DestroyWindow();
    delete window;
    Settle();
}

} // namespace bench
