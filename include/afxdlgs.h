// Dialogs, property sheets and the common dialogs.
#pragma once

#include <vmcore/app/messages.h>
#include <vmcore/dialogs/CDialog.h>
#include <vmcore/dialogs/CFileDialog.h>
#include <vmcore/dialogs/CFontDialog.h>
#include <vmcore/dialogs/CPropertySheet.h>
#include <vmcore/dialogs/commdlg.h>
#include <vmcore/dialogs/dataExchange.h>
#include <vmcore/dialogs/walkViews.h>
