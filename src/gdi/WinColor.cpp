#include <vmcore/gdi/WinColor.h>

#include <algorithm>
#include <cmath>

namespace {

unsigned Byte(double component) {
    return static_cast<unsigned>(std::clamp(component * 255, 0.0, 255.0));
}

unsigned Nearest(double component) {
    return static_cast<unsigned>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
}

std::uint16_t Word(double component) {
    return static_cast<std::uint16_t>(std::lround(std::clamp(component, 0.0, 1.0) * 65535));
}

} // namespace

void WinColor::SetColorRef(COLORREF color) {
    red = GetRValue(color) / 255.0;
    green = GetGValue(color) / 255.0;
    blue = GetBValue(color) / 255.0;
    alpha = 1;
    Rebuild();
}

COLORREF WinColor::GetColorRef() const {
    return RGB(Byte(red), Byte(green), Byte(blue));
}

void WinColor::SetRGBColor(const RGBColor& color) {
    red = color.red / 65535.0;
    green = color.green / 65535.0;
    blue = color.blue / 65535.0;
    alpha = 1;
    Rebuild();
}

RGBColor WinColor::GetRGBColor() const {
    return {Word(red), Word(green), Word(blue)};
}

void WinColor::MakeTransparent() {
    red = green = blue = alpha = 0;
    Rebuild();
}

void WinColor::Rebuild() {
    m_platformColor =
        Nearest(alpha) << 24 | Nearest(red) << 16 | Nearest(green) << 8 | Nearest(blue);
}
