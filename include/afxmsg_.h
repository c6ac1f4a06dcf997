// Message maps.
#pragma once

#include <vmcore/wnd/messageMap.h>
