// The records behind the GDI handles. A handle is a plain pointer to one of them: nothing in a
// record says of what kind it is, the object that owns it knows. All records are allocated zeroed.
#pragma once

#include <vmcore/core/geometry.h>
#include <vmcore/core/types.h>

namespace vm {
struct RegionRecord;
} // namespace vm

/// Pen styles. Only 0 and 5 draw as documented; every other value, also with the words below, draws
/// solid.
enum {
    PS_SOLID = 0,
    PS_DASH = 1,
    PS_DOT = 2,
    PS_DASHDOT = 3,
    PS_DASHDOTDOT = 4,
    PS_NULL = 5,
    PS_ENDCAP_FLAT = 0x200,
    PS_JOIN_MITER = 0x2000,
    PS_GEOMETRIC = 0x10000
};
/// Brush styles. 1 is also the style of a brush made from a bitmap.
enum { BS_SOLID = 0, BS_NULL = 1, BS_HOLLOW = 1 };
/// Modes of CRgn::CombineRgn.
enum { RGN_AND = 1, RGN_OR = 2, RGN_XOR = 3, RGN_DIFF = 4, RGN_COPY = 5 };
/// The numbers of GetStockObject.
enum {
    WHITE_BRUSH = 0,
    LTGRAY_BRUSH = 1,
    GRAY_BRUSH = 2,
    DKGRAY_BRUSH = 3,
    BLACK_BRUSH = 4,
    NULL_BRUSH = 5,
    HOLLOW_BRUSH = 5,
    WHITE_PEN = 6,
    BLACK_PEN = 7,
    NULL_PEN = 8,
    ANSI_VAR_FONT = 12,
    SYSTEM_FONT = 13
};

/// The argument of CPen::CreatePenIndirect.
struct tagLOGPEN {
    UINT lopnStyle;
    POINT lopnWidth; ///< x counts
    COLORREF lopnColor;
};

/// The pen record. elpNumEntries style entries follow from elpStyleEntry on.
struct tagEXTLOGPEN {
    DWORD elpPenStyle;
    DWORD elpWidth; ///< the stock pens hold two 16-bit values here: see GetStockObject
    UINT elpBrushStyle;
    COLORREF elpColor;
    std::uint64_t elpHatch;
    DWORD elpNumEntries;
    DWORD elpStyleEntry[1];
};

/// The brush record.
struct tagLOGBRUSH {
    UINT lbStyle;
    COLORREF lbColor;
    std::uint64_t lbHatch; ///< the pattern image (vm::Image*) of a brush made from a bitmap
};

enum { LF_FACESIZE = 32 };
struct tagLOGFONT {
    LONG lfHeight;
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    char lfFaceName[LF_FACESIZE];
};

/// The font record: what GetObject copies.
struct tagFONTRECORD : tagLOGFONT {
    vm::FontFace* font; ///< the platform font; null in the stock fonts and when there is none
};

/// The bitmap record.
struct tagBITMAP {
    LONG bmType;
    LONG bmWidth;
    LONG bmHeight;
    LONG bmWidthBytes;
    WORD bmPlanes;
    WORD bmBitsPixel;
    vm::Image* bmBits; ///< the platform image
};

struct tagTEXTMETRIC {
    LONG tmHeight;
    LONG tmAscent;
    LONG tmDescent;
    LONG tmInternalLeading;
    LONG tmExternalLeading;
    LONG tmAveCharWidth;
    LONG tmMaxCharWidth;
    LONG tmWeight;
    LONG tmOverhang;
    LONG tmDigitizedAspectX;
    LONG tmDigitizedAspectY;
    BYTE tmFirstChar;
    BYTE tmLastChar;
    BYTE tmDefaultChar;
    BYTE tmBreakChar;
    BYTE tmItalic;
    BYTE tmUnderlined;
    BYTE tmStruckOut;
    BYTE tmPitchAndFamily;
    BYTE tmCharSet;
};

using LOGPEN = tagLOGPEN;
using LPLOGPEN = tagLOGPEN*;
using EXTLOGPEN = tagEXTLOGPEN;
using LOGBRUSH = tagLOGBRUSH;
using LPLOGBRUSH = tagLOGBRUSH*;
using LOGFONT = tagLOGFONT;
using LPLOGFONT = tagLOGFONT*;
using BITMAP = tagBITMAP;
using TEXTMETRIC = tagTEXTMETRIC;
using LPTEXTMETRIC = tagTEXTMETRIC*;
