// CPoint and CRect. Intersection and union are computed on rectangles in doubles, as a desktop's
// graphics library defines them, and truncated on the way back.
#include <vmcore/core/geometry.h>

#include <algorithm>
#include <cstddef>
#include <type_traits>
#include <utility>

static_assert(sizeof(tagPOINT) == 8 && offsetof(tagPOINT, y) == 4);
static_assert(sizeof(tagSIZE) == 8 && offsetof(tagSIZE, cy) == 4);
static_assert(sizeof(tagRECT) == 16 && offsetof(tagRECT, top) == 4 &&
              offsetof(tagRECT, right) == 8 && offsetof(tagRECT, bottom) == 12);
static_assert(sizeof(CPoint) == sizeof(tagPOINT) && std::is_standard_layout_v<CPoint>);
static_assert(sizeof(CRect) == sizeof(tagRECT) && std::is_standard_layout_v<CRect>);
static_assert(sizeof(Point) == 4 && offsetof(Point, h) == 2);
static_assert(sizeof(CGRect) == 32 && offsetof(CGRect, size) == 16);

namespace {

constexpr CGRect s_zero = {{0, 0}, {0, 0}};

// Coordinates wrap around at 32 bits.
int Sum(int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}
int Difference(int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b));
}

CGRect Widened(const tagRECT& r) {
    return {{static_cast<double>(r.left), static_cast<double>(r.top)},
            {static_cast<double>(r.right) - r.left, static_cast<double>(r.bottom) - r.top}};
}

// Truncates the corner first: the far edges count from the truncated corner.
tagRECT Truncated(const CGRect& r) {
    const int left = static_cast<int>(r.origin.x);
    const int top = static_cast<int>(r.origin.y);
    return {left, top, static_cast<int>(left + r.size.width),
            static_cast<int>(top + r.size.height)};
}

bool HasArea(const CGRect& r) {
    return r.size.width > 0 && r.size.height > 0;
}

double Right(const CGRect& r) {
    return r.origin.x + r.size.width;
}
double Bottom(const CGRect& r) {
    return r.origin.y + r.size.height;
}

CGRect Between(double left, double top, double right, double bottom) {
    return {{left, top}, {right - left, bottom - top}};
}

CGRect Intersection(const CGRect& a, const CGRect& b) {
    if (!HasArea(a) || !HasArea(b)) return s_zero;
    const CGRect common =
        Between(std::max(a.origin.x, b.origin.x), std::max(a.origin.y, b.origin.y),
                std::min(Right(a), Right(b)), std::min(Bottom(a), Bottom(b)));
    return HasArea(common) ? common : s_zero;
}

CGRect Union(const CGRect& a, const CGRect& b) {
    if (!HasArea(a)) return HasArea(b) ? b : s_zero;
    if (!HasArea(b)) return a;
    return Between(std::min(a.origin.x, b.origin.x), std::min(a.origin.y, b.origin.y),
                   std::max(Right(a), Right(b)), std::max(Bottom(a), Bottom(b)));
}

} // namespace

void CPoint::SetPoint(const Point* p) {
    x = p->h;
    y = p->v;
}

Point* CPoint::GetPoint(Point* p) const {
    p->h = static_cast<std::int16_t>(x);
    p->v = static_cast<std::int16_t>(y);
    return p;
}

void CPoint::Offset(int dx, int dy) {
    x = Sum(x, dx);
    y = Sum(y, dy);
}

void CRect::SetRect(int l, int t, int r, int b) {
    left = l;
    top = t;
    right = r;
    bottom = b;
}

CPoint& CRect::TopLeft() const {
    static CPoint s_corner(left, top); // filled once, on purpose
    return s_corner;
}

CPoint& CRect::BottomRight() const {
    static CPoint s_corner(right, bottom); // filled once, on purpose
    return s_corner;
}

BOOL CRect::PtInRect(tagPOINT p) const {
    return left <= p.x && p.x <= right && top <= p.y && p.y <= bottom;
}

void CRect::InflateRect(int l, int t, int r, int b) {
    SetRect(Difference(left, l), Difference(top, t), Sum(right, r), Sum(bottom, b));
}

void CRect::DeflateRect(int l, int t, int r, int b) {
    SetRect(Sum(left, l), Sum(top, t), Difference(right, r), Difference(bottom, b));
}

void CRect::NormalizeRect() {
    if (left > right) std::swap(left, right);
    if (top > bottom) std::swap(top, bottom);
}

void CRect::OffsetRect(int dx, int dy) {
    SetRect(Sum(left, dx), Sum(top, dy), Sum(right, dx), Sum(bottom, dy));
}

void CRect::operator-=(tagPOINT p) {
    SetRect(Difference(left, p.x), Difference(top, p.y), Difference(right, p.x),
            Difference(bottom, p.y));
}

void CRect::MoveToXY(int x, int y) {
    SetRect(x, y, Sum(x, Width()), Sum(y, Height()));
}

BOOL CRect::IntersectRect(const tagRECT* a, const tagRECT* b) {
    const CGRect common = Intersection(Widened(*a), Widened(*b));
    static_cast<tagRECT&>(*this) = Truncated(common);
    return HasArea(common);
}

BOOL CRect::UnionRect(const tagRECT* a, const tagRECT* b) {
    static_cast<tagRECT&>(*this) = Truncated(Union(Widened(*a), Widened(*b)));
    return TRUE;
}

BOOL CRect::SubtractRect(const tagRECT* a, const tagRECT* b) {
    CRect common;
    if (!common.IntersectRect(a, b)) static_cast<tagRECT&>(*this) = *a;
    return TRUE;
}

CGRect CRect::GetCGRect() const {
    const auto single = [](int value) { return static_cast<double>(static_cast<float>(value)); };
    return {{single(left), single(top)}, {single(Width()), single(Height())}};
}

CGRect* CRect::GetRect(CGRect* out) const {
    *out = {{static_cast<double>(left), static_cast<double>(top)},
            {static_cast<double>(Width()), static_cast<double>(Height())}};
    return out;
}
