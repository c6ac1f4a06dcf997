// Where the rows of a list are.
#include <vmcore/controls/CListCtrl.h>

#include <QtWidgets/QTableView>

#include "controls/LCTableViewDelegate.h"
#include "controls/listTable.h"
#include "controls/rowPlaces.h"
#include "wnd/rects.h"

int CListCtrl::GetTopIndex() const {
    const LCTableViewDelegate* rows = Rows();
    return rows ? vm::TopRow(rows->Table()) : 0;
}

int CListCtrl::GetCountPerPage() const {
    const LCTableViewDelegate* rows = Rows();
    return rows ? vm::RowsPerPage(rows->Table()) : 0;
}

BOOL CListCtrl::GetItemRect(int row, RECT* rect, UINT code) const {
    const LCTableViewDelegate* rows = Rows();
    if (!rows || !rect || code > LVIR_SELECTBOUNDS) return FALSE;
    QRect place = vm::RowRect(rows->Table(), row);
    if (place.height() <= 0) return FALSE;
    if (code == LVIR_ICON) place.setWidth(0);
    if (code == LVIR_LABEL) place.setWidth(tableView->columnWidth(0));
    *rect = vm::RectOf(place);
    return TRUE;
}

int CListCtrl::HitTest(CPoint point, UINT* flags) const {
    LVHITTESTINFO info{point, 0, -1, 0};
    const int row = HitTest(&info);
    if (flags) *flags = info.flags;
    return row;
}

int CListCtrl::HitTest(LVHITTESTINFO* info) const {
    if (!info) return -1;
    const LCTableViewDelegate* rows = Rows();
    info->iItem = rows ? vm::RowAt(rows->Table(), {info->pt.x, info->pt.y}) : -1;
    info->flags = info->iItem < 0 ? LVHT_NOWHERE : LVHT_ONITEMLABEL;
    return info->iItem;
}
