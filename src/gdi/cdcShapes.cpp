// Lines, rectangles, curves and regions.
#include "gdi/cdc.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CRgn.h>

#include "core/truncate.h"
#include "gdi/lineRule.h"
#include "gdi/regionPath.h"
#include "platform/messagebox.h"

namespace {

const tagLOGBRUSH* RecordOf(const CBrush* brush) {
    return brush ? static_cast<const tagLOGBRUSH*>(brush->m_hObject) : nullptr;
}

// A pattern on a solid brush stands for whatever colour is set.
bool KeepsCurrentColor(const tagLOGBRUSH& brush) {
    return brush.lbStyle == BS_SOLID && brush.lbHatch != 0;
}

// What WinColor makes of it, without the way over doubles.
std::uint32_t PlatformColor(COLORREF color) {
    return 0xFF000000u | GetRValue(color) << 16 | GetGValue(color) << 8 | GetBValue(color);
}

} // namespace

CPoint CDC::MoveTo(int x, int y) {
    return vm::WithContext(m_hDC, "CDC::MoveTo()", CPoint(), [&](auto& context) {
        const QPointF before = context.TextPosition();
        m_x = x;
        m_y = y;
        context.SetTextPosition(QPointF(x, y));
        return CPoint(static_cast<SHORT>(vm::Truncated(before.x())),
                      static_cast<SHORT>(vm::Truncated(before.y())));
    });
}

BOOL CDC::LineTo(int x, int y) {
    const int width = m_hPen ? static_cast<int>(PenRecord()->elpWidth) : 1;
    const vm::LineSegment line = vm::AlignLine(m_x, m_y, x, y, width);
    m_x = x;
    m_y = y;
    return vm::WithContext(m_hDC, "CDC::LineTo()", BOOL{FALSE}, [&](auto& context) -> BOOL {
        UsePen(context);
        if (m_hPen) context.SetStrokeColor(PlatformColor(PenRecord()->elpColor));
        context.StrokeLine({line.x1, line.y1}, {line.x2, line.y2});
        return TRUE;
    });
}

BOOL CDC::PolyDraw(const tagPOINT*, const BYTE*, int) {
    return TRUE;
}

void CDC::FillWith(vm::GraphicsContext& context, const tagRECT& rect, COLORREF color) {
    context.SetFillColor(PlatformColor(color));
    context.FillRect(vm::ToRectF(rect));
}

void CDC::FillRect(const tagRECT* rect, CBrush* brush) {
    const tagLOGBRUSH* const record = RecordOf(brush);
    if (!record || !rect) return;
    vm::WithContext(m_hDC, "CDC::FillRect()", [&](auto& context) {
        if (!KeepsCurrentColor(*record)) return FillWith(context, *rect, record->lbColor);
        context.FillRect(vm::ToRectF(*rect));
    });
}

// Half of the two-pixel stroke falls outside the clip.
void CDC::FrameRect(const tagRECT* rect, CBrush* brush) {
    const tagLOGBRUSH* const record = RecordOf(brush);
    if (!record || !rect) return;
    vm::WithContext(m_hDC, "CDC::FrameRect()", [&](auto& context) {
        const vm::SavedState saved(context);
        if (!KeepsCurrentColor(*record)) context.SetStrokeColor(PlatformColor(record->lbColor));
        StrokeInside(context, *rect);
    });
}

void CDC::StrokeInside(vm::GraphicsContext& context, const tagRECT& rect) {
    IntersectClipRect(&rect);
    context.StrokeRect(vm::ToRectF(rect), 2);
}

void CDC::Rectangle(const tagRECT* rect) {
    FillRect(rect, m_pBrush);
    if (!m_hPen || !rect) return;
    vm::WithContext(m_hDC, "CDC::FrameRect()", [&](auto& context) {
        const vm::SavedState saved(context);
        context.SetStrokeColor(PlatformColor(PenRecord()->elpColor));
        StrokeInside(context, *rect);
    });
}

void CDC::EraseRect(const tagRECT* rect) {
    if (!rect) return;
    vm::WithContext(m_hDC, "CDC::EraseRect()",
                    [&](auto& context) { context.ClearRect(vm::ToRectF(*rect)); });
}

void CDC::InvertRect(const tagRECT*) {}

BOOL CDC::Ellipse(int left, int top, int right, int bottom) {
    const CRect rect(left, top, right, bottom);
    return vm::WithContext(m_hDC, "CDC::Ellipse()", BOOL{FALSE}, [&](auto& context) -> BOOL {
        UseBrush(context);
        context.FillEllipse(vm::ToRectF(rect));
        if (!m_hPen || PenRecord()->elpPenStyle != PS_SOLID) return TRUE;
        UsePen(context);
        context.StrokeEllipse(vm::ToRectF(rect));
        return TRUE;
    });
}

BOOL CDC::Ellipse(const tagRECT* rect) {
    return rect ? Ellipse(rect->left, rect->top, rect->right, rect->bottom) : FALSE;
}

// Angles in single precision: a host's pictures depend on where the arc ends exactly.
BOOL CDC::Arc(int left, int top, int right, int bottom, int x1, int y1, int x2, int y2) {
    return vm::WithContext(m_hDC, "CDC::Arc()", BOOL{FALSE}, [&](auto& context) -> BOOL {
        const double width = double{0} + right - left, height = double{0} + bottom - top;
        const float radius = static_cast<float>(std::min(width, height)) / 2;
        const float x = static_cast<float>(left) + radius;
        const float y = static_cast<float>(top) + radius;
        const float start = std::atan2(static_cast<float>(y1) - y, static_cast<float>(x1) - x);
        const float end = std::atan2(static_cast<float>(y2) - y, static_cast<float>(x2) - x);
        UsePen(context);
        context.StrokeArc(QPointF(x, y), radius, start, end);
        return TRUE;
    });
}

BOOL CDC::Arc(const tagRECT* rect, tagPOINT start, tagPOINT end) {
    if (!rect) return FALSE;
    return Arc(rect->left, rect->top, rect->right, rect->bottom, start.x, start.y, end.x, end.y);
}

BOOL CDC::RoundRect(int left, int top, int right, int bottom, int width, int height) {
    const QRectF rect = vm::ToRectF(CRect(left, top, right, bottom)).normalized();
    return vm::WithContext(m_hDC, "CDC::RoundRect()", BOOL{FALSE}, [&](auto& context) -> BOOL {
        const int pen = m_hPen ? LOWORD(PenRecord()->elpWidth) : 0;
        const double inset = pen > 1 ? pen : 0;
        const double across = std::min(width, height);
        UseBrush(context);
        const QRectF inside = rect.adjusted(inset, inset, -inset, -inset);
        if (m_hBrush && BrushRecord()->lbStyle != BS_NULL && inside.isValid())
            context.FillRoundRect(inside, across - 2 * inset);
        UsePen(context);
        if (m_hPen) context.StrokeRoundRect(rect, across);
        return TRUE;
    });
}

BOOL CDC::RoundRect(const tagRECT* rect, tagPOINT corner) {
    if (!rect) return FALSE;
    return RoundRect(rect->left, rect->top, rect->right, rect->bottom, corner.x, corner.y);
}

COLORREF CDC::SetPixel(int x, int y, COLORREF color) {
    vm::WithContext(m_hDC, "CDC::SetPixel()", [&](auto& context) {
        context.SetFillColor(PlatformColor(color));
        context.FillRect(QRectF(x, y, 1, 1));
    });
    return 0;
}

COLORREF CDC::GetPixel(int, int) const {
    return 0;
}

BOOL CDC::DrawIcon(int, int, HICON) {
    return FALSE;
}

void CDC::DrawFocusRect(const tagRECT* rect) {
    if (!rect) return;
    vm::WithContext(m_hDC, "CDC::DrawFocusRect()", [&](auto& context) {
        context.StrokeRect(vm::ToRectF(*rect).adjusted(-1, -1, 1, 1), context.LineWidth());
    });
}

BOOL CDC::ScrollDC(int, int, const tagRECT*, const tagRECT*, CRgn*, tagRECT*) {
    vm::ShowMessageBox(
        nullptr, "Currently not used and not defined in CGContext - need to use HIViewScrollRect",
        "Msg", 0);
    return FALSE;
}

BOOL CDC::FillRgn(CRgn* region, CBrush* brush) {
    const tagLOGBRUSH* const record = RecordOf(brush);
    if (!region || !record) return FALSE;
    return vm::WithContext(m_hDC, "CDC::FillRgn()", BOOL{FALSE}, [&](auto& context) -> BOOL {
        const vm::SavedState saved(context);
        context.SetFillColor(PlatformColor(record->lbColor));
        vm::FillRegion(context, *region);
        return TRUE;
    });
}

// As for FrameRect: twice the width, and the outer half is clipped away.
BOOL CDC::FrameRgn(CRgn* region, CBrush* brush, int width, int) {
    const tagLOGBRUSH* const record = RecordOf(brush);
    if (!region || !record) return FALSE;
    return vm::WithContext(m_hDC, "CDC::FrameRgn()", BOOL{FALSE}, [&](auto& context) -> BOOL {
        const vm::SavedState saved(context);
        vm::ClipToRegion(context, *region);
        context.SetStrokeColor(PlatformColor(record->lbColor));
        vm::StrokeRegion(context, *region, 2.0 * std::max(width, 1));
        return TRUE;
    });
}
