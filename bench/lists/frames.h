// Frames of the toolkit: waiting for the first one, painting one now, and one after the other.
#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QObject>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QScrollBar>

#include "common.h"

namespace lists {

/// Counts the paints of a view.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget* painted) { painted->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++m_count;
        return false;
    }
    void WaitForOne() const {
        while (m_count == 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

private:
    int m_count = 0;
};

inline void PaintNow(QAbstractItemView& view) {
    QCoreApplication::processEvents(); // pending layouts belong to the frame
    view.viewport()->repaint();
}

inline void ScrollPages(QAbstractItemView& view) {
    QScrollBar& bar = *view.verticalScrollBar();
    for (int i = 1; i <= kPages; ++i) {
        bar.setValue(i * bar.pageStep());
        PaintNow(view);
    }
}

} // namespace lists
