// A program of the toolkit's own kind that loads the library as a plug-in would: it has its
// application object and its window already.
#include <vmcore/app/CWinApp.h>
#include <vmcore/app/lifecycle.h>
#include <vmcore/wnd/CWnd.h>

#include <cstdio>
#include <thread>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace {

int s_failures = 0;

void Check(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "failed: %s\n", what);
    ++s_failures;
}

struct Pane : CWnd {
    int MessageMap(int message, WPARAM, LPARAM) override {
        if (message == WM_USER + 1) ++delivered;
        return message == WM_USER + 1;
    }
    int delivered = 0;
};

void RunBriefly() {
    QEventLoop loop;
    QTimer::singleShot(20, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

int main(int argc, char** argv) {
    QApplication foreign(argc, argv);
    QWidget window;
    window.show();
    {
        SetPluginEnvironment(true);
        CWinApp plugin;
        VMCore_Initialize();
        Check(GetProcessSignature() == 0x3F3F3F3F, "signature");
        CWnd host; // the foreign window's view as a window object
        host.Attach(&window);
        Pane pane;
        Check(pane.Create("", "", WS_VISIBLE, RECT{0, 0, 50, 20}, &host, 5), "a child in it");
        Check(NSViewIsValid(pane.view), "views of the foreign program's windows are valid");
        Check(NSViewIsValid(&window), "also those that belong to no window of the library");
        std::thread worker([&] {
            pane.PostMessage(WM_USER + 1);
            pane.SendMessage(WM_USER + 1);
        });
        while (pane.delivered < 2) RunBriefly();
        worker.join();
        pane.DestroyWindow();
        host.Detach();
        RunBriefly();
    }
    Check(QCoreApplication::instance() == &foreign, "its application object is still its own");
    Check(window.isVisible(), "and its window is still there");
    return s_failures;
}
