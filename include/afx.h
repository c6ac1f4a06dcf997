// The classes that need no window: strings, arrays, geometry.
#pragma once

#include <vmcore/app/diagnostics.h>
#include <vmcore/core/CString.h>
#include <vmcore/core/arrays.h>
#include <vmcore/core/geometry.h>
#include <vmcore/core/strings.h>
#include <vmcore/core/types.h>
#include <vmcore/files/CFile.h>
#include <vmcore/files/fileapi.h>
#include <vmcore/files/library.h>
#include <vmcore/files/paths.h>
#include <vmcore/files/profile.h>
#include <vmcore/files/stringTable.h>
#include <vmcore/files/winreg.h>
