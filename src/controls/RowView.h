// The native view of lists and list boxes: a table in which keys move between rows, never between the
// columns of one.
#pragma once

#include <QtWidgets/QTableView>

namespace vm {

class RowView final : public QTableView {
public:
    using QTableView::QTableView;

protected:
    /// Home and End are the first and the last row; Left and Right scroll.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
};

} // namespace vm
