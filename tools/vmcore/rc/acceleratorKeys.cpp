#include "rc/acceleratorKeys.h"

#include <algorithm>

#include <QtGui/QKeySequence>

#include "wnd/keyCodes.h"

namespace vm::rc {
namespace {

constexpr int kFirstControlCode = 1; // "^A"
constexpr int kLastControlCode = 26;
constexpr int kLetterOfControlCode = 'A' - 1;

struct VirtualKey {
    int number;
    int key; ///< Qt's
    bool keypad = false;
};

constexpr VirtualKey kKeys[] = {
    {0x08, Qt::Key_Backspace},
    {0x09, Qt::Key_Tab},
    {0x0D, Qt::Key_Return},
    {0x0D, Qt::Key_Enter},
    {0x1B, Qt::Key_Escape},
    {0x20, Qt::Key_Space},
    {0x21, Qt::Key_PageUp},
    {0x22, Qt::Key_PageDown},
    {0x23, Qt::Key_End},
    {0x24, Qt::Key_Home},
    {0x25, Qt::Key_Left},
    {0x26, Qt::Key_Up},
    {0x27, Qt::Key_Right},
    {0x28, Qt::Key_Down},
    {0x2D, Qt::Key_Insert},
    {0x2E, Qt::Key_Delete},
    {0x6A, Qt::Key_Asterisk, true},
    {0x6B, Qt::Key_Plus, true},
    {0x6D, Qt::Key_Minus, true},
    {0x6E, Qt::Key_Period, true},
    {0x6F, Qt::Key_Slash, true},
    {0xBA, Qt::Key_Semicolon},
    {0xBB, Qt::Key_Equal},
    {0xBC, Qt::Key_Comma},
    {0xBD, Qt::Key_Minus},
    {0xBE, Qt::Key_Period},
    {0xBF, Qt::Key_Slash},
    {0xC0, Qt::Key_QuoteLeft},
    {0xDB, Qt::Key_BracketLeft},
    {0xDC, Qt::Key_Backslash},
    {0xDD, Qt::Key_BracketRight},
    {0xDE, Qt::Key_Apostrophe},
};

struct KeypadCode {
    int key;
    int code;
};
constexpr KeypadCode kKeypadCodes[] = {
    {Qt::Key_Asterisk, 0x43}, {Qt::Key_Plus, 0x45},  {Qt::Key_Minus, 0x4E},
    {Qt::Key_Period, 0x41},   {Qt::Key_Slash, 0x4B},
};

// The keys of a US keyboard with and without Shift: what tables with characters were written on.
constexpr char kPlain[] = "`1234567890-=[]\\;',./";
constexpr char kShifted[] = "~!@#$%^&*()_+{}|:\"<>?";

struct Key {
    int key; ///< Qt's; 0 for none
    bool keypad = false;
    bool shift = false; ///< needed for the character
};

bool IsLetterOrDigit(int number) {
    return (number >= 'A' && number <= 'Z') || (number >= '0' && number <= '9');
}

std::vector<Key> KeysOfNumber(int number) {
    if (IsLetterOrDigit(number)) return {{number}};
    if (number >= 0x60 && number <= 0x69) return {{Qt::Key_0 + number - 0x60, true}};
    if (number >= 0x70 && number <= 0x7B) return {{Qt::Key_F1 + number - 0x70}};
    std::vector<Key> keys;
    for (const VirtualKey& known : kKeys)
        if (known.number == number) keys.push_back({known.key, known.keypad});
    return keys;
}

std::vector<Key> KeysOfCharacter(int character) {
    if (character >= kFirstControlCode && character <= kLastControlCode)
        return {{character + kLetterOfControlCode}};
    if (character == 0x1B || character == ' ') return KeysOfNumber(character);
    if (character >= 'a' && character <= 'z') return {{character - 'a' + 'A'}};
    if (character >= 'A' && character <= 'Z') return {{character, false, true}};
    const std::string plain = kPlain;
    const std::string shifted = kShifted;
    const auto c = static_cast<char>(character);
    if (character > ' ' && character < 0x7F) {
        if (plain.find(c) != std::string::npos) return {{character}};
        if (const std::size_t at = shifted.find(c); at != std::string::npos)
            return {{plain[at], false, true}};
    }
    return {};
}

std::vector<Key> KeysOf(const Accelerator& accelerator) {
    if (accelerator.virtualKey) return KeysOfNumber(accelerator.key);
    std::vector<Key> keys = KeysOfCharacter(accelerator.key);
    // With Ctrl or Alt the letter is meant, however it is written.
    const bool isCommand = HasControl(accelerator) || accelerator.alt;
    for (Key& key : keys)
        if (isCommand && key.key >= 'A' && key.key <= 'Z') key.shift = false;
    return keys;
}

int NativeCodeOf(const Key& key) {
    for (const KeypadCode& known : kKeypadCodes)
        if (key.keypad && known.key == key.key) return known.code;
    return NativeKeyFromQtKey(key.key, key.keypad);
}

// What a key press carries besides its code: see the translation of keys.
int CharacterOf(const Key& key, int code, bool shift) {
    if (key.key == Qt::Key_Escape) return 0x1B;
    if (key.key == Qt::Key_Enter) return '\r';
    if (key.key > 0xFF) return VirtualKeyOf(code, kUnknownKey);
    const std::string plain = kPlain;
    const std::size_t at = plain.find(static_cast<char>(key.key));
    const bool isShifted = shift && !key.keypad && at != std::string::npos;
    return VirtualKeyOf(code, isShifted ? kShifted[at] : key.key);
}

} // namespace

bool HasControl(const Accelerator& accelerator) {
    return accelerator.control ||
           (!accelerator.virtualKey && accelerator.key >= kFirstControlCode &&
            accelerator.key <= kLastControlCode);
}

std::vector<KeyEntry> KeyEntriesOf(const Accelerator& accelerator) {
    std::vector<KeyEntry> entries;
    for (const Key& key : KeysOf(accelerator)) {
        const bool shift = accelerator.shift || key.shift;
        const int code = NativeCodeOf(key);
        if (code == kUnknownKey) continue;
        entries.push_back({CharacterOf(key, code, shift) | code << 8, shift});
    }
    return entries;
}

std::string ShortcutOf(const Accelerator& accelerator) {
    const std::vector<Key> keys = KeysOf(accelerator);
    if (keys.empty()) return {};
    int combination = keys[0].key;
    if (HasControl(accelerator)) combination |= static_cast<int>(Qt::CTRL);
    if (accelerator.alt) combination |= static_cast<int>(Qt::ALT);
    if (accelerator.shift || keys[0].shift) combination |= static_cast<int>(Qt::SHIFT);
    if (keys[0].keypad) combination |= static_cast<int>(Qt::KeypadModifier);
    return QKeySequence(combination).toString(QKeySequence::PortableText).toStdString();
}

} // namespace vm::rc
