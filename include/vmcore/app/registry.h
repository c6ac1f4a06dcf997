// From a window object to its native objects and back, and whether either is still alive.
//
// A binding ties a view to a CWnd. The same view may be bound several times; every lookup takes the
// first binding made. Bindings are made and removed on the main thread; other threads may look up.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

class CWnd;

/// The list of all live CWnd objects; constructors and the destructor keep it.
VM_API void CWndListAdd(CWnd* wnd);
/// Removes the first entry. Logs "CWndListRemove - request to remove CWnd not in list: ..." when
/// there is none.
VM_API void CWndListRemove(CWnd* wnd);
/// Whether the pointer designates a live window object. Any thread.
VM_API bool CWndListVerify(const CWnd* wnd);

/// Appends a binding (without a test for an existing one). With a null `wnd`: removes every binding
/// of the CWnd that the view's first binding names.
VM_API void SetControlReference(HWND view, CWnd* wnd);
/// The CWnd of the view's first binding, or null.
VM_API CWnd* GetControlReference(HWND view);
/// Removes every binding of this window object.
VM_API void RemoveControlReference(CWnd* wnd);
/// Removes every binding recorded with this native window: all controls of a closing window.
VM_API void RemoveControlReference(void* nativeWindow);

/// The CWnd kept by a native window's delegate; null without a window or delegate.
VM_API CWnd* GetWRefCon(NSWindow* window);
VM_API void SetWRefCon(NSWindow* window, CWnd* wnd);

/// Whether `window` is a live view; false for null, for a native window and for a stale pointer.
VM_API BOOL IsWindow(HWND window);
/// Whether the pointer is one of the application's windows.
VM_API bool IsValidWindowPtr(const NSWindow* window);
/// Whether the view lies below the content of one of the application's windows. In plug-in
/// environment always true: the host's windows are not the library's to enumerate.
VM_API bool NSViewIsValid(HWND view);

/// The one scratch window that wraps a bare handle for the duration of a call. Null before the
/// first use only when `existingOnly`.
VM_API CWnd* getTempWnd(bool existingOnly);
/// Frees the scratch window. The application object's destructor calls it.
VM_API void CWndCleanup();
