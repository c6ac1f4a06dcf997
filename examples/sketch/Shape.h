// Shape.h : one shape of a drawing, and how it is drawn and hit

#pragma once

enum ShapeKind { SHAPE_FREEHAND, SHAPE_LINE, SHAPE_RECTANGLE, SHAPE_ELLIPSE, SHAPE_TEXT };

const int MAX_PEN_WIDTH = 40;
const int MIN_TEXT_HEIGHT = 8;
const int MAX_TEXT_HEIGHT = 200;
const int MAX_TEXT_LENGTH = 200;
const int MAX_COORDINATE = 20000;

// What the pen dialog changes
struct CShapeStyle {
    COLORREF m_crPen = RGB(31, 78, 140);
    int m_nWidth = 3;
    BOOL m_bFilled = FALSE;
    COLORREF m_crFill = RGB(214, 226, 242);
};

// Never changed once it is in a drawing: a change puts another one in its place, so that the steps
// of undo may share what stays the same.
class CShape {
public:
    ShapeKind m_kind = SHAPE_FREEHAND;
    CShapeStyle m_style;
    std::vector<CPoint> m_points; // freehand: all of them; text: one; others: two corners
    std::string m_strText;
    int m_nTextHeight = 24;

    static LPCSTR KindName(ShapeKind kind);

    CRect GetBounds() const; // without the width of the pen
    BOOL HitTest(CPoint point, int nSlack) const;
    CShape Moved(int dx, int dy) const;
    BOOL IsEmpty() const;
    void Draw(CDC* pDC, CPoint origin) const;

private:
    CRect Corners() const;
    void DrawPath(CDC* pDC, CPoint origin) const;
    void DrawArea(CDC* pDC, CPoint origin) const;
    void DrawLetters(CDC* pDC, CPoint origin) const;
};

typedef std::shared_ptr<const CShape> CShapePtr;
