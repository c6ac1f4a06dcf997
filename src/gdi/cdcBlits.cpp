// Blits: all of them come down to one draw of a part of an image into a rectangle.
#include "gdi/cdc.h"

#include "gdi/blitRule.h"
#include "platform/Image.h"

namespace {

vm::Image* ImageOf(const CDC& source) {
    return source.m_hDC ? source.m_hDC->Bitmap() : nullptr;
}

QRgb KeyOf(COLORREF color) {
    return qRgb(GetRValue(color), GetGValue(color), GetBValue(color));
}

} // namespace

BOOL vm::DrawPart(GraphicsContext& context, const QImage& image, const BlitRects& asked) {
    const auto part = PartOnImage(asked, image.size());
    if (!part) return FALSE;
    context.DrawImage(image, part->target, part->source);
    return TRUE;
}

// Hosts test for the result: a view as the source is no error, but nothing can be read from it.
BOOL CDC::Blit(const char* operation, const vm::BlitRects& rects, const CDC* source) {
    if (!m_hDC || !source) return FALSE;
    if (m_contextKind == BorrowedContext && source->m_hDC && source->m_contextKind != BitmapContext)
        return TRUE;
    const vm::Image* const image = ImageOf(*source);
    if (!image) return FALSE;
    return vm::WithContext(m_hDC, operation, BOOL{FALSE}, [&](auto& context) -> BOOL {
        return vm::DrawPart(context, image->Pixels(), rects);
    });
}

BOOL CDC::BlitTransparent(const char* operation, const vm::BlitRects& rects, const CDC* source,
                          COLORREF key) {
    if (!m_hDC || !source || !source->m_hDC) return FALSE;
    if (source->m_contextKind != BitmapContext) return TRUE;
    vm::Image* const image = ImageOf(*source);
    if (!image) return FALSE;
    return vm::WithContext(m_hDC, operation, BOOL{FALSE}, [&](auto& context) -> BOOL {
        return vm::DrawPart(context, image->WithoutColor(KeyOf(key)), rects);
    });
}

BOOL CDC::BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                 unsigned int) {
    return Blit("CDC::BitBlt()",
                {QRectF(x, y, width, height), QRectF(sourceX, sourceY, width, height)}, source);
}

// The source is counted in the artwork's own pixels, two to a unit.
BOOL CDC::BitBltX2(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                   unsigned int) {
    return Blit("CDC::BitBlt()",
                {QRectF(x, y, width, height), QRectF(sourceX, sourceY, 2.0 * width, 2.0 * height)},
                source);
}

BOOL CDC::BitBltTransparent(int x, int y, int width, int height, CDC* source, int sourceX,
                            int sourceY, unsigned int key) {
    if (m_contextKind == BitmapContext) return FALSE;
    return BlitTransparent("CDC::BitBltTransparent()",
                           {QRectF(x, y, width, height), QRectF(sourceX, sourceY, width, height)},
                           source, key);
}

BOOL CDC::BitBltX2Transparent(int x, int y, int width, int height, CDC* source, int sourceX,
                              int sourceY, unsigned int key) {
    return BitBltTransparent(x, y, width, height, source, sourceX, sourceY, key);
}

BOOL CDC::StretchBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                     int sourceWidth, int sourceHeight, unsigned int) {
    return Blit("CDC::StretchBlt()",
                {QRectF(x, y, width, height), QRectF(sourceX, sourceY, sourceWidth, sourceHeight)},
                source);
}

BOOL CDC::StretchBltX2(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                       int sourceWidth, int sourceHeight, unsigned int rop) {
    return StretchBlt(x, y, width, height, source, sourceX, sourceY, sourceWidth, sourceHeight,
                      rop);
}

BOOL CDC::StretchBltTransparent(int x, int y, int width, int height, CDC* source, int sourceX,
                                int sourceY, int sourceWidth, int sourceHeight, unsigned int key) {
    return BlitTransparent(
        "CDC::StretchBltTransparent()",
        {QRectF(x, y, width, height), QRectF(sourceX, sourceY, sourceWidth, sourceHeight)}, source,
        key);
}

BOOL CDC::StretchBltX2Transparent(int x, int y, int width, int height, CDC* source, int sourceX,
                                  int sourceY, int sourceWidth, int sourceHeight,
                                  unsigned int key) {
    return StretchBltTransparent(x, y, width, height, source, sourceX, sourceY, sourceWidth,
                                 sourceHeight, key);
}
