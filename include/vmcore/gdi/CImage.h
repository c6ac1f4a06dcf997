// An image for alpha-blended artwork, drawn straight into a context handle.
//
//     CImage glow;
//     if (glow.LoadFromResource(AfxGetInstanceHandle(), IDB_GLOW))
//         glow.AlphaBlend(dc.GetSafeHdc(), 10, 10, 128);
//
// Every form draws upright with the image's own alpha, smoothed when its size changes. FALSE, and
// nothing is drawn, for an empty image, a null handle, a context whose view has gone (which is logged),
// a width or height below 1 and a source rectangle outside the image. Main thread only.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/geometry.h>
#include <vmcore/core/types.h>
#include <vmcore/gdi/CDC.h>

enum : BYTE { AC_SRC_OVER = 0, AC_SRC_ALPHA = 1 };

class VM_API CImage {
public:
    CImage() noexcept = default;
    ~CImage() { Destroy(); }
    CImage(const CImage&) = delete;
    CImage& operator=(const CImage&) = delete;

    /// A PNG file. What the image held before is released in any case; E_FAIL, and the image is
    /// empty, when the file is missing or broken.
    HRESULT Load(const char* path);
    /// The file Bitmap_<id>.png of the bundle's resources; the instance is not looked at. FALSE, and
    /// the image is empty, when it is missing or broken.
    BOOL LoadFromResource(HINSTANCE instance, unsigned int id);
    void Destroy();
    BOOL IsNull() const { return m_image == nullptr; }

    int GetWidth() const; ///< 0 when empty, as the two below
    int GetHeight() const;
    int GetBPP() const;

    // A copy; the raster operation is ignored.
    BOOL BitBlt(HDC dc, int x, int y, DWORD rop = SRCCOPY) const;
    BOOL BitBlt(HDC dc, const POINT& at, DWORD rop = SRCCOPY) const;
    BOOL BitBlt(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY,
                DWORD rop = SRCCOPY) const;
    BOOL BitBlt(HDC dc, const RECT& target, const POINT& source, DWORD rop = SRCCOPY) const;

    // The same with a constant alpha, 255 for opaque. Afterwards the alpha of all drawing into the
    // context is that of opaque drawing, whatever it was (see CDC::SetAlphaTransparency). The blend
    // operation is ignored.
    BOOL AlphaBlend(HDC dc, int x, int y, BYTE alpha = 255, BYTE operation = AC_SRC_OVER) const;
    BOOL AlphaBlend(HDC dc, const POINT& at, BYTE alpha = 255, BYTE operation = AC_SRC_OVER) const;
    BOOL AlphaBlend(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY,
                    int sourceWidth, int sourceHeight, BYTE alpha = 255,
                    BYTE operation = AC_SRC_OVER) const;
    BOOL AlphaBlend(HDC dc, const RECT& target, const RECT& source, BYTE alpha = 255,
                    BYTE operation = AC_SRC_OVER) const;

private:
    BOOL Draw(HDC dc, const vm::BlitRects& rects) const;
    BOOL Blend(HDC dc, const vm::BlitRects& rects, BYTE alpha) const;
    vm::BlitRects WholeAt(int x, int y) const;

    vm::Image* m_image = nullptr;
};
