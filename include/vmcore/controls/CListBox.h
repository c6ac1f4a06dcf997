// The list box: one column of strings, each with an item data value.
//
//     CListBox banks;
//     banks.Create(WS_CHILD | WS_VISIBLE, rect, this, 40);
//     for (const Bank& bank : m_banks)
//         banks.SetItemData(banks.AddString(bank.name), reinterpret_cast<DWORD_PTR>(&bank));
//
//     int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {    // of the parent
//         if (message == WM_COMMAND && wParam == MAKELONG(40, LBN_DBLCLK)) { Load(); return 1; }
//         ...
//
// In an interface file every QListWidget and QListView is one: DDX_Control binds an object to it. A
// text beyond ASCII is Mac Roman. What the user does, never what the program does, goes to the parent
// as WM_COMMAND with LBN_SELCHANGE or LBN_DBLCLK and the table view in lParam. A right click and the Menu
// key select the row and ask the list box, and so its parent, with WM_CONTEXTMENU.
//
// A handler of these may change the rows and the selection, which reports nothing more, and may destroy
// the list box.
//
// Without a view and a table view everything returns LB_ERR (-1) where nothing else is said, and does
// nothing. Main thread only. 100,000 strings are added to a list box on the screen in some 50 ms.
#pragma once

#include <vmcore/core/arrays.h>
#include <vmcore/core/export.h>
#include <vmcore/core/types.h>
#include <vmcore/wnd/CWnd.h>

class LBTableViewDelegate;
class QTableView;

// Styles of a list box.
constexpr DWORD LBS_HASSTRINGS = 0x00200000;  ///< without it every string is kept as an empty one
constexpr DWORD LBS_MULTIPLESEL = 0x00400000; ///< SelectString refuses to work
/// The same: several rows are selected with Shift and Ctrl in either.
constexpr DWORD LBS_EXTENDEDSEL = LBS_MULTIPLESEL;
constexpr DWORD LBS_NOTIFY = 0;           ///< always so
constexpr DWORD LBS_NOINTEGRALHEIGHT = 0; ///< always so
constexpr DWORD LBS_SORT = 0; ///< ignored: a list box is never sorted, add the strings in order

class VM_API CListBox : public CWnd {
    DECLARE_DYNAMIC(CListBox)

    CListBox(); ///< with LBS_HASSTRINGS
    using CWnd::Create;
    /// Makes the table as a child of the parent. The user may select several rows when the style has
    /// LBS_MULTIPLESEL; LBS_HASSTRINGS stays as the object has it. FALSE when the parent has no view.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override; ///< takes WM_SIZE

    int AddString(const char* text); ///< the new index
    /// In front of `index`, which comes back. -1 is not the end: like every index beyond the end it is
    /// logged as "exception at CListBox::InsertString() - NoSuchRow" and gives LB_ERR.
    int InsertString(int index, const char* text);
    /// `index`; LB_ERR when there is no such row, which is logged in the same way unless the index is
    /// greater than the count.
    int DeleteString(int index);
    void ResetContent();
    int GetCount() const;

    /// The length; there is no limit to what is written. Without such a row LB_ERR and an empty text.
    int GetText(int index, char* buffer) const;
    int GetText(int index, CString& text) const;
    int GetTextLen(int index) const;
    DWORD_PTR GetItemData(int index) const;     ///< 0 when there is no such row, or no view
    int SetItemData(int index, DWORD_PTR data); ///< 1; 0 when there is no such row, or no view
    /// The first row behind `start`, then on from the top but never `start` itself, with just this
    /// text in whatever case; LB_ERR for none.
    int FindStringExact(int start, const char* text) const;
    /// The first row behind `start` (from the top when there is no such row), then on from the top up to
    /// `start` itself, that begins with this text in whatever case; LB_ERR for none.
    int FindString(int start, const char* text) const;

    int GetCurSel() const;       ///< the row selected last, -1 for none
    int SetCurSel(int index);    ///< this row alone, or none for -1; `index`
    int GetSel(int index) const; ///< 1 or 0
    /// Adds the row to the selection or takes it away, -1 all rows. `index`; LB_ERR from the count on.
    int SetSel(int index, BOOL select = TRUE);
    int GetSelCount() const;
    int GetSelItems(int most, int* rows) const; ///< how many were written, in ascending order
    /// From the top to `last`: `first` is ignored, as hosts rely on. 0.
    int SelItemRange(BOOL select, int first, int last);
    /// Adds the first row behind `start` with just this text, case included, to the selection, and
    /// returns LB_ERR whether there is one or not: hosts rely on both.
    int SelectString(int start, const char* text);

    int GetTopIndex() const;                   ///< the selected row
    int SetTopIndex(int index);                ///< brings the row into view; `index`
    int SetItemHeight(int index, UINT height); ///< 1; ignored
    /// 0; the row in the client area of the list box, above or below it when it is scrolled out of sight.
    int GetItemRect(int index, RECT* rect) const;
    int Dir(UINT attributes, const char* pattern); ///< not supported: LB_ERR
    void SetTabStops();                            ///< not supported: a message box says so
    BOOL SetTabStops(const int& each);             ///< the same; FALSE
    /// Keeps the first, third, fifth ... of `count` * 2 - 1 numbers in `tabStops`, which nothing
    /// uses. FALSE without a view or for null.
    BOOL SetTabStops(int count, const int* stops);

    void SetMultiSelect(BOOL multiple); ///< whether the user may select several rows
    void SetRedraw(BOOL redraw = TRUE); ///< also reloads when redrawing is switched on
    void SetUserEdit(BOOL userEdit); ///< FALSE: nothing is reported until the program's next change
    /// Shows what has changed, unless redrawing is off. The selection stays.
    void ReloadData();

    // State. The order is part of the binary interface of hosts and their plug-ins.
    CDWordArray tabStops;
    WORD m_reserved4;
    QTableView* tableView; ///< null until Create or DDX_Control

private:
    LBTableViewDelegate* Rows() const;
    void Refresh(LBTableViewDelegate& rows);
    const char* Stored(const char* text) const;
};
