// Folders to choose, and dropped files.
#pragma once

#include <vmcore/dialogs/folderBrowser.h>
#include <vmcore/wnd/CWnd.h>
