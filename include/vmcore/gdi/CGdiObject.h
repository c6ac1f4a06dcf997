// The base of the GDI object classes: one handle, its kind, and whether the record is shared.
//
//     CPen pen(PS_SOLID, 1, RGB(200, 0, 0));
//     CPen* before = dc.SelectObject(&pen);
//     dc.MoveTo(10, 5);
//     dc.LineTo(20, 5);            // pixels 10..19 of row 5
//     dc.SelectObject(before);     // while `pen` still lives: the CDC keeps plain pointers
//
// Main thread only.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/gdi/gdiobjects.h>

/// The order of the fields is part of the binary interface.
class VM_API CGdiObject {
public:
    enum Kind : int { PenKind, BitmapKind, BrushKind, RegionKind, FontKind };

    CGdiObject();
    ~CGdiObject(); ///< as DeleteObject
    CGdiObject(const CGdiObject&) = delete;
    CGdiObject& operator=(const CGdiObject&) = delete;

    /// Takes the handle; what was there is not freed. A shared record (GetStockObject,
    /// GetSysColorBrush, the device context's temporary wrappers) is noted as not owned. TRUE.
    BOOL Attach(void* handle);
    /// The handle, which then belongs to the caller.
    void* Detach();
    /// Frees the record, unless it is shared or the application is about to quit (it has verified
    /// its close request: windows that still paint may hold the handle). FALSE when there is none.
    BOOL DeleteObject();

    void* GetSafeHandle() const { return m_hObject; }

    void* m_hObject;

protected:
    explicit CGdiObject(Kind kind);

    int m_kind;
    int m_notOwned;
};

/// Frees a record by its handle; shared records are left alone. The handle of a region belongs to
/// its CRgn. Hosts rely on calling this for the handles that Detach gave them. FALSE for null.
VM_API BOOL DeleteObject(HGDIOBJ handle);

/// Only for font records: when `size` is that of a font record (72), copies it and returns 72; else
/// 0, and nothing is copied. Hosts that ask for a pen's or a brush's record use the object.
VM_API int GetObject(HGDIOBJ handle, int size, void* out);
