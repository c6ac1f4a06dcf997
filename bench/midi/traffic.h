// What is sent, and what is made of how it arrives. Each runs in a process of its own.
#pragma once

#include <string>

#include "figures.h"

namespace bench {

/// Messages at random moments: "median" and "p99" in microseconds.
Figures MeasureLatency(const std::string& side, const std::string& system);
/// 100,000 messages at full speed: "arrived", and the processor's "time" for each in microseconds.
Figures MeasureBurst(const std::string& side, const std::string& system);
/// The same of 20,000 messages, four in a millisecond.
Figures MeasureSteady(const std::string& side, const std::string& system);
/// System Exclusive messages of four lengths: "1KB-whole" (in parts of a hundred) and "1KB-speed"
/// (MB/s, 0 when one was lost) and so on.
Figures MeasureSysex(const std::string& side, const std::string& system);

} // namespace bench
