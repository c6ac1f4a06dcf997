// Traffic on many ports at once, whatever back end carries it.
#pragma once

#include <span>

#include "MidiRecorder.h"

/// A short message that tells `number` from 2^18 others.
DWORD NumberedMessage(DWORD number);

/// Sends to every output from a thread of its own, short messages and a System Exclusive message in
/// between, and expects it all at the recorder of the same number, in order.
void ExpectWholeTraffic(std::span<const HMIDIOUT> outs, std::span<MidiRecorder> recorders);

/// With 256 inputs open and messages flowing to all of them, closes and opens `count` of them in
/// turn, the half of them closed by their own callbacks. No port may be called after its end, or
/// never. `out` leads to the input device `index`.
void OpenAndCloseInTraffic(HMIDIOUT out, UINT index, int count);
