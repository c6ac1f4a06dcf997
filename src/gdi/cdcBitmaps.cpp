// Bitmaps selected into a memory context, and drawing into them.
#include "gdi/cdc.h"

#include <vmcore/gdi/CBitmap.h>

#include "platform/Image.h"

// The font that was selected before the bitmap is applied to its context, as the other objects are
// when they are used.
CBitmap* CDC::SelectObject(CBitmap* bitmap) {
    if (!bitmap || !bitmap->m_hObject) return nullptr;
    DeleteDC();
    auto& record = *static_cast<tagBITMAPRECORD*>(bitmap->m_hObject);
    m_contextKind = BitmapContext;
    m_imageSlot = &record.bmBits;
    if (record.bmType != 0 || !record.bmBits) return nullptr;
    m_hDC = record.bmBits->Context()->Retain();
    m_hDC->SetFont(vm::FirstFace());
    ApplyFont();
    return nullptr;
}

BOOL CDC::BeginDrawing() {
    return m_hDC && m_contextKind == BitmapContext;
}

// Drawing goes straight into the bitmap's pixels: there is nothing to hand over.
BOOL CDC::EndDrawing() {
    return BeginDrawing();
}

BOOL CDC::RefreshImage() {
    return BeginDrawing();
}

BOOL EndOffscreenWriting() {
    return 0;
}
