// A host that never makes an application object: every call says so and stays neutral.
#include <vmcore/app/CWinApp.h>
#include <vmcore/app/lifecycle.h>
#include <vmcore/controls/CMenu.h>
#include <vmcore/wnd/CWnd.h>

#include <cstdio>

int main(int argc, char** argv) {
    CWnd window;
    if (window.Create("", "too early", WS_OVERLAPPEDWINDOW, RECT{60, 60, 160, 160}, nullptr, 0))
        return 1; // nothing could show it
    if (window.SendMessage(WM_USER) != 0 || window.SetTimer(1, 10) != 0) return 1;
    CMenu menu;
    if (CreateMenu() || menu.CreatePopupMenu() || menu.LoadMenu(300)) return 1;
    if (menu.AppendMenu(MF_STRING, 1, "no menu") || menu.GetMenuItemCount() != 0) return 1;
    if (AfxGetApp() || AfxGetMainWnd()) return 1;
    window.PostMessage(WM_USER);
    MSG msg;
    if (PeekMessage(&msg, nullptr, 0, 0, 1)) return 1; // waits, and comes back
    std::fprintf(stderr, "AfxMain returned %d\n", AfxMain(nullptr, argc, argv));
    return 0;
}
