// SketchView.cpp : the sheet of paper: what the mouse does
//

#include "stdafx.h"

#include "SketchView.h"

#include "TextDialog.h"
#include "resource.h"

#include <stdlib.h>

static const int MARGIN = 16; // around the page
static const int SLACK = 4;   // how far a click may miss a shape
static const int WHEEL_STEP = 60;

IMPLEMENT_DYNAMIC(CSketchView, CWnd)

BEGIN_MESSAGE_MAP(CSketchView, CWnd)
    //{{AFX_MSG_MAP(CSketchView)
    ON_WM_PAINT()
    ON_WM_SIZE()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSEWHEEL()
    ON_WM_CONTEXTMENU()
    //}}AFX_MSG_MAP
END_MESSAGE_MAP()

CSketchView::CSketchView(CSketchDoc* pDoc)
    : m_pDoc(pDoc), m_nTool(ID_TOOL_FREEHAND), m_nTextHeight(24), m_nSelected(-1),
      m_bTracking(FALSE), m_bOutput(FALSE)
{
    m_moved.cx = m_moved.cy = 0;
}

BOOL CSketchView::PreCreateWindow(CREATESTRUCT& cs)
{
    cs.style |= WS_TABSTOP;
    return CWnd::PreCreateWindow(cs);
}

BOOL CSketchView::Create(CWnd* pParent, UINT nID)
{
    return CWnd::Create(NULL, "Drawing", WS_CHILD | WS_VISIBLE | WS_TABSTOP, CRect(0, 0, 10, 10),
                        pParent, nID);
}

void CSketchView::OnNewDrawing()
{
    m_nSelected = -1;
    m_ptScroll = CPoint(0, 0);
    Changed();
}

void CSketchView::SetTool(int nTool)
{
    if (m_bTracking)
        CancelTracking();
    m_nTool = nTool;
    if (nTool != ID_TOOL_SELECT)
        m_nSelected = -1;
    Changed();
}

void CSketchView::SetStyle(const CShapeStyle& style)
{
    m_style = style;
    if (m_nSelected >= 0) {
        CShape shape = m_pDoc->GetShape(m_nSelected);
        shape.m_style = style;
        m_pDoc->ReplaceShape(m_nSelected, shape);
    }
    Changed();
}

void CSketchView::Select(int nIndex)
{
    m_nSelected = nIndex < m_pDoc->GetCount() ? nIndex : -1;
    if (m_nSelected >= 0)
        m_style = m_pDoc->GetShape(m_nSelected).m_style;
    Changed();
}

void CSketchView::CancelTracking()
{
    if (!m_bTracking)
        m_nSelected = -1;
    Changed();
}

void CSketchView::DeleteSelection()
{
    const int nIndex = m_nSelected;
    m_nSelected = -1;
    m_pDoc->RemoveShape(nIndex);
    Changed();
}

void CSketchView::DuplicateSelection()
{
    const int nStep = m_pDoc->GetPage().m_nGrid;
    Select(m_pDoc->AddShape(m_pDoc->GetShape(m_nSelected).Moved(nStep, nStep)));
}

void CSketchView::MoveSelection(int dx, int dy)
{
    m_pDoc->ReplaceShape(m_nSelected, m_pDoc->GetShape(m_nSelected).Moved(dx, dy));
    Changed();
}

void CSketchView::RaiseSelection(BOOL bToFront)
{
    m_nSelected = m_pDoc->MoveInStack(m_nSelected, bToFront ? m_pDoc->GetCount() - 1 : 0);
    Changed();
}

// A shape that is being dragged may be gone, so the drag ends
void CSketchView::Changed()
{
    if (m_bTracking)
        ReleaseCapture();
    m_bTracking = FALSE;
    if (m_nSelected >= m_pDoc->GetCount())
        m_nSelected = -1;
    Invalidate(FALSE);
    GetParent()->SendMessage(WM_SKETCH_CHANGED);
}

// Where things are

CRect CSketchView::PageRect() const
{
    CRect client;
    GetClientRect(&client);
    const CPageSetup& page = m_pDoc->GetPage();
    const int left = client.Width() >= page.m_nWidth + 2 * MARGIN
                         ? (client.Width() - page.m_nWidth) / 2
                         : MARGIN - m_ptScroll.x;
    const int top = client.Height() >= page.m_nHeight + 2 * MARGIN
                        ? (client.Height() - page.m_nHeight) / 2
                        : MARGIN - m_ptScroll.y;
    return CRect(left, top, left + page.m_nWidth, top + page.m_nHeight);
}

CPoint CSketchView::ToPage(CPoint point) const
{
    const CRect page = PageRect();
    return CPoint(point.x - page.left, point.y - page.top);
}

static int SnapTo(int value, int grid)
{
    const int half = value >= 0 ? grid / 2 : -grid / 2;
    return (value + half) / grid * grid;
}

CPoint CSketchView::Snapped(CPoint point) const
{
    const CPageSetup& page = m_pDoc->GetPage();
    if (!page.m_bSnap || ToolKind() == SHAPE_FREEHAND)
        return point;
    return CPoint(SnapTo(point.x, page.m_nGrid), SnapTo(point.y, page.m_nGrid));
}

// With the Shift key rectangles are squares, ellipses circles, and lines level or upright
CPoint CSketchView::Constrained(CPoint point, UINT nFlags) const
{
    if (!(nFlags & MK_SHIFT))
        return point;
    const int dx = point.x - m_ptStart.x;
    const int dy = point.y - m_ptStart.y;
    if (m_tracked.m_kind == SHAPE_LINE)
        return abs(dx) > abs(dy) ? CPoint(point.x, m_ptStart.y) : CPoint(m_ptStart.x, point.y);
    const int side = abs(dx) > abs(dy) ? abs(dx) : abs(dy);
    return CPoint(m_ptStart.x + (dx < 0 ? -side : side), m_ptStart.y + (dy < 0 ? -side : side));
}

void CSketchView::ScrollTo(CPoint scroll)
{
    CRect client;
    GetClientRect(&client);
    const int farX = m_pDoc->GetPage().m_nWidth + 2 * MARGIN - client.Width();
    const int farY = m_pDoc->GetPage().m_nHeight + 2 * MARGIN - client.Height();
    m_ptScroll.x = scroll.x > farX ? farX : scroll.x;
    m_ptScroll.y = scroll.y > farY ? farY : scroll.y;
    if (m_ptScroll.x < 0)
        m_ptScroll.x = 0;
    if (m_ptScroll.y < 0)
        m_ptScroll.y = 0;
    Invalidate(FALSE);
}

void CSketchView::OnSize(UINT nType, int cx, int cy)
{
    CWnd::OnSize(nType, cx, cy);
    ScrollTo(m_ptScroll);
}

BOOL CSketchView::OnMouseWheel(UINT nFlags, short zDelta, CPoint)
{
    const int step = zDelta > 0 ? -WHEEL_STEP : WHEEL_STEP;
    CPoint scroll = m_ptScroll;
    scroll.Offset(nFlags & MK_SHIFT ? step : 0, nFlags & MK_SHIFT ? 0 : step);
    ScrollTo(scroll);
    return TRUE;
}

// Drawing with the mouse

ShapeKind CSketchView::ToolKind() const
{
    return (ShapeKind)(m_nTool - ID_TOOL_FREEHAND);
}

void CSketchView::OnLButtonDown(UINT, CPoint point)
{
    SetFocus();
    const CPoint at = ToPage(point);
    if (m_nTool == ID_TOOL_SELECT)
        BeginMove(at);
    else if (m_nTool == ID_TOOL_TEXT)
        EnterText(Snapped(at));
    else
        BeginShape(Snapped(at));
}

void CSketchView::BeginShape(CPoint point)
{
    m_tracked = CShape();
    m_tracked.m_kind = ToolKind();
    m_tracked.m_style = m_style;
    m_tracked.m_points.push_back(point);
    if (m_nTool != ID_TOOL_FREEHAND)
        m_tracked.m_points.push_back(point);
    m_ptStart = point;
    m_moved.cx = m_moved.cy = 0;
    m_bTracking = TRUE;
    SetCapture();
    Invalidate(FALSE);
}

void CSketchView::BeginMove(CPoint point)
{
    Select(m_pDoc->HitTest(point, SLACK));
    if (m_nSelected < 0)
        return;
    m_tracked = m_pDoc->GetShape(m_nSelected);
    m_ptStart = point;
    m_moved.cx = m_moved.cy = 0;
    m_bTracking = TRUE;
    SetCapture();
}

void CSketchView::OnMouseMove(UINT nFlags, CPoint point)
{
    if (!m_bTracking)
        return;
    CPoint at = ToPage(point);
    if (m_nTool == ID_TOOL_SELECT) {
        const CPageSetup& page = m_pDoc->GetPage();
        m_moved.cx = at.x - m_ptStart.x;
        m_moved.cy = at.y - m_ptStart.y;
        if (page.m_bSnap) {
            m_moved.cx = SnapTo(m_moved.cx, page.m_nGrid);
            m_moved.cy = SnapTo(m_moved.cy, page.m_nGrid);
        }
        m_tracked = m_pDoc->GetShape(m_nSelected).Moved(m_moved.cx, m_moved.cy);
    } else if (m_nTool == ID_TOOL_FREEHAND) {
        if (!(m_tracked.m_points.back() == at))
            m_tracked.m_points.push_back(at);
    } else {
        m_tracked.m_points.back() = Constrained(Snapped(at), nFlags);
    }
    Invalidate(FALSE);
}

void CSketchView::OnLButtonUp(UINT nFlags, CPoint point)
{
    if (!m_bTracking)
        return;
    OnMouseMove(nFlags, point);
    ReleaseCapture();
    m_bTracking = FALSE;
    if (m_nTool == ID_TOOL_SELECT) {
        if (m_moved.cx != 0 || m_moved.cy != 0)
            m_pDoc->ReplaceShape(m_nSelected, m_tracked);
    } else if (!m_tracked.IsEmpty()) {
        m_pDoc->AddShape(m_tracked);
    }
    Changed();
}

void CSketchView::OnLButtonDblClk(UINT nFlags, CPoint point)
{
    const int nIndex = m_pDoc->HitTest(ToPage(point), SLACK);
    if (m_nTool != ID_TOOL_SELECT || nIndex < 0 || m_pDoc->GetShape(nIndex).m_kind != SHAPE_TEXT)
        return OnLButtonDown(nFlags, point);
    EditText(nIndex);
}

void CSketchView::EnterText(CPoint point)
{
    CTextDialog dialog(AfxGetMainWnd());
    dialog.m_nHeight = m_nTextHeight;
    if (dialog.DoModal() != IDOK || dialog.m_strText.IsEmpty())
        return;
    m_nTextHeight = dialog.m_nHeight;
    CShape shape;
    shape.m_kind = SHAPE_TEXT;
    shape.m_style = m_style;
    shape.m_points.push_back(point);
    shape.m_strText = (LPCSTR)dialog.m_strText;
    shape.m_nTextHeight = dialog.m_nHeight;
    m_pDoc->AddShape(shape);
    Changed();
}

void CSketchView::EditText(int nIndex)
{
    CShape shape = m_pDoc->GetShape(nIndex);
    CTextDialog dialog(AfxGetMainWnd());
    dialog.m_strText = shape.m_strText.c_str();
    dialog.m_nHeight = shape.m_nTextHeight;
    if (dialog.DoModal() != IDOK || dialog.m_strText.IsEmpty())
        return;
    shape.m_strText = (LPCSTR)dialog.m_strText;
    shape.m_nTextHeight = dialog.m_nHeight;
    m_pDoc->ReplaceShape(nIndex, shape);
    Changed();
}

void CSketchView::OnContextMenu(CWnd*, CPoint point)
{
    if (m_bTracking)
        return;
#ifndef _WIN32
    if (GetKeyState(VK_LBUTTON) < 0) // a click with Super is told in the window
        ClientToScreen(&point);
#endif
    CPoint at = point;
    ScreenToClient(&at);
    const int nIndex = m_pDoc->HitTest(ToPage(at), SLACK);
    if (nIndex >= 0) {
        SetTool(ID_TOOL_SELECT);
        Select(nIndex);
    }
    CMenu menu;
    if (!menu.LoadMenu(IDR_SHAPE_MENU))
        return;
    menu.GetSubMenu(0)->TrackPopupMenu(TPM_LEFTALIGN | TPM_RIGHTBUTTON, point.x, point.y,
                                       AfxGetMainWnd());
}
