// The numbers of the commands and windows that every program has, as resource scripts know them:
//
//     ON_COMMAND(ID_FILE_OPEN, &MainFrame::OnFileOpen)
//
// The library runs none of them by itself, but for those named in messages.h: they mean what a
// program's handlers make of them.
#pragma once

#include <vmcore/app/messages.h>

/// The number of controls that nobody asks for.
constexpr int IDC_STATIC = -1;

enum : int {
    ID_FILE_NEW = 0xE100,
    ID_FILE_OPEN = 0xE101,
    ID_FILE_CLOSE = 0xE102,
    ID_FILE_SAVE = 0xE103,
    ID_FILE_SAVE_AS = 0xE104,
    ID_FILE_PAGE_SETUP = 0xE105,
    ID_FILE_PRINT_SETUP = 0xE106,
    ID_FILE_PRINT = 0xE107,
    ID_FILE_PRINT_PREVIEW = 0xE109,
    ID_FILE_MRU_FILE1 = 0xE110, ///< to ID_FILE_MRU_FILE16
    ID_FILE_MRU_FILE2 = 0xE111,
    ID_FILE_MRU_FILE3 = 0xE112,
    ID_FILE_MRU_FILE4 = 0xE113,
    ID_FILE_MRU_FILE16 = 0xE11F,
    ID_EDIT_CLEAR = 0xE120,
    ID_EDIT_CLEAR_ALL = 0xE121,
    ID_EDIT_COPY = 0xE122,
    ID_EDIT_CUT = 0xE123,
    ID_EDIT_FIND = 0xE124,
    ID_EDIT_PASTE = 0xE125,
    ID_EDIT_REPEAT = 0xE128,
    ID_EDIT_REPLACE = 0xE129,
    ID_EDIT_SELECT_ALL = 0xE12A,
    ID_EDIT_UNDO = 0xE12B,
    ID_EDIT_REDO = 0xE12C,
    ID_APP_EXIT = 0xE141, ///< an item of the main menu ends the application by itself
    ID_HELP_INDEX = 0xE142,
    ID_HELP_USING = 0xE144,
    ID_VIEW_TOOLBAR = 0xE800,
    ID_VIEW_STATUS_BAR = 0xE801,
};
