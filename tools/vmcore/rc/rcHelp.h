// What `vmcore rc --help` says.
#pragma once

namespace vm::tool {

constexpr const char* kRcHelp =
    R"(Turns the resources of a Windows program into files that VMCore programs load:
dialogs and menus into .ui files, accelerators into C++ source, texts into
Strings.ini, pictures into PNG files. Keep the script and compile it in every
build, or compile it once and go on in Qt Designer with what comes out.

  vmcore rc sketch.rc --out Resources
  vmcore rc sketch.rc --include inc --define _DEBUG --out Resources --quiet
  vmcore rc sketch.rc --out Resources --list     (names only, nothing written)

Prints a line for each statement of the script, and a summary:
  sketch.rc:12:1: converted: DIALOGEX IDD_ABOUT: DLG_101.ui
  sketch.rc:20:5: approximated: CONTROL IDC_SPEED: <how it differs>
  sketch.rc:31:1: left out: TOOLBAR IDR_MAIN: <why>

The headers of Windows and its framework (windows.h, winres.h, afxres.h ...) are
built in and need not be there. Of other headers only the directives count.
Names of files are found in any case, with '\' or '/'.

A file whose bytes files are made from says how it is coded by a byte-order mark
or '#pragma code_page'; else it is --codepage, else 1252, or UTF-8 where it is
that. Where a resource stands there in several languages, that of --language is
taken, else the neutral one, else the first.

Output files that would not change keep their time. Those of resources that the
script has no longer are not deleted.

Exit status: 0 well, whatever else the report says; 1 a mistake in the script (one
line 'FILE:LINE:COLUMN: error: TEXT'; nothing is written), a bitmap or icon that
it names is not there (all else is written), or a file cannot be written; 2 a
file cannot be read, or wrong usage.)";

} // namespace vm::tool
