#include "stdafx.h"
#include <afxwin.h>
#include <afxsock.h>

/* WM_NCPAINT is not used here, nor is // GetLastError() */
static const char* kText = "WM_NCPAINT, CView";
static const char* kRaw = R"x(CSplitterWnd ")" )x";

void CMainFrame::OnReload() {
    m_list.SetItemText(0, 0, "x");
    m_list.SetExtendedStyle(1);
    m_socket.Send("x", 1);
    m_name.Format("%d", 5);
    GetClientRect(nullptr);
    CWnd* item = GetDlgItem(5);
    item->ShowWindow(SW_SHOW);
    ((CEdit*)item)->SetSel(0, 1);
    if (GetLastError() == 0) PostMessage(WM_RELOAD, 0, 0);
    const int delta = WHEEL_DELTA + WM_UNDREAMT_OF + \
        1'000;
}

void CPane::Format() {
    Format();
    m_path.Empty();
#if 0
    CSplitterWnd never;
#endif
}
