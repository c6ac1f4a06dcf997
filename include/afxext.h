// Frames with their bars.
#pragma once

#include <vmcore/wnd/frames.h>
