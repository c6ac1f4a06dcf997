// Threads and synchronisation.
#pragma once

#include <vmcore/app/sync.h>
#include <vmcore/app/threads.h>
