// System colours, their shared brushes, and the colour space.
#include <vmcore/gdi/syscolors.h>

#include <array>

#include <QtGui/QColorSpace>

#include "core/log.h"
#include "gdi/sharedRecords.h"
#include "platform/messagebox.h"

namespace vm {

/// What all colours are given in: the display's red, green and blue, taken as sRGB.
class ColorSpace {
public:
    QColorSpace space{QColorSpace::SRgb};
};

} // namespace vm

namespace {

constexpr std::array<COLORREF, 14> kColors = {0xFFFFFF, 0x000000, 0xC0C0C0, 0xFFFFFF, 0x808080,
                                              0x808080, 0x000000, 0xFFFFFF, 0x000000, 0xFFFFFF,
                                              0x404040, 0x000000, 0xFFFF00, 0xC0C0C0};

std::array<tagLOGBRUSH, 20> s_brushes{};

} // namespace

COLORREF GetSysColor(int index) {
    if (index >= 0 && index < static_cast<int>(kColors.size()))
        return kColors[static_cast<std::size_t>(index)];
    const std::string text = vm::Format("GetSysColor: undefined color - %d", index);
    vm::ShowMessageBox(nullptr, text.c_str(), "VM Core Errror", 0);
    return 0;
}

HBRUSH GetSysColorBrush(int index) {
    const COLORREF color = GetSysColor(index);
    if (index < 0 || index >= static_cast<int>(s_brushes.size())) return nullptr;
    tagLOGBRUSH& brush = s_brushes[static_cast<std::size_t>(index)];
    brush = {BS_SOLID, color, 0};
    return &brush;
}

BOOL isSystemObject(void* handle) {
    if (vm::IsStockRecord(handle)) return TRUE;
    for (const tagLOGBRUSH& brush : s_brushes)
        if (handle == &brush) return TRUE;
    return FALSE;
}

CGColorSpaceRef GetColorSpaceRef() {
    static auto* const s_space = new vm::ColorSpace;
    return s_space;
}
