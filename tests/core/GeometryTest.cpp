#include <vmcore/core/geometry.h>

#include <ostream>

#include <gmock/gmock.h>

bool operator==(const tagRECT& a, const tagRECT& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
void PrintTo(const tagRECT& r, std::ostream* out) {
    *out << '(' << r.left << ", " << r.top << ", " << r.right << ", " << r.bottom << ')';
}

namespace {

const tagRECT kZero = {0, 0, 0, 0};

tagRECT Plain(const CRect& rect) {
    return rect;
}

struct PairCase {
    tagRECT a, b;
    bool result;
    tagRECT rect;
};

} // namespace

TEST(CPoint, PointRecordIsVerticalFirstAndSixteenBits) {
    Point native = {-5, 7};
    CPoint point(native);
    EXPECT_TRUE(point == CPoint(7, -5));
    point = CPoint(70000, 5);
    EXPECT_EQ(point.GetPoint(&native), &native);
    EXPECT_EQ(native.h, 4464);
    EXPECT_EQ(native.v, 5);
    point.SetPoint(&native);
    point.Offset(1, 2);
    point.Offset(tagPOINT{10, 20});
    point.Offset(tagSIZE{100, 200});
    EXPECT_TRUE(point == (tagPOINT{4575, 227}));
    EXPECT_FALSE(point == CPoint(4575, 228));
}

TEST(CRect, CornersAreThoseOfTheFirstCallEver) {
    EXPECT_TRUE(CRect(1, 2, 3, 4).TopLeft() == CPoint(1, 2));
    EXPECT_TRUE(CRect(5, 6, 7, 8).TopLeft() == CPoint(1, 2));
    EXPECT_TRUE(CRect(5, 6, 7, 8).BottomRight() == CPoint(7, 8)); // has a first call of its own
    EXPECT_TRUE(CRect(1, 2, 3, 4).BottomRight() == CPoint(7, 8));
}

TEST(CRect, AllFourEdgesAreInside) {
    const CRect rect(0, 0, 10, 10);
    for (const tagPOINT inside : {tagPOINT{0, 0}, tagPOINT{10, 10}, tagPOINT{10, 0}})
        EXPECT_TRUE(rect.PtInRect(inside));
    for (const tagPOINT outside : {tagPOINT{-1, 5}, tagPOINT{11, 5}, tagPOINT{5, -1}, {5, 11}})
        EXPECT_FALSE(rect.PtInRect(outside)) << outside.x << ' ' << outside.y;
}

TEST(CRect, EmptyWithoutPositiveWidthAndHeight) {
    EXPECT_TRUE(CRect(5, 5, 5, 9).IsRectEmpty());
    EXPECT_TRUE(CRect(5, 9, 7, 9).IsRectEmpty());
    EXPECT_TRUE(CRect(7, 5, 5, 9).IsRectEmpty());
    EXPECT_FALSE(CRect(5, 5, 6, 6).IsRectEmpty());
}

TEST(CRect, EdgesMove) {
    CRect rect(10, 10, 20, 20);
    rect.InflateRect(2, 3);
    EXPECT_EQ(Plain(rect), (tagRECT{8, 7, 22, 23}));
    rect.DeflateRect(tagSIZE{2, 3});
    const tagRECT sides = {1, 2, 3, 4};
    rect.InflateRect(&sides);
    EXPECT_EQ(Plain(rect), (tagRECT{9, 8, 23, 24}));
    rect.DeflateRect(1, 2, 3, 4);
    EXPECT_EQ(Plain(rect), (tagRECT{10, 10, 20, 20}));
    rect.OffsetRect(tagSIZE{5, -5});
    EXPECT_EQ(Plain(rect), (tagRECT{15, 5, 25, 15}));
    rect -= CPoint(5, -5);
    rect.MoveToXY(tagPOINT{-1, 100});
    EXPECT_EQ(Plain(rect), (tagRECT{-1, 100, 9, 110}));
    rect.SetRect(10, 8, 0, 9);
    EXPECT_EQ(rect.Size().cx, -10);
    rect.NormalizeRect();
    EXPECT_EQ(Plain(rect), (tagRECT{0, 8, 10, 9}));
}

TEST(CRect, ArithmeticWrapsAroundAt32Bits) {
    constexpr int kLeast = -2147483647 - 1, kMost = 2147483647;
    CRect all(kLeast, kLeast, kMost, kMost);
    EXPECT_EQ(all.Width(), -1);
    all.InflateRect(1, 1);
    EXPECT_EQ(Plain(all), (tagRECT{kMost, kMost, kLeast, kLeast}));
    all.MoveToXY(kMost, 0);
    EXPECT_EQ(Plain(all), (tagRECT{kMost, 0, kLeast, 1}));
}

TEST(CRect, Intersection) {
    for (const PairCase& c :
         {PairCase{{0, 0, 10, 10}, {5, 5, 20, 20}, true, {5, 5, 10, 10}},
          PairCase{{0, 0, 10, 10}, {10, 0, 20, 10}, false, kZero}, // touching
          PairCase{{0, 0, 10, 10}, {20, 20, 30, 30}, false, kZero},
          PairCase{{0, 0, 10, 10}, {5, 5, 5, 9}, false, kZero},   // no width
          PairCase{{10, 10, 0, 0}, {0, 0, 10, 10}, false, kZero}, // not normalised
          PairCase{{-9, -9, -1, -1}, {-5, -5, 5, 5}, true, {-5, -5, -1, -1}}}) {
        CRect rect(7, 7, 7, 7);
        EXPECT_EQ(rect.IntersectRect(&c.a, &c.b) != FALSE, c.result);
        EXPECT_EQ(Plain(rect), c.rect);
        CRect target(c.b);
        target.IntersectRect(&c.a, target); // into one of the two
        EXPECT_EQ(Plain(target), c.rect);
    }
}

TEST(CRect, UnionIgnoresWhatHasNoArea) {
    for (const PairCase& c : {PairCase{{0, 0, 0, 0}, {5, 5, 8, 8}, true, {5, 5, 8, 8}},
                              PairCase{{5, 5, 8, 8}, {1, 1, 1, 50}, true, {5, 5, 8, 8}},
                              PairCase{{1, 1, 1, 9}, {2, 2, 0, 9}, true, kZero},
                              PairCase{{-5, 0, 1, 1}, {3, 3, 9, 4}, true, {-5, 0, 9, 4}}}) {
        CRect rect(7, 7, 7, 7);
        EXPECT_TRUE(rect.UnionRect(&c.a, &c.b));
        EXPECT_EQ(Plain(rect), c.rect);
    }
}

TEST(CRect, SubtractionNeverSubtracts) {
    const CRect a(0, 0, 10, 10), overlapping(5, 0, 10, 10), touching(10, 0, 20, 10);
    CRect rect(1, 2, 3, 4);
    EXPECT_TRUE(rect.SubtractRect(a, overlapping));
    EXPECT_EQ(Plain(rect), (tagRECT{1, 2, 3, 4}));
    EXPECT_TRUE(rect.SubtractRect(a, touching));
    EXPECT_EQ(Plain(rect), Plain(a));
}

TEST(CRect, PlatformRectangleIsSinglePrecisionUnlessWrittenToARecord) {
    const CRect rect(16777217, -3, 16777227, 4);
    const CGRect single = rect.GetRect();
    EXPECT_EQ(single.origin.x, 16777216.0);
    EXPECT_EQ(single.origin.y, -3.0);
    EXPECT_EQ(single.size.width, 10.0);
    CGRect exact;
    EXPECT_EQ(rect.GetRect(&exact), &exact);
    EXPECT_EQ(exact.origin.x, 16777217.0);
    EXPECT_EQ(exact.size.height, 7.0);
}
