// The common controls.
#pragma once

#include <vmcore/controls/CListCtrl.h>
#include <vmcore/controls/CTreeCtrl.h>
#include <vmcore/gdi/CImageList.h>
