#include <vmcore/controls/CMenu.h>

#include <QtGui/QAction>
#include <QtGui/QIcon>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>

#include <vmcore/gdi/CBitmap.h>
#include <vmcore/wnd/CWnd.h>

#include "controls/CWndMenuDelegate.h"
#include "controls/interfaceFile.h"
#include "controls/menuActions.h"
#include "controls/menuRegistry.h"
#include "controls/menuState.h"
#include "core/log.h"
#include "platform/Image.h"
#include "platform/eventboundary.h"
#include "platform/runloop.h"

namespace {

QString MenuText(const char* text) {
    return text ? QString::fromUtf8(text) : QString();
}

QAction* CommandItem(const char* text, std::uintptr_t id) {
    auto* item = new QAction(MenuText(text));
    vm::SetItemTag(item, static_cast<int>(id));
    vm::SetItemAction(item, "winCmd");
    vm::PrepareItem(item);
    return item;
}

QAction* SubMenuItem(QMenu* sub, const char* text) {
    if (!sub) return new QAction(MenuText(text)); // does nothing: it is no command
    sub->setTitle(MenuText(text));
    return sub->menuAction();
}

QAction* SeparatorItem() {
    auto* item = new QAction;
    item->setSeparator(true);
    return item;
}

void SetMark(QAction* item, bool checked) {
    if (checked) item->setCheckable(true);
    item->setChecked(checked);
}

// How InsertMenu sets the state of a new item.
void SetupItem(QAction* item, UINT flags) {
    item->setEnabled((flags & MF_ENABLED_INSERT) != 0);
    SetMark(item, (flags & MF_CHECKED) != 0);
}

QAction* ItemAt(const QMenu* menu, std::uint64_t index) {
    const QList<QAction*> items = menu->actions();
    return index < static_cast<std::uint64_t>(items.size()) ? items[static_cast<qsizetype>(index)]
                                                            : nullptr;
}

QAction* ItemWithTag(const QMenu* menu, UINT id) {
    for (QAction* item : menu->actions())
        if (vm::MenuItemTag(item) == static_cast<int>(id)) return item;
    return nullptr;
}

QAction* NewItem(UINT flags, std::uintptr_t idOrMenu, const char* text) {
    QAction* item = flags & MF_POPUP ? SubMenuItem(reinterpret_cast<QMenu*>(idOrMenu), text)
                                     : CommandItem(text, idOrMenu);
    item->setEnabled((flags & (MF_DISABLED | MF_GRAYED)) == 0);
    SetMark(item, (flags & MF_CHECKED) != 0);
    return item;
}

QIcon IconOf(const CBitmap* bitmap) {
    if (!bitmap || !bitmap->m_hObject) return {};
    const vm::Image* image = static_cast<tagBITMAPRECORD*>(bitmap->m_hObject)->bmBits;
    return image ? QIcon(QPixmap::fromImage(image->Pixels())) : QIcon();
}

// Binds a delegate to the window that a pop-up menu is tracked for.
class PopupTracking {
public:
    PopupTracking(CWndMenuDelegate& delegate, CWnd* owner) : m_delegate(delegate) {
        m_delegate.wnd = owner;
        m_outer = std::exchange(m_delegate.isGone, &m_isGone);
        ++vm::Menus().trackPopupMenu;
    }
    ~PopupTracking() {
        --vm::Menus().trackPopupMenu;
        if (m_isGone) {
            if (m_outer) *m_outer = true;
            return;
        }
        m_delegate.wnd = nullptr;
        m_delegate.isGone = m_outer;
    }
    PopupTracking(const PopupTracking&) = delete;
    PopupTracking& operator=(const PopupTracking&) = delete;

private:
    CWndMenuDelegate& m_delegate;
    bool* m_outer;
    bool m_isGone = false; // the chosen command may destroy the CMenu
};

void BringToFront(QWidget* window) {
    if (window->isMinimized()) window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    if (window->isActiveWindow()) return;
    window->raise();
    window->activateWindow();
}

void MakeFirstResponder(QWidget* view) {
    BringToFront(view->window());
    view->setFocus();
}

void CloseOpenMenus() {
    while (QWidget* popup = QApplication::activePopupWidget())
        if (!popup->close()) return;
}

// Null while there is no application object: the toolkit cannot make a menu then.
HMENU NewMenu(const QString& title) {
    return QApplication::instance() ? new QMenu(title) : nullptr;
}

} // namespace

CMenu::CMenu() : m_hMenu(nullptr), m_delegate(new CWndMenuDelegate(this)) {}

CMenu::~CMenu() {
    DestroyMenu();
    delete m_delegate;
}

void CMenu::Hold(HMENU menu) {
    DestroyMenu();
    m_hMenu = menu;
    m_delegate->menuRef = menu;
    if (!menu) return;
    vm::HoldMenu(menu, m_delegate);
    vm::AssignDelegate(menu, m_delegate);
}

BOOL CMenu::CreatePopupMenu() {
    Hold(::CreatePopupMenu());
    return m_hMenu != nullptr;
}

BOOL CMenu::LoadMenu(UINT id) {
    DestroyMenu();
    Hold(vm::LoadMenuFile(vm::Format("MENU_%d", static_cast<int>(id))));
    return m_hMenu != nullptr;
}

BOOL CMenu::LoadMenu(const char* resource) {
    return LoadMenu(static_cast<UINT>(reinterpret_cast<std::uintptr_t>(resource)));
}

BOOL CMenu::Attach(HMENU menu) {
    if (menu != m_hMenu)
        Hold(menu);
    else
        vm::AssignDelegate(menu, m_delegate);
    return TRUE;
}

HMENU CMenu::Detach() {
    HMENU menu = std::exchange(m_hMenu, nullptr);
    m_delegate->menuRef = nullptr;
    if (menu) vm::LetGoOfMenu(menu, m_delegate);
    return menu;
}

BOOL CMenu::DestroyMenu() {
    HMENU menu = std::exchange(m_hMenu, nullptr);
    m_delegate->menuRef = nullptr;
    if (!menu) return FALSE;
    vm::ReleaseMenu(menu, m_delegate);
    return TRUE;
}

HMENU CMenu::GetSafeHmenu() const {
    return m_hMenu;
}

BOOL CMenu::AppendMenu(UINT flags, std::uintptr_t idOrMenu, const char* text) {
    if (!m_hMenu) return FALSE;
    VMMenuItem(m_hMenu, flags, idOrMenu, text);
    return TRUE;
}

BOOL CMenu::InsertMenu(UINT position, UINT flags, std::uintptr_t id, const char* text) {
    if (!m_hMenu) return FALSE;
    QAction* item = CommandItem(text, id);
    vm::InsertItem(m_hMenu, ItemAt(m_hMenu, position), item);
    SetupItem(item, flags);
    return TRUE;
}

BOOL CMenu::InsertMenu(UINT position, UINT flags, std::uintptr_t id, const CBitmap* bitmap) {
    if (!InsertMenu(position, flags, id, "")) return FALSE;
    const UINT last = GetMenuItemCount() - 1;
    ItemAt(m_hMenu, std::min(position, last))->setIcon(IconOf(bitmap));
    return TRUE;
}

BOOL CMenu::DeleteMenu(UINT position, UINT flags) {
    if (!m_hMenu) return FALSE;
    if (flags & MF_BYPOSITION) return RemoveMenu(position, flags);
    QAction* item = ItemWithTag(m_hMenu, position);
    if (item) vm::RemoveItem(m_hMenu, item);
    return item != nullptr;
}

BOOL CMenu::RemoveMenu(UINT index, UINT) {
    if (!m_hMenu) return FALSE;
    if (QAction* item = ItemAt(m_hMenu, index)) vm::RemoveItem(m_hMenu, item);
    return TRUE;
}

UINT CMenu::GetMenuItemCount() const {
    return m_hMenu ? static_cast<UINT>(m_delegate->numberOfItemsInMenu(m_hMenu)) : 0;
}

CMenu* CMenu::GetSubMenu(int index) const {
    static auto* const s_temporary = new CMenu;
    QAction* item = m_hMenu && index >= 0 ? ItemAt(m_hMenu, static_cast<unsigned>(index)) : nullptr;
    if (!item || !item->menu()) return nullptr;
    s_temporary->Attach(item->menu());
    return s_temporary;
}

BOOL CMenu::LoadSubMenus(HMENU menu) {
    return menu != nullptr;
}

void CMenu::DeleteSubMenus() {}

BOOL CMenu::TrackPopupMenu(UINT, int x, int y, CWnd* owner, const RECT*) {
    if (!owner || !m_hMenu || !IsWindow(owner->view) || vm::LoopsAreEnding()) return FALSE;
    ReleaseCapture();
    MakeFirstResponder(owner->view);
    // The position in the owner, scaled, and back to the screen is the position given.
    QAction* chosen = nullptr;
    {
        const PopupTracking tracking(*m_delegate, owner);
        const vm::ClosedWithLoops closing(CloseOpenMenus);
        chosen = m_hMenu->exec(QPoint(x, y));
    }
    vm::RethrowKept();
    return chosen != nullptr;
}

HMENU CreateMenu() {
    return NewMenu(QStringLiteral("Popup Menu"));
}

HMENU CreatePopupMenu() {
    return NewMenu(QStringLiteral("popup"));
}

int GetCommandID(HICommand&, bool*) {
    return 0;
}

HMENU LoadMenu(HINSTANCE, const char*) {
    return nullptr;
}

void VMMenuItem(HMENU menu, UINT flags, std::uintptr_t idOrMenu, const char* text) {
    if (!menu) return;
    vm::InsertItem(menu, nullptr,
                   flags & MF_SEPARATOR ? SeparatorItem() : NewItem(flags, idOrMenu, text));
}
