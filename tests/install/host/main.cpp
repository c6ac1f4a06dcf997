// Opens a window, lets a message travel through it, and quits. Prints what it saw.
#include <cstdio>
#include <string>

#include <afxwin.h>
#include <mmsystem.h>

namespace {

bool ToolWorks() {
    char path[MAX_PATH] = {};
    AfxApplicationPath(path, sizeof path);
    const HMODULE library = LoadLibrary((std::string(path) + "/../PlugIns/tool.so").c_str());
    const auto tool = reinterpret_cast<int (*)()>(GetProcAddress(library, "Tool"));
    return tool && tool();
}

class Window : public CFrameWnd {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message != static_cast<int>(WM_USER))
            return CFrameWnd::MessageMap(message, wParam, lParam);
        char name[256] = {};
        AfxApplicationName(name, sizeof name);
        std::printf("message %d in %s%s\n", static_cast<int>(wParam), name,
                    ToolWorks() ? ", with tool" : "");
        PostQuitMessage(0);
        return 1;
    }
};

class App : public CWinApp {
    BOOL InitInstance() override {
        m_window.Create("", "Stranger", WS_OVERLAPPEDWINDOW, CRect(60, 60, 360, 260));
        AfxSetMainWnd(&m_window);
        m_window.PostMessage(WM_USER, 42);
        return CWinApp::InitInstance();
    }

    Window m_window;
};

App s_app;

} // namespace

int main(int argc, char** argv) {
    AfxSetDVBundle(nullptr);
    VMCore_Initialize();
    return AfxMain(&s_app, argc, argv);
}
