// What a dialog itself lacks or has differently: its frame, its place, its font.
#include <algorithm>
#include <array>
#include <string_view>

#include "core/ascii.h"
#include "rc/styleTable.h"
#include "rc/winStyles.h"
#include "rc/writeDialog.h"

namespace vm::rc {
namespace {

using namespace win;

constexpr int kNormal = 400, kBold = 700;
constexpr int kSymbols = 2; // SYMBOL_CHARSET

constexpr StyleNote kNotes[] = {
    // A child's are quiet.
    {kMinimizeBox, "without a minimize box", "WS_MINIMIZEBOX"},
    {kMaximizeBox, "without a maximize box", "WS_MAXIMIZEBOX"},
    {kDsAbsAlign, "centred, not at its own place"},
    {kDsCenterMouse, "centred over the window in use, not at the mouse"},
    // Of any dialog.
    {kVScroll | kHScroll, "without scroll bars"},
    {kDsSysModal, "blocks its own program only"},
    {kDsContextHelp, "without context help"},
    {kDsUsePixels, "its numbers are taken for dialog units"},
};
constexpr Style kQuiet = kPopup | kVisible | kClipSiblings | kClipChildren | kCaption | kSysMenu |
                         kThickFrame | kDs3dLook | kDsFixedSys | kDsNoFailCreate | kDsLocalEdit |
                         kDsSetFont | kDsModalFrame | kDsNoIdleMsg | kDsSetForeground | kDsControl |
                         kDsCenter;

// Of a page or another window inside of one: sheets and frames enable and place it.
constexpr Style kChildQuiet = kChild | kDisabled | kGroup | kTabStop | kDsAbsAlign | kDsCenterMouse;

constexpr StyleNote kExNotes[] = {
    {kExContextHelp, "without context help"},
    {kExTopmost | kExToolWindow | kExTransparent,
     "an ordinary window: neither on top nor small nor transparent"},
    {kExAppWindow, "in the task bar only while no window owns it"},
    {kExLayoutRtl | kExRight | kExRtlReading, "not laid out from right to left"},
    {kExAcceptFiles, "the program calls DragAcceptFiles"},
};
constexpr StyleTable kExtended = {
    "WS_EX_", kExModalFrame | kExNoParentNotify | kExWindowEdge | kExControlParent | kExComposited,
    kExNotes, ~Style{0}};

void NoteFrame(Notes& notes, Style style) {
    if ((style & kCaption) != kCaption)
        notes.push_back("with a title bar (no WS_CAPTION)");
    else if (!(style & kSysMenu))
        notes.push_back("with a close button (no WS_SYSMENU)");
}

void NotePlace(Notes& notes, const Dialog& dialog, bool isChild) {
    const Rect& rect = dialog.rect;
    if ((rect.x == 0 && rect.y == 0) || (dialog.style & (kDsCenter | kDsCenterMouse | kDsAbsAlign)))
        return;
    const char* const where = isChild ? "at its parent's origin" : "centred";
    notes.push_back(std::string(where) + ", not at " + std::to_string(rect.x) + "," +
                    std::to_string(rect.y));
}

void NoteFont(Notes& notes, const Font& font) {
    if (font.weight != 0 && font.weight != kNormal && font.weight != kBold)
        notes.push_back("the font's weight is " + std::string(IsBold(font) ? "bold" : "normal") +
                        ", not " + std::to_string(font.weight));
    if (font.charset == kSymbols) notes.push_back("its letters stay letters (SYMBOL_CHARSET)");
}

} // namespace

bool IsInterfaceFace(const std::string& face) {
    static constexpr std::array<std::string_view, 9> kFaces = {
        "ms shell dlg", "ms shell dlg 2",       "ms sans serif", "tahoma",      "segoe ui",
        "system",       "microsoft sans serif", "helv",          "ms ui gothic"};
    return std::find(kFaces.begin(), kFaces.end(), AsciiLowered(face)) != kFaces.end();
}

bool IsBold(const Font& font) {
    constexpr int kLightestBold = 600;
    return font.weight >= kLightestBold;
}

Notes NotesOf(const Dialog& dialog) {
    Notes notes;
    const bool isChild = (dialog.style & kChild) != 0;
    if (!HasNumber(dialog.head.id))
        notes.push_back("a dialog with a name cannot be loaded by number");
    if (dialog.menu) notes.push_back("without its menu");
    if (dialog.windowClass) notes.push_back("without its window class");
    if (dialog.helpId) notes.push_back("the help number has no counterpart");
    if (!isChild) NoteFrame(notes, dialog.style);
    NotePlace(notes, dialog, isChild);
    NoteStyle(notes, dialog.style, {"DS_", kQuiet | (isChild ? kChildQuiet : 0), kNotes});
    NoteStyle(notes, dialog.exStyle, kExtended);
    NoteFont(notes, dialog.font);
    return notes;
}

} // namespace vm::rc
