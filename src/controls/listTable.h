// The table view of a list: its settings, its columns, its selection, and the model through which
// it sees the rows. The texts are asked for as cells are shown, so a million rows cost nothing.
#pragma once

#include <utility>
#include <vector>

#include <QtCore/QAbstractTableModel>

#include "controls/LCTableViewDelegate.h"

class QItemSelection;

namespace vm {

class ListTable : public QAbstractTableModel {
public:
    /// Makes `view` a list's table view. The new object belongs to the view.
    explicit ListTable(QTableView* view);
    /// Null when the view is no list's (or null).
    static ListTable* Of(const QTableView* view);

    LCTableViewDelegate& Rows() { return m_rows; }
    QTableView* View() const { return m_view; }
    int Tag() const;

    // Columns go by the number given to them; of two with one number the first counts.
    int AppendColumn(int number, const QString& heading, int width); ///< the index
    void RemoveColumn(int number);
    int ColumnWidth(int number) const; ///< -1 for none

    void NoteNumberOfRowsChanged(); ///< the view takes over how many rows there are
    void ReloadData();              ///< the same, and all cells are shown anew
    void ReloadRows(int first, int last);
    void ScrollToRow(int row);

    // Selection by row numbers: rows that come or go in front of a selected one do not move it.
    void SelectRows(int first, int last, bool select);
    bool IsRowSelected(int row) const;
    const std::vector<std::pair<int, int>>& SelectedRanges() const; ///< ascending, disjoint
    int SelectedRow() const; ///< the one selected last; -1 for none

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Column {
        int number;
        QString heading;
    };

    void Connect();
    int SectionOf(int number) const;
    void SelectWholeRowsAgain();
    void SelectionChanged(const QItemSelection& selected);

    QTableView* m_view;
    LCTableViewDelegate m_rows;
    std::vector<Column> m_columns;
    int m_shownRows = 0;
    int m_lastSelected = -1;
    mutable std::vector<std::pair<int, int>> m_selectedRanges;
    mutable bool m_rangesAreOld = true;
    bool m_layoutIsOld = false; // the view lays out new rows on its own only in the event loop
};

} // namespace vm
