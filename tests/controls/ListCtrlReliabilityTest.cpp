// Lists whose host does what it should not, or has ten million rows; and every operation against a plain
// model of the rows.
#include "ListCtrlFixture.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <set>

#include <QtCore/QCoreApplication>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QMouseEvent>

using testing::ElementsAre;
using testing::SizeIs;

namespace {

/// Does something of the test's when it is asked for a cell.
class BusyList : public PatchList {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_CONTEXTMENU) menus.push_back(lParam);
        if (message == WM_CONTEXTMENU && takesMenus) return 1;
        if (message == WM_GETDISPLAYTEXT && onCell) onCell(*reinterpret_cast<LV_DISPTEXT*>(lParam));
        if (message == WM_GETDISPLAYTEXT && isSilent) return 1;
        return PatchList::MessageMap(message, wParam, lParam);
    }
    std::function<void(LV_DISPTEXT&)> onCell;
    bool isSilent = false; // the text is left as `onCell` made it
    bool takesMenus = false;
    std::vector<LPARAM> menus;
};

/// Does something of the test's when it is notified.
class BusyParent : public RecordingWnd {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_NOTIFY) codes.push_back(reinterpret_cast<const NMHDR*>(lParam)->code);
        if (message == WM_NOTIFY && onNotify) onNotify(codes.back());
        return RecordingWnd::MessageMap(message, wParam, lParam);
    }
    std::function<void(UINT)> onNotify;
    std::vector<UINT> codes;
};

class BusyListCtrl : public testing::Test {
protected:
    BusyListCtrl() {
        m_window.Open();
        m_list = std::make_unique<BusyList>();
        m_list->Create(WS_VISIBLE, RECT{10, 20, 310, 220}, &m_window, 55);
        m_list->InsertColumn(0, "Name", 0, 120);
        for (LPARAM data = 100; data < 105; ++data)
            m_list->InsertItem(LVIF_PARAM | LVIF_TEXT, 99, "row", 0, 0, 0, data);
    }
    ~BusyListCtrl() override { m_window.DestroyWindow(); }

    QTableView* View() { return m_list->tableView; }
    const std::deque<std::uintptr_t>& Data() { return LCTableViewDelegate::Of(View())->data; }
    void ClickHeader() {
        QHeaderView* header = View()->horizontalHeader();
        Click(header->viewport(), {20, header->height() / 2});
    }

    LogCapture m_log;
    Watchdog m_watchdog;
    BusyParent m_window;
    std::unique_ptr<BusyList> m_list;
};

} // namespace

TEST_F(BusyListCtrl, RowsThatGoWhileTheyAreShownAreShownNoMore) {
    m_list->onCell = [&](LV_DISPTEXT& cell) {
        if (cell.itemData != 101) return;
        m_list->DeleteAllItems();
        EXPECT_EQ(m_list->GetSelectedCount(), 0u);
        EXPECT_EQ(View()->model()->rowCount(), 5) << "not under the view's hands";
    };
    View()->grab();
    EXPECT_EQ(m_list->GetItemCount(), 0);
    EXPECT_EQ(m_list->asked.back().second, 101u);
    QCoreApplication::processEvents();
    EXPECT_EQ(View()->model()->rowCount(), 0);
    m_list->onCell = [&](LV_DISPTEXT&) { m_list->InsertItem(0, "more"); };
    m_list->InsertItem(0, "one");
    View()->grab();
    EXPECT_GT(m_list->GetItemCount(), 1);
}

TEST_F(BusyListCtrl, RowsThatChangeWhileTheyAreSortedKeepTheirOrder) {
    m_list->texts = {{100, "e"}, {101, "d"}, {102, "c"}, {103, "b"}, {104, "a"}};
    QCoreApplication::processEvents(); // shown before it is sorted
    m_list->onCell = [&](LV_DISPTEXT& cell) {
        if (cell.itemData != 103) return;
        m_list->onCell = nullptr;
        m_list->DeleteItem(1);
        m_list->InsertItem(LVIF_PARAM, 0, "", 0, 0, 0, 7);
    };
    ClickHeader();
    EXPECT_THAT(Data(), ElementsAre(7, 100, 102, 103, 104));
    QTableView* view = View();
    m_list->onCell = [&](LV_DISPTEXT&) { m_list->DestroyWindow(); };
    ClickHeader();
    EXPECT_EQ(m_list->GetItemCount(), 0) << "destroyed";
    EXPECT_THAT(LCTableViewDelegate::Of(view)->data, SizeIs(5));
}

TEST_F(BusyListCtrl, EveryDoubleClickOfTheLeftButtonIsReported) {
    const auto doubleClick = [&](QPoint where, Qt::MouseButton button) {
        QMouseEvent event(QEvent::MouseButtonDblClick, where,
                          View()->viewport()->mapToGlobal(where), button, button, {});
        m_window.codes.clear();
        QCoreApplication::sendEvent(View()->viewport(), &event);
        return m_window.codes;
    };
    EXPECT_THAT(doubleClick({5, 5}, Qt::LeftButton), testing::Contains(UINT{NM_DBLCLK}));
    EXPECT_THAT(doubleClick({5, 5}, Qt::RightButton),
                testing::Not(testing::Contains(UINT{NM_DBLCLK})));
    EXPECT_THAT(doubleClick({5, 150}, Qt::LeftButton), testing::Contains(UINT{NM_DBLCLK}))
        << "below the rows";
}

TEST_F(BusyListCtrl, KeysMoveBetweenRows) {
    const struct {
        int key;
        Qt::KeyboardModifiers modifiers;
        std::vector<int> selected;
    } rows[] = {{Qt::Key_End, {}, {4}},
                {Qt::Key_Home, {}, {0}},
                {Qt::Key_Right, {}, {0}},
                {Qt::Key_Down, {}, {1}},
                {Qt::Key_End, Qt::ShiftModifier, {1, 2, 3, 4}}};
    m_list->InsertColumn(1, "Bank", 0, 50);
    ClickRow(View(), 2);
    for (const auto& row : rows) {
        PressKey(View(), row.key, row.modifiers);
        std::vector<int> selected;
        for (int i = 0; i < 5; ++i)
            if (m_list->GetItemState(i, 8)) selected.push_back(i);
        EXPECT_EQ(selected, row.selected) << "after " << row.key;
    }
}

TEST_F(BusyListCtrl, TheSortArrowGoesWithItsColumn) {
    m_list->InsertColumn(1, "Bank", 0, 50);
    QHeaderView* header = View()->horizontalHeader();
    header->setSortIndicator(1, Qt::DescendingOrder);
    m_list->DeleteColumn(0);
    EXPECT_EQ(header->sortIndicatorSection(), 0);
    m_list->DeleteColumn(1);
    m_list->InsertColumn(2, "Kind", 0, 50);
    EXPECT_EQ(header->sortIndicatorSection(), -1);
}

TEST_F(BusyListCtrl, ATextWithoutAnEndIsCutAtItsRecord) {
    m_list->isSilent = true;
    m_list->onCell = [](LV_DISPTEXT& cell) { std::fill_n(cell.text, sizeof cell.text, 'w'); };
    EXPECT_EQ(View()->model()->index(0, 0).data().toString().size(), 256);
}

TEST_F(BusyListCtrl, ASelectionMadeInANoticeIsNotReported) {
    m_window.onNotify = [&](UINT) {
        m_list->SetItemState(-1, 0, 8);
        m_list->SetItemState(0, 8, 8);
        m_list->DeleteItem(4);
    };
    ClickRow(View(), 4);
    EXPECT_THAT(m_window.codes, ElementsAre(LVN_ITEMCHANGED));
    EXPECT_EQ(m_list->GetItemState(0, 8), 8u);
    EXPECT_EQ(m_list->GetSelectedCount(), 1u);
}

TEST_F(BusyListCtrl, IsDestroyedByItsOwnNotification) {
    for (const UINT code : {UINT{LVN_ITEMCHANGED}, UINT{NM_DBLCLK}}) {
        SCOPED_TRACE(code);
        BusyList list;
        list.Create(WS_VISIBLE, RECT{10, 20, 310, 220}, &m_window, 56);
        list.InsertColumn(0, "Name", 0, 120);
        list.InsertItem(0, "row");
        m_window.onNotify = [&](UINT sent) {
            if (sent != code) return;
            list.DestroyWindow();
            QCoreApplication::processEvents(); // a message box does so
        };
        DoubleClickRow(list.tableView, 0);
        EXPECT_EQ(list.view, nullptr);
        EXPECT_EQ(list.GetItemCount(), 0);
        EXPECT_EQ(m_window.codes.back(), code);
    }
}

TEST_F(BusyListCtrl, ContextMenusAreAskedOfTheListAndItsParent) {
    QWidget* inside = View()->viewport();
    const QPoint row = View()->visualRect(View()->model()->index(2, 0)).center();
    const QPoint screen = inside->mapToGlobal(row);
    const LPARAM place = MAKELPARAM(screen.x(), screen.y());
    QMouseEvent press(QEvent::MouseButtonPress, row, screen, Qt::RightButton, Qt::RightButton, {});
    QCoreApplication::sendEvent(inside, &press);
    EXPECT_THAT(m_window.codes, ElementsAre(LVN_ITEMCHANGED)) << "the row is selected first";
    EXPECT_EQ(m_list->GetItemState(2, 8), 8u);
    const auto ask = [&] {
        m_window.messages.clear();
        QContextMenuEvent menu(QContextMenuEvent::Mouse, row, screen);
        QCoreApplication::sendEvent(inside, &menu);
        return std::count(m_window.messages.begin(), m_window.messages.end(), WM_CONTEXTMENU);
    };
    EXPECT_EQ(ask(), 1);
    m_list->takesMenus = true;
    EXPECT_EQ(ask(), 0);
    EXPECT_THAT(m_list->menus, ElementsAre(place, place));
    PressKey(View(), Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_THAT(m_list->menus, SizeIs(3));
    EXPECT_EQ(HIWORD(m_list->menus[2]), HIWORD(place)) << "at the current row";
}

TEST_F(BusyListCtrl, FocusIsRefusedByAViewThatTakesNone) {
    View()->setFocusPolicy(Qt::NoFocus);
    EXPECT_EQ(m_list->SetFocus(), nullptr);
    EXPECT_THAT(m_log.TakeLog(),
                ElementsAre("Request to SetFocus to an NSView which doesn't accept focus"));
    m_list->tableView = nullptr;
    EXPECT_EQ(m_list->SetFocus(), nullptr);
    EXPECT_THAT(m_log.TakeLog(), ElementsAre());
}

TEST_F(BusyListCtrl, HundredThousandChangesAreOneOfTheView) {
    int changes = 0;
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        QObject::connect(View()->model(), signal, [&] { ++changes; });
    QObject::connect(View()->model(), &QAbstractItemModel::dataChanged, [&] { ++changes; });
    QObject::connect(View()->model(), &QAbstractItemModel::modelReset, [&] { ++changes; });
    for (int i = 0; i < 100'000; ++i) m_list->InsertItem(i, "row");
    for (int i = 0; i < 100'000; ++i) m_list->SetItemText(i, 0, "other");
    EXPECT_EQ(changes, 0);
    View()->grab();
    EXPECT_EQ(changes, 2) << "rows and cells";
    for (int i = 0; i < 100'000; ++i) m_list->DeleteItem(0);
    EXPECT_EQ(View()->model()->rowCount(), 5);
    EXPECT_EQ(changes, 4);
}

namespace {

/// What a list is, without a list.
struct Model {
    std::vector<std::string> strings;
    std::vector<std::uintptr_t> data;
    std::vector<int> images;
    std::set<int> selected;

    int Rows() const { return static_cast<int>(data.size()); }
    int Texts() const { return static_cast<int>(strings.size()); }
    int Insert(UINT mask, int at, const std::string& text, int value) {
        const bool appends = at < 0 || at >= Texts();
        const int row = appends ? Texts() : at;
        const int place = appends ? Rows() : at;
        if (appends || mask & LVIF_TEXT)
            strings.insert(strings.begin() + row, mask & LVIF_TEXT ? text : "");
        data.insert(data.begin() + place, mask & LVIF_PARAM ? value : 0);
        images.insert(images.begin() + place, mask & LVIF_IMAGE ? value : 0);
        return row;
    }
    int Delete(int at) {
        if (at < 0 || at >= Texts()) return 0;
        strings.erase(strings.begin() + at);
        data.erase(data.begin() + at);
        images.erase(images.begin() + at);
        selected.erase(selected.lower_bound(Rows()), selected.end());
        return static_cast<signed char>(at);
    }
    void Select(int row, bool on) {
        for (int i = 0; i < Rows(); ++i)
            if (row == -1 || i == row) on ? (void)selected.insert(i) : (void)selected.erase(i);
    }
};

void ExpectSame(const BusyList& list, const Model& model) {
    ASSERT_EQ(list.GetItemCount(), model.Texts());
    std::set<int> selected;
    for (POSITION at = list.GetFirstSelectedItemPosition(); at;)
        selected.insert(list.GetNextSelectedItem(at));
    ASSERT_EQ(selected, model.selected);
    for (int row = 0; row < model.Texts(); ++row) {
        char text[32];
        LVITEM item{LVIF_PARAM | LVIF_IMAGE | LVIF_TEXT, row, 0, 0, 0, text, 0, -1, 0};
        ASSERT_TRUE(list.GetItem(&item));
        const auto at = static_cast<std::size_t>(row);
        ASSERT_EQ(text, model.strings[at]);
        ASSERT_EQ(item.lParam, model.data[at]);
        ASSERT_EQ(item.iImage, model.images[at]);
    }
}

} // namespace

TEST_F(BusyListCtrl, EveryOperationIsThatOfAPlainModel) {
    m_list->DeleteAllItems();
    Model model;
    std::mt19937 random(20'261'121);
    const auto any = [&](int most) { return static_cast<int>(random()) % most; };
    for (int step = 0; step < 4000 && !HasFatalFailure(); ++step) {
        SCOPED_TRACE(step);
        const int row = std::abs(any(model.Rows() + 3)) - 1;
        const int what = std::abs(any(100));
        if (what < 45 || step < 300) {
            const auto mask = static_cast<UINT>(what % 8);
            const std::string text = "t" + std::to_string(step);
            ASSERT_EQ(
                m_list->InsertItem(mask, row, text.c_str(), 0, 0, step, static_cast<LPARAM>(step)),
                model.Insert(mask, row, text, step));
        } else if (what < 75) {
            ASSERT_EQ(m_list->DeleteItem(row), model.Delete(row));
        } else {
            m_list->SetItemState(row, what % 2 ? UINT{LVIS_SELECTED} : 0, LVIS_SELECTED);
            model.Select(row, what % 2 != 0);
        }
        if (step % 4 == 0) ExpectSame(*m_list, model); // between the others nobody looks
    }
    EXPECT_TRUE(m_window.codes.empty());
}
