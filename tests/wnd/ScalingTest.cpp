#include <cmath>

#include "RecordingWindow.h"
#include "wnd/viewScaling.h"

using testing::ElementsAre;

namespace {

class Scaling : public WindowFixture {
protected:
    RECT ClientRect() {
        RECT rect{};
        child.GetClientRect(&rect);
        return rect;
    }
};

} // namespace

TEST(ViewScaling, HostPixelsSurviveTheWayToTheViewAndBack) {
    for (const double scale : {1.0, double(1.1f), 1.25, 1.5, 2.0, 3.0, double(0.1f + 1.0f)})
        for (int x = -50; x <= 2000; ++x)
            ASSERT_EQ(vm::ToHost(vm::ToView(x, scale), scale), x) << scale;
    EXPECT_EQ(vm::ToView(10, double(1.1f)), 11);
    EXPECT_EQ(vm::ToHost(101, 0.5), 202);
    EXPECT_EQ(vm::ToHost(-1, 2.0), -1) << "left of the view stays left of it";
}

TEST(ViewScaling, OnlyUsableScalesCount) {
    CWnd wnd;
    for (const float scale : {1.0f, 0.0f, -2.0f, NAN, INFINITY}) {
        wnd.SetWindowScaling(scale);
        EXPECT_EQ(vm::ScaleOf(wnd), 1.0) << scale;
    }
    wnd.SetWindowScaling(1.5f);
    EXPECT_EQ(vm::ScaleOf(wnd), 1.5);
    EXPECT_EQ(wnd.scaleX, 1.0f) << "only the one that geometry uses";
}

TEST_F(Scaling, HostSeesItsOwnUnits) {
    child.SetWindowScaling(2.0f);
    EXPECT_THAT(child.Take(WM_SIZE), ElementsAre(Message{WM_SIZE, 2, MAKELPARAM(50, 30)}));
    EXPECT_THAT(ClientRect(), IsRect(0, 0, 50, 30));
    RECT onScreen{};
    RECT whole{};
    child.GetWindowRect(&onScreen);
    GetWindowRect(child.view, &whole);
    EXPECT_THAT(onScreen, IsRect(whole.left, whole.top, whole.left + 50, whole.top + 30));
    EXPECT_EQ(child.view->size(), QSize(100, 60)) << "the view stays as large as it was";
    child.CreateVScroll();
    EXPECT_THAT(ClientRect(), IsRect(0, 0, 35, 30)) << "bars are not scaled";
    child.SetWindowScaling(1.0f);
    EXPECT_THAT(ClientRect(), IsRect(0, 0, 85, 60));
}

TEST_F(Scaling, PointsGoToTheScreenAndBack) {
    child.SetWindowScaling(2.0f);
    const QPoint corner = child.view->mapToGlobal(QPoint(0, 0));
    POINT point{10, 7};
    child.ClientToScreen(&point);
    EXPECT_EQ(point.x, corner.x() + 20);
    EXPECT_EQ(point.y, corner.y() + 14);
    POINT same = point;
    child.ScreenToClient(&point);
    EXPECT_EQ(point.x, 10);
    EXPECT_EQ(point.y, 7);
    ScreenToClient(child.view, &same);
    EXPECT_EQ(same.x, 10) << "the same for the bare handle";
    RECT rect{1, 2, 11, 22};
    child.ClientToScreen(&rect);
    child.ScreenToClient(&rect);
    EXPECT_THAT(rect, IsRect(1, 2, 11, 22));
}

TEST_F(Scaling, InvalidRectangleIsInHostUnits) {
    child.SetWindowScaling(2.0f);
    const CGRect rects[] = {
        {{10, 5}, {10, 10}}, {{19, 14}, {5, 5}}, {{20, 5}, {10, 10}}, {{0, 0}, {10, 5}}};
    std::vector<BOOL> needed;
    child.on[WM_PAINT] = [&](WPARAM, LPARAM) {
        needed.clear();
        for (const CGRect& rect : rects) needed.push_back(child.NeedsToDrawRect(rect));
        needed.push_back(top.NeedsToDrawRect({{0, 0}, {500, 500}})); // not being painted
        return 1;
    };
    const RECT invalid{10, 5, 20, 15};
    // The window system may have the whole painted before.
    EXPECT_TRUE(RunUntil([&] {
        child.InvalidateRect(&invalid);
        child.UpdateWindow();
        return needed == std::vector<BOOL>{TRUE, TRUE, FALSE, FALSE, FALSE};
    }));
    EXPECT_FALSE(child.NeedsToDrawRect(rects[0])) << "outside of a paint";
}

TEST_F(Scaling, ChildrenAreFoundWhereTheyAreShown) {
    RecordingWindow inner;
    inner.Create("", "", WS_VISIBLE, RECT{40, 20, 60, 40}, &child, 8);
    child.SetWindowScaling(2.0f);
    EXPECT_EQ(child.ChildWindowFromPoint({20, 10}), &inner);
    EXPECT_EQ(child.ChildWindowFromPoint({19, 10}), &child);
    EXPECT_EQ(child.ChildWindowFromPoint({50, 10}), nullptr);
}
