// MainFrm.h : the window with the menu, the tools, the drawing and the status bar

#pragma once

#include "SketchDoc.h"
#include "SketchView.h"
#include "ToolRow.h"

class CMainFrame : public CFrameWnd {
    DECLARE_DYNCREATE(CMainFrame)

public:
    CMainFrame();

    BOOL OpenFile(LPCSTR lpszPath);

protected:
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnGetMinMaxInfo(MINMAXINFO* lpMMI);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnDropFiles(HDROP hDropInfo);
    afx_msg void OnClose();
#ifndef _WIN32
    afx_msg BOOL OnQueryClose();
#endif
    afx_msg LRESULT OnSketchChanged(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnToolHint(WPARAM wParam, LPARAM lParam);

    afx_msg void OnFileNew();
    afx_msg void OnFileOpen();
    afx_msg void OnFileSave();
    afx_msg void OnFileSaveAs();
    afx_msg void OnFilePageSetup();
    afx_msg void OnFilePrint();
    afx_msg void OnFileRecent(UINT nID);
    afx_msg void OnAppExit();
    afx_msg void OnEditUndo();
    afx_msg void OnEditRedo();
    afx_msg void OnEditCopy();
    afx_msg void OnEditClear();
    afx_msg void OnEditDuplicate();
    afx_msg void OnEditStack(UINT nID);
    afx_msg void OnEditDeselect();
    afx_msg void OnEditShapes();
    afx_msg void OnNudge(UINT nID);
    afx_msg void OnTool(UINT nID);
    afx_msg void OnColor(UINT nID);
    afx_msg void OnFormatPen();
    afx_msg void OnFormatWidth(UINT nID);
    afx_msg void OnView(UINT nID);

    afx_msg void OnUpdateSave(CCmdUI* pCmdUI);
    afx_msg void OnUpdateRecent(CCmdUI* pCmdUI);
    afx_msg void OnUpdateUndo(CCmdUI* pCmdUI);
    afx_msg void OnUpdateRedo(CCmdUI* pCmdUI);
    afx_msg void OnUpdateSelected(CCmdUI* pCmdUI);
    afx_msg void OnUpdateHasShapes(CCmdUI* pCmdUI);
    afx_msg void OnUpdateTool(CCmdUI* pCmdUI);
    afx_msg void OnUpdateColor(CCmdUI* pCmdUI);
    afx_msg void OnUpdateView(CCmdUI* pCmdUI);
    DECLARE_MESSAGE_MAP()

private:
    BOOL SaveModified(); // FALSE: the user wants to go on with this drawing
    BOOL SaveTo(LPCSTR lpszPath);
    CString AskPath(BOOL bOpen);
    void UpdateTitle();
    void UpdateTools();
    void ShowHint(UINT nID);

    CSketchDoc m_doc;
    CSketchView m_view;
    CToolRow m_tools;
    CStatusBar m_status;
};
