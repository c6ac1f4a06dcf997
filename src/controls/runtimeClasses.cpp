// The class records of the controls.
#include <vmcore/controls/CButton.h>
#include <vmcore/controls/CComboBox.h>
#include <vmcore/controls/CEdit.h>
#include <vmcore/controls/CListBox.h>
#include <vmcore/controls/CListCtrl.h>
#include <vmcore/controls/CProgressCtrl.h>
#include <vmcore/controls/CScrollBar.h>
#include <vmcore/controls/CSliderCtrl.h>
#include <vmcore/controls/CSpinButtonCtrl.h>
#include <vmcore/controls/CStatic.h>
#include <vmcore/controls/CTabCtrl.h>
#include <vmcore/controls/CToolTipCtrl.h>
#include <vmcore/controls/CTreeCtrl.h>

IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CComboBox, CWnd)
IMPLEMENT_DYNAMIC(CEdit, CWnd)
IMPLEMENT_DYNAMIC(CListBox, CWnd)
IMPLEMENT_DYNAMIC(CListCtrl, CWnd)
IMPLEMENT_DYNAMIC(CProgressCtrl, CWnd)
IMPLEMENT_DYNAMIC(CScrollBar, CWnd)
IMPLEMENT_DYNAMIC(CSliderCtrl, CWnd)
IMPLEMENT_DYNAMIC(CSpinButtonCtrl, CWnd)
IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CTabCtrl, CWnd)
IMPLEMENT_DYNAMIC(CToolTipCtrl, CWnd)
IMPLEMENT_DYNAMIC(CTreeCtrl, CWnd)
