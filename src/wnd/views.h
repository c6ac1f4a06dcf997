// Questions about native views that the registry and the geometry need, and their end.
#pragma once

#include <vmcore/core/types.h>

class CWnd;

namespace vm {

/// The property that carries a view's tag, here and in interface files.
inline constexpr char kTagProperty[] = "tag";

int TagOf(const QWidget* view);
void SetTagOf(QWidget* view, int tag);
/// The first descendant with this tag, parents before children; null when there is none.
QWidget* FindViewWithTag(const QWidget* root, int tag);
/// The object of a view: the one that a view of ours was made for, else the first that is bound. A
/// message to a bare handle puts the scratch window in front of the bindings.
CWnd* ObjectOf(QWidget* view);
/// The object of the nearest view around this one that has an object; null for none.
CWnd* ObjectAround(const QWidget& view);
/// The native window that holds the view; null for a view outside of one.
NSWindow* WindowOf(const QWidget* view);
/// The view is the content view of its window.
bool IsContentView(const QWidget* view);

/// Whether the pointer is a live widget that nobody is about to free; it is not followed before
/// that is known.
bool IsLiveView(const QWidget* view);
/// The same, also for one that is about to be freed and may still get events.
bool ViewExists(const QWidget* view);
/// The live view behind a handle. Throws PlatformError "DeadView" for what the toolkit would crash on.
QWidget& LiveView(HWND view);
/// Hides the view at once and frees it when control is back in the event loop: it may be asked for
/// inside its own paint or resize.
void DisposeOfView(QWidget* view);
/// Has the bindings of the view forgotten when the toolkit frees it, and with them the view in
/// every `owner` that was ever given for it.
void WatchView(QWidget* view, CWnd* owner = nullptr);
/// The owner goes: none of its views calls it any more, also those that it let go of.
void ForgetOwner(CWnd* owner);

} // namespace vm
