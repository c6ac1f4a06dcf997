// What the two sources of the MIDI functions share: the client, its output ports, and the back end
// behind them.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>

#include <vmcore/midi/mmsystem.h>

#include "platform/midi/MidiPlatform.h"

namespace vm {

/// The process's one MIDI system. The references are 0 when there is no such thing.
struct MidiSystem {
    std::atomic<MidiId> MIDIClient = 0;
    std::atomic<MidiId> MIDIOutPort = 0;  ///< midiOutShortMsg
    std::atomic<MidiId> MIDIThruPort = 0; ///< midiThruShortMsg

    std::mutex starting;                     ///< held while the system comes up
    std::atomic<bool> startsWhenUsed{false}; ///< it is not up yet: see StartMidiWhenUsed

    std::mutex lock;
    std::shared_ptr<MidiPlatform> platform; ///< guarded by lock; null when the system is not up
    std::shared_ptr<MidiPlatform> next;     ///< guarded by lock; see UseMidiPlatform
};

MidiSystem& Midi();

/// The first MIDI function that a program calls does what initCoreMIDI does: many programs never call
/// one, and opening a back end loads libraries and starts threads.
void StartMidiWhenUsed();
/// What each MIDI function does first. Any thread.
void UseMidi();

/// The back end in use, after UseMidi. Never null: without one, a stand-in that has no endpoints and
/// refuses sends.
std::shared_ptr<MidiPlatform> CurrentMidiPlatform();

/// The next initCoreMIDI starts this one instead of what VMCORE_MIDI says. For tests.
void UseMidiPlatform(std::shared_ptr<MidiPlatform> platform);

/// Empties the input tables and drops the halves of System Exclusive messages, after the back end
/// has stopped. A callback that still runs is the last of its port.
void ForgetInputPorts();

/// True inside a receive call, where nothing may take long.
bool IsMidiReceiveThread();

/// Handles carry a 32-bit reference in a pointer.
inline void* MidiHandle(MidiId id) {
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(id));
}
inline MidiId MidiReference(const void* handle) {
    return static_cast<MidiId>(reinterpret_cast<std::uintptr_t>(handle));
}

} // namespace vm
