// The card of blits. The artwork is in Resources; one bitmap is drawn by the program itself.
#include "GalleryView.h"

#include <cmath>

namespace {

constexpr unsigned int kLandscape = 101; // 64 x 48, opaque
constexpr unsigned int kKnob = 102;      // 96 x 96, two pixels to a unit
constexpr unsigned int kIcons = 103;     // four of 24 x 24
constexpr unsigned int kFace = 104;      // 48 x 48 on the key colour
constexpr int kIconSize = 24;
constexpr int kKnobSize = 48;
constexpr COLORREF kKey = RGB(255, 0, 255);

// A bitmap and the memory context that it is the source of.
struct Picture {
    explicit Picture(unsigned int id) {
        bitmap.LoadBitmap(id);
        dc.SelectObject(&bitmap);
    }
    Picture(int width, int height) {
        bitmap.CreateCompatibleBitmap(nullptr, width, height);
        dc.SelectObject(&bitmap);
    }
    CBitmap bitmap;
    CDC dc;
};

void Checkered(CDC& dc, const CRect& area) {
    constexpr int kTile = 8;
    CBrush pale(kPale);
    for (int y = area.top; y < area.bottom; y += kTile)
        for (int x = area.left + (y - area.top) % (2 * kTile); x < area.right; x += 2 * kTile)
            dc.FillRect(CRect(x, y, x + kTile, y + kTile), &pale);
}

// A picture that fades to the right, in steps.
void DrawFading(CDC& dc, int x, int y) {
    CImage image;
    if (!image.LoadFromResource(AfxGetInstanceHandle(), kLandscape)) return;
    constexpr int kSteps = 4;
    const int width = image.GetWidth() / kSteps, height = image.GetHeight();
    for (int i = 0; i < kSteps; ++i) {
        const RECT part = {i * width, 0, (i + 1) * width, height};
        const RECT target = {x + part.left, y, x + part.right, y + height};
        image.AlphaBlend(dc.GetSafeHdc(), target, part, static_cast<BYTE>(255 - 64 * i));
    }
}

// A waveform that the program draws into the bitmap, before it is blitted.
void DrawScope(CDC& memory, int size) {
    CBrush dark(kInk), grid(RGB(52, 68, 96));
    CPen trace(PS_SOLID, 2, kYellow);
    memory.FillRect(CRect(0, 0, size, size), &dark);
    for (int i = 0; i <= size; i += size / 4) {
        memory.FillRect(CRect(i, 0, i + 1, size), &grid);
        memory.FillRect(CRect(0, i, size, i + 1), &grid);
    }
    memory.SelectObject(&trace);
    memory.MoveTo(0, size / 2);
    for (int x = 2; x <= size; x += 2)
        memory.LineTo(x, size / 2 - static_cast<int>(0.36 * size * std::sin(x * 6.2832 / size)));
    memory.SelectStockObject(BLACK_PEN);
}

void DrawUpperRow(CDC& dc, int left, int top) {
    constexpr int kWidth = 64, kHeight = 48, kStep = 77;
    Picture landscape(kLandscape), icons(kIcons);
    int x = left;
    dc.BitBlt(x, top, kWidth, kHeight, &landscape.dc, 0, 0, SRCCOPY);
    Label(dc, x + kWidth / 2, top + 52, "opaque");
    x += kStep;
    Checkered(dc, CRect(x, top, x + kWidth, top + kHeight));
    for (int i = 0; i < 4; ++i) // overlapping
        dc.BitBlt(x + 13 * i, top + 8 * (i % 2) + 8, kIconSize, kIconSize, &icons.dc, kIconSize * i,
                  0, SRCCOPY);
    Label(dc, x + kWidth / 2, top + 52, "parts, alpha");
    x += kStep;
    Checkered(dc, CRect(x, top, x + kWidth, top + kHeight));
    DrawFading(dc, x, top);
    Label(dc, x + kWidth / 2, top + 52, "AlphaBlend");
    x += kStep;
    dc.StretchBlt(x, top, 40, 30, &landscape.dc, 0, 0, kWidth, kHeight, SRCCOPY);
    dc.StretchBlt(x + 44, top, 20, 15, &landscape.dc, 0, 0, kWidth, kHeight, SRCCOPY);
    dc.StretchBlt(x + 44, top + 19, 8, 6, &landscape.dc, 0, 0, kWidth, kHeight, SRCCOPY);
    Label(dc, x + kWidth / 2, top + 52, "smaller");
}

void DrawLowerRow(CDC& dc, int left, int top) {
    constexpr int kSize = 48, kStep = 62;
    Picture landscape(kLandscape), knob(kKnob), face(kFace), scope(kSize, kSize);
    const auto place = [&](int column) { return left + kStep * column; };
    const auto label = [&](int column, const char* text) {
        Label(dc, place(column) + kSize / 2, top + 52, text);
    };
    dc.StretchBlt(place(0), top, kSize, kSize, &landscape.dc, 10, 24, 16, 16, SRCCOPY);
    label(0, "larger");
    dc.BitBltX2(place(1), top, kKnobSize, kKnobSize, &knob.dc, 0, 0, SRCCOPY);
    label(1, "X2");
    Checkered(dc, CRect(place(2), top, place(2) + kSize, top + kSize));
    dc.BitBltTransparent(place(2), top, kSize, kSize, &face.dc, 0, 0, kKey);
    label(2, "key");
    Checkered(dc, CRect(place(3), top, place(3) + kSize, top + kSize));
    dc.StretchBltTransparent(place(3) + 8, top + 8, 32, 32, &face.dc, 0, 0, kSize, kSize, kKey);
    label(3, "key, small");
    DrawScope(scope.dc, kSize);
    dc.BitBlt(place(4), top, kSize, kSize, &scope.dc, 0, 0, SRCCOPY);
    label(4, "drawn");
}

} // namespace

void DrawBlits(CDC& dc, const CRect& area) {
    dc.SetTextColor(kInk);
    DrawUpperRow(dc, area.left, area.top + 2);
    DrawLowerRow(dc, area.left, area.top + 78);
}
