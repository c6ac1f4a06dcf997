// The list box: strings, item data, selection, and what the user does.
#include <vmcore/controls/CListBox.h>

#include <climits>
#include <functional>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QTableView>

#include <gmock/gmock.h>

#include "ControlsFixture.h"
#include "controls/listBoxTable.h"
#include "support/MessageBoxRecorder.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

/// Records the commands of its list boxes.
class Parent : public CWnd {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_COMMAND) return 0;
        commands.emplace_back(LOWORD(wParam), HIWORD(wParam));
        sender = reinterpret_cast<HWND>(lParam);
        if (onCommand) onCommand();
        return 1;
    }
    std::vector<std::pair<int, int>> commands; // identifier, code
    HWND sender = nullptr;
    std::function<void()> onCommand;
};

class ListBox : public testing::Test {
protected:
    ListBox() {
        m_window.Create("", "Test", WS_VISIBLE, RECT{60, 60, 460, 360}, nullptr, 7);
        EXPECT_TRUE(m_box.Create(WS_VISIBLE, RECT{10, 20, 210, 220}, &m_window, 55));
    }
    ~ListBox() override { m_window.DestroyWindow(); }

    void Add(std::initializer_list<const char*> texts) {
        for (const char* text : texts) m_box.AddString(text);
    }
    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        char buffer[64];
        for (int row = 0; row < m_box.GetCount(); ++row) {
            const int length = m_box.GetText(row, buffer);
            texts.emplace_back(buffer, static_cast<std::size_t>(length));
        }
        return texts;
    }
    std::vector<int> Selection() const {
        std::vector<int> rows(20);
        rows.resize(static_cast<std::size_t>(m_box.GetSelItems(20, rows.data())));
        return rows;
    }

    LogCapture m_log;
    Watchdog m_watchdog;
    Parent m_window;
    CListBox m_box;
};

} // namespace

TEST_F(ListBox, StoresStringsWithTheirItemData) {
    EXPECT_EQ(m_box.GetStyle(), LBS_HASSTRINGS | WS_VISIBLE);
    EXPECT_EQ(m_box.AddString("b\x8A"), 0);
    EXPECT_EQ(m_box.AddString(nullptr), 1);
    EXPECT_EQ(m_box.SetItemData(1, 77), 1);
    EXPECT_EQ(m_box.InsertString(0, "a"), 0);
    EXPECT_EQ(m_box.InsertString(3, "end"), 3);
    EXPECT_EQ(m_box.tableView->model()->index(1, 0).data().toString(), QStringLiteral(u"b\u00E4"));
    EXPECT_EQ(m_box.DeleteString(1), 1);
    EXPECT_THAT(Texts(), ElementsAre("a", "", "end"));
    EXPECT_EQ(m_box.GetItemData(1), 77u);
    CString text;
    EXPECT_EQ(m_box.GetText(2, text), 3);
    EXPECT_STREQ(text, "end");
    m_box.ResetContent();
    m_box.ModifyStyle(LBS_HASSTRINGS, 0);
    Add({"lost"});
    EXPECT_THAT(Texts(), ElementsAre(""));
}

TEST_F(ListBox, RowsThatAreNotThere) {
    Add({"a", "b"});
    EXPECT_EQ(m_box.DeleteString(3), LB_ERR);
    EXPECT_THAT(m_log.TakeLog(), IsEmpty());
    EXPECT_EQ(m_box.DeleteString(2), LB_ERR);
    EXPECT_EQ(m_box.InsertString(-1, "x"), LB_ERR) << "not the end";
    EXPECT_THAT(m_log.TakeLog(), ElementsAre("exception at CListBox::DeleteString() - NoSuchRow",
                                             "exception at CListBox::InsertString() - NoSuchRow"));
    for (const int row : {-2, 2}) {
        char text[] = "unchanged";
        EXPECT_EQ(m_box.GetText(row, text), LB_ERR);
        EXPECT_STREQ(text, "");
        EXPECT_EQ(m_box.GetItemData(row), 0u);
        EXPECT_EQ(m_box.SetItemData(row, 7), 0);
        EXPECT_EQ(m_box.GetSel(row), 0);
    }
    EXPECT_EQ(m_box.SetSel(2), LB_ERR);
    EXPECT_THAT(Texts(), ElementsAre("a", "b"));
}

TEST_F(ListBox, SelectionByTheProgramReportsNothing) {
    Add({"a", "b", "c", "d", "e", "f", "g", "h", "i"});
    EXPECT_EQ(m_box.SetCurSel(4), 4);
    EXPECT_EQ(m_box.GetTopIndex(), 4) << "the selected row";
    EXPECT_EQ(m_box.SetSel(1, TRUE), 1);
    EXPECT_EQ(m_box.SetSel(4, FALSE), 4);
    EXPECT_EQ(m_box.SetSel(6), 6);
    EXPECT_THAT(Selection(), ElementsAre(1, 6));
    EXPECT_EQ(m_box.GetSel(6), 1);
    EXPECT_EQ(m_box.GetSel(5), 0);
    EXPECT_EQ(m_box.GetCurSel(), 6);
    int first[2] = {-9, -9};
    EXPECT_EQ(m_box.GetSelItems(1, first), 1);
    EXPECT_THAT(first, ElementsAre(1, -9));
    m_box.SetRedraw(FALSE);
    m_box.DeleteString(0);
    m_box.SetRedraw(TRUE);
    EXPECT_THAT(Selection(), ElementsAre(1, 6)) << "it belongs to the row numbers";
    EXPECT_EQ(m_box.SetSel(-1, TRUE), -1);
    EXPECT_EQ(m_box.GetSelCount(), 8);
    m_box.SetSel(-1, FALSE);
    m_box.SelItemRange(TRUE, 5, 6);
    EXPECT_THAT(Selection(), ElementsAre(0, 1, 2, 3, 4, 5, 6)) << "from the top";
    m_box.SetCurSel(-1);
    EXPECT_EQ(m_box.GetCurSel(), -1);
    EXPECT_THAT(m_window.commands, IsEmpty());
}

TEST_F(ListBox, SelectStringExtendsAndNeverTells) {
    Add({"one", "two", "ONE", "two"});
    m_box.SetCurSel(0);
    EXPECT_EQ(m_box.SelectString(-1, "ONE"), LB_ERR);
    EXPECT_EQ(m_box.SelectString(1, "two"), LB_ERR);
    EXPECT_EQ(m_box.SelectString(3, "two"), LB_ERR) << "not on from the top";
    EXPECT_EQ(m_box.SelectString(0, "tw"), LB_ERR) << "whole texts";
    EXPECT_THAT(Selection(), ElementsAre(0, 2, 3));
    m_box.ModifyStyle(0, LBS_MULTIPLESEL);
    m_box.SelectString(0, "two");
    EXPECT_THAT(Selection(), ElementsAre(0, 2, 3));
}

TEST_F(ListBox, NoNeighbourIsSelectedWhenTheLastRowsGo) {
    Add({"a", "b", "c", "d"});
    m_box.SetCurSel(3);
    m_box.DeleteString(3);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_box.GetCurSel(), LB_ERR);
    m_box.SetCurSel(2);
    m_box.SetSel(2, FALSE);
    QCoreApplication::processEvents();
    m_box.DeleteString(2);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_box.GetCurSel(), LB_ERR);
    EXPECT_EQ(m_box.SelectString(INT_MAX, "a"), LB_ERR);
}

TEST_F(ListBox, FindStringExactIgnoresTheCaseAndGoesRound) {
    Add({"ABC", "find", "x", "y"});
    struct {
        int start;
        const char* text;
        int found;
    } const kCases[] = {{-1, "abc", 0}, {1, "abc", 0},  {1, "find", -1},
                        {0, "FIND", 1}, {2, "Y", 3},    {-2, "abc", -1},
                        {9, "y", 3},    {-1, "ab", -1}, {INT_MAX, "y", 3}};
    for (const auto& row : kCases)
        EXPECT_EQ(m_box.FindStringExact(row.start, row.text), row.found)
            << row.text << " after " << row.start;
}

TEST_F(ListBox, UserSelectionAndDoubleClickGoToTheParent) {
    Add({"a", "b", "c"});
    DoubleClickRow(m_box.tableView, 1);
    EXPECT_THAT(m_window.commands, ElementsAre(Pair(55, LBN_SELCHANGE), Pair(55, LBN_DBLCLK)));
    EXPECT_EQ(m_window.sender, m_box.view);
    ClickRow(m_box.tableView, 0, Qt::ControlModifier);
    EXPECT_THAT(Selection(), ElementsAre(0));
    m_box.SetMultiSelect(TRUE);
    ClickRow(m_box.tableView, 2, Qt::ControlModifier);
    EXPECT_THAT(Selection(), ElementsAre(0, 2));

    m_window.commands.clear();
    m_box.SetUserEdit(FALSE);
    ClickRow(m_box.tableView, 1);
    EXPECT_THAT(m_window.commands, IsEmpty());
    m_box.SetSel(0, FALSE); // ends it
    PressKey(m_box.tableView, Qt::Key_C, {}, "c");
    EXPECT_THAT(m_window.commands, ElementsAre(Pair(55, LBN_SELCHANGE)));
    EXPECT_EQ(m_box.GetCurSel(), 2) << "typed";
    m_window.onCommand = [&] {
        m_box.SetCurSel(0);
        m_box.DeleteString(2);
    };
    ClickRow(m_box.tableView, 1);
    EXPECT_EQ(m_window.commands.size(), 2u) << "what the handler does is no user's doing";
    EXPECT_THAT(Selection(), ElementsAre(0));
}

TEST_F(ListBox, FindsByTheBeginning) {
    Add({"Alpha", "beta", "Al", "BETAMAX"});
    EXPECT_EQ(m_box.GetTextLen(3), 7);
    EXPECT_EQ(m_box.GetTextLen(4), LB_ERR);
    const struct {
        int start;
        const char* text;
        int found;
    } rows[] = {{-1, "al", 0}, {0, "AL", 2},       {2, "al", 0}, {1, "beta", 3}, {3, "betam", 3},
                {9, "b", 1},   {-1, "bx", LB_ERR}, {1, "", 2},   {1, nullptr, 2}};
    for (const auto& [start, text, found] : rows)
        EXPECT_EQ(m_box.FindString(start, text), found) << start << " " << (text ? text : "null");
}

TEST_F(ListBox, WithoutATableEverythingIsNeutral) {
    CListBox box;
    int rows[2];
    char text[2];
    for (const int result : {box.AddString("a"),
                             box.InsertString(0, "a"),
                             box.DeleteString(0),
                             box.GetCount(),
                             box.GetText(0, text),
                             box.GetCurSel(),
                             box.SetCurSel(0),
                             box.GetSel(0),
                             box.SetSel(-1),
                             box.GetSelCount(),
                             box.GetSelItems(2, rows),
                             box.SelItemRange(TRUE, 0, 1),
                             box.SelectString(-1, "a"),
                             box.FindStringExact(-1, "a"),
                             box.SetTopIndex(0),
                             box.GetTopIndex(),
                             box.Dir(0, "*"),
                             box.SetItemHeight(0, 9),
                             box.FindString(-1, "a"),
                             box.GetTextLen(0),
                             box.GetItemRect(0, nullptr)})
        EXPECT_EQ(result, LB_ERR);
    EXPECT_EQ(box.SetItemData(0, 1), 0);
    EXPECT_FALSE(box.SetTabStops(1, rows));
    box.ResetContent();
    EXPECT_FALSE(box.Create(0, RECT{}, nullptr, 1));
}

TEST_F(ListBox, TabStopsAreOnlyKept) {
    MessageBoxRecorder boxes;
    const int stops[] = {10, 20, 30, 40, 50, 60};
    EXPECT_TRUE(m_box.SetTabStops(3, stops));
    ASSERT_EQ(m_box.tabStops.GetSize(), 3);
    EXPECT_EQ(m_box.tabStops[2], 50u);
    m_box.SetTabStops();
    EXPECT_FALSE(m_box.SetTabStops(8));
    const std::string each = "CListBox::SetTabStops( const int& cxEachStop ) not implemented";
    EXPECT_THAT(boxes.Take(), ElementsAre(ShownBox{"CListBox::SetTabStops( ) not implemented",
                                                   "CListBox error", 1},
                                          ShownBox{each, "CListBox error", 1}));
}
