// Shared objects and colours of the system. Main thread only: the records are rewritten by each
// call.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/gdi/WinColor.h>
#include <vmcore/gdi/gdiobjects.h>

/// One of three shared records: a brush (0 to 5), a pen (6 to 8) or a font (12, 13). Every call
/// rewrites the record it returns: a second stock brush changes the first one's colour too, so
/// select a stock object at once. Any other index: message box "GetStockObject() - info on object
/// %d requested!", and null.
///
/// A stock pen's width holds two 16-bit ones (the null pen's is 0). Ellipses, arcs and outlines
/// read the low half and are 1 wide; the line ends of CDC::LineTo are computed with all 32 bits, so
/// that axis-aligned lines with a stock pen run off: draw lines with a pen of your own.
VM_API HGDIOBJ GetStockObject(int index);

/// The colours 0 to 13 of this library's own table. Any other index: message box "GetSysColor:
/// undefined color - %d", and 0.
VM_API COLORREF GetSysColor(int index);
/// The shared brush of the colour; each index has a record of its own. 0 to 19: the indices from 14
/// on are reported as by GetSysColor and black. Null for an index beyond that.
VM_API HBRUSH GetSysColorBrush(int index);

/// Whether the handle is one of the shared records: they are never freed.
VM_API BOOL isSystemObject(void* handle);

/// The colour space of all drawing. Made on first use, never freed.
VM_API CGColorSpaceRef GetColorSpaceRef();
