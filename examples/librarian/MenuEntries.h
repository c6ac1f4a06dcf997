// Runs of menu entries that the program fills while it runs: recent banks, ports, instruments. The
// commands of a run are numbered consecutively.
#pragma once

#include <string>
#include <vector>

#include <afxwin.h>

struct MenuEntries {
    UINT position;    ///< of the first entry in its menu
    int firstId;      ///< the first entry's command
    int limit;        ///< how many commands are reserved
    const char* none; ///< what stands there, disabled, when there are none

    /// Which entry a command is, -1 for none of these.
    int IndexOf(int id) const;
    /// Puts `titles` in the place of what the run held. `menu` may be null: a program whose menu
    /// file is missing has none.
    void Show(CMenu* menu, const std::vector<std::string>& titles) const;
};

/// A text as the title of a menu entry: '&' stands for itself, control characters are blanks.
std::string MenuTitle(const std::string& text);
/// The same with the number in front, underlined up to 9.
std::string NumberedTitle(std::size_t number, const std::string& text);
