// Librarian: a small MIDI librarian. It opens a bank of System Exclusive messages, lists them,
// sends the selected one and compares what comes back.
#include <memory>

#include <afxwin.h>

#include "Dialogs.h"
#include "MainFrame.h"
#include "PluginTrial.h"
#include "Report.h"

class LibrarianApp : public CWinApp {
public:
    BOOL InitInstance() override {
        m_frame = std::make_unique<MainFrame>();
        if (!m_frame->Open()) return FALSE;
        AfxSetMainWnd(m_frame.get());
        m_frame->ShowWindow(SW_SHOW);
        Report("ready");
        return CWinApp::InitInstance();
    }

    // Before the library ends: the window must not outlive it.
    int ExitInstance() override {
        m_frame.reset();
        return CWinApp::ExitInstance();
    }

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_COMMAND || LOWORD(wParam) != ID_APP_ABOUT)
            return CWinApp::MessageMap(message, wParam, lParam);
        AboutDialog(m_frame.get()).DoModal();
        Report("about");
        return 1;
    }

private:
    std::unique_ptr<MainFrame> m_frame;
};

static LibrarianApp theApp;

int main(int argc, char** argv) {
    if (const std::optional<int> trial = TrialAskedFor(argc, argv)) return *trial;
    AfxSetDVBundle(nullptr);
    VMCore_Initialize();
    return AfxMain(&theApp, argc, argv);
}
