// Shell folders and dropped files.
#pragma once

#include <vmcore/wnd/CWnd.h>
