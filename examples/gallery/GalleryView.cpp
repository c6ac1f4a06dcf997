#include "GalleryView.h"

#include <cstring>

namespace {

constexpr int kMargin = 14;
constexpr int kGap = 12;
constexpr int kColumns = 3;
constexpr int kTitleHeight = 26;

struct Entry {
    const char* title;
    Card draw;
};

constexpr Entry kCards[] = {
    {"Pens", DrawPens},
    {"Lines", DrawLines},
    {"Rectangles", DrawRectangles},
    {"Ellipses, arcs, round corners", DrawCurves},
    {"Transparency", DrawTransparency},
    {"Faces", DrawFaces},
    {"TextOut: alignment", DrawAlignments},
    {"DrawText: formats", DrawTextFormats},
    {"Text backgrounds and colours", DrawBackgrounds},
    {"Regions: fill, frame, clip", DrawRegions},
    {"Regions: combined", DrawCombinations},
    {"Blits", DrawBlits},
};

CRect CardRect(int index) {
    constexpr int kRows = static_cast<int>(std::size(kCards)) / kColumns;
    constexpr int kCardWidth =
        (GalleryView::kWidth - 2 * kMargin - (kColumns - 1) * kGap) / kColumns;
    constexpr int kCardHeight = (GalleryView::kHeight - 2 * kMargin - (kRows - 1) * kGap) / kRows;
    const int left = kMargin + index % kColumns * (kCardWidth + kGap);
    const int top = kMargin + index / kColumns * (kCardHeight + kGap);
    return CRect(left, top, left + kCardWidth, top + kCardHeight);
}

} // namespace

void Label(CDC& dc, int x, int y, const char* text) {
    dc.SetTextAlign(TA_TOP | TA_CENTER);
    dc.TextOut(x, y, text, 0);
    dc.SetTextAlign(TA_TOP);
}

void UseFace(CDC& dc, CFont& font, const char* face, int height) {
    font.CreateFont(height, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, face);
    dc.SelectObject(&font);
}

GalleryView::GalleryView() {
    m_titleFont.CreateFont(13, 0, 0, 0, 700, 0, 0, 0, 0, 0, 0, 0, 0, "Arial Bold");
    m_labelFont.CreateFont(11, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
}

int GalleryView::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_PAINT) return CWnd::MessageMap(message, wParam, lParam);
    Paint();
    return 1;
}

void GalleryView::Paint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    CBrush desk(RGB(236, 239, 244)), paper(RGB(255, 255, 255)), edge(kFaint), band(kPale);
    dc.FillRect(client, &desk);
    for (int i = 0; i < static_cast<int>(std::size(kCards)); ++i) {
        CRect card = CardRect(i);
        dc.FillRect(card, &paper);
        dc.FillRect(CRect(card.left, card.top, card.right, card.top + kTitleHeight), &band);
        dc.FrameRect(card, &edge);
        dc.SelectObject(&m_titleFont);
        dc.SetTextColor(kInk);
        dc.TextOut(card.left + 10, card.top + 6, kCards[i].title, 0);
        dc.SelectObject(&m_labelFont);
        card.top += kTitleHeight;
        card.DeflateRect(10, 8);
        dc.GetClip(); // whatever a card sets ends with it
        kCards[i].draw(dc, card);
        dc.SetClip();
        dc.SetTextAlign(TA_TOP);
        dc.SetBkMode(TRANSPARENT);
    }
}
