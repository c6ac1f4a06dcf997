// The row store of a list box, and how what the user does reaches a window object.
#pragma once

#include <cstdint>
#include <deque>
#include <string>

#include <vmcore/core/types.h>

#include "controls/rowTable.h"

class CListBox;

namespace vm {
class ListBoxTable;
}

/// The delegate and data source of a list box's table view; part of its ListBoxTable.
class LBTableViewDelegate final : public vm::RowKeeper {
public:
    explicit LBTableViewDelegate(vm::ListBoxTable& table) : m_table(table) {}
    LBTableViewDelegate(const LBTableViewDelegate&) = delete;
    LBTableViewDelegate& operator=(const LBTableViewDelegate&) = delete;
    /// The delegate of a table view; null when it is no list box's.
    static LBTableViewDelegate* Of(const QTableView* view);

    CListBox* wnd = nullptr; ///< the list box that it serves; null before it is bound

    std::deque<std::string> strings; ///< Mac Roman; compared far more often than they are shown
    std::deque<std::uintptr_t> data; ///< item data, one for each string

    vm::ListBoxTable& Table() const { return m_table; }
    bool Has(int row) const { return row >= 0 && row < Count(); }
    void Insert(int row, const char* text); ///< with item data 0
    void Remove(int row);
    void Clear();

    int Count() const override { return static_cast<int>(strings.size()); }
    /// The list box: `wnd`, else the object that the table view is registered for, or null.
    CWnd* Object() const override;
    /// Tells the object's parent. Without one the view is a plain control of a dialog, and its wire
    /// sends the selection change.
    void selectionDidChange() override;
    void doubleClick() override;

private:
    void Notify(CWnd& list, int code); ///< to the parent that it has
    void NotifyAround(int code);
    LPARAM Handle() const;

    vm::ListBoxTable& m_table;
};
