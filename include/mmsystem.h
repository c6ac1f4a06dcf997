// The multimedia MIDI functions.
#pragma once

#include <vmcore/midi/mmsystem.h>
