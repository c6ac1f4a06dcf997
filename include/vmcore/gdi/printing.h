// The printing entry points. Nothing is printed: they are there so that ported programs build, and
// they answer that there is no printer. Only the size of the paper is known.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

struct tagDOCINFO {
    int cbSize;
    const char* lpszDocName;
    const char* lpszOutput;
    const char* lpszDatatype;
    DWORD fwType;
};
using DOCINFO = tagDOCINFO;

/// This library's own indices.
enum {
    PAPER_LEFT = 0,  ///< of the paper's edge from the first column that can be printed on, positive
    PAPER_TOP = 1,   ///< of its edge from the first row
    PAPER_WIDTH = 2, ///< from edge to edge
    PAPER_HEIGHT = 3
};

/// Message box "CreateDC - printing is not supported", caption "Msg"; null.
VM_API HDC CreateDC(const char* driver, const char* device, const char* output, const void* mode);
VM_API BOOL DeleteDC(HDC handle); ///< no effect; 0

VM_API int StartDoc(HDC handle, const DOCINFO* info); ///< no effect, and so below; 0
VM_API int EndDoc(HDC handle);
VM_API int StartPage(HDC handle);
VM_API int EndPage(HDC handle);
VM_API int Escape(HDC handle, int escape, int inputSize, const char* input, void* output);
VM_API int MacPageSetup();

/// The paper of the default page format (the user's locale says which) in points, 72 an inch, for
/// the indices above; 0 for any other. The context does not count.
VM_API int GetDeviceCaps(HDC handle, int index);
