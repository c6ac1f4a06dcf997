// MainFrm.cpp : the window: its parts, its files, its end
//

#include "stdafx.h"

#include "MainFrm.h"

#include "Sketch.h"
#include "resource.h"

#ifndef _WIN32
#include "SketchAccelerators.h"
#endif

static const int STATUS_HEIGHT = 20;

IMPLEMENT_DYNCREATE(CMainFrame, CFrameWnd)

BEGIN_MESSAGE_MAP(CMainFrame, CFrameWnd)
    //{{AFX_MSG_MAP(CMainFrame)
    ON_WM_CREATE()
    ON_WM_SIZE()
    ON_WM_GETMINMAXINFO()
    ON_WM_SETFOCUS()
    ON_WM_DROPFILES()
    ON_WM_CLOSE()
    ON_COMMAND(ID_FILE_NEW, OnFileNew)
    ON_COMMAND(ID_FILE_OPEN, OnFileOpen)
    ON_COMMAND(ID_FILE_SAVE, OnFileSave)
    ON_COMMAND(ID_FILE_SAVE_AS, OnFileSaveAs)
    ON_COMMAND(ID_FILE_PAGE_SETUP, OnFilePageSetup)
    ON_COMMAND(ID_FILE_PRINT, OnFilePrint)
    ON_COMMAND(ID_APP_EXIT, OnAppExit)
    ON_COMMAND(ID_EDIT_UNDO, OnEditUndo)
    ON_COMMAND(ID_EDIT_REDO, OnEditRedo)
    ON_COMMAND(ID_EDIT_COPY, OnEditCopy)
    ON_COMMAND(ID_EDIT_CLEAR, OnEditClear)
    ON_COMMAND(ID_EDIT_DUPLICATE, OnEditDuplicate)
    ON_COMMAND(ID_EDIT_DESELECT, OnEditDeselect)
    ON_COMMAND(ID_EDIT_SHAPES, OnEditShapes)
    ON_COMMAND(ID_FORMAT_PEN, OnFormatPen)
    ON_UPDATE_COMMAND_UI(ID_FILE_SAVE, OnUpdateSave)
    ON_UPDATE_COMMAND_UI(ID_EDIT_UNDO, OnUpdateUndo)
    ON_UPDATE_COMMAND_UI(ID_EDIT_REDO, OnUpdateRedo)
    ON_UPDATE_COMMAND_UI(ID_EDIT_CLEAR, OnUpdateSelected)
    ON_UPDATE_COMMAND_UI(ID_EDIT_SHAPES, OnUpdateHasShapes)
    //}}AFX_MSG_MAP
#ifndef _WIN32
    ON_WM_QUERYCLOSE()
#endif
    ON_COMMAND_RANGE(ID_FILE_MRU_FILE1, ID_FILE_MRU_FILE1 + RECENT_COUNT - 1, OnFileRecent)
    ON_COMMAND_RANGE(ID_EDIT_FRONT, ID_EDIT_BACK, OnEditStack)
    ON_COMMAND_RANGE(ID_NUDGE_LEFT, ID_NUDGE_DOWN, OnNudge)
    ON_COMMAND_RANGE(ID_TOOL_SELECT, ID_TOOL_TEXT, OnTool)
    ON_COMMAND_RANGE(ID_COLOR_FIRST, ID_COLOR_LAST, OnColor)
    ON_COMMAND_RANGE(ID_FORMAT_THICKER, ID_FORMAT_THINNER, OnFormatWidth)
    ON_COMMAND_RANGE(ID_VIEW_GRID, ID_VIEW_SNAP, OnView)
    ON_UPDATE_COMMAND_UI_RANGE(ID_FILE_MRU_FILE1, ID_FILE_MRU_FILE1 + RECENT_COUNT - 1,
                               OnUpdateRecent)
    ON_UPDATE_COMMAND_UI_RANGE(ID_EDIT_DUPLICATE, ID_EDIT_BACK, OnUpdateSelected)
    ON_UPDATE_COMMAND_UI_RANGE(ID_NUDGE_LEFT, ID_NUDGE_DOWN, OnUpdateSelected)
    ON_UPDATE_COMMAND_UI_RANGE(ID_TOOL_SELECT, ID_TOOL_TEXT, OnUpdateTool)
    ON_UPDATE_COMMAND_UI_RANGE(ID_COLOR_FIRST, ID_COLOR_LAST, OnUpdateColor)
    ON_UPDATE_COMMAND_UI_RANGE(ID_VIEW_GRID, ID_VIEW_SNAP, OnUpdateView)
    ON_MESSAGE(WM_SKETCH_CHANGED, OnSketchChanged)
    ON_MESSAGE(WM_TOOL_HINT, OnToolHint)
END_MESSAGE_MAP()

CMainFrame::CMainFrame() : m_view(&m_doc) {}

int CMainFrame::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (CFrameWnd::OnCreate(lpCreateStruct) == -1)
        return -1;
    if (!m_tools.Create(this, IDW_TOOLS) || !m_view.Create(this, IDW_SKETCH) ||
        !m_status.Create(this))
        return -1;
#ifdef _WIN32
    static UINT indicators[] = {ID_SEPARATOR};
    m_status.SetIndicators(indicators, 1);
#else
    accelTable = Accelerators_IDR_MAINFRAME;
#endif
    m_view.SetStyle(theApp.m_settings.m_style);
    m_view.SetFocus();
    ShowHint(IDS_READY);
    return 0;
}

void CMainFrame::OnSize(UINT nType, int cx, int cy)
{
    CFrameWnd::OnSize(nType, cx, cy);
    if (!m_view.GetSafeHwnd())
        return;
    CRect client;
    GetClientRect(&client);
    const int bottom = client.Height() - STATUS_HEIGHT;
    m_tools.MoveWindow(0, 0, client.Width(), CToolRow::HEIGHT);
    m_view.MoveWindow(0, CToolRow::HEIGHT, client.Width(), bottom - CToolRow::HEIGHT);
    m_status.MoveWindow(0, bottom, client.Width(), STATUS_HEIGHT);
}

void CMainFrame::OnGetMinMaxInfo(MINMAXINFO* lpMMI)
{
    lpMMI->ptMinTrackSize = CPoint(520, 360);
}

void CMainFrame::OnSetFocus(CWnd*)
{
    m_view.SetFocus();
}

void CMainFrame::OnDropFiles(HDROP hDropInfo)
{
    char path[MAX_PATH];
    const UINT nLength = DragQueryFile(hDropInfo, 0, path, sizeof path);
    DragFinish(hDropInfo);
    if (nLength > 0 && SaveModified())
        OpenFile(path);
}

// The end

void CMainFrame::OnClose()
{
    if (!SaveModified())
        return;
    CRect place;
    GetWindowRect(&place);
    theApp.m_settings.m_rectWindow = place;
    theApp.m_settings.m_style = m_view.GetStyle();
    theApp.m_settings.Save();
    CFrameWnd::OnClose();
}

#ifndef _WIN32
BOOL CMainFrame::OnQueryClose()
{
    return !SaveModified();
}
#endif

BOOL CMainFrame::SaveModified()
{
    if (m_view.IsTracking())
        m_view.CancelTracking();
    if (!m_doc.IsModified())
        return TRUE;
    char text[200];
    AfxLoadString(IDS_ASK_SAVE, text, sizeof text);
    switch (MessageBox(text, "Sketch", MB_YESNOCANCEL | MB_ICONQUESTION)) {
    case IDYES:
        OnFileSave();
        return !m_doc.IsModified();
    case IDNO:
        m_doc.SetModifiedFlag(FALSE); // asked once only
        return TRUE;
    default:
        return FALSE;
    }
}

// Files

BOOL CMainFrame::OpenFile(LPCSTR lpszPath)
{
    CSketchError error;
    if (!m_doc.OnOpenDocument(lpszPath, error)) {
        std::string text = lpszPath;
        if (error.m_nLine > 0)
            text += ", line " + std::to_string(error.m_nLine);
        text += ":\n" + error.m_strText;
        MessageBox(text.c_str(), "Sketch", MB_OK | MB_ICONEXCLAMATION);
        return FALSE;
    }
    theApp.m_settings.AddRecent(lpszPath);
    m_view.OnNewDrawing();
    return TRUE;
}

CString CMainFrame::AskPath(BOOL bOpen)
{
    char filter[200];
    AfxLoadString(IDS_FILE_FILTER, filter, sizeof filter);
    CFileDialog dialog(bOpen, "sketch", bOpen ? NULL : (LPCSTR)m_doc.GetPathName(),
                       bOpen ? OFN_HIDEREADONLY | OFN_FILEMUSTEXIST
                             : OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                       filter, this);
    return dialog.DoModal() == IDOK ? dialog.GetPathName() : CString("");
}

BOOL CMainFrame::SaveTo(LPCSTR lpszPath)
{
    if (!m_doc.OnSaveDocument(lpszPath)) {
        char text[200];
        AfxLoadString(IDS_CANNOT_WRITE, text, sizeof text);
        MessageBox(text, "Sketch", MB_OK | MB_ICONEXCLAMATION);
        return FALSE;
    }
    theApp.m_settings.AddRecent(lpszPath);
    m_view.Changed();
    return TRUE;
}

void CMainFrame::OnFileNew()
{
    if (!SaveModified())
        return;
    m_doc.OnNewDocument();
    m_view.OnNewDrawing();
}

void CMainFrame::OnFileOpen()
{
    if (!SaveModified())
        return;
    const CString path = AskPath(TRUE);
    if (!path.IsEmpty())
        OpenFile(path);
}

void CMainFrame::OnFileSave()
{
    const CString path = m_doc.GetPathName(); // saving sets the document's
    if (path.IsEmpty())
        OnFileSaveAs();
    else
        SaveTo(path);
}

void CMainFrame::OnFileSaveAs()
{
    const CString path = AskPath(FALSE);
    if (!path.IsEmpty())
        SaveTo(path);
}

void CMainFrame::OnFileRecent(UINT nID)
{
    const int nIndex = (int)nID - ID_FILE_MRU_FILE1;
    if (nIndex >= theApp.m_settings.GetRecentCount() || !SaveModified())
        return;
    const std::string path = theApp.m_settings.GetRecent(nIndex);
    if (!OpenFile(path.c_str()))
        theApp.m_settings.RemoveRecent(nIndex);
}

void CMainFrame::OnAppExit()
{
    PostMessage(WM_CLOSE);
}

// What is shown besides the drawing

LRESULT CMainFrame::OnSketchChanged(WPARAM, LPARAM)
{
    UpdateTitle();
    UpdateTools();
    return 0;
}

LRESULT CMainFrame::OnToolHint(WPARAM wParam, LPARAM)
{
    ShowHint(wParam ? (UINT)wParam : IDS_READY);
    return 0;
}

// A command's text has a hint, and behind a line end a short name
void CMainFrame::ShowHint(UINT nID)
{
    if (nID >= ID_COLOR_FIRST && nID <= ID_COLOR_LAST)
        nID = ID_COLOR_FIRST;
    char text[200];
    if (AfxLoadString(nID, text, sizeof text) > 0)
        m_status.SetPaneText(0, std::string(text, 0, std::string(text).find('\n')).c_str());
}

void CMainFrame::UpdateTitle()
{
    CString name = m_doc.GetTitle();
    if (name.IsEmpty()) {
        char untitled[100];
        AfxLoadString(IDS_UNTITLED, untitled, sizeof untitled);
        name = CString(untitled);
    }
    const std::string title =
        std::string((LPCSTR)name) + (m_doc.IsModified() ? " * - Sketch" : " - Sketch");
    CString shown;
    GetWindowText(shown);
    if (title != (LPCSTR)shown)
        SetWindowText(title.c_str());
}
