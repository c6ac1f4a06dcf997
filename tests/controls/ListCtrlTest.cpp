// The list with columns: each operation, and what the user does.
#include "ListCtrlFixture.h"

#include <vmcore/app/CWinApp.h>

#include "controls/listSort.h"
#include "support/MessageBoxRecorder.h"

using testing::ElementsAre;
using testing::Pair;

TEST_F(ListCtrl, IsAChildOfItsParentAtTheRectangle) {
    EXPECT_EQ(m_list.view->parentWidget(), m_window.view);
    EXPECT_EQ(m_list.view->geometry(), QRect(10, 20, 300, 200));
    EXPECT_EQ(m_list.view, m_list.tableView);
    EXPECT_EQ(GetControlReference(m_list.view), &m_list);
    EXPECT_EQ(m_window.GetDlgItem(55), &m_list);
    EXPECT_TRUE(m_list.IsWindowVisible());
    CListCtrl orphan;
    RecordingWnd closed;
    EXPECT_FALSE(orphan.Create(0, RECT{0, 0, 9, 9}, nullptr, 1));
    EXPECT_FALSE(orphan.Create(0, RECT{0, 0, 9, 9}, &closed, 1));
}

TEST_F(ListCtrl, PositionIsLessTheChildOriginOfTheParent) {
    m_window.childOriginX = 4;
    m_window.childOriginY = 5;
    CListCtrl list;
    list.Create(0, RECT{10, 20, -30, 60}, &m_window, 1);
    EXPECT_EQ(list.view->geometry(), QRect(6, 15, 10, 40)) << "a negative width becomes 10";
    EXPECT_FALSE(list.IsWindowVisible());
}

TEST_F(ListCtrl, WithoutATableEverythingIsNeutral) {
    CListCtrl list;
    LVITEM item{};
    POSITION position = 1;
    EXPECT_EQ(list.InsertColumn(0, "x"), -1);
    EXPECT_EQ(list.GetColumnWidth(0), -1);
    EXPECT_EQ(list.InsertItem(&item), 0);
    EXPECT_EQ(list.GetItemCount(), 0);
    EXPECT_EQ(list.GetItemState(0, 8), 0u);
    EXPECT_EQ(list.GetItemData(0), 0u);
    EXPECT_EQ(list.GetSelectedCount(), 0u);
    EXPECT_EQ(list.GetFirstSelectedItemPosition(), 0u);
    EXPECT_EQ(list.GetNextSelectedItem(position), -1);
    EXPECT_FALSE(list.DeleteItem(0));
    EXPECT_FALSE(list.RedrawItems(0, 1));
    EXPECT_FALSE(list.EnsureVisible(0, TRUE));
    EXPECT_EQ(list.SetFocus(), nullptr);
    EXPECT_STREQ(list.GetItemText(0, 0), "");
    EXPECT_FALSE(list.SetItemData(0, 1) || list.SetColumnWidth(0, 9));
    EXPECT_EQ(list.GetNextItem(-1, LVNI_ALL) + list.HitTest({1, 1}), -2);
    EXPECT_EQ(list.GetTopIndex() + list.GetCountPerPage(), 0);
    list.ReloadData();
}

TEST_F(ListCtrl, ColumnsAreAppendedAndKnownByTheirNumber) {
    EXPECT_EQ(m_list.InsertColumn(-5, "odd", 0, 1), 2);
    LVCOLUMN record{};
    char heading[] = "wide";
    record.pszText = heading;
    record.cx = 500;
    EXPECT_EQ(m_list.InsertColumn(7, &record), 3);
    EXPECT_EQ(m_list.GetColumnWidth(0), 120);
    EXPECT_EQ(m_list.GetColumnWidth(2), 80);
    EXPECT_EQ(m_list.GetColumnWidth(-5), 4);
    EXPECT_EQ(m_list.GetColumnWidth(7), 400);
    EXPECT_EQ(m_list.GetColumnWidth(1), -1);
    AppendRows(1);
    EXPECT_EQ(Cell(0, 1), "2:100");
    EXPECT_TRUE(m_list.DeleteColumn(0));
    EXPECT_TRUE(m_list.DeleteColumn(0));
    EXPECT_EQ(Cell(0, 0), "2:100");
    EXPECT_EQ(m_list.GetColumnWidth(2), 80) << "each width stays with its column";
}

TEST_F(ListCtrl, RowsCanBeSelectedWithoutAnyColumn) {
    m_list.DeleteColumn(0);
    m_list.DeleteColumn(2);
    AppendRows(3);
    m_list.SetItemState(1, 8, 8);
    m_list.InsertColumn(0, "Name", 0, 100);
    m_list.InsertColumn(1, "Bank", 0, 100);
    EXPECT_THAT(Selection(), ElementsAre(1));
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_list.tableView->selectionModel()->isRowSelected(1, {}));
    EXPECT_EQ(Cell(1, 1), "1:101");
}

TEST_F(ListCtrl, RowsOfAListWithRedrawingOffAppearWhenItIsSwitchedOn) {
    m_list.SetRedraw(FALSE);
    AppendRows(3);
    EXPECT_TRUE(m_list.needsReload);
    m_list.ReloadData();
    EXPECT_TRUE(m_list.needsReload);
    EXPECT_EQ(m_list.GetItemCount(), 3);
    EXPECT_EQ(m_list.tableView->model()->rowCount(), 0);
    m_list.SetRedraw(TRUE);
    EXPECT_FALSE(m_list.needsReload);
    EXPECT_EQ(m_list.tableView->model()->rowCount(), 3);
}

TEST_F(ListCtrl, OnlyTheSelectedBitChangesTheSelection) {
    AppendRows(5);
    EXPECT_TRUE(m_list.SetItemState(1, 8, 2));
    EXPECT_EQ(m_list.GetSelectedCount(), 0u);
    m_list.SetItemState(1, 8, 8);
    m_list.SetItemState(3, 8, 0xF);
    EXPECT_EQ(m_list.GetItemState(1, 0), 8u);
    EXPECT_EQ(m_list.GetItemState(2, 8), 0u);

    POSITION position = m_list.GetFirstSelectedItemPosition();
    EXPECT_EQ(position, 1u);
    EXPECT_EQ(m_list.GetNextSelectedItem(position), 1);
    EXPECT_EQ(position, 2u);
    EXPECT_EQ(m_list.GetNextSelectedItem(position), 3);
    EXPECT_EQ(position, 0u);
    position = 3;
    EXPECT_EQ(m_list.GetNextSelectedItem(position), -1);

    EXPECT_TRUE(m_window.notifications.empty()) << "only the user's changes are reported";
}

TEST_F(ListCtrl, ClicksReportTheRowSelectedLast) {
    AppendRows(5);
    int ownHandle = 0;
    m_list.resourceBundle = &ownHandle;
    ClickRow(m_list.tableView, 3);
    ASSERT_EQ(m_window.notifications.size(), 1u);
    const NMLISTVIEW& change = m_window.notifications[0];
    EXPECT_EQ(change.hdr.hwndFrom, m_list.view);
    EXPECT_EQ(change.hdr.idFrom, 55u);
    EXPECT_EQ(change.hdr.code, LVN_ITEMCHANGED);
    EXPECT_EQ(change.iItem, 3);
    EXPECT_EQ(change.lParam, 103u);
    EXPECT_EQ(m_window.resourceHandles[0], &ownHandle);
    EXPECT_EQ(AfxGetResourceHandle(), nullptr);

    ClickRow(m_list.tableView, 1, Qt::ShiftModifier);
    EXPECT_EQ(m_window.notifications.back().iItem, 1);
    EXPECT_THAT(Selection(), ElementsAre(1, 2, 3));
    ClickRow(m_list.tableView, 4);
    const std::size_t before = m_window.notifications.size();
    ClickRow(m_list.tableView, 4, Qt::ControlModifier);
    ASSERT_EQ(m_window.notifications.size(), before + 1);
    EXPECT_EQ(m_window.notifications.back().iItem, -1);
    EXPECT_EQ(m_window.notifications.back().lParam, 0u);
}

TEST_F(ListCtrl, DoubleClickIsReportedAndRemembered) {
    AppendRows(3);
    calledDoubleClick = 0;
    DoubleClickRow(m_list.tableView, 1);
    EXPECT_TRUE(calledDoubleClick);
    ASSERT_FALSE(m_window.notifications.empty());
    EXPECT_EQ(m_window.notifications.back().hdr.code, NM_DBLCLK);
    EXPECT_EQ(m_window.notifications.back().iItem, 1);
    EXPECT_EQ(m_window.notifications.back().lParam, 101u);
}

TEST_F(ListCtrl, HeaderClickSortsTheItemDataByTheTextsOfThatColumn) {
    AppendRows(4);
    m_list.texts = {{100, "beta"}, {101, "Alpha"}, {102, "delta"}, {103, "Gamma"}};
    m_list.SetItemState(0, 8, 8);
    m_list.SetItemText(0, 0, "own text");
    m_list.asked.clear();
    ClickHeader(1);
    EXPECT_THAT(Data(), ElementsAre(101, 100, 102, 103));
    EXPECT_THAT(m_list.asked,
                testing::IsSupersetOf({Pair(2, 100), Pair(2, 101), Pair(2, 102), Pair(2, 103)}));
    ClickHeader(1);
    EXPECT_THAT(Data(), ElementsAre(103, 102, 100, 101)) << "from Z to A";
    EXPECT_EQ(LCTableViewDelegate::Of(m_list.tableView)->strings[0].Get(), std::string("own text"));
    EXPECT_THAT(Selection(), ElementsAre(0));
    EXPECT_TRUE(m_window.notifications.empty());
}

TEST_F(ListCtrl, ListFilledAnewIsSortedAgainAsTheUserHasSortedIt) {
    AppendRows(3);
    m_list.texts = {{100, "beta"}, {101, "Alpha"}, {102, "delta"}};
    m_list.SortAgain();
    EXPECT_THAT(Data(), ElementsAre(100, 101, 102)) << "no header was clicked";
    ClickHeader(1);
    ClickHeader(1);
    m_list.DeleteAllItems();
    AppendRows(3);
    m_list.SortAgain();
    EXPECT_THAT(Data(), ElementsAre(102, 100, 101));
}

TEST_F(ListCtrl, HeaderClickOfANegativeColumnDoesNothing) {
    m_list.DeleteColumn(0);
    m_list.DeleteColumn(2);
    m_list.InsertColumn(-1, "fixed", 0, 100);
    AppendRows(2);
    m_list.texts = {{100, "b"}, {101, "a"}};
    ClickHeader(0);
    EXPECT_THAT(Data(), ElementsAre(100, 101));
}

TEST_F(ListCtrl, TypingSelectsByTheTextsShown) {
    AppendRows(3);
    m_list.texts = {{100, "Bass"}, {101, "Lead"}, {102, "Strings"}};
    PressKey(m_list.tableView, Qt::Key_S, {}, "s");
    EXPECT_THAT(Selection(), ElementsAre(2));
    EXPECT_EQ(m_window.notifications.size(), 1u);
}

TEST_F(ListCtrl, ManyRowsAreOnlyAskedForWhenShown) {
    m_list.SetRedraw(FALSE);
    AppendRows(100'000);
    m_list.SetRedraw(TRUE);
    m_list.EnsureVisible(99'999, TRUE);
    m_list.tableView->grab();
    EXPECT_LT(m_list.asked.size(), 1000u);
    EXPECT_GE(m_list.tableView->rowAt(m_list.tableView->viewport()->height() - 10), 99'990);
}

TEST_F(ListCtrl, StateRecordsAreNotSupported) {
    MessageBoxRecorder boxes;
    const LVITEM item{};
    EXPECT_TRUE(m_list.SetItemState(0, &item));
    EXPECT_THAT(boxes.Take(),
                ElementsAre(ShownBox{"Not Implemented, are we using it?", "VMCore", 1}));
}

TEST(ListSort, OrderIsThatOfThePairwiseComparison) {
    const std::vector<std::string> texts = {"b",
                                            "A",
                                            "a",
                                            "",
                                            "abc",
                                            "ABD",
                                            "_x",
                                            "Zz",
                                            "\x8E"
                                            "a",
                                            "a\x8E",
                                            "[",
                                            "ab",
                                            "Ab1",
                                            "zZ"};
    std::vector<std::uintptr_t> data(texts.size());
    for (std::size_t i = 0; i < data.size(); ++i) data[i] = i;
    for (const bool ascending : {true, false}) {
        const auto sorted = vm::SortedByText(data, texts, ascending);
        EXPECT_THAT(sorted, testing::UnorderedElementsAreArray(data));
        for (std::size_t i = 1; i < sorted.size(); ++i)
            EXPECT_LE(vm::CListCtrlCompare(texts[sorted[i - 1]].c_str(), texts[sorted[i]].c_str(),
                                           ascending),
                      0)
                << texts[sorted[i - 1]] << " before " << texts[sorted[i]];
    }
}

TEST_F(ListCtrl, RowsAreAsHighAsTheFont) {
    AppendRows(2);
    const int before = m_list.tableView->rowHeight(1);
    QFont large = m_list.tableView->font();
    large.setPixelSize(40);
    m_list.tableView->setFont(large);
    EXPECT_GT(m_list.tableView->rowHeight(1), before);
    EXPECT_GE(m_list.tableView->rowHeight(1), 40);
}
