#include <vmcore/dialogs/CPropertySheet.h>

#include "dialogs/Sheet.h"
#include "wnd/messageTrace.h"

CPropertyPage::CPropertyPage() : CPropertyPage(0) {}

CPropertyPage::CPropertyPage(int nIDTemplate, const char* caption)
    : CDialog(nIDTemplate, nullptr), m_psp{sizeof(PROPSHEETPAGE), 0, nullptr}, m_sheet(nullptr) {
    if (caption) m_strCaption = caption;
}

CPropertyPage::~CPropertyPage() {
    if (m_sheet) m_sheet->m_pages->Forget(*this);
}

void CPropertyPage::Construct(int nIDTemplate, const char* caption) {
    templateId = nIDTemplate;
    m_strCaption = caption ? caption : "";
}

BOOL CPropertyPage::OnSetActive() {
    return TRUE;
}
BOOL CPropertyPage::OnKillActive() {
    return UpdateData(TRUE);
}
BOOL CPropertyPage::OnApply() {
    OnOK();
    return TRUE;
}
void CPropertyPage::OnReset() {
    OnCancel();
}
BOOL CPropertyPage::OnQueryCancel() {
    return TRUE;
}
LRESULT CPropertyPage::OnWizardBack() {
    return 0;
}
LRESULT CPropertyPage::OnWizardNext() {
    return 0;
}
BOOL CPropertyPage::OnWizardFinish() {
    return TRUE;
}
void CPropertyPage::OnOK() {}
void CPropertyPage::OnCancel() {}

void CPropertyPage::SetModified(BOOL changed) {
    if (m_sheet) m_sheet->m_pages->SetModified(*this, changed != 0);
}

void CPropertyPage::CancelToClose() {
    if (m_sheet) m_sheet->m_pages->CancelToClose();
}

LRESULT CPropertyPage::QuerySiblings(WPARAM wParam, LPARAM lParam) {
    return m_sheet ? m_sheet->m_pages->AskSiblings(wParam, lParam) : 0;
}

void CPropertyPage::EndDialog(int nEndID) {
    if (m_sheet) m_sheet->EndDialog(nEndID);
}

// What the page's own OK and Cancel do is the sheet's matter.
LRESULT CPropertyPage::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const WORD command = LOWORD(wParam);
    if (message != WM_COMMAND || (command != IDOK && command != IDCANCEL))
        return CDialog::WindowProc(message, wParam, lParam);
    return vm::Traced(*this, message, wParam, lParam, [&]() -> LRESULT {
        if (m_sheet) m_sheet->PressButton(command == IDOK ? PSBTN_OK : PSBTN_CANCEL);
        return 1;
    });
}

IMPLEMENT_DYNAMIC(CPropertyPage, CDialog)
