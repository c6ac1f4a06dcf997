#include <vmcore/controls/CTabCtrl.h>

#include <QtTest/QTest>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>

#include "../wnd/RecordingWindow.h"
#include "wnd/controlWiring.h"

using testing::IsEmpty;

namespace {

class Tabs : public WindowFixture {
protected:
    static std::string TextOf(const CTabCtrl& tabs, int index) {
        char buffer[6] = ".....";
        TCITEM item{TCIF_TEXT, 0, 0, buffer, 4, 0, 0};
        return tabs.GetItem(index, &item) ? buffer : "none";
    }
};

} // namespace

TEST_F(Tabs, BarsAndWidgetsAreTheSame) {
    CTabCtrl made;
    ASSERT_TRUE(made.Create(WS_VISIBLE, RECT{0, 0, 200, 90}, &child, 20));
    auto* widget = new QTabWidget(child.view);
    widget->resize(200, 90);
    widget->show();
    vm::WireToParent(*widget);
    for (QWidget* native : {static_cast<QWidget*>(made.view), static_cast<QWidget*>(widget)}) {
        SCOPED_TRACE(native->metaObject()->className());
        CTabCtrl tabs;
        tabs.SubclassWindow(native);
        child.Take();
        char text[] = "first";
        TCITEM item{TCIF_TEXT | TCIF_PARAM, 0, 0, text, 0, 0, 0x123456789A};
        EXPECT_EQ(tabs.InsertItem(5, &item), 0);
        EXPECT_EQ(tabs.InsertItem(9, "third"), 1);
        EXPECT_EQ(tabs.InsertItem(1, "sec"), 1);
        EXPECT_EQ(tabs.InsertItem(-1, "x"), -1);
        EXPECT_EQ(tabs.GetItemCount(), 3);
        EXPECT_EQ(TextOf(tabs, 0), "fir") << "as much as there is room for";
        EXPECT_EQ(TextOf(tabs, 1), "sec");
        EXPECT_EQ(tabs.GetCurSel(), 0);
        EXPECT_EQ(tabs.SetCurSel(2), 0);
        EXPECT_EQ(tabs.SetCurSel(3), -1);
        item = {TCIF_PARAM | TCIF_IMAGE, 0, 0, nullptr, 0, 0, 0};
        EXPECT_TRUE(tabs.GetItem(0, &item));
        EXPECT_EQ(item.lParam, 0x123456789Au);
        EXPECT_TRUE(tabs.DeleteItem(2));
        EXPECT_FALSE(tabs.DeleteItem(2));
        EXPECT_EQ(tabs.GetCurSel(), 1);
        EXPECT_EQ(tabs.GetRowCount(), 1);
        EXPECT_THAT(child.Take(WM_NOTIFY), IsEmpty()) << "the program's doing";

        RECT tab{};
        ASSERT_TRUE(tabs.GetItemRect(1, &tab));
        TCHITTESTINFO hit{{(tab.left + tab.right) / 2, tab.bottom - 2}, 0};
        EXPECT_EQ(tabs.HitTest(&hit), 1);
        EXPECT_EQ(hit.flags, TCHT_ONITEM);
        hit.pt = {100, 80};
        EXPECT_EQ(tabs.HitTest(&hit), -1);
        EXPECT_EQ(hit.flags, TCHT_NOWHERE);
        RunFor(std::chrono::milliseconds(1)); // the pages are laid out
        RECT area{0, 0, 200, 90};
        tabs.AdjustRect(FALSE, &area);
        EXPECT_GE(area.top, tab.bottom - 1);
        EXPECT_LT(area.top, tab.bottom + 12);
        EXPECT_GT(area.right, 180);
        tabs.AdjustRect(TRUE, &area);
        EXPECT_THAT(area, IsRect(0, 0, 200, 90));
        EXPECT_TRUE(tabs.DeleteAllItems());
        EXPECT_EQ(tabs.GetItemCount(), 0);
        native->hide();
    }
}

TEST_F(Tabs, MayHaveALeastWidth) {
    CTabCtrl tabs;
    ASSERT_TRUE(tabs.Create(WS_VISIBLE, RECT{0, 0, 280, 90}, &child, 20));
    tabs.InsertItem(0, "a");
    EXPECT_EQ(tabs.SetMinTabWidth(120), -1);
    RECT tab{};
    tabs.GetItemRect(0, &tab);
    EXPECT_EQ(tab.right - tab.left, 120);
    EXPECT_EQ(tabs.SetMinTabWidth(-1), 120);
    tabs.GetItemRect(0, &tab);
    EXPECT_LT(tab.right - tab.left, 100);
}

TEST_F(Tabs, ABarOfALayoutHasRoomForTabsThatComeBeforeItIsShown) {
    QWidget page;
    auto* layout = new QVBoxLayout(&page);
    auto* bar = new QTabBar(&page);
    layout->addWidget(bar);
    layout->addStretch();
    page.resize(200, 100);
    layout->activate(); // without tabs there is nothing to make room for
    CTabCtrl tabs;
    tabs.SubclassWindow(bar);
    tabs.InsertItem(0, "Oscillator");
    page.show();
    EXPECT_GT(bar->height(), 5);
    tabs.UnsubclassWindow();
}
