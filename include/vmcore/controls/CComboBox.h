// A field with a list that drops down.
//
//     CComboBox ports;
//     ports.Create(WS_VISIBLE | CBS_DROPDOWNLIST | CBS_SORT, CRect(10, 10, 150, 200), this, 1002);
//     ports.SetItemData(ports.AddString("Port A"), 7);
//     ports.SelectString(-1, "port");
//
// An object made by Create, bound with DDX_Control or attached to a handle works the same. Without
// a combo box every member does nothing and returns CB_ERR, unless something else is stated. Texts
// are Mac Roman beyond ASCII. The user's choice goes to the parent as CBN_SELCHANGE, and what is
// typed into an editable one as EN_SETFOCUS, EN_UPDATE, EN_CHANGE and EN_KILLFOCUS, like a text
// field's; what a member changes is not reported. Typing never adds an entry. An object also
// answers the CB_ messages when they are sent to it, after its MessageMap. Main thread only.
#pragma once

#include <vmcore/wnd/CWnd.h>

/// as CBS_DROPDOWN: a list that is always open is a list box's work
constexpr DWORD CBS_SIMPLE = 0x00100000;
constexpr DWORD CBS_DROPDOWN = 0x00200000; ///< any text can be typed
constexpr DWORD CBS_DROPDOWNLIST =
    0x00300000;                               ///< one of the entries; also without any of the three
constexpr DWORD CBS_AUTOHSCROLL = 0x00400000; ///< always so
/// AddString keeps the entries in order, whatever their case
constexpr DWORD CBS_SORT = 0x00800000;
constexpr DWORD CBS_HASSTRINGS = 0x01000000;       ///< always so
constexpr DWORD CBS_NOINTEGRALHEIGHT = 0x02000000; ///< always so

class VM_API CComboBox : public CWnd {
    DECLARE_DYNAMIC(CComboBox)

    using CWnd::Create;
    /// The rectangle may include the open list: the field gets its usual height. FALSE when the
    /// parent has no view.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // Entries, counted from 0.
    int AddString(const char* text);               ///< the new entry's index
    int InsertString(int index, const char* text); ///< -1: at the end, also of a sorted list
    int DeleteString(int index); ///< how many are left; with the selected one the selection goes
    void ResetContent();         ///< also empties the field
    int GetCount() const;
    int GetLBTextLen(int index) const;
    int GetLBText(int index, char* text) const; ///< the length; there is no bound: see GetLBTextLen
    void GetLBText(int index, CString& text) const; ///< unchanged when there is no such entry
    /// The first entry after `after` (-1, or the last one: from the top) that begins with `text`,
    /// whatever the case.
    int FindString(int after, const char* text) const;
    int FindStringExact(int after, const char* text) const; ///< that is `text`, whatever the case
    int Dir(UINT attributes, const char* pattern);          ///< lists no files: always -1

    DWORD_PTR GetItemData(int index) const;     ///< 0 until it is set; CB_ERR
    int SetItemData(int index, DWORD_PTR data); ///< 0 or CB_ERR
    void* GetItemDataPtr(int index) const;      ///< as a pointer; CB_ERR is -1
    int SetItemDataPtr(int index, void* data);

    // The selection.
    int GetCurSel() const; ///< CB_ERR for none, also when another text was typed
    /// CB_ERR, and nothing selected, for an index without an entry.
    int SetCurSel(int index);
    int SelectString(int after, const char* text); ///< what FindString finds; the same result

    // The field of an editable one.
    BOOL
    LimitText(int characters); ///< TRUE; for what is typed, 0 for no limit. FALSE without a field
    DWORD GetEditSel() const;  ///< MAKELONG(first, end)
    BOOL SetEditSel(int first, int end); ///< as CEdit::SetSel; FALSE without a field
    void Cut();
    void Copy() const;
    void Paste();
    void Clear();

    // The list.
    void ShowDropDown(BOOL show = TRUE);
    BOOL GetDroppedState() const;
    int SetDroppedWidth(UINT width); ///< the least width of the open list, which comes back
    int GetDroppedWidth() const;
    int GetTopIndex() const;    ///< the first entry in sight while the list is open, else 0
    int SetTopIndex(int index); ///< 0; scrolls the open list
    int SetItemHeight(int index, UINT height); ///< -1: the field's, else that of all entries; 0
    int GetItemHeight(int index) const;

    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};
