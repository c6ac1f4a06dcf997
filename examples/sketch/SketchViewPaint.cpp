// SketchViewPaint.cpp : the sheet of paper: how it looks
//

#include "stdafx.h"

#include "SketchView.h"

static const COLORREF DESK = RGB(214, 217, 221);
static const COLORREF SHADOW = RGB(184, 188, 194);
static const COLORREF EDGE = RGB(158, 163, 170);
static const COLORREF PAPER = RGB(255, 255, 255);
static const COLORREF GRID_LINE = RGB(229, 235, 242);
static const COLORREF GRID_DOT = RGB(170, 182, 198);
static const COLORREF MARK = RGB(30, 110, 200);

// In memory first, so that nothing flickers while the mouse draws
void CSketchView::OnPaint()
{
    CPaintDC dc(this);
    if (m_bOutput) {
        DrawPage(&dc, CPoint(0, 0), FALSE);
        return;
    }
    CRect client;
    GetClientRect(&client);
    CBitmap bitmap;
    bitmap.CreateCompatibleBitmap(&dc, client.Width(), client.Height());
    CDC memory;
    memory.CreateCompatibleDC(&dc);
    CBitmap* pOldBitmap = memory.SelectObject(&bitmap);
    DrawAll(&memory, client);
    dc.BitBlt(0, 0, client.Width(), client.Height(), &memory, 0, 0, SRCCOPY);
    memory.SelectObject(pOldBitmap);
}

static void Fill(CDC* pDC, const CRect& rect, COLORREF color)
{
    CBrush brush(color);
    pDC->FillRect(&rect, &brush);
}

void CSketchView::DrawAll(CDC* pDC, const CRect& client)
{
    // The origin that brings the page's corner to its place
    const CRect page = PageRect();
    const CPoint origin(-page.left, -page.top);
    DrawPage(pDC, origin, m_pDoc->GetPage().m_bShowGrid);
    if (m_bTracking)
        m_tracked.Draw(pDC, origin);
    DrawDesk(pDC, client, page);
    if (m_nSelected >= 0)
        DrawSelection(pDC, origin);
}

// Around the page, and over what was drawn beside it
void CSketchView::DrawDesk(CDC* pDC, const CRect& client, const CRect& page)
{
    Fill(pDC, CRect(0, 0, client.right, page.top), DESK);
    Fill(pDC, CRect(0, page.bottom, client.right, client.bottom), DESK);
    Fill(pDC, CRect(0, page.top, page.left, page.bottom), DESK);
    Fill(pDC, CRect(page.right, page.top, client.right, page.bottom), DESK);
    Fill(pDC, CRect(page.left + 4, page.bottom, page.right + 5, page.bottom + 5), SHADOW);
    Fill(pDC, CRect(page.right, page.top + 4, page.right + 5, page.bottom + 5), SHADOW);
    CRect edge = page;
    edge.InflateRect(1, 1);
    CBrush brush(EDGE);
    pDC->FrameRect(&edge, &brush);
}

void CSketchView::DrawPage(CDC* pDC, CPoint origin, BOOL bGrid)
{
    const CPageSetup& page = m_pDoc->GetPage();
    CRect paper(0, 0, page.m_nWidth, page.m_nHeight);
    paper.OffsetRect(-origin.x, -origin.y);
    Fill(pDC, paper, PAPER);
    if (bGrid)
        DrawGrid(pDC, origin);
    for (int i = 0; i < m_pDoc->GetCount(); ++i) {
        const BOOL bMoving = m_bTracking && i == m_nSelected;
        if (!bMoving || m_bOutput)
            m_pDoc->GetShape(i).Draw(pDC, origin);
    }
}

void CSketchView::DrawGrid(CDC* pDC, CPoint origin)
{
    const CPageSetup& page = m_pDoc->GetPage();
    CBrush brush(page.m_bDots ? GRID_DOT : GRID_LINE);
    for (int x = page.m_nGrid; x < page.m_nWidth; x += page.m_nGrid) {
        if (!page.m_bDots) {
            CRect line(x, 0, x + 1, page.m_nHeight);
            line.OffsetRect(-origin.x, -origin.y);
            pDC->FillRect(&line, &brush);
            continue;
        }
        for (int y = page.m_nGrid; y < page.m_nHeight; y += page.m_nGrid) {
            CRect dot(x, y, x + 1, y + 1);
            dot.OffsetRect(-origin.x, -origin.y);
            pDC->FillRect(&dot, &brush);
        }
    }
    for (int y = page.m_nGrid; y < page.m_nHeight && !page.m_bDots; y += page.m_nGrid) {
        CRect line(0, y, page.m_nWidth, y + 1);
        line.OffsetRect(-origin.x, -origin.y);
        pDC->FillRect(&line, &brush);
    }
}

void CSketchView::DrawSelection(CDC* pDC, CPoint origin)
{
    const CShape& shape = m_bTracking ? m_tracked : m_pDoc->GetShape(m_nSelected);
    CRect frame = shape.GetBounds();
    frame.InflateRect(shape.m_style.m_nWidth / 2 + 4, shape.m_style.m_nWidth / 2 + 4);
    frame.OffsetRect(-origin.x, -origin.y);
    CBrush mark(MARK);
    pDC->FrameRect(&frame, &mark);
}
