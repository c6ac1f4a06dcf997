// The handle model common to all GDI objects.
#include <vmcore/gdi/CGdiObject.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <vmcore/gdi/CBitmap.h>
#include <vmcore/gdi/CDC.h>
#include <vmcore/gdi/syscolors.h>

#include "gdi/selection.h"
#include "gdi/shutdown.h"
#include "platform/Image.h"

static_assert(sizeof(tagEXTLOGPEN) == 32 && offsetof(tagEXTLOGPEN, elpHatch) == 16);
static_assert(sizeof(tagLOGBRUSH) == 16 && offsetof(tagLOGBRUSH, lbHatch) == 8);
static_assert(sizeof(tagLOGFONT) == 60 && offsetof(tagLOGFONT, lfFaceName) == 28);
static_assert(sizeof(tagFONTRECORD) == 72 && sizeof(tagBITMAPRECORD) == 40);
static_assert(sizeof(CGdiObject) == 16);

namespace {

bool IsShared(void* handle) {
    return isSystemObject(handle) || isSystemDCObject(handle);
}

void ReleaseImage(vm::Image* image) {
    if (image) image->Release();
}

} // namespace

CGdiObject::CGdiObject() : CGdiObject(PenKind) {}

CGdiObject::CGdiObject(Kind kind) : m_hObject(nullptr), m_kind(kind), m_notOwned(0) {}

CGdiObject::~CGdiObject() {
    CGdiObject::DeleteObject();
    vm::Deselect(nullptr, this);
}

BOOL CGdiObject::Attach(void* handle) {
    m_hObject = handle;
    m_notOwned = IsShared(handle);
    return TRUE;
}

void* CGdiObject::Detach() {
    return std::exchange(m_hObject, nullptr);
}

// A platform font lives as long as the process, so that a font record has nothing to give back.
BOOL CGdiObject::DeleteObject() {
    if (!m_hObject) return FALSE;
    void* const record = Detach();
    if (m_kind == RegionKind || m_notOwned) return TRUE;
    vm::Deselect(record, this);
    if (m_kind == BitmapKind)
        ReleaseImage(std::exchange(static_cast<tagBITMAPRECORD*>(record)->bmBits, nullptr));
    if (m_kind == BrushKind) {
        auto& pattern = static_cast<tagLOGBRUSH*>(record)->lbHatch;
        ReleaseImage(reinterpret_cast<vm::Image*>(std::exchange(pattern, 0)));
    }
    if (!vm::CloseRequestVerified()) std::free(record);
    return TRUE;
}

BOOL DeleteObject(HGDIOBJ handle) {
    if (!handle) return FALSE;
    if (IsShared(handle)) return TRUE;
    vm::Deselect(handle, nullptr);
    if (!vm::CloseRequestVerified()) std::free(handle);
    return TRUE;
}

int GetObject(HGDIOBJ handle, int size, void* out) {
    if (!handle || !out || size != static_cast<int>(sizeof(tagFONTRECORD))) return 0;
    std::memcpy(out, handle, sizeof(tagFONTRECORD));
    return size;
}
