#include "controls/TCOutlineViewDataSource.h"

#include <algorithm>
#include <utility>

#include <QtCore/QItemSelectionModel>
#include <QtCore/QPointer>
#include <QtGui/QImage>

#include "app/appState.h"
#include "controls/modelOf.h"
#include "controls/outlineView.h"
#include "gdi/imageList.h"
#include "platform/eventboundary.h"
#include "wnd/contextMenus.h"
#include "wnd/controlText.h"
#include "wnd/heldViews.h"
#include "wnd/views.h"

namespace {

constexpr char kFirstTitle[] = "Instruments";
constexpr std::size_t kMostDead = 10'000; // besides as many as are alive

bool IsIn(const CellData& top, const CellData* node) {
    while (node && node != &top) node = node->hParentItem;
    return node != nullptr;
}

} // namespace

TCOutlineViewDataSource::TCOutlineViewDataSource(vm::OutlineView* view)
    : QAbstractItemModel(view), m_view(view) {
    root = NewNode(nullptr);
    root->str = kFirstTitle;
    vm::SetUpOutlineView(*view);
    view->setModel(this);
    vm::SetUpOutlineColumns(*view, false);
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        const vm::HeldViews held; // the view goes on with its click or key
        vm::AtEventBoundary([this] { outlineViewSelectionDidChange(); });
    });
    connect(view, &QTreeView::collapsed, this,
            [this](const QModelIndex& index) { KeysGoOnFrom(index); });
    vm::ReportContextMenus(*view, [this]() -> CWnd* { return Tree(); });
    view->setExpanded(IndexOf(root), true);
}

TCOutlineViewDataSource::~TCOutlineViewDataSource() {
    for (const CellData* node : m_live) delete node;
    for (const CellData* node : m_dead) delete node;
}

TCOutlineViewDataSource* TCOutlineViewDataSource::Of(const QTreeView* view) {
    return vm::ModelOf<TCOutlineViewDataSource>(view);
}

// Another object may have the address of one that was deleted.
CTreeCtrl* TCOutlineViewDataSource::Tree() const {
    return CWndListVerify(wnd) && wnd->view == m_view ? wnd : nullptr;
}

void TCOutlineViewDataSource::AddCheckColumn() {
    beginResetModel();
    m_columns = kCheckColumn + 1;
    endResetModel();
    vm::SetUpOutlineColumns(*m_view, true);
    m_view->setExpanded(IndexOf(root), true);
}

CellData* TCOutlineViewDataSource::NewNode(CellData* parent) {
    auto* node = new CellData(parent);
    m_live.insert(node);
    return node;
}

// Null for the top row.
CellData* TCOutlineViewDataSource::RowAbove(const CellData& node) const {
    if (&node == root) return nullptr;
    return node.hParentItem ? node.hParentItem : root;
}

CellData* TCOutlineViewDataSource::Append(CellData* parent) {
    CellData* node = NewNode(parent);
    (parent ? parent : root)->addChild(*node);
    Changed(Rows::Stay);
    return node;
}

void TCOutlineViewDataSource::Remove(CellData* node) {
    DropSelectionIn(*node);
    RowAbove(*node)->hChildItems->Remove(*node);
    Kill(node);
    Changed(Rows::Move);
    if (m_notices == 0 && m_dead.size() > kMostDead + m_live.size()) Turn();
}

void TCOutlineViewDataSource::RemoveAll() {
    beginResetModel();
    for (const CellData* node : m_live) m_dead.push_back(const_cast<CellData*>(node));
    m_live.clear();
    root = NewNode(nullptr);
    m_rowsMoved = false;
    endResetModel();
    Changed(Rows::Stay);
    m_view->setExpanded(IndexOf(root), true);
    FreeDead();
}

void TCOutlineViewDataSource::Kill(CellData* top) {
    std::size_t next = m_dead.size();
    m_dead.push_back(top);
    for (; next < m_dead.size(); ++next) {
        const CellData* node = m_dead[next];
        m_live.erase(node);
        for (std::size_t i = 0; i < node->numberOfChildren(); ++i)
            m_dead.push_back(node->childAtIndex(i));
    }
}

CellData* TCOutlineViewDataSource::Next(const CellData& node) const {
    const CellData* above = RowAbove(node);
    return above ? above->childAtIndex(above->hChildItems->IndexOf(node) + 1) : nullptr;
}

CellData* TCOutlineViewDataSource::Previous(const CellData& node) const {
    const CellData* above = RowAbove(node);
    const std::size_t index = above ? above->hChildItems->IndexOf(node) : 0;
    return index > 0 ? above->childAtIndex(index - 1) : nullptr;
}

CellData* TCOutlineViewDataSource::Selected() const {
    const QItemSelection selection = m_view->selectionModel()->selection();
    return selection.isEmpty() ? nullptr : NodeOf(selection.first().topLeft());
}

void TCOutlineViewDataSource::Select(CellData* node) {
    for (CellData* above = RowAbove(*node); above; above = RowAbove(*above)) Expand(above, true);
    m_view->setCurrentIndex(IndexOf(node));
}

// Called before the node goes, so that nothing selected ever leaves the rows.
void TCOutlineViewDataSource::DropSelectionIn(const CellData& node) {
    QItemSelectionModel& selection = *m_view->selectionModel();
    const QModelIndex current = selection.currentIndex();
    const bool losesCurrent = current.isValid() && IsIn(node, NodeOf(current));
    if (!losesCurrent && !IsIn(node, Selected())) return;
    const bool before = std::exchange(m_programEdits, true);
    selection.clear();
    m_programEdits = before;
}

bool TCOutlineViewDataSource::IsShown(const CellData& node) {
    Settle();
    for (CellData* above = RowAbove(node); above; above = RowAbove(*above))
        if (!m_view->isExpanded(IndexOf(above))) return false;
    return true;
}

void TCOutlineViewDataSource::Expand(CellData* node, bool expand) {
    if (expand && node != root && node->numberOfChildren() == 0) return;
    Settle();
    const QModelIndex index = IndexOf(node);
    if (m_view->isExpanded(index) == expand) return;
    LayOutAnew();
    m_view->setExpanded(index, expand);
}

bool TCOutlineViewDataSource::IsExpanded(CellData* node) {
    Settle();
    return m_view->isExpanded(IndexOf(node));
}

std::optional<QRect> TCOutlineViewDataSource::PlaceOf(CellData* node) {
    if (!IsShown(*node)) return {};
    QRect place = m_view->visualRect(IndexOf(node));
    place.setWidth(std::min(place.width(), m_view->WidthOf(IndexOf(node))));
    return place;
}

void TCOutlineViewDataSource::ScrollTo(CellData* node) {
    if (IsShown(*node)) m_view->scrollTo(IndexOf(node));
}

// The whole view, once: to look for the place of a row in it takes longer.
void TCOutlineViewDataSource::Redraw() {
    m_view->viewport()->update();
}

void TCOutlineViewDataSource::LayOutAnew() {
    Changed(Rows::Stay);
}

QImage TCOutlineViewDataSource::ImageOf(const QModelIndex& index, bool isSelected) const {
    const CTreeCtrl* tree = Tree();
    if (!tree || index.column() == kCheckColumn) return {};
    const CellData& node = *NodeOf(index);
    return vm::PixelsOf(tree->imageList, isSelected ? node.nSelImage : node.nImage);
}

void TCOutlineViewDataSource::outlineViewSelectionDidChange() {
    const CTreeCtrl* tree = Tree();
    const bool isProgram = m_programEdits || vm::ProgramChange::InProgress();
    if (tree && tree->notifyEnabled && !isProgram) Notify(TVN_SELCHANGED, Selected());
}

// Nothing is freed while a handler runs, which may also throw, or free the data source.
class TCOutlineViewDataSource::Notice {
public:
    explicit Notice(TCOutlineViewDataSource& items) : m_items(&items) { ++items.m_notices; }
    ~Notice() {
        if (!m_items) return;
        --m_items->m_notices;
        if (!m_items->m_dead.empty()) m_items->QueueTurn();
    }
    Notice(const Notice&) = delete;
    Notice& operator=(const Notice&) = delete;

private:
    QPointer<TCOutlineViewDataSource> m_items;
};

// The arrow keys would begin at the top when the row they were at is hidden.
void TCOutlineViewDataSource::KeysGoOnFrom(const QModelIndex& collapsed) {
    QItemSelectionModel& selection = *m_view->selectionModel();
    const QModelIndex current = selection.currentIndex();
    if (current.isValid() && NodeOf(current) != NodeOf(collapsed) && IsAlive(NodeOf(current)) &&
        IsIn(*NodeOf(collapsed), NodeOf(current)))
        selection.setCurrentIndex(collapsed, QItemSelectionModel::NoUpdate);
}

void TCOutlineViewDataSource::Notify(UINT code, CellData* node) {
    CTreeCtrl* tree = Tree();
    if (!tree || !tree->GetParent()) return;
    NMTREEVIEW record{};
    record.hdr.hwndFrom = tree->view;
    record.hdr.idFrom = static_cast<UINT>(vm::TagOf(m_view));
    record.hdr.code = code;
    record.itemNew.hItem = node == root ? nullptr : node;
    const vm::ResourceHandleScope resources(tree->resourceBundle);
    const Notice notice(*this);
    tree->WindowProc(WM_NOTIFY, record.hdr.idFrom, reinterpret_cast<LPARAM>(&record));
}
