// MainFrmCommands.cpp : the window: commands that act on the drawing, and their states
//

#include "stdafx.h"

#include "MainFrm.h"
#include "PageSheet.h"
#include "PenDialog.h"
#include "ShapesDialog.h"
#include "Sketch.h"
#include "resource.h"

void CMainFrame::OnFilePageSetup()
{
    CPageSheet sheet(this);
    sheet.SetSetup(m_doc.GetPage());
    if (sheet.DoModal() != IDOK)
        return;
    m_doc.SetPage(sheet.GetSetup());
    m_view.Changed();
}

void CMainFrame::OnFilePrint()
{
    const std::string name = (LPCSTR)m_doc.GetTitle();
    m_view.PrintPicture(name.empty() ? "Sketch" : name.substr(0, name.rfind('.')).c_str());
}

void CMainFrame::OnEditUndo()
{
    m_doc.Undo();
    m_view.Changed();
}

void CMainFrame::OnEditRedo()
{
    m_doc.Redo();
    m_view.Changed();
}

void CMainFrame::OnEditCopy()
{
    m_view.CopyPicture();
}

void CMainFrame::OnEditClear()
{
    if (m_view.GetSelection() >= 0)
        m_view.DeleteSelection();
}

void CMainFrame::OnEditDuplicate()
{
    if (m_view.GetSelection() >= 0)
        m_view.DuplicateSelection();
}

void CMainFrame::OnEditStack(UINT nID)
{
    if (m_view.GetSelection() >= 0)
        m_view.RaiseSelection(nID == ID_EDIT_FRONT);
}

void CMainFrame::OnEditDeselect()
{
    m_view.CancelTracking();
}

void CMainFrame::OnEditShapes()
{
    CShapesDialog dialog(&m_doc, &m_view, this);
    dialog.DoModal();
}

void CMainFrame::OnNudge(UINT nID)
{
    if (m_view.GetSelection() < 0)
        return;
    const int step = m_doc.GetPage().m_bSnap ? m_doc.GetPage().m_nGrid : 1;
    m_view.MoveSelection(nID == ID_NUDGE_LEFT    ? -step
                         : nID == ID_NUDGE_RIGHT ? step
                                                 : 0,
                         nID == ID_NUDGE_UP     ? -step
                         : nID == ID_NUDGE_DOWN ? step
                                                : 0);
}

void CMainFrame::OnTool(UINT nID)
{
    m_view.SetTool((int)nID);
}

void CMainFrame::OnColor(UINT nID)
{
    CShapeStyle style = m_view.GetStyle();
    style.m_crPen = CToolRow::ColorAt((int)nID - ID_COLOR_FIRST);
    m_view.SetStyle(style);
}

void CMainFrame::OnFormatPen()
{
    CPenDialog dialog(this);
    dialog.m_style = m_view.GetStyle();
    if (dialog.DoModal() == IDOK)
        m_view.SetStyle(dialog.m_style);
}

void CMainFrame::OnFormatWidth(UINT nID)
{
    CShapeStyle style = m_view.GetStyle();
    style.m_nWidth += nID == ID_FORMAT_THICKER ? 1 : -1;
    if (style.m_nWidth >= 1 && style.m_nWidth <= MAX_PEN_WIDTH)
        m_view.SetStyle(style);
}

void CMainFrame::OnView(UINT nID)
{
    CPageSetup page = m_doc.GetPage();
    BOOL& bFlag = nID == ID_VIEW_GRID ? page.m_bShowGrid : page.m_bSnap;
    bFlag = !bFlag;
    m_doc.SetPage(page);
    m_view.Changed();
}

// States

void CMainFrame::OnUpdateSave(CCmdUI* pCmdUI)
{
    pCmdUI->Enable(m_doc.IsModified());
}

void CMainFrame::OnUpdateRecent(CCmdUI* pCmdUI)
{
    const int nIndex = (int)pCmdUI->m_nID - ID_FILE_MRU_FILE1;
    if (nIndex < theApp.m_settings.GetRecentCount()) {
        const std::string path = theApp.m_settings.GetRecent(nIndex);
        const std::string text = "&" + std::to_string(nIndex + 1) + " " + path;
        pCmdUI->SetText(text.c_str());
        pCmdUI->Enable(TRUE);
    } else {
        char text[100];
        AfxLoadString(IDS_NO_RECENT, text, sizeof text);
        pCmdUI->SetText(text);
        pCmdUI->Enable(FALSE);
    }
}

void CMainFrame::OnUpdateUndo(CCmdUI* pCmdUI)
{
    pCmdUI->Enable(m_doc.CanUndo());
}

void CMainFrame::OnUpdateRedo(CCmdUI* pCmdUI)
{
    pCmdUI->Enable(m_doc.CanRedo());
}

void CMainFrame::OnUpdateSelected(CCmdUI* pCmdUI)
{
    pCmdUI->Enable(m_view.GetSelection() >= 0);
}

void CMainFrame::OnUpdateHasShapes(CCmdUI* pCmdUI)
{
    pCmdUI->Enable(m_doc.GetCount() > 0);
}

void CMainFrame::OnUpdateTool(CCmdUI* pCmdUI)
{
    pCmdUI->SetCheck((int)pCmdUI->m_nID == m_view.GetTool());
}

void CMainFrame::OnUpdateColor(CCmdUI* pCmdUI)
{
    const COLORREF color = CToolRow::ColorAt((int)pCmdUI->m_nID - ID_COLOR_FIRST);
    pCmdUI->SetCheck(color == m_view.GetStyle().m_crPen);
}

void CMainFrame::OnUpdateView(CCmdUI* pCmdUI)
{
    const CPageSetup& page = m_doc.GetPage();
    pCmdUI->SetCheck(pCmdUI->m_nID == ID_VIEW_GRID ? page.m_bShowGrid : page.m_bSnap);
}

void CMainFrame::UpdateTools()
{
    m_tools.SetState(ID_FILE_SAVE, m_doc.IsModified(), FALSE);
    m_tools.SetState(ID_EDIT_UNDO, m_doc.CanUndo(), FALSE);
    m_tools.SetState(ID_EDIT_REDO, m_doc.CanRedo(), FALSE);
    m_tools.SetState(ID_EDIT_CLEAR, m_view.GetSelection() >= 0, FALSE);
    for (int nTool = ID_TOOL_SELECT; nTool <= ID_TOOL_TEXT; ++nTool)
        m_tools.SetState(nTool, TRUE, nTool == m_view.GetTool());
    const CShapeStyle& style = m_view.GetStyle();
    for (int i = 0; i < COLOR_COUNT; ++i)
        m_tools.SetState(ID_COLOR_FIRST + i, TRUE, CToolRow::ColorAt(i) == style.m_crPen);
    m_tools.SetPen(style.m_crPen, style.m_nWidth);
}
