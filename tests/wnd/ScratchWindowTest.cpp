// What the scratch window leaves behind: for notifications, deleted owners and throwing handlers.
#include <vmcore/app/CWinApp.h>
#include <vmcore/wnd/CWnd.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <thread>

#include <gmock/gmock.h>

#include "support/LogCapture.h"
#include "support/Watchdog.h"

using testing::ElementsAre;

namespace {

class Answering : public CWnd {
public:
    int MessageMap(int message, WPARAM, LPARAM) override { return map ? map(message) : 0; }
    std::function<int(int)> map;
};

class ScratchInFront : public testing::Test {
protected:
    ScratchInFront() {
        m_frame.Create("", "scratch", 0x10000, RECT{60, 60, 260, 200}, nullptr, 0);
        m_child = std::make_unique<Answering>();
        m_child->Create("", "", 0, RECT{0, 0, 20, 20}, &m_frame, 7);
        m_view = m_child->view;
    }
    ~ScratchInFront() override {
        m_frame.map = {};
        if (m_child) m_child->map = {}, m_child->DestroyWindow();
        m_frame.DestroyWindow();
        CWndCleanup();
    }

    // WM_COMMAND to the frame's bare handle, reflected to the child.
    LRESULT CommandFromChild() {
        return SendMessage(m_frame.view, WM_COMMAND, 5, reinterpret_cast<LPARAM>(m_view));
    }

    Watchdog m_watchdog;
    CWinApp m_app;
    Answering m_frame;
    std::unique_ptr<Answering> m_child;
    HWND m_view = nullptr;
};

} // namespace

TEST_F(ScratchInFront, NotificationsOfItsViewGoToTheParent) {
    SendMessage(m_view, WM_USER, 0, 0);
    ASSERT_EQ(GetControlReference(m_view), getTempWnd(true));
    NMHDR header{m_view, 7, 1};
    m_frame.map = [](int message) { return message == WM_NOTIFY ? 5 : 0; };
    EXPECT_EQ(m_frame.SendMessage(WM_NOTIFY, 7, reinterpret_cast<LPARAM>(&header)), 5);
    EXPECT_FALSE(m_frame.OnNotify(7, 0, nullptr)) << "no header";
}

TEST_F(ScratchInFront, OwnerDeletedDuringTheCallIsNotBoundAgain) {
    HWND frameView = m_frame.view;
    auto owner = std::make_unique<CWnd>();
    RemoveControlReference(&m_frame);
    SetControlReference(frameView, owner.get());
    m_child->map = [&](int message) {
        if (message == WM_COMMAND) owner.reset();
        return 1;
    };
    EXPECT_EQ(CommandFromChild(), 1);
    EXPECT_EQ(GetControlReference(frameView), nullptr);
    SetControlReference(frameView, &m_frame);
}

TEST_F(ScratchInFront, ThrowingHandlerLeavesTheOwnersBound) {
    m_child->map = [](int message) -> int {
        return message == WM_COMMAND ? throw std::runtime_error("handler") : 0;
    };
    EXPECT_THROW(CommandFromChild(), std::runtime_error);
    EXPECT_EQ(getTempWnd(true)->view, nullptr);
    SendMessage(m_view, WM_USER, 0, 0); // must not take the frame's binding away
    RemoveControlReference(getTempWnd(true));
    EXPECT_EQ(GetControlReference(m_frame.view), &m_frame);
    EXPECT_EQ(GetControlReference(m_view), m_child.get());
}

TEST_F(ScratchInFront, ExceptionOfAHandlerReachesTheSendingWorker) {
    m_child->map = [](int message) -> int {
        return message == WM_USER ? throw std::runtime_error("handler") : 0;
    };
    std::atomic<bool> caught = false;
    std::thread worker([&] {
        try {
            m_child->SendMessage(WM_USER);
        } catch (const std::runtime_error&) {
            caught = true;
        }
    });
    EXPECT_TRUE(RunUntil([&] { return caught.load(); }));
    worker.join();
}
