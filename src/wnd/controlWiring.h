// Which action a native control sends when its user works it: by the control's class, or as its
// `action` property says. Only what the user does is sent, never what the program sets.
#pragma once

#include <QtCore/QString>

class QObject;
class QWidget;

namespace vm {

class ControlActions;

/// The property that names another action than the class has: "onButton" and so on.
inline constexpr char kActionProperty[] = "action";
/// A control with this property, set to true, tells its window object itself what its user does.
inline constexpr char kReportsItselfProperty[] = "reportsItself";

bool IsControlAction(const QString& name);

/// From now on the control sends its actions to `actions`, for as long as `receiver` lives, which
/// is the same object or its owner. Nothing for a view that its user cannot work.
void WireControl(QWidget& control, QObject* receiver, ControlActions* actions);

/// The same for a control made by the program: to the window object of the view that it is in.
void WireToParent(QWidget& control);

} // namespace vm
