// MENU and MENUEX.
#include "rc/limits.h"
#include "rc/parser.h"

namespace vm::rc {
namespace {

constexpr std::uint32_t kBitmap = 0x4, kColumn = 0x60, kOwnerDraw = 0x100, kRadio = 0x200,
                        kSeparator = 0x800, kRightOrder = 0x2000, kRight = 0x4000;
constexpr std::uint32_t kGrayed = 0x3, kChecked = 0x8, kDefault = 0x1000;

} // namespace

void Parser::ParseMenu(Head head, bool extended) {
    Menu menu;
    menu.head = std::move(head);
    menu.extended = extended;
    CommonStatements(menu.head);
    menu.items = MenuItems(extended, 1);
    m_script.resources.emplace_back(std::move(menu));
}

std::vector<MenuItem> Parser::MenuItems(bool extended, int depth) {
    if (depth > kDeepest) m_reader.Fail(m_reader.Peek(), "menus are nested too deeply");
    std::vector<MenuItem> items;
    m_reader.Begin();
    while (!m_reader.TakeEnd()) items.push_back(MenuEntryAt(extended, depth));
    return items;
}

MenuItem Parser::MenuEntryAt(bool extended, int depth) {
    MenuItem item;
    item.place = m_reader.Here();
    const bool isPopup = m_reader.TakeWord("POPUP");
    if (!isPopup && !m_reader.TakeWord("MENUITEM")) m_reader.Expected("MENUITEM, POPUP or END");
    if (isPopup) {
        item.kind = MenuEntry::Popup;
        item.text = m_reader.Text();
    } else if (m_reader.TakeWord("SEPARATOR") || m_reader.TakeWord("MFT_SEPARATOR")) {
        item.kind = MenuEntry::Separator;
        return item;
    } else {
        item.text = m_reader.Text();
    }
    if (extended)
        ExtendedItem(item);
    else
        PlainItem(item);
    if (isPopup) item.items = MenuItems(extended, depth + 1);
    return item;
}

void Parser::PlainItem(MenuItem& item) {
    m_reader.TakeComma();
    if (item.kind == MenuEntry::Item && !m_reader.IsWord("MFT_SEPARATOR")) {
        item.id = m_reader.NumberId();
        m_reader.TakeComma();
    }
    MenuOptions(item);
    const bool isNothing = item.text.empty() && item.id.number == 0;
    if (isNothing && item.kind == MenuEntry::Item) item.kind = MenuEntry::Separator;
}

void Parser::MenuOptions(MenuItem& item) {
    while (TakeMenuOption(item)) m_reader.TakeComma();
}

bool Parser::TakeMenuOption(MenuItem& item) {
    const Place place = m_reader.Here();
    if (m_reader.TakeWord("CHECKED")) {
        item.checked = true;
    } else if (m_reader.TakeWord("GRAYED") || m_reader.TakeWord("INACTIVE")) {
        item.grayed = true;
    } else if (m_reader.TakeWord("MENUBREAK") || m_reader.TakeWord("MENUBARBREAK")) {
        item.column = true;
    } else if (m_reader.TakeWord("HELP")) {
        item.help = true;
    } else if (item.kind != MenuEntry::Popup && m_reader.TakeWord("MFT_SEPARATOR")) {
        item.kind = MenuEntry::Separator;
    } else if (m_reader.TakeWord("OWNERDRAW") || m_reader.TakeWord("BITMAP")) {
        LeftOut(place, "option of MENUITEM " + item.text, "items are drawn by the desktop");
    } else {
        return false;
    }
    return true;
}

// Each of number, type and state may be left out with its comma, or without it. The options of a MENU are
// no mistake in a script that has been made a MENUEX by hand.
void Parser::ExtendedItem(MenuItem& item) {
    m_reader.TakeComma();
    const bool hasId = m_reader.AtNumber() && !m_reader.IsWord("MFT_SEPARATOR");
    if (hasId) item.id = m_reader.NumberId();
    const bool isType = m_reader.TakeComma() || m_reader.IsWord("MFT_SEPARATOR");
    if (isType && m_reader.AtNumber()) MenuType(item, m_reader.Bits());
    if (m_reader.TakeComma() && m_reader.AtNumber()) MenuState(item, m_reader.Bits());
    if (m_reader.TakeComma() && m_reader.AtNumber()) {
        const Place place = m_reader.Here();
        if (m_reader.Bits() != 0)
            LeftOut(place, "help number of POPUP " + item.text, "menus have no help of their own");
    }
    MenuOptions(item);
}

void Parser::MenuType(MenuItem& item, std::uint32_t type) {
    if (type & kSeparator && item.kind == MenuEntry::Item) item.kind = MenuEntry::Separator;
    item.column = (type & kColumn) != 0;
    item.radio = (type & kRadio) != 0;
    item.help = (type & kRight) != 0;
    if (type & (kBitmap | kOwnerDraw | kRightOrder))
        LeftOut(item.place, "type of MENUITEM " + item.text, "items are drawn by the desktop");
}

void Parser::MenuState(MenuItem& item, std::uint32_t state) {
    item.grayed = (state & kGrayed) != 0;
    item.checked = (state & kChecked) != 0;
    item.isDefault = (state & kDefault) != 0;
}

} // namespace vm::rc
