// Dialogs. What there is of them so far comes with the application header.
#pragma once

#include <vmcore/app/messages.h>
