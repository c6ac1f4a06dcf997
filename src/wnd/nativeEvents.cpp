#include "wnd/nativeEvents.h"

#include <chrono>

#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QStyleHints>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QWidget>

#include "wnd/keyCodes.h"

namespace vm {
namespace {

constexpr int kX11KeyOffset = 8; // X key codes are the kernel's plus 8
constexpr double kWheelUnits = 120.0;
constexpr double kMilliseconds = 1000.0;

unsigned ModifiersOf(Qt::KeyboardModifiers modifiers) {
    unsigned bits = 0;
    if (modifiers & Qt::ControlModifier) bits |= kCommandKey;
    if (modifiers & Qt::ShiftModifier) bits |= kShiftKey;
    if (modifiers & Qt::AltModifier) bits |= kOptionKey;
    if (modifiers & Qt::MetaModifier) bits |= kControlKey;
    return bits;
}

unsigned BitsOf(Qt::MouseButtons buttons) {
    unsigned bits = 0;
    if (buttons & Qt::LeftButton) bits |= kLeftDown;
    if (buttons & Qt::RightButton) bits |= kRightDown;
    if (buttons & Qt::MiddleButton) bits |= kMiddleDown;
    return bits;
}

std::optional<unsigned> s_replayedButtons; // until the next record is made

// For a record of a native event.
unsigned PressedNow() {
    s_replayedButtons.reset();
    return CurrentButtons();
}

MouseRecord MakeRecord(QPointF position, QPointF screen, int clickCount,
                       Qt::KeyboardModifiers modifiers) {
    const QPoint at(static_cast<int>(position.x()), static_cast<int>(position.y()));
    const QPoint onScreen(static_cast<int>(screen.x()), static_cast<int>(screen.y()));
    return {at.x(),      at.y(), onScreen.x(), onScreen.y(), clickCount, ModifiersOf(modifiers),
            PressedNow()};
}

int NativeCodeOf(const QKeyEvent& event) {
    if (event.nativeScanCode() > kX11KeyOffset) {
        const int code =
            NativeKeyFromEvdev(static_cast<int>(event.nativeScanCode()) - kX11KeyOffset);
        if (code != kUnknownKey) return code;
    }
    return NativeKeyFromQtKey(event.key(), event.modifiers() & Qt::KeypadModifier);
}

bool IsLatin1Keysym(quint32 keysym) {
    return (keysym >= 0x20 && keysym <= 0x7E) || (keysym >= 0xA0 && keysym <= 0xFF);
}

// The character that the key types without modifiers but Shift. The event's text is of no use with
// Ctrl held, so the X key symbol comes first.
int PlainCharacterOf(const QKeyEvent& event) {
    if (IsLatin1Keysym(event.nativeVirtualKey())) return static_cast<int>(event.nativeVirtualKey());
    const int key = event.key();
    if (key == Qt::Key_Escape) return 0x1B;
    if (key >= 0x20 && key <= 0xFF) {
        const QChar character(key);
        return (event.modifiers() & Qt::ShiftModifier ? character : character.toLower()).unicode();
    }
    if (!event.text().isEmpty()) return event.text().at(0).unicode();
    return kUnknownKey;
}

KeyRecord EmptyRecord(const QWidget& view) {
    s_replayedButtons.reset();
    const QPoint mouse = view.mapFromGlobal(QCursor::pos());
    KeyRecord record{};
    record.x = mouse.x();
    record.y = mouse.y();
    return record;
}

struct Click {
    Qt::MouseButton button;
    quint64 milliseconds;
    QPoint screen;
    int count;
};

// The toolkit counts to two and then starts over.
bool Follows(const QMouseEvent& press, const Click& last) {
    if (press.button() != last.button) return false;
    if (press.type() == QEvent::MouseButtonDblClick) return true;
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const QPoint way = press.globalPosition().toPoint() - last.screen;
    return last.count > 1 && way.manhattanLength() <= hints.mouseDoubleClickDistance() &&
           press.timestamp() - last.milliseconds <
               static_cast<quint64>(hints.mouseDoubleClickInterval());
}

} // namespace

MouseRecord RecordOf(const QMouseEvent& event, int clickCount) {
    return MakeRecord(event.position(), event.globalPosition(), clickCount, event.modifiers());
}

MouseRecord RecordOf(const QEnterEvent& event) {
    return MakeRecord(event.position(), event.globalPosition(), 0, event.modifiers());
}

MouseRecord MouseNow(const QWidget& view) {
    const QPoint screen = QCursor::pos();
    return MakeRecord(view.mapFromGlobal(screen), screen, 0, QGuiApplication::keyboardModifiers());
}

WheelRecord RecordOf(const QWheelEvent& event) {
    // With Alt held, X11 turns the wheel's axis; a vertical wheel stays one.
    const int units = event.angleDelta().y()                ? event.angleDelta().y()
                      : event.modifiers() & Qt::AltModifier ? event.angleDelta().x()
                                                            : 0;
    return {units / kWheelUnits, static_cast<int>(event.position().x()),
            static_cast<int>(event.position().y()), ModifiersOf(event.modifiers()), PressedNow()};
}

KeyRecord RecordOf(const QKeyEvent& event, const QWidget& view) {
    KeyRecord record = EmptyRecord(view);
    for (const char32_t character : event.text().toUcs4())
        record.typed.push_back(static_cast<int>(character));
    record.characters = record.typed; // of a key that types several
    if (record.characters.size() < 2) record.characters = {PlainCharacterOf(event)};
    record.nativeCode = NativeCodeOf(event);
    record.modifiers = ModifiersOf(event.modifiers());
    record.seconds = static_cast<double>(event.timestamp()) / kMilliseconds;
    return record;
}

std::vector<KeyRecord> RecordsOf(const QInputMethodEvent& event, const QWidget& view) {
    const std::chrono::duration<double> now = std::chrono::steady_clock::now().time_since_epoch();
    std::vector<KeyRecord> records;
    for (const char32_t character : event.commitString().toUcs4()) {
        if (character > 0xFF) continue; // hosts' text is 8-bit: they would get another character
        KeyRecord record = EmptyRecord(view);
        record.characters = record.typed = {static_cast<int>(character)};
        record.nativeCode = NativeKeyFromQtKey(static_cast<int>(QChar::toUpper(character)), false);
        record.seconds = now.count();
        records.push_back(record);
    }
    return records;
}

MouseButton ButtonOf(const QMouseEvent& event) {
    if (event.button() == Qt::LeftButton) return MouseButton::Left;
    return event.button() == Qt::RightButton ? MouseButton::Right : MouseButton::Other;
}

int ClickCountOf(const QMouseEvent& press) {
    static Click s_last{};
    const bool isDouble = press.type() == QEvent::MouseButtonDblClick;
    const int count = Follows(press, s_last) ? s_last.count + 1 : isDouble ? 2 : 1;
    s_last = {press.button(), press.timestamp(), press.globalPosition().toPoint(), count};
    return count;
}

bool IsSilentKey(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_Meta:
    case Qt::Key_AltGr:
    case Qt::Key_CapsLock:
        return true;
    default:
        return event.type() == QEvent::KeyRelease && event.isAutoRepeat();
    }
}

bool AsksForContextMenu(const QKeyEvent& event) {
    return event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier;
}

FocusStep FocusStepOf(const QKeyEvent& event) {
    if (event.modifiers() & ~Qt::KeyboardModifiers(Qt::ShiftModifier)) return FocusStep::None;
    if (event.key() == Qt::Key_Backtab) return FocusStep::Previous;
    if (event.key() != Qt::Key_Tab) return FocusStep::None;
    return event.modifiers() ? FocusStep::Previous : FocusStep::Next;
}

unsigned CurrentModifiers() {
    return ModifiersInHand().value_or(ModifiersOf(QGuiApplication::keyboardModifiers()));
}

unsigned HeldModifiers() {
    return qGuiApp ? ModifiersOf(QGuiApplication::queryKeyboardModifiers()) : 0;
}

unsigned ModifiersOfEvent(const QEvent* event) {
    const auto* input =
        event && event->isInputEvent() ? static_cast<const QInputEvent*>(event) : nullptr;
    return input ? ModifiersOf(input->modifiers()) : CurrentModifiers();
}

unsigned CurrentButtons() {
    return s_replayedButtons.value_or(BitsOf(QGuiApplication::mouseButtons()));
}

void ReplayButtons(unsigned pressed) {
    s_replayedButtons = pressed;
}

} // namespace vm
