#include <vmcore/gdi/CBrush.h>

#include <vmcore/gdi/CBitmap.h>

#include "gdi/imageOwners.h"
#include "gdi/records.h"
#include "platform/Image.h"

CBrush::CBrush() : CGdiObject(BrushKind) {}

CBrush::CBrush(COLORREF color) : CBrush() {
    CreateSolidBrush(color);
}

CBrush::CBrush(CBitmap* bitmap) : CBrush() {
    auto* record = vm::NewRecord<tagLOGBRUSH>();
    if (!record) return;
    record->lbStyle = BS_NULL;
    const auto* source = bitmap ? static_cast<tagBITMAPRECORD*>(bitmap->m_hObject) : nullptr;
    if (source && source->bmBits) {
        vm::Image* const pattern = source->bmBits->Copy();
        vm::GiveImage(record, pattern);
        record->lbHatch = reinterpret_cast<std::uintptr_t>(pattern);
    }
    Attach(record);
}

BOOL CBrush::CreateSolidBrush(COLORREF color) {
    if (!m_hObject) Attach(vm::NewRecord<tagLOGBRUSH>());
    if (!m_hObject) return FALSE;
    auto* record = static_cast<tagLOGBRUSH*>(m_hObject);
    record->lbStyle = BS_SOLID;
    record->lbColor = color;
    return TRUE;
}

int CBrush::GetLogBrush(tagLOGBRUSH* out) {
    if (!out || !m_hObject) return 0;
    *out = *static_cast<tagLOGBRUSH*>(m_hObject);
    return sizeof(tagLOGBRUSH);
}
