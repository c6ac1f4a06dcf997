// Cards of regions.
#include "GalleryView.h"

namespace {

void AddStar(CRgn& region, int x, int y) {
    POINT points[] = {{x + 28, y},      {x + 36, y + 20}, {x + 57, y + 21}, {x + 41, y + 34},
                      {x + 46, y + 55}, {x + 28, y + 44}, {x + 10, y + 55}, {x + 15, y + 34},
                      {x, y + 21},      {x + 20, y + 20}};
    region.CreatePolygonRgn(points, 10, 1);
}

// One of the four kinds.
void AddShape(CRgn& region, int kind, int x, int y) {
    switch (kind) {
    case 0:
        region.CreateRectRgn(x, y + 4, x + 56, y + 52);
        break;
    case 1:
        region.CreateRoundRectRgn(x, y + 4, x + 56, y + 52, 20, 20);
        break;
    case 2:
        region.CreateEllipticRgn(x, y, x + 56, y + 56);
        break;
    default:
        AddStar(region, x, y);
    }
}

void Stripes(CDC& dc, const CRect& area) {
    CBrush blue(kBlue), pale(kPale);
    for (int x = area.left; x < area.right; x += 4)
        dc.FillRect(CRect(x, area.top, x + 4, area.bottom),
                    (x - area.left) / 4 % 2 ? &pale : &blue);
}

} // namespace

void DrawRegions(CDC& dc, const CRect& area) {
    CBrush green(kGreen), red(kRed);
    for (int kind = 0; kind < 4; ++kind) {
        const int x = area.left + 4 + 76 * kind;
        CRgn filled, clip;
        AddShape(filled, kind, x, area.top);
        dc.FillRgn(&filled, &green);
        dc.FrameRgn(&filled, &red, 1 + kind, 1);
        AddShape(clip, kind, x, area.top + 76);
        dc.GetClip();
        dc.SelectClipRgn(&clip);
        Stripes(dc, CRect(x, area.top + 70, x + 60, area.top + 140));
        dc.SetClip();
    }
}

void DrawCombinations(CDC& dc, const CRect& area) {
    const struct {
        int mode;
        const char* name;
    } modes[] = {{RGN_OR, "RGN_OR"},
                 {RGN_AND, "RGN_AND"},
                 {RGN_XOR, "RGN_XOR"},
                 {RGN_DIFF, "RGN_DIFF"},
                 {RGN_COPY, "RGN_COPY"}};
    CBrush blue(kBlue), yellow(kYellow);
    dc.SetTextColor(kInk);
    for (int i = 0; i < 5; ++i) {
        const int x = area.left + i % 3 * 104 + 8, y = area.top + i / 3 * 76;
        CRgn first, second, both;
        first.CreateEllipticRgn(x, y, x + 52, y + 52);
        second.CreateRectRgn(x + 26, y + 14, x + 82, y + 40);
        both.CombineRgn(&first, &second, modes[i].mode);
        dc.FillRgn(&both, i % 2 ? &yellow : &blue);
        Label(dc, x + 40, y + 56, modes[i].name);
    }
}
