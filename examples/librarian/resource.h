// Command IDs of the menus (the `tag` of the items in Resources/MainMenu.ui), where the program's
// own entries stand in them, and IDs of the controls.
#pragma once

enum CommandId : int {
    ID_FILE_OPEN_VOICES = 1001,
    ID_FILE_OPEN_PATCHES = 1002,
    ID_FILE_QUIT = 1009,
    ID_MIDI_SEND = 1101,
    ID_MIDI_VERIFY = 1102,
    ID_MIDI_SLOW = 1103,
    ID_VIEW_HEX = 1201,
    ID_VIEW_HEADER = 1202,

    // Runs of entries that the program fills: see MenuEntries.
    ID_FILE_RECENT = 1300,
    ID_FILE_FOLDER = 1320,
    ID_MIDI_OUTPUT = 1400,
    ID_MIDI_INPUT = 1440,
    ID_INSTRUMENT = 1500,
};

// Indices of menus in MainMenu.ui, and of sub-menus in their menus.
enum MenuIndex : int {
    kFileMenu = 0,
    kFolderMenu = 2,
    kRecentPosition = 4,
    kMidiMenu = 1,
    kOutputMenu = 4,
    kInputMenu = 5,
    kInstrumentsMenu = 2,
};

enum ControlId : int {
    IDC_HEADER = 2001,
    IDC_MESSAGES = 2002,
    IDC_HEX = 2003,
};
