// A colour as drawing uses it: components in 0..1 and the platform's form of them.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

namespace vm {
class ColorSpace;
} // namespace vm
using CGColorSpaceRef = vm::ColorSpace*; ///< opaque; see GetColorSpaceRef

class VM_API WinColor {
public:
    WinColor() = default; ///< opaque black
    explicit WinColor(COLORREF color) { SetColorRef(color); }

    void SetColorRef(COLORREF color); ///< alpha becomes 1
    /// Each component times 255, truncated and limited to 0..255; alpha does not count.
    COLORREF GetColorRef() const;
    void SetRGBColor(const RGBColor& color); ///< alpha becomes 1
    RGBColor GetRGBColor() const;
    void MakeTransparent(); ///< all four components 0

    /// 0xAARRGGBB, not premultiplied.
    std::uint32_t GetPlatformColor() const { return m_platformColor; }

    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

private:
    void Rebuild();

    std::uint32_t m_platformColor = 0xFF000000;
};
