// What a screen reader is told: views made by CWnd::Create with the name and role that their object
// has or was given, and names for native controls that a window object stands for.
#pragma once

class CWnd;
class CWndView;

namespace vm {

/// Has the toolkit ask here about the library's views. Once is enough.
void InstallAccessibleViews();

/// Forgets what was set for an object that goes.
void ForgetAccessible(const CWnd* wnd);

/// The object was bound to a view: it takes the name that was given to the object before.
void ApplyAccessible(const CWnd& wnd);

/// Tells readers that the name of a view, or whether it is enabled, has changed.
void TellName(CWndView& view);
void TellEnabled(CWndView& view);

} // namespace vm
