// The page with every control. All of them come from the interface file; the line at the bottom
// tells what they report.
#pragma once

#include <string>

#include <afxcmn.h>
#include <afxwin.h>

#include "PatchTable.h"

class ControlsPage : public CDialog {
public:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* pDX) override;
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

private:
    void FillTree();
    void OnControl(int id, int code);
    void OnNotify(const NMHDR& header);
    void OnScroll(HWND bar, int position);
    void ShowBox();
    void Say(const std::string& line);

    PatchTable m_patches;
    CTreeCtrl m_tree;
    CEdit m_voice;
    CSpinButtonCtrl m_arrows;
    CTabCtrl m_pages;
    CSliderCtrl m_cutoff;
    CProgressCtrl m_level;
    CComboBox m_boxButtons;
    CComboBox m_boxIcon;
    CListBox m_channels;
    CToolTipCtrl m_tips;
};
