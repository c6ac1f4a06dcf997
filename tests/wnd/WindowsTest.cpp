#include <vmcore/app/CWinApp.h>

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QCloseEvent>

#include "RecordingWindow.h"
#include "app/appState.h"
#include "platform/NativeApplication.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// What the creation messages said, with a copy of the record that WM_CREATE pointed to.
class CreationRecorder : public RecordingWindow {
public:
    CreationRecorder() {
        on[WM_CREATE] = [this](WPARAM, LPARAM lParam) {
            given = *reinterpret_cast<const CREATESTRUCT*>(lParam);
            record->back().lParam = 0; // an address
            boundInside = GetControlReference(view) == this;
            return 0;
        };
    }
    BOOL PreCreateWindow(CREATESTRUCT& cs) override {
        if (change) change(cs);
        return RecordingWindow::PreCreateWindow(cs);
    }
    std::function<void(CREATESTRUCT&)> change;
    CREATESTRUCT given{};
    bool boundInside = false;
};

class Creation : public WindowFixture {};
class Destruction : public WindowFixture {
protected:
    // The messages of the window's end, in which the handlers still find the object alive.
    static std::vector<int> EndOf(RecordingWindow& wnd) {
        std::vector<int> end;
        for (const int number : NumbersOf(wnd.Take()))
            if (number == WM_QUERYCLOSE || number == WM_CLOSE || number == WM_DESTROY)
                end.push_back(number);
        return end;
    }
};
class Visibility : public WindowFixture {};

} // namespace

TEST_F(Creation, ChildIsToldOfItselfItsSizeAndItsPosition) {
    CreationRecorder wnd;
    EXPECT_TRUE(wnd.Create("class", "name", WS_VISIBLE | WS_TABSTOP, RECT{5, 6, 25, 36}, &top, 9));
    EXPECT_THAT(wnd.Take(),
                ElementsAre(Message{WM_CREATE, 0, 0}, Message{WM_SIZE, 2, MAKELPARAM(20, 30)},
                            Message{WM_MOVE, 0, MAKELPARAM(5, 6)}));
    EXPECT_TRUE(wnd.boundInside);
    EXPECT_EQ(wnd.given.lpCreateParams, nullptr);
    EXPECT_EQ(wnd.given.hMenu, 9);
    EXPECT_EQ(wnd.given.hwndParent, top.view);
    EXPECT_EQ(wnd.given.style, WS_VISIBLE | WS_TABSTOP);
    EXPECT_STREQ(wnd.given.lpszClass, "class");
    EXPECT_STREQ(wnd.given.lpszName, "name");
    EXPECT_EQ(wnd.given.dwExStyle, 0u);
    EXPECT_EQ(wnd.GetStyle(), WS_VISIBLE | WS_TABSTOP);
    EXPECT_EQ(wnd.GetDlgCtrlID(), 9u);
    EXPECT_EQ(wnd.parentWnd, &top);
    EXPECT_TRUE(wnd.isCustomNSView());
    EXPECT_EQ(wnd.nsWindow, nullptr);
}

TEST_F(Creation, ChildOriginOfTheParentIsSubtracted) {
    top.childOriginX = 100;
    top.childOriginY = 10;
    CreationRecorder wnd;
    wnd.Create("", "", 0, RECT{105, 16, 125, 46}, &top, 9);
    EXPECT_EQ(wnd.Take().back(), (Message{WM_MOVE, 0, MAKELPARAM(5, 6)}));
    EXPECT_EQ(wnd.view->pos(), QPoint(5, 6));
}

TEST_F(Creation, TopLevelWindowStartsBelowTheMenuBar) {
    for (const int y : {-5, 20, 45, 46, 47}) {
        CreationRecorder wnd;
        const int corrected = std::max(y, 46);
        EXPECT_TRUE(wnd.Create("", "Title", WS_VISIBLE, RECT{100, y, 300, y + 150}, nullptr, 0));
        EXPECT_THAT(wnd.Take(),
                    ElementsAre(Message{WM_CREATE, 0, 0}, Message{WM_SIZE, 2, MAKELPARAM(200, 150)},
                                Message{WM_MOVE, 0, MAKELPARAM(100, corrected)}))
            << y;
        EXPECT_TRUE(wnd.boundInside);
        EXPECT_EQ(wnd.given.y, corrected);
        EXPECT_EQ(GetWRefCon(wnd.nsWindow), &wnd);
        EXPECT_EQ(CWnd::getLastCreatedCWnd(), &wnd);
        EXPECT_FALSE(wnd.isCustomNSView());
        EXPECT_EQ(wnd.GetDlgCtrlID(), 0u);
        wnd.DestroyWindow();
    }
}

TEST_F(Creation, NegativeSizesBecomeTen) {
    const struct {
        int cx, cy, correctedX, correctedY;
    } rows[] = {{-1, -5, 10, 10}, {0, 0, 0, 0}, {-1, 7, 10, 7}, {7, -1, 7, 10}};
    for (const auto& row : rows) {
        CreationRecorder wnd;
        wnd.Create("", "", 0, RECT{50, 60, 50 + row.cx, 60 + row.cy}, &top, 9);
        EXPECT_EQ(wnd.Take()[1], (Message{WM_SIZE, 2, MAKELPARAM(row.correctedX, row.correctedY)}))
            << row.cx << " x " << row.cy;
    }
}

TEST_F(Creation, StylesSelectTheFrame) {
    const struct {
        const char* what;
        DWORD style;
        DWORD exStyle;
        Qt::WindowFlags has;
        Qt::WindowFlags hasNot;
    } rows[] = {
        {"decorated", WS_OVERLAPPEDWINDOW, 0,
         Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint, Qt::WindowStaysOnTopHint},
        {"decorated and topmost",
         WS_OVERLAPPEDWINDOW,
         WS_EX_TOPMOST,
         Qt::WindowMinMaxButtonsHint | Qt::WindowStaysOnTopHint,
         {}},
        {"plain", 0, 0, Qt::WindowMinimizeButtonHint,
         Qt::WindowMaximizeButtonHint | Qt::WindowStaysOnTopHint | Qt::WindowCloseButtonHint},
        {"topmost", 0, WS_EX_TOPMOST, Qt::WindowStaysOnTopHint | Qt::WindowCloseButtonHint,
         Qt::WindowMinMaxButtonsHint},
    };
    for (const auto& row : rows) {
        CreationRecorder wnd;
        wnd.change = [&](CREATESTRUCT& cs) { cs.dwExStyle = row.exStyle; };
        ASSERT_TRUE(wnd.Create("", "", row.style, kTopRect, nullptr, 0));
        const Qt::WindowFlags flags = wnd.nsWindow->windowFlags();
        EXPECT_EQ(flags & row.has, row.has) << row.what;
        EXPECT_FALSE(flags & row.hasNot) << row.what;
        const bool resizable = row.style & WS_OVERLAPPEDWINDOW;
        EXPECT_EQ(wnd.nsWindow->minimumSize() != wnd.nsWindow->maximumSize(), resizable)
            << row.what;
        EXPECT_EQ(wnd.GetStyle(), row.style) << row.what;
        wnd.DestroyWindow();
    }
}

TEST_F(Creation, SecondCreateLeavesTheFirstView) {
    HWND first = child.view;
    child.vScrollView = child.hScrollView = top.view;
    EXPECT_TRUE(child.Create("", "", 0, kChildRect, &top, kChildID));
    EXPECT_NE(child.view, first);
    EXPECT_TRUE(IsWindow(first));
    EXPECT_EQ(child.vScrollView, nullptr);
    EXPECT_THAT(log.TakeErrors(), ElementsAre("Warning! HScroll initialized on CWnd::Create\n",
                                              "Warning! VScroll initialized on CWnd::Create\n"));
}

TEST_F(Creation, NewWindowEndsTheCapture) {
    child.SetCapture();
    CreationRecorder wnd;
    wnd.Create("", "", 0, kTopRect, nullptr, 0);
    EXPECT_EQ(GetCapture(), nullptr);
    wnd.DestroyWindow();
}

TEST_F(Creation, OfAWindowThatEndsInIt) {
    for (CWnd* parent : {static_cast<CWnd*>(&top), static_cast<CWnd*>(nullptr)}) {
        for (const int number : {WM_CREATE, WM_SIZE, WM_MOVE}) {
            RecordingWindow wnd;
            wnd.on[number] = [&](WPARAM, LPARAM) { return wnd.DestroyWindow(); };
            EXPECT_FALSE(wnd.Create("", "", WS_VISIBLE, kTopRect, parent, 9)) << number;
            EXPECT_EQ(wnd.view, nullptr);
            EXPECT_EQ(wnd.Take(WM_DESTROY).size(), 1u);
        }
    }
}

TEST_F(Creation, FormsThatCreateNothing) {
    RecordingWindow wnd;
    EXPECT_FALSE(wnd.CreateEx(0, "", "", 0, 0, 0, 10, 10, top.view, nullptr));
    EXPECT_TRUE(wnd.CreateEx(0, "", "", 0, kChildRect, &top, 9));
    EXPECT_EQ(wnd.view, nullptr);
    EXPECT_EQ(CreateWindow("", "", 0, 0, 0, 10, 10, top.view, nullptr, nullptr, nullptr), nullptr);
    EXPECT_THAT(wnd.Take(), IsEmpty());
    EXPECT_FALSE(DestroyWindow(child.view));
    EXPECT_TRUE(IsWindow(child.view));
    ASSERT_EQ(boxes.Take().size(), 1u);
}

TEST_F(Destruction, ReservedHandlesAreOnlyForgotten) {
    for (std::uintptr_t value = 1; value <= 3; ++value) {
        CWnd place(reinterpret_cast<HWND>(value));
        EXPECT_FALSE(place.DestroyWindow()) << value;
        EXPECT_EQ(place.view, nullptr) << value;
    }
    RecordingWindow without;
    EXPECT_FALSE(without.DestroyWindow());
    EXPECT_THAT(without.Take(), IsEmpty());
}

TEST_F(Destruction, ChildIsToldOnceAndUnbound) {
    const QPointer<QWidget> view(child.view);
    HWND old = child.view;
    child.SetCapture();
    child.SetActiveWindow();
    child.SetTimer(1, 1);
    child.on[WM_DESTROY] = [&](WPARAM, LPARAM) {
        EXPECT_EQ(child.view, nullptr);
        EXPECT_FALSE(child.DestroyWindow());
        return 1;
    };
    EXPECT_TRUE(child.DestroyWindow());
    EXPECT_THAT(child.Take(), ElementsAre(Message{WM_DESTROY, 0, 0}));
    EXPECT_EQ(child.view, nullptr);
    EXPECT_FALSE(IsWindow(old));
    EXPECT_EQ(GetControlReference(old), nullptr);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(vm::Windows().ActiveWnd, nullptr);
    EXPECT_EQ(child.m_TimerList.GetSize(), 0);
    EXPECT_TRUE(RunUntil([&] { return !view; }));
    EXPECT_FALSE(child.DestroyWindow());
    EXPECT_THAT(child.Take(), IsEmpty());
}

TEST_F(Destruction, PluginHostKeepsItsView) {
    const QPointer<QWidget> view(child.view);
    vm::Windows().pluginHost = &child;
    EXPECT_TRUE(child.DestroyWindow());
    vm::Windows().pluginHost = nullptr;
    RunFor(std::chrono::milliseconds(1));
    ASSERT_TRUE(view);
    EXPECT_FALSE(view->isHidden());
}

TEST_F(Destruction, DyingViewTellsItsObjectWhenAskedTo) {
    RecordingWindow inner;
    inner.Create("", "", 0, RECT{0, 0, 5, 5}, &child, 8);
    inner.Take();
    dynamic_cast<CWndView*>(inner.view)->callOnDealloc = true;
    inner.on[WM_CLOSE] = [&](WPARAM, LPARAM) {
        EXPECT_EQ(vm::Windows().pluginHost, &inner);
        return 0;
    };
    delete inner.view;
    EXPECT_EQ(EndOf(inner), (std::vector<int>{WM_CLOSE, WM_DESTROY}));
    EXPECT_EQ(inner.view, nullptr);
    EXPECT_EQ(vm::Windows().pluginHost, nullptr);
}

TEST_F(Destruction, TopLevelTakesItsChildrenAlong) {
    CWinApp app;
    AfxSetMainWnd(&top);
    NSWindow* const window = top.nsWindow;
    HWND content = top.view;
    HWND childView = child.view;
    EXPECT_TRUE(top.DestroyWindow());
    EXPECT_EQ(EndOf(top), std::vector<int>{WM_DESTROY});
    EXPECT_EQ(app.m_pMainWnd, nullptr);
    EXPECT_FALSE(IsValidWindowPtr(window));
    EXPECT_FALSE(IsWindow(content));
    EXPECT_FALSE(IsWindow(childView));
    EXPECT_EQ(GetControlReference(content), nullptr);
    EXPECT_EQ(GetControlReference(childView), nullptr);
    RunFor(std::chrono::milliseconds(1));
    EXPECT_EQ(child.view, nullptr) << "its view is gone with the window";
    EXPECT_FALSE(top.DestroyWindow());
    EXPECT_THAT(top.Take(), IsEmpty());
}

TEST_F(Destruction, PlatformAsksBeforeItCloses) {
    top.on[WM_QUERYCLOSE] = [](WPARAM, LPARAM) { return 1; };
    EXPECT_FALSE(top.nsWindow->close());
    EXPECT_EQ(EndOf(top), std::vector<int>{WM_QUERYCLOSE});
    EXPECT_TRUE(top.IsWindowVisible());
    EXPECT_FALSE(top.closedByPlatform);

    NSWindow* const window = top.nsWindow;
    top.on.clear();
    EXPECT_TRUE(window->close());
    EXPECT_EQ(EndOf(top), (std::vector<int>{WM_QUERYCLOSE, WM_CLOSE, WM_DESTROY}));
    EXPECT_TRUE(top.closedByPlatform);
    EXPECT_EQ(top.view, nullptr);
    EXPECT_FALSE(IsValidWindowPtr(window));
    RunFor(std::chrono::milliseconds(1));
    EXPECT_THAT(EndOf(top), IsEmpty());
}

TEST_F(Destruction, ChildrenStillAnswerInTheDestroyMessageOfTheirWindow) {
    child.SetWindowText("kept");
    bool asked = false;
    top.on[WM_DESTROY] = [&](WPARAM, LPARAM) {
        asked = true;
        CString text;
        child.GetWindowText(text);
        EXPECT_STREQ(text, "kept");
        RECT client;
        child.GetClientRect(&client);
        EXPECT_THAT(client, IsRect(0, 0, 100, 60));
        return 1;
    };
    top.DestroyWindow();
    EXPECT_TRUE(asked);
}

TEST_F(Destruction, WindowDestroyedWhileItsCloseQueryRunsALoop) {
    top.on[WM_QUERYCLOSE] = [&](WPARAM, LPARAM) {
        const QPointer<QWidget> window(top.nsWindow);
        QTimer::singleShot(0, [&] { top.DestroyWindow(); }); // while a question to the user is up
        EXPECT_TRUE(RunUntil([&] { return !window; }));
        return 0;
    };
    QTimer::singleShot(0, top.nsWindow, [window = top.nsWindow] { window->close(); });
    ASSERT_TRUE(RunUntil([&] { return !top.view; }));
    EXPECT_EQ(EndOf(top), (std::vector<int>{WM_QUERYCLOSE, WM_DESTROY}));
}

TEST_F(Destruction, ObjectThatEndsFirstIsNotCalledAgain) {
    auto* gone = new RecordingWindow;
    gone->Create("", "", WS_VISIBLE, kTopRect, nullptr, 0);
    NSWindow* const window = gone->nsWindow;
    const std::shared_ptr<Messages> record = gone->record;
    delete gone;
    record->clear();
    EXPECT_TRUE(window->close());
    RunFor(std::chrono::milliseconds(1));
    EXPECT_THAT(*record, IsEmpty());
    EXPECT_EQ(CWnd::getLastCreatedCWnd(), nullptr);
}

TEST_F(Visibility, FollowsTheStyle) {
    RecordingWindow hidden;
    hidden.Create("", "", 0, RECT{0, 0, 10, 10}, &top, 9);
    EXPECT_FALSE(hidden.IsWindowVisible());
    EXPECT_TRUE(child.IsWindowVisible());
    EXPECT_TRUE(top.IsWindowVisible());
    RecordingWindow without;
    EXPECT_FALSE(without.IsWindowVisible());
    EXPECT_FALSE(without.ShowWindow(SW_SHOW));
    top.ShowWindow(SW_HIDE);
    EXPECT_TRUE(child.IsWindowVisible()) << "the window is not asked";
    RecordingWindow inner;
    bool inCreate = false;
    inner.on[WM_CREATE] = [&](WPARAM, LPARAM) { return inCreate = inner.IsWindowVisible(); };
    inner.Create("", "", 0, RECT{0, 0, 5, 5}, &child, 9);
    EXPECT_TRUE(inCreate) << "hidden after its creation";
    inner.ShowWindow(SW_SHOW);
    EXPECT_TRUE(inner.IsWindowVisible());
    child.ShowWindow(SW_HIDE);
    EXPECT_FALSE(inner.IsWindowVisible()) << "an ancestor is hidden";
}

TEST_F(Visibility, OnlyHideAndShowTouchAChild) {
    const struct {
        int show;
        bool from;
        bool to;
        WPARAM told;
    } rows[] = {
        {SW_HIDE, true, false, 0},        {SW_SHOW, false, true, 1},
        {SW_SHOWNORMAL, false, false, 0}, {SW_SHOWNOACTIVATE, false, false, 0},
        {SW_MINIMIZE, true, true, 0},     {SW_SHOWNORMAL, true, true, 0},
        {SW_HIDE, false, false, 0},       {99, true, true, 0},
    };
    for (const auto& row : rows) {
        child.view->setVisible(row.from);
        child.Take();
        EXPECT_TRUE(child.ShowWindow(row.show));
        EXPECT_EQ(child.IsWindowVisible() != 0, row.to) << row.show;
        EXPECT_THAT(child.Take(WM_SHOWWINDOW), ElementsAre(Message{WM_SHOWWINDOW, row.told, 0}));
    }
}

TEST_F(Visibility, TopLevelIsHiddenShownMinimisedAndRestored) {
    top.ShowWindow(SW_HIDE);
    EXPECT_FALSE(top.IsWindowVisible());
    top.ShowWindow(SW_SHOWNORMAL);
    EXPECT_FALSE(top.IsWindowVisible());
    top.ShowWindow(SW_SHOW);
    EXPECT_TRUE(top.IsWindowVisible());
    top.ShowWindow(SW_MINIMIZE);
    EXPECT_TRUE(top.nsWindow->isMinimized());
    EXPECT_FALSE(top.IsIconic());
    top.ShowWindow(SW_SHOWNOACTIVATE);
    EXPECT_FALSE(top.nsWindow->isMinimized());
    const WPARAM told[] = {0, 0, 1, 0, 0};
    const Messages messages = top.Take(WM_SHOWWINDOW);
    ASSERT_EQ(messages.size(), std::size(told));
    for (std::size_t i = 0; i < std::size(told); ++i) EXPECT_EQ(messages[i].wParam, told[i]) << i;
}

TEST_F(Visibility, HiddenOrDisabledWindowIsNoLongerActive) {
    EXPECT_EQ(child.SetActiveWindow(), nullptr);
    EXPECT_EQ(vm::Windows().ActiveWnd, &child);
    child.EnableWindow(FALSE);
    EXPECT_EQ(vm::Windows().ActiveWnd, nullptr);
    child.SetActiveWindow();
    child.ShowWindow(SW_HIDE);
    EXPECT_EQ(vm::Windows().ActiveWnd, nullptr);
    EXPECT_TRUE(top.EnableWindow(FALSE));
    EXPECT_TRUE(top.IsWindowEnabled()) << "top-level windows stay enabled";
}

TEST_F(Visibility, StyleBitsHaveNoNativeEffect) {
    EXPECT_TRUE(child.ModifyStyle(WS_VISIBLE, WS_BORDER | WS_GROUP));
    EXPECT_EQ(child.GetStyle(), WS_BORDER | WS_GROUP);
    EXPECT_TRUE(child.IsWindowVisible());
    EXPECT_TRUE(child.ModifyStyleEx(0, WS_EX_TOPMOST));
    EXPECT_EQ(child.exStyle, 0u);
}
