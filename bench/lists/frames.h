// Frames of the toolkit: waiting for the first one, and painting one now.
#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QObject>
#include <QtWidgets/QAbstractItemView>

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

} // namespace lists
