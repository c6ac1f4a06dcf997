#include "FontScale.h"

#include <algorithm>

namespace {

constexpr int kUsualHeight = 14;
constexpr int kSteps = 4; // of the whole

int s_quarters = kSteps;

} // namespace

void SetDesktopFont(int height) {
    s_quarters = std::max(kSteps, (height * kSteps + kUsualHeight / 2) / kUsualHeight);
}

int Scaled(int pixels) {
    return pixels * s_quarters / kSteps;
}

void SelectScaledFont(CDC& dc, CFont& font, int height, const char* face) {
    if (!font.GetSafeHandle())
        font.CreateFont(Scaled(height), 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, face);
    dc.SelectObject(&font);
}
