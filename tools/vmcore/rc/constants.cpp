// Look-up of constants and headers that are built in.
#include "rc/constants.h"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "rc/token.h"

namespace vm::rc {
namespace {

struct NamedText {
    std::string_view name;
    std::string_view text;
};

constexpr NamedText kTexts[] = {
    {"WC_BUTTON", "Button"},
    {"WC_STATIC", "Static"},
    {"WC_EDIT", "Edit"},
    {"WC_LISTBOX", "ListBox"},
    {"WC_COMBOBOX", "ComboBox"},
    {"WC_SCROLLBAR", "ScrollBar"},
    {"WC_LISTVIEW", "SysListView32"},
    {"WC_TREEVIEW", "SysTreeView32"},
    {"WC_TABCONTROL", "SysTabControl32"},
    {"WC_HEADER", "SysHeader32"},
    {"WC_COMBOBOXEX", "ComboBoxEx32"},
    {"WC_IPADDRESS", "SysIPAddress32"},
    {"WC_PAGESCROLLER", "SysPager"},
    {"WC_LINK", "SysLink"},
    {"TRACKBAR_CLASS", "msctls_trackbar32"},
    {"UPDOWN_CLASS", "msctls_updown32"},
    {"PROGRESS_CLASS", "msctls_progress32"},
    {"HOTKEY_CLASS", "msctls_hotkey32"},
    {"STATUSCLASSNAME", "msctls_statusbar32"},
    {"TOOLBARCLASSNAME", "ToolbarWindow32"},
    {"REBARCLASSNAME", "ReBarWindow32"},
    {"TOOLTIPS_CLASS", "tooltips_class32"},
    {"ANIMATE_CLASS", "SysAnimate32"},
    {"MONTHCAL_CLASS", "SysMonthCal32"},
    {"DATETIMEPICK_CLASS", "SysDateTimePick32"},
    {"RICHEDIT_CLASS", "RichEdit20A"},
    {"MSFTEDIT_CLASS", "RICHEDIT50W"},
};

constexpr std::string_view kHeaders[] = {
    "afxext.h",   "afxres.h",    "afxribbon.h", "afxwin.h",  "commctrl.h", "commctrl.rh",
    "common.ver", "dde.h",       "ddeml.h",     "dlgs.h",    "ntdef.h",    "ntverp.h",
    "prsht.h",    "richedit.h",  "sdkddkver.h", "verrsrc.h", "ver.h",      "winbase.h",
    "windef.h",   "windows.h",   "windows.rh",  "winnls.h",  "winnls.rh",  "winnt.h",
    "winnt.rh",   "winres.h",    "winresrc.h",  "winuser.h", "winuser.rh", "winver.h",
    "winver.rh",  "winsdkver.h",
};

constexpr std::string_view kScripts[] = {
    "afxctl.rc",   "afxdb.rc",    "afxisapi.rc", "afxolecl.rc",
    "afxolesv.rc", "afxprint.rc", "afxres.rc",   "afxribbon.rc",
};

using Table = std::unordered_map<std::string_view, std::uint32_t>;

Table AllConstants() {
    Table table;
    for (const auto constants : {WindowConstants(), ControlConstants(), CommonControlConstants(),
                                 KeyConstants(), LanguageConstants(), CommandConstants()})
        for (const Constant& constant : constants) table.emplace(constant.name, constant.value);
    return table;
}

// "l.deu\afxres.rc" is a language's own.
std::string FileName(std::string_view path) {
    const std::size_t slash = path.find_last_of("/\\");
    return Lower(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

template <std::size_t N>
bool Contains(const std::string_view (&names)[N], const std::string& name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

} // namespace

std::optional<std::uint32_t> ConstantValue(std::string_view name) {
    static const Table s_table = AllConstants();
    const auto found = s_table.find(name);
    if (found == s_table.end()) return std::nullopt;
    return found->second;
}

std::optional<std::string_view> ConstantText(std::string_view name) {
    const bool isWide = name.ends_with("A") || name.ends_with("W");
    for (const NamedText& constant : kTexts)
        if (name == constant.name || (isWide && name.substr(0, name.size() - 1) == constant.name))
            return constant.text;
    return std::nullopt;
}

bool IsBuiltInHeader(std::string_view path) {
    return Contains(kHeaders, FileName(path));
}
bool IsBuiltInScript(std::string_view path) {
    return Contains(kScripts, FileName(path));
}

} // namespace vm::rc
