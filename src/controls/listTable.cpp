#include "controls/listTable.h"

#include <algorithm>

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableView>

#include "controls/modelOf.h"
#include "core/macroman.h"
#include "platform/eventboundary.h"
#include "wnd/controlWiring.h"

namespace vm {
namespace {

constexpr int kMinimumColumnWidth = 4;
constexpr int kMaximumColumnWidth = 400;

void SetUpColumns(QHeaderView* header) {
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setStretchLastSection(false);
    header->setSectionsClickable(true);
    header->setSectionResizeMode(QHeaderView::Interactive);
    header->setMinimumSectionSize(kMinimumColumnWidth);
    header->setMaximumSectionSize(kMaximumColumnWidth);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
}

} // namespace

ListTable::ListTable(QTableView* view) : RowTable(view), m_rows(*this) {
    Attach(m_rows);
    view->setProperty(kReportsItselfProperty, true);
    view->setColumnHidden(0, true);
    SetMultiSelect(true);
    SetUpColumns(view->horizontalHeader());
    connect(view->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, &ListTable::SortBy);
}

ListTable* ListTable::Of(const QTableView* view) {
    return ModelOf<ListTable>(view);
}

void ListTable::SortBy(int section, Qt::SortOrder order) {
    AtEventBoundary([&] { SortRows(section, order); });
}

void ListTable::SortAgain() {
    const QHeaderView* header = View()->horizontalHeader();
    SortRows(header->sortIndicatorSection(), header->sortIndicatorOrder());
}

void ListTable::SortRows(int section, Qt::SortOrder order) {
    const auto index = static_cast<std::size_t>(section);
    if (section < 0 || index >= m_columns.size()) return;
    const HeldViews held;
    m_rows.sortDescriptorsDidChange(m_columns[index].number, order == Qt::AscendingOrder);
}

int ListTable::SectionOf(int number) const {
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        if (m_columns[i].number == number) return static_cast<int>(i);
    return -1;
}

// Before the first column the table has a hidden one, so that its rows can be selected.
int ListTable::AppendColumn(int number, const QString& heading, int width) {
    const int section = static_cast<int>(m_columns.size());
    KeepSelection();
    if (section > 0) beginInsertColumns({}, section, section);
    m_columns.push_back({number, heading});
    if (section > 0) endInsertColumns();
    View()->setColumnHidden(0, false);
    View()->setColumnWidth(section, std::clamp(width, kMinimumColumnWidth, kMaximumColumnWidth));
    Q_EMIT headerDataChanged(Qt::Horizontal, section, section);
    return section;
}

// The last column is only hidden: its arrow would be that of the next one.
void ListTable::ForgetSort() {
    QHeaderView* header = View()->horizontalHeader();
    const QSignalBlocker quiet(header);
    header->setSortIndicator(-1, Qt::AscendingOrder);
}

void ListTable::RemoveColumn(int number) {
    const int section = SectionOf(number);
    if (section < 0) return;
    const bool isLast = m_columns.size() == 1;
    KeepSelection();
    if (isLast) {
        View()->setColumnHidden(0, true);
        ForgetSort();
    } else {
        beginRemoveColumns({}, section, section);
    }
    m_columns.erase(m_columns.begin() + section);
    if (!isLast) endRemoveColumns();
}

int ListTable::ColumnWidth(int number) const {
    const int section = SectionOf(number);
    return section < 0 ? -1 : View()->columnWidth(section);
}

bool ListTable::SetColumnWidth(int number, int width) {
    const int section = SectionOf(number);
    if (section < 0) return false;
    View()->setColumnWidth(section, std::clamp(width, kMinimumColumnWidth, kMaximumColumnWidth));
    return true;
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
    const Request request(*this);
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
