// The table view of a list box: one column as wide as the view, without a header.
#pragma once

#include "controls/LBTableViewDelegate.h"
#include "controls/rowTable.h"

class QWidget;

namespace vm {

class ListBoxTable final : public RowTable {
public:
    /// Makes `view` a list box's table view, whose selection mode it keeps. The new object belongs
    /// to the view.
    explicit ListBoxTable(QTableView* view);
    /// Null when the view is no list box's (or null).
    static ListBoxTable* Of(const QWidget* view);

    LBTableViewDelegate& Rows() { return m_rows; }

    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    LBTableViewDelegate m_rows;
};

/// A new table view with a ListBoxTable, for one selected row. It belongs to `parent`, or to the
/// caller.
QTableView* MakeListBoxView(QWidget* parent = nullptr);

} // namespace vm
