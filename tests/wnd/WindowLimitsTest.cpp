// What the user may do to a top-level window: its limits, its owner, files dropped on it.
#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDropEvent>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>

#include "RecordingWindow.h"
#include "controls/menuState.h"
#include "core/guard.h"
#include "wnd/CWndNSWindow.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Limits : public WindowFixture {
protected:
    static constexpr int kSmallest = 150;
    static constexpr int kLargest = 500;

    int Answer(LPARAM lParam, int result) {
        auto& limits = *reinterpret_cast<MINMAXINFO*>(lParam);
        asked.push_back(limits);
        limits.ptMinTrackSize = CPoint(kSmallest, kSmallest);
        limits.ptMaxTrackSize = CPoint(kLargest, kLargest);
        return result;
    }
    // The frame's borders, which the toolkit does not count.
    QSize Borders() {
        const QMargins margins = top.nsWindow->windowHandle()->frameMargins();
        return {margins.left() + margins.right(), margins.top() + margins.bottom()};
    }

    std::vector<MINMAXINFO> asked;
};

QPoint PointOf(const POINT& point) {
    return {point.x, point.y};
}

class FileDrops : public WindowFixture {
protected:
    FileDrops() { files.setUrls({QUrl::fromLocalFile("/tmp/one.syx")}); }

    // A drag over a place of the window, and the drop there when somebody takes it.
    bool Drop(QPoint place) {
        QWindow* const window = top.nsWindow->windowHandle();
        QDragEnterEvent enter(place, Qt::CopyAction, &files, Qt::LeftButton, {});
        enter.ignore();
        QApplication::sendEvent(window, &enter);
        if (!enter.isAccepted()) return false;
        QDropEvent drop(place, Qt::CopyAction, &files, Qt::LeftButton, {});
        QApplication::sendEvent(window, &drop);
        return true;
    }
    static constexpr QPoint kOnChild{50, 60};
    static constexpr QPoint kOnTop{250, 150};

    QMimeData files;
};

} // namespace

TEST_F(Limits, AreAskedForOnceTheFrameIsKnown) {
    top.on[WM_GETMINMAXINFO] = [&](WPARAM, LPARAM lParam) { return Answer(lParam, 1); };
    ASSERT_TRUE(RunUntil([&] { return !asked.empty(); }));
    const MINMAXINFO given = asked[0];
    const QSize screens = top.nsWindow->screen()->virtualSize();
    EXPECT_EQ(PointOf(given.ptMaxSize), QPoint(screens.width(), screens.height()));
    EXPECT_EQ(PointOf(given.ptMaxPosition), QPoint(0, 40));
    EXPECT_EQ(PointOf(given.ptMinTrackSize), QPoint(0, 0));
    EXPECT_EQ(PointOf(given.ptMaxTrackSize), QPoint(screens.width(), screens.height()));
    EXPECT_EQ(top.nsWindow->minimumSize() + Borders(), QSize(kSmallest, kSmallest));
    EXPECT_EQ(top.nsWindow->maximumSize() + Borders(), QSize(kLargest, kLargest));
    top.nsWindow->resize(200, 180); // as the user does
    ASSERT_TRUE(RunUntil([&] { return asked.size() > 1; }));
    EXPECT_EQ(asked.size(), 2u) << "again with every step";
}

TEST_F(Limits, BindTheUserAndNotTheHost) {
    top.on[WM_GETMINMAXINFO] = [&](WPARAM, LPARAM lParam) { return Answer(lParam, 1); };
    ASSERT_TRUE(RunUntil([&] { return !asked.empty(); }));
    for (const QSize size : {QSize(100, 90), QSize(600, 550), QSize(300, 200)}) {
        top.MoveWindow(80, 90, size.width(), size.height());
        RECT rect{};
        top.GetWindowRect(&rect);
        EXPECT_EQ(QSize(rect.right - rect.left, rect.bottom - rect.top), size);
        EXPECT_EQ(top.nsWindow->size() + Borders(), size) << "also natively";
    }
    EXPECT_EQ(top.nsWindow->minimumSize() + Borders(), QSize(kSmallest, kSmallest));
    EXPECT_EQ(top.nsWindow->maximumSize() + Borders(), QSize(kLargest, kLargest));
}

TEST_F(Limits, CountOnlyWithTheAnswerOne) {
    for (const int answer : {0, 2, -1}) {
        asked.clear();
        top.on[WM_GETMINMAXINFO] = [&](WPARAM, LPARAM lParam) { return Answer(lParam, answer); };
        top.nsWindow->Delegate()->windowWillStartLiveResize();
        ASSERT_EQ(asked.size(), 1u);
        EXPECT_LE(top.nsWindow->minimumWidth(), 0) << answer;
    }
    top.on[WM_GETMINMAXINFO] = [](WPARAM, LPARAM) -> int { throw vm::PlatformError("Limits"); };
    top.nsWindow->Delegate()->windowWillStartLiveResize();
    EXPECT_THAT(log.TakeLog(),
                ElementsAre("exception at CWndDelegate::windowWillStartLiveResize() - Limits"));
    top.on[WM_GETMINMAXINFO] = [&](WPARAM, LPARAM) { return top.DestroyWindow(); };
    top.nsWindow->Delegate()->windowWillStartLiveResize();
    EXPECT_EQ(top.view, nullptr);
}

TEST_F(Limits, FrameAskedForBeforeItIsKnownIsKeptWithBordersAndMenuBar) {
    QMenu menu;
    menu.addMenu("File");
    for (const bool withMenu : {false, true}) {
        vm::Menus().mainMenu = withMenu ? &menu : nullptr;
        RecordingWindow wnd;
        auto& window =
            *new vm::NativeWindow(QRect(100, 100, 200, 150), vm::FrameStyle::Decorated, false);
        window.SetDelegate(new CWndDelegate(&window));
        wnd.AttachMacWnd(&window);
        wnd.MoveWindow(110, 120, 400, 300);
        if (withMenu) window.SetMenuBarShown(true);
        window.OrderFront(true);
        const QRect frame(110, 120, 400, 300);
        EXPECT_EQ(window.MenuBar() != nullptr, withMenu);
        EXPECT_TRUE(
            RunUntil([&] { return window.frameGeometry() == frame; }, std::chrono::seconds(2)))
            << withMenu;
        EXPECT_EQ(window.Frame(), frame);
        // Told in the call and, when the content had shrunk, once more.
        const Message size{WM_SIZE, 0, MAKELPARAM(400, 300)};
        Messages told;
        const auto hear = [&] {
            for (const Message& message : wnd.Take(WM_SIZE)) told.push_back(message);
            return told.size() >= 2;
        };
        EXPECT_TRUE(RunUntil(hear, std::chrono::seconds(2))) << withMenu;
        RunFor(std::chrono::milliseconds(30));
        hear();
        EXPECT_THAT(told, ElementsAre(size, size)) << withMenu;
        wnd.DestroyWindow();
    }
    vm::Menus().mainMenu = nullptr;
}

TEST_F(Limits, FixedFramesFollowOnlyTheHost) {
    RecordingWindow fixed;
    fixed.Create("", "", WS_VISIBLE, RECT{100, 100, 300, 250}, nullptr, 0);
    const auto isFixedAt = [&](QSize size) {
        const NSWindow& window = *fixed.nsWindow;
        return window.size() == size && window.minimumSize() == size &&
               window.maximumSize() == size;
    };
    EXPECT_TRUE(isFixedAt({200, 150}));
    const QMargins margins = fixed.nsWindow->windowHandle()->frameMargins();
    for (const QSize size : {QSize(400, 300), QSize(120, 80)}) {
        fixed.MoveWindow(100, 100, size.width(), size.height());
        EXPECT_TRUE(isFixedAt(size.shrunkBy(margins))) << size.width();
        fixed.SetWindowPos(nullptr, 0, 0, size.width() + 20, size.height(), SWP_NOMOVE);
        EXPECT_TRUE(isFixedAt((size + QSize(20, 0)).shrunkBy(margins))) << size.width();
    }
    bool wasAsked = false;
    fixed.on[WM_GETMINMAXINFO] = [&](WPARAM, LPARAM) { return wasAsked = true; };
    RunFor(std::chrono::milliseconds(30));
    EXPECT_FALSE(wasAsked) << "there is nothing to limit";
    fixed.DestroyWindow();
}

TEST_F(Limits, WindowShownAgainIsNotClosedByThePlatformAnyMore) {
    top.on[WM_CLOSE] = [](WPARAM, LPARAM) { return 1; }; // kept
    EXPECT_TRUE(top.nsWindow->close());
    EXPECT_TRUE(top.closedByPlatform);
    top.ShowWindow(SW_SHOW);
    EXPECT_FALSE(top.closedByPlatform);
}

TEST_F(Limits, DialogAppearsOverTheMiddleOfItsOwner) {
    vm::NativeWindow dialog(QRect(0, 0, 100, 80), vm::FrameStyle::Dialog, false);
    dialog.SetOwner(top.nsWindow);
    dialog.OrderFront(true);
    const QPoint off = dialog.Frame().center() - top.nsWindow->Frame().center();
    EXPECT_LE(off.manhattanLength(), 4);
    EXPECT_EQ(dialog.windowHandle()->transientParent(), top.nsWindow->windowHandle());
    EXPECT_EQ(dialog.minimumSize(), dialog.maximumSize());
    dialog.SetUserResizable(true);
    EXPECT_NE(dialog.minimumSize(), dialog.maximumSize());

    vm::NativeWindow placed(QRect(0, 0, 100, 80), vm::FrameStyle::Dialog, false);
    placed.SetOwner(top.nsWindow);
    placed.MoveFrame({20, 30});
    placed.OrderFront(true);
    EXPECT_EQ(placed.Frame().topLeft(), QPoint(20, 30)) << "where its host put it";

    top.MoveWindow(-90, -80, 100, 100);
    vm::NativeWindow inside(QRect(0, 0, 300, 200), vm::FrameStyle::Dialog, false);
    inside.SetOwner(top.nsWindow);
    inside.OrderFront(true);
    EXPECT_TRUE(inside.screen()->availableGeometry().contains(inside.Frame().topLeft()));

    vm::NativeWindow alone(QRect(0, 0, 100, 80), vm::FrameStyle::Dialog, false);
    alone.OrderFront(true);
    const QPoint middle = alone.screen()->availableGeometry().center();
    EXPECT_LE((alone.Frame().center() - middle).manhattanLength(), 4);
}

TEST_F(FileDrops, ArriveOnlyWhereTheyAreAccepted) {
    EXPECT_FALSE(Drop(kOnChild));
    EXPECT_FALSE(Drop(kOnTop));
    const auto read = [](WPARAM wParam, LPARAM) {
        char path[64] = "";
        DragQueryFile(reinterpret_cast<NSArray*>(wParam), 0, path, sizeof path);
        EXPECT_STREQ(path, "/tmp/one.syx");
        return 1;
    };
    top.on[WM_DROPFILES] = child.on[WM_DROPFILES] = read;
    top.DragAcceptFiles();
    EXPECT_TRUE(Drop(kOnTop));
    EXPECT_TRUE(Drop(kOnChild)) << "the window takes what its views leave";
    EXPECT_EQ(top.Take(WM_DROPFILES).size(), 2u);
    child.DragAcceptFiles();
    EXPECT_TRUE(Drop(kOnChild));
    EXPECT_EQ(child.Take(WM_DROPFILES).size(), 1u);
    EXPECT_THAT(top.Take(WM_DROPFILES), IsEmpty());
    child.DragAcceptFiles(FALSE);
    top.DragAcceptFiles(FALSE);
    EXPECT_FALSE(Drop(kOnChild));
    EXPECT_FALSE(Drop(kOnTop));
    top.DragAcceptFiles();
    files.clear();
    files.setText("no file");
    EXPECT_FALSE(Drop(kOnTop));
    CWnd().DragAcceptFiles();
}

TEST_F(FileDrops, WhatThePlatformReportsIsLogged) {
    top.DragAcceptFiles();
    top.on[WM_DROPFILES] = [](WPARAM, LPARAM) -> int { throw vm::PlatformError("Drop"); };
    EXPECT_TRUE(Drop(kOnTop));
    EXPECT_THAT(log.TakeLog(),
                ElementsAre("exception at CWndDelegate::performDragOperation() - Drop"));
    CWndDelegate delegate(top.nsWindow);
    vm::NativeWindow& window = *top.nsWindow;
    top.DestroyWindow();
    delegate.dragAcceptFiles(TRUE);
    EXPECT_THAT(log.TakeLog(),
                ElementsAre("exception at CWndDelegate::dragAcceptFiles() - DeadView"));
    EXPECT_TRUE(window.isHidden());
}
