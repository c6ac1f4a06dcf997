#include "controls/listTable.h"

#include <algorithm>

#include <QtCore/QItemSelectionModel>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyledItemDelegate>
#include <QtWidgets/QTableView>

#include "core/macroman.h"
#include "platform/eventboundary.h"
#include "wnd/controlWiring.h"
#include "wnd/views.h"

namespace vm {
namespace {

constexpr int kMinimumColumnWidth = 4;
constexpr int kMaximumColumnWidth = 400;
constexpr int kRowPadding = 5; // above and below the text together

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

// The header paints its sections by its own, empty selection: asking the rows' selection would cost
// a walk over all rows per column.
void SetUpHeader(QHeaderView* header, QAbstractItemModel* model) {
    header->setSelectionModel(new QItemSelectionModel(model, header));
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setStretchLastSection(false);
    header->setSectionsMovable(false);
    header->setSectionsClickable(true);
    header->setSectionResizeMode(QHeaderView::Interactive);
    header->setMinimumSectionSize(kMinimumColumnWidth);
    header->setMaximumSectionSize(kMaximumColumnWidth);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
}

void SetUpRows(QTableView* view) {
    QHeaderView* rows = view->verticalHeader();
    rows->hide();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setMinimumSectionSize(1);
    rows->setDefaultSectionSize(view->fontMetrics().height() + kRowPadding);
    view->setItemDelegate(new RowPainter(view));
    view->setShowGrid(false);
    view->setWordWrap(false);
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
}

void SetUpBehaviour(QTableView* view) {
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setTabKeyNavigation(false);
    view->setCornerButtonEnabled(false);
}

// Rows as ascending (first, last) that do not touch, whatever columns the selection has.
std::vector<std::pair<int, int>> MergedRanges(const QItemSelection& selection) {
    std::vector<std::pair<int, int>> ranges;
    for (const QItemSelectionRange& range : selection)
        ranges.emplace_back(range.top(), range.bottom());
    std::sort(ranges.begin(), ranges.end());
    std::vector<std::pair<int, int>> merged;
    for (const auto& range : ranges) {
        if (!merged.empty() && range.first <= merged.back().second + 1)
            merged.back().second = std::max(merged.back().second, range.second);
        else
            merged.push_back(range);
    }
    return merged;
}

} // namespace

ListTable::ListTable(QTableView* view) : QAbstractTableModel(view), m_view(view), m_rows(*this) {
    view->setModel(this);
    view->setProperty(kReportsItselfProperty, true);
    view->setColumnHidden(0, true);
    SetUpHeader(view->horizontalHeader(), this);
    SetUpRows(view);
    SetUpBehaviour(view);
    Connect();
}

ListTable* ListTable::Of(const QTableView* view) {
    return view ? dynamic_cast<ListTable*>(view->model()) : nullptr;
}

void ListTable::Connect() {
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) {
                AtEventBoundary([&] { SelectionChanged(selected); });
            });
    connect(m_view, &QAbstractItemView::doubleClicked, this,
            [this] { AtEventBoundary([this] { m_rows.doubleClick(); }); });
    connect(m_view->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this,
            [this](int section, Qt::SortOrder order) {
                const auto index = static_cast<std::size_t>(section);
                if (section < 0 || index >= m_columns.size()) return;
                AtEventBoundary([&] {
                    m_rows.sortDescriptorsDidChange(m_columns[index].number,
                                                    order == Qt::AscendingOrder);
                });
            });
}

int ListTable::Tag() const {
    return TagOf(m_view);
}

int ListTable::SectionOf(int number) const {
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        if (m_columns[i].number == number) return static_cast<int>(i);
    return -1;
}

// Before the first column the table has a hidden one, so that its rows can be selected.
int ListTable::AppendColumn(int number, const QString& heading, int width) {
    const int section = static_cast<int>(m_columns.size());
    if (section > 0) beginInsertColumns({}, section, section);
    m_columns.push_back({number, heading});
    if (section > 0) endInsertColumns();
    m_view->setColumnHidden(0, false);
    m_view->setColumnWidth(section, std::clamp(width, kMinimumColumnWidth, kMaximumColumnWidth));
    Q_EMIT headerDataChanged(Qt::Horizontal, section, section);
    SelectWholeRowsAgain();
    return section;
}

void ListTable::RemoveColumn(int number) {
    const int section = SectionOf(number);
    if (section < 0) return;
    const bool isLast = m_columns.size() == 1;
    if (isLast)
        m_view->setColumnHidden(0, true);
    else
        beginRemoveColumns({}, section, section);
    m_columns.erase(m_columns.begin() + section);
    m_rangesAreOld = true;
    if (!isLast) endRemoveColumns();
}

int ListTable::ColumnWidth(int number) const {
    const int section = SectionOf(number);
    return section < 0 ? -1 : m_view->columnWidth(section);
}

// Rows come and go at the end, whatever the change: the selection belongs to row numbers.
void ListTable::NoteNumberOfRowsChanged() {
    const int rows = static_cast<int>(m_rows.data.size());
    m_layoutIsOld |= rows != m_shownRows;
    if (rows > m_shownRows) {
        beginInsertRows({}, m_shownRows, rows - 1);
        m_shownRows = rows;
        endInsertRows();
    } else if (rows < m_shownRows) {
        beginRemoveRows({}, rows, m_shownRows - 1);
        m_shownRows = rows;
        endRemoveRows();
    }
    m_rangesAreOld = true;
}

void ListTable::ReloadData() {
    NoteNumberOfRowsChanged();
    ReloadRows(0, m_shownRows - 1);
}

void ListTable::ReloadRows(int first, int last) {
    const int lowest = std::max(first, 0);
    const int highest = std::min(last, m_shownRows - 1);
    if (lowest > highest) return;
    Q_EMIT dataChanged(index(lowest, 0), index(highest, columnCount() - 1));
}

void ListTable::ScrollToRow(int row) {
    NoteNumberOfRowsChanged();
    if (std::exchange(m_layoutIsOld, false)) m_view->doItemsLayout();
    QScrollBar* horizontal = m_view->horizontalScrollBar();
    const int before = horizontal->value();
    m_view->scrollTo(index(row, 0));
    horizontal->setValue(before);
}

void ListTable::SelectRows(int first, int last, bool select) {
    const int lowest = std::max(first, 0);
    const int highest = std::min(last, m_shownRows - 1);
    if (lowest > highest) return;
    m_view->selectionModel()->select({index(lowest, 0), index(highest, columnCount() - 1)},
                                     select ? QItemSelectionModel::Select
                                            : QItemSelectionModel::Deselect);
}

void ListTable::SelectWholeRowsAgain() {
    const ProgramEdit edit(m_rows);
    const auto ranges = SelectedRanges();
    for (const auto& [first, last] : ranges) SelectRows(first, last, true);
}

// Kept until the selection changes: hosts ask for one row after the other.
const std::vector<std::pair<int, int>>& ListTable::SelectedRanges() const {
    if (std::exchange(m_rangesAreOld, false))
        m_selectedRanges = MergedRanges(m_view->selectionModel()->selection());
    return m_selectedRanges;
}

bool ListTable::IsRowSelected(int row) const {
    const auto& ranges = SelectedRanges();
    const auto after = std::upper_bound(
        ranges.begin(), ranges.end(), row,
        [](int wanted, const std::pair<int, int>& range) { return wanted < range.first; });
    return after != ranges.begin() && row <= std::prev(after)->second;
}

int ListTable::SelectedRow() const {
    if (m_lastSelected >= 0 && IsRowSelected(m_lastSelected)) return m_lastSelected;
    const auto& ranges = SelectedRanges();
    return ranges.empty() ? -1 : ranges.back().second;
}

// The current row may still be the old one; the end of the new rows away from it came last then.
void ListTable::SelectionChanged(const QItemSelection& selected) {
    m_rangesAreOld = true;
    if (!selected.isEmpty()) {
        const QItemSelectionRange& range = selected.last();
        const int current = m_view->currentIndex().row();
        m_lastSelected = range.bottom() < current ? range.top() : range.bottom();
        if (range.top() <= current && current <= range.bottom()) m_lastSelected = current;
    }
    m_rows.selectionDidChange();
}

int ListTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_shownRows;
}

int ListTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : std::max(1, static_cast<int>(m_columns.size()));
}

QVariant ListTable::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<std::size_t>(index.row());
    const auto section = static_cast<std::size_t>(index.column());
    if (role != Qt::DisplayRole || row >= m_rows.data.size() || section >= m_columns.size())
        return {};
    std::string text;
    AtEventBoundary(
        [&] { text = m_rows.DisplayText(m_columns[section].number, m_rows.data[row]); });
    return FromMacRoman(text);
}

QVariant ListTable::headerData(int section, Qt::Orientation orientation, int role) const {
    const auto index = static_cast<std::size_t>(section);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || index >= m_columns.size())
        return {};
    return m_columns[index].heading;
}

} // namespace vm
