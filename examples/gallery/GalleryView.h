// The window's content: a card for each kind of drawing, in rows of three.
#pragma once

#include <afxwin.h>

class GalleryView : public CWnd {
public:
    static constexpr int kWidth = 1000;
    static constexpr int kHeight = 840;

    GalleryView();
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

private:
    void Paint();

    CFont m_titleFont;
    CFont m_labelFont;
};

// What the cards share.
constexpr COLORREF kInk = RGB(24, 34, 52);
constexpr COLORREF kBlue = RGB(42, 98, 184);
constexpr COLORREF kRed = RGB(196, 52, 40);
constexpr COLORREF kGreen = RGB(44, 132, 82);
constexpr COLORREF kYellow = RGB(240, 188, 48);
constexpr COLORREF kPale = RGB(220, 230, 244);
constexpr COLORREF kFaint = RGB(178, 188, 204);

/// A card draws its content inside `area`. The label font is selected when it begins, text is black
/// and hangs from its top.
using Card = void (*)(CDC& dc, const CRect& area);

void DrawPens(CDC& dc, const CRect& area);
void DrawLines(CDC& dc, const CRect& area);
void DrawRectangles(CDC& dc, const CRect& area);
void DrawCurves(CDC& dc, const CRect& area);
void DrawTransparency(CDC& dc, const CRect& area);
void DrawFaces(CDC& dc, const CRect& area);
void DrawAlignments(CDC& dc, const CRect& area);
void DrawTextFormats(CDC& dc, const CRect& area);
void DrawBackgrounds(CDC& dc, const CRect& area);
void DrawRegions(CDC& dc, const CRect& area);
void DrawCombinations(CDC& dc, const CRect& area);
void DrawBlits(CDC& dc, const CRect& area);

/// A label, centred on `x`, its top at `y`.
void Label(CDC& dc, int x, int y, const char* text);
/// Selects a face; the font must outlive its selection.
void UseFace(CDC& dc, CFont& font, const char* face, int height);
