// CDialog: a window whose controls come from an interface file.
//
// The file is named by the dialog's number: DLG_101.ui in the bundle's Resources folder
// (docs/interface-files.md says how to draw one). Its controls carry their IDs as tags; GetDlgItem
// finds them, and what the user does with them arrives as WM_COMMAND, WM_NOTIFY, WM_HSCROLL or
// WM_VSCROLL.
//
//     class PortDialog : public CDialog {
//     public:
//         explicit PortDialog(CWnd* parent) : CDialog(101, parent) {}
//         void DoDataExchange(CDataExchange* pDX) override { DDX_CBIndex(pDX, 1001, m_port); }
//         int m_port = 0;
//     };
//
//     PortDialog dialog(AfxGetMainWnd());
//     if (dialog.DoModal() == IDOK) usePort(dialog.m_port);
//
// A click of the control with the tag 1 calls OnOK, of that with the tag 2 OnCancel. Return clicks
// the default button (the one with the property `default`, else the one with the tag 1; a focused
// push button itself), Escape and the title bar's close button call OnCancel.
//
// Main thread only. A dialog may be ended, destroyed or deleted by any of its own handlers.
#pragma once

#include <vmcore/wnd/CWnd.h>

class CDataExchange;
class CWndViewController;
class CWndWindowController;

class VM_API CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)

    CDialog();
    explicit CDialog(int nIDTemplate, CWnd* pParentWnd = nullptr);
    ~CDialog() override;

    using CWnd::Create;
    /// Embeds the dialog in the parent's view at its origin, in the size of its file, and shows it.
    /// It lives until the parent or DestroyWindow ends it. FALSE, with a message box that names the
    /// file, when that cannot be loaded; FALSE without a parent that has a view.
    BOOL Create(int nIDTemplate, CWnd* pParentWnd);
    /// Must not be called: a message box says so. FALSE.
    BOOL Create(LPCTSTR lpszTemplateName, CWnd* pParentWnd);

    // What DoModal calls may be overridden; the order is part of the binary interface.
    /// Shows the dialog in a window of its own that blocks the application's others, unless it is the
    /// main window (see AfxSetMainWnd), and runs it to
    /// its end: WM_CREATE, WM_INITDIALOG (which loads the controls), the modal loop, the exchange of
    /// the controls' values into the variables, WM_CLOSE. The exchange happens after every run, also
    /// a cancelled one: look at the result before using the values.
    ///
    /// Returns 1 after OnOK, 2 after OnCancel, else what EndDialog was given; 2 also when the window
    /// cannot be made (the log says why) or when the application ends, the window is destroyed or a
    /// handler fails before the dialog has been ended. No exception comes out: it is shown in an
    /// alert, and the dialog is over.
    virtual int DoModal();
    virtual void OnOK();     ///< ends the dialog with 1
    virtual void OnCancel(); ///< ends the dialog with 2
    /// Loads the controls from the variables. FALSE without a view.
    virtual BOOL OnInitDialog();

    void DoDataExchange(CDataExchange* pDX) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /// Ends the modal loop; DoModal does the rest. When a dialog above this one is still open, as
    /// soon as that has ended. No data is exchanged.
    void EndDialog(int nResult);
    /// Calls DoDataExchange. FALSE without a view.
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);

    /// From dialog units to pixels, as the dialog's controls were placed: by the size of its font. Nothing
    /// without a view, that is before the dialog is shown.
    void MapDialogRect(RECT* rect) const;

    void SetHelpID(UINT) {}
    void OnPaint() {}

    // State. The order is part of the binary interface of hosts and their plug-ins.
    int templateId; ///< names the interface file
    int ended;      ///< 1 once the dialog was ended
    int result;     ///< what DoModal returns
    CWndWindowController* windowController;
    CWndViewController* viewController;
};
