#include "wnd/nativeEvents.h"

#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QWidget>

#include "wnd/keyCodes.h"

namespace vm {
namespace {

constexpr int kX11KeyOffset = 8; // X key codes are the kernel's plus 8
constexpr double kWheelUnits = 120.0;

unsigned ModifiersOf(Qt::KeyboardModifiers modifiers) {
    unsigned bits = 0;
    if (modifiers & Qt::ControlModifier) bits |= kCommandKey;
    if (modifiers & Qt::ShiftModifier) bits |= kShiftKey;
    if (modifiers & Qt::AltModifier) bits |= kOptionKey;
    if (modifiers & Qt::MetaModifier) bits |= kControlKey;
    return bits;
}

// The buttons that are down now, whatever the event says.
unsigned PressedNow() {
    const Qt::MouseButtons buttons = QGuiApplication::mouseButtons();
    unsigned bits = 0;
    if (buttons & Qt::LeftButton) bits |= kLeftDown;
    if (buttons & Qt::RightButton) bits |= kRightDown;
    if (buttons & Qt::MiddleButton) bits |= kMiddleDown;
    return bits;
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
    const QPoint mouse = view.mapFromGlobal(QCursor::pos());
    KeyRecord record;
    record.characters.push_back(PlainCharacterOf(event));
    if (!event.text().isEmpty()) record.typed.push_back(event.text().at(0).unicode());
    record.nativeCode = NativeCodeOf(event);
    record.modifiers = ModifiersOf(event.modifiers());
    record.seconds = static_cast<double>(event.timestamp()) / 1000.0;
    record.x = mouse.x();
    record.y = mouse.y();
    return record;
}

MouseButton ButtonOf(const QMouseEvent& event) {
    if (event.button() == Qt::LeftButton) return MouseButton::Left;
    return event.button() == Qt::RightButton ? MouseButton::Right : MouseButton::Other;
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

unsigned CurrentModifiers() {
    return ModifiersOf(QGuiApplication::queryKeyboardModifiers());
}

} // namespace vm
