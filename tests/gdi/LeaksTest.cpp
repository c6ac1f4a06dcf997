// GDI objects of every kind, made, used and deleted over and over: nothing may stay behind. Built
// with the address sanitizer its leak check at the end says so, otherwise the heap's size.
#include <malloc.h>

#include <gtest/gtest.h>

#include <vmcore/gdi/CBitmap.h>
#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CFont.h>
#include <vmcore/gdi/CImage.h>
#include <vmcore/gdi/CImageList.h>
#include <vmcore/gdi/CPen.h>
#include <vmcore/gdi/CRgn.h>

#include "gdi/Artwork.h"
#include "gdi/Canvas.h"

namespace {

void UsePen(CDC& dc, int i) {
    CPen pen(PS_SOLID, 1 + i % 3, RGB(i, i >> 8, 0));
    dc.SelectObject(&pen);
    dc.MoveTo(0, 0);
    dc.LineTo(5, i % 7);
}

void UseBrush(CDC& dc, int i) {
    CBrush brush(RGB(i, 0, i >> 8));
    dc.SelectObject(&brush);
    dc.FillRect(CRect(0, 0, 4, 4), &brush);
    if (i % 2) DeleteObject(brush.Detach());
}

void UsePattern(CDC& dc, int) {
    CBitmap bitmap;
    bitmap.CreateCompatibleBitmap(&dc, 4, 4);
    CBrush brush(&bitmap);
    dc.FillRect(CRect(0, 0, 4, 4), &brush);
}

void UseFont(CDC& dc, int i) {
    CFont font;
    font.CreateFont(9 + i % 4, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
    dc.SelectObject(&font);
    dc.TextOut(0, 0, "A", 1);
}

void UseRegion(CDC& dc, int i) {
    CRgn region, other, both;
    CBrush brush(RGB(0, i, 0));
    region.CreateEllipticRgn(0, 0, 6, 6);
    other.CreateRectRgn(2, 2, 9, 9);
    both.CombineRgn(&region, &other, i % 2 ? RGN_AND : RGN_DIFF);
    dc.FillRgn(&both, &brush);
    dc.GetClip();
    dc.SelectClipRgn(&both);
    dc.SetClip();
}

// In turn: deleted while it is selected, by its handle, and after all contexts have let go.
void UseBitmap(CDC& dc, int i) {
    CBitmap bitmap;
    CDC memory;
    bitmap.CreateCompatibleBitmap(&dc, 6, 5);
    memory.SelectObject(&bitmap);
    memory.SetPixel(1, 1, RGB(i, 0, 0));
    dc.BitBlt(0, 0, 6, 5, &memory, 0, 0, SRCCOPY);
    dc.BitBltTransparent(0, 0, 6, 5, &memory, 0, 0, RGB(i, 0, 0));
    dc.StretchBlt(0, 0, 2, 2, &memory, 0, 0, 6, 5, SRCCOPY);
    if (i % 3 == 1) DeleteObject(bitmap.Detach());
    if (i % 3 == 2) memory.DeleteDC();
}

void UseImageList(CDC& dc, int i) {
    CImageList list;
    CBitmap bitmap;
    bitmap.CreateCompatibleBitmap(nullptr, 2, 2);
    list.Attach(ImageList_Create(2, 2, ILC_COLOR32, 1, 1));
    for (int k = 0; k < i % 5; ++k) ImageList_Add(list.GetSafeHandle(), bitmap, nullptr);
    if (ImageList_GetImageCount(list.GetSafeHandle()) == i % 5) dc.SetPixel(1, 1, 0);
}

std::size_t HeapInUse() {
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

struct Kind {
    const char* name;
    void (*use)(CDC& dc, int i);
};
void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.name;
}
class ManyObjects : public testing::TestWithParam<Kind> {};

} // namespace

// What a run before has filled are tables that are made once.
TEST_P(ManyObjects, LeaveNothingBehind) {
    constexpr int kMany = 100000;
    constexpr std::size_t kNoise = 16 * 1024;
    Canvas canvas(12, 12);
    for (int i = 0; i < 1000; ++i) GetParam().use(canvas.dc, i);
    const std::size_t before = HeapInUse();
    for (int i = 0; i < kMany; ++i) GetParam().use(canvas.dc, i);
    EXPECT_LE(HeapInUse(), before + kNoise);
    EXPECT_NE(Inked(canvas.Pixels()), "nothing");
}

INSTANTIATE_TEST_SUITE_P(Gdi, ManyObjects,
                         testing::Values(Kind{"pen", UsePen}, Kind{"brush", UseBrush},
                                         Kind{"pattern brush", UsePattern}, Kind{"font", UseFont},
                                         Kind{"region", UseRegion}, Kind{"bitmap", UseBitmap},
                                         Kind{"image list", UseImageList}));

TEST(ManyImages, LeaveNothingBehind) {
    const Artwork art;
    art.Add(7, Gradient(8, 8));
    Canvas canvas(12, 12);
    std::size_t before = 0;
    for (int i = 0; i < 2100; ++i) { // each reads a file
        if (i == 100) before = HeapInUse();
        CImage image;
        CBitmap bitmap;
        ASSERT_TRUE(bitmap.LoadBitmap(7u) && image.LoadFromResource(nullptr, 7));
        ASSERT_TRUE(image.AlphaBlend(canvas.context, 1, 1, static_cast<BYTE>(i)));
    }
    EXPECT_LE(HeapInUse(), before + 16 * 1024);
}
