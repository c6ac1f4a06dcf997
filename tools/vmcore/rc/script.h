// What a resource script says, as plain data: the parser makes it, the writers turn it into files for
// the bundle. Texts are UTF-8 whatever the script's code page; numbers are those of the Windows
// interfaces, in which scripts are written; positions and sizes are dialog units.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vm::rc {

/// Where something stands: in the file as it was named, counted from 1.
struct Place {
    std::string file;
    int line = 0;
    int column = 0;
};

/// The name or number of a resource, a control or a command.
struct Id {
    std::optional<int> number; ///< -1 (IDC_STATIC) to 65535; none when the script gives a name
    std::string name;          ///< a name that is no number, in capitals
    std::string symbol;        ///< as it is spelled before the preprocessor: "IDD_ABOUT", "101"
};

struct Language {
    int primary = 0; ///< LANG_NEUTRAL
    int sub = 0;
    friend bool operator==(Language a, Language b) {
        return a.primary == b.primary && a.sub == b.sub;
    }
};

/// What every resource begins with.
struct Head {
    Place place;
    std::string keyword; ///< "DIALOGEX"; of a type of the program's own its name or number
    Id id;
    Language language;
};

struct Rect {
    int x = 0;
    int y = 0;
    int cx = 0;
    int cy = 0;
};

struct Font {
    int points = 0; ///< 0: the script names none
    std::string face;
    int weight = 0; ///< 0: any; 700: bold
    bool italic = false;
    int charset = 0;
};

struct Control {
    Place place;
    std::string keyword;     ///< "DEFPUSHBUTTON", "CONTROL"
    std::string windowClass; ///< in lower case: "button", "static", "msctls_trackbar32"
    Id id;
    std::string text;
    std::optional<Id> image; ///< instead of a text: the picture of a static control
    Rect rect;
    std::uint32_t style = 0; ///< complete: the keyword's own bits and what NOT takes away included
    std::uint32_t exStyle = 0;
    std::uint32_t helpId = 0;
    bool hasData = false;           ///< creation data follows, which has no counterpart
    std::vector<std::string> items; ///< of a list or combo box, from DLGINIT
};

struct Dialog {
    Head head;
    bool extended = false; ///< DIALOGEX
    Rect rect;
    std::uint32_t style = 0;
    std::uint32_t exStyle = 0;
    std::uint32_t helpId = 0;
    std::string caption;
    Font font;
    std::optional<Id> menu;
    std::optional<Id> windowClass;
    std::vector<Control> controls;
};

enum class MenuEntry { Item, Popup, Separator };

struct MenuItem {
    Place place;
    MenuEntry kind = MenuEntry::Item;
    std::string text; ///< '&' and the tab before the accelerator's name as written
    Id id;            ///< of a popup only in MENUEX
    bool checked = false;
    bool grayed = false; ///< or INACTIVE
    bool radio = false;
    bool isDefault = false;
    bool column = false; ///< MENUBREAK, MENUBARBREAK
    bool help = false;   ///< at the right end of the bar
    std::vector<MenuItem> items;
};

struct Menu {
    Head head;
    bool extended = false; ///< MENUEX
    std::vector<MenuItem> items;
};

struct Accelerator {
    Place place;
    Id command;
    int key = 0;             ///< a virtual key code, or a character
    bool virtualKey = false; ///< what `key` is
    bool shift = false;
    bool control = false;
    bool alt = false;
    std::string symbol; ///< as spelled: "VK_F5", "\"^C\""
};

struct AcceleratorTable {
    Head head;
    std::vector<Accelerator> keys;
};

struct StringEntry {
    Place place;
    Id id;
    std::string text;
};

struct StringTable {
    Head head; ///< without an ID
    std::vector<StringEntry> strings;
};

enum class PictureKind { Bitmap, Icon, Cursor };

struct Picture {
    Head head;
    PictureKind kind = PictureKind::Bitmap;
    std::string path;    ///< of the file, found beside the script or in an --include folder
    bool isThere = true; ///< or the path is only what the script says
};

struct VersionValue {
    Place place;
    std::string key;
    std::string text;
};

struct VersionStrings {
    std::string block; ///< language and code page: "040904b0"
    std::vector<VersionValue> values;
};

struct VersionInfo {
    Head head;
    std::vector<int> fileVersion; ///< up to four numbers
    std::vector<int> productVersion;
    std::vector<VersionStrings> strings;
};

/// Read to its end and named in the report, and that is all: TOOLBAR, DESIGNINFO, RCDATA, HTML,
/// FONT, MESSAGETABLE, types of the program's own.
struct Other {
    Head head;
    std::string path;                      ///< of a single-line resource
    bool isThere = true;                   ///< or the path is only what the script says
    std::optional<std::string> bytes = {}; ///< of DLGINIT, whose texts go to a dialog
    int codePage = 0;                      ///< of these
};

using Resource =
    std::variant<Dialog, Menu, AcceleratorTable, StringTable, Picture, VersionInfo, Other>;

/// A whole script, its resources in their order. Which language is taken of several is not decided
/// here: see selectLanguage.h.
struct Script {
    std::vector<Resource> resources;
};

} // namespace vm::rc
