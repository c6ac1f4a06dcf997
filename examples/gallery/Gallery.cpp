// Gallery: one window with everything that can be drawn, and every control, for a look at both.
#include <memory>

#include <afxcmn.h>
#include <afxwin.h>

#include "ControlsPage.h"
#include "GalleryView.h"
#include "resource.h"

namespace {
constexpr int kTabHeight = 32;
constexpr UINT kTabs = 1;
constexpr UINT kDrawing = 2;
} // namespace

class GalleryFrame : public CFrameWnd {
public:
    BOOL Open() {
        const RECT place = {40, 60, 40 + GalleryView::kWidth,
                            60 + GalleryView::kHeight + kTabHeight};
        if (!Create("", "Gallery", WS_OVERLAPPEDWINDOW, place)) return FALSE;
        CRect client;
        GetClientRect(client);
        m_tabs.Create(WS_VISIBLE | WS_TABSTOP, CRect(0, 0, client.right, kTabHeight), this, kTabs);
        m_tabs.InsertItem(0, "Drawing");
        m_tabs.InsertItem(1, "Controls");
        if (!m_controls.Create(DLG_CONTROLS, this)) return FALSE;
        client.top = kTabHeight;
        m_controls.MoveWindow(client);
        m_controls.ShowWindow(SW_HIDE);
        return m_view.Create("", "", WS_VISIBLE, client, this, kDrawing);
    }

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case WM_NOTIFY:
            if (wParam == kTabs) ShowPage(m_tabs.GetCurSel());
            return 1;
        case WM_SIZE:
            Resize();
            break;
        default:
            break;
        }
        return CFrameWnd::MessageMap(message, wParam, lParam);
    }

private:
    void ShowPage(int page) {
        m_view.ShowWindow(page == 0 ? SW_SHOW : SW_HIDE);
        m_controls.ShowWindow(page == 1 ? SW_SHOW : SW_HIDE);
    }
    void Resize() {
        CRect client;
        GetClientRect(client);
        m_tabs.MoveWindow(0, 0, client.right, kTabHeight);
        client.top = kTabHeight;
        m_controls.MoveWindow(client);
        m_view.MoveWindow(client);
    }

    CTabCtrl m_tabs;
    GalleryView m_view;
    ControlsPage m_controls;
};

class GalleryApp : public CWinApp {
public:
    BOOL InitInstance() override {
        m_frame = std::make_unique<GalleryFrame>();
        if (!m_frame->Open()) return FALSE;
        AfxSetMainWnd(m_frame.get());
        m_frame->ShowWindow(SW_SHOW);
        return CWinApp::InitInstance();
    }
    int ExitInstance() override { // called twice
        m_frame.reset();
        return CWinApp::ExitInstance();
    }

private:
    std::unique_ptr<GalleryFrame> m_frame;
};

static GalleryApp theApp;

int main(int argc, char** argv) {
    AfxSetDVBundle(nullptr);
    VMCore_Initialize();
    return AfxMain(&theApp, argc, argv);
}
