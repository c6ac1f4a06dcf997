// PageSheet.cpp : the size of the page and its grid
//

#include "stdafx.h"

#include "PageSheet.h"

#include <algorithm>

// Upright, a unit is a point
static const struct {
    LPCSTR lpszName;
    int nWidth;
    int nHeight;
} papers[] = {{"A4", 595, 842},          {"A5", 420, 595},     {"Letter", 612, 792},
              {"Screen card", 480, 720}, {"Square", 600, 600}, {"Custom", 0, 0}};
static const int CUSTOM = 5;

static BOOL IsBetween(int low, int number, int high)
{
    return low <= number && number <= high;
}

// CSizePage

BEGIN_MESSAGE_MAP(CSizePage, CPropertyPage)
    ON_CBN_SELCHANGE(IDC_PAPER, OnPaper)
    ON_BN_CLICKED(IDC_PORTRAIT, OnTurn)
    ON_BN_CLICKED(IDC_LANDSCAPE, OnTurn)
    ON_EN_CHANGE(IDC_PAGE_WIDTH, OnSizeEdited)
    ON_EN_CHANGE(IDC_PAGE_HEIGHT, OnSizeEdited)
    ON_WM_VSCROLL()
END_MESSAGE_MAP()

BOOL CSizePage::OnInitDialog()
{
    for (const auto& paper : papers)
        SendDlgItemMessage(IDC_PAPER, CB_ADDSTRING, 0, (LPARAM)paper.lpszName);
    m_nTurned = m_nWidth > m_nHeight;
    CPropertyPage::OnInitDialog();
    m_widthSpin.SetRange32(MIN_PAGE, MAX_PAGE);
    m_heightSpin.SetRange32(MIN_PAGE, MAX_PAGE);
    ShowSize();
    return TRUE;
}

void CSizePage::DoDataExchange(CDataExchange* pDX)
{
    CPropertyPage::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_PAGE_WIDTH_SPIN, m_widthSpin);
    DDX_Control(pDX, IDC_PAGE_HEIGHT_SPIN, m_heightSpin);
    DDX_Text(pDX, IDC_PAGE_WIDTH, m_nWidth);
    DDV_MinMaxInt(pDX, m_nWidth, MIN_PAGE, MAX_PAGE);
    DDX_Text(pDX, IDC_PAGE_HEIGHT, m_nHeight);
    DDV_MinMaxInt(pDX, m_nHeight, MIN_PAGE, MAX_PAGE);
    DDX_Radio(pDX, IDC_PORTRAIT, m_nTurned);
}

BOOL CSizePage::OnKillActive()
{
    if (!CPropertyPage::OnKillActive())
        return FALSE;
    if (IsBetween(MIN_PAGE, m_nWidth, MAX_PAGE) && IsBetween(MIN_PAGE, m_nHeight, MAX_PAGE))
        return TRUE;
    MessageBox("A page is between 50 and 5000 points wide and high.", "Sketch",
               MB_OK | MB_ICONEXCLAMATION);
    return FALSE;
}

void CSizePage::OnPaper()
{
    const int nPaper = (int)SendDlgItemMessage(IDC_PAPER, CB_GETCURSEL);
    if (nPaper < 0 || nPaper == CUSTOM)
        return;
    const BOOL bTurned = IsDlgButtonChecked(IDC_LANDSCAPE) != 0;
    m_nWidth = bTurned ? papers[nPaper].nHeight : papers[nPaper].nWidth;
    m_nHeight = bTurned ? papers[nPaper].nWidth : papers[nPaper].nHeight;
    ShowSize();
}

void CSizePage::OnTurn()
{
    m_nWidth = (int)GetDlgItemInt(IDC_PAGE_WIDTH);
    m_nHeight = (int)GetDlgItemInt(IDC_PAGE_HEIGHT);
    const BOOL bTurned = IsDlgButtonChecked(IDC_LANDSCAPE) != 0;
    if (bTurned != (m_nWidth > m_nHeight))
        std::swap(m_nWidth, m_nHeight);
    ShowSize();
}

void CSizePage::ShowSize()
{
    m_widthSpin.SetPos32(m_nWidth);
    m_heightSpin.SetPos32(m_nHeight);
    SetDlgItemInt(IDC_PAGE_WIDTH, m_nWidth);
    SetDlgItemInt(IDC_PAGE_HEIGHT, m_nHeight);
    ShowPaper(m_nWidth, m_nHeight);
}

// The paper of this size, either way round
void CSizePage::ShowPaper(int nWidth, int nHeight)
{
    int nPaper = 0;
    while (nPaper < CUSTOM && (papers[nPaper].nWidth != std::min(nWidth, nHeight) ||
                               papers[nPaper].nHeight != std::max(nWidth, nHeight)))
        ++nPaper;
    SendDlgItemMessage(IDC_PAPER, CB_SETCURSEL, nPaper);
}

void CSizePage::OnSizeEdited()
{
    ShowPaper((int)GetDlgItemInt(IDC_PAGE_WIDTH), (int)GetDlgItemInt(IDC_PAGE_HEIGHT));
}

void CSizePage::OnVScroll(UINT, UINT, CScrollBar*)
{
    OnSizeEdited();
}

// CGridPage

BEGIN_MESSAGE_MAP(CGridPage, CPropertyPage)
    ON_BN_CLICKED(IDC_GRID_SHOW, OnShow)
    ON_EN_CHANGE(IDC_GRID_SPACING, OnSpacingEdited)
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
END_MESSAGE_MAP()

BOOL CGridPage::OnInitDialog()
{
    CPropertyPage::OnInitDialog();
    m_spin.SetRange(MIN_GRID, MAX_GRID);
    m_slider.SetRange(MIN_GRID, MAX_GRID);
    m_slider.SetTicFreq(8);
    m_spin.SetPos(m_nSpacing);
    m_slider.SetPos(m_nSpacing);
    OnShow();
    return TRUE;
}

void CGridPage::DoDataExchange(CDataExchange* pDX)
{
    CPropertyPage::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_GRID_SPACING_SPIN, m_spin);
    DDX_Control(pDX, IDC_GRID_SLIDER, m_slider);
    DDX_Check(pDX, IDC_GRID_SHOW, m_bShow);
    DDX_Check(pDX, IDC_GRID_SNAP, m_bSnap);
    DDX_Text(pDX, IDC_GRID_SPACING, m_nSpacing);
    DDV_MinMaxInt(pDX, m_nSpacing, MIN_GRID, MAX_GRID);
    DDX_Radio(pDX, IDC_GRID_LINES, m_nDots);
}

BOOL CGridPage::OnKillActive()
{
    if (!CPropertyPage::OnKillActive())
        return FALSE;
    if (IsBetween(MIN_GRID, m_nSpacing, MAX_GRID))
        return TRUE;
    MessageBox("The lines of the grid are between 4 and 100 points apart.", "Sketch",
               MB_OK | MB_ICONEXCLAMATION);
    return FALSE;
}

void CGridPage::OnShow()
{
    const BOOL bShow = IsDlgButtonChecked(IDC_GRID_SHOW) != 0;
    GetDlgItem(IDC_GRID_LINES)->EnableWindow(bShow);
    GetDlgItem(IDC_GRID_DOTS)->EnableWindow(bShow);
}

void CGridPage::OnSpacingEdited()
{
    const int nSpacing = (int)GetDlgItemInt(IDC_GRID_SPACING);
    if (IsBetween(MIN_GRID, nSpacing, MAX_GRID) && nSpacing != m_slider.GetPos())
        m_slider.SetPos(nSpacing);
}

void CGridPage::OnHScroll(UINT, UINT, CScrollBar*)
{
    if (m_slider.GetPos() == (int)GetDlgItemInt(IDC_GRID_SPACING))
        return;
    m_spin.SetPos(m_slider.GetPos());
    SetDlgItemInt(IDC_GRID_SPACING, m_slider.GetPos());
}

void CGridPage::OnVScroll(UINT, UINT, CScrollBar*)
{
    OnSpacingEdited();
}

// CPageSheet

CPageSheet::CPageSheet(CWnd* pParent) : CPropertySheet("Page Setup", pParent)
{
    m_psh.dwFlags |= PSH_NOAPPLYNOW;
    AddPage(&m_size);
    AddPage(&m_grid);
}

void CPageSheet::SetSetup(const CPageSetup& setup)
{
    m_size.m_nWidth = setup.m_nWidth;
    m_size.m_nHeight = setup.m_nHeight;
    m_grid.m_bShow = setup.m_bShowGrid;
    m_grid.m_bSnap = setup.m_bSnap;
    m_grid.m_nDots = setup.m_bDots;
    m_grid.m_nSpacing = setup.m_nGrid;
}

CPageSetup CPageSheet::GetSetup() const
{
    CPageSetup setup;
    setup.m_nWidth = m_size.m_nWidth;
    setup.m_nHeight = m_size.m_nHeight;
    setup.m_bShowGrid = m_grid.m_bShow != 0;
    setup.m_bSnap = m_grid.m_bSnap != 0;
    setup.m_bDots = m_grid.m_nDots == 1;
    setup.m_nGrid = m_grid.m_nSpacing;
    return setup;
}
