#include "FindBar.h"

#include "Report.h"
#include "resource.h"

BOOL FindBar::Open(CWnd* parent) {
    if (!Create(IDD_FIND, parent)) return FALSE;
    ShowWindow(SW_HIDE);
    return TRUE;
}

void FindBar::Begin() {
    ShowWindow(SW_SHOW);
    CWnd* const field = GetDlgItem(IDC_FIND_TEXT);
    if (field && field->view) field->SetFocus();
    Report("find bar shown");
}

void FindBar::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, IDC_FIND_TEXT, m_text);
}

int FindBar::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    if (message == static_cast<int>(WM_COMMAND)) {
        const int id = LOWORD(wParam);
        if (id == IDC_FIND_TEXT && HIWORD(wParam) == EN_CHANGE) Find(false);
        if (id == IDC_FIND_NEXT && HIWORD(wParam) == BN_CLICKED) Find(true);
    }
    if (message == static_cast<int>(WM_KEYDOWN)) { // of the text field, which leaves these alone
        if (wParam == '\r') OnOK();
        if (wParam == 0x1B) OnCancel();
    }
    return CDialog::MessageMap(message, wParam, lParam);
}

void FindBar::FindNext() {
    Find(true);
}

void FindBar::OnOK() {
    Find(true);
}

void FindBar::OnCancel() {
    ShowWindow(SW_HIDE);
    Report("find bar hidden");
    if (closed) closed();
}

void FindBar::Find(bool next) {
    UpdateData(TRUE);
    if (m_text.IsEmpty() || !find) return;
    const std::string wanted = static_cast<const char*>(m_text);
    Report("found %s: %s", wanted.c_str(), find(wanted, next) ? "yes" : "no");
}
