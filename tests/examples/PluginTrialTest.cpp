#include "librarian/PluginTrial.h"

#include <filesystem>

#include "SettingsHome.h"
#include "librarian/PluginVerdicts.h"

namespace fs = std::filesystem;

namespace {

const std::atomic<bool> kNotStopped{false};

} // namespace

TEST(PluginTrial, SaysHowItEnded) {
    const struct {
        const char* plugin;
        const char* problem;
    } rows[] = {
        {"SixOp", ""},
        {"WrongVersion", ""}, // which loading it will find out, unharmed
        {"missing", ""},
        {"NoEntry", "it has no entry LibrarianPlugin"},
        {"Segfaults", "it crashes (SIGSEGV)"},
        {"AbortsAtLoad", "it crashes (SIGABRT)"},
        {"Throws", "its entry throws"},
        {"Exits", "it ends the program (exit code 0)"},
        {"Hangs", "it does not return within 1 seconds"},
    };
    for (const auto& row : rows) {
        const std::string path = LIBRARIAN_PLUGINS "/" + std::string(row.plugin) + ".so";
        const bool hangs = row.plugin == std::string("Hangs");
        const TrialResult result = TryPlugin(path, LIBRARIAN_PROGRAM, hangs ? 1 : 60, kNotStopped);
        EXPECT_EQ(result.problem, row.problem) << row.plugin;
        EXPECT_TRUE(result.wasTried);
    }
}

TEST(PluginTrial, WithoutAProcessIsNoVerdict) {
    const TrialResult result = TryPlugin("x.so", "/missing", 1, kNotStopped);
    EXPECT_EQ(result.problem, "it cannot be tried: No such file or directory");
    EXPECT_FALSE(result.wasTried);
}

TEST(PluginTrial, StoppedIsNoVerdict) {
    const std::atomic<bool> stopped{true};
    const auto result = TryPlugin(LIBRARIAN_PLUGINS "/Hangs.so", LIBRARIAN_PROGRAM, 60, stopped);
    EXPECT_FALSE(result.wasTried);
}

using PluginVerdicts = SettingsHome;

TEST_F(PluginVerdicts, HoldForTheFileThatWasTried) {
    const std::string path = m_home.Write("a, b|c.so", "one");
    EXPECT_EQ(RecallVerdict(path), std::nullopt);
    RememberVerdict(path, "it crashes (SIGSEGV)");
    Reload();
    EXPECT_EQ(RecallVerdict(path), "it crashes (SIGSEGV)");
    RememberVerdict(path, "");
    EXPECT_EQ(RecallVerdict(path), "");

    fs::last_write_time(path, fs::last_write_time(path) + std::chrono::seconds(1));
    EXPECT_EQ(RecallVerdict(path), std::nullopt);
    RememberVerdict(path, "");
    fs::resize_file(path, 5);
    EXPECT_EQ(RecallVerdict(path), std::nullopt);
    RememberVerdict(path, "");
    ForgetVerdict(path);
    EXPECT_EQ(RecallVerdict(path), std::nullopt);
}

TEST_F(PluginVerdicts, OfAPathThatDoesNotFitAreNotRemembered) {
    for (const std::string& name : {std::string(220, 'x'), std::string("semi;colon")}) {
        const std::string path = m_home.Write(name, "one");
        RememberVerdict(path, "");
        EXPECT_EQ(RecallVerdict(path), std::nullopt) << name;
    }
}
