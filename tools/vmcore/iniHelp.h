// The texts of `vmcore ini ... --help`, at most 80 columns wide. For ini.cpp only.
#pragma once

namespace vm::tool {

constexpr const char* kFileHelp = "The file, a path as the shell knows it";
constexpr const char* kNewFileHelp = "The file; it is created when it is missing";
constexpr const char* kSectionHelp = "The section's name, without brackets";
constexpr const char* kKeyHelp = "The key's name";
constexpr const char* kForceHelp = "Edit although saving loses text (see below)";

constexpr const char* kIniHelp =
    R"(The files are read as VMCore's profile functions read them; edits go through
these functions and are looked at afterwards. In short:
  - Section and key names are compared without regard to the case of ASCII
    letters. Of several sections or keys of one name the first is found.
  - A value ends at its first ';'; blanks before that are dropped, blanks after
    '=' are kept. Nothing may stand around a key: 'key =1' is no entry of 'key'.
  - Lines are cut at 255 characters. A last line without a line end is not read.
The settings that programs share are, below $XDG_CONFIG_HOME (~/.config),
'Velmora Win.ini' and, for the registry, 'Velmora Preferences.ini'.

FILE is the path of a file. 'check' takes any; the other commands refuse one
that the library would translate (':' and '\' separate folders there, ".bmp"
means ".png") and one of more than 255 bytes. Words that begin with '-' (other
than numbers) go behind '--':
  vmcore ini set app.ini Window Title -- -none-

A running program keeps its settings in memory and overwrites an edit when it
saves: end it first.

Exit status: 0 well; 1 the answer is no, or an edit was refused or failed; 2 a
file cannot be read, or wrong usage.)";

constexpr const char* kGetHelp =
    R"(Prints the value as the library reads it, and a line end. Exit status 1 and a
message when section or key is missing; 0 and an empty line for an empty value;
2 when the file cannot be read.

  vmcore ini get app.ini Window Left)";

constexpr const char* kSetHelp =
    R"(Replaces the first entry of the key in the first section of that name, with any
comment behind its value. A new key goes to the end of its section, a new
section to the end of the file. The file is saved as a whole: every line then
ends with CR LF.

Exit status 1, and nothing is changed,
  - for a value that the library would not read back as it is: one that holds
    ';' or a line end, that ends in a blank or tab, or that makes its line longer
    than 255 characters, and for a line that would be taken for a header;
  - when saving would lose text of the file: a last line without a line end (see
    'check --fix') or parts of lines of more than 255 characters. --force edits
    all the same;
  - when the file cannot be written.

  vmcore ini set app.ini Window Left 120)";

constexpr const char* kDeleteHelp =
    R"(Deletes the first entry of KEY; without KEY, every line of the section that is
not empty. The section's header stays. An entry with an empty value ('key=') is
never deleted by the library: set it to something first.

Exit status 1 and a message
  - when there is no such section or key, or the value is empty;
  - when another entry of the key remains in the section;
  - when the file cannot be written, or saving would lose text of it (a last line
    without a line end, parts of lines of more than 255 characters; --force edits
    all the same).

  vmcore ini delete app.ini Window Left)";

constexpr const char* kListHelp =
    R"(Prints the names of the sections, or the entries of all sections called SECTION
as 'key=value' with the values that the library reads. Messages name the lines
that it never finds, behind another section or key of their name.

--json prints an object, of the whole file or of the sections called SECTION:
  {"sections": [{"name": ..., "line": N, "found": true or false, "entries":
    [{"key": ..., "value": ..., "line": N, "found": true or false}]}]}
"found" is false for what the library never finds. A byte that is no part of
UTF-8 text appears as \u00XX.

Exit status 1 when there is no such section, 2 when the file cannot be read.)";

constexpr const char* kCheckHelp =
    R"(Prints 'FILE:LINE: SEVERITY: KIND: TEXT' for each finding, in the order of the
lines:
  error    Text is not read, or lost when the file is saved: byte-order mark,
           no line end, long line, NUL byte, carriage return (as the only line
           end), header without ']', size (2 GiB or more)
  warning  Something is not found, or not as it looks: entry without section,
           duplicate section, duplicate key, blank before key, blank before '=',
           text after ']', trailing tab (after ']'), line of tabs, unknown line,
           carriage return (in a line), byte-order mark (before no header)
  note     With --notes: cut value (at ';'), blank after '=', empty value (cannot
           be deleted), trailing tab (after a value), text after ']' (in a name)

--fix drops a byte-order mark, unless the section that it hides stands in the
file again, and ends the last line. It prints 'FILE:LINE: fixed: TEXT' and checks
the result. The file is replaced as a whole; its mode stays.

Exit status: 0 no errors and no warnings; 1 some; 2 a file cannot be read or
repaired.)";

} // namespace vm::tool
