// How messages reach window objects: sending, posting, routing, the command filter.
#include <vmcore/app/CWinApp.h>
#include <vmcore/wnd/CWnd.h>

#include <functional>
#include <thread>

#include <gmock/gmock.h>

#include "app/appState.h"
#include "platform/runloop.h"
#include "support/LogCapture.h"
#include "support/Watchdog.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr char kDropped[] =
    "Post or SendMessage sent to hWnd object not registered in ControlReference list";
constexpr UINT kMessage = WM_USER + 1;

// A window whose map is a function of the test; every number that reaches the map is kept.
class Mapped : public CWnd {
public:
    using Map = std::function<int(int, WPARAM, LPARAM)>;
    explicit Mapped(Map newMap = {}) : map(std::move(newMap)) {}
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        seen.push_back(message);
        return map ? map(message, wParam, lParam) : 0;
    }
    Map map;
    std::vector<int> seen;
};

class Messages : public testing::Test {
protected:
    Messages() {
        m_frame.Create("", "messages", 0x10000, RECT{60, 60, 260, 200}, nullptr, 0);
        m_child.Create("", "", 0, RECT{0, 0, 20, 20}, &m_frame, 7);
        m_frame.seen.clear();
        m_child.seen.clear();
    }
    ~Messages() override {
        m_child.map = m_frame.map = {}; // they may refer to what the test had
        m_child.DestroyWindow();
        m_frame.DestroyWindow();
    }

    Watchdog m_watchdog;
    CWinApp m_app;
    Mapped m_frame;
    Mapped m_child;
};

// A worker's call while the main thread runs its loop.
template <class Call>
void OnWorker(Call call) {
    std::atomic<bool> done = false;
    std::thread worker([&] {
        call();
        done = true;
    });
    EXPECT_TRUE(RunUntil([&] { return done.load(); }));
    worker.join();
}

} // namespace

TEST_F(Messages, LowByteOfTheMapsAnswerSaysHandled) {
    struct Row {
        int answer;
        LRESULT result;
    };
    const Row rows[] = {{1, 1}, {-1, -1}, {0x1FF, 0x1FF}, {0, 0}, {256, 0}, {0x7F00, 0}};
    for (const Row& row : rows) {
        m_child.map = [&](int, WPARAM, LPARAM) { return row.answer; };
        EXPECT_EQ(m_child.SendMessage(kMessage), row.result) << row.answer;
    }
}

TEST_F(Messages, UnhandledCloseDestroysAHandledOneDoesNot) {
    m_child.map = [](int message, WPARAM, LPARAM) { return message == WM_CLOSE; };
    m_child.SendMessage(WM_CLOSE);
    EXPECT_NE(m_child.view, nullptr);
    m_child.map = {};
    m_child.SendMessage(WM_CLOSE);
    EXPECT_EQ(m_child.view, nullptr);
}

TEST_F(Messages, UnhandledContextMenuGoesToTheParent) {
    m_frame.map = [](int message, WPARAM wParam, LPARAM) {
        return message == WM_CONTEXTMENU && wParam == 5 ? 9 : 0;
    };
    EXPECT_EQ(m_child.SendMessage(WM_CONTEXTMENU, 5, 0), 9);
}

TEST_F(Messages, ControlHandlesItsOwnCommandFirst) {
    const LPARAM control = reinterpret_cast<LPARAM>(m_child.view);
    m_child.map = [](int message, WPARAM, LPARAM) { return message == WM_COMMAND; };
    EXPECT_EQ(m_frame.SendMessage(WM_COMMAND, 100, control), 1);
    EXPECT_THAT(m_frame.seen, IsEmpty());
    m_child.map = {};
    m_frame.SendMessage(WM_COMMAND, 100, control);
    EXPECT_THAT(m_frame.seen, ElementsAre(WM_UPDATECOMMANDUI, WM_COMMAND));
}

TEST_F(Messages, NotificationIsReflectedToItsSender) {
    NMHDR header{m_child.view, 7, 128};
    m_child.map = [](int message, WPARAM, LPARAM) { return message == WM_NOTIFY; };
    EXPECT_EQ(m_frame.SendMessage(WM_NOTIFY, 7, reinterpret_cast<LPARAM>(&header)), 1);
    EXPECT_THAT(m_frame.seen, IsEmpty());
    m_child.map = {};
    m_frame.SendMessage(WM_NOTIFY, 7, reinterpret_cast<LPARAM>(&header));
    EXPECT_THAT(m_frame.seen, ElementsAre(WM_NOTIFY));
    m_child.seen.clear(); // its own notification is not sent back to itself
    m_child.SendMessage(WM_NOTIFY, 7, reinterpret_cast<LPARAM>(&header));
    EXPECT_THAT(m_child.seen, ElementsAre(WM_NOTIFY));
}

TEST_F(Messages, CommandFilterSwallowsWhatIsKnownAndDisabled) {
    struct Row {
        const char* name;
        std::function<void(MacCmdUI&)> update;
        bool isRun;
    };
    const Row rows[] = {
        {"no handler", [](MacCmdUI&) {}, true},
        {"enabled", [](MacCmdUI& state) { state.Enable(true); }, true},
        {"disabled alone", [](MacCmdUI& state) { state.Enable(false); }, true},
        {"disabled, with a handler",
         [](MacCmdUI& state) {
             state.SetFnDefined(true);
             state.Enable(false);
         },
         false},
    };
    for (const Row& row : rows) {
        bool isRun = false;
        m_frame.map = [&](int message, WPARAM wParam, LPARAM lParam) {
            if (message == WM_UPDATECOMMANDUI && wParam == 0x1234)
                row.update(static_cast<MacCmdUI&>(*reinterpret_cast<CCmdUI*>(lParam)));
            isRun |= message == WM_COMMAND;
            return 1;
        };
        EXPECT_EQ(m_frame.SendMessage(WM_COMMAND, 0xABCD1234, 0), 1);
        EXPECT_EQ(isRun, row.isRun) << row.name;
    }
}

TEST_F(Messages, CommandEntryAsksForTheStateOrRuns) {
    m_frame.map = [](int message, WPARAM wParam, LPARAM) {
        return message == WM_COMMAND && wParam == 50 ? 3 : 0;
    };
    LRESULT extra = 77;
    EXPECT_TRUE(m_frame.OnCmdMsg(WM_COMMAND, 50, &extra, nullptr));
    EXPECT_EQ(extra, 3);
    EXPECT_FALSE(m_frame.OnCmdMsg(WM_COMMAND, 51, &extra, nullptr));
    EXPECT_EQ(extra, 0);
    EXPECT_FALSE(m_frame.OnCmdMsg(WM_COMMAND, 51, nullptr, nullptr)) << "no word to write to";

    BYTE enabled = 0;
    BYTE second = 0;
    SHORT mark = 0;
    MacCmdUI state(50, enabled, second, mark, nullptr);
    auto* info = reinterpret_cast<AFX_CMDHANDLERINFO*>(static_cast<CCmdUI*>(&state));
    EXPECT_FALSE(m_frame.OnCmdMsg(50, 0, &extra, info));
    state.SetFnDefined(true); // a handler that only says it exists
    EXPECT_TRUE(m_frame.OnCmdMsg(50, 0, &extra, info));
    EXPECT_EQ(enabled, 1);
    EXPECT_EQ(extra, 1);
}

TEST_F(Messages, DeadPointerIsNotFollowed) {
    auto* gone = new Mapped;
    delete gone;
    EXPECT_EQ(gone->SendMessage(kMessage), 0);
}

TEST_F(Messages, WorkersSendWaitsForTheAnswerOfTheMainThread) {
    const std::thread::id main = std::this_thread::get_id();
    m_child.map = [&](int message, WPARAM wParam, LPARAM lParam) {
        EXPECT_EQ(std::this_thread::get_id(), main);
        return message == static_cast<int>(kMessage) ? static_cast<int>(wParam + lParam) : 0;
    };
    LRESULT result = 0;
    OnWorker([&] { result = m_child.SendMessage(kMessage, 40, 2); });
    EXPECT_EQ(result, 42);
}

TEST_F(Messages, PostsArriveLaterAndInOrder) {
    std::vector<WPARAM> order;
    m_child.map = [&](int, WPARAM wParam, LPARAM) {
        order.push_back(wParam);
        return 1;
    };
    for (WPARAM i = 1; i <= 3; ++i) EXPECT_TRUE(m_child.PostMessage(kMessage, i));
    m_child.SendMessage(kMessage, 99);
    EXPECT_THAT(order, ElementsAre(99u));
    ASSERT_TRUE(RunUntil([&] { return order.size() == 4; }));
    EXPECT_THAT(order, ElementsAre(99u, 1u, 2u, 3u));
}

TEST_F(Messages, PostBehindAnOpenModalLoopIsDeliveredInsideIt) {
    bool inside = false;
    m_child.map = [&](int, WPARAM wParam, LPARAM) {
        if (wParam == 1) {
            vm::RunLoop(); // as a modal dialog does
            inside = false;
        } else if (wParam == 3) {
            inside = true;
            vm::EndInnermostLoop();
        }
        return 1;
    };
    for (WPARAM i = 1; i <= 3; ++i) m_child.PostMessage(kMessage, i);
    ASSERT_TRUE(RunUntil([&] { return m_child.seen.size() == 3; }));
    EXPECT_FALSE(inside) << "the modal loop returned after the third message";
}

TEST_F(Messages, PostToADestroyedOrReboundWindowIsDropped) {
    LogCapture log;
    m_child.PostMessage(kMessage);
    m_child.DestroyWindow();
    ASSERT_TRUE(RunUntil([&] { return !m_child.seen.empty(); })); // WM_DESTROY
    RunFor(std::chrono::milliseconds(5));
    EXPECT_THAT(m_child.seen, ElementsAre(WM_DESTROY));
    EXPECT_THAT(log.TakeLog(), ElementsAre(kDropped));

    Mapped next;
    next.Create("", "", 0, RECT{0, 0, 5, 5}, &m_frame, 8);
    next.seen.clear();
    next.PostMessage(kMessage);
    Mapped owner;
    RemoveControlReference(&next);
    SetControlReference(next.view, &owner);
    RunFor(std::chrono::milliseconds(5));
    EXPECT_THAT(next.seen, IsEmpty());
    EXPECT_THAT(log.TakeLog(), ElementsAre(kDropped));
    RemoveControlReference(&owner);
    next.DestroyWindow();
}

TEST_F(Messages, MainWindowNeedsNoBindingButInAPluginItDoes) {
    LogCapture log;
    AfxSetMainWnd(&m_frame);
    RemoveControlReference(&m_frame);
    int delivered = 0; // beside what the window system tells the frame
    m_frame.map = [&](int message, WPARAM, LPARAM) {
        delivered += message == static_cast<int>(kMessage);
        return 0;
    };
    OnWorker([&] { m_frame.SendMessage(kMessage); });
    EXPECT_EQ(delivered, 1);
    vm::App().isPluginEnvironment = true;
    OnWorker([&] { m_frame.SendMessage(kMessage); });
    vm::App().isPluginEnvironment = false;
    EXPECT_EQ(delivered, 1);
    EXPECT_THAT(log.TakeLog(), ElementsAre(kDropped));
}

TEST_F(Messages, HandleFormGetsThePlainBehaviourAndLeavesTheScratchWindowInFront) {
    EXPECT_EQ(SendMessage(nullptr, kMessage, 0, 0), 0);
    m_child.map = [](int, WPARAM, LPARAM) { return 1; };
    EXPECT_EQ(SendMessage(m_child.view, kMessage, 0, 0), 0) << "not the owner's overrides";
    EXPECT_THAT(m_child.seen, IsEmpty());
    EXPECT_EQ(GetControlReference(m_child.view), getTempWnd(true));
    EXPECT_EQ(getTempWnd(true)->view, nullptr);

    // The owner is still bound, behind it.
    RemoveControlReference(getTempWnd(true));
    EXPECT_EQ(GetControlReference(m_child.view), &m_child);
}

TEST_F(Messages, HandleFormLeavesAnUnownedViewAsItWas) {
    HWND view = m_child.view;
    RemoveControlReference(&m_child);
    SendMessage(view, kMessage, 0, 0);
    EXPECT_EQ(GetControlReference(view), nullptr);
    SetControlReference(view, &m_child);
}

TEST(ScratchWindow, IsMadeOnDemandAndFreedByTheCleanUp) {
    CWndCleanup();
    EXPECT_EQ(getTempWnd(true), nullptr);
    CWnd* scratch = getTempWnd(false);
    EXPECT_EQ(getTempWnd(true), scratch);
    EXPECT_TRUE(CWndListVerify(scratch));
    CWndCleanup();
    EXPECT_EQ(getTempWnd(true), nullptr);
}

TEST(WindowObjects, UnknownOneIsLoggedWithTheCount) {
    LogCapture log;
    CWnd known;
    CWndListRemove(reinterpret_cast<CWnd*>(0x40));
    const std::vector<std::string> lines = log.TakeLog();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_THAT(lines[0],
                testing::MatchesRegex("CWndListRemove - request to remove CWnd not in list: 0x40, "
                                      "[0-9]+ entries"));
    EXPECT_TRUE(CWndListVerify(&known));
}

TEST(WindowObjects, ObjectsWithoutHandlesAreValid) {
    CWnd plain;
    EXPECT_TRUE(plain.VerifyWindow());
    EXPECT_FALSE(IsWindow(nullptr));
    EXPECT_FALSE(IsWindow(reinterpret_cast<HWND>(2)));
    EXPECT_FALSE(IsWindow(reinterpret_cast<HWND>(0x12345670))) << "any pointer may be asked";
}
