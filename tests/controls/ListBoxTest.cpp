// The list box: strings, item data, selection, and what the user does.
#include <vmcore/controls/CListBox.h>

#include <cstring>
#include <functional>

#include <QtWidgets/QTableView>

#include <gmock/gmock.h>

#include <vmcore/app/CWinApp.h>

#include "ControlsFixture.h"
#include "controls/LBTableViewDelegate.h"
#include "controls/listBoxTable.h"
#include "support/MessageBoxRecorder.h"
#include "wnd/controlWiring.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

constexpr RECT kPlace{10, 20, 210, 220};

/// Records the commands of its list boxes.
class Parent : public CWnd {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_CONTEXTMENU) menus.push_back(reinterpret_cast<HWND>(wParam));
        if (message != WM_COMMAND) return 0;
        commands.emplace_back(LOWORD(wParam), HIWORD(wParam));
        senders.push_back(reinterpret_cast<HWND>(lParam));
        handles.push_back(AfxGetResourceHandle());
        if (onCommand) onCommand();
        return 1;
    }
    std::vector<std::pair<int, int>> commands; // identifier, code
    std::vector<HWND> senders;
    std::vector<void*> handles; // the resource handle at each command
    std::vector<HWND> menus;
    std::function<void()> onCommand;
};

class ListBox : public testing::Test {
protected:
    ListBox() {
        m_window.Create("", "Test", WS_VISIBLE, RECT{60, 60, 460, 360}, nullptr, 7);
        EXPECT_TRUE(m_box.Create(WS_VISIBLE, kPlace, &m_window, 55));
    }
    ~ListBox() override { m_window.DestroyWindow(); }

    void Add(std::initializer_list<const char*> texts) {
        for (const char* text : texts) m_box.AddString(text);
    }
    std::string Text(int row) const {
        char buffer[64] = "unchanged";
        const int length = m_box.GetText(row, buffer);
        EXPECT_EQ(length, length < 0 ? LB_ERR : static_cast<int>(std::strlen(buffer)));
        return buffer;
    }
    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (int row = 0; row < m_box.GetCount(); ++row) texts.push_back(Text(row));
        return texts;
    }
    std::vector<int> Selection() const {
        std::vector<int> rows(20);
        rows.resize(static_cast<std::size_t>(m_box.GetSelItems(20, rows.data())));
        return rows;
    }
    bool UserEdit() const { return LBTableViewDelegate::Of(m_box.tableView)->userEdit; }

    LogCapture m_log;
    Watchdog m_watchdog;
    Parent m_window;
    CListBox m_box;
};

} // namespace

TEST_F(ListBox, IsAChildThatStoresItsStrings) {
    EXPECT_EQ(m_box.view->geometry(), QRect(10, 20, 200, 200));
    EXPECT_EQ(m_window.GetDlgItem(55), &m_box);
    EXPECT_EQ(m_box.GetStyle(), LBS_HASSTRINGS | WS_VISIBLE);
    EXPECT_EQ(m_box.tableView->selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_EQ(m_box.AddString("b\x8A"), 0);
    EXPECT_EQ(m_box.AddString("c"), 1);
    EXPECT_EQ(m_box.AddString("d"), 2);
    EXPECT_EQ(m_box.AddString(nullptr), 3);
    EXPECT_EQ(m_box.InsertString(0, "a"), 0);
    EXPECT_EQ(m_box.InsertString(5, "end"), 5);
    EXPECT_THAT(Texts(), ElementsAre("a", "b\x8A", "c", "d", "", "end"));
    const QAbstractItemModel& model = *m_box.tableView->model();
    EXPECT_EQ(model.rowCount(), 6);
    EXPECT_EQ(model.index(1, 0).data().toString(), QStringLiteral(u"b\u00E4"));
    CString text;
    EXPECT_EQ(m_box.GetText(5, text), 3);
    EXPECT_STREQ(text, "end");
    EXPECT_EQ(m_box.DeleteString(1), 1);
    EXPECT_THAT(Texts(), ElementsAre("a", "c", "d", "", "end"));
    m_box.ResetContent();
    EXPECT_EQ(m_box.GetCount(), 0);

    m_box.ModifyStyle(LBS_HASSTRINGS, 0);
    Add({"lost"});
    EXPECT_EQ(Text(0), "");
    EXPECT_EQ(m_box.InsertString(0, "lost"), 0);
    EXPECT_EQ(m_box.GetCount(), 2);
}

TEST_F(ListBox, RowsThatAreNotThere) {
    Add({"a", "b"});
    EXPECT_EQ(m_box.DeleteString(3), LB_ERR);
    EXPECT_THAT(m_log.TakeLog(), IsEmpty());
    EXPECT_EQ(m_box.DeleteString(2), LB_ERR);
    EXPECT_EQ(m_box.DeleteString(-1), LB_ERR);
    EXPECT_EQ(m_box.InsertString(-1, "x"), LB_ERR) << "not the end";
    EXPECT_EQ(m_box.InsertString(3, "x"), LB_ERR);
    EXPECT_THAT(m_log.TakeLog(), ElementsAre("exception at CListBox::DeleteString() - NoSuchRow",
                                             "exception at CListBox::DeleteString() - NoSuchRow",
                                             "exception at CListBox::InsertString() - NoSuchRow",
                                             "exception at CListBox::InsertString() - NoSuchRow"));
    EXPECT_TRUE(UserEdit());
    for (const int row : {-2, -1, 2}) {
        EXPECT_EQ(Text(row), "");
        EXPECT_EQ(m_box.GetItemData(row), 0u);
        EXPECT_EQ(m_box.SetItemData(row, 7), 0);
        EXPECT_EQ(m_box.GetSel(row), LB_ERR);
    }
    EXPECT_EQ(m_box.SetSel(2), LB_ERR);
    EXPECT_EQ(m_box.GetCount(), 2);
}

TEST_F(ListBox, ItemDataStaysWithItsString) {
    Add({"a", "b", "c"});
    EXPECT_EQ(m_box.GetItemData(1), 0u);
    EXPECT_EQ(m_box.SetItemData(1, 77), 1);
    m_box.InsertString(0, "new");
    EXPECT_EQ(m_box.GetItemData(2), 77u);
    m_box.DeleteString(0);
    EXPECT_EQ(m_box.GetItemData(1), 77u);
}

TEST_F(ListBox, SelectionByTheProgramReportsNothing) {
    Add({"a", "b", "c", "d", "e", "f", "g", "h", "i"});
    EXPECT_EQ(m_box.GetCurSel(), -1);
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
    m_box.SetCurSel(2);
    m_box.DeleteString(0);
    EXPECT_THAT(Selection(), ElementsAre(2)) << "it belongs to the row number";
    EXPECT_EQ(m_box.SetSel(-1, TRUE), -1);
    EXPECT_EQ(m_box.GetSelCount(), 8);
    m_box.SetSel(-1, FALSE);
    m_box.SelItemRange(TRUE, 5, 6);
    EXPECT_THAT(Selection(), ElementsAre(0, 1, 2, 3, 4, 5, 6)) << "from the top";
    m_box.SelItemRange(FALSE, 0, 99);
    EXPECT_EQ(m_box.GetCurSel(), -1);
    m_box.SetCurSel(3);
    m_box.SetCurSel(-1);
    EXPECT_EQ(m_box.GetSelCount(), 0);
    EXPECT_EQ(m_box.SetTopIndex(7), 7);
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

TEST_F(ListBox, FindStringExactIgnoresTheCaseAndGoesRound) {
    Add({"ABC", "find", "x", "y"});
    struct {
        int start;
        const char* text;
        int found;
    } const kCases[] = {{-1, "abc", 0}, {1, "abc", 0},   {1, "find", -1}, {0, "FIND", 1},
                        {2, "Y", 3},    {-2, "abc", -1}, {9, "y", 3},     {-1, "ab", -1}};
    for (const auto& row : kCases)
        EXPECT_EQ(m_box.FindStringExact(row.start, row.text), row.found)
            << row.text << " after " << row.start;
}

TEST_F(ListBox, UserSelectionAndDoubleClickGoToTheParent) {
    Add({"a", "b", "c"});
    int ownHandle = 0;
    m_box.resourceBundle = &ownHandle;
    ClickRow(m_box.tableView, 1);
    EXPECT_THAT(m_window.commands, ElementsAre(Pair(55, LBN_SELCHANGE)));
    EXPECT_THAT(m_window.senders, ElementsAre(m_box.view));
    EXPECT_THAT(m_window.handles, ElementsAre(&ownHandle));
    EXPECT_EQ(AfxGetResourceHandle(), nullptr);
    m_window.commands.clear();
    DoubleClickRow(m_box.tableView, 2);
    EXPECT_THAT(m_window.commands, ElementsAre(Pair(55, LBN_SELCHANGE), Pair(55, LBN_DBLCLK)));
    EXPECT_EQ(m_box.GetCurSel(), 2);
    ClickRow(m_box.tableView, 0, Qt::ControlModifier);
    EXPECT_EQ(m_box.GetSelCount(), 1);
    m_box.SetMultiSelect(TRUE);
    ClickRow(m_box.tableView, 2, Qt::ControlModifier);
    EXPECT_EQ(m_box.GetSelCount(), 2);

    m_window.commands.clear();
    m_box.SetUserEdit(FALSE);
    ClickRow(m_box.tableView, 1);
    EXPECT_THAT(m_window.commands, IsEmpty());
    m_box.SetSel(0, FALSE);
    EXPECT_TRUE(UserEdit()) << "a change by the program ends it";
    PressKey(m_box.tableView, Qt::Key_C, {}, "c");
    EXPECT_THAT(m_window.commands, ElementsAre(Pair(55, LBN_SELCHANGE)));
    EXPECT_EQ(m_box.GetCurSel(), 2) << "typed";
}

TEST_F(ListBox, WithoutAnObjectTheDialogIsToldOnce) {
    auto* view = vm::MakeListBoxView(m_window.view);
    view->setProperty("tag", 60);
    view->setGeometry(220, 20, 150, 150);
    view->show();
    vm::WireToParent(*view);
    m_window.SendDlgItemMessage(60, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("a"));
    m_window.SendDlgItemMessage(60, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("b"));
    ClickRow(view, 0);
    EXPECT_THAT(m_window.commands, ElementsAre(Pair(60, LBN_SELCHANGE)));
    m_window.SendDlgItemMessage(60, LB_SETCURSEL, 1, 0);
    EXPECT_EQ(m_window.commands.size(), 1u);
    DoubleClickRow(view, 0);
    EXPECT_THAT(m_window.commands, ElementsAre(Pair(60, LBN_SELCHANGE), Pair(60, LBN_SELCHANGE),
                                               Pair(60, LBN_DBLCLK)));

    m_window.commands.clear();
    CListBox bound;
    bound.tableView = view;
    bound.Attach(view);
    bound.parentWnd = &m_window;
    LBTableViewDelegate::Of(view)->wnd = &bound;
    ClickRow(view, 1);
    EXPECT_THAT(m_window.commands, ElementsAre(Pair(60, LBN_SELCHANGE)));
    EXPECT_EQ(bound.GetCurSel(), 1);
}

TEST_F(ListBox, RedrawingOffKeepsRowsAndSelection) {
    Add({"a", "b"});
    m_box.SetCurSel(1);
    m_box.SetRedraw(FALSE);
    Add({"c"});
    m_box.ReloadData();
    EXPECT_EQ(m_box.GetCount(), 3);
    m_box.SetRedraw(TRUE);
    EXPECT_THAT(Selection(), ElementsAre(1));
    EXPECT_THAT(Texts(), ElementsAre("a", "b", "c"));
}

TEST_F(ListBox, HundredThousandStringsAreOneChangeOfTheView) {
    int changes = 0;
    QObject::connect(m_box.tableView->model(), &QAbstractItemModel::rowsInserted,
                     [&] { ++changes; });
    for (int i = 0; i < 100'000; ++i) m_box.AddString(std::to_string(i).c_str());
    EXPECT_EQ(m_box.FindStringExact(-1, "99999"), 99'999);
    m_box.tableView->grab();
    EXPECT_EQ(changes, 1);
    for (int i = 0; i < 100'000; ++i) m_box.DeleteString(0);
    EXPECT_EQ(m_box.tableView->model()->rowCount(), 0);
}

TEST_F(ListBox, WithoutATableEverythingIsNeutral) {
    CListBox box;
    EXPECT_EQ(box.GetStyle(), LBS_HASSTRINGS);
    char text[8] = "x";
    int rows[2];
    for (const int result :
         {box.AddString("a"), box.InsertString(0, "a"), box.DeleteString(0), box.GetCount(),
          box.GetText(0, text), box.GetCurSel(), box.SetCurSel(0), box.GetSel(0), box.SetSel(-1),
          box.GetSelCount(), box.GetSelItems(2, rows), box.SelItemRange(TRUE, 0, 1),
          box.SelectString(-1, "a"), box.FindStringExact(-1, "a"), box.SetTopIndex(0),
          box.GetTopIndex(), box.Dir(0, "*"), box.SetItemHeight(0, 9)})
        EXPECT_EQ(result, LB_ERR);
    EXPECT_EQ(box.GetItemData(0), 0u);
    EXPECT_EQ(box.SetItemData(0, 1), 0);
    EXPECT_FALSE(box.SetTabStops(1, rows));
    box.ResetContent();
    box.SetRedraw(TRUE);
    Parent closed;
    EXPECT_FALSE(box.Create(0, kPlace, nullptr, 1));
    EXPECT_FALSE(box.Create(0, kPlace, &closed, 1));
}

TEST_F(ListBox, TabStopsSizesAndWhatIsNotSupported) {
    MessageBoxRecorder boxes;
    const int stops[] = {10, 20, 30, 40, 50, 60};
    EXPECT_TRUE(m_box.SetTabStops(3, stops));
    ASSERT_EQ(m_box.tabStops.GetSize(), 3);
    EXPECT_EQ(m_box.tabStops[1], 30u);
    EXPECT_EQ(m_box.tabStops[2], 50u);
    m_box.SetTabStops();
    EXPECT_FALSE(m_box.SetTabStops(8));
    EXPECT_THAT(
        boxes.Take(),
        ElementsAre(ShownBox{"CListBox::SetTabStops( ) not implemented", "CListBox error", 1},
                    ShownBox{"CListBox::SetTabStops( const int& cxEachStop ) not "
                             "implemented",
                             "CListBox error", 1}));
    EXPECT_EQ(m_box.SetItemHeight(0, 30), 1);
    EXPECT_EQ(m_box.MessageMap(WM_SIZE, 0, 0), 1);
    EXPECT_EQ(m_box.MessageMap(WM_PAINT, 0, 0), 0);
}

TEST_F(ListBox, HandlersMayChangeOrDestroyIt) {
    Add({"a", "b", "c"});
    m_window.onCommand = [&] {
        m_box.SetCurSel(0);
        m_box.DeleteString(2);
    };
    ClickRow(m_box.tableView, 2);
    EXPECT_EQ(m_window.commands.size(), 1u) << "what the handler does is no user's doing";
    EXPECT_THAT(Selection(), ElementsAre(0));
    m_window.onCommand = [&] { m_box.DestroyWindow(); };
    ClickRow(m_box.tableView, 1);
    EXPECT_EQ(m_box.GetCount(), LB_ERR);
}
