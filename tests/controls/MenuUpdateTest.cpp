#include "controls/menuUpdate.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtGui/QAction>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>

#include <gmock/gmock.h>

#include "ControlsFixture.h"
#include "app/appState.h"
#include "controls/menuActions.h"
#include "controls/menuRegistry.h"
#include "controls/menuState.h"

using testing::ElementsAre;
using vm::UpdateRule;

// A press as the window system reports it, to the native window; exported for tests.
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString& text,
                                    bool isRepeated, ushort count);

namespace {

struct RuleCase {
    const char* what;
    vm::UpdateSituation situation;
    UpdateRule rule;
};
void PrintTo(const RuleCase& row, std::ostream* out) {
    *out << row.what;
}

class MenuUpdateRule : public testing::TestWithParam<RuleCase> {};

std::vector<int> s_chosen;
void NoteChoice(QAction* item) {
    s_chosen.push_back(vm::MenuItemTag(item));
}

// Ends itself and the item when it is asked, and gives no answer.
class EndingWnd : public CWnd {
public:
    explicit EndingWnd(QAction* item) : m_item(item) {}
    BOOL OnCmdMsg(UINT, int, void*, AFX_CMDHANDLERINFO*) override {
        delete m_item;
        delete this;
        return FALSE;
    }

private:
    QAction* m_item;
};

// A pop-up menu's items are asked of a child window in a window.
class MenuUpdate : public testing::Test {
protected:
    MenuUpdate() {
        m_window.Open();
        m_child.Open(&m_window);
    }
    QAction* Append(int tag, const char* action = "winCmd") {
        QAction* item = m_menu.addAction("Item");
        vm::SetItemTag(item, tag);
        vm::SetItemAction(item, action);
        return item;
    }
    void Update(QAction* item) { vm::UpdateMenuItem(&m_menu, item, &m_child); }

    LogCapture m_log;
    RecordingWnd m_window;
    RecordingWnd m_child;
    QMenu m_menu;
};

// The main menu of an application without a main window: its items are enabled by tag 1 only.
class MenuShortcuts : public testing::Test {
protected:
    MenuShortcuts() {
        s_chosen.clear();
        vm::SetMenuActionTarget(NoteChoice);
        m_window.Open();
    }
    ~MenuShortcuts() override {
        vm::SetMainMenu(nullptr);
        vm::SetMenuActionTarget(nullptr);
    }
    QAction* Append(int tag, const char* keys) {
        auto* item = new QAction("Item");
        vm::SetItemTag(item, tag);
        item->setShortcut(QKeySequence(QString::fromLatin1(keys)));
        vm::PrepareItem(item);
        vm::InsertItem(m_file, nullptr, item);
        return item;
    }

    LogCapture m_log;
    RecordingWnd m_window;
    QMenu m_main;
    QMenu* m_file = m_main.addMenu("File");
};

} // namespace

TEST_P(MenuUpdateRule, DecidesWhomToAsk) {
    EXPECT_EQ(vm::RuleFor(GetParam().situation), GetParam().rule);
}

INSTANTIATE_TEST_SUITE_P(
    Table, MenuUpdateRule,
    testing::Values(
        RuleCase{"pop-up, even in a plug-in and a dialog",
                 {true, true, 1, true, 5, "File"},
                 UpdateRule::AskPopupOwner},
        RuleCase{"plug-in, idle", {false, true, 0, false, 5, "File"}, UpdateRule::Leave},
        RuleCase{
            "plug-in with a dialog", {false, true, 1, false, 5, "File"}, UpdateRule::AskResponder},
        RuleCase{
            "plug-in with a pop-up", {false, true, 0, true, 1, "File"}, UpdateRule::AskResponder},
        RuleCase{"dialog, ordinary menu", {false, false, 2, false, 5, "File"}, UpdateRule::Disable},
        RuleCase{"dialog, tag 1", {false, false, 1, false, 1, "File"}, UpdateRule::Disable},
        RuleCase{"dialog, menu without title", {false, false, 1, false, 5, ""}, UpdateRule::Enable},
        RuleCase{"dialog, menu titled popup:",
                 {false, false, 1, false, 5, "popup:"},
                 UpdateRule::Enable},
        RuleCase{
            "dialog, menu titled popup", {false, false, 1, false, 5, "popup"}, UpdateRule::Disable},
        RuleCase{"dialog, tag 0", {false, false, 1, false, 0, "File"}, UpdateRule::Leave},
        RuleCase{"tag 1", {false, false, 0, false, 1, "File"}, UpdateRule::Enable},
        RuleCase{"ordinary", {false, false, 0, false, 5, "File"}, UpdateRule::AskResponderOrMain}));

TEST_F(MenuUpdate, FirstHandlerUpTheParentsDecides) {
    m_child.updates[5] = [](CCmdUI& state) {
        state.Enable(true);
        state.SetCheck(1);
        state.SetText("&New name\tCtrl+N");
    };
    m_window.updates[5] = [](CCmdUI& state) { state.Enable(false); };
    m_window.updates[6] = [](CCmdUI& state) { state.Enable(true); };
    QAction* child = Append(5);
    QAction* window = Append(6);
    window->setEnabled(false);
    Update(child);
    Update(window);
    EXPECT_TRUE(child->isEnabled());
    EXPECT_TRUE(child->isChecked());
    EXPECT_EQ(child->text(), "New name");
    EXPECT_TRUE(window->isEnabled());
    EXPECT_FALSE(window->isCheckable());
    EXPECT_EQ(window->text(), "Item");

    m_child.updates[5] = [](CCmdUI& state) { state.Enable(true); };
    Update(child);
    EXPECT_FALSE(child->isChecked()) << "the mark goes when it is not set again";
}

TEST_F(MenuUpdate, FocusedWindowIsAskedAlsoAfterAMessageToItsBareHandle) {
    m_child.updates[5] = [](CCmdUI& state) { state.Enable(true); };
    m_child.view->show();
    m_child.view->activateWindow();
    m_child.view->setFocus();
    ASSERT_TRUE(RunUntil([&] { return QApplication::focusWidget() == m_child.view; }));
    SendMessage(m_child.view, WM_USER, 0, 0);
    QAction* item = Append(5);
    item->setEnabled(false);
    vm::UpdateMenuItem(&m_menu, item, nullptr);
    EXPECT_TRUE(item->isEnabled());
}

TEST_F(MenuUpdate, HandlerMayEndItsWindowAndTheItem) {
    bool wasAskedAbove = false;
    m_window.updates[5] = [&](CCmdUI&) { wasAskedAbove = true; };
    const QPointer<QAction> item = Append(5);
    auto* ending = new EndingWnd(item);
    ending->Create("", "", WS_VISIBLE, RECT{0, 0, 10, 10}, &m_window, 8);
    vm::UpdateMenuItem(&m_menu, item, ending);
    EXPECT_FALSE(item || wasAskedAbove);
}

TEST_F(MenuUpdate, HandlerThatDoesNotEnableDisables) {
    m_child.updates[5] = [](CCmdUI&) {};
    QAction* item = Append(5);
    Update(item);
    EXPECT_FALSE(item->isEnabled());
}

TEST_F(MenuUpdate, CommandOfNobodyIsDisabledOtherActionsStay) {
    QAction* command = Append(5);
    QAction* about = Append(6, "about");
    QAction* without = Append(0, "");
    for (QAction* item : {command, about, without}) Update(item);
    EXPECT_FALSE(command->isEnabled());
    EXPECT_TRUE(about->isEnabled());
    EXPECT_TRUE(without->isEnabled());
}

TEST_F(MenuUpdate, WholeTreeIsRefreshedBeforeItShows) {
    QMenu* sub = m_menu.addMenu("Sub");
    QAction* item = sub->addAction("Item");
    vm::SetItemTag(item, 1);
    item->setEnabled(false);
    vm::AssignMenuDelegate(&m_menu);
    Q_EMIT sub->aboutToShow();
    EXPECT_TRUE(item->isEnabled());
    vm::App().displayDlg = 1;
    Q_EMIT sub->aboutToShow();
    EXPECT_FALSE(item->isEnabled());
    vm::App().displayDlg = 0;
}

TEST_F(MenuUpdate, SubMenuIsAskedForByItsTag) {
    QMenu* sub = m_menu.addMenu("Sub");
    QAction* item = sub->menuAction();
    Update(item);
    EXPECT_TRUE(item->isEnabled()) << "without a tag it stays as it is";
    sub->setProperty("tag", 5);
    Update(item);
    EXPECT_TRUE(item->isEnabled()) << "it is no command: without a handler it stays as it is";
    m_child.updates[5] = [](CCmdUI& state) { state.Enable(false); };
    Update(item);
    EXPECT_FALSE(item->isEnabled());
}

TEST_F(MenuShortcuts, WorkInEveryWindowWithoutAMenuHavingBeenOpened) {
    QAction* item = Append(1, "Ctrl+S");
    item->setEnabled(false);
    vm::SetMainMenu(&m_main);
    RecordingWnd second;
    second.Open();
    PressKey(second.view, Qt::Key_S, Qt::ControlModifier);
    EXPECT_THAT(s_chosen, ElementsAre(1)) << "its state is asked first: tag 1 is enabled";
    PressKey(second.view, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    PressKey(second.view, Qt::Key_S);
    EXPECT_EQ(s_chosen.size(), 1u);
}

TEST_F(MenuShortcuts, FollowChangesOfTheMenu) {
    vm::SetMainMenu(&m_main);
    PressKey(m_window.view, Qt::Key_S, Qt::ControlModifier);
    QAction* item = Append(1, "Ctrl+S");
    PressKey(m_window.view, Qt::Key_S, Qt::ControlModifier);
    item->setShortcut(QKeySequence("Ctrl++"));
    PressKey(m_window.view, Qt::Key_S, Qt::ControlModifier);
    PressKey(m_window.view, Qt::Key_Plus, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_THAT(s_chosen, ElementsAre(1, 1));
}

TEST_F(MenuShortcuts, KeyOfAnotherScriptCountsAsTheLatinOneInItsPlace) {
    Append(1, "Ctrl+S");
    vm::SetMainMenu(&m_main);
    constexpr int kCyrillicYeru = 0x42B; // on the key that is S on a Latin keyboard
    constexpr quint32 kScanCodeOfS = 31 + 8;
    QKeyEvent press(QEvent::KeyPress, kCyrillicYeru, Qt::ControlModifier, kScanCodeOfS, 0, 0);
    QCoreApplication::sendEvent(m_window.view, &press);
    EXPECT_THAT(s_chosen, ElementsAre(1));
}

TEST_F(MenuShortcuts, DisabledItemLeavesTheKeyAlone) {
    Append(1, "Ctrl+D");
    vm::SetMainMenu(&m_main);
    vm::App().displayDlg = 1;
    PressKey(m_window.view, Qt::Key_D, Qt::ControlModifier);
    vm::App().displayDlg = 0;
    EXPECT_TRUE(s_chosen.empty());
}

TEST_F(MenuShortcuts, OnePressAsksOnceHoweverFarTheKeyClimbs) {
    Append(5, "Ctrl+D");
    vm::SetMainMenu(&m_main);
    RecordingWnd child;
    child.Open(&m_window);
    int asked = 0;
    child.updates[5] = [&](CCmdUI& state) {
        ++asked;
        state.Enable(false);
    };
    QCheckBox box(child.view); // does nothing with the key
    box.show();
    QWidget* window = box.window();
    window->activateWindow();
    box.setFocus();
    ASSERT_TRUE(RunUntil([&] { return box.hasFocus(); }));
    for (int press = 1; press <= 2; ++press) {
        qt_handleKeyEvent(window->windowHandle(), QEvent::KeyPress, Qt::Key_D, Qt::ControlModifier,
                          {}, false, 1);
        EXPECT_EQ(asked, press);
    }
    PressKey(&box, Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(asked, 3) << "sent to the widget itself";
    EXPECT_TRUE(s_chosen.empty());
}

TEST_F(MenuShortcuts, DoNothingBehindAModalWidget) {
    Append(1, "Ctrl+S");
    vm::SetMainMenu(&m_main);
    QMessageBox box(m_window.view);
    box.open();
    PressKey(&box, Qt::Key_S, Qt::ControlModifier);
    PressKey(m_window.view, Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(s_chosen.empty());
    box.close();
    PressKey(m_window.view, Qt::Key_S, Qt::ControlModifier);
    EXPECT_THAT(s_chosen, ElementsAre(1));
}

TEST_F(MenuShortcuts, TextBeingEditedKeepsItsEditingKeys) {
    Append(1, "Ctrl+A");
    vm::SetMainMenu(&m_main);
    QLineEdit edit("text", m_window.view);
    edit.show();
    m_window.view->window()->activateWindow();
    edit.setFocus();
    ASSERT_TRUE(RunUntil([&] { return edit.hasFocus(); }));
    PressKey(&edit, Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(s_chosen.empty());
    EXPECT_EQ(edit.selectedText(), "text");
    edit.clearFocus();
    PressKey(m_window.view, Qt::Key_A, Qt::ControlModifier);
    EXPECT_THAT(s_chosen, ElementsAre(1));
}
