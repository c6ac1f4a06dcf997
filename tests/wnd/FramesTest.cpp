#include <vmcore/wnd/frames.h>

#include <QtWidgets/QLabel>

#include <vmcore/app/CWinApp.h>

#include "RecordingWindow.h"
#include "platform/pathList.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Frames : public WindowFixture {};

// The status bar of the fixture's window, with the label that shows its text.
class StatusBar : public WindowFixture {
protected:
    QLabel* Strip() const { return bar.view ? bar.view->findChild<QLabel*>() : nullptr; }
    CStatusBar bar;
};

} // namespace

TEST_F(Frames, LoadFrameOpensASmallWindow) {
    Recording<CFrameWnd> frame;
    EXPECT_TRUE(frame.LoadFrame(99, WS_VISIBLE, &top));
    EXPECT_EQ(NumbersOf(frame.Take()), (std::vector<int>{WM_CREATE, WM_SIZE, WM_MOVE}));
    RECT rect{};
    frame.GetClientRect(&rect);
    EXPECT_THAT(rect, IsRect(0, 0, 100, 100));
    frame.GetWindowRect(&rect);
    EXPECT_EQ(rect.top, 46);
    EXPECT_NE(frame.nsWindow, nullptr) << "a top-level window even with a parent";
    EXPECT_EQ(frame.GetParent(), &top);
    frame.DestroyWindow();
}

TEST_F(Frames, MDIFrameOpensNoWindow) {
    Recording<CMDIFrameWnd> frame;
    CREATESTRUCT given;
    std::memset(&given, 0xFF, sizeof given);
    frame.on[WM_CREATE] = [&](WPARAM, LPARAM lParam) {
        given = *reinterpret_cast<const CREATESTRUCT*>(lParam);
        return 0;
    };
    EXPECT_TRUE(frame.LoadFrame(99));
    EXPECT_EQ(NumbersOf(frame.Take()), std::vector<int>{WM_CREATE});
    EXPECT_EQ(given.style, 0u);
    EXPECT_EQ(given.cx, 0);
    EXPECT_EQ(given.lpszName, nullptr);
    EXPECT_EQ(frame.view, nullptr);
    EXPECT_EQ(frame.nsWindow, nullptr);
    BOOL maximized = TRUE;
    frame.MDIGetActive(&maximized);
    EXPECT_FALSE(maximized);
    EXPECT_EQ(frame.MDIGetActive(), CWnd::GetActiveWindow());
}

TEST_F(Frames, TitleNeedsAWindow) {
    CFrameWnd frame;
    frame.SetTitle("None");
    EXPECT_STREQ(frame.GetTitle(), "");
    frame.LoadFrame(0);
    frame.SetTitle("Title");
    EXPECT_STREQ(frame.GetTitle(), "Title");
    EXPECT_EQ(frame.nsWindow->windowTitle(), "Title");
    frame.DestroyWindow();
}

TEST_F(Frames, FrameTakesOverAWindowAndGivesItBack) {
    CMDIFrameWnd frame;
    NSWindow* const window = top.nsWindow;
    EXPECT_TRUE(frame.AttachMacWnd(window));
    EXPECT_EQ(frame.view, window->ContentView());
    EXPECT_EQ(GetWRefCon(window), &frame);
    EXPECT_EQ(frame.DetachMacWnd(), window);
    EXPECT_EQ(frame.view, nullptr);
    EXPECT_EQ(GetWRefCon(window), &frame) << "detaching unregisters nothing";
    SetWRefCon(window, &top);
}

TEST_F(Frames, CommandsOfAChildFrameGoToItsFirstWindow) {
    Recording<CMDIChildWnd> frame;
    frame.LoadFrame(0);
    EXPECT_FALSE(frame.OnCommand(42, 0));
    RecordingWindow inner;
    inner.Create("", "", 0, RECT{0, 0, 5, 5}, &frame, 1);
    inner.Take();
    inner.on[WM_COMMAND] = [](WPARAM, LPARAM) { return 1; };
    EXPECT_TRUE(frame.OnCommand(42, 0));
    EXPECT_THAT(inner.Take(WM_COMMAND), ElementsAre(Message{WM_COMMAND, 42, 0}));
    frame.DestroyWindow();
}

TEST_F(Frames, ClosingDestroysTheWindow) {
    CFrameWnd frame;
    frame.LoadFrame(0);
    frame.OnClose();
    EXPECT_EQ(frame.view, nullptr);
    child.OnClose();
    EXPECT_EQ(child.view, nullptr);
}

TEST_F(StatusBar, IsAStripAtTheBottomOfItsParent) {
    EXPECT_TRUE(bar.Create(&top));
    EXPECT_EQ(bar.view->geometry(), QRect(0, 184, 300, 16));
    ASSERT_NE(Strip(), nullptr);
    EXPECT_EQ(Strip()->geometry(), QRect(2, 1, 296, 15));
    bar.MoveWindow(0, 184, 200, 16);
    EXPECT_EQ(Strip()->geometry(), QRect(2, 1, 196, 15));
}

TEST_F(StatusBar, EveryIndexIsTheOneText) {
    EXPECT_FALSE(bar.SetPaneText(0, "too early"));
    bar.Create(&top);
    EXPECT_TRUE(bar.SetPaneText(3, "x"));
    EXPECT_EQ(Strip()->text(), "x");
    EXPECT_TRUE(bar.SetPaneText(0, "y"));
    EXPECT_EQ(Strip()->text(), "y");
}

TEST_F(StatusBar, ParentWithoutAViewGetsNone) {
    CWnd without;
    EXPECT_TRUE(bar.Create(&without));
    EXPECT_EQ(bar.view, nullptr);
    EXPECT_FALSE(bar.SetPaneText(0, "x"));
}

TEST(DroppedFiles, AreCountedAndReadWithinTheBuffer) {
    vm::PathList drop;
    drop.paths = {"/tmp/one.syx", "/tmp/two.syx"};
    char buffer[16] = "...............";
    EXPECT_EQ(DragQueryFile(&drop, 0xFFFFFFFF, nullptr, 0), 2u);
    EXPECT_EQ(DragQueryFile(&drop, 1, buffer, sizeof buffer), 12u);
    EXPECT_STREQ(buffer, "/tmp/two.syx");
    EXPECT_EQ(DragQueryFile(&drop, 2, buffer, sizeof buffer), 0u);
    EXPECT_EQ(DragQueryFile(nullptr, 0xFFFFFFFF, buffer, sizeof buffer), 0u);
    char small[] = "........";
    DragQueryFile(&drop, 0, small, 5);
    EXPECT_EQ(std::string(small, 4), "/tmp");
    EXPECT_STREQ(small + 5, "...") << "nothing behind the size";
}

TEST(DroppedFiles, NameThatIsNotASCIIIsRefusedWithLengthTwo) {
    MessageBoxRecorder boxes;
    vm::PathList drop;
    drop.paths = {"/tmp/gr\xC3\xBC\xC3\x9F"
                  "e.syx"};
    char buffer[32] = "before";
    EXPECT_EQ(DragQueryFile(&drop, 0, buffer, sizeof buffer), 2u);
    EXPECT_STREQ(buffer, "");
    EXPECT_THAT(
        boxes.Take(),
        ElementsAre(ShownBox{"Dravik can only read files with ASCII names.\nPlease edit the name",
                             "Dravik", 1}));
    EXPECT_EQ(DragQueryFile(&drop, 0xFFFFFFFF, nullptr, 0), 1u);
}
