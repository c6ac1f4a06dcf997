// System Exclusive messages at the speed of a MIDI cable, on the library's loopback.
#pragma once

#include "figures.h"

namespace bench {

/// Of 30 seconds: "deviation" of the speed, "thread" and "process" processor time, all in percent,
/// and for how much of it the machine "stalled", which no pacing can help.
Figures MeasurePacing();

} // namespace bench
