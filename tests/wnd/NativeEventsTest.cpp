#include "wnd/nativeEvents.h"

#include <stdexcept>

#include <QtCore/QTimer>
#include <QtGui/QAction>
#include <QtGui/QImage>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>

#include <vmcore/gdi/CBrush.h>
#include <vmcore/gdi/CPaintDC.h>

#include "RecordingWindow.h"
#include "controls/menuRegistry.h"
#include "core/guard.h"
#include "platform/runloop.h"
#include "wnd/CWndNSWindow.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// Events as the window system brings them: to the top-level window, where they find their view.
class NativeEvents : public WindowFixture {
protected:
    NativeEvents() {
        RunUntil([this] { return NativeTop()->isExposed(); });
        top.Take();
        child.Take();
    }
    ~NativeEvents() override { // the platform remembers the modifiers of the last event
        if (top.nsWindow) QTest::keyClick(NativeTop(), Qt::Key_Escape);
    }
    QWindow* NativeTop() const { return top.nsWindow->windowHandle(); }
    QPoint InTop(int x, int y) const {
        return child.view->mapTo(static_cast<QWidget*>(top.nsWindow), QPoint(x, y));
    }
    void FocusTheChild() {
        child.SetFocus();
        ASSERT_TRUE(RunUntil([this] { return QApplication::focusWidget() == child.view; }));
        child.Take();
    }
    void SendKey(QEvent::Type type, int key, Qt::KeyboardModifiers modifiers, const char* text,
                 quint32 scanCode = 0, quint32 symbol = 0, bool repeats = false) {
        QKeyEvent event(type, key, modifiers, scanCode, symbol, 0, QString::fromLatin1(text),
                        repeats);
        QCoreApplication::sendEvent(child.view, &event);
    }
    Messages TakeKeys() {
        Messages keys;
        for (const Message& message : child.Take())
            if (message.number == WM_KEYDOWN || message.number == WM_KEYUP ||
                message.number == WM_CHAR)
                keys.push_back(message);
        return keys;
    }
};

} // namespace

TEST_F(NativeEvents, ClickCarriesButtonModifiersAndPosition) {
    QTest::mouseMove(NativeTop(), InTop(10, 20));
    child.Take();
    QTest::mousePress(NativeTop(), Qt::LeftButton, Qt::ShiftModifier, InTop(10, 20));
    QTest::mouseRelease(NativeTop(), Qt::LeftButton, {}, InTop(11, 21));
    const Messages messages = child.Take();
    EXPECT_THAT(messages,
                Contains(Message{WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(10, 20)}));
    EXPECT_THAT(messages, Contains(Message{WM_LBUTTONUP, 0, MAKELPARAM(11, 21)}));
}

TEST_F(NativeEvents, ClicksAfterTheFirstAreDoubleClicks) {
    const auto press = [&](QEvent::Type type, Qt::MouseButton button, int x, quint64 time) {
        const QPointF at(x, 20);
        QMouseEvent event(type, at, child.view->mapToGlobal(at), button, button, {});
        event.setTimestamp(time);
        QCoreApplication::sendEvent(child.view, &event);
        Messages messages = child.Take();
        return messages.empty() ? 0 : messages.back().number;
    };
    const struct {
        const char* what;
        QEvent::Type type; // the toolkit's, which counts to two
        Qt::MouseButton button;
        int x;
        quint64 time;
        int message;
    } rows[] = {
        {"first", QEvent::MouseButtonPress, Qt::LeftButton, 10, 10000, WM_LBUTTONDOWN},
        {"second", QEvent::MouseButtonDblClick, Qt::LeftButton, 10, 10100, WM_LBUTTONDBLCLK},
        {"third", QEvent::MouseButtonPress, Qt::LeftButton, 11, 10200, WM_LBUTTONDBLCLK},
        {"fourth", QEvent::MouseButtonDblClick, Qt::LeftButton, 11, 10300, WM_LBUTTONDBLCLK},
        {"later", QEvent::MouseButtonPress, Qt::LeftButton, 11, 90000, WM_LBUTTONDOWN},
        {"second", QEvent::MouseButtonDblClick, Qt::LeftButton, 11, 90100, WM_LBUTTONDBLCLK},
        {"elsewhere", QEvent::MouseButtonPress, Qt::LeftButton, 60, 90200, WM_LBUTTONDOWN},
        {"second", QEvent::MouseButtonDblClick, Qt::LeftButton, 60, 90300, WM_LBUTTONDBLCLK},
        {"another button", QEvent::MouseButtonPress, Qt::MiddleButton, 60, 90400, WM_MBUTTONDOWN},
        {"the first again", QEvent::MouseButtonPress, Qt::LeftButton, 60, 90500, WM_LBUTTONDOWN},
    };
    child.Take();
    for (const auto& row : rows)
        EXPECT_EQ(press(row.type, row.button, row.x, row.time), row.message) << row.what;
}

TEST_F(NativeEvents, ControlKeyOfTheInterfacesIsTheKeyboardsSuper) {
    QTest::mousePress(NativeTop(), Qt::LeftButton, Qt::MetaModifier, InTop(10, 20));
    QTest::mouseRelease(NativeTop(), Qt::LeftButton, {}, InTop(10, 20));
    EXPECT_THAT(NumbersOf(child.Take()), testing::IsSupersetOf({WM_CONTEXTMENU, WM_RBUTTONUP}));
    QTest::mousePress(NativeTop(), Qt::LeftButton, Qt::ControlModifier, InTop(10, 20));
    EXPECT_THAT(child.Take(),
                Contains(Message{WM_LBUTTONDOWN, MK_COMMAND | MK_RBUTTON, MAKELPARAM(10, 20)}));
    QTest::mouseRelease(NativeTop(), Qt::LeftButton, {}, InTop(10, 20));
}

TEST_F(NativeEvents, MovesArriveWithoutAButtonAndEnterAndLeaveAroundThem) {
    QTest::mouseMove(NativeTop(), QPoint(4, 4)); // away from where the last test left it
    QTest::mouseMove(NativeTop(), QPoint(2, 2));
    child.Take();
    QTest::mouseMove(NativeTop(), InTop(10, 20));
    QTest::mouseMove(NativeTop(), InTop(12, 22));
    QTest::mouseMove(NativeTop(), QPoint(2, 2));
    const Messages messages = child.Take();
    ASSERT_GE(messages.size(), 3u);
    EXPECT_EQ(messages.front(), (Message{WM_MOUSEENTER, 0, MAKELPARAM(10, 20)}));
    EXPECT_THAT(messages, Contains(Message{WM_MOUSEMOVE, 0, MAKELPARAM(12, 22)}));
    EXPECT_EQ(messages.back().number, WM_MOUSELEAVE);
}

TEST_F(NativeEvents, MouseAndKeysOfAViewNeverClimbToItsParent) {
    RecordingWindow inner;
    inner.Create("", "", WS_VISIBLE, RECT{5, 5, 25, 25}, &child, 8);
    child.Take();
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(1, 1),
                      inner.view->mapToGlobal(QPointF(1, 1)), Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(inner.view, &press);
    QKeyEvent key(QEvent::KeyPress, Qt::Key_A, {}, "a");
    QCoreApplication::sendEvent(inner.view, &key);
    EXPECT_THAT(NumbersOf(inner.Take()), testing::IsSupersetOf({WM_LBUTTONDOWN, WM_KEYDOWN}));
    for (const int number : NumbersOf(child.Take())) {
        EXPECT_NE(number, WM_LBUTTONDOWN);
        EXPECT_NE(number, WM_KEYDOWN);
    }
}

TEST_F(NativeEvents, WheelIsVerticalWhateverAltDoesToItsAxis) {
    const struct {
        const char* what;
        QPoint angle;
        Qt::KeyboardModifiers modifiers;
        int units; // 0 for no message
    } rows[] = {
        {"up", {0, 120}, {}, 120},
        {"down", {0, -120}, {}, -120},
        {"a part of a notch", {0, 30}, {}, 30},
        {"sideways", {120, 0}, {}, 0},
        {"with Alt, turned by the window system", {120, 0}, Qt::AltModifier, 1200},
        {"with Alt, not turned", {0, 120}, Qt::AltModifier, 1200},
    };
    for (const auto& row : rows) {
        QWheelEvent wheel(QPointF(8, 9), child.view->mapToGlobal(QPointF(8, 9)), QPoint(),
                          row.angle, {}, row.modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(child.view, &wheel);
        Messages expected;
        if (row.units)
            expected.push_back({WM_MOUSEWHEEL, MAKEWPARAM(0, row.units), MAKELPARAM(8, 9)});
        EXPECT_EQ(child.Take(WM_MOUSEWHEEL), expected) << row.what;
    }
}

TEST_F(NativeEvents, KeysComeByScanCodeElseByTheirName) {
    constexpr quint32 kOffset = 8;
    const struct {
        const char* what;
        int key;
        Qt::KeyboardModifiers modifiers;
        const char* text;
        quint32 scanCode;
        quint32 symbol;
        int virtualKey;
        int native;
        int typed; // 0 for no WM_CHAR
    } rows[] = {
        {"a by name", Qt::Key_A, {}, "a", 0, 0, 'A', 0x00, 'a'},
        {"a by scan code", Qt::Key_A, {}, "a", 30 + kOffset, 'a', 'A', 0x00, 'a'},
        {"the key of q types a", Qt::Key_A, {}, "a", 16 + kOffset, 'a', 'Q', 0x0C, 'a'},
        {"Ctrl+s", Qt::Key_S, Qt::ControlModifier, "\x13", 31 + kOffset, 's', 'S', 0x01, 0},
        {"F5", Qt::Key_F5, {}, "", 63 + kOffset, 0xFFC2, 0x10, 0x60, 0},
        {"keypad 7", Qt::Key_7, Qt::KeypadModifier, "7", 71 + kOffset, 0xFFB7, '7', 0x59, '7'},
        {"Escape", Qt::Key_Escape, {}, "\x1B", 1 + kOffset, 0xFF1B, 0x1B, 0x35, 0x1B},
        {"a scan code that no table knows", Qt::Key_Left, {}, "", 200 + kOffset, 0, 0x1C, 0x7B, 0},
        {"Shift+1", Qt::Key_Exclam, Qt::ShiftModifier, "!", 2 + kOffset, '!', '1', 0x12, '!'},
    };
    for (const auto& row : rows) {
        SendKey(QEvent::KeyPress, row.key, row.modifiers, row.text, row.scanCode, row.symbol);
        const LPARAM native = static_cast<LPARAM>(row.native) << 16;
        Messages expected{{WM_KEYDOWN, static_cast<WPARAM>(row.virtualKey), native}};
        if (row.typed)
            expected.push_back({WM_CHAR, static_cast<WPARAM>(row.typed), native & 0xF0000});
        EXPECT_EQ(TakeKeys(), expected) << row.what;
    }
}

TEST_F(NativeEvents, ReleaseCarriesTheCharacterAndTheNativeCode) {
    SendKey(QEvent::KeyRelease, Qt::Key_S, Qt::ControlModifier, "\x13", 31 + 8, 's');
    EXPECT_THAT(TakeKeys(), ElementsAre(Message{WM_KEYUP, 's', 0x10000}));
}

TEST_F(NativeEvents, ModifiersAloneAndRepeatedReleasesAreSilent) {
    for (const int key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_Meta})
        SendKey(QEvent::KeyPress, key, {}, "");
    SendKey(QEvent::KeyRelease, Qt::Key_A, {}, "a", 0, 0, true);
    EXPECT_THAT(TakeKeys(), IsEmpty());
    SendKey(QEvent::KeyPress, Qt::Key_A, {}, "a", 0, 0, true);
    EXPECT_EQ(NumbersOf(TakeKeys()), (std::vector<int>{WM_KEYDOWN, WM_CHAR}));
}

TEST_F(NativeEvents, TabReachesTheViewThatHasTheFocus) {
    RecordingWindow next;
    next.Create("", "", WS_VISIBLE, RECT{150, 40, 200, 60}, &top, 8);
    ASSERT_NO_FATAL_FAILURE(FocusTheChild());
    QTest::keyClick(NativeTop(), Qt::Key_Tab);
    QTest::keyClick(NativeTop(), Qt::Key_Tab, Qt::ShiftModifier);
    const Messages keys = TakeKeys();
    EXPECT_EQ(QApplication::focusWidget(), child.view);
    EXPECT_THAT(keys, Contains(Message{WM_KEYDOWN, 0x09, 0x300000}).Times(2));
}

TEST_F(NativeEvents, FocusGoesFromViewToView) {
    RecordingWindow next;
    next.Create("", "", WS_VISIBLE, RECT{150, 40, 200, 60}, &top, 8);
    ASSERT_NO_FATAL_FAILURE(FocusTheChild());
    next.Take();
    EXPECT_EQ(CWnd::GetFocus(), &child);
    EXPECT_EQ(next.SetFocus(), &child) << "the previous one";
    EXPECT_EQ(CWnd::GetFocus(), &next);
    EXPECT_THAT(child.Take(), Contains(Message{WM_KILLFOCUS, 0, 0}));
    EXPECT_THAT(next.Take(), Contains(Message{WM_SETFOCUS, AsParameter(child.view), 0}));
}

TEST_F(NativeEvents, ViewThatTakesNoFocusSaysSo) {
    QLabel label(child.view);
    CWnd wnd;
    wnd.Attach(&label);
    EXPECT_EQ(wnd.SetFocus(), nullptr);
    EXPECT_THAT(log.TakeLog(),
                ElementsAre("Request to SetFocus to an NSView which doesn't accept focus"));
    EXPECT_EQ(top.SetFocus(), nullptr) << "and a top-level window says nothing";
    wnd.Detach();
}

TEST_F(NativeEvents, PaintContextLivesOnlyDuringThePaint) {
    HDC during = nullptr;
    child.on[WM_PAINT] = [&](WPARAM, LPARAM) {
        during = child.GetPaintContext();
        return 1;
    };
    EXPECT_EQ(child.paintContext, nullptr);
    child.view->grab();
    EXPECT_NE(during, nullptr);
    EXPECT_EQ(child.paintContext, nullptr);
    EXPECT_THAT(child.Take(WM_PAINT), Contains(Message{WM_PAINT, 0, 0}));
}

TEST_F(NativeEvents, PaintDCDrawsOnTheView) {
    child.on[WM_PAINT] = [&](WPARAM, LPARAM) {
        CPaintDC dc(&child);
        dc.SetPixel(3, 4, RGB(255, 0, 0));
        return 1;
    };
    const QImage picture = child.view->grab().toImage();
    EXPECT_EQ(picture.pixelColor(3, 4), QColor(255, 0, 0));
    EXPECT_NE(picture.pixelColor(4, 4), QColor(255, 0, 0));
}

TEST_F(NativeEvents, ScaledViewIsPaintedInHostUnits) {
    child.SetWindowScaling(2.0f);
    RECT painted{};
    child.on[WM_PAINT] = [&](WPARAM, LPARAM) {
        CPaintDC dc(&child);
        painted = dc.m_ps.rcPaint;
        CBrush red(RGB(255, 0, 0));
        dc.FillRect(CRect(3, 4, 5, 6), &red);
        return 1;
    };
    const QImage picture = child.view->grab().toImage();
    EXPECT_THAT(painted, IsRect(0, 0, 50, 30));
    const QRect expected(6, 8, 4, 4);
    for (int y = 4; y < 16; ++y)
        for (int x = 2; x < 14; ++x)
            EXPECT_EQ(picture.pixelColor(x, y) == QColor(255, 0, 0), expected.contains(x, y))
                << x << ", " << y;
}

TEST_F(NativeEvents, UpdateWindowPaintsWhatIsInvalidAtOnce) {
    RunUntil([this] { return !child.Take(WM_PAINT).empty(); }, std::chrono::milliseconds(50));
    child.Invalidate();
    EXPECT_THAT(child.Take(WM_PAINT), IsEmpty());
    EXPECT_TRUE(child.UpdateWindow());
    EXPECT_EQ(child.Take(WM_PAINT).size(), 1u);
    EXPECT_TRUE(child.UpdateWindow());
    EXPECT_THAT(child.Take(WM_PAINT), IsEmpty()) << "nothing was invalid";
}

TEST_F(NativeEvents, WindowDestroyedInsideItsPaint) {
    child.on[WM_PAINT] = [&](WPARAM, LPARAM) { return child.DestroyWindow(); };
    child.Invalidate();
    EXPECT_TRUE(RunUntil([&] { return !child.view; }));
    EXPECT_EQ(child.paintContext, nullptr);
}

TEST_F(NativeEvents, ExceptionOfAHandlerComesOutOfTheLoop) {
    for (const int number : {WM_KEYDOWN, WM_PAINT}) {
        child.on[number] = [](WPARAM, LPARAM) -> int { throw std::runtime_error("handler"); };
        QTimer::singleShot(0, child.view, [&] {
            if (number == WM_KEYDOWN) SendKey(QEvent::KeyPress, Qt::Key_A, {}, "a");
            child.Invalidate();
        });
        EXPECT_THROW(vm::RunLoop(), std::runtime_error) << number;
        child.on.clear();
    }
}

TEST_F(NativeEvents, PlatformErrorsOfWindowMessagesAreLoggedByTheirNotification) {
    const struct {
        const char* name;
        void (CWndDelegate::*notify)();
        int number;
    } rows[] = {
        {"windowWillClose", &CWndDelegate::windowWillClose, WM_CLOSE},
        {"windowDidResize", &CWndDelegate::windowDidResize, WM_SIZE},
        {"windowDidMove", &CWndDelegate::windowDidMove, WM_MOVE},
        {"windowDidMiniaturize", &CWndDelegate::windowDidMiniaturize, WM_MOVE},
        {"windowDidDeminiaturize", &CWndDelegate::windowDidDeminiaturize, WM_MOVE},
        {"windowDidBecomeMain", &CWndDelegate::windowDidBecomeMain, WM_ACTIVATE},
        {"windowDidResignMain", &CWndDelegate::windowDidResignMain, WM_ACTIVATE},
    };
    for (const auto& row : rows) {
        top.on[row.number] = [](WPARAM, LPARAM) -> int { throw vm::PlatformError("TestError"); };
        (top.nsWindow->Delegate()->*row.notify)();
        EXPECT_THAT(log.TakeLog(), ElementsAre(vm::Format(
                                       "exception at CWndDelegate::%s() - TestError", row.name)));
        top.on.clear();
    }
}

TEST_F(NativeEvents, ChosenMenuItemGoesToTheFirstObjectWithAHandler) {
    View().winCmd(nullptr);
    EXPECT_THAT(boxes.Take(), ElementsAre(ShownBox{"CWndView winCmd called by a non-MenuItem",
                                                   "Internal Error", 1}));
    QAction item;
    vm::SetItemTag(&item, 42);
    View().winCmd(&item);
    EXPECT_THAT(top.Take(WM_COMMAND), IsEmpty()) << "nobody handles it";
    top.on[WM_UPDATECOMMANDUI] = [](WPARAM, LPARAM) { return 1; };
    top.on[WM_COMMAND] = [](WPARAM, LPARAM) { return 1; };
    View().winCmd(&item);
    EXPECT_THAT(child.Take(WM_COMMAND), IsEmpty());
    EXPECT_EQ(top.Take(WM_COMMAND).size(), 1u);
    View().wnd = nullptr;
    View().winCmd(&item);
    EXPECT_THAT(boxes.Take(),
                ElementsAre(ShownBox{"wnd not assigned in CWndView - cancelling command",
                                     "Internal Error", 1}));
    View().wnd = &child;
}

TEST_F(NativeEvents, ActivationTellsTheTopLevelWhoWasBefore) {
    RecordingWindow second;
    second.Create("", "", WS_VISIBLE, RECT{120, 130, 320, 230}, nullptr, 0);
    ASSERT_TRUE(RunUntil([&] { return QApplication::activeWindow() == second.nsWindow; }));
    RunFor(std::chrono::milliseconds(1));
    const HWND secondView = second.view;
    top.Take();
    second.Take();
    top.BringWindowToTop();
    ASSERT_TRUE(RunUntil([&] { return QApplication::activeWindow() == top.nsWindow; }));
    const LPARAM topHandle = reinterpret_cast<LPARAM>(top.view);
    const LPARAM secondHandle = reinterpret_cast<LPARAM>(secondView);
    EXPECT_THAT(second.Take(), ElementsAre(Message{WM_KILLFOCUS, AsParameter(secondView), 0},
                                           Message{WM_ACTIVATE, 0, secondHandle},
                                           Message{WM_MDIACTIVATE, AsParameter(secondView), 0}));
    EXPECT_THAT(top.Take(), ElementsAre(Message{WM_SETFOCUS, AsParameter(top.view), 0},
                                        Message{WM_MDIACTIVATE, AsParameter(secondView), topHandle},
                                        Message{WM_ACTIVATE, 1, secondHandle}));
    EXPECT_EQ(CWnd::GetActiveWindow(), &top);
    second.DestroyWindow();
}
