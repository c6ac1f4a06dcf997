// CFontDialog and CColorDialog: the desktop's dialogs for fonts and colours.
//
//     LOGFONT font = current;
//     CFontDialog dialog(&font);
//     if (dialog.DoModal() == IDOK) m_font.CreateFontIndirect(&font);
#pragma once

#include <vmcore/dialogs/CDialog.h>
#include <vmcore/dialogs/commdlg.h>

class CDC;

class VM_API CFontDialog : public CDialog {
    DECLARE_DYNAMIC(CFontDialog)

    /// `initial` is suggested and, after IDOK, the font that was chosen; may be null. The device
    /// context is not used.
    explicit CFontDialog(LOGFONT* initial = nullptr, DWORD flags = CF_EFFECTS | CF_SCREENFONTS,
                         CDC* printer = nullptr, CWnd* parentWnd = nullptr);

    int DoModal() override; ///< IDOK or IDCANCEL. See ChooseFont

    // Of the font that was chosen, before DoModal that is suggested.
    void GetCurrentFont(LOGFONT* out) const;
    CString GetFaceName() const;                    ///< with the style, as CFont takes it
    CString GetStyleName() const;                   ///< as the dialog names it; empty before IDOK
    int GetSize() const { return m_cf.iPointSize; } ///< in tenths of a point
    COLORREF GetColor() const { return m_cf.rgbColors; }
    int GetWeight() const { return m_lf.lfWeight; }
    BOOL IsBold() const { return m_lf.lfWeight > 400; }
    BOOL IsItalic() const { return m_lf.lfItalic != 0; }
    BOOL IsUnderline() const { return m_lf.lfUnderline != 0; }
    BOOL IsStrikeOut() const { return m_lf.lfStrikeOut != 0; }

    // State. The order is part of the binary interface.
    CHOOSEFONT m_cf; ///< to be changed before DoModal
    LOGFONT m_lf;

private:
    LOGFONT* m_initial;
    char m_style[64];
};

class VM_API CColorDialog : public CDialog {
    DECLARE_DYNAMIC(CColorDialog)

    explicit CColorDialog(COLORREF initial = 0, DWORD flags = 0, CWnd* parentWnd = nullptr);

    int DoModal() override; ///< IDOK or IDCANCEL. See ChooseColor

    COLORREF GetColor() const { return m_cc.rgbResult; }
    void SetCurrentColor(COLORREF color); ///< also while the dialog is open
    /// The 16 colours that the user may keep, as long as the process lives; white at first.
    static COLORREF* GetSavedCustomColors();

    // State. The order is part of the binary interface.
    CHOOSECOLOR m_cc; ///< to be changed before DoModal
};
