#pragma once

class CPane;
#define WM_RELOAD (WM_USER + 1)
#define ROUND_UP(BOOL, n) ((BOOL) + (n))

class CMainFrame : public CFrameWnd {
public:
    CMainFrame();
    afx_msg void OnReload();
    BOOL OnIdle(LONG count);

protected:
    CListCtrl m_list;
    CSocket m_socket;
    CString m_name, m_path;
};

class CPane : public CMainFrame {
public:
    void Format();
};

class CMyApp : public CWinApp {
    BOOL InitInstance() override;
    BOOL OnIdle(LONG count) override;
};
