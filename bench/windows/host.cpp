// The smallest program of the library that paints: it says when it has, and how large it is then.
#include <afxwin.h>

#include "resident.h"

namespace {

class Pane : public CWnd {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message == static_cast<int>(WM_TIMER)) {
            std::printf("%ld\n", ResidentKilobytes());
            std::fflush(stdout);
            PostQuitMessage(0);
            return 1;
        }
        if (message != static_cast<int>(WM_PAINT)) return CWnd::MessageMap(message, wParam, lParam);
        CPaintDC dc(this);
        CBrush brush(RGB(200, 220, 240));
        CRect area(0, 0, 400, 200);
        dc.FillRect(area, &brush);
        dc.TextOut(20, 20, "Hello", 5);
        if (!m_painted) {
            std::puts("painted");
            std::fflush(stdout);
            SetTimer(1, 300);
        }
        m_painted = true;
        return 1;
    }

private:
    bool m_painted = false;
};

class Frame : public CFrameWnd {
public:
    Pane pane;
};

class App : public CWinApp {
public:
    BOOL InitInstance() override {
        m_frame.Create("", "bench", WS_OVERLAPPEDWINDOW, RECT{60, 60, 460, 260}, nullptr, nullptr);
        m_frame.pane.Create("", "", WS_CHILD | WS_VISIBLE, RECT{0, 0, 400, 200}, &m_frame, 1);
        AfxSetMainWnd(&m_frame);
        m_frame.ShowWindow(SW_SHOW);
        return CWinApp::InitInstance();
    }

private:
    Frame m_frame;
};

App theApp;

} // namespace

int main(int argc, char** argv) {
    AfxSetDVBundle(nullptr);
    VMCore_Initialize();
    return AfxMain(&theApp, argc, argv);
}
