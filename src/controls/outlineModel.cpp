// The side of a tree's data source that its view sees: rows, cells, and the announcing of changes.
#include <utility>

#include "controls/TCOutlineViewDataSource.h"
#include "controls/outlineView.h"
#include "core/macroman.h"
#include "platform/eventboundary.h"
#include "wnd/heldViews.h"

QModelIndex TCOutlineViewDataSource::IndexOf(CellData* node, int column) const {
    const CellData* above = RowAbove(*node);
    const auto row = above ? above->hChildItems->IndexOf(*node) : 0;
    return createIndex(static_cast<int>(row), column, node);
}

QModelIndex TCOutlineViewDataSource::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || column < 0 || column >= m_columns) return {};
    if (!parent.isValid()) return row == 0 ? createIndex(0, column, root) : QModelIndex();
    CellData* node = NodeOf(parent)->childAtIndex(static_cast<std::size_t>(row));
    return node ? createIndex(row, column, node) : QModelIndex();
}

// Of the node itself where only the column differs: its row may be an old one.
QModelIndex TCOutlineViewDataSource::sibling(int row, int column, const QModelIndex& index) const {
    const bool isSameRow = index.isValid() && row == index.row();
    if (!isSameRow || column < 0 || column >= m_columns)
        return QAbstractItemModel::sibling(row, column, index);
    return createIndex(row, column, index.internalPointer());
}

// Also of a deleted node that the view still names: it has a parent, but no place there.
QModelIndex TCOutlineViewDataSource::parent(const QModelIndex& index) const {
    const CellData* node = index.isValid() ? NodeOf(index) : nullptr;
    CellData* above = node && IsAlive(node) ? RowAbove(*node) : nullptr;
    return above ? IndexOf(above) : QModelIndex();
}

int TCOutlineViewDataSource::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid()) return 1;
    return parent.column() == 0 ? static_cast<int>(NodeOf(parent)->numberOfChildren()) : 0;
}

int TCOutlineViewDataSource::columnCount(const QModelIndex&) const {
    return m_columns;
}

bool TCOutlineViewDataSource::hasChildren(const QModelIndex& parent) const {
    return !parent.isValid() || NodeOf(parent) == root || rowCount(parent) > 0;
}

QVariant TCOutlineViewDataSource::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const CellData& node = *NodeOf(index);
    const bool isCheck = index.column() == kCheckColumn;
    if (isCheck && role == Qt::CheckStateRole) return node.nCheck ? Qt::Checked : Qt::Unchecked;
    if (!isCheck && role == Qt::DisplayRole) return vm::FromMacRoman(node.str);
    return {};
}

// The user's click on a check box.
bool TCOutlineViewDataSource::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || index.column() != kCheckColumn) return false;
    CellData* node = NodeOf(index);
    if (!IsAlive(node)) return false;
    node->nCheck = value.toInt() == Qt::Checked;
    Redraw();
    const vm::HeldViews held; // the view goes on with its click or key
    vm::AtEventBoundary([&] { Notify(TVN_CHECKCHANGED, node); });
    return true;
}

// Typing looks for texts, wherever in its row the last click was.
QModelIndexList TCOutlineViewDataSource::match(const QModelIndex& start, int role,
                                               const QVariant& value, int hits,
                                               Qt::MatchFlags how) const {
    return QAbstractItemModel::match(start.siblingAtColumn(0), role, value, hits, how);
}

Qt::ItemFlags TCOutlineViewDataSource::flags(const QModelIndex& index) const {
    if (!index.isValid()) return {};
    const Qt::ItemFlags row = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return index.column() == kCheckColumn ? row | Qt::ItemIsUserCheckable : row;
}

void TCOutlineViewDataSource::Changed(Rows rows) {
    m_isOld = true;
    m_rowsMoved |= rows == Rows::Move;
    m_view->LayOutLater();
    QueueTurn();
}

void TCOutlineViewDataSource::BeforeLayout() {
    if (std::exchange(m_isOld, false)) Announce();
}

void TCOutlineViewDataSource::Announce() {
    const bool before = std::exchange(m_programEdits, true);
    Q_EMIT layoutAboutToBeChanged();
    m_view->LayOutLater();
    if (std::exchange(m_rowsMoved, false)) MovePersistentIndexes();
    Q_EMIT layoutChanged();
    m_programEdits = before;
}

// Indexes that the view keeps (what is expanded, selected, under the mouse) get their row numbers of
// now. It has to be done before it makes new ones.
void TCOutlineViewDataSource::Settle() {
    if (m_rowsMoved) Announce();
}

// An expanded node that is gone would stay in the view's list of them: it is collapsed first.
void TCOutlineViewDataSource::MovePersistentIndexes() {
    QModelIndexList from;
    QModelIndexList to;
    for (const QModelIndex& index : persistentIndexList()) {
        CellData* node = NodeOf(index);
        const bool isAlive = IsAlive(node);
        if (!isAlive) m_view->collapse(index);
        const QModelIndex now = isAlive ? IndexOf(node, index.column()) : QModelIndex();
        if (now == index) continue;
        from.push_back(index);
        to.push_back(now);
    }
    changePersistentIndexList(from, to);
}

void TCOutlineViewDataSource::QueueTurn() {
    if (std::exchange(m_turnIsQueued, true)) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_turnIsQueued = false;
            Turn();
        },
        Qt::QueuedConnection);
}

// A hidden view is laid out only to forget deleted nodes.
void TCOutlineViewDataSource::Turn() {
    if (m_isOld && (m_view->isVisible() || !m_dead.empty())) m_view->doItemsLayout();
    FreeDead();
}

// Not while a handler runs: the toolkit goes on with what it was doing afterwards.
void TCOutlineViewDataSource::FreeDead() {
    if (m_notices > 0) return;
    for (const CellData* node : m_dead) delete node;
    m_dead.clear();
}
