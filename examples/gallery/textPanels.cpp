// Cards of text.
#include "GalleryView.h"

namespace {

void Cross(CDC& dc, int x, int y) {
    CBrush brush(kRed);
    dc.FillRect(CRect(x - 4, y, x + 5, y + 1), &brush);
    dc.FillRect(CRect(x, y - 4, x + 1, y + 5), &brush);
}

} // namespace

void DrawFaces(CDC& dc, const CRect& area) {
    const char* const faces[] = {"Arial",        "Arial Bold",          "Verdana",
                                 "Verdana Bold", "Times New Roman",     "Courier New",
                                 "Arial Italic", "Times New Roman Bold"};
    CFont font;
    dc.SetTextColor(kInk);
    for (int i = 0; i < 8; ++i) {
        UseFace(dc, font, faces[i], 12);
        dc.TextOut(area.left + i % 2 * 160, area.top + i / 2 * 20, faces[i], 0);
    }
    int x = area.left;
    for (const int height : {8, 10, 14, 20, 30}) {
        UseFace(dc, font, "Arial", height);
        dc.SetTextAlign(TA_BASELINE);
        dc.TextOut(x, area.top + 118, "Agfi", 4);
        x += dc.TextWidth(dc.GetSafeHdc(), "Agfi", 4) + 14;
    }
    dc.SetTextAlign(TA_TOP);
    UseFace(dc, font, "Verdana", 11);
    dc.TextOut(area.left, area.top + 132,
               "Roman: \x80\x85\x86 \x8E\x8F\x9F \xA7 \xA9 \xA5 \xDB \xC7\xC8", 0);
}

void DrawAlignments(CDC& dc, const CRect& area) {
    CBrush rule(kFaint);
    const struct {
        unsigned int align;
        const char* text;
    } across[] = {{TA_TOP, "left"}, {TA_TOP | TA_CENTER, "centre"}, {TA_TOP | TA_RIGHT, "right"}};
    CFont font;
    UseFace(dc, font, "Arial", 14);
    dc.SetTextColor(kInk);
    for (int i = 0; i < 3; ++i) {
        const int x = area.left + 70, y = area.top + 8 + 26 * i;
        dc.SetTextAlign(across[i].align);
        dc.TextOut(x, y, across[i].text, 0);
        Cross(dc, x, y);
    }
    const struct {
        unsigned int align;
        const char* text;
    } down[] = {{TA_TOP, "Top"}, {TA_BASELINE, "Base"}, {TA_BOTTOM, "Bottom"}};
    const int y = area.top + 36;
    dc.FillRect(CRect(area.left + 150, y, area.right, y + 1), &rule);
    for (int i = 0; i < 3; ++i) {
        const int x = area.left + 155 + 48 * i;
        dc.SetTextAlign(down[i].align);
        dc.TextOut(x, y, down[i].text, 0);
        Cross(dc, x, y);
    }
    dc.SetTextAlign(TA_TOP | TA_UPDATECP); // each goes on where the last one ended
    dc.MoveTo(area.left + 4, area.top + 98);
    const COLORREF colors[] = {kInk, kRed, kGreen, kBlue};
    const char* const words[] = {"one ", "after ", "the ", "other"};
    for (int i = 0; i < 4; ++i) {
        dc.SetTextColor(colors[i]);
        dc.TextOut(0, 0, words[i], 0);
    }
    dc.SetTextAlign(TA_TOP);
    dc.SetTextColor(kInk);
    const char* const measured = "TextWidth measures this";
    UseFace(dc, font, "Verdana", 12);
    dc.TextOut(area.left + 4, area.top + 122, measured, 0);
    const int width = dc.TextWidth(dc.GetSafeHdc(), measured, 0);
    CBrush mark(kBlue);
    dc.FillRect(CRect(area.left + 4, area.top + 140, area.left + 4 + width, area.top + 142), &mark);
}

void DrawTextFormats(CDC& dc, const CRect& area) {
    const struct {
        unsigned int format;
        const char* text;
    } cells[] = {{DT_LEFT | DT_TOP, "left top"},
                 {DT_CENTER | DT_VCENTER, "centre middle"},
                 {DT_RIGHT | DT_BOTTOM, "right bottom"},
                 {DT_MULTILINE, "two\nlines"},
                 {DT_MULTILINE | DT_CENTER, "centred\nlines"},
                 {DT_LEFT, "clipped at the edge"}};
    CBrush edge(kFaint);
    dc.SetTextColor(kInk);
    for (int i = 0; i < 6; ++i) {
        const int left = area.left + i % 3 * 102, top = area.top + i / 3 * 42;
        CRect rect(left, top, left + 94, top + 36);
        dc.FrameRect(rect, &edge);
        rect.DeflateRect(2, 2);
        dc.DrawText(cells[i].text, -1, rect, cells[i].format);
    }
    const char* const text =
        "DT_WORDBREAK breaks a longer text into lines between its words, as wide as "
        "the rectangle allows. DT_CALCRECT measures it before: that made this frame.";
    CRect wrapped(area.left + 4, area.top + 88, area.right - 8, area.top + 90);
    dc.DrawText(text, -1, wrapped, DT_WORDBREAK | DT_CALCRECT);
    dc.DrawText(text, -1, wrapped, DT_WORDBREAK);
    wrapped.InflateRect(4, 3);
    dc.FrameRect(wrapped, &edge);
}

void DrawBackgrounds(CDC& dc, const CRect& area) {
    CFont font;
    CBrush blue(kBlue);
    UseFace(dc, font, "Arial Bold", 16);
    dc.FillRect(CRect(area.left, area.top + 14, area.right, area.top + 22), &blue);
    dc.SetTextColor(kInk);
    dc.SetBkColor(kYellow);
    dc.SetBkMode(TRANSPARENT);
    dc.TextOut(area.left + 6, area.top + 8, "Transparent", 0);
    dc.SetBkMode(OPAQUE);
    dc.TextOut(area.left + 170, area.top + 8, "Opaque", 0);
    dc.SetBkMode(TRANSPARENT);
    const CRect cell(area.left + 4, area.top + 40, area.left + 140, area.top + 64);
    dc.ExtTextOut(area.left + 12, area.top + 43, ETO_OPAQUE, cell, "ETO_OPAQUE", 0, nullptr);
    const CRect cut(area.left + 170, area.top + 48, area.left + 290, area.top + 58);
    dc.ExtTextOut(area.left + 170, area.top + 43, ETO_CLIPPED, cut, "ETO_CLIPPED", 0, nullptr);
    const COLORREF colors[] = {kInk, kRed, kGreen, kBlue, kYellow, kFaint};
    for (int i = 0; i < 6; ++i) {
        dc.SetTextColor(colors[i]);
        dc.TextOut(area.left + 4 + 50 * i, area.top + 80, "Text", 4);
    }
    CRect dark(area.left, area.top + 108, area.right, area.top + 140);
    CBrush ink(kInk);
    dc.FillRect(dark, &ink);
    UseFace(dc, font, "Verdana", 12);
    dc.SetTextColor(RGB(255, 255, 255));
    dc.DrawText("light on dark", -1, dark, DT_CENTER | DT_VCENTER);
}
