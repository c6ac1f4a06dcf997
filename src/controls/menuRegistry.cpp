#include "controls/menuRegistry.h"

#include <unordered_map>
#include <vector>

#include <QtCore/QCoreApplication>
#include <QtGui/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include "controls/CWndMenuDelegate.h"
#include "controls/menuActions.h"
#include "controls/menuState.h"
#include "platform/NativeApplication.h"
#include "platform/eventboundary.h"
#include "wnd/NativeWindow.h"
#include "wnd/views.h"

namespace vm {
namespace {

constexpr char kPrepared[] = "vmcorePrepared";

struct MenuRecord {
    CWndMenuDelegate* delegate = nullptr;
    std::vector<CWndMenuDelegate*> holders;
    bool kept = false;
};

// Leaked: static CWnd objects release their menus at exit.
std::unordered_map<const QMenu*, MenuRecord>& Records() {
    static auto* const s_records = new std::unordered_map<const QMenu*, MenuRecord>;
    return *s_records;
}

void MenuWasFreed(const QMenu* menu) {
    const auto found = Records().find(menu);
    if (found == Records().end()) return;
    const std::vector<CWndMenuDelegate*> holders = std::move(found->second.holders);
    Records().erase(found);
    for (CWndMenuDelegate* holder : holders) holder->menuWasFreed();
}

void ItemsAreAboutToShow(QMenu* menu) {
    AtEventBoundary([menu] {
        for (QAction* item : menu->actions()) UpdateItem(menu, item);
    });
}

void MenuDidClose(QMenu* menu) {
    AtEventBoundary([menu] {
        const SenderScope sender(Sender::Menu);
        if (CWndMenuDelegate* delegate = DelegateOf(menu)) delegate->menuDidClose(menu);
    });
}

MenuRecord& RecordOf(QMenu* menu) {
    const auto [entry, isNew] = Records().try_emplace(menu);
    if (!isNew) return entry->second;
    QObject::connect(menu, &QObject::destroyed, [menu] { MenuWasFreed(menu); });
    QObject::connect(menu, &QMenu::aboutToShow, menu, [menu] { ItemsAreAboutToShow(menu); });
    QObject::connect(menu, &QMenu::aboutToHide, menu, [menu] { MenuDidClose(menu); });
    return entry->second;
}

// A toolkit item with a check mark toggles it when chosen; ours show what the update said.
void UndoToggle(QAction* item) {
    if (item->isCheckable()) item->setChecked(!item->isChecked());
}

void ItemWasChosen(QAction* item) {
    UndoToggle(item);
    const MenuActionTarget target = Menus().actionTarget;
    if (!target || !*MenuActionOf(item)) return;
    AtEventBoundary([=] {
        const SenderScope sender(Sender::Menu);
        target(item);
    });
}

bool ToolkitIsUp() {
    return QCoreApplication::instance() && !QCoreApplication::closingDown();
}

// Whether some other menu shows this one.
bool IsSubMenu(const QMenu* menu) {
    return menu->parent() != nullptr;
}

// Frees later: the menu may be the one whose item is being handled.
void FreeMenu(QMenu* menu) {
    menu->hide();
    menu->deleteLater();
}

void FreeUnlessHeld(QMenu* menu) {
    const auto found = Records().find(menu);
    const bool isHeld =
        found != Records().end() && (found->second.kept || !found->second.holders.empty());
    if (!isHeld && !IsSubMenu(menu)) FreeMenu(menu);
}

// The menu bars that show the items of this menu: those of the windows, if it is the main menu.
std::vector<QMenuBar*> BarsOf(const QMenu* menu) {
    std::vector<QMenuBar*> bars;
    if (menu != Menus().mainMenu) return bars;
    for (NativeWindow* window : NativeApplication::Shared().Windows())
        if (window->MenuBar()) bars.push_back(window->MenuBar());
    return bars;
}

} // namespace

void AssignDelegate(QMenu* menu, CWndMenuDelegate* delegate) {
    if (!menu) return;
    RecordOf(menu).delegate = delegate;
    for (QAction* item : menu->actions()) {
        PrepareItem(item);
        AssignDelegate(item->menu(), delegate);
    }
}

CWndMenuDelegate* DelegateOf(const QMenu* menu) {
    const auto found = Records().find(menu);
    return found == Records().end() ? nullptr : found->second.delegate;
}

void UpdateItem(QMenu* menu, QAction* item) {
    const SenderScope sender(Sender::Menu);
    if (CWndMenuDelegate* delegate = DelegateOf(menu))
        delegate->updateItem(menu, item, static_cast<int>(menu->actions().indexOf(item)), false);
}

void ForgetDelegate(const CWndMenuDelegate* delegate) {
    for (auto& [menu, record] : Records())
        if (record.delegate == delegate) record.delegate = &ApplicationMenuDelegate();
}

void HoldMenu(QMenu* menu, CWndMenuDelegate* holder) {
    RecordOf(menu).holders.push_back(holder);
}

void LetGoOfMenu(QMenu* menu, const CWndMenuDelegate* holder) {
    const auto found = Records().find(menu);
    if (found == Records().end()) return;
    auto& holders = found->second.holders;
    const auto entry = std::find(holders.begin(), holders.end(), holder);
    if (entry != holders.end()) holders.erase(entry);
}

void ReleaseMenu(QMenu* menu, const CWndMenuDelegate* holder) {
    LetGoOfMenu(menu, holder);
    if (ToolkitIsUp()) FreeUnlessHeld(menu);
}

void KeepMenu(QMenu* menu) {
    RecordOf(menu).kept = true;
}

void InsertItem(QMenu* menu, QAction* before, QAction* item) {
    if (QMenu* sub = item->menu())
        sub->setParent(menu, sub->windowFlags());
    else
        item->setParent(menu);
    menu->insertAction(before, item);
    for (QMenuBar* bar : BarsOf(menu)) bar->insertAction(before, item);
}

void RemoveItem(QMenu* menu, QAction* item) {
    QMenu* sub = item->menu();
    menu->removeAction(item);
    for (QMenuBar* bar : BarsOf(menu)) bar->removeAction(item);
    if (sub && sub->parent() == menu) {
        sub->setParent(nullptr, sub->windowFlags());
        FreeUnlessHeld(sub);
    } else if (!sub && item->parent() == menu) {
        item->deleteLater();
    }
}

void SetItemTag(QAction* item, int tag) {
    item->setProperty(kTagProperty, tag);
}

void SetItemAction(QAction* item, const char* action) {
    item->setProperty("action", QString::fromLatin1(action));
}

void PrepareItem(QAction* item) {
    if (item->property(kPrepared).toBool()) return;
    item->setProperty(kPrepared, true);
    item->setShortcutContext(Qt::WidgetShortcut);
    item->setMenuRole(QAction::NoRole);
    QObject::connect(item, &QAction::triggered, item, [item] { ItemWasChosen(item); });
}

} // namespace vm
