// ToolRow.cpp : the row of buttons below the menu
//

#include "stdafx.h"

#include "ToolRow.h"

#include "resource.h"

static const int PICTURE = 24;
static const int BUTTON = 32;
static const int SWATCH = 20;
static const COLORREF GROUND = RGB(246, 245, 242);
static const COLORREF HOT = RGB(228, 235, 243);
static const COLORREF CHOSEN = RGB(201, 220, 242);
static const COLORREF LINE = RGB(196, 196, 190);
static const COLORREF RING = RGB(47, 111, 179);

static const COLORREF colors[COLOR_COUNT] = {
    RGB(0, 0, 0),      RGB(96, 104, 112), RGB(31, 78, 140),  RGB(52, 144, 200), RGB(38, 128, 82),
    RGB(140, 178, 60), RGB(242, 180, 65), RGB(222, 110, 40), RGB(186, 44, 44),  RGB(126, 66, 150)};

// The buttons from the left; 0 is a gap
static const int commands[] = {ID_FILE_NEW,
                               ID_FILE_OPEN,
                               ID_FILE_SAVE,
                               0,
                               ID_EDIT_UNDO,
                               ID_EDIT_REDO,
                               0,
                               ID_TOOL_SELECT,
                               ID_TOOL_FREEHAND,
                               ID_TOOL_LINE,
                               ID_TOOL_RECTANGLE,
                               ID_TOOL_ELLIPSE,
                               ID_TOOL_TEXT,
                               0,
                               ID_EDIT_CLEAR,
                               0,
                               ID_FORMAT_PEN};

BEGIN_MESSAGE_MAP(CToolRow, CWnd)
    ON_WM_PAINT()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSELEAVE()
END_MESSAGE_MAP()

CToolRow::CToolRow() : m_nHot(-1), m_nPressed(-1), m_crPen(0), m_nPenWidth(1) {}

BOOL CToolRow::Create(CWnd* pParent, UINT nID)
{
    m_pictures.LoadBitmap(IDB_TOOLS);
    Place();
    return CWnd::Create(NULL, "Tools", WS_CHILD | WS_VISIBLE, CRect(0, 0, 10, HEIGHT), pParent,
                        nID);
}

void CToolRow::Place()
{
    const int top = (HEIGHT - BUTTON) / 2;
    int left = 6;
    int picture = 0;
    for (int command : commands) {
        if (command == 0) {
            left += 10;
            continue;
        }
        m_tools.push_back(
            {command, picture++, CRect(left, top, left + BUTTON, top + BUTTON), TRUE, FALSE});
        left += BUTTON + 2;
    }
    m_sample.SetRect(left + 2, top + 2, left + 62, top + BUTTON - 2);
    left += 76;
    for (int i = 0; i < COLOR_COUNT; ++i) {
        const int middle = HEIGHT / 2;
        m_tools.push_back({ID_COLOR_FIRST + i, -1,
                           CRect(left, middle - SWATCH / 2, left + SWATCH, middle + SWATCH / 2),
                           TRUE, FALSE});
        left += SWATCH + 4;
    }
}

COLORREF CToolRow::ColorAt(int nIndex)
{
    return colors[nIndex];
}

void CToolRow::SetState(int nCommand, BOOL bEnabled, BOOL bChecked)
{
    for (CTool& tool : m_tools) {
        if (tool.m_nCommand != nCommand)
            continue;
        if (tool.m_bEnabled == bEnabled && tool.m_bChecked == bChecked)
            return;
        tool.m_bEnabled = bEnabled;
        tool.m_bChecked = bChecked;
        InvalidateRect(&tool.m_rect, FALSE);
    }
}

void CToolRow::SetPen(COLORREF crPen, int nWidth)
{
    if (crPen == m_crPen && nWidth == m_nPenWidth)
        return;
    m_crPen = crPen;
    m_nPenWidth = nWidth;
    Invalidate(FALSE);
}

static void Fill(CDC* pDC, const CRect& rect, COLORREF color)
{
    CBrush brush(color);
    pDC->FillRect(&rect, &brush);
}

static void Frame(CDC* pDC, const CRect& rect, COLORREF color)
{
    CBrush brush(color);
    pDC->FrameRect(&rect, &brush);
}

void CToolRow::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    Fill(&dc, client, GROUND);
    Fill(&dc, CRect(0, client.bottom - 1, client.right, client.bottom), LINE);
    CDC pictures;
    pictures.CreateCompatibleDC(&dc);
    CBitmap* pOldBitmap = pictures.SelectObject(&m_pictures);
    for (int i = 0; i < (int)m_tools.size(); ++i)
        DrawTool(&dc, &pictures, i);
    DrawSample(&dc);
    pictures.SelectObject(pOldBitmap);
}

void CToolRow::DrawTool(CDC* pDC, CDC* pPictures, int nTool) const
{
    const CTool& tool = m_tools[nTool];
    const BOOL bHot = nTool == m_nHot && tool.m_bEnabled;
    if (tool.m_nPicture < 0)
        return DrawColor(pDC, tool, bHot);
    const BOOL bDown = tool.m_bChecked || (bHot && nTool == m_nPressed);
    const int row = !tool.m_bEnabled ? 3 : bDown ? 2 : bHot ? 1 : 0;
    if (row == 1 || row == 2) {
        Fill(pDC, tool.m_rect, row == 1 ? HOT : CHOSEN);
        Frame(pDC, tool.m_rect, row == 1 ? LINE : RING);
    }
    const int inset = (BUTTON - PICTURE) / 2;
    pDC->BitBlt(tool.m_rect.left + inset, tool.m_rect.top + inset, PICTURE, PICTURE, pPictures,
                tool.m_nPicture * PICTURE, row * PICTURE, SRCCOPY);
}

void CToolRow::DrawColor(CDC* pDC, const CTool& tool, BOOL bHot) const
{
    CRect rect = tool.m_rect;
    if (tool.m_bChecked || bHot)
        Frame(pDC, rect, tool.m_bChecked ? RING : LINE);
    rect.DeflateRect(2, 2);
    Fill(pDC, rect, colors[tool.m_nCommand - ID_COLOR_FIRST]);
}

// A stroke of the pen as it will be, as far as there is room
void CToolRow::DrawSample(CDC* pDC) const
{
    Fill(pDC, m_sample, RGB(255, 255, 255));
    Frame(pDC, m_sample, LINE);
    const int width = m_nPenWidth < m_sample.Height() - 6 ? m_nPenWidth : m_sample.Height() - 6;
    const int top = m_sample.CenterPoint().y - width / 2;
    Fill(pDC, CRect(m_sample.left + 6, top, m_sample.right - 6, top + width), m_crPen);
}

int CToolRow::ToolAt(CPoint point) const
{
    for (int i = 0; i < (int)m_tools.size(); ++i)
        if (m_tools[i].m_rect.PtInRect(point))
            return i;
    return -1;
}

void CToolRow::SetHot(int nTool)
{
    if (nTool == m_nHot)
        return;
    m_nHot = nTool;
    Invalidate(FALSE);
    GetParent()->SendMessage(WM_TOOL_HINT, nTool < 0 ? 0 : m_tools[nTool].m_nCommand);
}

void CToolRow::OnMouseMove(UINT, CPoint point)
{
#ifdef _WIN32
    TRACKMOUSEEVENT track = {sizeof track, TME_LEAVE, m_hWnd, 0};
    TrackMouseEvent(&track);
#endif
    SetHot(ToolAt(point));
}

void CToolRow::OnMouseLeave()
{
    SetHot(-1);
}

void CToolRow::OnLButtonDown(UINT, CPoint point)
{
    m_nPressed = ToolAt(point);
    SetHot(m_nPressed);
    SetCapture();
    Invalidate(FALSE);
}

void CToolRow::OnLButtonUp(UINT, CPoint point)
{
    const int nTool = ToolAt(point);
    const BOOL bClicked = nTool >= 0 && nTool == m_nPressed && m_tools[nTool].m_bEnabled;
    m_nPressed = -1;
    ReleaseCapture();
    Invalidate(FALSE);
    if (bClicked)
        GetParent()->SendMessage(WM_COMMAND, m_tools[nTool].m_nCommand);
}
