// A dialog's interface file as a window or as a view, with its controls wired to a controller.
#pragma once

#include <functional>
#include <memory>
#include <string>

class CWnd;
class CWndViewController;
class CWndWindowController;
class QWidget;

namespace vm {

class NativeWindow;

/// What `fill` below found for the window's content.
enum class FillResult { Filled, WrongRoot, Nothing };

/// The controller of a dialog's window whose content `fill` makes, with its controls wired: sized to
/// the content, titled as that is, hidden, centred over `over`, which it stays in front of. Null when
/// there is nothing to show; a controller without a window for a wrong root.
std::unique_ptr<CWndWindowController>
MakeDialogWindow(QWidget* over,
                 const std::function<FillResult(NativeWindow&, CWndWindowController&)>& fill);

/// Makes the window as large as its content is or needs, and its limits those of the content.
void SizeToContent(NativeWindow& window);

/// As MakeDialogWindow for what <name>.ui describes. Null, with a log line, when the file cannot be loaded; a
/// controller without a window when its root cannot be a dialog's.
std::unique_ptr<CWndWindowController> LoadDialogWindow(const std::string& name, QWidget* over);

/// The controller of the view that <name>.ui describes, a hidden child of `parent` at its origin.
/// Null, with a log line, as above.
std::unique_ptr<CWndViewController> LoadDialogView(const std::string& name, QWidget* parent);

} // namespace vm
