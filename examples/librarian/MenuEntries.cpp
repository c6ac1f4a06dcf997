#include "MenuEntries.h"

#include <algorithm>

int MenuEntries::IndexOf(int id) const {
    const int index = id - firstId;
    return index >= 0 && index < limit ? index : -1;
}

void MenuEntries::Show(CMenu* menu, const std::vector<std::string>& titles) const {
    if (!menu) return;
    for (int i = 0; i < limit; ++i)
        if (!menu->DeleteMenu(static_cast<UINT>(firstId + i), MF_BYCOMMAND)) break;
    const auto id = static_cast<std::uintptr_t>(firstId);
    const std::size_t count = std::min(titles.size(), static_cast<std::size_t>(limit));
    for (std::size_t i = 0; i < count; ++i)
        menu->InsertMenu(position + static_cast<UINT>(i), MF_STRING | MF_ENABLED_INSERT, id + i,
                         titles[i].c_str());
    if (count == 0) menu->InsertMenu(position, MF_STRING, id, none);
}

std::string MenuTitle(const std::string& text) {
    std::string title;
    for (const char c : text) {
        if (c == '&') title += '&';
        title += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
    return title;
}

std::string NumberedTitle(std::size_t number, const std::string& text) {
    return (number <= 9 ? "&" : "") + std::to_string(number) + " " + MenuTitle(text);
}
