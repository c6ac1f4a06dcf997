// Pictures in dialogs: on Windows a control takes the size of its picture, unless its style says otherwise.
#include <algorithm>
#include <cstdlib>
#include <optional>

#include "rc/winStyles.h"
#include "rc/writeDialog.h"

namespace vm::rc {
namespace {

using namespace win;

constexpr int kIconWidth = 21; // units of 32 pixels in the font of every dialog
constexpr int kIconHeight = 20;

struct Units {
    int cx = 0;
    int cy = 0;
};

unsigned NumberAt(const std::string& bytes, std::size_t at) {
    unsigned number = 0;
    for (std::size_t i = at; i < at + 4; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes[i]);
    return number;
}

// Six pixels are four units across, thirteen are eight down.
std::optional<Units> UnitsOf(const std::string& png) {
    constexpr std::size_t kWidthAt = 16, kHeightAt = 20;
    if (png.size() < kHeightAt + 4) return std::nullopt;
    const auto across = static_cast<int>(std::min(NumberAt(png, kWidthAt), 0xFFFFu));
    const auto down = static_cast<int>(std::min(NumberAt(png, kHeightAt), 0xFFFFu));
    return Units{(across * 4 + 5) / 6, (down * 8 + 12) / 13};
}

std::optional<Units> OwnSize(const Control& control, const Output& output) {
    if ((control.style & kSsTypes) == kIcon) return Units{kIconWidth, kIconHeight};
    for (const OutputFile& file : output.files)
        if (file.name == PictureFile(*control.image)) return UnitsOf(file.bytes);
    return std::nullopt;
}

// An icon in the middle of its control is not scaled to it.
void CenterIcon(Rect& rect) {
    const int right = std::max(rect.cx - kIconWidth, 0), down = std::max(rect.cy - kIconHeight, 0);
    rect = {rect.x + right / 2, rect.y + down / 2, rect.cx - right, rect.cy - down};
}

// Scripts hold the size that the editor showed, rounded.
bool IsAbout(int units, int others) {
    return std::abs(units - others) <= 1;
}

void TakeSize(Rect& rect, Units size, bool keepsEnd) {
    if (IsAbout(rect.cx, size.cx)) size.cx = rect.cx;
    if (IsAbout(rect.cy, size.cy)) size.cy = rect.cy;
    if (keepsEnd) rect = {rect.x + rect.cx - size.cx, rect.y + rect.cy - size.cy, 0, 0};
    rect.cx = size.cx;
    rect.cy = size.cy;
}

void PlacePicture(Control& control, const Output& output) {
    Rect& rect = control.rect;
    if (rect.cx <= 0) rect.cx = kIconWidth;
    if (rect.cy <= 0) rect.cy = kIconHeight;
    if (control.style & kSsRealSize) return;
    const bool isIcon = (control.style & kSsTypes) == kIcon;
    if (control.style & kSsCenterImage) return isIcon ? CenterIcon(rect) : void();
    const std::optional<Units> size = OwnSize(control, output);
    if (size) TakeSize(rect, *size, (control.style & kSsRightJust) != 0);
}

bool ShowsPicture(const Control& control) {
    const Style type = control.style & kSsTypes;
    return control.windowClass == "static" && control.image && (type == kIcon || type == kBitmap);
}

} // namespace

void PlacePictures(std::vector<Control>& controls, const Output& output) {
    for (Control& control : controls)
        if (ShowsPicture(control)) PlacePicture(control, output);
}

void NotePictures(const std::vector<Control>& controls, std::vector<Widget>& widgets,
                  const Output& output) {
    for (std::size_t i = 0; i < widgets.size(); ++i) {
        const Control& control = controls[i];
        if (!ShowsPicture(control) || !control.image->number) continue;
        const std::string file = PictureFile(*control.image);
        if (!output.Has(file)) widgets[i].Note(file + " is not made from this script");
    }
}

} // namespace vm::rc
