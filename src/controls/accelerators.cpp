// Accelerator tables: arrays that the host supplies, searched on every key press.
#include "controls/accelerators.h"

#include <vmcore/wnd/CWnd.h>

#include "wnd/nativeEvents.h"

namespace vm {
namespace {

constexpr std::int32_t kEndOfTable = -1;

int UpperCase(int character) {
    return character >= 'a' && character <= 'z' ? character - 'a' + 'A' : character;
}

bool Fits(const AccelEntry& entry, unsigned modifiers) {
    const int command = (modifiers & kCommandKey) != 0;
    const int option = (modifiers & (kOptionKey | kRightOptionKey)) != 0;
    const int shift = (modifiers & (kShiftKey | kRightShiftKey)) != 0;
    return entry.commandKey == command && entry.optionKey == option && entry.shiftKey == shift;
}

} // namespace

int AcceleratorKey(WPARAM wParam, LPARAM lParam) {
    return UpperCase(static_cast<int>(wParam)) | static_cast<int>((lParam >> 8) & 0xFF00);
}

const AccelEntry* MatchAccelerator(int key, unsigned modifiers, const AccelEntry* table) {
    for (; table->command != kEndOfTable; ++table)
        if (table->key == key && Fits(*table, modifiers)) return table;
    return nullptr;
}

} // namespace vm

HACCEL LoadAccelerators(HINSTANCE, const char*) {
    return nullptr;
}

BOOL TranslateAccelerator(HWND window, const AccelEntry* table, MSG* msg) {
    if (!window || !table || !msg) return FALSE;
    CWnd* wnd = GetControlReference(window);
    if (!wnd) return FALSE;
    const int key = vm::AcceleratorKey(msg->wParam, msg->lParam);
    const AccelEntry* entry = vm::MatchAccelerator(key, vm::CurrentModifiers(), table);
    if (!entry) return FALSE;
    wnd->SendMessage(WM_COMMAND, static_cast<WPARAM>(entry->command), 0);
    return TRUE;
}
