// The tree's creation, its selection, and what concerns its view.
#include <vmcore/controls/CTreeCtrl.h>

#include <QtWidgets/QTreeView>

#include "controls/TCOutlineViewDataSource.h"
#include "controls/outlineView.h"
#include "controls/treeItems.h"
#include "platform/messagebox.h"
#include "wnd/messageTrace.h"
#include "wnd/nativeControl.h"
#include "wnd/rects.h"
#include "wnd/views.h"

namespace {

void Report(const char* what) {
    vm::ShowMessageBox(nullptr, what, "VMCore", 1);
}

} // namespace

CTreeCtrl::CTreeCtrl()
    : tableView(nullptr), stateImageList(nullptr), imageList(nullptr), notifyEnabled(1) {}

TCOutlineViewDataSource* CTreeCtrl::Items() const {
    return view && view == tableView && vm::IsLiveView(view)
               ? TCOutlineViewDataSource::Of(tableView)
               : nullptr;
}

BOOL CTreeCtrl::Create(DWORD createStyle, const RECT& rect, CWnd* parent, UINT id) {
    auto* outline = new vm::OutlineView;
    auto* items = new TCOutlineViewDataSource(outline);
    if (!vm::AdoptControl(*this, outline, parent, rect, createStyle, id)) return FALSE;
    vm::ServeTree(*items, *this);
    tableView = outline;
    return TRUE;
}

LRESULT CTreeCtrl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != TVM_ANSWERED) return CWnd::WindowProc(message, wParam, lParam);
    return vm::Traced(*this, message, wParam, lParam, [] { return LRESULT{1}; });
}

HTREEITEM CTreeCtrl::GetSelectedItem() const {
    const TCOutlineViewDataSource* items = Items();
    return items ? items->Selected() : nullptr;
}

BOOL CTreeCtrl::SelectItem(HTREEITEM) {
    return TRUE;
}

BOOL CTreeCtrl::Select(HTREEITEM hItem, UINT code) {
    TCOutlineViewDataSource* items = Items();
    CellData* node = vm::ItemOf(items, hItem);
    if (!node) return FALSE;
    if (code == TVGN_CARET) {
        notifyEnabled = 0;
        items->Select(node);
        notifyEnabled = 1;
    }
    Report("CTreeCtrl::Select() command not handled");
    return FALSE;
}

BOOL CTreeCtrl::Expand(HTREEITEM hItem, UINT code) {
    TCOutlineViewDataSource* items = Items();
    CellData* node = vm::ItemOf(items, hItem);
    if (!node || (code != TVE_EXPAND && code != TVE_COLLAPSE)) return FALSE;
    items->Expand(node, code == TVE_EXPAND);
    return TRUE;
}

BOOL CTreeCtrl::EnsureVisible(HTREEITEM hItem) {
    TCOutlineViewDataSource* items = Items();
    CellData* node = vm::ItemOf(items, hItem);
    if (!node) return FALSE;
    items->ScrollTo(node);
    return TRUE;
}

BOOL CTreeCtrl::GetItemRect(HTREEITEM hItem, RECT* rect, BOOL textOnly) const {
    TCOutlineViewDataSource* items = Items();
    CellData* node = vm::ItemOf(items, hItem);
    const auto place = node && rect ? items->PlaceOf(node) : std::nullopt;
    if (!place) return FALSE;
    const QWidget& viewport = *tableView->viewport();
    const QRect row(0, place->top(), viewport.width(), place->height());
    *rect = vm::RectOf((textOnly ? *place : row).translated(viewport.pos()));
    return TRUE;
}

UINT CTreeCtrl::GetItemState(HTREEITEM hItem, UINT mask) const {
    TCOutlineViewDataSource* items = Items();
    CellData* node = vm::ItemOf(items, hItem);
    if (!node) return 0;
    UINT state = node->nState & ~(TVIS_SELECTED | TVIS_EXPANDED);
    if (items->Selected() == node) state |= TVIS_SELECTED;
    if (items->IsExpanded(node)) state |= TVIS_EXPANDED;
    return state & mask;
}

CImageList* CTreeCtrl::SetImageList(CImageList* list, int code) {
    HIMAGELIST handle = list ? list->GetSafeHandle() : nullptr;
    if (code == TVSIL_STATE) stateImageList = handle;
    if (code != TVSIL_NORMAL) return nullptr;
    imageList = handle;
    if (TCOutlineViewDataSource* items = Items()) items->LayOutAnew();
    return nullptr;
}

HTREEITEM CTreeCtrl::HitTest(CPoint, UINT*) const {
    Report("CTreeCtrl::HitTest(pt) - not currently used or implemented");
    return nullptr;
}

HTREEITEM CTreeCtrl::HitTest(TVHITTESTINFO*) const {
    Report("CTreeCtrl::HitTest(TVHITTESTINFO) - not currently used or implemented");
    return nullptr;
}
