// Numbers that the sources of the main window share: its own messages and its timers.
#pragma once

#include <windows.h>

constexpr UINT WM_MIDI_INPUT = WM_USER + 1;
constexpr UINT WM_OPEN_DROPPED = WM_USER + 10;
constexpr UINT WM_PLUGIN_TRIED = WM_USER + 11;
constexpr UINT kMidiTimer = 1;
constexpr UINT kMidiTimerInterval = 20;
constexpr UINT kSaveTimer = 2;
constexpr UINT kChordTimer = 3;
