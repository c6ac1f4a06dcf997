// Who is the first responder and who is told, the way of the Tab key, and what else keys do before
// and after they are messages. Events come as the window system brings them.
#include "wnd/responder.h"

#include <memory>

#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QAction>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QInputMethodEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include "RecordingWindow.h"
#include "controls/menuRegistry.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Focus : public WindowFixture {
protected:
    Focus() { Activate(top); }
    ~Focus() override { // the platform remembers the modifiers of the last event
        if (top.nsWindow) QTest::keyClick(top.nsWindow->windowHandle(), Qt::Key_Escape);
    }

    void Activate(CWnd& window) {
        window.BringWindowToTop();
        EXPECT_TRUE(RunUntil([&] { return QApplication::activeWindow() == window.nsWindow; }));
        RunUntil([&] { return window.nsWindow->windowHandle()->isExposed(); });
    }
    void Press(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(top.nsWindow->windowHandle(), static_cast<Qt::Key>(key), modifiers);
    }
    static Messages FocusMessages(RecordingWindow& window) {
        Messages some;
        for (const Message& message : window.Take())
            if (message.number == WM_SETFOCUS || message.number == WM_KILLFOCUS)
                some.push_back(message);
        return some;
    }
    static QLineEdit* EditIn(const CWnd& window, int y) {
        auto* edit = new QLineEdit(window.view);
        edit->setGeometry(2, y, 40, 16);
        edit->show();
        return edit;
    }
};

} // namespace

TEST_F(Focus, TabGoesThroughTheControlsOfNestedViews) {
    QLineEdit* const before = EditIn(top, 2);
    QLineEdit* const inside = EditIn(child, 2);
    RecordingWindow inner;
    inner.Create("", "", WS_VISIBLE, RECT{0, 20, 90, 60}, &child, 8);
    QLineEdit* const innermost = EditIn(inner, 2);
    QLineEdit* const after = EditIn(top, 120);
    before->setFocus();
    for (QWidget* const next : {inside, innermost, after, before}) {
        Press(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), next);
    }
    for (QWidget* const previous : {after, innermost, inside}) {
        Press(Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_EQ(QApplication::focusWidget(), previous);
    }
    EXPECT_THAT(FocusMessages(child), IsEmpty()) << "a view that only holds controls";
    EXPECT_THAT(FocusMessages(inner), IsEmpty());
}

TEST_F(Focus, TabStopViewLetsGoOfTheTabThatItDoesNotHandle) {
    QLineEdit* const before = EditIn(top, 2);
    RecordingWindow stop;
    stop.Create("", "", WS_VISIBLE | WS_TABSTOP, RECT{0, 100, 40, 120}, &top, 8);
    QLineEdit* const after = EditIn(top, 130);
    before->setFocus();
    Press(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), stop.view);
    stop.on[WM_KEYDOWN] = [](WPARAM, LPARAM) { return 1; };
    stop.Take();
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), stop.view);
    EXPECT_THAT(stop.Take(), Contains(Message{WM_KEYDOWN, 0x09, 0x300000}));
    stop.on.clear();
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), before);
    stop.SetFocus();
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), after);
}

TEST_F(Focus, HiddenViewPassesTheFocusOn) {
    QLineEdit* const edit = EditIn(top, 2);
    child.SetFocus();
    child.ShowWindow(SW_HIDE);
    EXPECT_EQ(QApplication::focusWidget(), edit);
    EXPECT_THAT(FocusMessages(child),
                ElementsAre(Message{WM_SETFOCUS, 0, 0}, Message{WM_KILLFOCUS, 0, 0}));
}

TEST_F(Focus, GoesFromOneControlWithoutAnObjectToAnother) {
    QLineEdit* const before = EditIn(top, 2);
    QLineEdit* const after = EditIn(top, 30);
    before->setFocus();
    CWnd* const scratch = getTempWnd(false);
    scratch->view = after;
    EXPECT_EQ(scratch->SetFocus()->view, before);
    EXPECT_EQ(QApplication::focusWidget(), after);
}

TEST_F(Focus, ResponderBeforeMayBeAnyView) {
    QLineEdit* const edit = EditIn(top, 2);
    edit->setFocus();
    child.SetFocus();
    EXPECT_THAT(FocusMessages(child), ElementsAre(Message{WM_SETFOCUS, AsParameter(edit), 0}));
    edit->setFocus();
    EXPECT_THAT(FocusMessages(child), ElementsAre(Message{WM_KILLFOCUS, 0, 0}));
    delete edit;
    child.SetFocus();
    EXPECT_THAT(FocusMessages(child), ElementsAre(Message{WM_SETFOCUS, 0, 0}));
    child.view->clearFocus();
    EXPECT_THAT(FocusMessages(child), ElementsAre(Message{WM_KILLFOCUS, 0, 0}));
}

TEST_F(Focus, HandlerMayMoveTheFocusOn) {
    QLineEdit* const edit = EditIn(top, 2);
    RecordingWindow other;
    other.Create("", "", WS_VISIBLE, RECT{0, 100, 40, 120}, &top, 8);
    child.SetFocus();
    child.on[WM_KILLFOCUS] = [&](WPARAM, LPARAM) {
        edit->setFocus();
        return 1;
    };
    other.SetFocus();
    EXPECT_EQ(QApplication::focusWidget(), edit);
    EXPECT_THAT(FocusMessages(other), testing::Not(Contains(Message{WM_SETFOCUS, 0, 0})));
}

TEST_F(Focus, ViewDestroyedByItsFocusOutlivesTheToolkitsCall) {
    for (const int last : {WM_SETFOCUS, WM_KILLFOCUS}) {
        RecordingWindow pane;
        pane.Create("", "", WS_VISIBLE, RECT{0, 0, 20, 20}, &top, 8);
        const QPointer<QWidget> view = pane.view;
        pane.on[last] = [&](WPARAM, LPARAM) {
            pane.DestroyWindow();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QEventLoop inner;
            QTimer::singleShot(0, &inner, &QEventLoop::quit);
            inner.exec();
            EXPECT_TRUE(view);
            return 1;
        };
        pane.SetFocus();
        child.SetFocus();
        EXPECT_EQ(pane.view, nullptr);
        EXPECT_TRUE(RunUntil([&] { return !view; }));
    }
}

TEST_F(Focus, WindowThatIsActivatedChangesNoResponder) {
    child.SetFocus();
    RecordingWindow second;
    second.Create("", "", WS_VISIBLE, RECT{120, 130, 320, 230}, nullptr, 0);
    RecordingWindow pane;
    pane.Create("", "", WS_VISIBLE, RECT{0, 0, 50, 50}, &second, 9);
    Activate(second);
    pane.SetFocus();
    FocusMessages(child);
    FocusMessages(pane);
    Activate(top);
    EXPECT_EQ(CWnd::GetFocus(), &child);
    Activate(second);
    EXPECT_EQ(CWnd::GetFocus(), &pane);
    EXPECT_THAT(FocusMessages(child), IsEmpty());
    EXPECT_THAT(FocusMessages(pane), IsEmpty());

    QLineEdit* const edit = EditIn(top, 2);
    edit->setFocus(); // while another window is the active one
    Activate(top);
    EXPECT_THAT(FocusMessages(child), ElementsAre(Message{WM_KILLFOCUS, 0, 0}));
    pane.DestroyWindow();
    second.DestroyWindow();
}

TEST_F(Focus, MenusLeaveTheResponderAlone) {
    child.SetFocus();
    FocusMessages(child);
    auto* const bar = new QMenuBar(top.view);
    QMenu* const menu = bar->addMenu(QStringLiteral("Menu"));
    menu->addAction(QStringLiteral("Item"));
    bar->show();
    bar->setFocus(Qt::MenuBarFocusReason); // as F10 and Alt do
    ASSERT_EQ(QApplication::focusWidget(), bar);
    EXPECT_EQ(vm::FirstResponderView(), child.view);
    EXPECT_EQ(CWnd::GetFocus(), &child);
    menu->popup(bar->mapToGlobal(QPoint(0, 20)));
    EXPECT_EQ(vm::FirstResponderView(), child.view);
    menu->close();
    child.view->setFocus(Qt::MenuBarFocusReason);
    EXPECT_THAT(FocusMessages(child), IsEmpty());
    delete bar;
}

TEST_F(Focus, MenuKeyAndShiftF10AskForTheContextMenu) {
    child.SetFocus();
    const QPoint middle = child.view->mapToGlobal(child.view->rect().center());
    const Message expected{WM_CONTEXTMENU, AsParameter(child.view),
                           MAKELPARAM(middle.x(), middle.y())};
    child.Take();
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(), middle);
    QCoreApplication::sendEvent(child.view, &menuKey);
    EXPECT_THAT(child.Take(WM_CONTEXTMENU), ElementsAre(expected));
    Press(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_THAT(child.Take(WM_CONTEXTMENU), ElementsAre(expected));
    Press(Qt::Key_F10);
    QContextMenuEvent button(QContextMenuEvent::Mouse, QPoint(), middle);
    QCoreApplication::sendEvent(child.view, &button);
    child.on[WM_KEYDOWN] = [](WPARAM, LPARAM) { return 1; };
    Press(Qt::Key_F10, Qt::ShiftModifier);
    child.EnableWindow(FALSE);
    QCoreApplication::sendEvent(child.view, &menuKey);
    EXPECT_THAT(child.Take(WM_CONTEXTMENU), IsEmpty());
}

TEST_F(Focus, ComposedTextComesAsIfItWasTyped) {
    ASSERT_TRUE(child.view->testAttribute(Qt::WA_InputMethodEnabled));
    const struct {
        const char* what;
        QString text;
        Messages messages;
    } rows[] = {
        {"a letter with its accent",
         QStringLiteral("\u00E9"),
         {{WM_KEYDOWN, 0xE9, 0x7F0000}, {WM_CHAR, 0xE9, 0xF0000}}},
        {"letters of keys",
         QStringLiteral("b2"),
         {{WM_KEYDOWN, 'B', 0x0B0000},
          {WM_CHAR, 'b', 0xB0000},
          {WM_KEYDOWN, '2', 0x130000},
          {WM_CHAR, '2', 0x30000}}},
        {"what no byte holds", QStringLiteral("\u6F22"), {}},
        {"nothing yet", QString(), {}},
    };
    for (const auto& row : rows) {
        child.Take();
        QInputMethodEvent event(QStringLiteral("~"), {});
        event.setCommitString(row.text);
        QCoreApplication::sendEvent(child.view, &event);
        EXPECT_EQ(child.Take(), row.messages) << row.what;
    }
    child.on[WM_KEYDOWN] = [&](WPARAM, LPARAM) { return child.DestroyWindow(); };
    QInputMethodEvent event;
    event.setCommitString(QStringLiteral("ab"));
    QCoreApplication::sendEvent(child.view, &event);
    EXPECT_THAT(child.Take(WM_CHAR), IsEmpty());
}

TEST_F(Focus, KeyThatTypesSeveralCharactersSendsEach) {
    QKeyEvent event(QEvent::KeyPress, Qt::Key_A, {}, QStringLiteral("ij"));
    child.Take();
    QCoreApplication::sendEvent(child.view, &event);
    EXPECT_EQ(NumbersOf(child.Take()),
              (std::vector<int>{WM_KEYDOWN, WM_CHAR, WM_KEYDOWN, WM_CHAR}));
}

TEST_F(Focus, AcceleratorsGoByTheKeyInHandAndNotByTheKeyboard) {
    const AccelEntry table[] = {{42, 'S' | 0x0100, 1, 0, 0}, {-1, 0, 0, 0, 0}};
    child.accelTable = table;
    QKeyEvent press(QEvent::KeyPress, Qt::Key_S, Qt::ControlModifier, QStringLiteral("\x13"));
    child.translate = [&](MSG* msg) {
        if (msg->wParam == 'S') Press(Qt::Key_Escape); // Ctrl is up by now
        return FALSE;
    };
    QCoreApplication::sendEvent(child.view, &press);
    EXPECT_EQ(QGuiApplication::keyboardModifiers(), Qt::NoModifier);
    EXPECT_THAT(child.Take(WM_COMMAND), ElementsAre(Message{WM_COMMAND, 42, 0}));
    child.accelTable = nullptr;
}

TEST_F(Focus, CommandMayDeleteTheObjectThatHandlesIt) {
    QAction item;
    vm::SetItemTag(&item, 42);
    for (const int last : {WM_UPDATECOMMANDUI, WM_COMMAND}) {
        auto pane = std::make_unique<RecordingWindow>();
        pane->Create("", "", WS_VISIBLE, RECT{0, 0, 20, 20}, &top, 8);
        auto& view = *dynamic_cast<CWndView*>(pane->view);
        const auto record = pane->record;
        record->clear();
        pane->on[WM_UPDATECOMMANDUI] = [](WPARAM, LPARAM) { return 1; };
        pane->on[last] = [&](WPARAM, LPARAM) {
            pane.reset();
            return last == WM_UPDATECOMMANDUI;
        };
        view.winCmd(&item);
        EXPECT_EQ(NumbersOf(*record).back(), last);
        EXPECT_EQ(pane, nullptr);
    }
}
