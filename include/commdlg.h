// The common dialogs as functions: files, fonts, colours.
#pragma once

#include <vmcore/dialogs/commdlg.h>
