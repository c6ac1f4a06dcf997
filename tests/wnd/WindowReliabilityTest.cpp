// Windows that end in the middle of what they are told, loops inside loops, and many windows one after
// the other. VMCORE_CHILDREN=1000000 makes that many.
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <new>

#include <unistd.h>

#include <QtCore/QMimeData>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtCore/QUrl>
#include <QtGui/QDropEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include "RecordingWindow.h"
#include "platform/runloop.h"
#include "wnd/CWndNSWindow.h"

namespace {

// A window object whose memory is overwritten when it is deleted: who still follows a pointer to it
// ends at an address that is none.
class Mortal {
public:
    Mortal() : m_window(new (m_place) RecordingWindow) {}
    ~Mortal() { Delete(); }
    Mortal(const Mortal&) = delete;
    Mortal& operator=(const Mortal&) = delete;

    RecordingWindow& operator*() { return *m_window; }
    RecordingWindow* operator->() { return m_window; }
    bool IsDeleted() const { return !m_window; }
    void Delete() {
        if (!m_window) return;
        std::exchange(m_window, nullptr)->~RecordingWindow();
        std::memset(m_place, 0x7F, sizeof m_place);
    }

private:
    alignas(RecordingWindow) unsigned char m_place[sizeof(RecordingWindow)];
    RecordingWindow* m_window;
};

enum class End { Destroyed, Deleted, DestroyedAndDeleted, DestroyedInALoop };

std::string NameOf(const testing::TestParamInfo<End>& info) {
    const char* const names[] = {"Destroyed", "Deleted", "DestroyedAndDeleted", "DestroyedInALoop"};
    return names[static_cast<int>(info.param)];
}

// A way to have a message sent to a window, as a user, the host or the window system does.
struct Cause {
    const char* what;
    int message;
    std::function<void(RecordingWindow&)> act;
};

void Drop(QWidget& view, const QWidget& place) {
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile("/tmp/one.syx")});
    const QPoint at = place.mapTo(view.window(), place.rect().center());
    QDragEnterEvent enter(at, Qt::CopyAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(view.window()->windowHandle(), &enter);
    QDropEvent drop(at, Qt::CopyAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(view.window()->windowHandle(), &drop);
}

class WindowReliability : public testing::TestWithParam<End> {
protected:
    // Whatever the cause brings, the window ends in the first message of that number.
    void EndInside(Mortal& window, const Cause& cause) {
        SCOPED_TRACE(cause.what);
        const QPointer<QWidget> view = window->view;
        window->on[cause.message] = [&](WPARAM, LPARAM) {
            window->on.clear();
            ended = true;
            Finish(window);
            return GetParam() == End::Deleted ? 0 : 1; // "not handled", by nobody
        };
        ended = false;
        QTimer::singleShot(0, [&] { cause.act(*window); }); // as from the toolkit's loop
        RunUntil([&] { return ended; }, std::chrono::seconds(2));
        EXPECT_TRUE(ended);
        if (GetParam() != End::Deleted) {
            EXPECT_TRUE(RunUntil([&] { return !view; }));
        }
        RunFor(std::chrono::milliseconds(2)); // what comes late finds nobody
    }

    Watchdog watchdog{std::chrono::seconds(60)};
    LogCapture log;
    bool ended = false;

private:
    static void Finish(Mortal& window) {
        switch (GetParam()) {
        case End::Destroyed:
            window->DestroyWindow();
            return;
        case End::DestroyedAndDeleted:
            window->DestroyWindow();
            [[fallthrough]];
        case End::Deleted:
            return window.Delete();
        case End::DestroyedInALoop: { // while a question to the user is up
            QTimer::singleShot(0, [&window] { window->DestroyWindow(); });
            EXPECT_TRUE(RunUntil([&] { return !window->view; }));
            return RunFor(std::chrono::milliseconds(20)); // repaints what it covered
        }
        }
    }
};

const Cause kOfAChild[] = {
    {"paint", WM_PAINT, [](RecordingWindow& wnd) { wnd.Invalidate(); }},
    {"size by the host", WM_SIZE, [](RecordingWindow& wnd) { wnd.MoveWindow(1, 2, 30, 40); }},
    {"move by the host", WM_MOVE, [](RecordingWindow& wnd) { wnd.MoveWindow(1, 2, 30, 40); }},
    {"size by a layout", WM_SIZE, [](RecordingWindow& wnd) { wnd.view->resize(33, 44); }},
    {"scale", WM_SIZE, [](RecordingWindow& wnd) { wnd.SetWindowScaling(2.0f); }},
    {"show", WM_SHOWWINDOW, [](RecordingWindow& wnd) { wnd.ShowWindow(SW_HIDE); }},
    {"command", WM_COMMAND, [](RecordingWindow& wnd) { wnd.SendMessage(WM_COMMAND, 7, 0); }},
    {"posted command", WM_COMMAND, [](RecordingWindow& wnd) { wnd.PostMessage(WM_COMMAND, 7); }},
    {"timer", WM_TIMER, [](RecordingWindow& wnd) { wnd.SetTimer(1, 1); }},
    {"key", WM_KEYDOWN, [](RecordingWindow& wnd) { QTest::keyPress(wnd.view, Qt::Key_A); }},
    {"character", WM_CHAR, [](RecordingWindow& wnd) { QTest::keyPress(wnd.view, Qt::Key_A); }},
    {"click", WM_LBUTTONDOWN,
     [](RecordingWindow& wnd) { QTest::mousePress(wnd.view, Qt::LeftButton); }},
    {"release", WM_LBUTTONUP,
     [](RecordingWindow& wnd) { QTest::mouseRelease(wnd.view, Qt::LeftButton); }},
    {"focus", WM_SETFOCUS, [](RecordingWindow& wnd) { wnd.SetFocus(); }},
    {"close", WM_CLOSE, [](RecordingWindow& wnd) { wnd.SendMessage(WM_CLOSE); }},
    {"drop", WM_DROPFILES,
     [](RecordingWindow& wnd) {
         wnd.DragAcceptFiles();
         Drop(*wnd.view, *wnd.view);
     }},
};

const Cause kOfAWindow[] = {
    {"size by the host", WM_SIZE, [](RecordingWindow& wnd) { wnd.MoveWindow(90, 95, 200, 150); }},
    {"move by the host", WM_MOVE,
     [](RecordingWindow& wnd) { wnd.SetWindowPos(nullptr, 90, 95, 200, 150, 0); }},
    {"size by the window manager", WM_SIZE,
     [](RecordingWindow& wnd) { wnd.nsWindow->resize(222, 111); }},
    {"move by the window manager", WM_MOVE,
     [](RecordingWindow& wnd) { wnd.nsWindow->move(222, 111); }},
    {"limits", WM_GETMINMAXINFO, [](RecordingWindow& wnd) { wnd.nsWindow->resize(222, 111); }},
    {"command", WM_COMMAND, [](RecordingWindow& wnd) { wnd.SendMessage(WM_COMMAND, 7, 0); }},
    {"timer", WM_TIMER, [](RecordingWindow& wnd) { wnd.SetTimer(1, 1); }},
    {"close query", WM_QUERYCLOSE, [](RecordingWindow& wnd) { wnd.nsWindow->close(); }},
    {"close", WM_CLOSE, [](RecordingWindow& wnd) { wnd.nsWindow->close(); }},
    {"key window", WM_SETFOCUS,
     [](RecordingWindow& wnd) { vm::DelegateOf(wnd.nsWindow)->windowDidBecomeKey(); }},
    {"main window", WM_ACTIVATE,
     [](RecordingWindow& wnd) { vm::DelegateOf(wnd.nsWindow)->windowDidBecomeMain(); }},
    {"no longer main", WM_MDIACTIVATE,
     [](RecordingWindow& wnd) { vm::DelegateOf(wnd.nsWindow)->windowDidResignMain(); }},
    {"minimised", WM_MOVE,
     [](RecordingWindow& wnd) { wnd.nsWindow->setWindowState(Qt::WindowMinimized); }},
    {"drop", WM_DROPFILES,
     [](RecordingWindow& wnd) {
         wnd.DragAcceptFiles();
         Drop(*wnd.view, *wnd.view);
     }},
};

long ResidentKilobytes() {
    std::ifstream file("/proc/self/statm");
    long size = 0, resident = 0;
    file >> size >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

} // namespace

TEST_P(WindowReliability, ChildMayEndInAnyOfItsMessages) {
    RecordingWindow top;
    top.Create("", "", WS_VISIBLE | WS_OVERLAPPEDWINDOW, RECT{80, 90, 380, 290}, nullptr, 0);
    top.BringWindowToTop();
    RunFor(std::chrono::milliseconds(1));
    for (const Cause& cause : kOfAChild) {
        Mortal child;
        child->Create("", "", WS_VISIBLE, RECT{30, 40, 130, 100}, &top, 7);
        const QPointer<QWidget> view = child->view;
        EndInside(child, cause);
        delete view; // of an object that was only deleted
    }
    top.DestroyWindow();
}

TEST_P(WindowReliability, WindowMayEndInAnyOfItsMessages) {
    for (const Cause& cause : kOfAWindow) {
        Mortal top;
        top->Create("", "", WS_VISIBLE | WS_OVERLAPPEDWINDOW, RECT{80, 90, 380, 290}, nullptr, 0);
        RunFor(std::chrono::milliseconds(1));
        const QPointer<QWidget> window = top->nsWindow;
        EndInside(top, cause);
        delete window;
    }
}

INSTANTIATE_TEST_SUITE_P(Window, WindowReliability,
                         testing::Values(End::Destroyed, End::Deleted, End::DestroyedAndDeleted,
                                         End::DestroyedInALoop),
                         NameOf);

using Loops = WindowFixture;

TEST_F(Loops, TenDeepEndFromTheInside) {
    constexpr int kDepth = 10;
    std::vector<int> order;
    int depth = 0;
    top.on[WM_COMMAND] = [&](WPARAM, LPARAM) {
        const int mine = ++depth;
        if (mine < kDepth) {
            child.PostMessage(WM_USER, 1); // every loop delivers
            top.PostMessage(WM_COMMAND, 1);
        } else {
            QTimer::singleShot(0, [] { vm::EndAllLoops(); });
        }
        vm::RunLoop();
        order.push_back(mine);
        return 1;
    };
    top.PostMessage(WM_COMMAND, 1);
    vm::RunLoop();
    EXPECT_EQ(order, (std::vector<int>{10, 9, 8, 7, 6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(child.Take(WM_USER).size(), 9u);
    EXPECT_EQ(vm::RunningLoops(), 0);
}

TEST(ManyWindows, LeaveNoMemoryBehind) {
    const char* const wanted = std::getenv("VMCORE_CHILDREN");
    const int rounds = wanted ? std::atoi(wanted) : 20000;
    const Watchdog watchdog(std::chrono::seconds(60 + rounds / 500));
    RecordingWindow top;
    top.Create("", "", WS_VISIBLE, RECT{80, 90, 380, 290}, nullptr, 0);
    constexpr int kTogether = 50;
    const auto makeSome = [&](int count) {
        for (int made = 0; made < count; made += kTogether) {
            std::vector<std::unique_ptr<CWnd>> children;
            for (int i = 0; i < kTogether; ++i) {
                auto& wnd = children.emplace_back(std::make_unique<CWnd>());
                wnd->Create("", "", i % 5 ? WS_VISIBLE : WS_VISIBLE | WS_VSCROLL,
                            RECT{30, 40, 130, 100}, &top, 9);
                if (i % 7 == 0) wnd->SetTimer(1, 1000);
            }
            for (const auto& wnd : children) wnd->DestroyWindow();
            RunFor(std::chrono::milliseconds(0));
        }
    };
    makeSome(2000); // what is kept once
    const long before = ResidentKilobytes();
    makeSome(rounds);
    const long growth = ResidentKilobytes() - before;
    RecordProperty("kilobytes", static_cast<int>(growth));
#if !defined(__SANITIZE_ADDRESS__) // which keeps what was freed, and looks for leaks itself
    EXPECT_LT(growth, 2048) << rounds << " children";
#endif
    EXPECT_TRUE(top.view->children().isEmpty());
    top.DestroyWindow();
}
