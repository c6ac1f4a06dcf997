//{{NO_DEPENDENCIES}}
// Used by Sketch.rc
//
#define IDD_ABOUTBOX                    100
#define IDD_PEN                         110
#define IDD_PAGE_SIZE                   120
#define IDD_PAGE_GRID                   121
#define IDR_MAINFRAME                   128
#define IDR_SHAPE_MENU                  129
#define IDD_SHAPES                      130
#define IDB_TOOLS                       131
#define IDD_TEXT                        140
#define IDI_SKETCH                      150
#define IDC_ABOUT_VERSION               1000
#define IDC_PEN_PRESET                  1010
#define IDC_PEN_COLOR                   1011
#define IDC_PEN_WIDTH                   1012
#define IDC_PEN_WIDTH_SPIN              1013
#define IDC_PEN_WIDTH_SLIDER            1014
#define IDC_PEN_SAMPLE                  1015
#define IDC_FILL_NONE                   1016
#define IDC_FILL_TINT                   1017
#define IDC_FILL_COLOR                  1018
#define IDC_FILL_CHOOSE                 1019
#define IDC_PAPER                       1030
#define IDC_PORTRAIT                    1031
#define IDC_LANDSCAPE                   1032
#define IDC_PAGE_WIDTH                  1033
#define IDC_PAGE_WIDTH_SPIN             1034
#define IDC_PAGE_HEIGHT                 1035
#define IDC_PAGE_HEIGHT_SPIN            1036
#define IDC_GRID_SHOW                   1040
#define IDC_GRID_SNAP                   1041
#define IDC_GRID_SPACING                1042
#define IDC_GRID_SPACING_SPIN           1043
#define IDC_GRID_SLIDER                 1044
#define IDC_GRID_LINES                  1045
#define IDC_GRID_DOTS                   1046
#define IDC_SHAPE_LIST                  1050
#define IDC_SHAPE_FRONT                 1051
#define IDC_SHAPE_BACK                  1052
#define IDC_SHAPE_DELETE                1053
#define IDC_SHAPE_COUNT                 1054
#define IDC_TEXT_EDIT                   1060
#define IDC_TEXT_HEIGHT                 1061
#define IDW_TOOLS                       2000
#define IDW_SKETCH                      2001
#define ID_TOOL_SELECT                  32771
#define ID_TOOL_FREEHAND                32772
#define ID_TOOL_LINE                    32773
#define ID_TOOL_RECTANGLE               32774
#define ID_TOOL_ELLIPSE                 32775
#define ID_TOOL_TEXT                    32776
#define ID_FORMAT_PEN                   32780
#define ID_FORMAT_THICKER               32781
#define ID_FORMAT_THINNER               32782
#define ID_EDIT_SHAPES                  32790
#define ID_EDIT_DUPLICATE               32791
#define ID_EDIT_FRONT                   32792
#define ID_EDIT_BACK                    32793
#define ID_EDIT_DESELECT                32794
#define ID_NUDGE_LEFT                   32795
#define ID_NUDGE_RIGHT                  32796
#define ID_NUDGE_UP                     32797
#define ID_NUDGE_DOWN                   32798
#define ID_VIEW_GRID                    32800
#define ID_VIEW_SNAP                    32801
#define ID_COLOR_FIRST                  32810
#define ID_COLOR_LAST                   32819
#define IDS_READY                       40001
#define IDS_ASK_SAVE                    40002
#define IDS_FILE_FILTER                 40003
#define IDS_UNTITLED                    40004
#define IDS_CANNOT_WRITE                40005
#define IDS_PRINT_FILTER                40006
#define IDS_NO_RECENT                   40007

// Next default values for new objects
//
#ifdef APSTUDIO_INVOKED
#ifndef APSTUDIO_READONLY_SYMBOLS
#define _APS_NEXT_RESOURCE_VALUE        151
#define _APS_NEXT_COMMAND_VALUE         32820
#define _APS_NEXT_CONTROL_VALUE         1070
#define _APS_NEXT_SYMED_VALUE           2010
#endif
#endif
