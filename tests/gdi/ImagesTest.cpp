#include <vmcore/gdi/CImage.h>

#include <functional>

#include <gtest/gtest.h>

#include <vmcore/gdi/CImageList.h>

#include "gdi/Artwork.h"
#include "gdi/Canvas.h"

TEST(Image, FormsPlaceItAndAlphaIsPutBack) {
    const Artwork art;
    CImage image;
    EXPECT_EQ(image.Load("/nowhere.png"), E_FAIL);
    EXPECT_EQ(image.GetWidth() + image.GetHeight() + image.GetBPP(), 0);
    Canvas canvas(20, 20);
    EXPECT_FALSE(image.AlphaBlend(canvas.context, 0, 0));
    EXPECT_FALSE(image.BitBlt(canvas.context, 0, 0));
    ASSERT_EQ(image.Load(art.Add(1, Gradient(10, 8)).c_str()), S_OK);
    EXPECT_EQ(image.GetWidth(), 10);
    EXPECT_EQ(image.GetHeight(), 8);
    EXPECT_EQ(image.GetBPP(), 32);
    struct Row {
        std::function<BOOL(HDC)> draw;
        const char* inked;
        int alpha;
    };
    const POINT at{4, 5};
    const RECT target{4, 5, 9, 9}, source{1, 1, 6, 5};
    const Row rows[] = {
        {[&](HDC dc) { return image.BitBlt(dc, 4, 5); }, "4,5,14,13", 255},
        {[&](HDC dc) { return image.BitBlt(dc, at); }, "4,5,14,13", 255},
        {[&](HDC dc) { return image.BitBlt(dc, 4, 5, 6, 20, 1, 1); }, "4,5,10,12", 255},
        {[&](HDC dc) {
             return image.BitBlt(dc, target, POINT{1, 1});
         },
         "4,5,9,9", 255},
        {[&](HDC dc) { return image.AlphaBlend(dc, 4, 5, 128); }, "4,5,14,13", 128},
        {[&](HDC dc) { return image.AlphaBlend(dc, at); }, "4,5,14,13", 255},
        {[&](HDC dc) { return image.AlphaBlend(dc, 1, 2, 20, 16, 0, 0, 10, 8, 64); }, "1,2,20,18",
         64},
        {[&](HDC dc) { return image.AlphaBlend(dc, target, source, 10); }, "4,5,9,9", 10}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.inked);
        Canvas each(20, 20);
        EXPECT_TRUE(row.draw(each.context));
        EXPECT_EQ(Inked(each.Pixels()), row.inked);
        EXPECT_NEAR(qAlpha(each.At(5, 6)), row.alpha, 1);
        image.BitBlt(each.context, 0, 0);
        EXPECT_EQ(qAlpha(each.At(0, 0)), 255);
    }
    EXPECT_FALSE(image.AlphaBlend(canvas.context, RECT{9, 9, 4, 5}, source));
    EXPECT_FALSE(image.BitBlt(nullptr, 0, 0));
    EXPECT_TRUE(image.LoadFromResource(nullptr, 1));
    EXPECT_FALSE(image.LoadFromResource(nullptr, 2));
    EXPECT_TRUE(image.IsNull());
}

TEST(ImageList, KeepsHandlesInOrder) {
    int a = 0, b = 0;
    {
        CImageList list;
        EXPECT_FALSE(list.Attach(nullptr));
        EXPECT_TRUE(list.Attach(ImageList_Create(16, 16, ILC_COLOR32, 4, 4)));
        EXPECT_EQ(ImageList_Add(list.GetSafeHandle(), &a, nullptr), 0);
        EXPECT_EQ(ImageList_Add(list.GetSafeHandle(), &b, &a), 1);
        EXPECT_EQ(ImageList_GetImageCount(list.m_hImageList), 2);
        EXPECT_TRUE(ImageList_Destroy(list.Detach()));
        list.Attach(ImageList_Create(0, 0, 0, 0, 0)); // freed with the object
    }
    EXPECT_EQ(ImageList_Add(nullptr, &a, nullptr), -1);
    EXPECT_FALSE(ImageList_Destroy(nullptr));
}
