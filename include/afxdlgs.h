// Dialogs.
#pragma once

#include <vmcore/app/messages.h>
#include <vmcore/dialogs/CDialog.h>
#include <vmcore/dialogs/CPropertySheet.h>
#include <vmcore/dialogs/dataExchange.h>
#include <vmcore/dialogs/walkViews.h>
