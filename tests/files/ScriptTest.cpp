#include <vmcore/files/library.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gmock/gmock.h>

#include "support/LogCapture.h"
#include "support/TemporaryHome.h"

namespace fs = std::filesystem;
using testing::ElementsAre;

namespace {

// A folder at the front of PATH with a pkexec that never asks.
class Script : public testing::Test {
protected:
    Script() {
        fs::create_directory(m_home.Path() / "bin");
        SetPath((m_home.Path() / "bin").string() + ":" + m_path);
    }
    ~Script() override { SetPath(m_path); }

    static void SetPath(const std::string& path) { setenv("PATH", path.c_str(), 1); }
    std::string In(const std::string& name) const { return (m_home.Path() / name).string(); }

    // `body` are lines of sh, executed in the temporary folder.
    void StandIn(const std::string& body) const {
        fs::permissions(m_home.Write("bin/pkexec", "#!/bin/sh\ncd " + In("") + "\n" + body + "\n"),
                        fs::perms::owner_all);
    }

    const std::string m_path = std::getenv("PATH");
    TemporaryHome m_home;
    LogCapture m_log;
};

constexpr const char* kRecord = "printf '%s\\n' \"$@\" > arguments";

} // namespace

TEST_F(Script, PathReachesTheAdministratorsShellAsItStands) {
    StandIn(kRecord);
    for (const std::string path :
         {"/opt/app/install.sh", "'/opt/my app/install.sh' --all", "C:\\a\\b", "$HOME/x", ""}) {
        EXPECT_EQ(ExecuteScriptFile(path.c_str()), 0);
        EXPECT_EQ(m_home.Read("arguments"), "/bin/sh\n-c\n/bin/bash " + path + "\n");
    }
}

TEST_F(Script, HasEndedWhenTheCallReturns) {
    StandIn("exec \"$@\"");
    m_home.Write("my script.sh", "[ -n \"$BASH\" ] && echo \"$# $1\" > " + In("ran"));
    EXPECT_EQ(ExecuteScriptFile(("'" + In("my script.sh") + "' 'a b'").c_str()), 0);
    EXPECT_EQ(m_home.Read("ran"), "1 a b\n");
}

TEST_F(Script, RefusalsAndFailuresAreNotReported) {
    for (const char* end : {"exit 126", "exit 127", "exit 1", "kill -KILL $$"}) {
        StandIn(std::string(kRecord) + "\n" + end);
        EXPECT_EQ(ExecuteScriptFile("x.sh"), 0) << end;
        EXPECT_TRUE(fs::remove(In("arguments"))) << end;
    }
}

TEST_F(Script, MissingPkexecIsLogged) {
    SetPath(In("bin"));
    EXPECT_EQ(ExecuteScriptFile("x.sh"), 0);
    EXPECT_THAT(m_log.TakeLog(), ElementsAre("ExecuteScriptFile: cannot start pkexec: No such file "
                                             "or directory"));
}

TEST_F(Script, NothingIsStartedForAPathBeyondAscii) {
    StandIn(kRecord);
    EXPECT_EQ(ExecuteScriptFile("/opt/n\xC3\xA4me.sh"), 1);
    EXPECT_EQ(ExecuteScriptFile(nullptr), 1);
    EXPECT_FALSE(fs::exists(In("arguments")));
}

TEST_F(Script, SignalsOfTheHostDoNotEndTheWait) {
    struct sigaction interrupts {}; // without SA_RESTART
    struct sigaction before {};
    interrupts.sa_handler = [](int) {};
    sigaction(SIGUSR1, &interrupts, &before);
    StandIn("for i in 1 2 3 4 5; do kill -USR1 $PPID; done\n"
            "ls -l /proc/self > ended");
    EXPECT_EQ(ExecuteScriptFile("x.sh"), 0);
    EXPECT_NE(m_home.Read("ended"), "");
    sigaction(SIGUSR1, &before, nullptr);
}

TEST_F(Script, SignalsThatTheHostBlocksOrIgnoresEndTheScript) {
    const auto ignoredBefore = std::signal(SIGPIPE, SIG_IGN);
    sigset_t terminate;
    sigset_t maskBefore;
    sigemptyset(&terminate);
    sigaddset(&terminate, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &terminate, &maskBefore);
    for (const std::string name : {"PIPE", "TERM"}) {
        StandIn("echo started > " + name + "\nkill -" + name + " $$\necho survived > " + name);
        EXPECT_EQ(ExecuteScriptFile("x.sh"), 0);
        EXPECT_EQ(m_home.Read(name), "started\n") << name;
    }
    pthread_sigmask(SIG_SETMASK, &maskBefore, nullptr);
    std::signal(SIGPIPE, ignoredBefore);
}
