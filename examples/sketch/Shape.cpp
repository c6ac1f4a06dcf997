// Shape.cpp : one shape of a drawing
//

#include "stdafx.h"

#include "Shape.h"

#include <algorithm>
#include <cmath>

static double DistanceToSegment(CPoint point, CPoint from, CPoint to)
{
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double length = dx * dx + dy * dy;
    double part = length > 0 ? ((point.x - from.x) * dx + (point.y - from.y) * dy) / length : 0;
    part = part < 0 ? 0 : part > 1 ? 1 : part;
    return std::hypot(from.x + part * dx - point.x, from.y + part * dy - point.y);
}

LPCSTR CShape::KindName(ShapeKind kind)
{
    static const LPCSTR names[] = {"Freehand", "Line", "Rectangle", "Ellipse", "Text"};
    return names[kind];
}

CRect CShape::Corners() const
{
    CRect rect(m_points.front(), m_points.back());
    rect.NormalizeRect();
    return rect;
}

CRect CShape::GetBounds() const
{
    if (m_points.empty())
        return CRect(0, 0, 0, 0);
    CRect rect(m_points[0], m_points[0]);
    for (const CPoint& point : m_points) {
        rect.left = std::min(rect.left, point.x);
        rect.top = std::min(rect.top, point.y);
        rect.right = std::max(rect.right, point.x);
        rect.bottom = std::max(rect.bottom, point.y);
    }
    if (m_kind == SHAPE_TEXT) {
        // Wide enough for most letters; the exact width needs a device
        rect.right += (int)m_strText.size() * m_nTextHeight * 11 / 20;
        rect.bottom += m_nTextHeight;
    }
    return rect;
}

BOOL CShape::HitTest(CPoint point, int nSlack) const
{
    const int reach = nSlack + m_style.m_nWidth / 2;
    CRect bounds = GetBounds();
    bounds.InflateRect(reach, reach);
    if (!bounds.PtInRect(point))
        return FALSE;
    if (m_kind == SHAPE_TEXT)
        return TRUE;
    if (m_kind == SHAPE_FREEHAND || m_kind == SHAPE_LINE) {
        for (size_t i = 0; i < m_points.size(); ++i)
            if (DistanceToSegment(point, m_points[i ? i - 1 : 0], m_points[i]) <= reach)
                return TRUE;
        return FALSE;
    }
    CRect inside = Corners();
    inside.DeflateRect(m_style.m_nWidth + nSlack, m_style.m_nWidth + nSlack);
    if (m_kind == SHAPE_RECTANGLE)
        return m_style.m_bFilled || inside.IsRectEmpty() || !inside.PtInRect(point);

    const CPoint middle = bounds.CenterPoint();
    const auto reaches = [&](const CRect& rect) {
        const double across = (point.x - middle.x) * 2.0 / rect.Width();
        const double down = (point.y - middle.y) * 2.0 / rect.Height();
        return across * across + down * down <= 1;
    };
    return reaches(bounds) && (m_style.m_bFilled || inside.IsRectEmpty() || !reaches(inside));
}

CShape CShape::Moved(int dx, int dy) const
{
    CShape moved = *this;
    for (CPoint& point : moved.m_points)
        point.Offset(dx, dy);
    return moved;
}

// A click without a movement leaves no line and no area
BOOL CShape::IsEmpty() const
{
    if (m_kind == SHAPE_TEXT)
        return m_strText.empty();
    const CRect bounds = GetBounds();
    if (m_kind == SHAPE_RECTANGLE || m_kind == SHAPE_ELLIPSE)
        return bounds.IsRectEmpty();
    return m_kind == SHAPE_LINE && bounds.Width() == 0 && bounds.Height() == 0;
}

void CShape::Draw(CDC* pDC, CPoint origin) const
{
    if (m_points.empty())
        return;
    switch (m_kind) {
    case SHAPE_FREEHAND:
    case SHAPE_LINE:
        DrawPath(pDC, origin);
        break;
    case SHAPE_RECTANGLE:
    case SHAPE_ELLIPSE:
        DrawArea(pDC, origin);
        break;
    case SHAPE_TEXT:
        DrawLetters(pDC, origin);
        break;
    }
}

// Level and upright lines are areas: systems differ about where wide ones of them end
static void DrawSegment(CDC* pDC, CPoint from, CPoint to, int nWidth, CBrush* pBrush)
{
    if (from.x != to.x && from.y != to.y) {
        pDC->MoveTo(from.x, from.y);
        pDC->LineTo(to.x, to.y);
        return;
    }
    CRect area(from, to);
    area.NormalizeRect();
    if (from.x == to.x) {
        area.left -= nWidth / 2;
        area.right = area.left + nWidth;
    } else {
        area.top -= nWidth / 2;
        area.bottom = area.top + nWidth;
    }
    pDC->FillRect(&area, pBrush);
}

void CShape::DrawPath(CDC* pDC, CPoint origin) const
{
    CPen pen(PS_SOLID, m_style.m_nWidth, m_style.m_crPen);
    CPen noBorder(PS_NULL, 1, m_style.m_crPen);
    CBrush brush(m_style.m_crPen);
    CBrush* pOldBrush = pDC->SelectObject(&brush);
    CPen* pOldPen = pDC->SelectObject(&pen);
    const int half = m_style.m_nWidth / 2;
    CPoint before;
    for (size_t i = 0; i < m_points.size(); ++i) {
        const CPoint at(m_points[i].x - origin.x, m_points[i].y - origin.y);
        if (i > 0)
            DrawSegment(pDC, before, at, m_style.m_nWidth, &brush);
        if (half > 0) { // round ends and joints
            pDC->SelectObject(&noBorder);
            pDC->Ellipse(at.x - half, at.y - half, at.x - half + m_style.m_nWidth,
                         at.y - half + m_style.m_nWidth);
            pDC->SelectObject(&pen);
        }
        before = at;
    }
    pDC->SelectObject(pOldPen);
    pDC->SelectObject(pOldBrush);
}

// By regions: a frame of any width that stays inside of the corners, and an inside that may be
// hollow
void CShape::DrawArea(CDC* pDC, CPoint origin) const
{
    CRect rect = Corners();
    rect.OffsetRect(-origin.x, -origin.y);
    if (rect.IsRectEmpty())
        return;
    CRgn region;
    if (m_kind == SHAPE_ELLIPSE)
        region.CreateEllipticRgn(rect.left, rect.top, rect.right, rect.bottom);
    else
        region.CreateRectRgn(rect.left, rect.top, rect.right, rect.bottom);
    CBrush inside(m_style.m_crFill);
    if (m_style.m_bFilled)
        pDC->FillRgn(&region, &inside);
    CBrush frame(m_style.m_crPen);
    pDC->FrameRgn(&region, &frame, m_style.m_nWidth, m_style.m_nWidth);
    region.DeleteObject();
}

void CShape::DrawLetters(CDC* pDC, CPoint origin) const
{
    CFont font;
    font.CreateFont(-m_nTextHeight, 0, 0, 0, 400, FALSE, FALSE, FALSE, 0, 0, 0, 0, 0, "Arial");
    CFont* pOldFont = pDC->SelectObject(&font);
    const COLORREF crOld = pDC->SetTextColor(m_style.m_crPen);
    pDC->SetBkMode(TRANSPARENT);
    pDC->SetTextAlign(TA_LEFT | TA_TOP);
    pDC->TextOut(m_points[0].x - origin.x, m_points[0].y - origin.y, m_strText.c_str(),
                 (int)m_strText.size());
    pDC->SetTextColor(crOld);
    if (pOldFont)
        pDC->SelectObject(pOldFont);
}
