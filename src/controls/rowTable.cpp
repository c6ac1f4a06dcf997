#include "controls/rowTable.h"

#include <algorithm>

#include <QtCore/QEvent>
#include <QtCore/QItemSelectionModel>
#include <QtCore/QPersistentModelIndex>
#include <QtCore/QPointer>
#include <QtCore/QSignalBlocker>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyledItemDelegate>
#include <QtWidgets/QTableView>

#include "controls/rowHeight.h"
#include "platform/eventboundary.h"
#include "wnd/contextMenus.h"
#include "wnd/controlText.h"
#include "wnd/views.h"

namespace vm {
namespace {

// Rows are what is selected and has the focus: no frame around one cell.
class RowPainter : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus;
    }
};

void FitRowsToFont(QTableView* view) {
    view->verticalHeader()->setDefaultSectionSize(RowHeight(view->fontMetrics()));
}

void SetUpRows(QTableView* view) {
    QHeaderView* rows = view->verticalHeader();
    rows->hide();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setMinimumSectionSize(1);
    FitRowsToFont(view);
    view->setItemDelegate(new RowPainter(view));
    view->setShowGrid(false);
    view->setWordWrap(false);
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
}

void SetUpBehaviour(QTableView* view) {
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setTabKeyNavigation(false);
    view->setCornerButtonEnabled(false);
}

// The header paints its sections by its own, empty selection: asking the rows' selection would cost
// a walk over all rows per column.
void SetUpHeader(QHeaderView* header, QAbstractItemModel* model) {
    header->setSelectionModel(new QItemSelectionModel(model, header));
    header->setHighlightSections(false);
    header->setSectionsMovable(false);
}

// A selection made by the program: the view neither looks for the cells that change, which costs a
// walk over all rows, nor scrolls to them.
class QuietView {
public:
    explicit QuietView(QTableView& view) : m_view(view) { m_view.setUpdatesEnabled(false); }
    ~QuietView() { m_view.setUpdatesEnabled(true); }
    QuietView(const QuietView&) = delete;
    QuietView& operator=(const QuietView&) = delete;

private:
    QTableView& m_view;
};

bool LooksAtRows(QEvent::Type type) {
    switch (type) {
    case QEvent::Paint:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::KeyPress:
    case QEvent::Wheel:
    case QEvent::Timer:
    case QEvent::ContextMenu:
        return true;
    default:
        return false;
    }
}

bool IsDoubleClick(const QEvent& event) {
    return event.type() == QEvent::MouseButtonDblClick &&
           static_cast<const QMouseEvent&>(event).button() == Qt::LeftButton;
}

} // namespace

RowTable::RowTable(QTableView* view) : QAbstractTableModel(view), m_view(view) {}

void RowTable::Attach(RowKeeper& rows) {
    m_keeper = &rows;
    m_view->setModel(this);
    SetUpHeader(m_view->horizontalHeader(), this);
    SetUpRows(m_view);
    SetUpBehaviour(m_view);
    Connect();
    ReportContextMenus(*m_view, [this] { return m_keeper->Object(); });
}

// The filter of the viewport runs before the view sees the viewport's events.
void RowTable::Connect() {
    m_view->installEventFilter(this);
    m_view->viewport()->installEventFilter(this);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) {
                const HeldViews held; // the view goes on with its click or key
                AtEventBoundary([&] { SelectionChanged(selected); });
                CatchUp();
            });
}

int RowTable::Tag() const {
    return TagOf(m_view);
}

void RowTable::SetMultiSelect(bool multiple) {
    m_view->setSelectionMode(multiple ? QAbstractItemView::ExtendedSelection
                                      : QAbstractItemView::SingleSelection);
}

void RowTable::NoteNumberOfRowsChanged() {
    m_fewestRows = std::min(m_fewestRows, m_keeper->Count());
    m_heardInRequest |= m_requests > 0;
    if (!std::exchange(m_isBehind, true)) ShowSoon();
}

void RowTable::ReloadData() {
    m_cellsAreOld = true;
    NoteNumberOfRowsChanged();
}

// An update of the window may come before the event loop does.
void RowTable::ShowSoon() {
    m_view->viewport()->update();
    if (std::exchange(m_isPosted, true)) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isPosted = false;
            CatchUpSelection();
        },
        Qt::QueuedConnection);
}

// The view catches up with the rows. They come and go at the end, whatever the change: the selection
// belongs to row numbers.
void RowTable::CatchUp() {
    if (!m_isBehind || m_requests > 0) return;
    m_isBehind = m_heardInRequest = false;
    const ProgramEdit edit(*m_keeper);
    const int rows = m_keeper->Count();
    const int kept = std::min({std::exchange(m_fewestRows, INT_MAX), rows, m_shownRows});
    if (m_selectionIsAhead) m_selected.Remove(kept, INT_MAX - 1);
    {
        const Request viewIsBusy(*this); // it asks for rows while they change
        ResizeTo(kept);
        ResizeTo(rows);
    }
    if (std::exchange(m_cellsAreOld, false)) ReloadRows(0, m_shownRows - 1);
}

// One selection of many ranges costs the view as much as one of few; many of one range each cost it
// the square.
void RowTable::CatchUpSelection() {
    CatchUp();
    if (m_requests > 0 || !std::exchange(m_selectionIsAhead, false)) return;
    QItemSelection rows;
    for (const auto& [first, last] : m_selected.Ranges())
        rows.append({createIndex(first, 0), createIndex(last, columnCount() - 1)});
    const ProgramChange change;
    const QuietView quiet(*m_view);
    QItemSelectionModel* selection = m_view->selectionModel();
    const QPersistentModelIndex current = selection->currentIndex();
    {
        const QSignalBlocker silent(selection);
        selection->reset();
    }
    SetCurrent(current);
    selection->select(rows, QItemSelectionModel::Select);
    m_selectedIsOld = false;
}

void RowTable::ResizeTo(int rows) {
    m_layoutIsOld |= rows != m_shownRows;
    m_selectedIsOld |= rows != m_shownRows;
    if (rows > 0 && m_shownRows == 0) { // the cheapest way, and there is nothing to keep
        beginResetModel();
        m_shownRows = rows;
        endResetModel();
    } else if (rows > m_shownRows) {
        beginInsertRows({}, m_shownRows, rows - 1);
        m_shownRows = rows;
        endInsertRows();
    } else if (rows < m_shownRows) {
        // Where one row can be selected, the view would select a neighbour of a current one that goes.
        if (m_view->currentIndex().row() >= rows) SetCurrent({});
        beginRemoveRows({}, rows, m_shownRows - 1);
        m_shownRows = rows;
        endRemoveRows();
    }
}

void RowTable::ReloadRows(int first, int last) {
    CatchUp();
    const int lowest = std::max(first, 0);
    const int highest = std::min(last, m_shownRows - 1);
    if (lowest > highest) return;
    Q_EMIT dataChanged(index(lowest, 0), index(highest, columnCount() - 1));
}

void RowTable::ScrollToRow(int row) {
    CatchUp();
    if (std::exchange(m_layoutIsOld, false)) m_view->doItemsLayout();
    QScrollBar* horizontal = m_view->horizontalScrollBar();
    const int before = horizontal->value();
    m_view->scrollTo(index(row, 0));
    horizontal->setValue(before);
}

void RowTable::SelectRows(int first, int last, bool select) {
    RowSet& selected = Selected();
    const int lowest = std::max(first, 0);
    const int highest = std::min(last, m_shownRows - 1);
    if (lowest > highest) return;
    if (select) {
        selected.Add(lowest, highest);
        m_lastSelected = highest;
        if (lowest == highest) SetCurrent(createIndex(lowest, 0));
    } else {
        selected.Remove(lowest, highest);
    }
    SelectionIsAhead();
}

void RowTable::SelectOnly(int row) {
    Selected().Clear();
    SelectionIsAhead();
    SelectRows(row, row, true);
}

void RowTable::KeepSelection() {
    Selected();
    SelectionIsAhead();
}

void RowTable::SelectionIsAhead() {
    m_selectionIsAhead = true;
    ShowSoon();
}

// The arrow keys go on from here.
void RowTable::SetCurrent(const QModelIndex& index) {
    QItemSelectionModel* selection = m_view->selectionModel();
    const QSignalBlocker quiet(selection);
    selection->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
}

// The program's selection counts at once; the user's is read from the view.
RowSet& RowTable::Selected() {
    CatchUp();
    if (m_selectionIsAhead || !std::exchange(m_selectedIsOld, false)) return m_selected;
    m_selected.Clear();
    for (const QItemSelectionRange& range : m_view->selectionModel()->selection())
        m_selected.Add(range.top(), range.bottom());
    return m_selected;
}

int RowTable::SelectedRow() {
    const RowSet& selected = Selected();
    return selected.Contains(m_lastSelected) ? m_lastSelected : selected.Last();
}

// The current row may still be the old one; the end of the new rows away from it came last then.
void RowTable::SelectionChanged(const QItemSelection& selected) {
    if (ProgramChange::InProgress()) return;
    m_selectedIsOld = true;
    if (!selected.isEmpty()) {
        const QItemSelectionRange& range = selected.last();
        const int current = m_view->currentIndex().row();
        m_lastSelected = range.bottom() < current ? range.top() : range.bottom();
        if (range.top() <= current && current <= range.bottom()) m_lastSelected = current;
    }
    m_keeper->selectionDidChange();
}

// Whoever asks gets the rows and the selection of now; but the view, in the middle of its own work, those
// that it knew.
int RowTable::rowCount(const QModelIndex& parent) const {
    if (parent.isValid()) return 0;
    if (!m_heardInRequest) const_cast<RowTable*>(this)->CatchUpSelection();
    return m_shownRows;
}

bool RowTable::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_view && event->type() == QEvent::FontChange) FitRowsToFont(m_view);
    if (LooksAtRows(event->type())) CatchUpSelection();
    if (IsDoubleClick(*event)) DoubleClicked();
    return false;
}

// Of the toolkit's own signal nobody can tell the button, and it is for rows only.
void RowTable::DoubleClicked() {
    const QPointer<RowTable> self = this;
    {
        const HeldViews held;
        AtEventBoundary([this] { m_keeper->doubleClick(); });
    }
    if (self) CatchUp();
}

} // namespace vm
