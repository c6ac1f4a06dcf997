// Numbers of the scripts. What is not a directive does not count.
#pragma once
#ifndef RC_INVOKED
#include <stdio.h>
#endif
extern const char* kName; /* "unfinished
   comment's text */
#define IDD_ABOUT       100
#define IDD_MIXER       (IDD_ABOUT + 1)
#define IDC_SPEED       1001
#define IDC_NAME        1002
#define IDC_LIST        1003
#define IDM_MAIN        128
#define ID_SEND         32771
#define IDS_HELLO       1
#define IDS_LAST        (IDS_HELLO+9)
#define IDB_LOGO        140
#define IDI_APP         "AppIcon"
struct Unused { int STRINGTABLE; };
