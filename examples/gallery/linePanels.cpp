// Cards of pens, lines and shapes.
#include <cmath>
#include <string>

#include "GalleryView.h"

void DrawPens(CDC& dc, const CRect& area) {
    const struct {
        int style, width;
        COLORREF color;
        const char* name;
    } pens[] = {
        {PS_SOLID, 1, kInk, "1"},    {PS_SOLID, 2, kBlue, "2"},
        {PS_SOLID, 3, kGreen, "3"},  {PS_SOLID, 5, kRed, "5"},
        {PS_SOLID, 8, kYellow, "8"}, {PS_NULL, 1, kInk, "null pen: ellipse without outline"}};
    int y = area.top + 12;
    for (const auto& entry : pens) {
        CPen pen(entry.style, entry.width, entry.color);
        dc.SetTextColor(kInk);
        dc.TextOut(area.left, y - 6, entry.name, 0);
        dc.SelectObject(&pen);
        if (entry.style == PS_NULL) {
            CBrush brush(kPale);
            dc.SelectObject(&brush);
            dc.Ellipse(area.right - 90, y - 10, area.right - 40, y + 12);
            dc.SelectStockObject(WHITE_BRUSH);
        } else {
            dc.MoveTo(area.left + 20, y);
            dc.LineTo(area.left + 160, y);
            dc.MoveTo(area.left + 185, y - 9);
            dc.LineTo(area.right - 12, y + 6);
        }
        dc.SelectStockObject(BLACK_PEN);
        y += 24;
    }
}

void DrawLines(CDC& dc, const CRect& area) {
    CPen thin(PS_SOLID, 1, kInk), wide(PS_SOLID, 3, kBlue);
    const int cx = area.left + 66, cy = area.top + 70;
    dc.SelectObject(&thin);
    for (int i = 0; i < 24; ++i) { // a fan
        const double angle = i * 3.14159265 / 12;
        dc.MoveTo(cx + static_cast<int>(14 * std::cos(angle)),
                  cy + static_cast<int>(14 * std::sin(angle)));
        dc.LineTo(cx + static_cast<int>(62 * std::cos(angle)),
                  cy + static_cast<int>(62 * std::sin(angle)));
    }
    for (int i = 0; i < 6; ++i) { // a grid
        dc.MoveTo(area.left + 150 + 12 * i, area.top + 6);
        dc.LineTo(area.left + 150 + 12 * i, area.top + 67);
        dc.MoveTo(area.left + 150, area.top + 6 + 12 * i);
        dc.LineTo(area.left + 211, area.top + 6 + 12 * i);
    }
    dc.SelectObject(&wide); // a run of lines that go on where the last one ended
    dc.MoveTo(area.left + 150, area.top + 130);
    for (int i = 0; i < 6; ++i) {
        dc.LineTo(area.left + 150 + 12 * i, area.top + (i % 2 ? 130 : 90));
        dc.LineTo(area.left + 162 + 12 * i, area.top + (i % 2 ? 130 : 90));
    }
    CPen step(PS_SOLID, 1, kRed); // pixel by pixel
    dc.SelectObject(&step);
    for (int i = 0; i < 30; ++i)
        for (int k = 0; k < 30; k += 1 + i / 6)
            dc.SetPixel(area.left + 240 + 2 * k, area.top + 8 + 2 * i, k % 2 ? kRed : kBlue);
    dc.SetTextColor(kInk);
    Label(dc, area.left + 268, area.top + 72, "SetPixel");
    dc.SelectStockObject(BLACK_PEN);
}

void DrawRectangles(CDC& dc, const CRect& area) {
    CBrush blue(kBlue), red(kRed), yellow(kYellow), pale(kPale);
    CPen pen(PS_SOLID, 3, kInk);
    const int w = 62, h = 48, step = 76;
    const auto cell = [&](int column, int row) {
        const int left = area.left + column * step, top = area.top + 2 + row * 74;
        return CRect(left, top, left + w, top + h);
    };
    const auto label = [&](int column, int row, const char* text) {
        dc.SetTextColor(kInk);
        Label(dc, area.left + column * step + w / 2, area.top + 54 + row * 74, text);
    };
    dc.FillRect(cell(0, 0), &blue);
    label(0, 0, "FillRect");
    dc.FrameRect(cell(1, 0), &red);
    label(1, 0, "FrameRect");
    dc.SelectObject(&pen);
    dc.SelectObject(&yellow);
    dc.Rectangle(cell(2, 0));
    label(2, 0, "Rectangle");
    dc.FillRect(cell(3, 0), &pale);
    CRect focus = cell(3, 0);
    focus.DeflateRect(6, 6);
    CPen gray(PS_SOLID, 1, kInk);
    dc.SelectObject(&gray);
    dc.ApplyPen();
    dc.DrawFocusRect(focus);
    label(3, 0, "focus");
    for (int i = 0; i < 12; ++i) { // one in the other
        CRect ring = cell(0, 1);
        ring.DeflateRect(2 * i, 2 * i);
        dc.FrameRect(ring, i % 2 ? &red : &blue);
    }
    label(0, 1, "nested");
    for (int i = 0; i < w; ++i) { // touching fills
        const CRect whole = cell(1, 1);
        CBrush shade(RGB(255 - 3 * i, 80 + 2 * i, 40 + 3 * i));
        dc.FillRect(CRect(whole.left + i, whole.top, whole.left + i + 1, whole.bottom), &shade);
    }
    label(1, 1, "touching");
    dc.FillRect(cell(2, 1), &blue);
    CRect inner = cell(2, 1);
    dc.GetClip();
    inner.DeflateRect(10, 8);
    dc.IntersectClipRect(inner);
    dc.FillRect(cell(2, 1), &yellow);
    dc.SetClip();
    label(2, 1, "clipped");
    const int system[] = {2, 4, 10, 12, 13, 1};
    for (int i = 0; i < 6; ++i) {
        CBrush brush(GetSysColor(system[i]));
        const CRect whole = cell(3, 1);
        const int left = whole.left + i % 3 * 21, top = whole.top + i / 3 * 25;
        dc.FillRect(CRect(left, top, left + 19, top + 22), &brush);
    }
    label(3, 1, "system");
    dc.SelectStockObject(WHITE_BRUSH);
    dc.SelectStockObject(BLACK_PEN);
}

void DrawCurves(CDC& dc, const CRect& area) {
    CBrush yellow(kYellow), pale(kPale), green(kGreen);
    CPen thin(PS_SOLID, 1, kInk), wide(PS_SOLID, 4, kBlue);
    const int l = area.left, t = area.top;
    dc.SelectObject(&thin);
    dc.SelectObject(&yellow);
    dc.Ellipse(l, t + 2, l + 90, t + 62);
    dc.SelectObject(&wide);
    dc.SelectObject(&pale);
    dc.Ellipse(l + 104, t + 4, l + 160, t + 60);
    dc.SelectObject(&thin);
    dc.SelectObject(&green);
    for (int i = 0; i < 7; ++i)
        dc.Ellipse(l + 174 + 18 * i, t + 62 - 6 * i - 8, l + 176 + 20 * i, t + 62);
    dc.SelectObject(&wide);
    dc.Arc(l + 4, t + 78, l + 64, t + 138, l + 64, t + 108, l + 4, t + 108);
    dc.SelectObject(&thin);
    dc.Arc(l + 14, t + 88, l + 54, t + 128, l + 34, t + 88, l + 54, t + 108);
    dc.SelectObject(&thin);
    dc.SelectObject(&pale);
    dc.RoundRect(l + 84, t + 78, l + 154, t + 138, 16, 16);
    dc.SelectObject(&wide);
    dc.RoundRect(l + 166, t + 78, l + 236, t + 138, 30, 30);
    dc.SelectObject(&thin);
    dc.SelectObject(&yellow);
    dc.RoundRect(l + 248, t + 78, l + 300, t + 138, 80, 80);
    dc.SelectStockObject(WHITE_BRUSH);
    dc.SelectStockObject(BLACK_PEN);
}

void DrawTransparency(CDC& dc, const CRect& area) {
    CBrush red(kRed), blue(kBlue);
    CPen pen(PS_SOLID, 5, kInk);
    for (int i = 0; i < 5; ++i) { // a checkered ground
        for (int x = 0; x < 21; ++x) {
            CBrush tile((x + i) % 2 ? kPale : RGB(255, 255, 255));
            const int left = area.left + 14 * x, top = area.top + 16 + 14 * i;
            dc.FillRect(CRect(left, top, left + 14, top + 14), &tile);
        }
    }
    const int values[] = {0, 64, 128, 192, 240};
    for (int i = 0; i < 5; ++i) {
        const int left = area.left + 4 + 61 * i;
        dc.SetAlphaTransparency(values[i]);
        dc.FillRect(CRect(left, area.top + 24, left + 36, area.top + 56), &red);
        dc.SelectObject(&blue);
        dc.SelectStockObject(BLACK_PEN);
        dc.Ellipse(left + 14, area.top + 38, left + 52, area.top + 78);
        dc.SelectObject(&pen);
        dc.MoveTo(left, area.top + 96);
        dc.LineTo(left + 48, area.top + 116);
        dc.SelectStockObject(BLACK_PEN);
        dc.SetAlphaTransparency(0);
        dc.SetTextColor(kInk);
        Label(dc, left + 24, area.top + 128, std::to_string(values[i]).c_str());
    }
    dc.SelectStockObject(WHITE_BRUSH);
}
