// The one outlet of message boxes: a QMessageBox on the main thread, the log
// (VMCORE_MESSAGEBOX=log, no application object, or an application that is ending), or a test's
// recorder. A box that is open when the application ends is closed.
#pragma once

#include <functional>

#include <vmcore/core/types.h>

namespace vm {

/// Shows the box and returns the Win32 answer (IDOK and so on). `style` is the Win32 style word:
/// buttons, icon, default button. A worker's call is carried to the main thread and waits.
int ShowMessageBox(HWND owner, const char* text, const char* caption, UINT style);

/// Shows an error with its reason in smaller type below. A handler is given the reason as caption.
void ShowAlert(const char* message, const char* reason);

/// Nobody can be asked: VMCORE_MESSAGEBOX=log, no application object, or an application that is ending.
bool IsUnattended();
/// The visible window that the widget is in. An owner is a caller's word: null when it is no live widget.
QWidget* LiveOwner(HWND owner);

/// The answer that the style word's default button gives.
int DefaultAnswer(UINT style);

/// While it lives, the boxes of this thread are kept and answered as by their default buttons; they
/// are shown at its end. For operations that hold a lock: a box runs a loop, in which anything may
/// happen.
class DelayedMessageBoxes {
public:
    DelayedMessageBoxes();
    ~DelayedMessageBoxes();
    DelayedMessageBoxes(const DelayedMessageBoxes&) = delete;
    DelayedMessageBoxes& operator=(const DelayedMessageBoxes&) = delete;

private:
    bool m_isOutermost;
};

using MessageBoxHandler = std::function<int(const char* text, const char* caption, UINT style)>;
/// Answers all boxes instead (an empty handler restores them); returns the old handler.
MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler);

} // namespace vm
