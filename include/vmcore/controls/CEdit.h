// A text field, of one line or of many.
//
//     CEdit log;
//     log.Create(WS_VISIBLE | ES_MULTILINE | ES_READONLY | WS_VSCROLL, rect, this, 1001);
//     const int end = log.GetWindowTextLength();
//     log.SetSel(end, end);
//     log.ReplaceSel("sent\r\n");
//
// An object made by Create, bound with DDX_Control or attached to the handle of a text field works
// the same; the field inside an editable combo box or a spin box counts too. Without one every
// member does nothing and returns 0, FALSE or what is stated.
//
// Characters are counted in the text that GetWindowText gives: a line's end is CR and LF, two
// characters. Texts that go in may have either; bytes beyond ASCII are Mac Roman. A line is what
// stands between two line ends, however often it is wrapped on the screen.
//
// What the user types goes to the parent as EN_SETFOCUS, EN_UPDATE, EN_CHANGE and EN_KILLFOCUS;
// what a member changes is not reported. An object also answers the EM_ messages when they are
// sent to it, after its MessageMap. Main thread only.
#pragma once

#include <vmcore/wnd/CWnd.h>

/// Bits of Create's style. The field always has its native frame. ES_WANTRETURN, ES_AUTOVSCROLL and
/// ES_NOHIDESEL need not be given: that is how texts of many lines are, also in dialogs.
constexpr DWORD ES_LEFT = 0;
constexpr DWORD ES_CENTER = 0x00100000;
constexpr DWORD ES_RIGHT = 0x00200000;
/// scrolled with the mouse when WS_VSCROLL or WS_HSCROLL is given
constexpr DWORD ES_MULTILINE = 0x00400000;
constexpr DWORD ES_UPPERCASE = 0x00800000; ///< what is typed; the program's text stays as it is
constexpr DWORD ES_LOWERCASE = 0x01000000;
constexpr DWORD ES_PASSWORD = 0x02000000; ///< of one line
constexpr DWORD ES_AUTOVSCROLL = 0x04000000;
constexpr DWORD ES_AUTOHSCROLL = 0x08000000; ///< of many lines: long lines are not wrapped
constexpr DWORD ES_NOHIDESEL = 0x10000000;
constexpr DWORD ES_READONLY = 0x20000000;
constexpr DWORD ES_WANTRETURN = 0x40000000;
constexpr DWORD ES_NUMBER = 0x80000000; ///< only the digits 0 to 9 can be typed

class VM_API CEdit : public CWnd {
    DECLARE_DYNAMIC(CEdit)

    using CWnd::Create;
    /// With WS_TABSTOP the Tab key leaves a field of many lines, too, and Ctrl+Tab writes a tab; without
    /// it Tab does. FALSE when the parent has no view.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // The selection.
    /// MAKELONG(first, end); characters beyond 65535 need the second form.
    DWORD GetSel() const;
    void GetSel(int& first, int& end) const;
    /// `end` -1: to the end of the text. `first` -1: nothing selected. The caret is at `end`.
    void SetSel(int first, int end, BOOL noScroll = FALSE);
    void SetSel(DWORD selection, BOOL noScroll = FALSE);
    /// Writes over the selection, up to the limit. Without `canUndo` nothing before it can be undone.
    void ReplaceSel(const char* text, BOOL canUndo = FALSE);

    // The limit, for what is typed, pasted and given to ReplaceSel. SetWindowText may exceed it.
    void SetLimitText(UINT characters); ///< 0: as much as the field can hold
    void LimitText(int characters = 0) { SetLimitText(static_cast<UINT>(characters)); }
    UINT GetLimitText() const;

    // Lines, counted from 0.
    int GetLineCount() const; ///< at least 1; 0 without a field
    /// Copies at most `size` bytes and returns their number; a terminator follows when there is room.
    int GetLine(int line, char* buffer, int size) const;
    int GetLine(int line, char* buffer) const;  ///< the size is in the buffer's first WORD
    int LineFromChar(int character = -1) const; ///< -1: the line in which the selection begins
    int LineIndex(int line = -1) const; ///< its first character; -1 when there is no such line
    /// Of the line with this character. -1: what is not selected of the lines with the selection.
    int LineLength(int character = -1) const;
    void LineScroll(int lines, int characters = 0);
    int GetFirstVisibleLine() const; ///< of one line: the first character that is seen
    /// Of the text that GetWindowText gives; CWnd's counts a line's end as one.
    int GetWindowTextLength() const;

    // Undo (any number of steps) and the clipboard.
    BOOL CanUndo() const;
    BOOL Undo();
    void EmptyUndoBuffer();
    void Cut();
    void Copy() const; ///< nothing of a password
    void Paste();
    void Clear(); ///< deletes the selection

    // State.
    BOOL SetReadOnly(BOOL readOnly = TRUE);
    BOOL GetModify() const; ///< the user has changed the text since it was set
    void SetModify(BOOL modified = TRUE);
    /// Any character hides the text behind the desktop's own one, 0 shows it. One line only.
    void SetPasswordChar(char character);
    char GetPasswordChar() const;           ///< 0 while the text is shown
    void SetMargins(UINT left, UINT right); ///< in pixels; one line only
    DWORD GetMargins() const;               ///< MAKELONG(left, right)
    /// In quarters of a character's width, 32 by default; of several stops the first counts. FALSE
    /// for a field of one line.
    BOOL SetTabStops(int width);
    void SetTabStops();
    BOOL SetTabStops(int count, const int* stops);

    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};
