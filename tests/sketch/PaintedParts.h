// Where in the picture of a window its controls and their letters really are: found by painting it twice
// and looking at what differs.
#pragma once

#include <QtCore/QList>
#include <QtCore/QRect>

class QWidget;

/// What is painted by the widgets together, in pixels of the window; empty when they paint nothing.
QRect PaintedBy(QWidget& window, const QList<QWidget*>& widgets);

/// The letters of the control that the window shows, in pixels of the window.
QRect LettersOf(QWidget& window, QWidget& control);
