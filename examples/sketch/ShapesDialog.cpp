// ShapesDialog.cpp : the shapes of the drawing in a list
//

#include "stdafx.h"

#include "ShapesDialog.h"

#include <stdio.h>

static const int COLUMN_COUNT = 4;
static const struct {
    LPCSTR lpszTitle;
    int nPercent; // of the list's width beside its scroll bar
} columns[COLUMN_COUNT] = {{"Shape", 27}, {"Place", 22}, {"Size", 22}, {"Pen", 28}};

// CShapeList

BEGIN_MESSAGE_MAP(CShapeList, CListCtrl)
#ifndef _WIN32
    ON_MESSAGE(WM_GETDISPLAYTEXT, OnGetDisplayText)
#endif
END_MESSAGE_MAP()

void CShapeList::AddColumns()
{
    CRect client;
    GetClientRect(&client);
    const int cx = client.Width() - GetSystemMetrics(SM_CXVSCROLL);
    for (int i = 0; i < COLUMN_COUNT; ++i)
        InsertColumn(i, columns[i].lpszTitle, LVCFMT_LEFT, cx * columns[i].nPercent / 100, i);
}

void CShapeList::Fill()
{
    DeleteAllItems();
    for (int nShape = m_pDoc->GetCount() - 1; nShape >= 0; --nShape) {
        const int nRow = InsertItem(GetItemCount(), TextOf(nShape, 0).c_str());
        SetItemData(nRow, nShape);
#ifdef _WIN32
        for (int i = 1; i < COLUMN_COUNT; ++i)
            SetItemText(nRow, i, TextOf(nShape, i).c_str());
#endif
    }
}

#ifndef _WIN32
// A list asks for the texts of its cells
LRESULT CShapeList::OnGetDisplayText(WPARAM, LPARAM lParam)
{
    LV_DISPTEXT* pCell = reinterpret_cast<LV_DISPTEXT*>(lParam);
    const std::string text = TextOf((int)pCell->itemData, pCell->column);
    snprintf(pCell->text, sizeof pCell->text, "%s", text.c_str());
    return 1;
}
#endif

std::string CShapeList::TextOf(int nShape, int nColumn) const
{
    if (nShape >= m_pDoc->GetCount())
        return "";
    const CShape& shape = m_pDoc->GetShape(nShape);
    const CRect bounds = shape.GetBounds();
    const CShapeStyle& style = shape.m_style;
    char text[100] = "";
    switch (nColumn) {
    case 0:
        return CShape::KindName(shape.m_kind);
    case 1:
        snprintf(text, sizeof text, "%d, %d", (int)bounds.left, (int)bounds.top);
        break;
    case 2:
        snprintf(text, sizeof text, "%d x %d", bounds.Width(), bounds.Height());
        break;
    case 3:
        snprintf(text, sizeof text, "%d, #%02X%02X%02X", style.m_nWidth, GetRValue(style.m_crPen),
                 GetGValue(style.m_crPen), GetBValue(style.m_crPen));
        break;
    }
    return text;
}

// CShapesDialog

BEGIN_MESSAGE_MAP(CShapesDialog, CDialog)
    ON_NOTIFY(LVN_ITEMCHANGED, IDC_SHAPE_LIST, OnItemChanged)
    ON_BN_CLICKED(IDC_SHAPE_FRONT, OnFront)
    ON_BN_CLICKED(IDC_SHAPE_BACK, OnBack)
    ON_BN_CLICKED(IDC_SHAPE_DELETE, OnDelete)
END_MESSAGE_MAP()

CShapesDialog::CShapesDialog(CSketchDoc* pDoc, CSketchView* pView, CWnd* pParent)
    : CDialog(IDD, pParent), m_pDoc(pDoc), m_pView(pView), m_list(pDoc), m_bFilling(FALSE)
{
}

BOOL CShapesDialog::OnInitDialog()
{
    CDialog::OnInitDialog();
    m_list.AddColumns();
    m_pView->SetTool(ID_TOOL_SELECT);
    if (m_pView->GetSelection() < 0)
        m_pView->Select(m_pDoc->GetCount() - 1);
    ShowShapes();
    m_list.SetFocus();
    return FALSE;
}

void CShapesDialog::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_SHAPE_LIST, m_list);
}

int CShapesDialog::SelectedShape() const
{
    const int nRow = m_list.GetNextItem(-1, LVNI_SELECTED);
    return nRow < 0 ? -1 : (int)m_list.GetItemData(nRow);
}

void CShapesDialog::ShowShapes()
{
    m_bFilling = TRUE;
    m_list.Fill();
    const int nRow = m_pDoc->GetCount() - 1 - m_pView->GetSelection();
    if (m_pView->GetSelection() >= 0) {
        m_list.SetItemState(nRow, LVIS_SELECTED, LVIS_SELECTED);
        m_list.EnsureVisible(nRow, FALSE);
    }
    m_bFilling = FALSE;
    ShowSelection();
}

void CShapesDialog::ShowSelection()
{
    const int nShape = SelectedShape();
    GetDlgItem(IDC_SHAPE_FRONT)->EnableWindow(nShape >= 0 && nShape < m_pDoc->GetCount() - 1);
    GetDlgItem(IDC_SHAPE_BACK)->EnableWindow(nShape > 0);
    GetDlgItem(IDC_SHAPE_DELETE)->EnableWindow(nShape >= 0);
    char text[60];
    snprintf(text, sizeof text, "%d shapes, the topmost first", m_pDoc->GetCount());
    SetDlgItemText(IDC_SHAPE_COUNT, m_pDoc->GetCount() == 1 ? "1 shape" : text);
}

void CShapesDialog::OnItemChanged(NMHDR*, LRESULT* pResult)
{
    *pResult = 0;
    if (m_bFilling)
        return;
    m_pView->Select(SelectedShape());
    ShowSelection();
}

void CShapesDialog::OnFront()
{
    m_pView->RaiseSelection(TRUE);
    ShowShapes();
}

void CShapesDialog::OnBack()
{
    m_pView->RaiseSelection(FALSE);
    ShowShapes();
}

void CShapesDialog::OnDelete()
{
    m_pView->DeleteSelection();
    ShowShapes();
}
