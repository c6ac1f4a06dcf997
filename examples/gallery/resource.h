// The numbers of the gallery's dialogs and controls.
#pragma once

enum {
    DLG_CONTROLS = 201,
    DLG_VOICE = 202,
    DLG_TRANSMISSION = 203,

    ID_PUSH = 1001,
    ID_VOICE = 1013,
    ID_VOICE_ARROWS = 1014,
    ID_DEVICE = 1020,
    ID_CHANNELS = 1022,
    ID_CUTOFF = 1030,
    ID_LEVEL = 1031,
    ID_POSITION = 1032,
    ID_VALUE = 1033,
    ID_VOLUME = 1034,
    ID_TREE = 1040,
    ID_PATCHES = 1041,
    ID_PAGES = 1050,
    ID_PAGE = 1051,
    ID_SHEET = 1060,
    ID_OPEN = 1061,
    ID_SAVE = 1062,
    ID_FOLDER = 1063,
    ID_FONT = 1064,
    ID_COLOR = 1065,
    ID_BOX_BUTTONS = 1066,
    ID_BOX_ICON = 1067,
    ID_MESSAGE = 1068,
    ID_STATUS = 1099,
};
