// TextDialog.cpp : asks for the letters of a text
//

#include "stdafx.h"

#include "TextDialog.h"

#include "Shape.h"

BEGIN_MESSAGE_MAP(CTextDialog, CDialog)
    ON_EN_CHANGE(IDC_TEXT_EDIT, OnTextChange)
END_MESSAGE_MAP()

CTextDialog::CTextDialog(CWnd* pParent) : CDialog(IDD, pParent), m_nHeight(24) {}

BOOL CTextDialog::OnInitDialog()
{
    static const LPCSTR heights[] = {"12", "16", "24", "36", "48", "72"};
    for (LPCSTR lpszHeight : heights)
        SendDlgItemMessage(IDC_TEXT_HEIGHT, CB_ADDSTRING, 0, (LPARAM)lpszHeight);
    CDialog::OnInitDialog();
    OnTextChange();
    GetDlgItem(IDC_TEXT_EDIT)->SetFocus();
    return FALSE;
}

void CTextDialog::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
    DDX_Text(pDX, IDC_TEXT_EDIT, m_strText);
    DDV_MaxChars(pDX, m_strText, MAX_TEXT_LENGTH);
    DDX_Text(pDX, IDC_TEXT_HEIGHT, m_nHeight);
    DDV_MinMaxInt(pDX, m_nHeight, MIN_TEXT_HEIGHT, MAX_TEXT_HEIGHT);
}

void CTextDialog::OnOK()
{
    if (!UpdateData())
        return;
    if (m_nHeight < MIN_TEXT_HEIGHT || m_nHeight > MAX_TEXT_HEIGHT) {
        MessageBox("A text is between 8 and 200 pixels high.", "Sketch",
                   MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    CDialog::OnOK();
}

void CTextDialog::OnTextChange()
{
    CString text;
    GetDlgItemText(IDC_TEXT_EDIT, text);
    GetDlgItem(IDOK)->EnableWindow(!text.IsEmpty() && text.GetLength() <= MAX_TEXT_LENGTH);
}
