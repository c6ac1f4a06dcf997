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

class CBitmap;

/// Owns one list.
///
///     CImageList images;
///     images.Create(16, 16, ILC_COLOR32, 2, 1);
///     images.Add(&folder);                              // a CBitmap that outlives its use
///     tree.SetImageList(&images, TVSIL_NORMAL);
class VM_API CImageList {
public:
    CImageList() noexcept = default;
    ~CImageList(); ///< destroys the list
    CImageList(const CImageList&) = delete;
    CImageList& operator=(const CImageList&) = delete;

    /// As ImageList_Create, in place of the list that is there, which is destroyed. TRUE.
    BOOL Create(int width, int height, unsigned int flags, int initial, int grow);
    /// As ImageList_Add: one image, however wide the bitmap is. Masks are ignored, pixels have their own
    /// alpha. -1 without a list and for a bitmap without a handle.
    int Add(const CBitmap* bitmap, const CBitmap* mask = nullptr);
    int Add(const CBitmap* bitmap, COLORREF mask);
    int GetImageCount() const { return ImageList_GetImageCount(m_hImageList); }
    BOOL DeleteImageList(); ///< FALSE without a list

    /// Takes the handle; what was there is not destroyed. FALSE for null.
    BOOL Attach(HIMAGELIST list);
    HIMAGELIST Detach(); ///< the handle, which then belongs to the caller
    HIMAGELIST GetSafeHandle() const { return m_hImageList; }

    HIMAGELIST m_hImageList = nullptr;
};
