#include <vmcore/app/CWinApp.h>

#include <QtTest/QTest>
#include <QtWidgets/QLabel>

#include "RecordingWindow.h"
#include "app/appState.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Geometry : public WindowFixture {
protected:
    // What the window heard of its place, also in the turns of the loop after the call.
    static Messages TakePlaces(RecordingWindow& wnd) {
        Messages places;
        for (const Message& message : wnd.Take())
            if (message.number == WM_SIZE || message.number == WM_MOVE) places.push_back(message);
        return places;
    }
    Messages TakeLatePlaces(RecordingWindow& wnd) {
        RunFor(std::chrono::milliseconds(30));
        return TakePlaces(wnd);
    }
    static RECT WindowRectOf(const CWnd& wnd) {
        RECT rect{};
        wnd.GetWindowRect(&rect);
        return rect;
    }
};
class Tree : public WindowFixture {};

Message Size(WPARAM state, int cx, int cy) {
    return {WM_SIZE, state, MAKELPARAM(cx, cy)};
}
Message Move(int x, int y) {
    return {WM_MOVE, 0, MAKELPARAM(x, y)};
}

} // namespace

TEST_F(Geometry, ChildHearsItsSizeAndAChangedOrigin) {
    const RECT moved{35, 45, 85, 75};
    child.MoveWindow(&moved);
    EXPECT_THAT(TakePlaces(child), ElementsAre(Size(2, 50, 30), Move(35, 45)));
    child.MoveWindow(35, 45, 60, 30);
    EXPECT_THAT(TakePlaces(child), ElementsAre(Size(2, 60, 30)));
    child.MoveWindow(35, 45, -1, -1);
    EXPECT_THAT(TakePlaces(child), ElementsAre(Size(2, 0, 0)));
    EXPECT_THAT(TakeLatePlaces(child), IsEmpty());
}

TEST_F(Geometry, ChildPositionFollowsTheFlags) {
    const struct {
        const char* what;
        UINT flags;
        Messages messages;
    } rows[] = {
        {"move and size", SWP_NOZORDER, {Size(2, 50, 30), Move(35, 45)}},
        {"size", SWP_NOZORDER | SWP_NOMOVE, {Size(2, 50, 30)}},
        {"move", SWP_NOZORDER | SWP_NOSIZE, {Size(2, 100, 60), Move(35, 45)}},
        {"neither", SWP_NOZORDER | SWP_NOMOVE | SWP_NOSIZE, {}},
    };
    for (const auto& row : rows) {
        child.MoveWindow(&kChildRect);
        child.Take();
        EXPECT_TRUE(child.SetWindowPos(nullptr, 35, 45, 50, 30, row.flags));
        EXPECT_EQ(TakePlaces(child), row.messages) << row.what;
    }
    const UINT nothing = SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER;
    child.SetWindowPos(nullptr, 0, 0, 0, 0, nothing | SWP_HIDEWINDOW);
    EXPECT_FALSE(child.IsWindowVisible());
    child.SetWindowPos(nullptr, 0, 0, 0, 0, nothing | SWP_SHOWWINDOW);
    EXPECT_TRUE(child.IsWindowVisible());
    EXPECT_FALSE(SetWindowPos(nullptr, nullptr, 0, 0, 1, 1, 0));
}

TEST_F(Geometry, ChildIsReorderedAmongItsSiblings) {
    RecordingWindow second;
    second.Create("", "", WS_VISIBLE, kChildRect, &top, 8);
    const auto inFront = [&] { return top.view->childAt(kChildRect.left, kChildRect.top); };
    const UINT orderOnly = SWP_NOMOVE | SWP_NOSIZE;
    EXPECT_EQ(inFront(), second.view);
    child.SetWindowPos(&CWnd::wndTop, 0, 0, 0, 0, orderOnly);
    EXPECT_EQ(inFront(), child.view);
    child.SetWindowPos(&CWnd::wndBottom, 0, 0, 0, 0, orderOnly);
    EXPECT_EQ(inFront(), second.view);
    second.SetWindowPos(&child, 0, 0, 0, 0, orderOnly);
    EXPECT_EQ(inFront(), child.view);
    second.SetWindowPos(&CWnd::wndTop, 0, 0, 0, 0, orderOnly | SWP_NOZORDER);
    EXPECT_EQ(inFront(), child.view);
}

TEST_F(Geometry, TopLevelHearsOfACallOnceAndInsideIt) {
    RunFor(std::chrono::milliseconds(30)); // the first reports of the window system
    top.Take();
    top.MoveWindow(100, 110, 280, 190);
    const Messages messages = TakePlaces(top);
    EXPECT_THAT(messages, testing::UnorderedElementsAre(Size(0, 280, 190), Move(100, 110)));
    EXPECT_THAT(WindowRectOf(top), IsRect(100, 110, 380, 300));
    top.MoveWindow(101, 111, 280, 190);
    EXPECT_THAT(TakePlaces(top), ElementsAre(Move(101, 111))) << "the size is the same";
    top.SetWindowPos(nullptr, 105, 115, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_THAT(TakePlaces(top), ElementsAre(Move(105, 115)));
    top.SetWindowPos(nullptr, 0, 0, 270, 180, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_THAT(TakePlaces(top), ElementsAre(Size(0, 270, 180)));
    EXPECT_THAT(WindowRectOf(top), IsRect(105, 115, 375, 295));
    EXPECT_THAT(TakeLatePlaces(top), IsEmpty());
}

TEST_F(Geometry, SizesThatLeaveNothingToGrabAreCorrected) {
    const ShownBox width{"SetWindowPos width error - correcting", "Msg", MB_OKCANCEL};
    const ShownBox height{"SetWindowPos height error - correcting", "Msg", MB_OKCANCEL};
    const struct {
        int cx, cy, correctedX, correctedY;
        std::vector<ShownBox> shown;
    } rows[] = {{9, 80, 100, 80, {width}},
                {10, 80, 10, 80, {}},
                {150, 21, 150, 50, {height}},
                {150, 22, 150, 22, {}},
                {-1, 0, 100, 50, {width, height}}};
    for (const auto& row : rows) {
        top.SetWindowPos(nullptr, 0, 0, row.cx, row.cy, SWP_NOMOVE | SWP_NOZORDER);
        EXPECT_EQ(boxes.Take(), row.shown) << row.cx << " x " << row.cy;
        const RECT rect = WindowRectOf(top);
        EXPECT_EQ(rect.right - rect.left, row.correctedX);
        EXPECT_EQ(rect.bottom - rect.top, row.correctedY);
    }
}

TEST_F(Geometry, TopLevelIsHiddenAndShownByFlags) {
    const UINT nothing = SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE;
    top.SetWindowPos(nullptr, 0, 0, 0, 0, nothing | SWP_HIDEWINDOW);
    EXPECT_FALSE(top.IsWindowVisible());
    top.SetWindowPos(nullptr, 0, 0, 0, 0, nothing | SWP_SHOWWINDOW);
    EXPECT_TRUE(top.IsWindowVisible());
    EXPECT_THAT(top.Take(WM_SHOWWINDOW),
                ElementsAre(Message{WM_SHOWWINDOW, 0, 0}, Message{WM_SHOWWINDOW, 1, 0}));
}

TEST_F(Geometry, WindowDestroyedInsideTheMessageOfItsMove) {
    for (const int number : {WM_SIZE, WM_MOVE}) {
        RecordingWindow inner;
        inner.Create("", "", WS_VISIBLE, RECT{0, 0, 10, 10}, &top, 9);
        inner.on[number] = [&](WPARAM, LPARAM) { return inner.DestroyWindow(); };
        inner.MoveWindow(5, 5, 20, 20);
        EXPECT_EQ(inner.view, nullptr) << number;
        RecordingWindow outer;
        outer.Create("", "", 0, kTopRect, nullptr, 0);
        outer.on[number] = [&](WPARAM, LPARAM) { return outer.DestroyWindow(); };
        outer.SetWindowPos(&CWnd::wndTop, 90, 95, 200, 120, SWP_SHOWWINDOW);
        EXPECT_EQ(outer.view, nullptr) << number;
    }
}

TEST_F(Geometry, ClientCoordinatesGoToTheScreenAndBack) {
    POINT onScreen{3, 4};
    child.ClientToScreen(&onScreen);
    const RECT childRect = WindowRectOf(child);
    EXPECT_EQ(onScreen.x, childRect.left + 3);
    EXPECT_EQ(onScreen.y, childRect.top + 4);
    POINT inTop = onScreen;
    top.ScreenToClient(&inTop);
    EXPECT_EQ(inTop.x, kChildRect.left + 3);
    EXPECT_EQ(inTop.y, kChildRect.top + 4);
    child.ScreenToClient(&onScreen);
    EXPECT_EQ(onScreen.x, 3);
    EXPECT_EQ(onScreen.y, 4);
    RECT rect{1, 2, 11, 22};
    child.ClientToScreen(&rect);
    EXPECT_EQ(rect.right - rect.left, 10);
    EXPECT_EQ(rect.bottom - rect.top, 20);
    child.ScreenToClient(&rect);
    EXPECT_THAT(rect, IsRect(1, 2, 11, 22));
    QWidget alone;
    alone.move(200, 200);
    POINT withoutWindow{7, 8};
    ClientToScreen(&alone, &withoutWindow);
    EXPECT_EQ(withoutWindow.x, 0);
    POINT unchanged{7, 8};
    ClientToScreen(nullptr, &unchanged);
    EXPECT_EQ(unchanged.x, 7);
}

TEST_F(Geometry, FlippedViewsKeepPositionsTopDown) {
    child.MoveWindow(30, 40, 100, 100);
    child.setFlipped(false);
    EXPECT_FALSE(View().isFlipped());
    child.Take();
    QTest::mouseClick(child.view, Qt::LeftButton, {}, QPoint(12, 70));
    EXPECT_EQ(child.Take(WM_LBUTTONDOWN)[0].lParam, MAKELPARAM(12, 70));
    top.setFlipped(false); // no view of its own
    CWnd().setFlipped(true);
}

TEST_F(Geometry, DeepestObjectIsFoundUnderAPoint) {
    RecordingWindow inner;
    inner.Create("", "", WS_VISIBLE, RECT{10, 10, 30, 30}, &child, 8);
    QLabel label(child.view);
    label.setGeometry(50, 10, 20, 20);
    label.show();
    const struct {
        const char* what;
        POINT point;
        CWnd* found;
    } rows[] = {{"child of a child", {45, 55}, &inner},
                {"child", {31, 41}, &child},
                {"view without an object", {85, 55}, &child},
                {"between the children", {5, 5}, &top},
                {"outside", {-1, 5}, nullptr}};
    for (const auto& row : rows) {
        EXPECT_EQ(top.ChildWindowFromPoint(row.point), row.found) << row.what;
        EXPECT_EQ(top.ChildWindowFromPoint(row.point, 7), row.found) << row.what;
        const auto isFoundOnScreen = [&] {
            POINT onScreen = row.point;
            top.ClientToScreen(&onScreen);
            return CWnd::WindowFromPoint(onScreen) == row.found;
        };
        if (row.found) {
            EXPECT_TRUE(RunUntil(isFoundOnScreen)) << row.what;
        }
    }
    inner.ShowWindow(SW_HIDE);
    EXPECT_EQ(top.ChildWindowFromPoint({45, 55}), &child);
    EXPECT_EQ(CWnd().ChildWindowFromPoint({0, 0}), nullptr);
    EXPECT_EQ(CWnd::WindowFromPoint({-500, -500}), nullptr);
}

TEST_F(Geometry, BackingScaleIsThatOfTheWindow) {
    EXPECT_EQ(child.GetBackingScaleFactor(), float(child.view->devicePixelRatioF()));
    EXPECT_EQ(CWnd().GetBackingScaleFactor(), 1.0f);
}

TEST_F(Geometry, ClientRectangles) {
    RECT rect{};
    child.GetClientRect(&rect);
    EXPECT_THAT(rect, IsRect(0, 0, 100, 60));
    top.GetClientRect(&rect);
    EXPECT_EQ(rect.right, 300);
    EXPECT_EQ(rect.bottom, 200);
    CWnd without;
    RECT screen{};
    without.GetClientRect(&rect);
    without.GetWindowRect(&screen);
    EXPECT_GT(rect.right, 0);
    EXPECT_EQ(screen.right - screen.left, rect.right) << "the whole screen";
    EXPECT_EQ(screen.bottom, rect.bottom);
}

TEST_F(Tree, ParentIsTheRecordedOneElseTheObjectItself) {
    EXPECT_EQ(child.GetParent(), &top);
    CWnd without;
    EXPECT_EQ(without.GetParent(), nullptr);
    QWidget plain(top.view);
    CWnd attached;
    attached.Attach(&plain);
    EXPECT_EQ(attached.GetParent(), &attached);
    attached.SubclassWindow(&plain);
    RemoveControlReference(&attached);
    EXPECT_EQ(attached.GetParent(), nullptr) << "no binding to find";
    attached.Detach();
    CWinApp app;
    AfxSetMainWnd(&top);
    QWidget alone;
    attached.Attach(&alone);
    EXPECT_EQ(attached.GetParent(), &top) << "the main window";
    attached.Detach();
    AfxSetMainWnd(nullptr);
}

TEST_F(Tree, HandlesKnowTheirParentsUpToTheContent) {
    EXPECT_EQ(GetParent(child.view), top.view);
    EXPECT_EQ(GetParent(top.view), nullptr);
    EXPECT_EQ(GetParent(nullptr), nullptr);
    RecordingWindow inner;
    inner.Create("", "", 0, RECT{0, 0, 5, 5}, &child, 8);
    EXPECT_TRUE(top.IsChild(&inner));
    EXPECT_TRUE(IsChild(child.view, inner.view));
    EXPECT_FALSE(inner.IsChild(&child));
    EXPECT_FALSE(child.IsChild(&child));
    EXPECT_FALSE(child.IsChild(nullptr));
    EXPECT_FALSE(IsChild(nullptr, child.view));
    EXPECT_EQ(inner.GetParentFrame(), &top);
    EXPECT_EQ(inner.GetFrameWnd(), top.view);
    EXPECT_EQ(CWnd().GetParentFrame(), nullptr);
}

TEST_F(Tree, PluginEnvironmentBelievesEveryView) {
    QWidget alone;
    EXPECT_TRUE(NSViewIsValid(child.view));
    EXPECT_TRUE(NSViewIsValid(top.view));
    EXPECT_FALSE(NSViewIsValid(&alone));
    EXPECT_FALSE(NSViewIsValid(nullptr));
    vm::App().isPluginEnvironment = true;
    EXPECT_TRUE(NSViewIsValid(&alone));
    EXPECT_TRUE(NSViewIsValid(nullptr));
    vm::App().isPluginEnvironment = false;
}
