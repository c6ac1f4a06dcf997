// Where the rows of lists, list boxes and trees are, and what is asked of a list row by row.
#include <QtWidgets/QScrollBar>

#include <vmcore/controls/CListBox.h>

#include "ListCtrlFixture.h"
#include "TreeFixture.h"

using testing::ElementsAre;

namespace {

QRect Place(const RECT& rect) {
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

QPoint MiddleOf(const RECT& rect) {
    return Place(rect).center();
}

} // namespace

TEST_F(ListCtrl, ReadsAndWritesRowByRow) {
    AppendRows(3);
    EXPECT_TRUE(m_list.SetItemData(1, 7));
    EXPECT_FALSE(m_list.SetItemData(3, 7));
    EXPECT_FALSE(m_list.SetItemData(-1, 7));
    EXPECT_EQ(Cell(1, 1), "2:7");
    EXPECT_STREQ(m_list.GetItemText(1, 2), "2:7");
    EXPECT_STREQ(m_list.GetItemText(2, 5), "5:102") << "of a column that is not there";
    EXPECT_STREQ(m_list.GetItemText(3, 0), "");
    m_list.texts[7] = "Patch";
    for (const auto& [size, length, text] : std::vector<std::tuple<int, int, std::string>>{
             {20, 5, "Patch"}, {6, 5, "Patch"}, {5, 4, "Patc"}, {1, 0, ""}, {0, 0, "--"}}) {
        char buffer[20] = "--";
        EXPECT_EQ(m_list.GetItemText(1, 0, buffer, size), length) << size;
        EXPECT_EQ(buffer, text) << size;
    }
    for (const auto& [width, kept] :
         std::vector<std::pair<int, int>>{{70, 70}, {1, 4}, {900, 400}}) {
        EXPECT_TRUE(m_list.SetColumnWidth(2, width));
        EXPECT_EQ(m_list.GetColumnWidth(2), kept);
    }
    EXPECT_FALSE(m_list.SetColumnWidth(1, 70));
}

TEST_F(ListCtrl, FindsTheNextRow) {
    AppendRows(6);
    for (const int row : {1, 2, 4}) m_list.SetItemState(row, LVIS_SELECTED, LVIS_SELECTED);
    const auto walk = [&](UINT flags) {
        std::vector<int> rows;
        for (int row = -1; (row = m_list.GetNextItem(row, flags)) >= 0;) rows.push_back(row);
        return rows;
    };
    EXPECT_THAT(walk(LVNI_SELECTED), ElementsAre(1, 2, 4));
    EXPECT_THAT(walk(LVNI_ALL), ElementsAre(0, 1, 2, 3, 4, 5));
    for (const int row : {-2, 6}) EXPECT_EQ(m_list.GetNextItem(row, LVNI_ALL), -1) << row;
}

TEST_F(ListCtrl, WithSingleSelectionItsUserSelectsOneRow) {
    PatchList list;
    list.Create(WS_VISIBLE | LVS_SINGLESEL, RECT{0, 0, 200, 200}, &m_window, 56);
    list.InsertColumn(0, "Name", 0, 120);
    for (int i = 0; i < 4; ++i) list.InsertItem(i, "row");
    ClickRow(list.tableView, 0);
    ClickRow(list.tableView, 2, Qt::ShiftModifier);
    EXPECT_EQ(list.GetSelectedCount(), 1u);
    EXPECT_EQ(list.GetNextItem(-1, LVNI_SELECTED), 2);
    list.SetItemState(-1, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(list.GetSelectedCount(), 4u);
}

TEST_F(ListCtrl, TellsWhereItsRowsAre) {
    RECT row{};
    UINT flags = 0;
    EXPECT_EQ(m_list.GetTopIndex(), 0) << "without rows";
    EXPECT_FALSE(m_list.GetItemRect(0, &row, LVIR_BOUNDS));
    AppendRows(100);
    for (const int at : {0, 5}) {
        ASSERT_TRUE(m_list.GetItemRect(at, &row, LVIR_BOUNDS));
        const QPoint middle = MiddleOf(row);
        EXPECT_EQ(m_list.HitTest({middle.x(), middle.y()}, &flags), at);
        EXPECT_TRUE(flags & LVHT_ONITEM);
        EXPECT_EQ(Place(row).width(), 200) << "both columns";
    }
    EXPECT_EQ(Place(row).height() * 5 + m_list.tableView->viewport()->y(), row.top);
    for (const POINT beside :
         {POINT{50, 3}, POINT{250, row.top + 2}, POINT{50, 300}, POINT{50, -9}}) {
        LVHITTESTINFO info{beside, 0, 0, 8};
        EXPECT_EQ(m_list.HitTest(&info), -1) << beside.x << "," << beside.y;
        EXPECT_EQ(info.flags, UINT{LVHT_NOWHERE});
    }
    RECT part{};
    EXPECT_TRUE(m_list.GetItemRect(5, &part, LVIR_LABEL));
    EXPECT_EQ(Place(part), QRect(row.left, row.top, 120, row.bottom - row.top));
    EXPECT_TRUE(m_list.GetItemRect(5, &part, LVIR_ICON));
    EXPECT_EQ(part.right, row.left);
    EXPECT_FALSE(m_list.GetItemRect(5, &part, 4));
    EXPECT_FALSE(m_list.GetItemRect(100, &part, LVIR_BOUNDS));

    const int page = m_list.GetCountPerPage();
    const int inSight = m_list.tableView->viewport()->height();
    EXPECT_EQ(page, inSight / Place(row).height());
    m_list.EnsureVisible(99, FALSE);
    EXPECT_EQ(m_list.GetTopIndex(), (100 * Place(row).height() - inSight) / Place(row).height());
    EXPECT_TRUE(m_list.GetItemRect(0, &row, LVIR_BOUNDS));
    EXPECT_LT(row.bottom, 0);
    while (m_list.GetItemCount() > 4) m_list.DeleteItem(4);
    EXPECT_EQ(m_list.GetTopIndex(), 0) << "at once";
}

TEST_F(ListCtrl, ListBoxesTellWhereTheirRowsAre) {
    CListBox box;
    box.Create(WS_VISIBLE, RECT{10, 20, 210, 220}, &m_window, 57);
    RECT rows[2]{};
    for (const char* text : {"a", "b"}) box.AddString(text);
    EXPECT_EQ(box.GetItemRect(0, &rows[0]), 0);
    EXPECT_EQ(box.GetItemRect(1, &rows[1]), 0);
    EXPECT_EQ(rows[1].top, rows[0].bottom);
    EXPECT_LT(rows[0].top, 4) << "no header";
    EXPECT_EQ(box.GetItemRect(2, &rows[1]), LB_ERR);
    EXPECT_EQ(box.GetItemRect(-1, &rows[1]), LB_ERR);
}

TEST_F(TreeFixture, TellsWhereItsItemsAre) {
    const HTREEITEM a = m_tree->InsertItem("A");
    const HTREEITEM inside = m_tree->InsertItem("inside", a);
    const HTREEITEM b = m_tree->InsertItem("B");
    RECT row{}, text{};
    EXPECT_FALSE(m_tree->GetItemRect(inside, &row, FALSE)) << "collapsed";
    m_tree->Expand(a, TVE_EXPAND);
    ASSERT_TRUE(m_tree->GetItemRect(inside, &row, FALSE));
    ASSERT_TRUE(m_tree->GetItemRect(inside, &text, TRUE));
    EXPECT_EQ(Place(row).width(), View().viewport()->width());
    EXPECT_GT(text.left, row.left);
    EXPECT_LT(text.right, row.right);
    EXPECT_EQ(text.top, row.top);
    const QPoint middle = MiddleOf(text);
    Click(View().viewport(), View().viewport()->mapFrom(&View(), middle));
    EXPECT_EQ(m_tree->GetSelectedItem(), inside);
    EXPECT_EQ(m_tree->GetItemState(inside, 0xFF), UINT{TVIS_SELECTED});
    EXPECT_EQ(m_tree->GetItemState(a, TVIS_EXPANDED | TVIS_SELECTED), UINT{TVIS_EXPANDED});
    EXPECT_EQ(m_tree->GetItemState(a, TVIS_SELECTED), 0u);
    m_tree->DeleteItem(inside);
    RECT moved{};
    EXPECT_TRUE(m_tree->GetItemRect(b, &moved, FALSE));
    EXPECT_EQ(moved.top, row.top) << "at once";
}
