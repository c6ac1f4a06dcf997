// PageSheet.h : the size of the page and its grid, on two property pages

#pragma once

#include "SketchFile.h"
#include "resource.h"

class CSizePage : public CPropertyPage {
public:
    enum { IDD = IDD_PAGE_SIZE };

    CSizePage() : CPropertyPage(IDD), m_nWidth(0), m_nHeight(0), m_nTurned(0) {}

    int m_nWidth;
    int m_nHeight;

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnKillActive() override;
    afx_msg void OnPaper();
    afx_msg void OnTurn();
    afx_msg void OnSizeEdited();
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    DECLARE_MESSAGE_MAP()

private:
    void ShowSize();
    void ShowPaper(int nWidth, int nHeight);

    CSpinButtonCtrl m_widthSpin;
    CSpinButtonCtrl m_heightSpin;
    int m_nTurned; // 0: upright
};

class CGridPage : public CPropertyPage {
public:
    enum { IDD = IDD_PAGE_GRID };

    CGridPage() : CPropertyPage(IDD), m_bShow(0), m_bSnap(0), m_nSpacing(MIN_GRID), m_nDots(0) {}

    int m_bShow;
    int m_bSnap;
    int m_nSpacing;
    int m_nDots; // 0: lines

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnKillActive() override;
    afx_msg void OnShow();
    afx_msg void OnSpacingEdited();
    afx_msg void OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    DECLARE_MESSAGE_MAP()

private:
    CSpinButtonCtrl m_spin;
    CSliderCtrl m_slider;
};

class CPageSheet : public CPropertySheet {
public:
    explicit CPageSheet(CWnd* pParent);

    void SetSetup(const CPageSetup& setup);
    CPageSetup GetSetup() const;

private:
    CSizePage m_size;
    CGridPage m_grid;
};
