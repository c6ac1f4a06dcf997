// Interface files: <name>.ui below the Resources folder of the current bundle, in the form that Qt
// Designer writes. Loading them, finding their views by tag, and the files that hold a menu. What a
// dialog makes of a loaded view belongs to the dialogs. Main thread only.
#pragma once

#include <functional>
#include <string>

#include <QtCore/QString>

#include <vmcore/core/types.h>

namespace vm {

/// The bundle that interface files come from: the one that was set, else the program's own.
Bundle* InterfaceBundle();
std::string InterfaceFilePath(const std::string& name);
bool InterfaceFileExists(const std::string& name);

/// What a file's widgets are made of, where it is not the class that the file names. Either may be
/// empty, and return null to have the usual widget.
struct InterfaceClasses {
    std::function<QWidget*(QWidget* parent)> makeRoot;
    std::function<QWidget*(const QString& className, QWidget* parent)> makeWidget;
};

/// Loads <name>.ui and returns its root, a child of `parent` (null: a window of its own) that the
/// caller owns. Null, with the line "interface file <path>: <why>" logged, when the file is missing
/// or malformed.
QWidget* LoadInterfaceFile(const std::string& name, QWidget* parent = nullptr,
                           const InterfaceClasses& classes = {});

/// Loads <name>.ui for an owner that is not known here, and keeps what it made: once per owner and
/// file. False as above.
bool LoadInterfaceFile(void* owner, const std::string& name);

/// The view with this tag below a root that LoadInterfaceFile returned: the first in the order of
/// the file, or null. One hash lookup.
QWidget* InterfaceView(const QWidget* root, int tag);

/// Loads a file whose root is a QMenu, or a QMenuBar, which becomes a menu that holds its menus.
/// The caller owns the menu. Null with a log line as above, also for any other root.
QMenu* LoadMenuFile(const std::string& name);

} // namespace vm
