// Bitmaps: a shared image in the bitmap record.
#pragma once

#include <vmcore/gdi/CGdiObject.h>

class CBitmap;

/// What the handle of a CBitmap points to.
struct tagBITMAPRECORD : tagBITMAP {
    CBitmap* owner; ///< the CBitmap that made the image
};

class VM_API CBitmap : public CGdiObject {
public:
    CBitmap();

    /// 0 when there is no bitmap or no `out`.
    int GetBitmap(tagBITMAP* out);

    operator HBITMAP() const { return m_hObject; }
};
