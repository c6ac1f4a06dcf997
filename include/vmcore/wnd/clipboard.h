// Copying a window or a bitmap to the clipboard, as a page that other programs paste without loss, and
// writing that page to a file:
//
//     case ID_EDIT_COPY:
//         AfxCopyWindowToClipboard(&m_score, 0, 0);
//         return TRUE;
//
// Main thread only.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

class CBitmap;
class CWnd;

/// The clipboard of the desktop. Without an application object null, and the line
/// "PasteboardCreate failed - I wonder why?!" on standard error.
VM_API NSPasteboard* GetPasteboard();

/// Replaces the clipboard's contents by one PDF page, one point to a unit, that the window's WM_PAINT
/// draws as on the screen: without its child windows; its text stays text. The page has the size
/// given, or the client area's when either is 0. Nothing happens for a null window, a negative or
/// empty size, and without a clipboard.
VM_API void AfxCopyWindowToClipboard(CWnd* wnd, int width, int height);
/// Writes that page to a file, which is replaced as a whole or not at all: our addition, for programs that
/// print. The name is translated as CreateFile does. FALSE for a null window or name, an empty size, and
/// "Couldnt write '<path>'" in the log when the file cannot be written.
VM_API BOOL AfxSaveWindowAsPDF(CWnd* wnd, int width, int height, LPCSTR file);
/// As AfxCopyWindowToClipboard, with the bitmap's picture, one point to a pixel. Nothing happens without an image.
VM_API void AfxCopyBitmapToClipboard(CBitmap* bitmap);
