// The common controls.
#pragma once

#include <vmcore/controls/CListCtrl.h>
#include <vmcore/controls/CProgressCtrl.h>
#include <vmcore/controls/CSliderCtrl.h>
#include <vmcore/controls/CSpinButtonCtrl.h>
#include <vmcore/controls/CTabCtrl.h>
#include <vmcore/controls/CToolTipCtrl.h>
#include <vmcore/controls/CTreeCtrl.h>
#include <vmcore/gdi/CImageList.h>
