// Command IDs of the menus (the `tag` of the items in Resources/MainMenu.ui) and IDs of the
// controls.
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
};

enum ControlId : int {
    IDC_HEADER = 2001,
    IDC_MESSAGES = 2002,
    IDC_HEX = 2003,
};
