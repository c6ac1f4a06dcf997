// The texts of a program by their numbers: Strings.ini in the bundle's Resources folder.
//
//     CString title;
//     AfxLoadString(IDS_TITLE, title);
//
// CString::LoadString knows of no bundle and is always FALSE: use these instead. `vmcore rc` makes the
// file from the string tables of a resource script (docs/resource-scripts.md describes it for editing).
// It is read once for each bundle; a change needs a new start. Texts come in the encoding of windows and
// controls: ASCII, and beyond it Mac Roman, with '?' for what that has not. Any thread.
#pragma once

#include <vmcore/core/CString.h>
#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

/// From the bundle that was set with AfxSetDVBundle, else the program's own. FALSE for a text that is not
/// there, with the line "AfxLoadString: no text <id> in <file>" logged; `text` is then empty.
VM_API BOOL AfxLoadString(UINT id, CString& text);

/// Copies at most size - 1 characters with a zero behind and returns how many; 0 as above, and without a
/// buffer.
VM_API int AfxLoadString(UINT id, LPSTR buffer, int size = 256);
