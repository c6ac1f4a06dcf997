// Interface files: <name>.ui below the Resources folder of the current bundle, in the form that Qt
// Designer writes. Loading them, finding their views by tag, and the files that hold a menu. What a
// dialog makes of a loaded view belongs to the dialogs. Main thread only.
//
// A file comes with the program or a plug-in, but a damaged or hostile one must do no more harm than
// not being loaded: only regular files of at most 4 MB are read, and only when they are well-formed
// and within the limits of interfaceLimits.h. Whatever the toolkit says about a file goes to the log.
#pragma once

#include <functional>
#include <string>

#include <QtCore/QString>

#include <vmcore/core/types.h>

namespace vm {

std::string InterfaceFilePath(const std::string& name);
bool InterfaceFileExists(const std::string& name);

/// What a file's widgets are made of, where it is not the class that the file names. Each may be
/// empty, and return null to have the usual widget.
struct InterfaceClasses {
    std::function<void(const QByteArray& file)> reads; ///< called first, with the content
    std::function<QWidget*(const QString& className, QWidget* parent)> makeRoot;
    std::function<QWidget*(const QString& className, QWidget* parent)> makeWidget;
    /// Called with every widget of the file, root included, before it has its properties.
    std::function<void(QWidget* widget)> made;
};

/// Loads <name>.ui and returns its root, a child of `parent` (null: a window of its own) that the
/// caller owns. Null, with the line "interface file <path>: <why>" logged, when the file is missing
/// or malformed.
QWidget* LoadInterfaceFile(const std::string& name, QWidget* parent = nullptr,
                           const InterfaceClasses& classes = {});

/// Loads <name>.ui for an owner that is not known here, and keeps what it made: once per owner and
/// file. False as above.
bool LoadInterfaceFile(void* owner, const std::string& name);

/// Writes "interface file <path>: <why>" to the log.
void LogAboutInterfaceFile(const std::string& name, const std::string& why);

/// Loads a file whose root is a QMenu, or a QMenuBar, which becomes a menu that holds its menus.
/// The caller owns the menu. Null with a log line as above, also for any other root.
QMenu* LoadMenuFile(const std::string& name);

} // namespace vm
