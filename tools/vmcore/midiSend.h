// `vmcore midi send`, and what else sends files.
#pragma once

#include <string>

#include "MidiOutput.h"
#include "StopSignal.h"
#include "SyxFile.h"

namespace vm::tool {

/// Sends the messages, each after the one before. Throws Exit (kNo) when the port disappears or at
/// a request to stop, once the message on its way is out; a second request does not wait for that.
void SendMessages(MidiOutput& output, const Port& port, const SyxFile& file, StopSignal& stop);

/// `speed` is 0 for the port's own.
void SendFile(const std::string& file, const std::string& port, unsigned speed);

} // namespace vm::tool
