// The message trace: which lines it writes for what reaches a window, and that they stay whole.
#include <vmcore/app/CWinApp.h>
#include <vmcore/wnd/CWnd.h>

#include <fstream>
#include <functional>
#include <regex>
#include <stdexcept>
#include <thread>

#include <unistd.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <gmock/gmock.h>

#include "platform/eventboundary.h"
#include "support/LogCapture.h"
#include "support/Watchdog.h"
#include "wnd/messageNames.h"
#include "wnd/messageTrace.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace tracing {

constexpr UINT kMessage = WM_USER + 1;
constexpr int kPerThread = 200;

class Traced : public CWnd {
public:
    using Handler = std::function<int(UINT, WPARAM)>;
    int MessageMap(int message, WPARAM wParam, LPARAM) override {
        const Handler copy = handler;
        return copy ? copy(static_cast<UINT>(message), wParam) : 0;
    }
    Handler handler;
};

// As a dialog does: some messages are answered here, some passed on.
class Overriding : public Traced {
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        return vm::Traced(*this, message, wParam, lParam, [&]() -> LRESULT {
            if (message == WM_INITDIALOG) return 5;
            return CWnd::WindowProc(message, wParam, lParam);
        });
    }
};

QJsonObject Parsed(const std::string& line) {
    QJsonParseError error;
    const QJsonDocument json = QJsonDocument::fromJson(QByteArray::fromStdString(line), &error);
    EXPECT_TRUE(json.isObject()) << line << error.errorString().toStdString();
    EXPECT_TRUE(line.ends_with("}\n") && line.find('\n') == line.size() - 1) << line;
    return json.object();
}

// What is the same in every run, in short.
std::string Summary(const QJsonObject& line) {
    std::string text;
    for (const char* key : {"message", "wParam", "result", "undelivered", "sender", "depth"})
        if (line.contains(QLatin1String(key)))
            text += (text.empty() ? "" : " ") +
                    line[QLatin1String(key)].toVariant().toString().toStdString();
    return text;
}

class MessageTrace : public testing::Test {
protected:
    MessageTrace() {
        m_frame.Create("", "trace", 0, RECT{60, 60, 260, 200}, nullptr, 0);
        vm::StartMessageTrace("");
    }
    ~MessageTrace() override {
        vm::StopMessageTrace();
        m_frame.handler = {};
        m_frame.DestroyWindow();
    }

    // Without what the window system tells the frame meanwhile.
    std::vector<QJsonObject> Take() {
        std::vector<QJsonObject> lines;
        for (const std::string& text : m_log.TakeErrors()) {
            const QJsonObject line = Parsed(text);
            const bool isOwn = line["number"].toInt() >= static_cast<int>(WM_USER);
            if (isOwn || line["sender"] != "event") lines.push_back(line);
        }
        return lines;
    }
    std::vector<std::string> Summaries() {
        std::vector<std::string> texts;
        for (const QJsonObject& line : Take()) texts.push_back(Summary(line));
        return texts;
    }

    Watchdog m_watchdog;
    LogCapture m_log;
    CWinApp m_app;
    Traced m_frame;
};

TEST_F(MessageTrace, LineSaysWhoGotWhatAndAnswered) {
    m_frame.handler = [](UINT, WPARAM) { return 7; };
    m_frame.SendMessage(WM_SIZE, static_cast<WPARAM>(-1), 9);
    const std::vector<QJsonObject> lines = Take();
    ASSERT_EQ(lines.size(), 1u);
    const QJsonObject& line = lines[0];
    EXPECT_EQ(line["pid"].toInt(), getpid());
    EXPECT_EQ(line["window"].toString().toULongLong(nullptr, 16),
              reinterpret_cast<std::uintptr_t>(m_frame.view));
    EXPECT_EQ(line["class"].toString(), "tracing::Traced");
    EXPECT_EQ(line["number"].toInt(), static_cast<int>(WM_SIZE));
    EXPECT_EQ(line["lParam"].toInt(), 9);
    EXPECT_GE(line["ns"].toInt(-1), 0);
    EXPECT_EQ(Summary(line), "WM_SIZE -1 7 send 0");
}

TEST_F(MessageTrace, NestedMessagesComeFirstAndAreDeeper) {
    m_frame.handler = [&](UINT message, WPARAM) {
        if (message == kMessage) m_frame.WindowProc(WM_USER, 1, 0);
        return 1;
    };
    m_frame.SendMessage(kMessage);
    EXPECT_THAT(Summaries(), ElementsAre("WM_USER 1 1 direct 1", "WM_USER+1 0 1 send 0"));
}

TEST_F(MessageTrace, MessageIsOneLineHoweverManyOverridesPassItOn) {
    Overriding dialog;
    dialog.handler = [](UINT, WPARAM) { return 2; };
    dialog.SendMessage(WM_INITDIALOG);
    dialog.SendMessage(kMessage);
    EXPECT_THAT(Summaries(), ElementsAre("WM_INITDIALOG 0 5 send 0", "WM_USER+1 0 2 send 0"));

    // The same message sent again from inside is another one.
    int left = 2;
    dialog.handler = [&](UINT message, WPARAM) {
        if (--left > 0) dialog.SendMessage(message);
        return 1;
    };
    dialog.SendMessage(kMessage);
    EXPECT_THAT(Summaries(), ElementsAre("WM_USER+1 0 1 send 1", "WM_USER+1 0 1 send 0"));
}

TEST_F(MessageTrace, SenderIsNamed) {
    const struct {
        const char* sender;
        std::function<void()> cause;
    } rows[] = {
        {"direct", [&] { m_frame.WindowProc(kMessage, 0, 0); }},
        {"direct", [&] { m_frame.SendMessageDirect(kMessage, 0, 0); }},
        {"send", [&] { SendMessage(m_frame.view, kMessage, 0, 0); }},
        {"event", [&] { vm::AtEventBoundary([&] { m_frame.WindowProc(kMessage, 0, 0); }); }},
        {"event", [&] { vm::AtEventBoundary([&] { m_frame.SendMessage(kMessage, 0, 0); }); }},
        {"post", [&] { m_frame.PostMessage(kMessage); }},
        {"timer", [&] { m_frame.SetTimer(3, 1, nullptr); }},
    };
    for (const auto& row : rows) {
        row.cause();
        std::vector<QJsonObject> lines;
        ASSERT_TRUE(RunUntil([&] {
            if (lines.empty()) lines = Take();
            return !lines.empty();
        }));
        EXPECT_EQ(lines[0]["sender"].toString().toStdString(), row.sender);
    }
    m_frame.KillTimer(3);
    m_log.Ignore(); // it may have fired again
}

TEST_F(MessageTrace, OtherThreadsAreNamed) {
    long sender = 0;
    std::thread worker([&] {
        sender = gettid();
        m_frame.PostMessage(kMessage, 1);
        m_frame.SendMessage(kMessage, 2);
    });
    std::vector<QJsonObject> lines;
    RunUntil([&] {
        for (QJsonObject& line : Take()) lines.push_back(std::move(line));
        return lines.size() == 2;
    });
    worker.join();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(Summary(lines[0]), "WM_USER+1 1 0 post 0");
    EXPECT_EQ(Summary(lines[1]), "WM_USER+1 2 0 send 0");
    for (const QJsonObject& line : lines) EXPECT_EQ(line["thread"].toInteger(), sender);
}

TEST_F(MessageTrace, CommandsThatAreAskedForAreDeliveries) {
    m_frame.handler = [](UINT message, WPARAM) { return message == WM_COMMAND; };
    LRESULT extra = 0;
    m_frame.OnCmdMsg(WM_COMMAND, 50, &extra, nullptr);
    BYTE enabled = 0;
    BYTE second = 0;
    SHORT mark = 0;
    MacCmdUI state(50, enabled, second, mark, nullptr);
    m_frame.OnCmdMsg(50, 0, &extra,
                     reinterpret_cast<AFX_CMDHANDLERINFO*>(static_cast<CCmdUI*>(&state)));
    EXPECT_THAT(Summaries(),
                ElementsAre("WM_COMMAND 50 1 direct 0", "WM_UPDATECOMMANDUI 50 0 direct 0"));
}

TEST_F(MessageTrace, WhatReachesNobodyIsSaid) {
    Traced gone;
    gone.Create("", "", 0, RECT{0, 0, 5, 5}, &m_frame, 8);
    gone.PostMessage(kMessage, 4);
    gone.DestroyWindow();
    Take();
    m_log.Ignore();
    std::vector<std::string> lines;
    ASSERT_TRUE(RunUntil([&] { return !(lines = Summaries()).empty(); }));
    EXPECT_THAT(lines, ElementsAre("WM_USER+1 4 not registered post 0"));
    EXPECT_EQ(m_log.TakeLog().size(), 1u);
    auto* dead = new Traced;
    delete dead;
    dead->SendMessage(kMessage);
    EXPECT_THAT(Summaries(), ElementsAre("WM_USER+1 0 no such window object send 0"));
}

TEST_F(MessageTrace, HandlerMayEndTheObjectOrThrow) {
    auto* passing = new Traced;
    passing->handler = [&](UINT, WPARAM) {
        delete passing;
        return 3;
    };
    passing->SendMessageDirect(kMessage, 0, 0);
    EXPECT_THAT(Summaries(), ElementsAre("WM_USER+1 0 3 direct 0"));

    m_frame.handler = [](UINT, WPARAM) -> int { throw std::runtime_error("no"); };
    EXPECT_THROW(m_frame.SendMessage(kMessage), std::runtime_error);
    m_frame.handler = {};
    m_frame.SendMessage(kMessage);
    const std::vector<QJsonObject> lines = Take();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_TRUE(lines[0]["threw"].toBool() && lines[0]["result"].isNull());
    EXPECT_EQ(Summary(lines[1]), "WM_USER+1 0 0 send 0") << "the depth is right again";
}

TEST_F(MessageTrace, FileThatCannotBeOpenedIsLogged) {
    vm::StartMessageTrace("/nowhere/at/all");
    EXPECT_THAT(m_log.TakeLog(),
                ElementsAre("VMCORE_TRACE_FILE: /nowhere/at/all: No such file or directory"));
    m_frame.SendMessage(kMessage);
    EXPECT_EQ(Take().size(), 1u);
}

// Also what the processes of the next test run.
TEST(MessageTraceThreads, SendDirectly) {
    std::atomic<int> count = 0;
    Traced target;
    target.handler = [&](UINT, WPARAM) { return ++count; };
    const auto send = [&] {
        for (int i = 0; i < kPerThread; ++i) target.SendMessageDirect(kMessage, 0, 0);
    };
    std::thread other(send);
    send();
    other.join();
    EXPECT_EQ(count, 2 * kPerThread);
}

TEST(MessageTraceFile, KeepsLinesOfThreadsAndProcessesWhole) {
    constexpr int kProcesses = 3;
    const Watchdog watchdog;
    const QTemporaryDir folder;
    const QString file = folder.filePath("trace.jsonl");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("VMCORE_TRACE", "messages");
    environment.insert("VMCORE_TRACE_FILE", file);
    QProcess processes[kProcesses];
    for (QProcess& process : processes) {
        process.setProcessEnvironment(environment);
        process.start("/proc/self/exe", {"--gtest_filter=MessageTraceThreads.SendDirectly"});
    }
    for (QProcess& process : processes) {
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 0) << process.readAll().toStdString();
    }
    int lines = 0;
    std::ifstream trace(file.toStdString());
    for (std::string line; std::getline(trace, line); ++lines) {
        if (testing::Test::HasFailure()) break;
        EXPECT_EQ(Parsed(line + "\n")["message"].toString(), "WM_USER+1");
    }
    EXPECT_EQ(lines, kProcesses * 2 * kPerThread);
}

TEST(MessageNames, AreThoseOfTheHeader) {
    std::ifstream file(VMCORE_MESSAGES_HEADER);
    const std::string header(std::istreambuf_iterator<char>(file), {});
    const std::regex entry(R"(\n    ((?:WM|BM|LB|CB|EM)_\w+) = (0x[0-9A-Fa-f]+|\d+),)");
    int count = 0;
    for (std::sregex_iterator at(header.begin(), header.end(), entry), end; at != end; ++at) {
        EXPECT_EQ(vm::MessageName(static_cast<UINT>(std::stoul((*at)[2], nullptr, 0))), (*at)[1]);
        ++count;
    }
    EXPECT_GT(count, 60);
}

TEST(MessageNames, OfHostsCountFromTheirBase) {
    const struct {
        UINT message;
        const char* name;
    } rows[] = {
        {0, "0"},
        {1023, "1023"},
        {1025, "WM_USER+1"},
        {0x8068, "WM_USER+31848"},
        {0x9000, "WM_APP"},
        {0x9002, "WM_APP+2"},
        {0x8069, "WM_QUERYCLOSE"},
    };
    for (const auto& [message, name] : rows) EXPECT_EQ(vm::MessageName(message), name);
}

} // namespace tracing
