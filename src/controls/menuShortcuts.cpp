// The shortcuts of the main menu's items. The toolkit shows them; the library acts on them, in
// every window and whether or not a menu was ever opened: the item's state is asked first.
#include <unordered_map>

#include <QtGui/QAction>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>

#include "app/appState.h"
#include "controls/menuRegistry.h"
#include "controls/menuState.h"
#include "platform/eventboundary.h"
#include "wnd/NativeWindow.h"
#include "wnd/keyCodes.h"

namespace vm {
namespace {

struct Shortcut {
    QMenu* menu;
    QAction* item;
};

// A key press on its way. Presses that follow each other may be at the same address.
struct Delivery {
    const QKeyEvent* event = nullptr;
    quint64 at = 0;
    bool operator==(const Delivery&) const = default;
};

class MenuShortcuts : public QObject {
public:
    explicit MenuShortcuts(QObject* parent) : QObject(parent) {}

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    bool IsFirstReceiver(const QObject& receiver, const QKeyEvent& event);
    void Rebuild();
    void Collect(QMenu* menu);
    const Shortcut* Find(const QKeyEvent& event);
    bool Act(const QKeyEvent& event);

    std::unordered_map<int, Shortcut> m_byKey;
    QPointer<QMenu> m_mainMenu; // whose items the table has
    bool m_stale = true;
    Delivery m_throughWindow; // the last press that came to a native window
};

constexpr Qt::KeyboardModifiers kMatched =
    Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

int Combined(Qt::KeyboardModifiers modifiers, int key) {
    return static_cast<int>((modifiers & kMatched).toInt()) | key;
}

void MenuShortcuts::Collect(QMenu* menu) {
    for (QAction* item : menu->actions()) {
        if (QMenu* sub = item->menu()) Collect(sub);
        const QKeySequence keys = item->shortcut();
        if (keys.count() == 1 && item->isVisible())
            m_byKey.try_emplace(keys[0].toCombined(), Shortcut{menu, item});
    }
}

void MenuShortcuts::Rebuild() {
    m_byKey.clear();
    m_mainMenu = Menus().mainMenu;
    if (m_mainMenu) Collect(m_mainMenu);
    m_stale = false;
}

// On a keyboard of another script, the Latin letter or digit in the same place.
int LatinKey(const QKeyEvent& event) {
    constexpr int kLastLatin = 0xFF;
    constexpr quint32 kFirstScanCode = 8; // scan codes are the kernel's key codes plus this
    const bool isForeign = event.key() > kLastLatin && event.key() < Qt::Key_Escape;
    if (!isForeign || event.nativeScanCode() <= kFirstScanCode) return event.key();
    const int native =
        NativeKeyFromEvdev(static_cast<int>(event.nativeScanCode() - kFirstScanCode));
    const int latin = VirtualKeyOf(native, 0);
    return latin > Qt::Key_Space ? latin : event.key();
}

// A character that needs Shift on this keyboard ("+") matches without Shift in the shortcut, too.
const Shortcut* MenuShortcuts::Find(const QKeyEvent& event) {
    if (m_stale || m_mainMenu != Menus().mainMenu) Rebuild();
    const int key = LatinKey(event);
    auto found = m_byKey.find(Combined(event.modifiers(), key));
    const bool isSymbol = key < Qt::Key_A || key > Qt::Key_Z;
    if (found == m_byKey.end() && event.modifiers() & Qt::ShiftModifier && isSymbol)
        found = m_byKey.find(Combined(event.modifiers() & ~Qt::ShiftModifier, key));
    return found == m_byKey.end() ? nullptr : &found->second;
}

// A text being edited keeps the keys that edit it.
bool FocusKeepsKey(const QKeyEvent& event) {
    QWidget* focus = QApplication::focusWidget();
    if (!focus) return false;
    QKeyEvent question(QEvent::ShortcutOverride, event.key(), event.modifiers(),
                       event.nativeScanCode(), event.nativeVirtualKey(), event.nativeModifiers(),
                       event.text());
    question.ignore();
    QCoreApplication::sendEvent(focus, &question);
    return question.isAccepted();
}

// A menu, a message box or a dialog keeps all keys while it waits for the user.
bool SomethingIsOpen() {
    return QApplication::activePopupWidget() || QApplication::activeModalWidget();
}

// The windows of a foreign program have shortcuts of their own.
bool IsForForeignWindow() {
    if (!App().isPluginEnvironment) return false;
    const QWidget* focus = QApplication::focusWidget();
    const QWidget* window = focus ? focus->window() : QApplication::activeWindow();
    return !dynamic_cast<const NativeWindow*>(window);
}

bool MenuShortcuts::Act(const QKeyEvent& event) {
    const Shortcut* match = Find(event);
    if (!match || IsForForeignWindow() || SomethingIsOpen() || FocusKeepsKey(event)) return false;
    const QPointer<QAction> item = match->item; // the update may change menu and table
    bool wasTriggered = false;
    AtEventBoundary([&] {
        UpdateItem(match->menu, item);
        wasTriggered = item && item->isEnabled();
        if (wasTriggered) item->trigger();
    });
    return wasTriggered;
}

// The user's press comes to the native window, then to the widget that has the focus, and climbs
// from there until a widget takes it: the item is asked once. A press that a program sends to a
// widget begins there.
bool MenuShortcuts::IsFirstReceiver(const QObject& receiver, const QKeyEvent& event) {
    const Delivery delivery{&event, event.timestamp()};
    if (receiver.isWindowType()) {
        m_throughWindow = delivery;
        return true;
    }
    if (!receiver.isWidgetType() || delivery == m_throughWindow) return false;
    const QWidget* focus = QApplication::focusWidget();
    return &receiver == focus || !static_cast<const QWidget&>(receiver).isAncestorOf(focus);
}

bool MenuShortcuts::eventFilter(QObject* receiver, QEvent* event) {
    switch (event->type()) {
    case QEvent::ActionAdded:
    case QEvent::ActionChanged:
    case QEvent::ActionRemoved:
        m_stale = true;
        return false;
    case QEvent::KeyPress: {
        const auto& press = *static_cast<QKeyEvent*>(event);
        return IsFirstReceiver(*receiver, press) && Act(press);
    }
    default:
        return false;
    }
}

} // namespace

void InstallMenuShortcuts() {
    static QPointer<MenuShortcuts> s_filter;
    if (s_filter || !QCoreApplication::instance()) return;
    s_filter = new MenuShortcuts(QCoreApplication::instance());
    QCoreApplication::instance()->installEventFilter(s_filter);
}

} // namespace vm
