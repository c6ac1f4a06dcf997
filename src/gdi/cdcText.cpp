// Text drawing and measuring.
#include "gdi/cdc.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "core/truncate.h"
#include "gdi/faceRules.h"

namespace {

constexpr double kMeasuringLine = 20; // as if the text were shown there, in no colour

std::string_view View(const char* text, int count) {
    return {text, static_cast<std::size_t>(vm::TextLength(text, count))};
}

int MeasuredWidth(const vm::GraphicsContext& context, std::string_view text) {
    return context.Font() ? vm::Truncated(context.Font()->Width(text)) : 0;
}

QRectF WidenedToWhole(const QRectF& rect) {
    return {QPointF(std::floor(rect.left()), std::floor(rect.top())),
            QPointF(std::ceil(rect.right()), std::ceil(rect.bottom()))};
}

vm::FontMetrics MetricsOf(const vm::FontFace* face) {
    return face ? face->Metrics() : vm::FontMetrics();
}

} // namespace

const vm::FontFace* CDC::SelectedFace() const {
    if (const tagFONTRECORD* record = FontRecord()) {
        if (record->font) return record->font;
        if (auto* face = vm::FontFace::Find(record->lfFaceName, std::abs(record->lfHeight)))
            return face;
    }
    return m_hDC ? m_hDC->Font() : nullptr;
}

void CDC::TextPos(int x, int y, const char* text, int count) {
    vm::WithContext(m_hDC, "CDC::TextPos()",
                    [&](auto& context) { PlaceText(context, x, y, View(text, count)); });
}

void CDC::PlaceText(vm::GraphicsContext& context, int x, int y, std::string_view text) {
    if (m_textAlign & TA_UPDATECP) {
        x = m_x;
        y = m_y;
    }
    const vm::FontMetrics metrics = MetricsOf(SelectedFace());
    const double left = vm::AlignedX(x, MeasuredWidth(context, text), m_textAlign);
    TextAdjustY(y, m_faceNumber, static_cast<int>(metrics.ascender));
    context.SetTextPosition(QPointF(left, vm::AlignedY(y, metrics, m_textAlign)));
}

// In the opaque mode the cells of the text are painted first, in whole pixels.
void CDC::ShowPlaced(vm::GraphicsContext& context, std::string_view text) {
    if (m_bkMode == OPAQUE && context.Font()) {
        const vm::FontMetrics& metrics = context.Font()->Metrics();
        const QPointF at = context.TextPosition();
        const QRectF cell(at.x(), at.y() - metrics.ascender, context.Font()->Width(text),
                          metrics.ascender - metrics.descender);
        context.SetFillColor(m_bkWinColor.GetPlatformColor());
        context.FillRect(WidenedToWhole(cell));
    }
    context.SetFillColor(m_textWinColor.GetPlatformColor());
    context.ShowText(text);
}

void CDC::ShowAligned(vm::GraphicsContext& context, int x, int y, std::string_view text) {
    const vm::SavedState saved(context);
    PlaceText(context, x, y, text);
    ShowPlaced(context, text);
    if (m_textAlign & TA_UPDATECP) m_x = vm::Truncated(context.TextPosition().x());
}

BOOL CDC::TextOut(int x, int y, const char* text, int count) {
    const std::string_view bytes = View(text, count);
    if (bytes.empty()) return FALSE;
    return vm::WithContext(m_hDC, "CDC::TextOut()", BOOL{FALSE}, [&](auto& context) -> BOOL {
        ShowAligned(context, x, y, bytes);
        return TRUE;
    });
}

BOOL CDC::TextOut(int x, int y, const CString& text) {
    return TextOut(x, y, static_cast<const char*>(text), text.GetLength());
}

BOOL CDC::ExtTextOut(int x, int y, unsigned int options, const tagRECT* rect, const char* text,
                     unsigned int count, int*) {
    if (!text) return FALSE;
    return vm::WithContext(m_hDC, "CDC::ExtTextOut()", BOOL{FALSE}, [&](auto& context) -> BOOL {
        const vm::SavedState saved(context);
        if (rect && (options & ETO_CLIPPED)) context.ClipToRect(vm::ToRectF(*rect));
        if (rect && (options & ETO_OPAQUE)) FillWith(context, *rect, m_bkColor);
        const std::string_view bytes = View(text, static_cast<int>(count));
        if (!bytes.empty()) ShowAligned(context, x, y, bytes);
        return TRUE;
    });
}

int CDC::DrawText(const char* text, int count, tagRECT* rect, unsigned int format) {
    if (!text || !rect) return 0;
    return vm::WithContext(m_hDC, "CDC::DrawText()", 0, [&](auto& context) {
        if (format & DT_CALCRECT) return Measure(context, View(text, count), *rect, format);
        const vm::SavedState saved(context);
        if (!(format & DT_NOCLIP)) context.ClipToRect(vm::ToRectF(*rect));
        return DrawLines(context, View(text, count), *rect, format);
    });
}

int CDC::DrawText(const CString& text, tagRECT* rect, unsigned int format) {
    return DrawText(static_cast<const char*>(text), text.GetLength(), rect, format);
}

namespace {

int HeightOf(int lines, const vm::FontMetrics& metrics) {
    return vm::Truncated(lines * vm::LineHeight(metrics));
}

} // namespace

// Returns the height of all lines.
int CDC::DrawLines(vm::GraphicsContext& context, std::string_view text, const tagRECT& rect,
                   unsigned int format) {
    const bool split = format & (DT_MULTILINE | DT_WORDBREAK);
    const vm::FontMetrics metrics = MetricsOf(SelectedFace());
    double y =
        split ? rect.top + metrics.ascender : vm::DrawTextY(rect, metrics, m_faceNumber, format);
    vm::TextLines lines(text, format, context.Font(), double{0} + rect.right - rect.left);
    int count = 0;
    for (std::string_view line; lines.Next(line); ++count) {
        const double x = vm::DrawTextX(rect, MeasuredWidth(context, line), format);
        context.SetTextPosition(QPointF(x, y));
        ShowPlaced(context, line);
        y += vm::LineHeight(metrics);
    }
    return HeightOf(count, metrics);
}

// The rectangle becomes as wide as the widest line and as high as all of them.
int CDC::Measure(vm::GraphicsContext& context, std::string_view text, tagRECT& rect,
                 unsigned int format) {
    vm::TextLines lines(text, format, context.Font(), double{0} + rect.right - rect.left);
    int count = 0, widest = 0;
    for (std::string_view line; lines.Next(line); ++count)
        widest = std::max(widest, MeasuredWidth(context, line));
    const int height = HeightOf(count, MetricsOf(SelectedFace()));
    rect.right = vm::Truncated(double(rect.left) + widest + 1); // widths are cut to whole pixels
    rect.bottom = vm::Truncated(double(rect.top) + height + 1);
    return height;
}

int CDC::TextWidth(HDC handle, const char* text, int count) {
    return vm::WithContext(handle, "CDC::TextWidth()", 0, [&](auto& context) {
        const double width = context.Font() ? context.Font()->Width(View(text, count)) : 0;
        context.SetTextPosition(QPointF(width, kMeasuringLine));
        return vm::Truncated(width);
    });
}

tagSIZE CDC::GetTextExtent(const char* text, int count) const {
    if (!m_hFont) return {text ? 12 * static_cast<LONG>(std::strlen(text)) : 0, 12};
    const tagFONTRECORD& font = *FontRecord();
    const std::int64_t characters = count, height = font.lfHeight;
    const std::int64_t width =
        font.lfWidth != 0 ? characters * font.lfWidth : characters * (height - 1) * 2 / 3;
    return {vm::Truncated(static_cast<double>(width)), font.lfHeight};
}

tagSIZE CDC::GetTextExtent(const CString& text) const {
    return GetTextExtent(static_cast<const char*>(text), text.GetLength());
}

// There are no text style objects beside the fonts: nothing is set.
int CDC::SetStyleAttribute(void*, unsigned int, unsigned int, const void*) {
    constexpr int kInvalidStyle = -8795;
    return kInvalidStyle;
}

BOOL CDC::GetTextMetrics(tagTEXTMETRIC* metrics) const {
    if (!metrics) return FALSE;
    return vm::Guarded(vm::LogModule::Gdi, "CDC::GetTextMetrics()", BOOL{FALSE}, [&]() -> BOOL {
        const vm::FontFace* const face = SelectedFace();
        if (!face) return FALSE;
        const int height = m_hFont ? FontRecord()->lfHeight : static_cast<int>(face->Size());
        *metrics = vm::TextMetricsOf(*face, height);
        return TRUE;
    });
}

void CDC::MyDrawText(HDC handle, CGRect) {
    vm::WithContext(handle, "CDC::MyDrawText()", [](auto& context) {
        const vm::SavedState saved(context);
        context.SetTextMode(vm::TextMode::Stroke);
        context.SetTextPosition(QPointF(40, 0));
        context.ShowText("Quartz 2D");
    });
}

// Drawing by handle keeps the context's own font: the temporary CDC would set its first one.
BOOL TextOut(HDC handle, int x, int y, const char* text, int count) {
    CDC dc;
    const vm::FontFace* const font =
        reinterpret_cast<std::uintptr_t>(handle) > 1 ? handle->Font() : nullptr;
    if (!dc.Attach(handle)) return FALSE;
    if (font) handle->SetFont(font);
    return dc.TextOut(x, y, text, count);
}

BOOL GetTextMetrics(HDC handle, tagTEXTMETRIC* metrics) {
    CDC dc;
    const vm::FontFace* const font =
        reinterpret_cast<std::uintptr_t>(handle) > 1 ? handle->Font() : nullptr;
    if (!dc.Attach(handle)) return FALSE;
    if (font) handle->SetFont(font);
    return dc.GetTextMetrics(metrics);
}
