// The table view of a list or a list box: its settings, the number of its rows and its selection. The
// rows themselves are kept by a RowKeeper; the classes derived from RowTable say what cells show.
//
// The view is told of rows that come and go when somebody looks: before it paints, before it gets
// input, before anyone asks for rows or the selection. A hundred thousand calls cost it one change.
#pragma once

#include <climits>
#include <map>
#include <utility>

#include <QtCore/QAbstractTableModel>

#include "controls/RowSet.h"
#include "wnd/heldViews.h"

class CWnd;
class QItemSelection;
class QTableView;

namespace vm {

/// Who keeps the rows of a table and is told what its user does.
class RowKeeper {
public:
    virtual int Count() const = 0;
    /// The window object that the table belongs to, or null.
    virtual CWnd* Object() const = 0;
    virtual void selectionDidChange() = 0;
    virtual void doubleClick() = 0;

    bool userEdit = true; ///< notifications are sent only while it is set

protected:
    ~RowKeeper() = default;
};

/// Holds notifications back while the program changes rows or selection.
class ProgramEdit {
public:
    explicit ProgramEdit(RowKeeper& rows)
        : m_rows(rows), m_before(std::exchange(rows.userEdit, false)) {}
    ~ProgramEdit() { m_rows.userEdit = m_before; }
    ProgramEdit(const ProgramEdit&) = delete;
    ProgramEdit& operator=(const ProgramEdit&) = delete;

private:
    RowKeeper& m_rows;
    bool m_before;
};

class RowTable : public QAbstractTableModel {
public:
    QTableView* View() const { return m_view; }
    int Tag() const;
    void SetMultiSelect(bool multiple); ///< for the user; the program may always select several

    void NoteNumberOfRowsChanged(); ///< the view takes over how many rows there are
    void ReloadData();              ///< the same, and all cells are shown anew
    void ReloadRows(int first, int last);
    void ScrollToRow(int row);

    // Selection by row numbers: rows that come or go in front of a selected one do not move it.
    void SelectRows(int first, int last, bool select);
    void SelectOnly(int row); ///< none when there is no such row
    bool IsRowSelected(int row) { return Selected().Contains(row); }
    const std::map<int, int>& SelectedRanges() { return Selected().Ranges(); } ///< see RowSet
    int SelectedCount() { return Selected().Count(); }
    int SelectedRow(); ///< the one selected last; -1 for none

    int rowCount(const QModelIndex& parent = {}) const override;

protected:
    explicit RowTable(QTableView* view);
    /// For derived constructors, once the keeper exists: the view shows this.
    void Attach(RowKeeper& rows);

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// While the host is asked for something inside the view's own work: rows that come and go are
    /// taken over after it.
    class Request {
    public:
        explicit Request(const RowTable& table) : m_table(table) { ++m_table.m_requests; }
        ~Request() { --m_table.m_requests; }
        Request(const Request&) = delete;
        Request& operator=(const Request&) = delete;

    private:
        const RowTable& m_table;
        HeldViews m_held;
    };

    /// Before a change of the columns: whole rows are selected again after it.
    void KeepSelection();

private:
    void Connect();
    void SelectionChanged(const QItemSelection& selected);
    void CatchUp();
    void CatchUpSelection();
    void SelectionIsAhead();
    RowSet& Selected();
    void ResizeTo(int rows);
    void ShowSoon();
    void SetCurrent(const QModelIndex& index);
    void DoubleClicked();

    QTableView* m_view;
    RowKeeper* m_keeper = nullptr;
    int m_shownRows = 0; // that the view knows of
    int m_lastSelected = -1;
    RowSet m_selected;
    bool m_selectedIsOld = false;    // the view's selection is another by now
    bool m_selectionIsAhead = false; // the view has not heard of it yet

    int m_fewestRows = INT_MAX; // since the view last knew: the selection beyond them has gone
    bool m_isBehind = false;
    bool m_cellsAreOld = false;
    bool m_isPosted = false;
    bool m_heardInRequest = false;
    bool m_layoutIsOld = false; // the view lays out new rows on its own only in the event loop
    mutable int m_requests = 0;
};

} // namespace vm
