// A plug-in for a foreign program, built on the library. It is built twice from here, and everything
// but its entry points has the same name in both, and is exported: as ported code has it.
#include <afxcmn.h>
#include <afxwin.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#define EXPORTED __attribute__((visibility("default")))
#define ENTRY extern "C" EXPORTED

// Names that both plug-ins have.
class EXPORTED PlugInApp : public CWinApp {
public:
    const char* Letter() { return PLUGIN_LETTER; }
    BOOL InitInstance() override { return PLUGIN_LETTER[0] == 'A'; }
};
EXPORTED PlugInApp theApp;
EXPORTED const char* Letter() {
    return PLUGIN_LETTER;
}
EXPORTED inline int& Counter() {
    static int s_counter = 0;
    return s_counter;
}
EXPORTED int DllMain(HINSTANCE, unsigned) {
    return ++Counter();
}
EXPORTED int InitVMCore() {
    return ++Counter();
}
EXPORTED int InitProfileManager() {
    return ++Counter();
}
EXPORTED void TermVMCore() {
    ++Counter();
}
EXPORTED PlugInApp* AfxGetPlugInApp() {
    return &theApp;
}

namespace {

constexpr int kDialog = 101;
constexpr int kButton = 1001;
constexpr int kChosen = 1002;
constexpr int kSave = 2001;
constexpr UINT kFromWorker = WM_USER + 1;

struct Seen {
    int clicks = 0;
    int paints = 0;
    int destroyed = 0;
    int saves = 0;
    int delivered = 0;
    int chosen = 0;
} s_seen;

} // namespace

// The plug-in's views in the foreign program's window: its own drawing and an embedded dialog.
class EXPORTED Panel : public CDialog {
public:
    std::function<void()> clicked;

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message == static_cast<int>(WM_COMMAND) && LOWORD(wParam) == kButton) {
            ++s_seen.clicks;
            if (clicked) clicked();
            return 1;
        }
        return CDialog::MessageMap(message, wParam, lParam);
    }
};

class EXPORTED Picture : public CWnd {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        s_seen.paints += message == static_cast<int>(WM_PAINT);
        s_seen.destroyed += message == static_cast<int>(WM_DESTROY);
        s_seen.delivered += message == static_cast<int>(kFromWorker);
        if (message == static_cast<int>(WM_UPDATECOMMANDUI)) {
            auto& state = *reinterpret_cast<CCmdUI*>(lParam);
            return state.SetFnDefined(true), state.Enable(true), 1;
        }
        if (message == static_cast<int>(WM_COMMAND) && LOWORD(wParam) == kChosen)
            return ++s_seen.chosen, 1;
        return CWnd::MessageMap(message, wParam, lParam);
    }
};

class EXPORTED Frame : public CFrameWnd {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        const bool isSave = message == static_cast<int>(WM_COMMAND) && LOWORD(wParam) == kSave;
        s_seen.saves += isSave;
        return isSave ? 1 : CFrameWnd::MessageMap(message, wParam, lParam);
    }
};

namespace {

struct Parts {
    CWnd host; // the foreign program's widget as a window object
    Panel panel;
    Picture picture;
    Frame frame;
};

Parts& Own() {
    static auto* const s_parts = new Parts;
    return *s_parts;
}

// A modal dialog that does something once it runs, and is over then unless that has ended it.
class Asking : public CDialog {
public:
    explicit Asking(std::function<void()> act) : CDialog(kDialog), m_act(std::move(act)) {}
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message == static_cast<int>(WM_INITDIALOG)) return 0;
        if (message != static_cast<int>(WM_TIMER))
            return CDialog::MessageMap(message, wParam, lParam);
        KillTimer(static_cast<UINT>(wParam));
        m_act();
        return 1;
    }
    BOOL OnInitDialog() override {
        SetTimer(1, 1);
        return CDialog::OnInitDialog();
    }

private:
    std::function<void()> m_act;
};

} // namespace

ENTRY int Start(int withBundle) {
    SetPluginEnvironment(true);
    if (!AfxInitExtensionModule(nullptr, nullptr)) return 0;
    if (withBundle) AfxSetDVBundle(VMBundleForAddress(reinterpret_cast<const void*>(&Start)));
    return VMCore_Initialize() != nullptr;
}

ENTRY int Open(void* widget) {
    Parts& own = Own();
    own.host.Attach(static_cast<HWND>(widget));
    if (!own.panel.Create(kDialog, &own.host) ||
        !own.picture.Create("", "", WS_CHILD | WS_VISIBLE, CRect(0, 90, 50, 120), &own.host, 5))
        return 0;
    own.picture.setCallOnDealloc(true);
    return 1;
}

ENTRY int ViewsAreGone() {
    return !IsWindow(Own().panel.view) && !IsWindow(Own().picture.view);
}

ENTRY const Seen* WhatWasSeen() {
    return &s_seen;
}

ENTRY void ThrowWhenClicked() {
    Own().panel.clicked = [] { throw std::runtime_error("of the plug-in"); };
}

ENTRY int OpenFrame() {
    Parts& own = Own();
    if (!own.frame.Create("", "Plug-in's frame", WS_OVERLAPPEDWINDOW, CRect(0, 0, 300, 200)))
        return 0;
    AfxSetMainWnd(&own.frame);
    return own.frame.ShowWindow(SW_SHOW), 1;
}

// What DoModal returns for a dialog that calls `act`, and then ends with 7.
ENTRY int RunDialog(void (*act)()) {
    Asking* running = nullptr;
    Asking dialog([&] {
        if (act) act();
        running->EndDialog(7);
    });
    running = &dialog;
    return dialog.DoModal();
}

// What DoModal returns for a dialog that only asks to quit.
ENTRY int QuitFromDialog() {
    return Asking([] { PostQuitMessage(0); }).DoModal();
}

ENTRY void TrackMenu() {
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, kChosen, "Item");
    menu.TrackPopupMenu(0, 0, 0, &Own().picture, nullptr);
}

ENTRY void SendFromWorker() {
    AfxBeginThread(
        [](void*) -> UINT {
            Own().picture.SendMessage(kFromWorker);
            Own().picture.PostMessage(kFromWorker);
            return 0;
        },
        nullptr);
}

ENTRY int NothingIsKnownWithoutBundle() {
    char text[MAX_PATH] = "x";
    return AfxApplicationName(text, sizeof text) == 0 && text[0] == '\0' &&
           AfxApplicationPath(text, sizeof text) == 0 && AfxResourcePath(text, sizeof text) == 0 &&
           RunDialog(nullptr) == IDCANCEL && GetProcessSignature() == 0x3F3F3F3F;
}

// Whether each of the names that both have is this plug-in's own, and the library's entry points its
// own when the plug-in attaches it.
ENTRY int NamesAreItsOwn() {
    static MacInstance s_record;
    s_record.Initialize(PLUGIN_LETTER);
    char name[256] = "";
    AfxGetInstanceName(&s_record, name);
    if (std::string(name) != PLUGIN_LETTER) return 0;
    Counter() += 10;
    CWinApp& app = theApp;
    return std::string(theApp.Letter()) == PLUGIN_LETTER &&
           std::string(Letter()) == PLUGIN_LETTER && AfxGetPlugInApp() == &theApp &&
           app.InitInstance() == (PLUGIN_LETTER[0] == 'A') && Counter() == 10;
}
