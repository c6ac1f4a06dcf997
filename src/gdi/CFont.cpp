#include <vmcore/gdi/CFont.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>

#include "gdi/records.h"
#include "platform/FontFace.h"

namespace {

tagFONTRECORD* RecordOf(const CFont& font) {
    return static_cast<tagFONTRECORD*>(font.m_hObject);
}

void SetFaceName(tagLOGFONT& font, const char* name) {
    std::memset(font.lfFaceName, 0, LF_FACESIZE);
    if (name) std::memcpy(font.lfFaceName, name, strnlen(name, LF_FACESIZE - 1));
}

// The sign does not count.
LONG Magnitude(LONG value) {
    return value < 0 ? -std::max(value, -std::numeric_limits<LONG>::max()) : value;
}

// What a record says of a platform font beside its size, name and slant.
constexpr LONG kDefaultWeight = 500;

} // namespace

CFont::CFont() : CGdiObject(FontKind) {}

BOOL CFont::CreateFont(int height, int width, int escapement, int orientation, int weight,
                       BYTE italic, BYTE underline, BYTE strikeOut, BYTE charSet, BYTE outPrecision,
                       BYTE clipPrecision, BYTE quality, BYTE pitchAndFamily,
                       const char* faceName) {
    tagLOGFONT font{height,        width,     escapement,     orientation, weight,
                    italic,        underline, strikeOut,      charSet,     outPrecision,
                    clipPrecision, quality,   pitchAndFamily, {}};
    SetFaceName(font, faceName);
    return CreateFontIndirect(&font);
}

BOOL CFont::CreateFontIndirect(const tagLOGFONT* font) {
    if (!font) return FALSE;
    auto* record = vm::NewRecord<tagFONTRECORD>();
    if (!record) return FALSE;
    static_cast<tagLOGFONT&>(*record) = *font;
    record->lfHeight = Magnitude(font->lfHeight);
    record->lfWidth = Magnitude(font->lfWidth);
    record->lfFaceName[LF_FACESIZE - 1] = '\0';
    DeleteObject();
    Attach(record);
    return CreateNSFont(record);
}

BOOL CFont::CreatePointFont(int pointSizeTenths, const char* face, CDC*) {
    tagLOGFONT font{};
    font.lfHeight = std::abs(pointSizeTenths / 10);
    font.lfWidth = font.lfHeight * 2 / 3;
    font.lfWeight = 500;
    font.lfQuality = 0xE8;
    SetFaceName(font, face);
    return CreateFontIndirect(&font);
}

BOOL CFont::CreateNSFont(tagLOGFONT* font) {
    tagFONTRECORD* const record = RecordOf(*this);
    if (!font || !record) return FALSE;
    const std::string_view name(font->lfFaceName, strnlen(font->lfFaceName, LF_FACESIZE));
    record->font = vm::FontFace::Find(name, Magnitude(font->lfHeight));
    return record->font != nullptr;
}

BOOL CFont::SetNSFont(tagLOGFONT* font, vm::FontFace* face) {
    if (!font || !face) return FALSE;
    if (!m_hObject) Attach(vm::NewRecord<tagFONTRECORD>());
    tagFONTRECORD* const record = RecordOf(*this);
    if (!record) return FALSE;
    tagLOGFONT filled{};
    filled.lfHeight = static_cast<LONG>(face->Size());
    filled.lfWeight = kDefaultWeight;
    filled.lfItalic = face->Metrics().italicAngle != 0;
    filled.lfUnderline = static_cast<BYTE>(face->Metrics().underlineThickness);
    SetFaceName(filled, face->Name().c_str());
    *font = filled;
    static_cast<tagLOGFONT&>(*record) = filled;
    record->font = face;
    return TRUE;
}

BOOL CFont::GetLogFont(tagLOGFONT* out) {
    if (!out || !m_hObject) return FALSE;
    *out = *RecordOf(*this);
    return TRUE;
}
