#include "wnd/viewEvents.h"

#include <QtCore/QPointer>
#include <QtWidgets/QLabel>

#include "RecordingWindow.h"
#include "wnd/keyCodes.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vm::MouseButton;
using vm::MouseRecord;

namespace {

MouseRecord At(int x, int y, int clickCount = 1, unsigned modifiers = 0, unsigned buttons = 0) {
    return {x, y, x + 1000, y + 2000, clickCount, modifiers, buttons};
}
constexpr LPARAM kScreenAt(int x, int y) {
    return MAKELPARAM(x + 1000, y + 2000);
}

vm::KeyRecord Key(std::vector<int> characters, int native, std::vector<int> typed,
                  unsigned modifiers = 0) {
    return {std::move(characters), std::move(typed), native, modifiers, 6.0, 11, 12};
}

class ViewEvents : public WindowFixture {
protected:
    LPARAM Position(int x, int y) { return MAKELPARAM(x, y); }
};

using MouseEvents = ViewEvents;
using KeyEvents = ViewEvents;

} // namespace

TEST(KeyState, CombinesKeysAndButtons) {
    const struct {
        const char* what;
        unsigned modifiers;
        unsigned buttons;
        UINT state;
    } rows[] = {
        {"nothing", 0, 0, 0},
        {"left", 0, vm::kLeftDown, 0x02},
        {"left with command counts as right", vm::kCommandKey, vm::kLeftDown, 0x01 | 0x08},
        {"right", 0, vm::kRightDown, 0x08},
        {"middle", 0, vm::kMiddleDown, 0x04},
        {"all buttons", 0, 7, 0x0E},
        {"shift", vm::kShiftKey, 0, 0x10},
        {"right shift", vm::kRightShiftKey, 0, 0x10},
        {"control", vm::kControlKey, 0, 0x40},
        {"right control", vm::kRightControlKey, 0, 0x40},
        {"option counts for nothing", vm::kOptionKey, 0, 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(vm::KeyStateOf(row.modifiers, row.buttons), row.state) << row.what;
}

TEST_F(MouseEvents, PressIsNumberedByButtonAndClickCount) {
    const struct {
        MouseButton button;
        int clickCount;
        std::vector<int> messages;
    } rows[] = {
        {MouseButton::Left, 1, {WM_LBUTTONDOWN}},
        {MouseButton::Left, 2, {WM_LBUTTONDBLCLK}},
        {MouseButton::Left, 3, {WM_LBUTTONDBLCLK}},
        {MouseButton::Right, 1, {WM_CONTEXTMENU, WM_RBUTTONDOWN}},
        {MouseButton::Right, 2, {WM_CONTEXTMENU, WM_RBUTTONDBLCLK}},
        {MouseButton::Other, 1, {WM_MBUTTONDOWN}},
        {MouseButton::Other, 2, {WM_MBUTTONDBLCLK}},
    };
    for (const auto& row : rows) {
        vm::MousePressed(View(), row.button, At(3, 4, row.clickCount));
        EXPECT_EQ(NumbersOf(child.Take()), row.messages)
            << "button " << static_cast<int>(row.button) << ", " << row.clickCount << " clicks";
    }
}

TEST_F(MouseEvents, PressAndReleaseCarryStateAndPosition) {
    vm::MousePressed(View(), MouseButton::Left, At(3, 4, 1, vm::kShiftKey, vm::kLeftDown));
    vm::MouseReleased(View(), MouseButton::Left, At(-5, 6));
    vm::MouseReleased(View(), MouseButton::Right, At(7, 8));
    vm::MouseReleased(View(), MouseButton::Other, At(9, 10));
    EXPECT_THAT(child.Take(), ElementsAre(Message{WM_LBUTTONDOWN, 0x12, Position(3, 4)},
                                          Message{WM_LBUTTONUP, 0, Position(-5, 6)},
                                          Message{WM_RBUTTONUP, 0, Position(7, 8)},
                                          Message{WM_MBUTTONUP, 0, Position(9, 10)}));
    EXPECT_EQ(Position(-5, 6), 0x6FFFB) << "each half is 16 bits";
}

TEST_F(MouseEvents, ControlClickAsksForTheMenuAndIsARightClickElse) {
    vm::MousePressed(View(), MouseButton::Left, At(3, 4, 1, vm::kControlKey, vm::kLeftDown));
    vm::MouseReleased(View(), MouseButton::Left, At(3, 4));
    vm::MouseReleased(View(), MouseButton::Left, At(3, 4));
    EXPECT_THAT(child.Take(),
                ElementsAre(Message{WM_CONTEXTMENU, AsParameter(&View()), Position(3, 4)},
                            Message{WM_RBUTTONDOWN, 0x42, Position(3, 4)},
                            Message{WM_RBUTTONUP, 0, Position(3, 4)},
                            Message{WM_LBUTTONUP, 0, Position(3, 4)}));
}

TEST_F(MouseEvents, AnsweredContextMenuIsNoRightClick) {
    child.on[WM_CONTEXTMENU] = [](WPARAM, LPARAM) { return 1; };
    vm::MousePressed(View(), MouseButton::Left, At(3, 4, 1, vm::kRightControlKey));
    vm::MouseReleased(View(), MouseButton::Left, At(3, 4));
    EXPECT_EQ(NumbersOf(child.Take()), (std::vector<int>{WM_CONTEXTMENU, WM_RBUTTONUP}));
    vm::MousePressed(View(), MouseButton::Right, At(3, 4));
    EXPECT_EQ(NumbersOf(child.Take()), std::vector<int>{WM_CONTEXTMENU});
}

TEST_F(MouseEvents, RightClickAsksInScreenCoordinates) {
    vm::MousePressed(View(), MouseButton::Right, At(3, 4, 1, 0, vm::kRightDown));
    EXPECT_THAT(child.Take(),
                ElementsAre(Message{WM_CONTEXTMENU, AsParameter(&View()), kScreenAt(3, 4)},
                            Message{WM_RBUTTONDOWN, 0x08, Position(3, 4)}));
}

TEST_F(MouseEvents, ContextMenuClimbsToTheParentWhoseAnswerCounts) {
    top.on[WM_CONTEXTMENU] = [](WPARAM, LPARAM) { return 1; };
    vm::MousePressed(View(), MouseButton::Right, At(3, 4));
    EXPECT_EQ(NumbersOf(child.Take()), std::vector<int>{WM_CONTEXTMENU});
    EXPECT_THAT(top.Take(),
                ElementsAre(Message{WM_CONTEXTMENU, AsParameter(child.view), kScreenAt(3, 4)}));
}

TEST_F(MouseEvents, MovesTellWhatIsDragged) {
    const struct {
        unsigned buttons;
        int dragged;
    } rows[] = {{0, 0}, {vm::kLeftDown, 1}, {vm::kRightDown, 2}, {vm::kMiddleDown, 2}};
    for (const auto& row : rows) {
        vm::MouseMoved(View(), At(1, 2, 0, 0, row.buttons));
        EXPECT_EQ(View().dragged, row.dragged) << row.buttons;
    }
    EXPECT_EQ(child.Take(WM_MOUSEMOVE).size(), 4u);
}

TEST_F(MouseEvents, EnterAndLeaveCarryStateAndPosition) {
    vm::MouseEntered(View(), At(1, 2, 0, vm::kShiftKey));
    vm::MouseLeft(View(), At(3, 4));
    EXPECT_THAT(child.Take(), ElementsAre(Message{WM_MOUSEENTER, 0x10, Position(1, 2)},
                                          Message{WM_MOUSELEAVE, 0, Position(3, 4)}));
}

TEST_F(MouseEvents, CaptureTakesMovesAndLeftReleases) {
    RecordingWindow other;
    other.Create("", "", WS_VISIBLE, RECT{150, 40, 250, 100}, &top, 8);
    other.Take();
    POINT inOther{5, 6};
    other.ClientToScreen(&inOther);
    const MouseRecord mouse{-1, -1, inOther.x, inOther.y, 1, 0, 0};

    EXPECT_EQ(other.SetCapture(), nullptr);
    EXPECT_EQ(CWnd::GetCaptureWnd(), &other);
    vm::MouseMoved(View(), mouse);
    EXPECT_THAT(other.Take(), ElementsAre(Message{WM_MOUSEMOVE, 0, Position(5, 6)}));
    EXPECT_THAT(log.TakeErrors(), IsEmpty());
    vm::MouseReleased(View(), MouseButton::Left, mouse);
    EXPECT_THAT(other.Take(), ElementsAre(Message{WM_LBUTTONUP, 0, Position(5, 6)}));
    EXPECT_THAT(log.TakeErrors(),
                ElementsAre(vm::Format("mouseUp to captureWnd: 1 %p (5, 6)\n",
                                       static_cast<void*>(static_cast<CWnd*>(&other)))));
    vm::MouseReleased(View(), MouseButton::Right, mouse);
    EXPECT_THAT(child.Take(), ElementsAre(Message{WM_RBUTTONUP, 0, Position(-1, -1)}))
        << "only the left button is redirected";
    vm::MouseReleased(other.view ? *dynamic_cast<CWndView*>(other.view) : View(), MouseButton::Left,
                      At(1, 1));
    EXPECT_EQ(NumbersOf(other.Take()), std::vector<int>{WM_LBUTTONUP});
    EXPECT_THAT(log.TakeErrors(), IsEmpty()) << "its own release is not redirected";
}

TEST_F(MouseEvents, CaptureTakesNoDragsOfOtherButtons) {
    top.SetCapture();
    const struct {
        unsigned buttons;
        bool isRedirected;
    } rows[] = {{0, true},
                {vm::kLeftDown, true},
                {vm::kLeftDown | vm::kRightDown, true},
                {vm::kRightDown, false},
                {vm::kMiddleDown, false}};
    for (const auto& row : rows) {
        vm::MouseMoved(View(), At(1, 2, 0, 0, row.buttons));
        EXPECT_EQ(top.Take(WM_MOUSEMOVE).size(), row.isRedirected) << row.buttons;
        EXPECT_EQ(child.Take(WM_MOUSEMOVE).size(), !row.isRedirected) << row.buttons;
    }
}

TEST_F(MouseEvents, PositionsInAScaledViewAreInHostUnits) {
    child.SetWindowScaling(2.0f);
    child.Take();
    const LPARAM position = Position(5, 3);
    const MouseRecord mouse = At(11, 7);
    vm::MouseEntered(View(), mouse);
    vm::MouseMoved(View(), mouse);
    vm::MousePressed(View(), MouseButton::Left, mouse);
    vm::MouseReleased(View(), MouseButton::Left, mouse);
    vm::MousePressed(View(), MouseButton::Right, mouse);
    vm::WheelTurned(View(), {1.0, 11, 7, 0, 0});
    EXPECT_THAT(child.Take(),
                ElementsAre(Message{WM_MOUSEENTER, 0, position}, Message{WM_MOUSEMOVE, 0, position},
                            Message{WM_LBUTTONDOWN, 0, position},
                            Message{WM_LBUTTONUP, 0, position},
                            Message{WM_CONTEXTMENU, AsParameter(&View()), kScreenAt(11, 7)},
                            Message{WM_RBUTTONDOWN, 0, position},
                            Message{WM_MOUSEWHEEL, MAKEWPARAM(0, 120), position}));
    child.translate = [](MSG* msg) {
        EXPECT_EQ(msg->pt.x, 5);
        EXPECT_EQ(msg->pt.y, 6);
        return TRUE;
    };
    vm::KeyPressed(View(), Key({'a'}, 0, {'a'}));
    EXPECT_EQ(NumbersOf(child.Take()), std::vector<int>{WM_KEYDOWN});
}

TEST_F(MouseEvents, EveryPressEndsTheCapture) {
    for (const MouseButton button : {MouseButton::Left, MouseButton::Right, MouseButton::Other}) {
        top.SetCapture();
        vm::MousePressed(View(), button, At(1, 1));
        EXPECT_EQ(GetCapture(), nullptr) << static_cast<int>(button);
    }
}

TEST_F(MouseEvents, CaptureOfNobodyRedirectsNothing) {
    QLabel foreign;
    SetCapture(&foreign);
    vm::MouseReleased(View(), MouseButton::Left, At(1, 1));
    EXPECT_EQ(NumbersOf(child.Take()), std::vector<int>{WM_LBUTTONUP});
    EXPECT_TRUE(ReleaseCapture());
}

TEST_F(MouseEvents, WheelSendsWholeUnitsOnly) {
    const struct {
        const char* what;
        double delta;
        unsigned modifiers;
        int units; // 0 for no message
    } rows[] = {
        {"less than a unit", 0.004, 0, 0},
        {"less than a unit with option", 0.004, vm::kOptionKey, 0},
        {"a notch", 1.0, 0, 120},
        {"a notch down", -1.0, 0, -120},
        {"half a notch", 0.5, 0, 60},
        {"a notch with option", 1.0, vm::kOptionKey, 1200},
        {"a notch down with the right option", -1.0, vm::kRightOptionKey, -1200},
    };
    for (const auto& row : rows) {
        vm::WheelTurned(View(), {row.delta, 8, 9, row.modifiers, vm::kRightDown});
        Messages expected;
        if (row.units)
            expected.push_back({WM_MOUSEWHEEL, MAKEWPARAM(MK_RBUTTON, row.units), Position(8, 9)});
        EXPECT_EQ(child.Take(), expected) << row.what;
    }
}

TEST_F(KeyEvents, EveryCharacterIsAKeyOfItsOwn) {
    vm::KeyPressed(View(), Key({0x61, 0x62}, vm::kUnknownKey, {0x41, 0x142}));
    vm::KeyReleased(View(), Key({0x61, 0x62}, 0x7E, {}));
    const LPARAM unknown = 0x7F0000;
    EXPECT_THAT(child.Take(),
                ElementsAre(Message{WM_KEYDOWN, 0x61, unknown}, Message{WM_CHAR, 0x41, 0xF0000},
                            Message{WM_KEYDOWN, 0x62, unknown}, Message{WM_CHAR, 0x42, 0xF0000},
                            Message{WM_KEYUP, 0x61, 0x7E0000}, Message{WM_KEYUP, 0x62, 0x7E0000}));
}

TEST_F(KeyEvents, NativeCodeReplacesTheCharacterOfKeyDownOnly) {
    vm::KeyPressed(View(), Key({'a'}, 0x00, {'a'}));
    vm::KeyPressed(View(), Key({0xF704}, 0x60, {}));
    EXPECT_THAT(child.Take(), ElementsAre(Message{WM_KEYDOWN, 'A', 0}, Message{WM_CHAR, 'a', 0},
                                          Message{WM_KEYDOWN, 0x10, 0x600000}));
}

TEST_F(KeyEvents, ModifiersThatMakeCommandsTypeNothing) {
    const struct {
        const char* what;
        unsigned modifiers;
        bool types;
    } rows[] = {
        {"none", 0, true},
        {"shift", vm::kShiftKey, true},
        {"right shift", vm::kRightShiftKey, true},
        {"command", vm::kCommandKey, false},
        {"option", vm::kOptionKey, false},
        {"control", vm::kControlKey, false},
        {"right option", vm::kRightOptionKey, false},
        {"right control", vm::kRightControlKey, false},
    };
    for (const auto& row : rows) {
        vm::KeyPressed(View(), Key({'s'}, 0x01, {'s'}, row.modifiers));
        const Messages messages = child.Take();
        EXPECT_EQ(messages.front().number, WM_KEYDOWN) << row.what;
        EXPECT_EQ(messages.size(), row.types ? 2u : 1u) << row.what;
    }
}

TEST_F(KeyEvents, ObjectsUpTheParentsAreAskedToTranslate) {
    std::vector<CWnd*> asked;
    MSG seen{};
    child.translate = [&](MSG* msg) {
        asked.push_back(&child);
        seen = *msg;
        return FALSE;
    };
    top.translate = [&](MSG*) {
        asked.push_back(&top);
        return TRUE;
    };
    vm::KeyPressed(View(), Key({'a', 'b'}, 0x7C, {'a', 'b'}));
    EXPECT_THAT(asked, ElementsAre(&child, &top, &child, &top));
    EXPECT_EQ(NumbersOf(child.Take()), (std::vector<int>{WM_KEYDOWN, WM_KEYDOWN}));
    EXPECT_EQ(seen.hwnd, child.view);
    EXPECT_EQ(seen.message, WM_CHAR);
    EXPECT_EQ(seen.wParam, 0x1Du);
    EXPECT_EQ(seen.lParam, 0x7C0000);
    EXPECT_EQ(seen.time, 100u) << "6 s, a third of it, in fiftieths";
    EXPECT_EQ(seen.pt.x, 11);
    EXPECT_EQ(seen.pt.y, 12);
}

TEST_F(KeyEvents, WalkEndsAtAnObjectWithoutAView) {
    CWnd* const parent = child.parentWnd;
    RecordingWindow without;
    without.parentWnd = parent;
    child.parentWnd = &without;
    bool asked = false;
    top.translate = [&](MSG*) {
        asked = true;
        return TRUE;
    };
    vm::KeyPressed(View(), Key({'a'}, 0x00, {'a'}));
    EXPECT_FALSE(asked);
    EXPECT_EQ(NumbersOf(child.Take()), (std::vector<int>{WM_KEYDOWN, WM_CHAR}));
    child.parentWnd = parent;
}

TEST_F(KeyEvents, AcceleratorEndsTheKeyAtTheObjectWhoseTableHasIt) {
    const AccelEntry table[] = {{77, 'F' | 0x03 << 8, 0, 0, 0}, {-1, 0, 0, 0, 0}};
    top.accelTable = table;
    top.on[WM_COMMAND] = [](WPARAM, LPARAM) { return 1; };
    vm::KeyPressed(View(), Key({'f'}, 0x03, {'f'}));
    EXPECT_EQ(NumbersOf(child.Take()), std::vector<int>{WM_KEYDOWN});
    EXPECT_THAT(top.Take(WM_COMMAND), ElementsAre(Message{WM_COMMAND, 77, 0}));
    child.translate = [](MSG*) { return TRUE; };
    vm::KeyPressed(View(), Key({'f'}, 0x03, {'f'}));
    EXPECT_THAT(top.Take(WM_COMMAND), IsEmpty()) << "translation comes first";
}

TEST_F(ViewEvents, DisabledViewIgnoresMouseWheelAndKeys) {
    EXPECT_TRUE(child.EnableWindow(FALSE));
    EXPECT_FALSE(child.IsWindowEnabled());
    child.SetCapture();
    vm::MousePressed(View(), MouseButton::Left, At(1, 1));
    vm::MousePressed(View(), MouseButton::Right, At(1, 1));
    vm::MouseReleased(View(), MouseButton::Left, At(1, 1));
    vm::MouseMoved(View(), At(1, 1));
    vm::MouseEntered(View(), At(1, 1));
    vm::MouseLeft(View(), At(1, 1));
    vm::WheelTurned(View(), {1.0, 0, 0, 0, 0});
    vm::KeyPressed(View(), Key({'a'}, 0, {'a'}));
    vm::KeyReleased(View(), Key({'a'}, 0, {'a'}));
    EXPECT_THAT(child.Take(), IsEmpty());
    EXPECT_EQ(GetCapture(), child.view);
    child.EnableWindow();
    vm::KeyReleased(View(), Key({'a'}, 0, {'a'}));
    EXPECT_EQ(NumbersOf(child.Take()), std::vector<int>{WM_KEYUP});
}

TEST_F(ViewEvents, DisabledInsideAKeyTheRestOfItIsIgnored) {
    child.on[WM_KEYDOWN] = [&](WPARAM, LPARAM) { return child.EnableWindow(FALSE); };
    vm::KeyPressed(View(), Key({'a', 'b'}, 0, {'a', 'b'}));
    EXPECT_EQ(child.Take(WM_KEYDOWN).size(), 1u);
}

namespace {

// How a handler may end its own window: the view is freed by the event loop, which may be a nested
// one that the handler itself runs.
struct EndCase {
    const char* what;
    std::function<void(RecordingWindow*&)> end;
};
void PrintTo(const EndCase& row, std::ostream* out) {
    *out << row.what;
}

class WindowEndsInside : public ViewEvents, public testing::WithParamInterface<EndCase> {
protected:
    WindowEndsInside() : doomed(new RecordingWindow), record(doomed->record) {
        doomed->Create("", "", WS_VISIBLE, RECT{0, 0, 20, 20}, &top, 9);
        view = dynamic_cast<CWndView*>(doomed->view);
        record->clear();
    }
    ~WindowEndsInside() override { delete doomed; }
    void EndInside(int number) {
        doomed->on[number] = [this](WPARAM, LPARAM) {
            GetParam().end(doomed);
            return doomed ? 0 : 1; // nothing is left that could go on with the message
        };
    }
    Messages Seen() {
        Messages seen;
        for (const Message& message : *record)
            if (message.number != WM_DESTROY) seen.push_back(message);
        return seen;
    }

    RecordingWindow* doomed;
    std::shared_ptr<Messages> record;
    CWndView* view;
};

} // namespace

TEST_P(WindowEndsInside, ContextMenu) {
    EndInside(WM_CONTEXTMENU);
    top.on[WM_CONTEXTMENU] = [](WPARAM, LPARAM) { return 0; };
    vm::MousePressed(*view, MouseButton::Right, At(1, 1));
    EXPECT_EQ(NumbersOf(Seen()), std::vector<int>{WM_CONTEXTMENU});
}

TEST_P(WindowEndsInside, KeyDown) {
    EndInside(WM_KEYDOWN);
    vm::KeyPressed(*view, Key({'a', 'b'}, 0, {'a', 'b'}));
    EXPECT_EQ(NumbersOf(Seen()), std::vector<int>{WM_KEYDOWN});
}

TEST_P(WindowEndsInside, Char) {
    EndInside(WM_CHAR);
    vm::KeyPressed(*view, Key({'a', 'b'}, 0, {'a', 'b'}));
    EXPECT_EQ(NumbersOf(Seen()), (std::vector<int>{WM_KEYDOWN, WM_CHAR}));
}

TEST_P(WindowEndsInside, KeyUp) {
    EndInside(WM_KEYUP);
    vm::KeyReleased(*view, Key({'a', 'b'}, 0, {'a', 'b'}));
    EXPECT_EQ(NumbersOf(Seen()), std::vector<int>{WM_KEYUP});
}

TEST_P(WindowEndsInside, Translation) {
    doomed->translate = [this](MSG*) {
        GetParam().end(doomed);
        return FALSE;
    };
    bool parentAsked = false;
    top.translate = [&](MSG*) { return parentAsked = true; };
    vm::KeyPressed(*view, Key({'a', 'b'}, 0, {'a', 'b'}));
    EXPECT_EQ(NumbersOf(Seen()), std::vector<int>{WM_KEYDOWN});
    EXPECT_FALSE(parentAsked);
}

INSTANTIATE_TEST_SUITE_P(
    How, WindowEndsInside,
    testing::Values(EndCase{"destroyed", [](RecordingWindow*& wnd) { wnd->DestroyWindow(); }},
                    EndCase{"deleted",
                            [](RecordingWindow*& wnd) { delete std::exchange(wnd, nullptr); }},
                    EndCase{"view freed by a nested loop", [](RecordingWindow*& wnd) {
                                const QPointer<QWidget> view(wnd->view);
                                wnd->DestroyWindow();
                                EXPECT_TRUE(RunUntil([&] { return !view; }));
                            }}));
