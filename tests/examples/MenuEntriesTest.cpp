#include "librarian/MenuEntries.h"

#include <QtGui/QAction>
#include <QtWidgets/QMenu>

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

constexpr MenuEntries kEntries = {1, 1300, 3, "None"};

class MenuEntriesShown : public testing::Test {
protected:
    MenuEntriesShown() {
        m_menu.CreatePopupMenu();
        m_menu.AppendMenu(MF_STRING, 10, "First");
        m_menu.AppendMenu(MF_STRING, 11, "Last");
    }
    std::vector<std::string> Titles() const {
        std::vector<std::string> titles;
        for (const QAction* item : m_menu.GetSafeHmenu()->actions())
            titles.push_back(item->text().toStdString() + (item->isEnabled() ? "" : " (off)"));
        return titles;
    }

    CMenu m_menu;
};

} // namespace

TEST_F(MenuEntriesShown, TakeThePlaceOfTheOnesBefore) {
    kEntries.Show(&m_menu, {});
    EXPECT_THAT(Titles(), ElementsAre("First", "None (off)", "Last"));
    kEntries.Show(&m_menu, {"a", "b"});
    EXPECT_THAT(Titles(), ElementsAre("First", "a", "b", "Last"));
    kEntries.Show(&m_menu, {"c", "d", "e", "f"});
    EXPECT_THAT(Titles(), ElementsAre("First", "c", "d", "e", "Last"));
    kEntries.Show(&m_menu, {});
    EXPECT_THAT(Titles(), ElementsAre("First", "None (off)", "Last"));
}

TEST(MenuEntryTitle, ShowsTheTextAsItIs) {
    EXPECT_EQ(NumberedTitle(1, "Rock & Roll\tloud.syx"), "&1 Rock && Roll loud.syx");
    EXPECT_EQ(NumberedTitle(9, "a"), "&9 a");
    EXPECT_EQ(NumberedTitle(10, "a"), "10 a");
}

TEST(MenuEntryIndex, CoversTheRun) {
    EXPECT_EQ(kEntries.IndexOf(1299), -1);
    EXPECT_EQ(kEntries.IndexOf(1300), 0);
    EXPECT_EQ(kEntries.IndexOf(1302), 2);
    EXPECT_EQ(kEntries.IndexOf(1303), -1);
}
