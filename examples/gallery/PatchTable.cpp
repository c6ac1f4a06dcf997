#include "PatchTable.h"

#include <cstdio>

namespace {

constexpr int kPatches = 128;

constexpr const char* kNames[] = {"Warm Strings", "Glass Bell", "Pulse Lead", "Brass Section",
                                  "Organ",        "Clavinet",   "Sub Bass",   "Noise Sweep"};
constexpr const char* kKinds[] = {"Strings", "Bell", "Lead", "Brass",
                                  "Keys",    "Keys", "Bass", "Effect"};
constexpr int kKindCount = static_cast<int>(std::size(kKinds));

void CellText(LV_DISPTEXT& cell) {
    const int patch = static_cast<int>(cell.itemData);
    const int kind = patch * 5 % kKindCount;
    if (cell.column == 0)
        std::snprintf(cell.text, sizeof cell.text, "%03d", patch + 1);
    else if (cell.column == 1)
        std::snprintf(cell.text, sizeof cell.text, "%s %d", kNames[kind], patch / kKindCount + 1);
    else
        std::snprintf(cell.text, sizeof cell.text, "%s", kKinds[kind]);
}

} // namespace

int PatchTable::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    if (message != static_cast<int>(WM_GETDISPLAYTEXT))
        return CListCtrl::MessageMap(message, wParam, lParam);
    CellText(*reinterpret_cast<LV_DISPTEXT*>(lParam));
    return 1;
}

void PatchTable::Fill() {
    InsertColumn(0, "No.", 0, 44);
    InsertColumn(1, "Patch", 0, 110);
    InsertColumn(2, "Kind", 0, 66);
    SetRedraw(FALSE);
    for (int i = 0; i < kPatches; ++i)
        InsertItem(LVIF_PARAM, i, "", 0, 0, 0, static_cast<LPARAM>(i));
    SetRedraw(TRUE);
}
