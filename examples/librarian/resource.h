// Command IDs of the menus (the `tag` of the items in Resources/MainMenu.ui and MENU_200.ui), where
// the program's own entries stand in them, and IDs of dialogs and controls.
#pragma once

enum CommandId : int {
    ID_FILE_OPEN_VOICES = 1001,
    ID_FILE_OPEN_PATCHES = 1002,
    ID_FILE_SAVE_AS = 1003,
    ID_FILE_FTP = 1004,
    ID_FILE_OPEN = 1005,
    ID_FILE_SAVE = 1006,
    ID_FILE_SHEET = 1007,
    ID_FILE_QUIT = 1009,
    ID_MIDI_SEND = 1101,
    ID_MIDI_VERIFY = 1102,
    ID_MIDI_SLOW = 1103,
    ID_MIDI_PORTS = 1104,
    ID_MIDI_SEND_BANK = 1105,
    ID_MIDI_RECEIVE_BANK = 1106,
    ID_MIDI_CHORD = 1107,
    ID_VIEW_HEX = 1201,
    ID_VIEW_HEADER = 1202,
    ID_VIEW_TREE = 1203,
    ID_VIEW_DETAIL = 1204,
    ID_VIEW_MONITOR = 1205,

    // Runs of entries that the program fills: see MenuEntries.
    ID_FILE_RECENT = 1300,
    ID_FILE_FOLDER = 1320,
    ID_MIDI_OUTPUT = 1400,
    ID_MIDI_INPUT = 1440,
    ID_INSTRUMENT = 1500,

    ID_EDIT_DELETE = 1601,
    ID_EDIT_DETAILS = 1602,
    ID_EDIT_FIND = 1603,
    ID_EDIT_FIND_NEXT = 1604,
    ID_EDIT_COPY = 1605,

    ID_EDIT_VOICE = 1701,
    ID_HELP_PLUGINS = 1702,
    ID_HELP_CONTENTS = 1703,
};

// Indices of menus in MainMenu.ui, and of sub-menus in their menus.
enum MenuIndex : int {
    kFileMenu = 0,
    kFolderMenu = 3,
    kRecentPosition = 9,
    kMidiMenu = 2,
    kOutputMenu = 7,
    kInputMenu = 8,
    kInstrumentsMenu = 3,
};

/// Dialogs and pop-up menus: DLG_<id>.ui and MENU_<id>.ui.
enum ResourceId : int {
    IDD_ABOUT = 100,
    IDD_PORTS = 110,
    IDD_DETAILS = 120,
    IDD_CLEAR = 121,
    IDD_FIND = 130,
    IDD_FTP = 140,
    IDD_PLUGINS = 151, // 150 is that of a plug-in
    IDD_TRANSFER = 160,
    IDR_MESSAGE_MENU = 200,
};

enum ControlId : int {
    IDC_ABOUT_VERSION = 1001,
    IDC_PORTS_OUTPUT = 1001,
    IDC_PORTS_INPUT = 1002,
    IDC_PORTS_SLOW = 1003,
    IDC_DETAILS_SUMMARY = 1000,
    IDC_DETAILS_AUTHOR = 1001,
    IDC_DETAILS_COMMENT = 1002,
    IDC_DETAILS_CLEAR = 1003,
    IDC_FIND_TEXT = 1001,
    IDC_FIND_NEXT = 1002,
    IDC_FTP_SERVER = 1001,
    IDC_FTP_FOLDER = 1002,
    IDC_FTP_USER = 1003,
    IDC_FTP_PASSWORD = 1004,
    IDC_FTP_PATTERN = 1005,
    IDC_FTP_NAMES = 1006,
    IDC_FTP_LIST = 1007,
    IDC_FTP_FETCH = 1008,
    IDC_FTP_UPLOAD = 1009,
    IDC_FTP_DELETE = 1010,
    IDC_FTP_STATUS = 1011,
    IDC_FTP_PROGRESS = 1012,
    IDC_FTP_CANCEL = 1013,
    IDC_TRANSFER_TEXT = 1001,
    IDC_TRANSFER_BAR = 1002,

    IDC_HEADER = 2001,
    IDC_MESSAGES = 2002,
    IDC_HEX = 2003,
    IDC_EDITOR = 2004,
    IDC_TREE = 2005,
    IDC_DETAIL = 2006,
    IDC_MONITOR = 2007,
    IDC_SHEET = 2008,

    IDC_PLUGINS_LIST = 3000,
    IDC_PLUGINS_AGAIN = 3001,
};
