// The library's controls, used as a host uses them.
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeView>

#include <afxcmn.h>
#include <afxwin.h>

#include "common.h"
#include "frames.h"

namespace lists {
namespace {

class Patches : public CListCtrl {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message != static_cast<int>(WM_GETDISPLAYTEXT))
            return CListCtrl::MessageMap(message, wParam, lParam);
        auto& cell = *reinterpret_cast<LV_DISPTEXT*>(lParam);
        CellText(cell.column, cell.itemData, cell.text, sizeof cell.text);
        return 1;
    }
    void AppendRow(int row) { InsertItem(LVIF_PARAM, row, "", 0, 0, 0, static_cast<LPARAM>(row)); }
};

class Window : public CWnd {
public:
    Window() {
        Create("", "lists", WS_OVERLAPPEDWINDOW, RECT{0, 60, kWidth, 60 + kHeight}, nullptr, 0);
    }
    ~Window() override { DestroyWindow(); }
};

constexpr RECT kWhole = {0, 0, kWidth, kHeight};

void AddList(Patches& list, Window& window) {
    list.Create(WS_VISIBLE, kWhole, &window, 1);
    for (int i = 0; i < kColumns; ++i) list.InsertColumn(i, "Column", 0, kColumnWidth);
}

void MeasureList() {
    Window window;
    Patches list;
    AddList(list, window);
    Measure("list-1000000-fill", [&] {
        list.SetRedraw(FALSE);
        for (int i = 0; i < kRows; ++i) list.AppendRow(i);
        list.SetRedraw(TRUE);
        list.EnsureVisible(0, FALSE); // the view knows the rows, as the peers' do
    });
    const PaintCounter paints(list.tableView->viewport());
    Measure("list-1000000-first-frame", [&] {
        window.ShowWindow(SW_SHOW);
        paints.WaitForOne();
    });
    Measure("list-1000000-100-pages", [&] { ScrollPages(*list.tableView); });
    Measure("list-1000000-select-all", [&] {
        list.SetItemState(-1, LVIS_SELECTED, LVIS_SELECTED);
        PaintNow(*list.tableView);
    });
    Measure("list-1000000-select-10000-separate", [&] {
        list.SetItemState(-1, 0, LVIS_SELECTED);
        for (int i = 0; i < kSeparateRows; ++i)
            list.SetItemState(2 * i, LVIS_SELECTED, LVIS_SELECTED);
        PaintNow(*list.tableView);
    });
}

void MeasureSort() {
    Window window;
    Patches list;
    AddList(list, window);
    for (int i = 0; i < kSortedRows; ++i) list.AppendRow(i);
    window.ShowWindow(SW_SHOW);
    PaintNow(*list.tableView);
    Measure("list-100000-sort", [&] { // as a click on the header does
        list.tableView->horizontalHeader()->setSortIndicator(0, Qt::AscendingOrder);
        PaintNow(*list.tableView);
    });
}

void MeasureInserts() {
    Window window;
    Patches list;
    AddList(list, window);
    window.ShowWindow(SW_SHOW);
    PaintNow(*list.tableView);
    Measure("list-100000-inserts-while-shown", [&] {
        for (int i = 0; i < kInsertedRows; ++i) list.AppendRow(i);
        PaintNow(*list.tableView);
    });
}

void Fill(CTreeCtrl& tree) {
    for (int group = 0; group < kGroups; ++group) {
        const HTREEITEM parent = tree.InsertItem(GroupText(group).c_str(), nullptr, TVI_LAST);
        for (int i = 0; i < kItemsOfGroup; ++i)
            tree.InsertItem(ItemText(group, i).c_str(), parent, TVI_LAST);
    }
}

int Walk(CTreeCtrl& tree) {
    int length = 0;
    for (HTREEITEM group = tree.GetChildItem(nullptr); group;
         group = tree.GetNextItem(group, TVGN_NEXT))
        for (HTREEITEM item = tree.GetChildItem(group); item;
             item = tree.GetNextItem(item, TVGN_NEXT))
            length += tree.GetItemText(item).GetLength();
    return length;
}

void DeleteOneByOne(CTreeCtrl& tree) {
    while (HTREEITEM group = tree.GetChildItem(nullptr)) {
        while (HTREEITEM item = tree.GetChildItem(group)) tree.DeleteItem(item);
        tree.DeleteItem(group);
    }
}

void MeasureTree() {
    Window window;
    CTreeCtrl tree;
    tree.Create(WS_VISIBLE, kWhole, &window, 1);
    window.ShowWindow(SW_SHOW);
    PaintNow(*tree.tableView);
    Measure("tree-100000-insert", [&] {
        Fill(tree);
        PaintNow(*tree.tableView);
    });
    Measure("tree-100000-expand-all", [&] {
        for (HTREEITEM group = tree.GetChildItem(nullptr); group;
             group = tree.GetNextItem(group, TVGN_NEXT))
            tree.Expand(group, TVE_EXPAND);
        PaintNow(*tree.tableView);
    });
    int length = 0;
    Measure("tree-100000-walk", [&] { length = Walk(tree); });
    Measure("tree-100000-delete", [&] {
        DeleteOneByOne(tree);
        PaintNow(*tree.tableView);
    });
    std::fprintf(stderr, "%d\n", length);
}

void MeasureListBox() {
    Window window;
    CListBox list;
    list.Create(WS_VISIBLE | LBS_HASSTRINGS, kWhole, &window, 1);
    window.ShowWindow(SW_SHOW);
    PaintNow(*list.tableView);
    Measure("listbox-100000-add", [&] {
        for (int i = 0; i < kStrings; ++i) list.AddString(StringText(i).c_str());
        PaintNow(*list.tableView);
    });
    const std::string last = StringText(kStrings - 1);
    Measure("listbox-100000-find", [&] {
        for (int i = 0; i < kSearches; ++i)
            if (list.FindStringExact(-1, last.c_str()) != kStrings - 1) std::abort();
    });
    Measure("listbox-100000-select", [&] {
        for (int i = 0; i < kSelections; ++i) list.SetCurSel(i * 97 % kStrings);
        PaintNow(*list.tableView);
    });
}

} // namespace
} // namespace lists

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    CWinApp app;
    lists::MeasureList();
    lists::MeasureSort();
    lists::MeasureInserts();
    lists::MeasureTree();
    lists::MeasureListBox();
    return 0;
}
