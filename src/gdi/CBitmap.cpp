#include <vmcore/gdi/CBitmap.h>

CBitmap::CBitmap() : CGdiObject(BitmapKind) {}

int CBitmap::GetBitmap(tagBITMAP* out) {
    if (!out || !m_hObject) return 0;
    *out = *static_cast<tagBITMAPRECORD*>(m_hObject);
    return sizeof(tagBITMAP);
}
