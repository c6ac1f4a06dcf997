#include "controls/RowView.h"

#include <algorithm>

#include <QtWidgets/QScrollBar>

namespace vm {

QModelIndex RowView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const int column = std::max(0, currentIndex().column());
    switch (action) {
    case MoveHome:
        return model()->index(0, column);
    case MoveEnd:
        return model()->index(model()->rowCount() - 1, column);
    case MoveLeft:
        horizontalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepSub);
        return currentIndex();
    case MoveRight:
        horizontalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        return currentIndex();
    default:
        return QTableView::moveCursor(action, modifiers);
    }
}

} // namespace vm
