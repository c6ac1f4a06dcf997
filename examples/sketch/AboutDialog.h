// AboutDialog.h : what the program is

#pragma once

#include "resource.h"

class CAboutDialog : public CDialog {
public:
    enum { IDD = IDD_ABOUTBOX };

    explicit CAboutDialog(CWnd* pParent = NULL) : CDialog(IDD, pParent) {}
};
