// The free functions of input.h: what is held down, and the messages that hosts send by them.
#include <vmcore/wnd/input.h>

#include <QtGui/QCursor>
#include <QtGui/QMouseEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>

#include "RecordingWindow.h"
#include "wnd/nativeEvents.h"
#include "wnd/views.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Input : public WindowFixture {
protected:
    ~Input() override { // the platform remembers the modifiers of the last event
        if (top.nsWindow) QTest::keyClick(top.nsWindow->windowHandle(), Qt::Key_Escape);
    }
};

constexpr int kKeys[] = {VK_LBUTTON, VK_RBUTTON, VK_MBUTTON, VK_SHIFT,
                         VK_CONTROL, VK_MENU,    VK_LWIN,    VK_RWIN};

std::vector<int> KeysDown() {
    std::vector<int> down;
    for (const int key : kKeys)
        if (GetKeyState(key) < 0) down.push_back(key);
    return down;
}

} // namespace

TEST_F(Input, KeyStateIsThatOfTheMessageInHand) {
    const struct {
        Qt::KeyboardModifiers modifiers;
        std::vector<int> down;
    } rows[] = {
        {{}, {VK_LBUTTON}},
        {Qt::ShiftModifier, {VK_LBUTTON, VK_SHIFT}},
        {Qt::ControlModifier, {VK_LBUTTON, VK_CONTROL}},
        {Qt::AltModifier, {VK_LBUTTON, VK_MENU}},
        {Qt::MetaModifier, {VK_LBUTTON, VK_LWIN, VK_RWIN}},
    };
    const QPoint at = child.view->mapTo(static_cast<QWidget*>(top.nsWindow), QPoint(5, 5));
    std::vector<int> down;
    const auto look = [&](WPARAM, LPARAM) {
        down = KeysDown();
        return 1;
    };
    for (const int message : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, WM_CONTEXTMENU})
        child.on[message] = look;
    for (const auto& row : rows) {
        QTest::mousePress(top.nsWindow->windowHandle(), Qt::LeftButton, row.modifiers, at);
        EXPECT_EQ(down, row.down) << row.modifiers;
        QTest::mouseRelease(top.nsWindow->windowHandle(), Qt::LeftButton, row.modifiers, at);
    }
    EXPECT_EQ(GetKeyState('A'), 0);
    EXPECT_EQ(GetAsyncKeyState(VK_LBUTTON), 0);
    EXPECT_EQ(static_cast<USHORT>(GetAsyncKeyState(VK_LWIN)), 0x8000) << "as the last row left it";
}

TEST_F(Input, KeyStateWordTakesTheModifiersOfTheEvent) {
    QMouseEvent event(QEvent::MouseMove, QPointF(), QPointF(), Qt::NoButton, Qt::LeftButton,
                      Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(BuildKeyState(&event), static_cast<UINT>(MK_SHIFT | MK_COMMAND)) << "no button now";
    QEvent other(QEvent::User);
    EXPECT_EQ(BuildKeyState(&other), 0u);
    EXPECT_EQ(BuildKeyState(nullptr), 0u);
}

TEST_F(Input, ReplayedButtonsLastUntilTheNextEvent) {
    SetButton(1 | 4);
    EXPECT_EQ(KeysDown(), (std::vector<int>{VK_LBUTTON, VK_MBUTTON}));
    VMMouseTrack(&child, 7, -8);
    EXPECT_THAT(child.Take(),
                ElementsAre(Message{WM_MOUSEMOVE, MK_LBUTTON | MK_MBUTTON, MAKELPARAM(7, -8)}));
    QMouseEvent event(QEvent::MouseMove, QPointF(1, 1), QPointF(1, 1), Qt::NoButton, {}, {});
    QCoreApplication::sendEvent(child.view, &event);
    EXPECT_EQ(child.Take().back(), (Message{WM_MOUSEMOVE, 0, MAKELPARAM(1, 1)}));
    EXPECT_THAT(KeysDown(), IsEmpty());
}

TEST_F(Input, ParentIsToldOfButtonsInItsOwnCoordinates) {
    const struct {
        bool down;
        bool right;
        WPARAM message;
    } rows[] = {{true, false, WM_LBUTTONDOWN},
                {true, true, WM_RBUTTONDOWN},
                {false, false, WM_LBUTTONUP},
                {false, true, WM_RBUTTONUP}};
    for (const auto& row : rows) {
        ParentNotifyOnButton(&child, row.down, POINT{3, 4}, row.right);
        EXPECT_THAT(top.Take(),
                    ElementsAre(Message{WM_PARENTNOTIFY, row.message,
                                        MAKELPARAM(kChildRect.left + 3, kChildRect.top + 4)}));
    }
}

TEST_F(Input, ContextMenuAndDeactivationGoToTheObject) {
    EXPECT_FALSE(HandleContextMenuMessage(&child, POINT{300, 400}));
    child.on[WM_CONTEXTMENU] = [](WPARAM, LPARAM) { return 1; };
    EXPECT_TRUE(HandleContextMenuMessage(&child, POINT{300, 400}));
    WindowDeactivate(&child);
    const Message menu{WM_CONTEXTMENU, AsParameter(child.view), MAKELPARAM(300, 400)};
    EXPECT_THAT(
        child.Take(),
        ElementsAre(menu, menu, Message{WM_ACTIVATE, 0, reinterpret_cast<LPARAM>(child.view)}));
}

TEST_F(Input, FocusOfATextFieldIsToldByItsTag) {
    QWidget between(child.view);
    auto* const edit = new QLineEdit(&between);
    vm::SetTagOf(edit, 33);
    const auto handle = reinterpret_cast<LPARAM>(edit);
    for (const bool gained : {true, false}) {
        GenerateFocusMessage(edit, gained);
        EXPECT_THAT(child.Take(WM_COMMAND),
                    ElementsAre(Message{WM_COMMAND, MAKEWPARAM(33, gained ? 2 : 1), handle}));
    }
    edit->setReadOnly(true);
    GenerateFocusMessage(edit, true);
    GenerateFocusMessage(child.view, true);
    EXPECT_THAT(child.Take(), IsEmpty());
}

TEST_F(Input, LowerRightCornerIsThatOfAResizableWindow) {
    const QPoint corner = top.nsWindow->mapToGlobal(top.nsWindow->rect().bottomRight());
    QCursor::setPos(corner);
    EXPECT_TRUE(TestForLowerRight(&child));
    EXPECT_TRUE(TestForLowerRight(&top));
    QCursor::setPos(corner - QPoint(15, 0));
    EXPECT_FALSE(TestForLowerRight(&top));
    QCursor::setPos(corner);
    top.style &= ~DWORD{WS_OVERLAPPEDWINDOW};
    EXPECT_FALSE(TestForLowerRight(&top));
}

TEST_F(Input, NobodyGetsNothing) {
    VMMouseTrack(nullptr, 1, 1);
    ParentNotifyOnButton(nullptr, true, {}, false);
    EXPECT_FALSE(HandleContextMenuMessage(nullptr, {}));
    GenerateFocusMessage(nullptr, true);
    WindowDeactivate(nullptr);
    EXPECT_FALSE(TestForLowerRight(nullptr));
    ParentNotifyOnButton(&top, true, {}, false);
    EXPECT_THAT(top.Take(), IsEmpty()) << "no parent";
}
