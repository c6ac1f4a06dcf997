// Bitmaps: pixels with alpha in the bitmap record. They come from the artwork of the host's bundle, or
// start transparent and are drawn into through a memory context:
//
//     CBitmap sheet;
//     sheet.CreateCompatibleBitmap(&dc, 64, 16);
//     CDC memory;
//     memory.CreateCompatibleDC(&dc);
//     memory.SelectObject(&sheet);
//     memory.FillRect(CRect(0, 0, 16, 16), &green);        // into the bitmap, at once
//     dc.BitBlt(0, 0, 16, 16, &memory, 0, 0, SRCCOPY);
//
// Main thread only.
#pragma once

#include <vmcore/gdi/CGdiObject.h>

class CBitmap;
class CDC;

/// What the handle of a CBitmap points to.
struct tagBITMAPRECORD : tagBITMAP {
    CBitmap* owner; ///< the CBitmap that made a blank image; null for artwork
};

class VM_API CBitmap : public CGdiObject {
public:
    CBitmap();

    /// Transparent pixels, 32 bits each. 0 for a size below 1 and for more than 1 GB: the record is
    /// there with that size and has no image. What the object held before is deleted. `dc` is
    /// ignored.
    BOOL CreateCompatibleBitmap(CDC* dc, int width, int height);
    /// The same: planes, depth and bits are ignored, the bitmap is blank.
    BOOL CreateBitmap(int width, int height, unsigned int planes, unsigned int bitsPerPixel,
                      const void* bits);
    /// The file Bitmap_<id>.png of the bundle's resources. A missing file gives 1 and a bitmap
    /// without an image, which blits nothing; a broken one 0 and the same.
    BOOL LoadBitmap(unsigned int id);
    /// `name` stands for a number, as MAKEINTRESOURCE makes it.
    BOOL LoadBitmap(const char* name);

    /// 0 when there is no bitmap or no `out`.
    int GetBitmap(tagBITMAP* out);

    /// One shared CBitmap; the next call attaches another handle to the same object.
    static CBitmap* FromHandle(HBITMAP handle);

    operator HBITMAP() const { return m_hObject; }

private:
    tagBITMAPRECORD* NewBitmap();
    bool SetImage(tagBITMAPRECORD& record, vm::Image* image);
};

/// The types of LoadImage; only bitmaps are there.
enum { IMAGE_BITMAP = 0, IMAGE_ICON = 1, IMAGE_CURSOR = 2 };
/// Flags of LoadImage, all ignored.
enum { LR_DEFAULTCOLOR = 0, LR_LOADFROMFILE = 0x10, LR_LOADTRANSPARENT = 0x20 };
enum { LR_DEFAULTSIZE = 0x40, LR_CREATEDIBSECTION = 0x2000 };

/// The bitmap of CBitmap::LoadBitmap as a handle of the caller's, for CBitmap::Attach or DeleteObject.
/// Size and flags are ignored. While it loads, `instance` (null: the application's) is the current
/// resource handle. Null for a broken file, and, with the message box "LoadImage: request to load
/// undefined image type", for any other type.
VM_API HANDLE LoadImage(HINSTANCE instance, const char* name, unsigned int type, int width,
                        int height, unsigned int flags);
VM_API HBITMAP LoadBitmap(HINSTANCE instance, const char* name); ///< LoadImage of a bitmap
