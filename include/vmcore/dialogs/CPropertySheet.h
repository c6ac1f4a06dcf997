// CPropertyPage and CPropertySheet: a dialog of several pages behind tabs, or a wizard.
//
// Each page is a dialog from its own interface file, DLG_<id>.ui; the sheet has the buttons. A page
// is given its window, and OnInitDialog, when it is first shown, and its variables are read then.
// They are written when the page is left, and by OK and Apply: for the pages that were shown.
//
//     class PortPage : public CPropertyPage {
//     public:
//         PortPage() : CPropertyPage(201, "Ports") {}
//         void DoDataExchange(CDataExchange* pDX) override { DDX_CBIndex(pDX, 1001, m_port); }
//         BOOL OnApply() override { usePort(m_port); return CPropertyPage::OnApply(); }
//         int m_port = 0;
//     };
//
//     CPropertySheet sheet("Settings", AfxGetMainWnd());
//     PortPage ports;
//     sheet.AddPage(&ports);
//     sheet.DoModal();
//
// A tab is titled by the page's caption, else by `windowTitle` of its file. The sheet is as large as
// its largest page with the tabs and buttons, and can be resized when a page has a layout. Return
// clicks OK and Escape Cancel, as in every dialog; Ctrl+Tab and Ctrl+Page Down go to the next page, with
// Shift and with Page Up to the one before. A control of a page with the tag 1 or 2 presses the
// sheet's OK or Cancel; `default` buttons of pages are not the sheet's.
//
// The sheet keeps plain pointers: pages must live while it is open, or leave it by being deleted. Any
// handler may end, destroy or delete the sheet or a page. Nothing is asked of the other pages from
// then on; DoModal returns what EndDialog was given, IDCANCEL without that. While a page is being
// asked, changes of the page and presses of buttons are refused.
//
// Main thread only.
#pragma once

#include <memory>

#include <vmcore/dialogs/CDialog.h>

class CPropertySheet;

namespace vm {
class Sheet;
}

/// Of a page's dwFlags; all other bits are kept and mean nothing.
enum : DWORD {
    PSP_USETITLE = 0x8, ///< the tab's title is pszTitle
    PSP_HASHELP = 0x20, ///< the Help button works while this page is shown
};
/// Of a sheet's dwFlags; all other bits are kept and mean nothing. They count when it opens.
enum : DWORD {
    PSH_PROPTITLE = 0x1, ///< the title is the caption and "Properties"
    PSH_WIZARD = 0x20,
    PSH_WIZARDHASFINISH = 0x10, ///< Finish beside Next, not in its place
    PSH_NOAPPLYNOW = 0x80,      ///< no Apply button
    PSH_HASHELP = 0x200,        ///< a Help button
};
/// PressButton.
enum : int {
    PSBTN_BACK = 0,
    PSBTN_NEXT = 1,
    PSBTN_FINISH = 2,
    PSBTN_OK = 3,
    PSBTN_APPLYNOW = 4,
    PSBTN_CANCEL = 5,
    PSBTN_HELP = 6,
};
/// SetWizardButtons.
enum : DWORD {
    PSWIZB_BACK = 0x1,
    PSWIZB_NEXT = 0x2,
    PSWIZB_FINISH = 0x4,
    PSWIZB_DISABLEDFINISH = 0x8,
};
/// The commands of the buttons beside IDOK, IDCANCEL and IDHELP; DoModal returns ID_WIZFINISH after Finish.
enum : int {
    ID_APPLY_NOW = 0x3021,
    ID_WIZBACK = 0x3023,
    ID_WIZNEXT = 0x3024,
    ID_WIZFINISH = 0x3025,
    ID_HELP = 0xE146, ///< the command that the Help button sends to the page
};
/// The message of QuerySiblings.
constexpr UINT PSM_QUERYSIBLINGS = WM_USER + 108;

struct tagPROPSHEETPAGE {
    DWORD dwSize;
    DWORD dwFlags;
    const char* pszTitle;
};
using PROPSHEETPAGE = tagPROPSHEETPAGE;

struct tagPROPSHEETHEADER {
    DWORD dwSize;
    DWORD dwFlags;
    const char* pszCaption; ///< the sheet's own copy: use SetTitle
    UINT nPages;            ///< not used: GetPageCount
    UINT nStartPage;
};
using PROPSHEETHEADER = tagPROPSHEETHEADER;

class VM_API CPropertyPage : public CDialog {
    DECLARE_DYNAMIC(CPropertyPage)

    CPropertyPage();
    explicit CPropertyPage(int nIDTemplate, const char* caption = nullptr);
    ~CPropertyPage() override; ///< leaves its sheet
    void Construct(int nIDTemplate, const char* caption = nullptr);

    // What happens to the page. The order is part of the binary interface.
    /// The page is about to be shown. FALSE refuses: the page before stays and is told that it is
    /// active again; a sheet that opens takes the next page that accepts.
    virtual BOOL OnSetActive();
    /// The page is about to be left, applied, or finished. FALSE keeps it. Moves the controls' values
    /// into the variables.
    virtual BOOL OnKillActive();
    /// OK or Apply, after OnKillActive of the page that is shown, for every page that was shown, in
    /// their order. FALSE keeps the sheet open and shows the page. Calls OnOK.
    virtual BOOL OnApply();
    /// Cancel, for every page that was shown. Calls OnCancel.
    virtual void OnReset();
    virtual BOOL OnQueryCancel(); ///< asked of the page that is shown; FALSE refuses Cancel
    /// Back and Next, before OnKillActive: 0 goes on, -1 stays, else the number of the interface file
    /// of the page to go to.
    virtual LRESULT OnWizardBack();
    virtual LRESULT OnWizardNext();
    virtual BOOL OnWizardFinish(); ///< after OnKillActive; FALSE stays

    void OnOK() override;     ///< nothing
    void OnCancel() override; ///< nothing
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /// Enables Apply while a page is changed. OK and Apply forget it.
    void SetModified(BOOL changed = TRUE);
    /// After a change that cannot be undone: OK says "Close", Cancel is disabled, and with it Escape
    /// and the title bar's close button.
    void CancelToClose();
    /// Sends PSM_QUERYSIBLINGS to the pages that were shown, in their order, until one answers other
    /// than 0. Returns that answer.
    LRESULT QuerySiblings(WPARAM wParam, LPARAM lParam);
    void EndDialog(int nEndID); ///< ends the sheet
    CPropertySheet* GetParentSheet() const { return m_sheet; }

    // State. The order is part of the binary interface.
    PROPSHEETPAGE m_psp;
    CString m_strCaption;
    CPropertySheet* m_sheet; ///< null outside of one
};

class VM_API CPropertySheet : public CWnd {
    DECLARE_DYNAMIC(CPropertySheet)

    CPropertySheet();
    explicit CPropertySheet(const char* caption, CWnd* parent = nullptr, UINT firstPage = 0);
    ~CPropertySheet() override;
    void Construct(const char* caption, CWnd* parent = nullptr, UINT firstPage = 0);

    // The order is part of the binary interface.
    /// Runs the sheet as CDialog::DoModal runs a dialog: IDOK, IDCANCEL, ID_WIZFINISH, or what
    /// EndDialog was given. Pages whose file cannot be loaded are reported in a message box that names
    /// it, as CDialog::Create does, and left out; -1 when no page can be loaded or shown.
    virtual int DoModal();
    /// WM_INITDIALOG: shows the first page. Overrides call this first.
    virtual BOOL OnInitDialog();

    using CWnd::Create;
    /// Embeds the sheet in the parent's view at its origin, without buttons: MoveWindow places it.
    /// It lives until the parent or DestroyWindow ends it; call ApplyChanges for what OK does.
    /// FALSE without a parent that has a view, or when no page can be loaded or shown.
    BOOL Create(CWnd* parent, DWORD style = WS_VISIBLE | WS_CHILD, DWORD exStyle = 0);
    /// OnKillActive and OnApply of the pages, as the Apply button. FALSE when a page refused, or the
    /// sheet is not open.
    BOOL ApplyChanges();

    BOOL DestroyWindow() override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override; ///< the buttons
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /// At the end, also while the sheet is open. Nothing for null and for a page of some sheet.
    void AddPage(CPropertyPage* page);
    /// Its window is destroyed. Without the page that is shown the next one is, without asking the
    /// one that left; without any page the sheet ends with IDCANCEL.
    void RemovePage(CPropertyPage* page);
    void RemovePage(int index);
    int GetPageCount() const;
    CPropertyPage* GetPage(int index) const;           ///< null out of range
    int GetPageIndex(const CPropertyPage* page) const; ///< -1 for a page of another sheet
    /// The page that is shown; before the sheet opens, the one that it will open with.
    CPropertyPage* GetActivePage() const;
    int GetActiveIndex() const; ///< -1 without pages
    /// FALSE when the page cannot be shown or a page refuses. Before the sheet opens: the first page.
    BOOL SetActivePage(int index);
    BOOL SetActivePage(CPropertyPage* page);

    void SetTitle(const char* text, UINT style = 0); ///< style: PSH_PROPTITLE or 0
    /// Ends DoModal; destroys an embedded sheet. Asks no page.
    void EndDialog(int nEndID);
    /// As a click; FALSE for a button that is not there or disabled.
    BOOL PressButton(int button);

    /// Back and Next, Finish and Cancel in place of the tabs, OK and Apply. Before DoModal. The title
    /// of a wizard without a caption is that of the page.
    void SetWizardMode() { m_psh.dwFlags |= PSH_WIZARD; }
    /// PSWIZB_ bits, usually in OnSetActive: what is enabled. Finish takes the place of Next.
    /// Without a call Back works from the second page on, and the last page has Finish, also when
    /// pages come and go. Pages that could not be loaded are stepped over.
    void SetWizardButtons(DWORD flags);
    /// Shows Finish with this text, and nothing to go back or on, until another page is asked to be
    /// shown; SetWizardButtons brings Back again.
    void SetFinishText(const char* text);

    // State. The order is part of the binary interface.
    PROPSHEETHEADER m_psh;
    int ended;  ///< 1 once the sheet was ended
    int result; ///< what DoModal returns
    CWndWindowController* windowController;

private:
    friend class CPropertyPage;
    CString m_caption;
    const std::shared_ptr<vm::Sheet> m_pages;
};
