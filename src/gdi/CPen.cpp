#include <vmcore/gdi/CPen.h>

#include <algorithm>

#include "core/log.h"
#include "gdi/records.h"
#include "platform/messagebox.h"

CPen::CPen() : CGdiObject(PenKind) {}

CPen::CPen(int style, int width, COLORREF color) : CPen() {
    CreatePen(style, width, color);
}

CPen::CPen(int style, int width, const tagLOGBRUSH* brush, int count, const unsigned int* entries)
    : CPen() {
    CreatePen(style, width, brush, count, entries);
}

BOOL CPen::CreatePen(int style, int width, COLORREF color) {
    DeleteObject();
    auto* record = vm::NewRecord<tagEXTLOGPEN>();
    if (!record) return FALSE;
    record->elpPenStyle = static_cast<DWORD>(style);
    record->elpWidth = static_cast<DWORD>(width);
    record->elpColor = color;
    return Attach(record);
}

BOOL CPen::CreatePen(int style, int width, const tagLOGBRUSH* brush, int count,
                     const unsigned int* entries) {
    if (width < 1) {
        vm::PrintError("Internal Error! CPen::CPen width < 1. Setting Width to 1\n");
        width = 1;
    }
    DeleteObject();
    const auto kept = static_cast<DWORD>(entries ? std::max(count, 0) : 0);
    auto* record = vm::NewRecord<tagEXTLOGPEN>(kept * sizeof(DWORD));
    if (!record) return FALSE;
    record->elpPenStyle = static_cast<DWORD>(style);
    record->elpWidth = static_cast<DWORD>(width);
    if (brush) {
        record->elpBrushStyle = brush->lbStyle;
        record->elpColor = brush->lbColor;
        record->elpHatch = brush->lbHatch;
    }
    record->elpNumEntries = kept;
    if (kept) std::copy_n(entries, kept, record->elpStyleEntry);
    return Attach(record);
}

// The style, not a count of entries, sizes the record: hosts that take the record apart find the
// room they always found.
BOOL CPen::CreatePenIndirect(tagLOGPEN* pen) {
    if (!pen) return FALSE;
    DeleteObject();
    auto* record = vm::NewRecord<tagEXTLOGPEN>(std::size_t{pen->lopnStyle} * sizeof(DWORD));
    if (!record) return FALSE;
    record->elpPenStyle = pen->lopnStyle;
    record->elpWidth = static_cast<DWORD>(pen->lopnWidth.x);
    record->elpColor = pen->lopnColor;
    return Attach(record);
}

int CPen::GetExtLogPen(tagEXTLOGPEN*) {
    vm::ShowMessageBox(nullptr, "CPen::GetExtLogPen() not defined or used in DV", "VM Core", 0);
    return 0;
}
