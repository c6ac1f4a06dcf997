// The tree.
//
// The control keeps its items itself: an HTREEITEM is the item's node. All of them hang below one top
// row that always shows, titled "Instruments" in a new tree and untitled after DeleteAllItems.
//
//     class BankTree : public CTreeCtrl {
//         int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
//             if (message != WM_NOTIFY) return CTreeCtrl::MessageMap(message, wParam, lParam);
//             auto* notice = reinterpret_cast<NMTREEVIEW*>(lParam);
//             if (notice->hdr.code == TVN_SELCHANGED) ShowBank(notice->itemNew.hItem);
//             return 1;
//         }
//     };
//     ...
//     tree.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 300), this, 40);
//     HTREEITEM bank = tree.InsertItem("Bank A");
//     tree.InsertItem("Piano", bank);
//     tree.Expand(bank, TVE_EXPAND);
//
// What the user does goes as WM_NOTIFY to the tree's own WindowProc while the tree has a parent: to a
// MessageMap of its own class. Nothing hands it on to the parent. What the program does is never sent.
// A handler may delete items, destroy the window and delete the tree.
//
// A text beyond ASCII is Mac Roman. Items that come and go are shown together, on the next turn of the
// event loop or when something of the view is asked for; expansion, selection and scroll position
// stay with the items that are left.
//
// A handle of a deleted item (a deletion takes all items below it along), of another tree, or no handle
// at all acts as null, with the log line "CTreeCtrl: an item that is not in this tree". A later item may
// get the same address, so forget handles of what you delete. Null gives the neutral value of each
// operation. Without a view every operation but SelectItem gives that value. Main thread only.
#pragma once

#include <vmcore/core/CString.h>
#include <vmcore/core/export.h>
#include <vmcore/core/geometry.h>
#include <vmcore/core/types.h>
#include <vmcore/gdi/CImageList.h>
#include <vmcore/wnd/CWnd.h>

class CellData;
class QTreeView;
class TCOutlineViewDataSource;

using HTREEITEM = CellData*;

inline constexpr HTREEITEM TVI_ROOT = nullptr; ///< as a parent: directly below the top row
/// As insert-after. New items go to the end whatever is given.
inline constexpr HTREEITEM TVI_FIRST = nullptr;
inline constexpr HTREEITEM TVI_LAST = nullptr;

/// A style: a second column, 80 wide, with a check box for every row.
inline constexpr DWORD TVS_CHECKBOXES = 0x00400000;

constexpr DWORD TVS_HASBUTTONS = 0;    ///< always so
constexpr DWORD TVS_LINESATROOT = 0;   ///< always so
constexpr DWORD TVS_HASLINES = 0;      ///< always so, in themes that draw lines
constexpr DWORD TVS_SHOWSELALWAYS = 0; ///< always so

enum : UINT { TVIS_SELECTED = 0x2, TVIS_EXPANDED = 0x20 }; ///< of GetItemState

enum : UINT {
    TVIF_PARAM = 0x1, ///< the record's lParam counts
    TVIF_IMAGE = 0x2,
    TVIF_TEXT = 0x4,
    TVIF_SELECTEDIMAGE = 0x10,
    TVIF_STATE = 0x20,
};

enum : UINT { TVE_EXPAND = 1, TVE_COLLAPSE = 2 }; ///< of Expand
enum : UINT { TVGN_NEXT = 0 };                    ///< of GetNextItem
enum : UINT { TVGN_CARET = 2 };                   ///< of Select
enum : int { TVSIL_NORMAL = 1, TVSIL_STATE = 2 }; ///< of SetImageList

/// Notification codes.
enum : UINT {
    TVN_SELCHANGED = 1, ///< itemNew.hItem: the item selected, null for the top row and for none
    TVN_CHECKCHANGED =
        2, ///< itemNew.hItem: the item whose check box was clicked, null for the top row
};

struct tagTVITEM {
    UINT mask; ///< TVIF_ bits
    HTREEITEM hItem;
    UINT state;
    UINT stateMask;
    char* pszText;
    int cchTextMax;
    int iImage;
    int iSelectedImage;
    int cChildren;
    LPARAM lParam; ///< the item data
};
using TVITEM = tagTVITEM;
using TV_ITEM = tagTVITEM;

struct tagTVINSERTSTRUCT {
    HTREEITEM hParent; ///< null: directly below the top row
    HTREEITEM hInsertAfter;
    TVITEM item;
};
using TVINSERTSTRUCT = tagTVINSERTSTRUCT;
using TV_INSERTSTRUCT = tagTVINSERTSTRUCT;

/// The record of a tree's WM_NOTIFY. What is not named at the code is zero.
struct tagNMTREEVIEW {
    NMHDR hdr;
    UINT action;
    TVITEM itemOld;
    TVITEM itemNew;
    tagPOINT ptDrag;
};
using NMTREEVIEW = tagNMTREEVIEW;
using NM_TREEVIEW = tagNMTREEVIEW;
using LPNMTREEVIEW = tagNMTREEVIEW*;

struct tagTVHITTESTINFO {
    tagPOINT pt;
    UINT flags;
    HTREEITEM hItem;
};
using TVHITTESTINFO = tagTVHITTESTINFO;
using TV_HITTESTINFO = tagTVHITTESTINFO;

class VM_API CTreeCtrl : public CWnd {
    DECLARE_DYNAMIC(CTreeCtrl)

    CTreeCtrl();
    using CWnd::Create;
    /// Makes the tree as a child of the parent. FALSE when the parent has no view.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /// The new item, at the end of its parent's; null without a tree. An item inserted below a null
    /// parent has no parent item. A dead parent counts as null.
    HTREEITEM InsertItem(const TVINSERTSTRUCT* record);
    HTREEITEM InsertItem(const char* text, HTREEITEM hParent = TVI_ROOT,
                         HTREEITEM hInsertAfter = TVI_LAST);
    HTREEITEM InsertItem(const char* text, int image, int selectedImage,
                         HTREEITEM hParent = TVI_ROOT, HTREEITEM hInsertAfter = TVI_LAST);
    /// Every value given is used, whatever `mask` says.
    HTREEITEM InsertItem(UINT mask, const char* text, int image, int selectedImage, UINT state,
                         UINT stateMask, LPARAM lParam, HTREEITEM hParent, HTREEITEM hInsertAfter);
    /// With everything below it. A selection in there is gone, without a notification. FALSE for null
    /// and for the top row, which stays.
    BOOL DeleteItem(HTREEITEM hItem);
    BOOL DeleteAllItems(); ///< also of the top row's title

    HTREEITEM GetParentItem(HTREEITEM hItem) const;          ///< null below the top row
    HTREEITEM GetChildItem(HTREEITEM hItem) const;           ///< the first; of the top row for null
    HTREEITEM GetNextItem(HTREEITEM hItem, UINT code) const; ///< TVGN_NEXT: the next sibling
    BOOL ItemHasChildren(HTREEITEM hItem) const;
    HTREEITEM GetRootItem() const; ///< the first item below the top row
    HTREEITEM GetNextSiblingItem(HTREEITEM hItem) const;
    HTREEITEM GetPrevSiblingItem(HTREEITEM hItem) const;
    UINT GetCount() const; ///< all items, shown or not, without the top row

    CString GetItemText(HTREEITEM hItem) const;
    BOOL SetItemText(HTREEITEM hItem, const char* text);
    std::uintptr_t GetItemData(HTREEITEM hItem) const;
    BOOL SetItemData(HTREEITEM hItem, std::uintptr_t data); ///< FALSE for null
    /// TVIS_SELECTED and TVIS_EXPANDED as the user sees them, the other bits as they were inserted.
    UINT GetItemState(HTREEITEM hItem, UINT mask) const;
    /// FALSE, and nothing stored, without the style TVS_CHECKBOXES. Clicks of the user store 1 or 0 and
    /// are sent as TVN_CHECKCHANGED.
    BOOL SetCheck(HTREEITEM hItem, int check = 1);
    int GetCheck(HTREEITEM hItem) const; ///< the low 8 bits of what was set, with a sign

    /// Also the top row's node; null for none. An item stays selected when one around it collapses.
    HTREEITEM GetSelectedItem() const;
    BOOL SelectItem(HTREEITEM hItem); ///< does nothing; TRUE. See Select.
    /// TVGN_CARET selects the item, expanding what it is in, and sends nothing. Then a message box
    /// says that the command was not handled, for every code: hosts rely on both. Always 0.
    BOOL Select(HTREEITEM hItem, UINT code);
    /// TRUE for the two codes, also when the item has nothing to show; else FALSE.
    BOOL Expand(HTREEITEM hItem, UINT code);
    /// TRUE. Nothing happens while an item that it is in is collapsed.
    BOOL EnsureVisible(HTREEITEM hItem);
    /// The item's row in the client area of the tree, as wide as that is, or with `textOnly` only its
    /// image and text. A row scrolled out of sight is above or below. FALSE while an item that it is in
    /// is collapsed.
    BOOL GetItemRect(HTREEITEM hItem, RECT* rect, BOOL textOnly) const;

    /// TVSIL_NORMAL: every row shows the image of its item in front of the text. The list stays the
    /// caller's; once it is destroyed no images are shown. Other codes than TVSIL_NORMAL show
    /// nothing. Always null.
    CImageList* SetImageList(CImageList* list, int code);
    HTREEITEM HitTest(CPoint point, UINT* flags = nullptr) const; ///< null: a message box says so
    HTREEITEM HitTest(TVHITTESTINFO* info) const;                 ///< the same

    // State. The order is part of the binary interface of hosts and their plug-ins.
    QTreeView* tableView;      ///< null until Create or DDX_Control
    HIMAGELIST stateImageList; ///< of SetImageList, TVSIL_STATE
    HIMAGELIST imageList;      ///< TVSIL_NORMAL
    BYTE notifyEnabled;        ///< changes of the selection are sent only while it is set

private:
    TCOutlineViewDataSource* Items() const;
};
