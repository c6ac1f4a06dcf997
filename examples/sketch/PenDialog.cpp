// PenDialog.cpp : the colour and width of the pen
//

#include "stdafx.h"

#include "PenDialog.h"

enum { FILL_NONE, FILL_TINT, FILL_COLOR };

static const struct {
    LPCSTR lpszName;
    int nWidth;
    COLORREF crPen;
} presets[] = {{"Pencil", 1, RGB(70, 70, 70)},
               {"Ballpoint", 2, RGB(28, 60, 150)},
               {"Felt pen", 5, RGB(186, 44, 44)},
               {"Marker", 14, RGB(242, 180, 65)},
               {"Broad brush", 28, RGB(38, 128, 82)}};
static const int PRESET_COUNT = sizeof presets / sizeof presets[0];

BEGIN_MESSAGE_MAP(CPenDialog, CDialog)
    //{{AFX_MSG_MAP(CPenDialog)
    ON_CBN_SELCHANGE(IDC_PEN_PRESET, OnPreset)
    ON_EN_CHANGE(IDC_PEN_WIDTH, OnWidthEdited)
    ON_BN_CLICKED(IDC_PEN_COLOR, OnPenColor)
    ON_BN_CLICKED(IDC_FILL_CHOOSE, OnFillColor)
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
    //}}AFX_MSG_MAP
    ON_CONTROL_RANGE(BN_CLICKED, IDC_FILL_NONE, IDC_FILL_COLOR, OnFill)
END_MESSAGE_MAP()

CPenDialog::CPenDialog(CWnd* pParent)
    : CDialog(IDD, pParent), m_nWidth(1), m_nFill(FILL_NONE), m_bShowing(FALSE)
{
}

// A lighter colour, as of thin paint
static COLORREF Tint(COLORREF color)
{
    return RGB(255 - (255 - GetRValue(color)) / 5, 255 - (255 - GetGValue(color)) / 5,
               255 - (255 - GetBValue(color)) / 5);
}

BOOL CPenDialog::OnInitDialog()
{
    m_nWidth = m_style.m_nWidth;
    m_nFill = !m_style.m_bFilled                          ? FILL_NONE
              : m_style.m_crFill == Tint(m_style.m_crPen) ? FILL_TINT
                                                          : FILL_COLOR;
    for (const auto& preset : presets)
        SendDlgItemMessage(IDC_PEN_PRESET, CB_ADDSTRING, 0, (LPARAM)preset.lpszName);
    SendDlgItemMessage(IDC_PEN_PRESET, CB_ADDSTRING, 0, (LPARAM) "Custom");
    CDialog::OnInitDialog();
    m_spin.SetRange(1, MAX_PEN_WIDTH);
    m_slider.SetRange(1, MAX_PEN_WIDTH);
    m_slider.SetTicFreq(3);
    SetWidth(m_nWidth);
    return TRUE;
}

void CPenDialog::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_PEN_COLOR, m_penColor);
    DDX_Control(pDX, IDC_FILL_CHOOSE, m_fillColor);
    DDX_Control(pDX, IDC_PEN_SAMPLE, m_sample);
    DDX_Control(pDX, IDC_PEN_WIDTH_SPIN, m_spin);
    DDX_Control(pDX, IDC_PEN_WIDTH_SLIDER, m_slider);
    DDX_Text(pDX, IDC_PEN_WIDTH, m_nWidth);
    DDV_MinMaxInt(pDX, m_nWidth, 1, MAX_PEN_WIDTH);
    DDX_Radio(pDX, IDC_FILL_NONE, m_nFill);
}

static BOOL IsWidth(int nWidth)
{
    return nWidth >= 1 && nWidth <= MAX_PEN_WIDTH;
}

void CPenDialog::OnOK()
{
    if (!UpdateData())
        return;
    if (!IsWidth(m_nWidth)) {
        MessageBox("A pen is between 1 and 40 pixels wide.", "Sketch", MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    m_style.m_nWidth = m_nWidth;
    CDialog::OnOK();
}

// The number, the arrows and the slider show the same
void CPenDialog::SetWidth(int nWidth)
{
    if (m_bShowing || !IsWidth(nWidth))
        return;
    m_bShowing = TRUE;
    m_style.m_nWidth = nWidth;
    if ((int)GetDlgItemInt(IDC_PEN_WIDTH) != nWidth)
        SetDlgItemInt(IDC_PEN_WIDTH, nWidth);
    m_spin.SetPos(nWidth);
    m_slider.SetPos(nWidth);
    m_bShowing = FALSE;
    ShowStyle();
}

static void Paint(CWnd* pWnd, CBitmap& bitmap, int cx, int cy, COLORREF ground,
                  const CShapeStyle* pStyle)
{
    CDC* pDC = pWnd->GetDC();
    bitmap.DeleteObject();
    bitmap.CreateCompatibleBitmap(pDC, cx, cy);
    CDC memory;
    memory.CreateCompatibleDC(pDC);
    pWnd->ReleaseDC(pDC);
    CBitmap* pOldBitmap = memory.SelectObject(&bitmap);
    CBrush brush(ground);
    memory.FillRect(CRect(0, 0, cx, cy), &brush);
    if (pStyle) {
        CShape shape;
        shape.m_kind = SHAPE_ELLIPSE;
        shape.m_style = *pStyle;
        shape.m_points.assign({CPoint(cx / 8, cy / 8), CPoint(cx * 7 / 8, cy * 7 / 8)});
        shape.Draw(&memory, CPoint(0, 0));
    }
    memory.SelectObject(pOldBitmap);
}

void CPenDialog::ShowStyle()
{
    int nPreset = 0;
    while (nPreset < PRESET_COUNT && (presets[nPreset].nWidth != m_style.m_nWidth ||
                                      presets[nPreset].crPen != m_style.m_crPen))
        ++nPreset;
    SendDlgItemMessage(IDC_PEN_PRESET, CB_SETCURSEL, nPreset);
    Paint(this, m_penPicture, 40, 14, m_style.m_crPen, NULL);
    m_penColor.SetBitmap(m_penPicture);
    Paint(this, m_fillPicture, 40, 14, m_style.m_crFill, NULL);
    m_fillColor.SetBitmap(m_fillPicture);
    m_fillColor.EnableWindow(m_nFill == FILL_COLOR);
    CRect sample;
    m_sample.GetClientRect(&sample);
    Paint(this, m_samplePicture, sample.Width(), sample.Height(), RGB(255, 255, 255), &m_style);
    m_sample.SetBitmap(m_samplePicture);
}

void CPenDialog::OnPreset()
{
    const int nIndex = (int)SendDlgItemMessage(IDC_PEN_PRESET, CB_GETCURSEL);
    if (nIndex < 0 || nIndex >= PRESET_COUNT)
        return;
    m_style.m_crPen = presets[nIndex].crPen;
    SetWidth(presets[nIndex].nWidth);
    OnFill(IDC_FILL_NONE + m_nFill);
}

void CPenDialog::OnWidthEdited()
{
    const int nWidth = (int)GetDlgItemInt(IDC_PEN_WIDTH);
    if (IsWidth(nWidth))
        return SetWidth(nWidth);
    // What was typed stays, and the slider shows the nearest
    m_slider.SetPos(nWidth < 1 ? 1 : MAX_PEN_WIDTH);
}

void CPenDialog::OnHScroll(UINT, UINT, CScrollBar*)
{
    SetWidth(m_slider.GetPos());
}

void CPenDialog::OnVScroll(UINT, UINT, CScrollBar*)
{
    SetWidth((int)GetDlgItemInt(IDC_PEN_WIDTH));
}

void CPenDialog::OnPenColor()
{
    CColorDialog dialog(m_style.m_crPen, CC_FULLOPEN, this);
    if (dialog.DoModal() != IDOK)
        return;
    m_style.m_crPen = dialog.GetColor();
    OnFill(IDC_FILL_NONE + m_nFill);
}

void CPenDialog::OnFillColor()
{
    CColorDialog dialog(m_style.m_crFill, CC_FULLOPEN, this);
    if (dialog.DoModal() != IDOK)
        return;
    m_style.m_crFill = dialog.GetColor();
    ShowStyle();
}

void CPenDialog::OnFill(UINT nID)
{
    m_nFill = (int)nID - IDC_FILL_NONE;
    m_style.m_bFilled = m_nFill != FILL_NONE;
    if (m_nFill == FILL_TINT)
        m_style.m_crFill = Tint(m_style.m_crPen);
    ShowStyle();
}
