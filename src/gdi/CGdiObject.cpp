// The handle model common to all GDI objects.
#include <vmcore/gdi/CGdiObject.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <vmcore/gdi/CDC.h>
#include <vmcore/gdi/syscolors.h>

#include "gdi/imageOwners.h"
#include "gdi/selection.h"
#include "gdi/shutdown.h"

static_assert(sizeof(tagEXTLOGPEN) == 32 && offsetof(tagEXTLOGPEN, elpHatch) == 16);
static_assert(sizeof(tagLOGBRUSH) == 16 && offsetof(tagLOGBRUSH, lbHatch) == 8);
static_assert(sizeof(tagLOGFONT) == 60 && offsetof(tagLOGFONT, lfFaceName) == 28);
static_assert(sizeof(tagFONTRECORD) == 72);
static_assert(sizeof(CGdiObject) == 16);

namespace {

bool IsShared(void* handle) {
    return isSystemObject(handle) || isSystemDCObject(handle);
}

// Windows that still paint while the application quits may hold the handle.
void FreeRecord(void* record) {
    if (IsShared(record) || vm::CloseRequestVerified()) return;
    vm::ReleaseImageOf(record);
    std::free(record);
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
    FreeRecord(record);
    return TRUE;
}

BOOL DeleteObject(HGDIOBJ handle) {
    if (!handle) return FALSE;
    if (!IsShared(handle)) vm::Deselect(handle, nullptr);
    FreeRecord(handle);
    return TRUE;
}

int GetObject(HGDIOBJ handle, int size, void* out) {
    if (!handle || !out || size != static_cast<int>(sizeof(tagFONTRECORD))) return 0;
    std::memcpy(out, handle, sizeof(tagFONTRECORD));
    return size;
}
