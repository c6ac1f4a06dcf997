#include "controls/accelerators.h"

#include <gmock/gmock.h>

#include "ControlsFixture.h"

namespace {

constexpr int kKeyS = 'S' | 0x01 << 8; // the S key has the native code 1
constexpr int kKeyF = 'F' | 0x03 << 8;
constexpr AccelEntry kTable[] = {
    {10, kKeyS, 1, 0, 0}, {11, kKeyS, 1, 0, 1}, {12, kKeyS, 1, 0, 0},
    {13, kKeyF, 0, 1, 0}, {-1, 0, 0, 0, 0},     {14, kKeyF, 0, 0, 0},
};

struct MatchCase {
    const char* what;
    int key;
    unsigned modifiers;
    int command; // 0 for no match
};
void PrintTo(const MatchCase& row, std::ostream* out) {
    *out << row.what;
}

class AcceleratorMatch : public testing::TestWithParam<MatchCase> {};

} // namespace

TEST_P(AcceleratorMatch, FindsTheFirstExactEntry) {
    const AccelEntry* entry = vm::MatchAccelerator(GetParam().key, GetParam().modifiers, kTable);
    EXPECT_EQ(entry ? entry->command : 0, GetParam().command);
}

INSTANTIATE_TEST_SUITE_P(
    Table, AcceleratorMatch,
    testing::Values(
        MatchCase{"the first of two equal ones", kKeyS, vm::kCommandKey, 10},
        MatchCase{"with Shift", kKeyS, vm::kCommandKey | vm::kShiftKey, 11},
        MatchCase{"with the right Shift", kKeyS, vm::kCommandKey | vm::kRightShiftKey, 11},
        MatchCase{"with a modifier too many", kKeyS, vm::kCommandKey | vm::kOptionKey, 0},
        MatchCase{"without the modifier", kKeyS, 0, 0},
        MatchCase{"with the right Option", kKeyF, vm::kRightOptionKey, 13},
        MatchCase{"the control key counts for nothing", kKeyS, vm::kCommandKey | vm::kControlKey,
                  10},
        MatchCase{"another native key of the same letter", 'S' | 0x02 << 8, vm::kCommandKey, 0},
        MatchCase{"behind the end of the table", kKeyF, 0, 0}));

TEST(AcceleratorKey, IsTheUpperCaseCharacterAndTheNativeCode) {
    EXPECT_EQ(vm::AcceleratorKey('s', 0x010000), kKeyS);
    EXPECT_EQ(vm::AcceleratorKey('S', 0x010000), kKeyS);
    EXPECT_EQ(vm::AcceleratorKey('1', 0x120000), '1' | 0x12 << 8);
}

TEST(TranslateAccelerator, SendsTheCommandToTheObjectOfTheHandle) {
    LogCapture log;
    RecordingWnd wnd;
    wnd.Open();
    const AccelEntry entries[] = {{77, kKeyF, 0, 0, 0}, {-1, 0, 0, 0, 0}};
    const HACCEL table = entries;
    MSG press{wnd.view, WM_CHAR, 'f', 0x030000, 0, {}};
    EXPECT_TRUE(TranslateAccelerator(wnd.view, table, &press));
    EXPECT_THAT(wnd.commands, testing::ElementsAre(77));

    press.wParam = 'g';
    EXPECT_FALSE(TranslateAccelerator(wnd.view, table, &press));
    EXPECT_FALSE(TranslateAccelerator(nullptr, table, &press));
    EXPECT_FALSE(TranslateAccelerator(wnd.view, nullptr, &press));
    EXPECT_FALSE(TranslateAccelerator(wnd.view, table, nullptr));
    EXPECT_EQ(wnd.commands.size(), 1u);
    EXPECT_EQ(LoadAccelerators(nullptr, "table"), nullptr);
}

TEST(TranslateAccelerator, IgnoresAHandleOfNobody) {
    const AccelEntry table[] = {{77, kKeyF, 0, 0, 0}, {-1, 0, 0, 0, 0}};
    RecordingWnd wnd;
    wnd.Open();
    MSG press{wnd.view, WM_CHAR, 'f', 0x030000, 0, {}};
    HWND handle = wnd.view;
    RemoveControlReference(&wnd);
    EXPECT_FALSE(TranslateAccelerator(handle, table, &press));
    EXPECT_TRUE(wnd.commands.empty());
}
