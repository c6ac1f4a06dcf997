// The standard commands. Not part of <afxwin.h> here, because programs number commands of their own by these names.
#pragma once

#include <vmcore/app/commandIds.h>
