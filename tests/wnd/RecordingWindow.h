// What the tests of the windows share: a window object that records its messages and answers as the
// test tells it, and a fixture with a top-level window that holds one child.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include <vmcore/app/messages.h>
#include <vmcore/wnd/CWnd.h>

#include "support/LogCapture.h"
#include "support/MessageBoxRecorder.h"
#include "support/Watchdog.h"
#include "wnd/CWndNSView.h"
#include "wnd/NativeWindow.h"
#include "wnd/windowState.h"

struct Message {
    int number;
    WPARAM wParam;
    LPARAM lParam;
    bool operator==(const Message&) const = default;
};
inline void PrintTo(const Message& message, std::ostream* out) {
    *out << message.number << "(" << message.wParam << ", " << message.lParam << ")";
}
using Messages = std::vector<Message>;

/// Records into a list that outlives it: a handler may delete the object.
template <class Base>
class Recording : public Base {
public:
    using Handler = std::function<int(WPARAM, LPARAM)>;

    int MessageMap(int number, WPARAM wParam, LPARAM lParam) override {
        record->push_back({number, wParam, lParam});
        const auto handler = on.find(number);
        if (handler == on.end()) return Base::MessageMap(number, wParam, lParam);
        const Handler copy = handler->second;
        return copy(wParam, lParam);
    }
    BOOL PreTranslateMessage(MSG* msg) override {
        const std::function<BOOL(MSG*)> copy = translate;
        return copy ? copy(msg) : FALSE;
    }

    /// The messages so far, in order; forgets them.
    Messages Take() { return std::exchange(*record, {}); }
    /// Only those of this number.
    Messages Take(int number) {
        Messages some;
        for (const Message& message : Take())
            if (message.number == number) some.push_back(message);
        return some;
    }

    std::map<int, Handler> on; ///< by message number; what is missing is not handled
    std::function<BOOL(MSG*)> translate;
    const std::shared_ptr<Messages> record = std::make_shared<Messages>();
};
using RecordingWindow = Recording<CWnd>;

inline std::vector<int> NumbersOf(const Messages& messages) {
    std::vector<int> numbers;
    for (const Message& message : messages) numbers.push_back(message.number);
    return numbers;
}

MATCHER_P4(IsRect, left, top, right, bottom, "") {
    *result_listener << "(" << arg.left << ", " << arg.top << ", " << arg.right << ", "
                     << arg.bottom << ")";
    return arg.left == left && arg.top == top && arg.right == right && arg.bottom == bottom;
}

inline WPARAM AsParameter(const void* pointer) {
    return reinterpret_cast<WPARAM>(pointer);
}

/// A visible top-level window, well inside any screen, with one visible child. Their creation is no
/// longer in the records.
class WindowFixture : public testing::Test {
protected:
    static constexpr RECT kTopRect{80, 90, 380, 290};
    static constexpr RECT kChildRect{30, 40, 130, 100};
    static constexpr UINT kChildID = 7;

    WindowFixture() {
        vm::Windows() = {};
        top.Create("", "Top", WS_VISIBLE | WS_OVERLAPPEDWINDOW, kTopRect, nullptr, 0);
        child.Create("", "Child", WS_VISIBLE, kChildRect, &top, kChildID);
        top.Take();
        child.Take();
    }
    void TearDown() override { // what handlers refer to ended with the test
        for (RecordingWindow* window : {&top, &child}) {
            window->on.clear();
            window->translate = nullptr;
        }
    }
    ~WindowFixture() override {
        child.DestroyWindow();
        top.DestroyWindow();
        RunFor(std::chrono::milliseconds(1)); // the views are freed by the loop
    }

    CWndView& View() { return *dynamic_cast<CWndView*>(child.view); }

    Watchdog watchdog;
    LogCapture log;
    MessageBoxRecorder boxes;
    RecordingWindow top;
    RecordingWindow child;
};
