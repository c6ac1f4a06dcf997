// Gallery: one window with every primitive, pen, font face, alignment and region, for a look at what
// drawing does.
#include <memory>

#include <afxwin.h>

#include "GalleryView.h"

class GalleryFrame : public CFrameWnd {
public:
    BOOL Open() {
        const RECT place = {40, 60, 40 + GalleryView::kWidth, 60 + GalleryView::kHeight};
        if (!Create("", "Gallery", WS_OVERLAPPEDWINDOW, place)) return FALSE;
        CRect client;
        GetClientRect(client);
        return m_view.Create("", "", WS_VISIBLE, client, this, 1);
    }

private:
    GalleryView m_view;
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
