// The device context: GDI drawing state over one platform graphics context.
//
//     int CMeter::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
//         if (message != WM_PAINT) return CWnd::MessageMap(message, wParam, lParam);
//         CPaintDC dc(this);
//         CBrush green(RGB(0, 160, 0));
//         dc.FillRect(CRect(0, 0, m_level, 8), &green);
//         dc.SetTextColor(RGB(64, 64, 64));
//         dc.TextOut(4, 12, "Level", 5);
//         return 1;
//     }
//
// Coordinates are pixels, the origin at the top left, y downwards; map modes are stored and
// ignored. Drawing always paints (there are no raster operations), pens are solid or nothing, and
// pixels cannot be read back.
//
// A call on a context that the platform refuses (none attached, its view gone) logs "exception at
// CDC::<operation>() - <name>" and returns its neutral value: 0 or FALSE. Main thread only. When an
// object that is selected is deleted, the stock black pen or white brush, or no font, takes its place.
#pragma once

#include <string_view>

#include <vmcore/core/CString.h>
#include <vmcore/core/export.h>
#include <vmcore/core/geometry.h>
#include <vmcore/core/types.h>
#include <vmcore/gdi/WinColor.h>
#include <vmcore/gdi/gdiobjects.h>

class CBitmap;
class CBrush;
class CFont;
class CGdiObject;
class CPen;
class CRgn;

namespace vm {
class GraphicsContext;
struct BlitRects;
} // namespace vm

enum { TRANSPARENT = 1, OPAQUE = 2 };
enum { R2_BLACK = 1, R2_NOT = 6, R2_XORPEN = 7, R2_COPYPEN = 13, R2_WHITE = 16 };
enum { MM_TEXT = 1 };
enum { BLACKONWHITE = 1, WHITEONBLACK = 2, COLORONCOLOR = 3, HALFTONE = 4 };
/// Raster operations, as hosts name them; every blit copies.
enum : unsigned int {
    SRCCOPY = 0x00CC0020,
    SRCPAINT = 0x00EE0086,
    SRCAND = 0x008800C6,
    SRCINVERT = 0x00660046,
    NOTSRCCOPY = 0x00330008,
    PATCOPY = 0x00F00021,
    BLACKNESS = 0x00000042,
    WHITENESS = 0x00FF0062
};
/// Text alignment: this library's own values. TA_BASELINE is the absence of TA_TOP and TA_BOTTOM.
enum {
    TA_BASELINE = 0,
    TA_RIGHT = 1,
    TA_LEFT = 2,
    TA_TOP = 4,
    TA_NOUPDATECP = 8,
    TA_CENTER = 16,
    TA_UPDATECP = 32,
    TA_BOTTOM = 64
};
/// ExtTextOut, this library's own values.
enum { ETO_CLIPPED = 1, ETO_OPAQUE = 2 };
/// DrawText, this library's own values. Text is a single line unless DT_MULTILINE or DT_WORDBREAK is
/// given; DT_BOTTOM and DT_VCENTER count for a single line. Other bits are ignored.
enum {
    DT_TOP = 0,
    DT_LEFT = 0,
    DT_SINGLELINE = 0,
    DT_RIGHT = 4,
    DT_CENTER = 8,
    DT_WORDBREAK = 0x10, ///< lines break at spaces to fit the rectangle's width
    DT_BOTTOM = 32,
    DT_VCENTER = 64,
    DT_NOCLIP = 0x100,
    DT_MULTILINE = 0x200,
    DT_CALCRECT = 0x400 ///< draws nothing: the rectangle becomes as wide and high as the text
};

/// The order of the virtual functions and of the fields is part of the binary interface.
class VM_API CDC {
public:
    /// Detached; the stock white brush and black pen selected, black on white.
    CDC();
    virtual ~CDC();
    /// Makes this a memory context, which draws nowhere until a bitmap is selected. 1.
    virtual BOOL CreateCompatibleDC(CDC* dc);
    /// Lets go of the context. 1.
    virtual BOOL DeleteDC();
    virtual COLORREF SetTextColor(COLORREF color); ///< the old colour
    /// 0 to 5 a stock brush, 6 to 8 a stock pen. The old object; for any other index, fonts
    /// included, null and the message box "CDC::SelectStockObject out of range selection".
    virtual CGdiObject* SelectStockObject(int index);
    virtual COLORREF SetBkColor(COLORREF color); ///< the old colour
    virtual int SetMapMode(int mode);            ///< stored only; the new mode
    virtual BOOL TextOut(int x, int y, const char* text, int count);
    virtual BOOL ExtTextOut(int x, int y, unsigned int options, const tagRECT* rect,
                            const char* text, unsigned int count, int* spacing);
    virtual int DrawText(const char* text, int count, tagRECT* rect, unsigned int format);
    virtual int SelectClipRgn(CRgn* region);
    virtual int IntersectClipRect(int left, int top, int right, int bottom);
    virtual int IntersectClipRect(const tagRECT* rect);
    virtual int GetClipBox(CRect* box);

    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;

    // --- Lifecycle
    /// Counts a reference to the context and prepares it: Arial 8, width 1, transparent background
    /// mode. 0 for the handle values 0 and 1.
    BOOL Attach(HDC handle);
    HDC Detach(); ///< gives the reference back
    /// One shared CDC; the next call attaches another handle to the same object.
    static CDC* FromHandle(HDC handle);
    HDC GetSafeHdc() const;
    /// TRUE for an offscreen context that a bitmap was selected into. What is drawn is in the bitmap
    /// at once, with these three calls or without them.
    BOOL BeginDrawing();
    BOOL EndDrawing();   ///< as BeginDrawing
    BOOL RefreshImage(); ///< as BeginDrawing

    // --- State. Setters return the old value where the comment does not say otherwise.
    COLORREF GetTextColor() const { return m_textColor; }
    COLORREF GetBkColor() const { return m_bkColor; }
    int SetBkMode(int mode); ///< the new mode. OPAQUE paints the background behind text
    int GetBkMode() const { return m_bkMode; }
    int SetROP2(int mode); ///< stored only; the new mode
    int GetROP2() const { return m_rop2; }
    int SetStretchBltMode(int mode); ///< stored only; the new mode
    int GetStretchBltMode() const { return m_stretchBltMode; }
    unsigned int SetTextAlign(unsigned int flags);
    unsigned int GetTextAlign() const { return m_textAlign; }
    void SetAlphaTransparency(int transparency); ///< 0 opaque to 255 invisible, for all drawing

    // --- Selection. Returns what was selected; null, and nothing changes, for null or an object
    // without a handle. A stock object that was selected comes back in one of three shared objects
    // (one for each kind), good for selecting it back.
    CPen* SelectObject(CPen* pen);
    CBrush* SelectObject(CBrush* brush);
    CFont* SelectObject(CFont* font);
    int SelectObject(CRgn* region);   ///< no effect; whether the region has a handle
    void* SelectObject(void* handle); ///< no effect; null
    /// The bitmap's pixels become what this memory context draws into and what blits from it show;
    /// what was attached or selected before is let go of first, the clip is the whole bitmap. Always
    /// null, never the bitmap before: deleting the CDC, DeleteDC and the next bitmap deselect. When
    /// the bitmap is deleted first, calls are logged with "DeadContext" and draw nothing.
    CBitmap* SelectObject(CBitmap* bitmap);
    /// For the library: as if neither had ever been selected.
    void Deselect(const void* record, const void* object);
    CFont* GetCurrentFont() const; ///< null without a font; a shared object for a bare handle

    // --- What the drawing calls do first
    void ApplyPen();
    /// A hollow brush leaves the fill colour as it was.
    void ApplyBrush();
    void ApplyFont();
    void ApplyTextColor();

    // --- Lines and shapes
    /// The text position, each coordinate cut to 16 bits: that is where the last MoveTo or text
    /// ended. LineTo does not move it, so that the point of the MoveTo before comes back after
    /// lines.
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(tagPOINT point) { return MoveTo(point.x, point.y); }
    /// Axis-aligned lines of two pixels and more leave out the end pixel and are whole pixels;
    /// others run from corner to corner. The line has the pen's colour, a null pen's too. TRUE.
    BOOL LineTo(int x, int y);
    BOOL LineTo(tagPOINT point) { return LineTo(point.x, point.y); }
    BOOL PolyDraw(const tagPOINT* points, const BYTE* types, int count); ///< no effect; TRUE
    /// Whole rectangle, right and bottom edge left out. Any brush fills with its colour.
    void FillRect(const tagRECT* rect, CBrush* brush);
    /// One pixel wide, inside the rectangle.
    void FrameRect(const tagRECT* rect, CBrush* brush);
    /// Filled with the selected brush object (not with a stock brush), framed one pixel wide in the
    /// pen's colour whatever its width and style.
    void Rectangle(const tagRECT* rect);
    void EraseRect(const tagRECT* rect);  ///< to transparent, black where all is opaque
    void InvertRect(const tagRECT* rect); ///< no effect
    /// With a hollow brush filled with the fill colour that was used last.
    BOOL Ellipse(int left, int top, int right, int bottom);
    BOOL Ellipse(const tagRECT* rect);
    /// A part of a circle against the clock, in the square at the rectangle's top left; nothing for a
    /// rectangle whose edges are the wrong way round.
    BOOL Arc(int left, int top, int right, int bottom, int x1, int y1, int x2, int y2);
    BOOL Arc(const tagRECT* rect, tagPOINT start, tagPOINT end);
    /// Round corners, as wide as the smaller of `width` and `height`. The outline has the pen's
    /// width and lies inside the rectangle; a hollow brush leaves the inside as it is.
    BOOL RoundRect(int left, int top, int right, int bottom, int width, int height);
    BOOL RoundRect(const tagRECT* rect, tagPOINT corner);
    COLORREF SetPixel(int x, int y, COLORREF color); ///< 0, not the colour
    COLORREF SetPixel(tagPOINT point, COLORREF color) { return SetPixel(point.x, point.y, color); }
    COLORREF GetPixel(int x, int y) const; ///< always 0
    COLORREF GetPixel(tagPOINT point) const { return GetPixel(point.x, point.y); }
    BOOL DrawIcon(int x, int y, HICON icon); ///< no effect; 0
    /// A frame around the rectangle in the line colour and width used last: neither dotted nor
    /// inverting, a second call does not take it away.
    void DrawFocusRect(const tagRECT* rect);
    /// Not supported: a message box says so. 0.
    BOOL ScrollDC(int dx, int dy, const tagRECT* scroll, const tagRECT* clip, CRgn* update,
                  tagRECT* updateRect);
    BOOL FillRgn(CRgn* region, CBrush* brush);
    /// A frame of `width` inside the region.
    BOOL FrameRgn(CRgn* region, CBrush* brush, int width, int height);

    // --- Blits from a memory context with a bitmap. The image is drawn upright with its alpha,
    // smoothed when its size changes; `rop` and the stretch mode do not count. Where the source
    // rectangle leaves the image, the target stays as it is. TRUE when something was drawn; FALSE
    // without a target context, a source or an image, for a width or height below 1, and when the
    // source rectangle lies outside the image. A view as the source draws nothing and gives TRUE.
    //
    //     CDC memory;
    //     memory.CreateCompatibleDC(&dc);
    //     memory.SelectObject(&m_artwork);
    //     dc.BitBlt(8, 8, 32, 32, &memory, 0, 0, SRCCOPY);
    BOOL BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                unsigned int rop);
    /// For artwork at twice the density: the source is counted in its own pixels, and (2 * width) x
    /// (2 * height) of them fill the target.
    BOOL BitBltX2(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                  unsigned int rop);
    /// Leaves out pixels that equal the colour `key` exactly: the last argument is no raster
    /// operation. Not into a bitmap: FALSE there.
    BOOL BitBltTransparent(int x, int y, int width, int height, CDC* source, int sourceX,
                           int sourceY, unsigned int key);
    /// The same call: the artwork is not halved.
    BOOL BitBltX2Transparent(int x, int y, int width, int height, CDC* source, int sourceX,
                             int sourceY, unsigned int key);
    BOOL StretchBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                    int sourceWidth, int sourceHeight, unsigned int rop);
    BOOL StretchBltX2(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                      int sourceWidth, int sourceHeight, unsigned int rop); ///< the same call
    BOOL StretchBltTransparent(int x, int y, int width, int height, CDC* source, int sourceX,
                               int sourceY, int sourceWidth, int sourceHeight, unsigned int key);
    BOOL StretchBltX2Transparent(int x, int y, int width, int height, CDC* source, int sourceX,
                                 int sourceY, int sourceWidth, int sourceHeight,
                                 unsigned int key); ///< the same call

    // --- Clipping. The clip only ever shrinks; the way back is GetClip before and SetClip after.
    void GetClip(); ///< saves the whole drawing state of the context, in spite of its name
    void SetClip(); ///< restores it
    int SetClipRect(CRect* rect);
    int SelectClipRgn(CRgn* region, int mode); ///< not supported: a message box says so. 0

    // --- Text: 8-bit, Roman encoding. Null text draws nothing.
    BOOL TextOut(int x, int y, const CString& text);
    int DrawText(const CString& text, tagRECT* rect, unsigned int format);
    /// Puts the text position where `text` starts by the alignment and the face's corrections.
    void TextPos(int x, int y, const char* text, int count);
    /// The measured width. The text position is at the end of the measured text afterwards.
    int TextWidth(HDC handle, const char* text, int count);
    /// An estimate from the font's record: width times count, or without a width two thirds of the
    /// height a character. Hosts' layouts rely on it; TextWidth measures.
    tagSIZE GetTextExtent(const char* text, int count) const;
    tagSIZE GetTextExtent(const CString& text) const;
    /// FALSE without any font. The weight is 500 whatever the font.
    BOOL GetTextMetrics(tagTEXTMETRIC* metrics) const;
    /// One pixel up or down for the two faces that hosts' layouts are matched to.
    static void TextAdjustY(int& y, int faceNumber, int ascender);
    /// No effect: the status that says that the style is invalid.
    int SetStyleAttribute(void* style, unsigned int tag, unsigned int size, const void* value);
    void MyDrawText(HDC handle, CGRect rect); ///< diagnostic: "Quartz 2D" in outline at (40, 0)

    HDC m_hDC;

protected:
    enum ContextKind : int { BorrowedContext, BitmapContext };

    int m_contextKind;
    unsigned int m_textAlign;
    int m_rop2;
    int m_stretchBltMode;
    int m_bkMode;
    int m_mapMode;
    COLORREF m_textColor;
    COLORREF m_bkColor;
    HFONT m_hFont;
    CFont* m_pFont;
    HBRUSH m_hBrush;
    CBrush* m_pBrush;
    HPEN m_hPen;
    CPen* m_pPen;
    int m_faceNumber;
    tagTEXTMETRIC m_metrics;
    int m_x;
    int m_y;
    vm::Image** m_imageSlot; ///< of the selected bitmap; never followed, it may be gone
    BYTE* m_pixelBuffer;     ///< owned
    std::size_t m_pixelBufferSize;
    CGColorSpaceRef m_colorSpace;
    WinColor m_textWinColor;
    WinColor m_bkWinColor;
    WinColor m_penWinColor;
    WinColor m_brushWinColor;
    WinColor m_transparent; ///< of null pens
    BYTE m_flag;

private:
    void LetGo();
    BOOL Blit(const char* operation, const vm::BlitRects& rects, const CDC* source);
    BOOL BlitTransparent(const char* operation, const vm::BlitRects& rects, const CDC* source,
                         COLORREF key);
    void ResetColors();
    void UsePen(vm::GraphicsContext& context);
    void UseBrush(vm::GraphicsContext& context);
    void FillWith(vm::GraphicsContext& context, const tagRECT& rect, COLORREF color);
    void StrokeInside(vm::GraphicsContext& context, const tagRECT& rect);
    void PlaceText(vm::GraphicsContext& context, int x, int y, std::string_view text);
    void ShowPlaced(vm::GraphicsContext& context, std::string_view text);
    void ShowAligned(vm::GraphicsContext& context, int x, int y, std::string_view text);
    int DrawLines(vm::GraphicsContext& context, std::string_view text, const tagRECT& rect,
                  unsigned int format);
    int Measure(vm::GraphicsContext& context, std::string_view text, tagRECT& rect,
                unsigned int format);
    const vm::FontFace* SelectedFace() const;
    tagFONTRECORD* FontRecord() const { return static_cast<tagFONTRECORD*>(m_hFont); }
    tagEXTLOGPEN* PenRecord() const { return static_cast<tagEXTLOGPEN*>(m_hPen); }
    tagLOGBRUSH* BrushRecord() const { return static_cast<tagLOGBRUSH*>(m_hBrush); }
};

/// The operations on a handle, through a temporary CDC.
VM_API BOOL TextOut(HDC handle, int x, int y, const char* text, int count);
VM_API BOOL GetTextMetrics(HDC handle, tagTEXTMETRIC* metrics);

/// Lets go of what the three shared objects of SelectObject hold. For the library's shutdown.
VM_API void CDCGdiCleanup();
/// Whether `object` is one of the three.
VM_API BOOL isSystemDCObject(void* object);

VM_API BOOL EndOffscreenWriting(); ///< no effect; 0
