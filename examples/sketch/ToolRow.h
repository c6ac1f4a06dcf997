// ToolRow.h : the row of buttons below the menu, and the colours at its right

#pragma once

// To the parent while the mouse is over a button; wParam: its command, 0 for none
const UINT WM_TOOL_HINT = WM_USER + 2;
const int COLOR_COUNT = 10;

class CToolRow : public CWnd {
public:
    static const int HEIGHT = 40;

    CToolRow();

    BOOL Create(CWnd* pParent, UINT nID);
    // What a button looks like; a click on one that is disabled does nothing
    void SetState(int nCommand, BOOL bEnabled, BOOL bChecked);
    void SetPen(COLORREF crPen, int nWidth);
    static COLORREF ColorAt(int nIndex);

protected:
    afx_msg void OnPaint();
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnMouseLeave();
    DECLARE_MESSAGE_MAP()

private:
    struct CTool {
        int m_nCommand;
        int m_nPicture; // in the strip, -1: a colour
        CRect m_rect;
        BOOL m_bEnabled;
        BOOL m_bChecked;
    };
    void Place();
    int ToolAt(CPoint point) const; // -1 beside them
    void SetHot(int nTool);
    void DrawTool(CDC* pDC, CDC* pPictures, int nTool) const;
    void DrawColor(CDC* pDC, const CTool& tool, BOOL bHot) const;
    void DrawSample(CDC* pDC) const;

    std::vector<CTool> m_tools;
    CBitmap m_pictures;
    int m_nHot;
    int m_nPressed;
    COLORREF m_crPen;
    int m_nPenWidth;
    CRect m_sample;
};
