#include <vmcore/controls/CMenu.h>

#include <memory>

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>

#include <gmock/gmock.h>

#include <vmcore/gdi/CBitmap.h>

#include "ControlsFixture.h"
#include "controls/menuActions.h"
#include "controls/menuState.h"
#include "platform/Image.h"
#include "platform/runloop.h"
#include "wnd/messageTrace.h"

using testing::ElementsAre;

namespace {

std::vector<int> s_chosen;
void NoteChoice(QAction* item) {
    s_chosen.push_back(vm::MenuItemTag(item));
}

class Menu : public testing::Test {
protected:
    Menu() {
        s_chosen.clear();
        vm::SetMenuActionTarget(NoteChoice);
        m_menu.CreatePopupMenu();
    }
    ~Menu() override { vm::SetMenuActionTarget(nullptr); }

    QAction* Item(int index) const { return m_menu.GetSafeHmenu()->actions().at(index); }
    void AppendThree() {
        for (int id = 1001; id <= 1003; ++id) m_menu.AppendMenu(MF_STRING, id, "Item");
    }

    LogCapture m_log;
    Watchdog m_watchdog;
    CMenu m_menu;
};

struct FlagCase {
    const char* what;
    bool inserted; // with InsertMenu instead of AppendMenu
    UINT flags;
    bool enabled;
    bool checked;
};
void PrintTo(const FlagCase& row, std::ostream* out) {
    *out << row.what;
}

const FlagCase kFlagCases[] = {
    {"AppendMenu without flags", false, MF_ENABLED | MF_UNCHECKED, true, false},
    {"AppendMenu disabled", false, MF_DISABLED, false, false},
    {"AppendMenu grayed", false, MF_GRAYED, false, false},
    {"AppendMenu checked", false, MF_CHECKED, true, true},
    {"InsertMenu without flags", true, MF_ENABLED | MF_UNCHECKED, false, false},
    {"InsertMenu enabled", true, MF_ENABLED_INSERT, true, false},
    {"InsertMenu grayed and enabled", true, MF_GRAYED | MF_ENABLED_INSERT, true, false},
    {"InsertMenu checked", true, MF_CHECKED, false, true},
};

} // namespace

TEST_F(Menu, StateOfNewItemsDependsOnHowTheyAreAdded) {
    for (const FlagCase& row : kFlagCases) {
        SCOPED_TRACE(testing::PrintToString(row));
        CMenu menu;
        menu.CreatePopupMenu();
        const BOOL done = row.inserted ? menu.InsertMenu(0, row.flags, 7, "x")
                                       : menu.AppendMenu(row.flags, 7, "x");
        EXPECT_TRUE(done);
        QAction* item = menu.GetSafeHmenu()->actions().at(0);
        EXPECT_EQ(item->isEnabled(), row.enabled);
        EXPECT_EQ(item->isChecked(), row.checked);
        EXPECT_EQ(vm::MenuItemTag(item), 7);
        EXPECT_STREQ(vm::MenuActionOf(item), "winCmd");
    }
}

TEST_F(Menu, NothingWithoutANativeMenu) {
    CMenu menu;
    EXPECT_FALSE(menu.AppendMenu(0, 1, "x"));
    EXPECT_FALSE(menu.InsertMenu(0, 0, 1, "x"));
    EXPECT_FALSE(menu.DeleteMenu(0, MF_BYPOSITION));
    EXPECT_FALSE(menu.RemoveMenu(0, 0));
    EXPECT_EQ(menu.GetMenuItemCount(), 0u);
    EXPECT_EQ(menu.GetSubMenu(0), nullptr);
    EXPECT_FALSE(menu.DestroyMenu());
    RecordingWnd owner;
    EXPECT_FALSE(menu.TrackPopupMenu(0, 0, 0, &owner));
    EXPECT_FALSE(m_menu.TrackPopupMenu(0, 0, 0, nullptr));
}

TEST_F(Menu, InsertPositionIsClamped) {
    AppendThree();
    EXPECT_TRUE(m_menu.InsertMenu(99, MF_ENABLED_INSERT, 2001, "last"));
    EXPECT_TRUE(m_menu.InsertMenu(1, MF_ENABLED_INSERT, 2002, "second"));
    EXPECT_EQ(m_menu.GetMenuItemCount(), 5u);
    EXPECT_EQ(vm::MenuItemTag(Item(4)), 2001);
    EXPECT_EQ(vm::MenuItemTag(Item(1)), 2002);
}

TEST_F(Menu, BitmapsBecomeImageItems) {
    AppendThree();
    tagBITMAPRECORD record{};
    record.bmBits = vm::Image::Make(QImage(8, 8, QImage::Format_RGB32));
    CBitmap bitmap;
    bitmap.m_hObject = &record;
    EXPECT_TRUE(m_menu.InsertMenu(99, MF_ENABLED_INSERT, 2003, &bitmap));
    bitmap.Detach();
    record.bmBits->Release();
    EXPECT_FALSE(Item(3)->icon().isNull());
    EXPECT_EQ(vm::MenuItemTag(Item(3)), 2003);
    EXPECT_TRUE(Item(2)->icon().isNull());
}

TEST_F(Menu, DeletingByPositionAlwaysSucceedsByCommandOnlyWhenFound) {
    AppendThree();
    EXPECT_TRUE(m_menu.DeleteMenu(3, MF_BYPOSITION));
    EXPECT_TRUE(m_menu.RemoveMenu(3, 0));
    EXPECT_EQ(m_menu.GetMenuItemCount(), 3u);
    EXPECT_FALSE(m_menu.DeleteMenu(1234, 0));
    EXPECT_TRUE(m_menu.DeleteMenu(1002, MF_BYCOMMAND));
    EXPECT_TRUE(m_menu.DeleteMenu(0, MF_BYPOSITION));
    ASSERT_EQ(m_menu.GetMenuItemCount(), 1u);
    EXPECT_EQ(vm::MenuItemTag(Item(0)), 1003);
}

TEST_F(Menu, SubMenusAndSeparatorsCarryNoCommand) {
    HMENU sub = CreatePopupMenu();
    VMMenuItem(sub, 0, 5, "inner");
    EXPECT_TRUE(m_menu.AppendMenu(MF_SEPARATOR, 3, "ignored"));
    EXPECT_TRUE(m_menu.AppendMenu(MF_POPUP, reinterpret_cast<std::uintptr_t>(sub), "Sub"));
    EXPECT_TRUE(Item(0)->isSeparator());
    EXPECT_EQ(Item(1)->text(), "Sub");
    EXPECT_EQ(vm::MenuItemTag(Item(1)), 0);
    EXPECT_STREQ(vm::MenuActionOf(Item(1)), "");

    EXPECT_TRUE(m_menu.AppendMenu(MF_POPUP, 0, "Nothing"));
    EXPECT_EQ(Item(2)->text(), "Nothing");
    EXPECT_STREQ(vm::MenuActionOf(Item(2)), "") << "a null sub-menu does not make it a command";

    EXPECT_EQ(m_menu.GetSubMenu(0), nullptr);
    EXPECT_EQ(m_menu.GetSubMenu(2), nullptr);
    CMenu* first = m_menu.GetSubMenu(1);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->GetSafeHmenu(), sub);
    EXPECT_EQ(m_menu.GetSubMenu(1), first) << "one temporary object";
}

TEST_F(Menu, NativeMenuGoesWithItsLastHolder) {
    const QPointer<QMenu> own = m_menu.GetSafeHmenu();
    auto inner = std::make_unique<CMenu>();
    inner->CreatePopupMenu();
    const QPointer<QMenu> sub = inner->GetSafeHmenu();
    m_menu.AppendMenu(MF_POPUP, reinterpret_cast<std::uintptr_t>(inner->m_hMenu), "Sub");
    inner.reset();
    RunFor(std::chrono::milliseconds(1));
    ASSERT_TRUE(sub) << "the menu that shows it keeps it";

    CMenu second;
    second.Attach(own);
    EXPECT_TRUE(m_menu.DestroyMenu());
    RunFor(std::chrono::milliseconds(1));
    ASSERT_TRUE(own);
    HMENU detached = second.Detach();
    EXPECT_EQ(second.GetSafeHmenu(), nullptr);
    EXPECT_EQ(detached, own);
    m_menu.Attach(detached);
    m_menu.DestroyMenu();
    EXPECT_TRUE(RunUntil([&] { return !own && !sub; }));
}

TEST_F(Menu, HolderIsToldWhenTheToolkitFreesItsMenu) {
    delete m_menu.GetSafeHmenu();
    EXPECT_EQ(m_menu.GetSafeHmenu(), nullptr);
    EXPECT_FALSE(m_menu.AppendMenu(0, 1, "x"));
}

TEST_F(Menu, LoadsMenuFilesOfTheBundle) {
    const TestBundle bundle;
    bundle.Write("MENU_300", UiFile("<widget class=\"QMenu\" name=\"menu\">" +
                                    UiAction("one", "One", 31) + UiAction("two", "Two", 32) +
                                    "<addaction name=\"one\"/><addaction name=\"two\"/></widget>"));
    EXPECT_TRUE(m_menu.LoadMenu(MAKEINTRESOURCE(300)));
    ASSERT_EQ(m_menu.GetMenuItemCount(), 2u);
    Item(1)->trigger();
    EXPECT_THAT(s_chosen, ElementsAre(32));

    EXPECT_FALSE(m_menu.LoadMenu(301));
    EXPECT_EQ(m_menu.GetSafeHmenu(), nullptr) << "the menu held before is dropped all the same";
    EXPECT_EQ(m_log.TakeLog().size(), 1u);
    EXPECT_EQ(::LoadMenu(nullptr, MAKEINTRESOURCE(300)), nullptr);
}

TEST_F(Menu, ChosenItemGoesToTheTargetAndKeepsItsMark) {
    m_menu.AppendMenu(MF_CHECKED, 41, "checked");
    m_menu.AppendMenu(MF_DISABLED, 42, "disabled");
    Item(0)->trigger();
    Item(1)->trigger();
    EXPECT_THAT(s_chosen, ElementsAre(41));
    EXPECT_TRUE(Item(0)->isChecked());
}

TEST_F(Menu, TrackedPopupAsksItsOwnerAndTellsItTheEnd) {
    RecordingWnd owner;
    owner.Open();
    owner.updates[1001] = [](CCmdUI& state) { state.Enable(true); };
    owner.updates[1002] = [](CCmdUI& state) { state.Enable(false); };
    AppendThree();
    SetCapture(owner.view);
    int tracked = 0;
    std::vector<bool> enabled;
    QTimer::singleShot(0, [&] {
        tracked = vm::Menus().trackPopupMenu;
        for (QAction* item : m_menu.GetSafeHmenu()->actions()) enabled.push_back(item->isEnabled());
        PressKey(QApplication::activePopupWidget(), Qt::Key_Down);
        PressKey(QApplication::activePopupWidget(), Qt::Key_Return);
    });
    EXPECT_TRUE(m_menu.TrackPopupMenu(TPM_RIGHTALIGN | TPM_RETURNCMD, 100, 100, &owner));
    EXPECT_EQ(tracked, 1);
    EXPECT_EQ(vm::Menus().trackPopupMenu, 0);
    EXPECT_THAT(enabled, ElementsAre(true, false, false));
    EXPECT_THAT(s_chosen, ElementsAre(1001));
    EXPECT_EQ(std::count(owner.messages.begin(), owner.messages.end(), int{WM_EXITMENULOOP}), 1);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(Menu, TrackedPopupWithoutAChoiceIsFalse) {
    RecordingWnd owner;
    owner.Open();
    AppendThree();
    QTimer::singleShot(0, [] { PressKey(QApplication::activePopupWidget(), Qt::Key_Escape); });
    EXPECT_FALSE(m_menu.TrackPopupMenu(0, 100, 100, &owner));
    EXPECT_TRUE(s_chosen.empty());
}

TEST_F(Menu, TrackedPopupBringsItsOwnerOutOfItsIcon) {
    RecordingWnd owner;
    owner.Open();
    QWidget* window = owner.view->window();
    window->showMinimized();
    AppendThree();
    bool wasMinimised = true;
    QTimer::singleShot(0, [&] {
        wasMinimised = window->isMinimized();
        PressKey(QApplication::activePopupWidget(), Qt::Key_Escape);
    });
    m_menu.TrackPopupMenu(0, 100, 100, &owner);
    EXPECT_FALSE(wasMinimised);
}

TEST_F(Menu, EndOfTheApplicationClosesATrackedPopup) {
    RecordingWnd owner;
    owner.Open();
    AppendThree();
    HMENU sub = CreatePopupMenu();
    VMMenuItem(sub, 0, 5, "inner");
    m_menu.AppendMenu(MF_POPUP, reinterpret_cast<std::uintptr_t>(sub), "Sub");
    BOOL chosen = TRUE;
    BOOL next = TRUE;
    QTimer::singleShot(0, [&] { // as the application's loop would
        chosen = m_menu.TrackPopupMenu(0, 100, 100, &owner);
        next = m_menu.TrackPopupMenu(0, 100, 100, &owner); // would wait for ever
    });
    QTimer::singleShot(1, [&] {
        PressKey(QApplication::activePopupWidget(), Qt::Key_Up);
        PressKey(QApplication::activePopupWidget(), Qt::Key_Right);
        EXPECT_EQ(QApplication::activePopupWidget(), sub);
        vm::EndAllLoops();
    });
    vm::RunLoop();
    EXPECT_FALSE(chosen || next);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(Menu, TraceNamesMenusAsSenders) {
    RecordingWnd owner;
    owner.Open();
    AppendThree();
    QTimer::singleShot(0, [] { PressKey(QApplication::activePopupWidget(), Qt::Key_Escape); });
    vm::StartMessageTrace("");
    m_menu.TrackPopupMenu(0, 100, 100, &owner);
    vm::StopMessageTrace();
    int questions = 0;
    int ends = 0;
    for (const std::string& line : m_log.TakeErrors()) {
        const bool isFromMenu = line.find(R"("sender":"menu")") != std::string::npos;
        questions += isFromMenu && line.find("WM_UPDATECOMMANDUI") != std::string::npos;
        ends += isFromMenu && line.find("WM_EXITMENULOOP") != std::string::npos;
    }
    EXPECT_EQ(questions, 3);
    EXPECT_EQ(ends, 1);
}

TEST(MainMenu, IsNullWithoutAFileWhichIsSaidOnce) {
    LogCapture log;
    const TestBundle bundle;
    EXPECT_EQ(vm::MainMenu(), nullptr);
    EXPECT_EQ(vm::MainMenu(), nullptr);
    EXPECT_EQ(log.TakeLog().size(), 1u);
}

TEST(MainMenu, ShowingIsAToggle) {
    ShowMainMenu();
    EXPECT_FALSE(vm::MenuBarShown());
    ShowMainMenu();
    EXPECT_TRUE(vm::MenuBarShown());
    HideMainMenu();
    HideMainMenu();
    EXPECT_FALSE(vm::MenuBarShown());
    ShowMainMenu();
    EXPECT_TRUE(vm::MenuBarShown());
}
