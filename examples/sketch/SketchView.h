// SketchView.h : the sheet of paper in the middle of the window, on which the mouse draws

#pragma once

#include "SketchDoc.h"

// To the parent, when the drawing, the selection or what can be undone has changed
const UINT WM_SKETCH_CHANGED = WM_USER + 1;

class CSketchView : public CWnd {
    DECLARE_DYNAMIC(CSketchView)

public:
    explicit CSketchView(CSketchDoc* pDoc);

    BOOL Create(CWnd* pParent, UINT nID);
    void OnNewDrawing(); // another document was opened

    // The tool, as its command (ID_TOOL_...), and what it draws with
    int GetTool() const { return m_nTool; }
    void SetTool(int nTool);
    const CShapeStyle& GetStyle() const { return m_style; }
    void SetStyle(const CShapeStyle& style); // of the selected shape, too

    int GetSelection() const { return m_nSelected; }
    void Select(int nIndex);
    BOOL IsTracking() const { return m_bTracking; }
    void CancelTracking(); // or, when nothing is drawn, the selection
    void DeleteSelection();
    void DuplicateSelection();
    void MoveSelection(int dx, int dy);
    void RaiseSelection(BOOL bToFront);
    void Changed();

    // In Output.cpp
    void CopyPicture();
    BOOL PrintPicture(LPCSTR lpszTitle);

    BOOL PreCreateWindow(CREATESTRUCT& cs) override;

protected:
    afx_msg void OnPaint();
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint point);
    afx_msg void OnContextMenu(CWnd* pWnd, CPoint point);
    DECLARE_MESSAGE_MAP()

private:
    CRect PageRect() const; // in the client area
    CPoint ToPage(CPoint point) const;
    CPoint Snapped(CPoint point) const;
    CPoint Constrained(CPoint point, UINT nFlags) const;
    void ScrollTo(CPoint scroll);
    ShapeKind ToolKind() const;
    void BeginShape(CPoint point);
    void BeginMove(CPoint point);
    void EnterText(CPoint point);
    void EditText(int nIndex);
    void DrawAll(CDC* pDC, const CRect& client);
    void DrawDesk(CDC* pDC, const CRect& client, const CRect& page);
    void DrawPage(CDC* pDC, CPoint origin, BOOL bGrid);
    void DrawGrid(CDC* pDC, CPoint origin);
    void DrawSelection(CDC* pDC, CPoint origin);

    CSketchDoc* m_pDoc;
    int m_nTool;
    CShapeStyle m_style;
    int m_nTextHeight;
    int m_nSelected;
    BOOL m_bTracking;
    CShape m_tracked;  // what is being drawn, or moved
    CPoint m_ptStart;  // of the drag, on the page
    SIZE m_moved;      // how far the selected shape was dragged
    CPoint m_ptScroll; // of a page that is larger than the window
    BOOL m_bOutput;    // painting for the printer or the clipboard
};
