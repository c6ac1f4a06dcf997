#include <vmcore/app/messages.h>

#include <cstring>

#include <QtGui/QAction>
#include <QtWidgets/QMenu>

#include <gtest/gtest.h>

namespace {

struct Variables {
    BYTE enabled = 1;
    BYTE second = 0;
    SHORT mark = 7;
    char text[300] = "unset";
};

} // namespace

TEST(MacCmdUI, StartsUnhandledWithoutMark) {
    Variables v;
    MacCmdUI state(100, v.enabled, v.second, v.mark, v.text);
    EXPECT_EQ(v.mark, 0);
    EXPECT_EQ(v.second, 1);
    EXPECT_FALSE(state.GetHandled());
    EXPECT_FALSE(state.GetFnDefined());
    MacCmdUI none(9999, v.enabled, v.second, v.mark, v.text);
    EXPECT_EQ(v.second, 0);
}

TEST(MacCmdUI, OnlyEnablingSaysThatAHandlerExists) {
    Variables v;
    MacCmdUI state(100, v.enabled, v.second, v.mark, v.text);
    state.Enable(false);
    EXPECT_EQ(v.enabled, 0);
    EXPECT_TRUE(state.GetHandled());
    EXPECT_FALSE(state.GetFnDefined());
    state.Enable(true);
    EXPECT_EQ(v.enabled, 1);
    EXPECT_TRUE(state.GetFnDefined());
    state.Enable(false); // a handler once known stays known
    EXPECT_TRUE(state.GetFnDefined());
}

TEST(MacCmdUI, TextLosesAmpersandsAndTheAccelerator) {
    struct Row {
        std::string given;
        std::string kept;
    };
    const Row rows[] = {{"&Open\tCtrl+O", "Open"},
                        {"", ""},
                        {"\tonly a shortcut", ""},
                        {"A&&B", "AB"},
                        {std::string(400, 'x'), std::string(254, 'x')},
                        {std::string(254, '&') + "ok", "ok"}};
    for (const Row& row : rows) {
        Variables v;
        std::memset(v.text, '#', sizeof v.text);
        MacCmdUI state(1, v.enabled, v.second, v.mark, v.text);
        state.SetText(row.given.c_str());
        EXPECT_EQ(row.kept, v.text) << row.given;
        EXPECT_EQ(v.text[255], '#') << "wrote past 255 bytes: " << row.given;
    }
    Variables v;
    MacCmdUI withoutBuffer(1, v.enabled, v.second, v.mark, nullptr);
    withoutBuffer.SetText("Open"); // nowhere to go
}

TEST(MacCmdUI, MarksAreOneOrZero) {
    Variables v;
    MacCmdUI state(1, v.enabled, v.second, v.mark, v.text);
    state.SetCheck(5);
    EXPECT_EQ(v.mark, 1);
    state.SetCheck(0);
    EXPECT_EQ(v.mark, 0);
    state.SetRadio(true);
    EXPECT_EQ(v.mark, 1);
}

TEST(CCmdUI, ActsOnTheItemAtItsIndex) {
    QMenu menu;
    menu.addAction("One");
    QAction* item = menu.addAction("Two");
    HMENU handle = &menu;
    CCmdUI state;
    state.m_pMenu = &handle;
    state.m_nIndex = 1;
    state.Enable(false);
    state.SetCheck(2);
    state.SetText("Renamed");
    EXPECT_FALSE(item->isEnabled());
    EXPECT_TRUE(item->isChecked());
    EXPECT_EQ(item->text(), "Renamed");
    EXPECT_TRUE(menu.actions().at(0)->isEnabled());
    state.SetCheck(0);
    EXPECT_FALSE(item->isChecked());
    state.m_nIndex = 0;
    state.SetCheck(0);
    EXPECT_FALSE(menu.actions().at(0)->isCheckable()) << "no box beside an item without a mark";

    for (const int missing : {-1, 2, 99}) {
        state.m_nIndex = missing;
        state.Enable(true); // no item there
    }
    handle = nullptr;
    state.SetCheck(0);
    EXPECT_FALSE(item->isEnabled());
}
