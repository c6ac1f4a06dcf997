// Moving values between a dialog's variables and its controls.
//
// A dialog lists its variables once, in DoDataExchange; WM_INITDIALOG moves them into the controls
// and the end of DoModal out of them, UpdateData either way at any time. A function does nothing
// when the exchange, its dialog, the item or the item's view is missing. Range checks only warn.
#pragma once

#include <vmcore/core/CString.h>
#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

class CWnd;

class VM_API CDataExchange {
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate);

    /// The view of an item, or null.
    HWND PrepareCtrl(int nIDC) const;
    HWND PrepareEditCtrl(int nIDC) const;

    BOOL m_bSaveAndValidate; ///< TRUE: out of the controls; FALSE: into them
    CWnd* m_pDlgWnd;
};

/// Binds `rControl` to the item, only on the way into the controls: its view is the item's from then
/// on, or null without an item, and its notifications reach it before the dialog.
VM_API void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);

// The control's number: check state or position.
VM_API void DDX_Check(CDataExchange* pDX, int nIDC, int& value);
VM_API void DDX_Check(CDataExchange* pDX, int nIDC, BOOL& value);
VM_API void DDX_Slider(CDataExchange* pDX, int nIDC, int& value);

/// Which radio button of a group is on, counted from 0 at the item, which is the first of them: the others
/// are those that exclude it (beside it in an interface file; from a WS_GROUP to the next for CButton), in
/// the order of their IDs. -1 for none; any other number without a button also puts them all off. Nothing
/// is done when the item is no radio button.
VM_API void DDX_Radio(CDataExchange* pDX, int nIDC, int& value);

// The control's text. Numbers are read as far as they go, from at most 255 characters.
VM_API void DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value);
VM_API void DDX_Text(CDataExchange* pDX, int nIDC, SHORT& value);
VM_API void DDX_Text(CDataExchange* pDX, int nIDC, int& value);
VM_API void DDX_Text(CDataExchange* pDX, int nIDC, UINT& value); ///< read back as a signed number
VM_API void DDX_Text(CDataExchange* pDX, int nIDC, long& value);
VM_API void DDX_Text(CDataExchange* pDX, int nIDC, float& value);
VM_API void DDX_Text(CDataExchange* pDX, int nIDC, double& value);
VM_API void DDX_Text(CDataExchange* pDX, int nIDC, CString& value);

// The selection of a list or combo box, counted from 0; -1 for none.
VM_API void DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index);
VM_API void DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index);
/// As CListBox::SelectString, from the top; out of the list comes the selected entry, "" when there
/// is none.
VM_API void DDX_LBString(CDataExchange* pDX, int nIDC, CString& value);

VM_API void DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars); ///< no check
/// A value out of range is only reported: "Warning! DDV_MinMaxInt value out of range!! ..." in the
/// log.
VM_API void DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal);
