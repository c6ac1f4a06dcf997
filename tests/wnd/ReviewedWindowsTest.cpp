// What may end in the middle of something: views and objects that go inside their own handlers or
// in an unusual order, and how often a change of size is reported.
#include <vmcore/wnd/CWnd.h>

#include <cstring>
#include <functional>
#include <new>
#include <stdexcept>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <gmock/gmock.h>

#include <vmcore/gdi/CPaintDC.h>

#include "platform/runloop.h"
#include "support/LogCapture.h"
#include "support/Watchdog.h"
#include "wnd/CWndNSView.h"
#include "wnd/CWndNSWindow.h"
#include "wnd/NativeWindow.h"
#include "wnd/viewEvents.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct Sent {
    UINT message;
    WPARAM wParam;
    int low;
    int high;
    bool operator==(const Sent&) const = default;
    friend void PrintTo(const Sent& sent, std::ostream* out) {
        *out << sent.message << '(' << sent.wParam << ", " << sent.low << ", " << sent.high << ')';
    }
};

class Window : public CWnd {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_SIZE || message == WM_MOVE)
            geometry.push_back({static_cast<UINT>(message), wParam,
                                static_cast<short>(LOWORD(lParam)),
                                static_cast<short>(HIWORD(lParam))});
        return handler ? handler(static_cast<UINT>(message), wParam) : 0;
    }

    bool Open(CWnd* parent = nullptr, DWORD newStyle = WS_VISIBLE) {
        const RECT rect = parent ? RECT{10, 10, 60, 40} : RECT{60, 60, 360, 260};
        return Create("", "Test", newStyle, rect, parent, 7);
    }
    std::vector<Sent> TakeGeometry() { return std::exchange(geometry, {}); }

    std::function<int(UINT, WPARAM)> handler;
    std::vector<Sent> geometry;
};

// Where an object was: whoever still follows a pointer to it ends at an address that is none.
class Remains {
public:
    Window* Make() { return new (m_place) Window; }
    void Destroy(Window* window) {
        window->~Window();
        std::memset(m_place, 0x7F, sizeof m_place);
    }

private:
    alignas(Window) unsigned char m_place[sizeof(Window)];
};

void FreeDestroyedViews() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// A loop inside a handler, as a message box runs one, in which views that go are freed at once.
void RunNestedLoop(const std::function<void()>& inside) {
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] { inside(); });
    QTimer::singleShot(30, &loop, &QEventLoop::quit);
    loop.exec();
}

class ReviewedWindows : public testing::Test {
protected:
    ~ReviewedWindows() override { FreeDestroyedViews(); }
    Watchdog m_watchdog;
};

} // namespace

TEST_F(ReviewedWindows, AChildMayBeDeletedBetweenTheEndOfItsFrameAndThatOfItsView) {
    Remains remains;
    Window frame;
    ASSERT_TRUE(frame.Open());
    Window* pane = remains.Make();
    ASSERT_TRUE(pane->Open(&frame));
    frame.DestroyWindow();
    remains.Destroy(pane);
    FreeDestroyedViews();
}

TEST_F(ReviewedWindows, AChildForgetsItsViewWhenTheFrameTakesItAlong) {
    Window frame;
    ASSERT_TRUE(frame.Open());
    Window pane;
    ASSERT_TRUE(pane.Open(&frame));
    frame.DestroyWindow();
    FreeDestroyedViews();
    EXPECT_EQ(pane.view, nullptr);
    EXPECT_FALSE(pane.DestroyWindow());
}

TEST_F(ReviewedWindows, AViewThatItsObjectLetGoOfDoesNotCallTheDeletedObject) {
    Window frame;
    ASSERT_TRUE(frame.Open());
    Remains remains;
    Window* pane = remains.Make();
    ASSERT_TRUE(pane->Open(&frame));
    QPointer<QWidget> first = pane->view;
    ASSERT_TRUE(pane->Open(&frame)); // the first view stays where it is
    pane->Detach();
    remains.Destroy(pane);
    EXPECT_TRUE(first);
    first->resize(5, 5);
    frame.DestroyWindow();
}

TEST_F(ReviewedWindows, ASecondObjectOfAWindowForgetsItWithTheWindow) {
    Window frame;
    ASSERT_TRUE(frame.Open());
    Window second;
    second.AttachMacWnd(frame.nsWindow);
    frame.DestroyWindow();
    FreeDestroyedViews();
    EXPECT_EQ(second.nsWindow, nullptr);
    EXPECT_FALSE(second.IsWindowVisible());
    EXPECT_FALSE(second.DestroyWindow());
}

TEST_F(ReviewedWindows, APaintThatFailsLeavesNoContextBehind) {
    Window frame;
    ASSERT_TRUE(frame.Open());
    Window pane;
    bool destroy = false;
    pane.handler = [&](UINT message, WPARAM) {
        if (message != WM_PAINT) return 0;
        EXPECT_NE(pane.GetPaintContext(), nullptr);
        if (!destroy) throw std::runtime_error("paint");
        pane.DestroyWindow();
        return 1;
    };
    ASSERT_TRUE(pane.Open(&frame));
    EXPECT_THROW(vm::RunLoop(), std::runtime_error);
    EXPECT_EQ(pane.GetPaintContext(), nullptr);
    destroy = true;
    pane.Invalidate();
    EXPECT_TRUE(RunUntil([&] { return pane.view == nullptr; }));
    EXPECT_EQ(pane.GetPaintContext(), nullptr);
    frame.DestroyWindow();
}

TEST_F(ReviewedWindows, AnUpdateInsideAnotherWindowsPaintWaits) {
    Window frame;
    ASSERT_TRUE(frame.Open());
    Window first;
    Window second;
    int depth = 0;
    int deepest = 0;
    const auto painted = [&](CWnd& other) {
        return [&](UINT message, WPARAM) {
            if (message != WM_PAINT) return 0;
            deepest = std::max(deepest, ++depth);
            other.Invalidate();
            other.UpdateWindow();
            --depth;
            return 1;
        };
    };
    first.handler = painted(second);
    ASSERT_TRUE(first.Open(&frame));
    ASSERT_TRUE(second.Open(&frame));
    second.handler = [&](UINT message, WPARAM) {
        if (message != WM_PAINT) return 0;
        deepest = std::max(deepest, depth + 1);
        return 1;
    };
    EXPECT_TRUE(RunUntil([&] { return deepest > 0; }));
    EXPECT_EQ(deepest, 1);
    frame.DestroyWindow();
}

TEST_F(ReviewedWindows, AnUpdatePaintsInsideTheCall) {
    Window frame;
    ASSERT_TRUE(frame.Open());
    Window pane;
    int paints = 0;
    pane.handler = [&](UINT message, WPARAM) { return message == WM_PAINT ? ++paints : 0; };
    ASSERT_TRUE(pane.Open(&frame));
    ASSERT_TRUE(RunUntil([&] { return paints > 0; }));
    const int before = paints;
    pane.Invalidate();
    pane.UpdateWindow();
    EXPECT_EQ(paints, before + 1);
    frame.DestroyWindow();
}

TEST_F(ReviewedWindows, AViewMayGoInALoopInsideItsOwnHandler) {
    struct Row {
        const char* name;
        UINT message;
        std::function<void(CWndView&)> event;
    };
    const vm::MouseRecord mouse{5, 5, 5, 5, 1, 0, 0};
    const vm::KeyRecord key{{'a', 'b'}, {'a', 'b'}, 0, 0, 0, 0, 0};
    const Row rows[] = {
        {"context menu", WM_CONTEXTMENU,
         [&](CWndView& view) { vm::MousePressed(view, vm::MouseButton::Right, mouse); }},
        {"key down", WM_KEYDOWN, [&](CWndView& view) { vm::KeyPressed(view, key); }},
        {"character", WM_CHAR, [&](CWndView& view) { vm::KeyPressed(view, key); }},
        {"key up", WM_KEYUP, [&](CWndView& view) { vm::KeyReleased(view, key); }},
        {"frame", WM_SIZE,
         [&](CWndView& view) {
             view.setFrame({1, 2, 30, 40});
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Window frame;
        ASSERT_TRUE(frame.Open());
        Window pane;
        ASSERT_TRUE(pane.Open(&frame));
        bool gone = false;
        const QPointer<QWidget> view = pane.view;
        pane.handler = [&](UINT message, WPARAM) {
            if (message == row.message && !std::exchange(gone, true))
                RunNestedLoop([&] { pane.DestroyWindow(); });
            return 0;
        };
        row.event(static_cast<CWndView&>(*pane.view));
        EXPECT_TRUE(gone);
        EXPECT_FALSE(view);
        frame.DestroyWindow();
    }
}

TEST_F(ReviewedWindows, ATimerMayBeKilledInALoopInsideItsOwnCall) {
    Window frame;
    ASSERT_TRUE(frame.Open());
    int calls = 0;
    frame.handler = [&](UINT message, WPARAM) {
        if (message != WM_TIMER) return 0;
        if (++calls == 1) RunNestedLoop([&] { EXPECT_TRUE(frame.KillTimer(3)); });
        return 1;
    };
    frame.SetTimer(3, 1);
    EXPECT_TRUE(RunUntil([&] { return calls > 0; }));
    RunFor(std::chrono::milliseconds(10));
    EXPECT_EQ(calls, 1);
    frame.DestroyWindow();
}

TEST_F(ReviewedWindows, AWindowMayGoInALoopInsideItsCloseQuery) {
    Window frame;
    ASSERT_TRUE(frame.Open());
    const QPointer<QWidget> window = frame.nsWindow;
    frame.handler = [&](UINT message, WPARAM) {
        if (message == WM_QUERYCLOSE) RunNestedLoop([&] { frame.DestroyWindow(); });
        return 0;
    };
    window->close();
    EXPECT_FALSE(window);
    EXPECT_EQ(frame.nsWindow, nullptr);
}

TEST_F(ReviewedWindows, ACloseQueryThatFailsRefusesTheClose) {
    Window frame;
    ASSERT_TRUE(frame.Open());
    frame.handler = [&](UINT message, WPARAM) {
        if (message == WM_QUERYCLOSE) throw std::runtime_error("query");
        return 0;
    };
    QTimer::singleShot(0, frame.nsWindow, &QWidget::close);
    EXPECT_THROW(vm::RunLoop(), std::runtime_error);
    EXPECT_TRUE(frame.IsWindowVisible());
    frame.DestroyWindow();
}

TEST_F(ReviewedWindows, APopUpWindowMayDeleteItselfWhenItIsNoLongerActive) {
    Remains remains;
    Window* popUp = remains.Make();
    ASSERT_TRUE(popUp->Open());
    QPointer<vm::NativeWindow> window = popUp->nsWindow;
    bool deleted = false;
    popUp->handler = [&](UINT message, WPARAM) {
        if (message != WM_ACTIVATE) return 0;
        deleted = true;
        const auto keep = std::move(popUp->handler); // it runs on
        popUp->DestroyWindow();
        remains.Destroy(popUp);
        return 1;
    };
    window->Delegate()->windowDidResignMain();
    EXPECT_TRUE(deleted);
}

TEST_F(ReviewedWindows, AWindowThatLostItsObjectGoesWhenItIsClosed) {
    QPointer<vm::NativeWindow> window;
    {
        Window frame;
        ASSERT_TRUE(frame.Open());
        window = frame.nsWindow;
    }
    ASSERT_TRUE(window);
    window->close();
    FreeDestroyedViews();
    EXPECT_FALSE(window);
}

TEST_F(ReviewedWindows, TheSizeOfAChildIsReportedOnceThoughItIsShownLater) {
    Window frame;
    ASSERT_TRUE(frame.Open());
    Window pane;
    ASSERT_TRUE(pane.Open(&frame, 0));
    EXPECT_THAT(pane.TakeGeometry(),
                ElementsAre(Sent{WM_SIZE, 2, 50, 30}, Sent{WM_MOVE, 0, 10, 10}));
    pane.MoveWindow(5, 6, 70, 80);
    EXPECT_THAT(pane.TakeGeometry(), ElementsAre(Sent{WM_SIZE, 2, 70, 80}, Sent{WM_MOVE, 0, 5, 6}));
    pane.ShowWindow(SW_SHOW);
    EXPECT_THAT(pane.TakeGeometry(), IsEmpty());
    Window shown;
    ASSERT_TRUE(shown.Open(&frame));
    EXPECT_THAT(shown.TakeGeometry(),
                ElementsAre(Sent{WM_SIZE, 2, 50, 30}, Sent{WM_MOVE, 0, 10, 10}));
    frame.DestroyWindow();
}

TEST_F(ReviewedWindows, AWindowMayGoInsideSetWindowPos) {
    Window frame;
    ASSERT_TRUE(frame.Open());
    frame.handler = [&](UINT message, WPARAM) {
        if (message == WM_SHOWWINDOW) frame.DestroyWindow();
        return 0;
    };
    EXPECT_TRUE(frame.SetWindowPos(nullptr, 60, 60, 100, 100, SWP_HIDEWINDOW));
    EXPECT_EQ(frame.nsWindow, nullptr);
}

TEST_F(ReviewedWindows, TitlesGivenAtCreationAreRoman) {
    Window frame;
    ASSERT_TRUE(frame.Create("", "M\x9Fller", 0, RECT{60, 60, 260, 160}, nullptr, 0));
    CString title;
    frame.GetWindowText(title);
    EXPECT_STREQ(title, "M\x9Fller");
    frame.DestroyWindow();
}
