// A dialog's interface file as a window or as a view, with its controls wired to a controller.
#pragma once

#include <memory>
#include <string>

class CWnd;
class CWndViewController;
class CWndWindowController;
class QWidget;

namespace vm {

/// The controller of the window that <name>.ui describes: sized and titled by the file, hidden,
/// centred over `over`, which it stays in front of. Null, with a log line, when the file cannot be
/// loaded; a controller without a window when its root cannot be a dialog's.
std::unique_ptr<CWndWindowController> LoadDialogWindow(const std::string& name, QWidget* over);

/// The controller of the view that <name>.ui describes, a hidden child of `parent` at its origin.
/// Null, with a log line, as above.
std::unique_ptr<CWndViewController> LoadDialogView(const std::string& name, QWidget* parent);

} // namespace vm
