#include "wnd/keyCodes.h"

#include <set>

#include <QtCore/Qt>

#include <gmock/gmock.h>

using vm::NativeKeyFromEvdev;
using vm::NativeKeyFromQtKey;
using vm::VirtualKeyOf;

namespace {

// One key of the keyboard by all its names.
struct KeyCase {
    const char* what;
    int evdev;
    int qtKey;
    bool isKeypad;
    int native;
    int virtualKey; // for the character '~'
};
void PrintTo(const KeyCase& row, std::ostream* out) {
    *out << row.what;
}

class KeyNames : public testing::TestWithParam<KeyCase> {};

} // namespace

TEST_P(KeyNames, AgreeOnOneCode) {
    const KeyCase& row = GetParam();
    EXPECT_EQ(NativeKeyFromEvdev(row.evdev), row.native);
    EXPECT_EQ(NativeKeyFromQtKey(row.qtKey, row.isKeypad), row.native);
    EXPECT_EQ(VirtualKeyOf(row.native, '~'), row.virtualKey);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, KeyNames,
    testing::Values(KeyCase{"A", 30, Qt::Key_A, false, 0x00, 'A'},
                    KeyCase{"Z", 44, Qt::Key_Z, false, 0x06, 'Z'},
                    KeyCase{"Q", 16, Qt::Key_Q, false, 0x0C, 'Q'},
                    KeyCase{"M", 50, Qt::Key_M, false, 0x2E, 'M'},
                    KeyCase{"1", 2, Qt::Key_1, false, 0x12, '1'},
                    KeyCase{"0", 11, Qt::Key_0, false, 0x1D, '0'},
                    KeyCase{"keypad 0", 82, Qt::Key_0, true, 0x52, '~'},
                    KeyCase{"keypad 7", 71, Qt::Key_7, true, 0x59, '~'},
                    KeyCase{"F1", 59, Qt::Key_F1, false, 0x7A, 0x10},
                    KeyCase{"F5", 63, Qt::Key_F5, false, 0x60, 0x10},
                    KeyCase{"F9", 67, Qt::Key_F9, false, 0x65, 0x10},
                    KeyCase{"F12", 88, Qt::Key_F12, false, 0x6F, 0x10},
                    KeyCase{"Backspace", 14, Qt::Key_Backspace, false, 0x33, 0x08},
                    KeyCase{"Tab", 15, Qt::Key_Tab, false, 0x30, 0x09},
                    KeyCase{"Return", 28, Qt::Key_Return, false, 0x24, 0x0D},
                    KeyCase{"Space", 57, Qt::Key_Space, false, 0x31, 0x20},
                    KeyCase{"Home", 102, Qt::Key_Home, false, 0x73, 0x01},
                    KeyCase{"End", 107, Qt::Key_End, false, 0x77, 0x04},
                    KeyCase{"Page Up", 104, Qt::Key_PageUp, false, 0x74, 0x0B},
                    KeyCase{"Page Down", 109, Qt::Key_PageDown, false, 0x79, 0x0C},
                    KeyCase{"Left", 105, Qt::Key_Left, false, 0x7B, 0x1C},
                    KeyCase{"Right", 106, Qt::Key_Right, false, 0x7C, 0x1D},
                    KeyCase{"Up", 103, Qt::Key_Up, false, 0x7E, 0x1E},
                    KeyCase{"Down", 108, Qt::Key_Down, false, 0x7D, 0x1F},
                    KeyCase{"Escape", 1, Qt::Key_Escape, false, 0x35, '~'},
                    KeyCase{"Delete forwards", 111, Qt::Key_Delete, false, 0x75, '~'},
                    KeyCase{"Enter", 96, Qt::Key_Enter, false, 0x4C, '~'}));

TEST(KeyCodes, UnknownKeysHaveTheirOwnCode) {
    for (const int code : {-1, 0, 250, 100000}) EXPECT_EQ(NativeKeyFromEvdev(code), 0x7F) << code;
    EXPECT_EQ(NativeKeyFromQtKey(Qt::Key_MediaPlay, false), 0x7F);
    EXPECT_EQ(NativeKeyFromQtKey(Qt::Key_F13, false), 0x7F);
    EXPECT_EQ(VirtualKeyOf(vm::kUnknownKey, 'x'), 'x');
}

TEST(KeyCodes, NoTwoKeysOfTheKeyboardShareANativeCode) {
    std::set<int> seen;
    for (int code = 1; code < 128; ++code) {
        const int native = NativeKeyFromEvdev(code);
        if (native != vm::kUnknownKey) {
            EXPECT_TRUE(seen.insert(native).second) << code;
        }
    }
    EXPECT_GT(seen.size(), 90u);
}

TEST(KeyCodes, BothTablesKnowAllLettersAndDigits) {
    std::set<int> letters;
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const int native = NativeKeyFromQtKey(letter, false);
        EXPECT_EQ(VirtualKeyOf(native, '~'), letter);
        letters.insert(native);
    }
    for (char digit = '0'; digit <= '9'; ++digit) {
        const int native = NativeKeyFromQtKey(digit, false);
        EXPECT_EQ(VirtualKeyOf(native, '~'), digit);
        EXPECT_NE(NativeKeyFromQtKey(digit, true), native) << "the keypad's own";
        EXPECT_EQ(VirtualKeyOf(NativeKeyFromQtKey(digit, true), digit), digit);
    }
    EXPECT_EQ(letters.size(), 26u);
}
