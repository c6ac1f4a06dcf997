// Image lists: bitmap handles in order. The bitmaps stay the caller's.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

namespace vm {
struct ImageListRecord;
} // namespace vm

using HIMAGELIST = vm::ImageListRecord*;

/// Flags of ImageList_Create, all ignored.
enum { ILC_COLOR = 0, ILC_MASK = 1, ILC_COLOR8 = 8, ILC_COLOR24 = 24, ILC_COLOR32 = 32 };

/// An empty list. Sizes, flags and counts are ignored.
VM_API HIMAGELIST ImageList_Create(int width, int height, unsigned int flags, int initial,
                                   int grow);
/// The index of the bitmap, which is not copied; -1 without a list. The mask is ignored.
VM_API int ImageList_Add(HIMAGELIST list, HBITMAP bitmap, HBITMAP mask);
VM_API int ImageList_GetImageCount(HIMAGELIST list); ///< 0 without a list
VM_API BOOL ImageList_Destroy(HIMAGELIST list);      ///< FALSE without a list

/// Owns one list.
class VM_API CImageList {
public:
    CImageList() noexcept = default;
    ~CImageList(); ///< destroys the list
    CImageList(const CImageList&) = delete;
    CImageList& operator=(const CImageList&) = delete;

    /// Takes the handle; what was there is not destroyed. FALSE for null.
    BOOL Attach(HIMAGELIST list);
    HIMAGELIST Detach(); ///< the handle, which then belongs to the caller
    HIMAGELIST GetSafeHandle() const { return m_hImageList; }

    HIMAGELIST m_hImageList = nullptr;
};
