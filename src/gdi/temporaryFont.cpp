#include "gdi/temporaryFont.h"

#include <cstring>

#include <vmcore/gdi/CFont.h>

namespace vm {
namespace {

constexpr BYTE kAnyPrecision = 0xE8;

// Made on first use and never freed: a window may ask until the process ends.
CFont& Shared() {
    static auto* const s_font = new CFont;
    return *s_font;
}

tagLOGFONT DefaultDescription() {
    tagLOGFONT description{};
    description.lfHeight = 12;
    description.lfWidth = 8;
    description.lfWeight = 400;
    description.lfOutPrecision = kAnyPrecision;
    description.lfClipPrecision = kAnyPrecision;
    description.lfQuality = kAnyPrecision;
    std::strcpy(description.lfFaceName, "Arial");
    return description;
}

} // namespace

CFont* TemporaryFont() {
    const tagLOGFONT description = DefaultDescription();
    Shared().CreateFontIndirect(&description);
    return &Shared();
}

void ClearTemporaryFont() {
    Shared().DeleteObject();
}

} // namespace vm
