// The Win32 functions and types: base types, messages, windows, drawing, threads, files.
#pragma once

#include <vmcore/app/messages.h>
#include <vmcore/app/msg.h>
#include <vmcore/app/sync.h>
#include <vmcore/app/threads.h>
#include <vmcore/controls/CButton.h>
#include <vmcore/controls/CComboBox.h>
#include <vmcore/controls/CEdit.h>
#include <vmcore/controls/CMenu.h>
#include <vmcore/controls/CScrollBar.h>
#include <vmcore/controls/CStatic.h>
#include <vmcore/core/geometry.h>
#include <vmcore/core/strings.h>
#include <vmcore/core/types.h>
#include <vmcore/dialogs/commdlg.h>
#include <vmcore/files/fileapi.h>
#include <vmcore/files/library.h>
#include <vmcore/files/paths.h>
#include <vmcore/files/profile.h>
#include <vmcore/files/winreg.h>
#include <vmcore/gdi/CBitmap.h>
#include <vmcore/gdi/gdiobjects.h>
#include <vmcore/gdi/printing.h>
#include <vmcore/wnd/CWnd.h>
#include <vmcore/wnd/input.h>
#include <vmcore/wnd/screen.h>
