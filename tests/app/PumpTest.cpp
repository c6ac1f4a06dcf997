#include <vmcore/app/messages.h>

#include <chrono>
#include <stdexcept>
#include <thread>

#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <gmock/gmock.h>

#include <vmcore/wnd/frames.h>

#include "platform/mainqueue.h"
#include "platform/messagebox.h"
#include "platform/runloop.h"
#include "support/LogCapture.h"
#include "support/MessageBoxRecorder.h"

using testing::ElementsAre;

TEST(Pump, PeekMessageRunsTheLoopForTenMillisecondsAndAnswersFalse) {
    MSG msg;
    msg.message = 4711;
    bool fired = false;
    QTimer::singleShot(1, [&] { fired = true; });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(PeekMessage(&msg, nullptr, 0, 0, 1));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::microseconds(9500));
    EXPECT_TRUE(fired);
    EXPECT_EQ(msg.message, 4711u);
}

TEST(Pump, PeekMessageRunsAWorkersOwnLoop) {
    bool fired = false;
    std::thread worker([&] {
        MSG msg;
        PeekMessage(&msg, nullptr, 0, 0, 1); // makes the loop
        QTimer::singleShot(0, [&] { fired = true; });
        PeekMessage(&msg, nullptr, 0, 0, 1);
    });
    worker.join();
    EXPECT_TRUE(fired);
}

TEST(Pump, PeekMessageThrowsWhatAHandlerThrewOnItsOwnThread) {
    const auto peekThrows = [] {
        class Thrower : public CMDIFrameWnd {
            int MessageMap(int message, WPARAM, LPARAM) override {
                if (message == WM_TIMER) throw std::runtime_error("timer");
                return 0;
            }
        } frame;
        frame.SetTimer(1, 1);
        EXPECT_THROW(for (int i = 0; i < 100; ++i) PeekMessage(nullptr, nullptr, 0, 0, 1),
                     std::runtime_error);
    };
    std::thread(peekThrows).join();
    peekThrows();
    vm::RunLoopFor(1); // nothing is left for another loop
}

TEST(Pump, CallsThatMustNotBeMadeSaySo) {
    MessageBoxRecorder boxes;
    MSG msg{};
    EXPECT_EQ(DispatchMessage(&msg), 0);
    EXPECT_THAT(boxes.Take(),
                ElementsAre(ShownBox{"DispatchMessage should never be called!", "Error", 1}));
}

TEST(Pump, EntryPointsWithFixedAnswers) {
    MSG msg{};
    EXPECT_FALSE(TranslateMessage(&msg));
    EXPECT_TRUE(IsDialogMessage(nullptr, &msg));
    EXPECT_TRUE(PostThreadMessage(nullptr, 1, 0, 0));
}

TEST(Pump, TicksStartAtTheFirstCall) {
    const DWORD first = GetTickCount(); // 0 when this test runs alone
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    const DWORD second = GetCurrentTime();
    EXPECT_GE(second - first, 29u);
    EXPECT_LT(second - first, 5000u);
}

TEST(Pump, DebugOutputIsOneLogLine) {
    LogCapture log;
    OutputDebugString("value = 100 %d");
    OutputDebugString(nullptr);
    EXPECT_THAT(log.TakeLog(), ElementsAre("value = 100 %d", ""));
}

TEST(MessageBoxes, DefaultAnswersFollowTheStyleWord) {
    struct Row {
        UINT style;
        int answer;
    };
    const Row rows[] = {{MB_OK, IDOK},
                        {MB_OKCANCEL, IDOK},
                        {MB_OKCANCEL | MB_DEFBUTTON2, IDCANCEL},
                        {MB_ABORTRETRYIGNORE | MB_DEFBUTTON3, IDIGNORE},
                        {MB_YESNOCANCEL | MB_ICONQUESTION | MB_DEFBUTTON2, IDNO},
                        {MB_YESNO, IDYES},
                        {MB_RETRYCANCEL, IDRETRY},
                        {MB_YESNO | MB_DEFBUTTON3, IDYES}, // no such button
                        {0xF, IDOK}};
    for (const Row& row : rows) EXPECT_EQ(vm::DefaultAnswer(row.style), row.answer) << row.style;
}

TEST(MessageBoxes, OwnerFreedWhileItIsOpenCancelsIt) {
    auto* owner = new QWidget;
    owner->show();
    QTimer::singleShot(0, [&] { delete owner; });
    EXPECT_EQ(MessageBox(owner, "Still there?", "Librarian", MB_YESNOCANCEL), IDCANCEL);
}

TEST(MessageBoxes, UnattendedRunsLogAndTakeTheDefault) {
    setenv("VMCORE_MESSAGEBOX", "log", 1);
    LogCapture log;
    EXPECT_EQ(MessageBox(nullptr, "Save the bank?", "Librarian", MB_YESNO | MB_DEFBUTTON2), IDNO);
    EXPECT_THAT(log.TakeLog(), ElementsAre("Librarian: Save the bank?"));
    unsetenv("VMCORE_MESSAGEBOX");
}
