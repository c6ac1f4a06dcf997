// The items of the tree control: what hosts insert, delete, read and write by handle.
#include <vmcore/controls/CTreeCtrl.h>

#include <cstddef>

#include "controls/TCOutlineViewDataSource.h"
#include "controls/treeItems.h"
#include "core/log.h"

static_assert(offsetof(TVITEM, pszText) == 24 && offsetof(TVITEM, lParam) == 48);
static_assert(offsetof(TVINSERTSTRUCT, item) == 16 && offsetof(NMTREEVIEW, itemNew) == 80);

namespace vm {

CellData* ItemOf(const TCOutlineViewDataSource* items, HTREEITEM item) {
    if (!items || !item) return nullptr;
    if (items->IsAlive(item)) return item;
    Log(LogModule::Controls, "CTreeCtrl: an item that is not in this tree");
    return nullptr;
}

void ServeTree(TCOutlineViewDataSource& items, CTreeCtrl& tree) {
    items.wnd = &tree;
    if (items.HasCheckColumn())
        tree.style |= TVS_CHECKBOXES;
    else if (tree.style & TVS_CHECKBOXES)
        items.AddCheckColumn();
}

} // namespace vm

namespace {

void TakeValues(CellData& node, const TVITEM& item) {
    if (item.mask & TVIF_STATE) node.nState = item.state;
    if (item.mask & TVIF_TEXT && item.pszText) node.str = item.pszText;
    if (item.mask & TVIF_IMAGE) node.nImage = item.iImage;
    if (item.mask & TVIF_SELECTEDIMAGE) node.nSelImage = item.iSelectedImage;
    if (item.mask & TVIF_PARAM) node.data = item.lParam;
}

constexpr UINT kEveryValue = TVIF_PARAM | TVIF_IMAGE | TVIF_TEXT | TVIF_SELECTEDIMAGE | TVIF_STATE;

} // namespace

HTREEITEM CTreeCtrl::InsertItem(const TVINSERTSTRUCT* record) {
    TCOutlineViewDataSource* items = Items();
    if (!items || !record) return nullptr;
    CellData* node = items->Append(vm::ItemOf(items, record->hParent));
    TakeValues(*node, record->item);
    return node;
}

HTREEITEM CTreeCtrl::InsertItem(const char* itemText, HTREEITEM hParent, HTREEITEM hInsertAfter) {
    TVINSERTSTRUCT record{hParent, hInsertAfter, {}};
    record.item.mask = TVIF_TEXT;
    record.item.pszText = const_cast<char*>(itemText);
    return InsertItem(&record);
}

HTREEITEM CTreeCtrl::InsertItem(const char* itemText, int image, int selectedImage,
                                HTREEITEM hParent, HTREEITEM hInsertAfter) {
    TVINSERTSTRUCT record{hParent, hInsertAfter, {}};
    record.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    record.item.pszText = const_cast<char*>(itemText);
    record.item.iImage = image;
    record.item.iSelectedImage = selectedImage;
    return InsertItem(&record);
}

HTREEITEM CTreeCtrl::InsertItem(UINT, const char* itemText, int image, int selectedImage,
                                UINT state, UINT stateMask, LPARAM lParam, HTREEITEM hParent,
                                HTREEITEM hInsertAfter) {
    const TVINSERTSTRUCT record{hParent,
                                hInsertAfter,
                                {kEveryValue, nullptr, state, stateMask,
                                 const_cast<char*>(itemText), 0, image, selectedImage, 0, lParam}};
    return InsertItem(&record);
}

BOOL CTreeCtrl::DeleteItem(HTREEITEM hItem) {
    TCOutlineViewDataSource* items = Items();
    CellData* node = vm::ItemOf(items, hItem);
    if (!node || node == items->root) return FALSE;
    items->Remove(node);
    return TRUE;
}

BOOL CTreeCtrl::DeleteAllItems() {
    TCOutlineViewDataSource* items = Items();
    if (!items) return FALSE;
    items->RemoveAll();
    return TRUE;
}

HTREEITEM CTreeCtrl::GetParentItem(HTREEITEM hItem) const {
    const CellData* node = vm::ItemOf(Items(), hItem);
    return node ? node->hParentItem : nullptr;
}

HTREEITEM CTreeCtrl::GetChildItem(HTREEITEM hItem) const {
    const TCOutlineViewDataSource* items = Items();
    if (!items) return nullptr;
    const CellData* node = vm::ItemOf(items, hItem);
    return (node ? node : items->root)->childAtIndex(0);
}

HTREEITEM CTreeCtrl::GetNextItem(HTREEITEM hItem, UINT code) const {
    const TCOutlineViewDataSource* items = Items();
    const CellData* node = vm::ItemOf(items, hItem);
    return node && code == TVGN_NEXT ? items->Next(*node) : nullptr;
}

HTREEITEM CTreeCtrl::GetRootItem() const {
    return GetChildItem(TVI_ROOT);
}

HTREEITEM CTreeCtrl::GetNextSiblingItem(HTREEITEM hItem) const {
    return GetNextItem(hItem, TVGN_NEXT);
}

HTREEITEM CTreeCtrl::GetPrevSiblingItem(HTREEITEM hItem) const {
    const TCOutlineViewDataSource* items = Items();
    const CellData* node = vm::ItemOf(items, hItem);
    return node ? items->Previous(*node) : nullptr;
}

UINT CTreeCtrl::GetCount() const {
    const TCOutlineViewDataSource* items = Items();
    return items ? static_cast<UINT>(items->Count()) : 0;
}

BOOL CTreeCtrl::ItemHasChildren(HTREEITEM hItem) const {
    const CellData* node = vm::ItemOf(Items(), hItem);
    return node && node->numberOfChildren() > 0;
}

CString CTreeCtrl::GetItemText(HTREEITEM hItem) const {
    const CellData* node = vm::ItemOf(Items(), hItem);
    return node ? CString(node->str.c_str()) : CString();
}

BOOL CTreeCtrl::SetItemText(HTREEITEM hItem, const char* itemText) {
    TCOutlineViewDataSource* items = Items();
    CellData* node = vm::ItemOf(items, hItem);
    if (!node) return FALSE;
    node->str = itemText ? itemText : "";
    items->Redraw();
    return TRUE;
}

std::uintptr_t CTreeCtrl::GetItemData(HTREEITEM hItem) const {
    const CellData* node = vm::ItemOf(Items(), hItem);
    return node ? node->data : 0;
}

BOOL CTreeCtrl::SetItemData(HTREEITEM hItem, std::uintptr_t data) {
    CellData* node = vm::ItemOf(Items(), hItem);
    if (node) node->data = data;
    return node != nullptr;
}

BOOL CTreeCtrl::SetCheck(HTREEITEM hItem, int check) {
    TCOutlineViewDataSource* items = Items();
    CellData* node = vm::ItemOf(items, hItem);
    if (!node || !(style & TVS_CHECKBOXES)) return FALSE;
    node->nCheck = check;
    items->Redraw();
    return TRUE;
}

int CTreeCtrl::GetCheck(HTREEITEM hItem) const {
    const CellData* node = vm::ItemOf(Items(), hItem);
    return node ? static_cast<signed char>(node->nCheck) : 0;
}
