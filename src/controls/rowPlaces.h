// Where the rows of a list or list box are in its view, frame and header included. All of them are of the
// rows that there are now.
#pragma once

#include <QtCore/QRect>

namespace vm {

class RowTable;

int RowAt(RowTable& table, QPoint point); ///< -1 beside the cells that are in sight
/// The whole row, as wide as the columns together, also above or below what is in sight; a null
/// rectangle when there is no such row.
QRect RowRect(RowTable& table, int row);
int TopRow(RowTable& table);      ///< the first in sight; 0 for none
int RowsPerPage(RowTable& table); ///< for how many there is room

} // namespace vm
