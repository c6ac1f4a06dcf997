// The list with columns.
//
// The control keeps, per row, a text of its own, an image index and the item data; it never keeps
// the texts of the columns. Whenever a cell is shown or rows are compared for sorting, it asks its
// own window object, which the host derives:
//
//     class PatchList : public CListCtrl {
//         int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
//             if (message != WM_GETDISPLAYTEXT)
//                 return CListCtrl::MessageMap(message, wParam, lParam);
//             auto* cell = reinterpret_cast<LV_DISPTEXT*>(lParam);
//             const Patch& patch = m_patches[cell->itemData];
//             snprintf(cell->text, sizeof cell->text, "%s", patch.column[cell->column].c_str());
//             return 1;
//         }
//     };
//
// A text beyond ASCII is Mac Roman. A click on a column's header sorts by that column's texts, case
// blind; only the item data moves, the rows' own texts and images stay. Typing selects the row whose text
// begins so. Selection changes and double clicks of the user, never those of the program, go to the
// parent as WM_NOTIFY. A right click and the Menu key select the row and ask the list, and so its parent,
// with WM_CONTEXTMENU; a dialog as the parent swallows it, so that the class of the list has to take it. Shift extends the selection from the row that the user clicked or moved to last,
// not from one that the program selected.
//
// Handlers of these may change rows and selection, which reports nothing more, and may destroy the list.
// Rows that come or go in WM_GETDISPLAYTEXT are shown after the paint that asks; when it asks for a sort,
// the rows keep their order. A text without an end is cut at 256 characters.
//
// The view is told of changes when it is next looked at: 100,000 calls of InsertItem or DeleteItem at
// either end, of SetItemText or SetItemState cost some 50 ms on the screen, with redrawing on or off. In
// the middle a row costs the moving of those on one side. Ten million rows take 28 bytes
// each, and as much as their texts; selecting and counting them all is immediate.
//
// Without a view and a table view every operation does nothing and returns the value given. Main
// thread only.
#pragma once

#include <vmcore/core/CString.h>
#include <vmcore/core/export.h>
#include <vmcore/core/geometry.h>
#include <vmcore/core/position.h>
#include <vmcore/core/types.h>
#include <vmcore/wnd/CWnd.h>

class LCTableViewDelegate;
class QTableView;

/// What WM_GETDISPLAYTEXT points to; the handler fills `text`.
struct LV_DISPTEXT {
    int column;              ///< the number given to InsertColumn
    std::uintptr_t itemData; ///< of the row
    char text[256];
};

// Styles of a list.
constexpr DWORD LVS_SINGLESEL = 0x00400000; ///< the user selects one row at most
constexpr DWORD LVS_REPORT = 0;             ///< always so
constexpr DWORD LVS_SHOWSELALWAYS = 0;      ///< always so

// A column's format: texts are always at the left.
constexpr int LVCFMT_LEFT = 0;
constexpr int LVCFMT_RIGHT = 0;  ///< ignored
constexpr int LVCFMT_CENTER = 0; ///< ignored

// A column record's mask, which is ignored: give both the text and the width.
constexpr UINT LVCF_TEXT = 0;
constexpr UINT LVCF_WIDTH = 0;
constexpr UINT LVCF_FMT = 0;     ///< the format is not used
constexpr UINT LVCF_SUBITEM = 0; ///< nor is the number of the subitem

enum : UINT { LVNI_ALL = 0, LVNI_SELECTED = 0x2 }; ///< of GetNextItem

/// Of GetItemRect. Lists show no icons: LVIR_ICON is an empty rectangle at the row's left.
enum : UINT { LVIR_BOUNDS = 0, LVIR_ICON = 1, LVIR_LABEL = 2, LVIR_SELECTBOUNDS = 3 };

/// Of HitTest: beside the cells, or on one of them, whatever its column.
enum : UINT { LVHT_NOWHERE = 0x1, LVHT_ONITEMLABEL = 0x4, LVHT_ONITEM = 0xE };

enum : UINT {
    LVIF_PARAM = 0x1, ///< the record's lParam counts
    LVIF_IMAGE = 0x2,
    LVIF_TEXT = 0x4,
    LVIS_SELECTED = 0x8,
};

struct tagLVITEM {
    UINT mask; ///< LVIF_ bits
    int iItem;
    int iSubItem;
    UINT state;
    UINT stateMask;
    char* pszText;
    int cchTextMax;
    int iImage;
    LPARAM lParam; ///< the item data
};
using LVITEM = tagLVITEM;
using LV_ITEM = tagLVITEM;

struct tagLVCOLUMN {
    UINT mask;
    int fmt;
    int cx;
    char* pszText;
    int cchTextMax;
    int iSubItem;
};
using LVCOLUMN = tagLVCOLUMN;
using LV_COLUMN = tagLVCOLUMN;

struct tagLVHITTESTINFO {
    tagPOINT pt; ///< in the client area of the list
    UINT flags;  ///< filled: LVHT_NOWHERE or LVHT_ONITEMLABEL
    int iItem;   ///< filled: the row, or -1
    int iSubItem;
};
using LVHITTESTINFO = tagLVHITTESTINFO;
using LV_HITTESTINFO = tagLVHITTESTINFO;

/// Notification codes.
enum : UINT {
    LVN_ITEMCHANGED = 128, ///< the selection changed
    NM_DBLCLK = 129,
};

/// The record of a list's WM_NOTIFY. The three states are always 0: what is selected now is
/// GetItemState(iItem, LVIS_SELECTED).
struct tagNMLISTVIEW {
    NMHDR hdr;
    int iItem; ///< the selected row, -1 when there is none
    int iSubItem;
    UINT uNewState;
    UINT uOldState;
    UINT uChanged;
    tagPOINT ptAction;
    LPARAM lParam; ///< the row's item data, 0 when there is none
};
using NMLISTVIEW = tagNMLISTVIEW;
using NM_LISTVIEW = tagNMLISTVIEW;
using LPNMLISTVIEW = tagNMLISTVIEW*;

/// 1 once any list was double-clicked; the host sets it back.
VM_API extern BYTE calledDoubleClick;

class VM_API CListCtrl : public CWnd {
    DECLARE_DYNAMIC(CListCtrl)

    CListCtrl();
    using CWnd::Create;
    /// Makes the table as a child of the parent. LVS_SINGLESEL counts here. FALSE when the parent has
    /// no view.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    /// Always appends, whatever `column` is; `column` is the number that WM_GETDISPLAYTEXT gives
    /// back. Widths are kept between 4 and 400. Returns the index, -1 without a table.
    int InsertColumn(int column, const char* heading, int format = 0, int width = -1,
                     int subItem = -1);
    int InsertColumn(int column, const LVCOLUMN* record);
    BOOL DeleteColumn(int column);        ///< TRUE, also when there is no such column
    int GetColumnWidth(int column) const; ///< -1 when there is no such column
    /// Kept between 4 and 400. FALSE when there is no such column.
    BOOL SetColumnWidth(int column, int width);
    /// Sorts as the user's last click on a header did, for a program that has filled the list anew. Nothing
    /// without a click.
    void SortAgain();

    /// The new row's index. Appends from the end on. Inserting in front of a row without LVIF_TEXT
    /// adds no text of the row's own, so that GetItemCount does not grow: hosts rely on both.
    int InsertItem(const LVITEM* item);
    int InsertItem(int row, const char* text);
    int InsertItem(int row, const char* text, int image);
    int InsertItem(UINT mask, int row, const char* text, UINT state, UINT stateMask, int image,
                   LPARAM lParam);
    /// The row number in 8 bits: FALSE for rows 0, 256, 512 ..., which are deleted all the same.
    BOOL DeleteItem(int row);
    BOOL DeleteAllItems();
    int GetItemCount() const; ///< of the rows' own texts

    BOOL GetItem(LVITEM* item) const; ///< pszText is filled without a bound
    std::uintptr_t GetItemData(int row) const;
    BOOL SetItemData(int row, std::uintptr_t data); ///< FALSE when there is no such row
    /// What WM_GETDISPLAYTEXT answers for the row and the column `subItem`, which need not have been
    /// inserted; empty when there is no such row. The row's own text is GetItem's.
    CString GetItemText(int row, int subItem) const;
    /// The length of what fits into `size` bytes, of which the last is the end.
    int GetItemText(int row, int subItem, char* text, int size) const;
    /// Sets the row's own text, whatever `subItem` is.
    BOOL SetItemText(int row, int subItem, const char* text);
    /// Selects (adding to the selection) or deselects a row, or all with -1. Only LVIS_SELECTED
    /// counts; no notification is sent. The program may select several also with
    /// LVS_SINGLESEL.
    BOOL SetItemState(int row, UINT state, UINT mask);
    BOOL SetItemState(int row, const LVITEM* item); ///< not supported: a message box says so
    UINT GetItemState(int row, UINT mask) const;
    UINT GetSelectedCount() const;
    /// The iteration is shared by all lists: finish one before starting another.
    POSITION GetFirstSelectedItemPosition() const;
    int GetNextSelectedItem(POSITION& position) const; ///< -1 past the end

    /// The first row behind `row` (from the top: -1), with LVNI_SELECTED the first that is selected;
    /// -1 for none.
    int GetNextItem(int row, UINT flags) const;

    // Where rows are, in the client area of the list, of which its header is the upper end.
    int GetTopIndex() const; ///< the first row in sight, also one of which a part is; 0 for none
    int GetCountPerPage() const; ///< how many rows there is room for, as a whole; 0
    /// A row scrolled out of sight is above or below. FALSE without such a row, and for other codes.
    BOOL GetItemRect(int row, RECT* rect, UINT code) const;
    /// The row at a point of the client area; -1 beside the cells, and on the header.
    int HitTest(CPoint point, UINT* flags = nullptr) const;
    int HitTest(LVHITTESTINFO* info) const; ///< iSubItem stays

    BOOL RedrawItems(int first, int last);
    BOOL EnsureVisible(int row, BOOL partialOK);
    void SetRedraw(BOOL redraw = TRUE); ///< also reloads when redrawing is switched on
    void Invalidate(BOOL erase = TRUE); ///< also reloads
    CWnd* SetFocus();                   ///< null, too, without a table view
    /// Shows what has changed, unless redrawing is off. The selection stays.
    void ReloadData();

    // State. The order is part of the binary interface of hosts and their plug-ins.
    QTableView* tableView; ///< null until Create or DDX_Control
    BYTE needsReload;      ///< rows came or went while redrawing was off

private:
    LCTableViewDelegate* Rows() const;
    void Refresh();
};
