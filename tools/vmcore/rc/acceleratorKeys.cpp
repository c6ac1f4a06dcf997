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
    bool control = false;
};

bool IsLetterOrDigit(int number) {
    return (number >= 'A' && number <= 'Z') || (number >= '0' && number <= '9');
}

bool IsControlCode(int character) {
    return character >= kFirstControlCode && character <= kLastControlCode;
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
    if (IsControlCode(character)) {
        std::vector<Key> keys = {{character + kLetterOfControlCode, false, false, true}};
        // Return, Backspace and Tab make characters, too.
        for (const Key& plain : KeysOfNumber(character)) keys.push_back(plain);
        return keys;
    }
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
    std::vector<Key> keys =
        accelerator.virtualKey ? KeysOfNumber(accelerator.key) : KeysOfCharacter(accelerator.key);
    for (Key& key : keys) {
        key.control |= accelerator.control;
        // With Ctrl or Alt the letter is meant, however it is written.
        const bool isCommand = key.control || accelerator.alt;
        if (isCommand && key.key >= 'A' && key.key <= 'Z') key.shift = false;
        key.shift |= accelerator.shift;
    }
    return keys;
}

std::string NameOf(const Key& key, bool alt) {
    int combination = key.key;
    if (key.control) combination |= static_cast<int>(Qt::CTRL);
    if (alt) combination |= static_cast<int>(Qt::ALT);
    if (key.shift) combination |= static_cast<int>(Qt::SHIFT);
    if (key.keypad) combination |= static_cast<int>(Qt::KeypadModifier);
    return QKeySequence(combination).toString(QKeySequence::PortableText).toStdString();
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

std::vector<KeyEntry> KeyEntriesOf(const Accelerator& accelerator) {
    std::vector<KeyEntry> entries;
    for (const Key& key : KeysOf(accelerator)) {
        const int code = NativeCodeOf(key);
        if (code == kUnknownKey) continue;
        entries.push_back({CharacterOf(key, code, key.shift) | code << 8, key.shift, key.control,
                           NameOf(key, accelerator.alt)});
    }
    return entries;
}

std::string ShortcutOf(const Accelerator& accelerator) {
    const std::vector<Key> keys = KeysOf(accelerator);
    return keys.empty() ? std::string() : NameOf(keys[0], accelerator.alt);
}

} // namespace vm::rc
