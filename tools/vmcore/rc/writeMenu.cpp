#include "rc/writeMenu.h"

#include <QtGui/QKeySequence>

#include "rc/uiXml.h"

namespace vm::rc {
namespace {

constexpr int kAppExit = 0xE141;
constexpr int kAppAbout = 0xE140;
constexpr int kAlwaysEnabled = 1;
constexpr int kDeepest = 24; // of 64 elements in each other that a file may have

bool IsCommand(const Id& id, int number, const char* symbol) {
    return id.number == number || id.symbol == symbol;
}

// Resource editors number pop-up menus 65535, or 0.
bool IsNumbered(const Id& id) {
    return id.number && *id.number > 0 && *id.number != 65535;
}

std::string BeforeTab(const std::string& text) {
    return text.substr(0, text.find('\t'));
}

class MenuXml {
public:
    MenuXml(const Menu& menu, const std::string& name, const Shortcuts& shortcuts)
        : m_menu(menu), m_shortcuts(shortcuts), m_xml(name), m_name(name) {}

    std::string Text() {
        m_xml.Begin("widget", {{"class", "QMenuBar"}, {"name", m_name}});
        WriteItems(m_menu.items, 1);
        for (const auto& [name, item] : m_actions) WriteAction(name, *item);
        m_xml.End();
        return m_xml.Finish();
    }

private:
    // First what the menu holds, then its order.
    void WriteItems(const std::vector<MenuItem>& items, int depth) {
        std::vector<std::string> order;
        for (const MenuItem& item : items) order.push_back(Name(item));
        for (std::size_t i = 0; i < items.size(); ++i)
            if (items[i].kind == MenuEntry::Popup) WritePopup(items[i], order[i], depth);
        for (const std::string& name : order) m_xml.Empty("addaction", {{"name", name}});
    }

    void WritePopup(const MenuItem& popup, const std::string& name, int depth) {
        m_xml.Begin("widget", {{"class", "QMenu"}, {"name", name}});
        m_xml.Write(UiText("title", BeforeTab(popup.text)));
        if (popup.grayed) m_xml.Write(UiBool("enabled", false));
        if (depth < kDeepest) WriteItems(popup.items, depth + 1);
        m_xml.End();
    }

    std::string Name(const MenuItem& item) {
        if (item.kind == MenuEntry::Separator) return "separator";
        const std::string number = std::to_string(++m_count);
        if (item.kind == MenuEntry::Popup) return "menu" + number;
        m_actions.emplace_back("item" + number, &item);
        return m_actions.back().first;
    }

    void WriteAction(const std::string& name, const MenuItem& item) {
        m_xml.Begin("action", {{"name", name}});
        if (item.checked || item.radio) m_xml.Write(UiBool("checkable", true));
        if (item.checked) m_xml.Write(UiBool("checked", true));
        if (item.grayed) m_xml.Write(UiBool("enabled", false));
        m_xml.Write(UiText("text", BeforeTab(item.text)));
        if (const std::string keys = KeysFor(item); !keys.empty())
            m_xml.Write(UiText("shortcut", keys));
        if (item.id.number) m_xml.Write(UiTag(*item.id.number));
        if (IsCommand(item.id, kAppExit, "ID_APP_EXIT"))
            m_xml.Write(UiDynamic("action", "terminate"));
        else if (IsCommand(item.id, kAppAbout, "ID_APP_ABOUT"))
            m_xml.Write(UiDynamic("action", "about"));
        m_xml.End();
    }

    std::string KeysFor(const MenuItem& item) const {
        const auto found = item.id.number ? m_shortcuts.find(*item.id.number) : m_shortcuts.end();
        return found != m_shortcuts.end() ? found->second : KeysOf(item.text);
    }

    const Menu& m_menu;
    const Shortcuts& m_shortcuts;
    UiXml m_xml;
    std::string m_name;
    int m_count = 0;
    std::vector<std::pair<std::string, const MenuItem*>> m_actions;
};

Notes NotesOf(const MenuItem& item) {
    Notes notes;
    const auto note = [&notes](bool applies, const char* text) {
        if (applies) notes.push_back(text);
    };
    const bool isItem = item.kind == MenuEntry::Item;
    note(isItem && !item.id.number, "no number: it does nothing");
    note(isItem && item.id.number == 0, "the number 0 is no command");
    note(isItem && item.id.number == kAlwaysEnabled, "the number 1 is always enabled");
    note(isItem && item.text.find('\t') != std::string::npos && KeysOf(item.text).empty(),
         "without the key behind the tab, which is not known");
    note(item.radio, "checked with a check mark");
    note(item.isDefault, "not bold");
    note(item.column, "no new column");
    note(item.help, "not at the right end of the bar");
    note(item.kind == MenuEntry::Popup && (item.checked || IsNumbered(item.id)),
         "a popup has neither number nor check mark");
    return notes;
}

std::string KindOf(const MenuItem& item) {
    const char* const kind = item.kind == MenuEntry::Item    ? "MENUITEM"
                             : item.kind == MenuEntry::Popup ? "POPUP"
                                                             : "SEPARATOR";
    if (item.kind == MenuEntry::Item) return Described(kind, item.id);
    return item.text.empty() ? kind : kind + (" \"" + BeforeTab(item.text) + "\"");
}

void SayItems(const std::vector<MenuItem>& items, const std::string& file, int depth,
              Output& output) {
    for (const MenuItem& item : items) {
        output.Say(item.place, KindOf(item), file, NotesOf(item));
        if (depth < kDeepest)
            SayItems(item.items, file, depth + 1, output);
        else if (!item.items.empty())
            output.LeaveOut(item.place, KindOf(item), "its items are nested too deeply");
    }
}

} // namespace

std::string KeysOf(const std::string& text) {
    const std::size_t tab = text.find('\t');
    if (tab == std::string::npos) return {};
    const QString name = QString::fromStdString(text.substr(tab + 1)).trimmed();
    const QKeySequence keys = QKeySequence::fromString(name, QKeySequence::PortableText);
    if (keys.count() != 1 || keys[0].key() == Qt::Key_unknown) return {};
    return keys.toString(QKeySequence::PortableText).toStdString();
}

void WriteMenu(const Menu& menu, bool isMainMenu, const Shortcuts& shortcuts, Output& output) {
    const std::string name = "MENU_" + FileId(menu.head.id);
    const std::string file = name + ".ui";
    if (!output.Add(file, MenuXml(menu, name, {}).Text()))
        return output.LeaveOut(menu.head.place, Described(menu.head),
                               file + " is there already, of an earlier menu");
    Notes notes;
    if (!HasNumber(menu.head.id)) notes.push_back("a menu with a name cannot be loaded by number");
    std::string where = file;
    if (isMainMenu && output.Add("MainMenu.ui", MenuXml(menu, "MainMenu", shortcuts).Text()))
        where += ", MainMenu.ui";
    output.Say(menu.head.place, Described(menu.head), where, notes);
    SayItems(menu.items, file, 1, output);
}

} // namespace vm::rc
