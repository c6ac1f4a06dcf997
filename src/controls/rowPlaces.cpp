#include "controls/rowPlaces.h"

#include <algorithm>

#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableView>

#include "controls/rowTable.h"

namespace vm {
namespace {

// The view, laid out for the rows of now: it takes them over and does what it has put off when it is
// asked.
const QTableView& LaidOut(RowTable& table) {
    const QTableView& view = *table.View();
    (void)table.rowCount();
    (void)view.indexAt({});
    return view;
}

} // namespace

int RowAt(RowTable& table, QPoint point) {
    const QTableView& view = LaidOut(table);
    const QPoint inViewport = point - view.viewport()->pos();
    return view.viewport()->rect().contains(inViewport) ? view.indexAt(inViewport).row() : -1;
}

QRect RowRect(RowTable& table, int row) {
    const QTableView& view = LaidOut(table);
    if (row < 0 || row >= table.rowCount()) return {};
    const QPoint corner(view.columnViewportPosition(0), view.rowViewportPosition(row));
    return {corner + view.viewport()->pos(),
            QSize(view.horizontalHeader()->length(), view.rowHeight(row))};
}

int TopRow(RowTable& table) {
    return std::max(LaidOut(table).rowAt(0), 0);
}

int RowsPerPage(RowTable& table) {
    const QTableView& view = LaidOut(table);
    return view.viewport()->height() / view.verticalHeader()->defaultSectionSize();
}

} // namespace vm
