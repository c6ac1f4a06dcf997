// TextDialog.h : asks for the letters of a text

#pragma once

#include "resource.h"

class CTextDialog : public CDialog {
public:
    enum { IDD = IDD_TEXT };

    explicit CTextDialog(CWnd* pParent = NULL);

    CString m_strText;
    int m_nHeight;

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* pDX) override;
    void OnOK() override;
    afx_msg void OnTextChange();
    DECLARE_MESSAGE_MAP()
};
