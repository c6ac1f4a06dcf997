// Points, sizes and rectangles in whole device units, y growing downwards: the plain records of
// Win32 and the classes CPoint and CRect, which add functions but no fields. A size is always a
// plain SIZE; there is no CSize.
#pragma once

#include <cstdint>

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

struct tagPOINT {
    LONG x;
    LONG y;
};
using POINT = tagPOINT;
using LPPOINT = tagPOINT*;

struct tagSIZE {
    LONG cx;
    LONG cy;
};
using SIZE = tagSIZE;
using LPSIZE = tagSIZE*;

struct tagRECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
using RECT = tagRECT;
using LPRECT = tagRECT*;
using LPCRECT = const tagRECT*;

class VM_API CPoint : public tagPOINT {
public:
    CPoint() : tagPOINT{0, 0} {}
    CPoint(int px, int py) : tagPOINT{px, py} {}
    CPoint(const Point& p) : tagPOINT{p.h, p.v} {}

    void SetPoint(const Point* p);
    Point* GetPoint(Point* p) const; ///< the low 16 bits of each coordinate; returns `p`

    void Offset(int dx, int dy);
    void Offset(tagPOINT offset) { Offset(offset.x, offset.y); }
    void Offset(tagSIZE offset) { Offset(offset.cx, offset.cy); }

    BOOL operator==(tagPOINT p) const { return x == p.x && y == p.y; }
    BOOL operator==(const CPoint& p) const { return x == p.x && y == p.y; }
};

/// A rectangle between four edges; `right` may be left of `left`. There is no comparison: ==
/// between two rectangles compares their addresses, as it does for the pointers they convert to.
class VM_API CRect : public tagRECT {
public:
    CRect() : tagRECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) : tagRECT{l, t, r, b} {}
    CRect(const tagRECT* rect) : tagRECT(*rect) {}
    CRect(const tagRECT& rect) : tagRECT(rect) {}
    CRect(const tagPOINT& topLeft, const tagPOINT& bottomRight)
        : tagRECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y} {}

    void SetRect(int l, int t, int r, int b);
    void SetRectEmpty() { SetRect(0, 0, 0, 0); }
    operator tagRECT*() { return this; }
    operator const tagRECT*() const { return this; }

    // As 32-bit numbers wrap around: what is further apart comes out negative.
    int Width() const {
        return static_cast<int>(static_cast<UINT>(right) - static_cast<UINT>(left));
    }
    int Height() const {
        return static_cast<int>(static_cast<UINT>(bottom) - static_cast<UINT>(top));
    }
    tagSIZE Size() const { return {Width(), Height()}; }
    CPoint CenterPoint() const {
        return {static_cast<int>((std::int64_t{left} + right) / 2),
                static_cast<int>((std::int64_t{top} + bottom) / 2)};
    }

    /// The corner of the rectangle on which this function was first called in the process, for
    /// every rectangle from then on. Hosts keep that first answer as a fixed reference corner; for
    /// a rectangle's own corner read its fields. The point is shared: any thread may get it, nobody
    /// should change it.
    CPoint& TopLeft() const;
    CPoint& BottomRight() const; ///< the same with a first call of its own

    BOOL IsRectEmpty() const { return left >= right || top >= bottom; }
    /// All four edges are inside, unlike in Win32: hosts hit-test with edges that belong to it.
    BOOL PtInRect(tagPOINT p) const;

    /// Each edge moves outwards, by the amount named for its side in the last two forms.
    void InflateRect(int dx, int dy) { InflateRect(dx, dy, dx, dy); }
    void InflateRect(tagSIZE size) { InflateRect(size.cx, size.cy); }
    void InflateRect(const tagRECT* r) { InflateRect(r->left, r->top, r->right, r->bottom); }
    void InflateRect(int l, int t, int r, int b);
    /// The same inwards.
    void DeflateRect(int dx, int dy) { DeflateRect(dx, dy, dx, dy); }
    void DeflateRect(tagSIZE size) { DeflateRect(size.cx, size.cy); }
    void DeflateRect(const tagRECT* r) { DeflateRect(r->left, r->top, r->right, r->bottom); }
    void DeflateRect(int l, int t, int r, int b);

    void NormalizeRect(); ///< swaps edges that are the wrong way round
    void OffsetRect(int dx, int dy);
    void OffsetRect(tagPOINT offset) { OffsetRect(offset.x, offset.y); }
    void OffsetRect(tagSIZE offset) { OffsetRect(offset.cx, offset.cy); }
    void operator-=(tagPOINT offset);
    void MoveToXY(int x, int y); ///< the top left corner to (x, y); width and height stay
    void MoveToXY(tagPOINT p) { MoveToXY(p.x, p.y); }

    /// The common area of two rectangles, or (0, 0, 0, 0). TRUE when there is one: rectangles that
    /// only touch, and those without positive width and height, have none. This rectangle may be
    /// one of the two, also below.
    BOOL IntersectRect(const tagRECT* a, const tagRECT* b);
    /// The smallest rectangle around both. One without positive width and height does not count;
    /// (0, 0, 0, 0) if both do not. Always TRUE.
    BOOL UnionRect(const tagRECT* a, const tagRECT* b);
    /// A copy of `a` when the two do not intersect; otherwise this rectangle stays as it was, also
    /// where Win32 would subtract. Always TRUE: hosts preset the rectangle and go by its value.
    BOOL SubtractRect(const tagRECT* a, const tagRECT* b);

    /// In single precision, exact up to 16,777,216: the value that hosts' saved layouts come from.
    CGRect GetCGRect() const;
    CGRect GetRect() const { return GetCGRect(); }
    CGRect* GetRect(CGRect* out) const; ///< exact; returns `out`
};
