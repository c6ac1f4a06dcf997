// The profile functions as hosts call them.
#include <vmcore/files/profile.h>

#include <chrono>
#include <filesystem>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include <vmcore/app/CWinApp.h>
#include <vmcore/files/paths.h>

#include "files/profile.h"
#include "platform/messagebox.h"
#include "support/LogCapture.h"
#include "support/MessageBoxRecorder.h"
#include "support/TemporaryHome.h"

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Profile : public testing::Test {
protected:
    Profile() {
        InitProfileManager();
        *UserPreferencesPath = 0;
    }
    ~Profile() override {
        vm::ClearProfiles();
        *UserPreferencesPath = 0;
        *CurrentDirectory = 0;
    }

    std::string In(const std::string& name) const { return (m_home.Path() / name).string(); }
    std::string File(const std::string& bytes) { return m_home.Write("a.ini", bytes); }
    static std::string Get(const std::string& file, const char* section, const char* key,
                           const char* defaultValue = "none") {
        char value[300] = {};
        const DWORD length =
            GetPrivateProfileString(section, key, defaultValue, value, sizeof value, file.c_str());
        EXPECT_EQ(length, std::string(value).size());
        return value;
    }
    static void Set(const std::string& file, const char* section, const char* key,
                    const char* value) {
        EXPECT_EQ(WritePrivateProfileString(section, key, value, file.c_str()), 0);
    }
    /// The file after the changes were saved.
    std::string Saved(const std::string& file) const {
        FlushProfile(file.c_str());
        return m_home.Read(fs::relative(file, m_home.Path()));
    }

    const TemporaryHome m_home;
    LogCapture m_log;
    MessageBoxRecorder m_boxes;
};

TEST_F(Profile, LookUpsFindValuesAndDefaults) {
    const std::string file = File("early=1\n[Sec] note\nName=x;y\n\n[sec]\nname=2\n[t]\nn= 42\n[x");
    EXPECT_EQ(Get(file, "SEC", "NAME"), "x");
    EXPECT_EQ(Get(file, "", "early"), "none");
    EXPECT_EQ(Get(file, "x", "n", " default ; "), " default ; ");
    EXPECT_EQ(GetPrivateProfileInt("t", "n", 7, file.c_str()), 42u);
    EXPECT_EQ(GetPrivateProfileInt("sec", "name", 7, file.c_str()), 7u);
}

TEST_F(Profile, BuffersAreNeverOverrun) {
    const std::string file = File("[s]\nk=abcdef\n");
    char buffer[] = "????????";
    EXPECT_EQ(GetPrivateProfileString("s", "k", "", buffer, 4, file.c_str()), 3u);
    EXPECT_EQ(std::string(buffer, 8), std::string("abc\0????", 8));
    EXPECT_EQ(GetPrivateProfileString("s", "none", "123456", buffer, 1, file.c_str()), 0u);
    EXPECT_EQ(std::string(buffer, 8), std::string("\0bc\0????", 8));
    EXPECT_EQ(GetPrivateProfileString("s", "k", "", buffer + 1, 0, file.c_str()), 0u);
    EXPECT_EQ(GetPrivateProfileString("s", nullptr, "", buffer + 1, 9, file.c_str()), 0u);
    EXPECT_EQ(std::string(buffer, 8), std::string("\0bc\0????", 8)) << "untouched";
}

TEST_F(Profile, SetsAndDeletesWhereHostsExpectThem) {
    const std::string file = File("; top\n[a]\nk=1\n\n[b]\nlast=1\n\n");
    Set(file, "a", "new", "2");
    Set(file, "A", "K", "one");
    Set(file, "b", "more", "3");
    Set(file, "c", "k", "4");
    EXPECT_EQ(Saved(file), "; top\r\n[a]\r\nK=one\r\nnew=2\r\n\r\n[b]\r\nlast=1\r\n\r\nmore=3\r\n"
                           "\r\n[c]\r\nk=4\r\n");
    Set(file, "b", nullptr, nullptr);
    Set(file, "a", "k", nullptr);
    Set(file, "c", "k", "");
    Set(file, "c", "k", nullptr); // never deleted without a value
    Set(file, "c", nullptr, "value");
    EXPECT_EQ(Saved(file), "; top\r\n[a]\r\nnew=2\r\n\r\n[b]\r\n\r\n\r\n[c]\r\nk=\r\n");
}

TEST_F(Profile, NothingIsSavedUnasked) {
    const std::string file = In("new.ini");
    Set(file, "s", "k", "1");
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(Get(file, "S", "K"), "1");
    ServiceProfile();
    EXPECT_EQ(m_home.Read("new.ini"), "\r\n[s]\r\nk=1\r\n");
    m_home.Write("new.ini", "[s]\nk=2\n");
    EXPECT_EQ(Get(file, "s", "k"), "1") << "known already";
    EXPECT_EQ(Saved(file), "[s]\nk=2\n") << "nothing has changed";
    EXPECT_EQ(Get(file, "s", "k"), "2") << "read again";
    EXPECT_THAT(m_log.TakeLog(), ElementsAre("CreateFile(RD/WR) failed: " + file));
}

TEST_F(Profile, AMissingFileIsLookedForOnEveryLookUp) {
    const std::string file = In("later.ini");
    const std::string line = "CreateFile(RD/WR) failed: " + file;
    EXPECT_EQ(Get(file, "s", "k"), "none");
    EXPECT_THAT(m_log.TakeLog(), ElementsAre(line, line)) << "made, then looked up";
    EXPECT_EQ(GetProfileVerifyKey("[s]", file.c_str()), 0);
    m_home.Write("later.ini", "[s]\nk=1\n");
    EXPECT_EQ(GetProfileVerifyKey("[s]", file.c_str()), 0) << "only look-ups read again";
    EXPECT_EQ(Get(file, "s", "k"), "1");
    EXPECT_EQ(GetProfileVerifyKey("[s]", file.c_str()), 1);
}

TEST_F(Profile, LineEndsAreRefusedAndForgeNothing) {
    const std::string file = File("[s]\nk=1\n");
    Set(file, "s", "k", "2\n[t]");
    Set(file, "s\r", "k", "2");
    Set(file, "s", "k\nl", "2");
    const std::string line = "Profile names and values can't hold line ends: " + file;
    EXPECT_THAT(m_log.TakeLog(), ElementsAre(line, line, line));
    EXPECT_EQ(Saved(file), "[s]\nk=1\n");
}

TEST_F(Profile, LongLinesAreServedWholeUntilTheyAreReadAgain) {
    const std::string file = File("[s]\n");
    const std::string value(4000, 'v');
    Set(file, "s", "k", value.c_str());
    Set(file, "s", "l", value.c_str());
    std::string buffer(5000, 0);
    EXPECT_EQ(GetPrivateProfileString("s", "k", "", buffer.data(), 5000, file.c_str()), 4000u);
    FlushProfile(file.c_str());
    EXPECT_EQ(Get(file, "s", "k"), std::string(253, 'v'));
    EXPECT_THAT(m_log.TakeLog(),
                ElementsAre("Profile line of more than 255 characters cut: " + file))
        << "once for the file";
}

TEST_F(Profile, SpellingsInAnyCaseAreOneProfile) {
    const std::string file = File("[s]\nk=1\n");
    std::string other = file;
    other.replace(other.size() - 5, 5, "A.INI");
    EXPECT_EQ(Get(file, "s", "k"), "1");
    EXPECT_EQ(Get(other, "s", "k"), "1") << "though there is no such file";
    SetCurrentDirectory(m_home.Path().c_str());
    Set(file, "s", "k", "2");
    EXPECT_EQ(Get("a.ini", "s", "k"), "1") << "another spelling, another profile";
}

TEST_F(Profile, ChildrenAreListedInFileOrder) {
    const std::string file = File("[A\\x]\n[A]\n[A\\y\\z]\n[A\\y]\n");
    EXPECT_EQ(GetProfileSubClassCount("A", file.c_str()), 2u);
    char name[256] = "kept";
    DWORD length = 99;
    EXPECT_EQ(GetProfileEnumKey("A", 2, name, &length, file.c_str()), 0u);
    EXPECT_EQ(std::string(name) + std::to_string(length), "kept99");
    GetProfileEnumKey("A", 1, name, &length, file.c_str());
    EXPECT_EQ(std::string(name) + std::to_string(length), "y1");
    GetProfileEnumKey("A", 0, nullptr, &length, file.c_str());
    GetProfileEnumKey("A", 0, name, nullptr, file.c_str());
    EXPECT_EQ(std::string(name) + std::to_string(length), "x1");
}

TEST_F(Profile, DefaultProfileLeavesTheWorkingDirectory) {
    const std::string cwd = fs::current_path().string();
    SetCurrentDirectory("/somewhere/else");
    WriteProfileString("Window", "Left", "120");
    EXPECT_EQ(CurrentDirectory, cwd);
    SetCurrentDirectory("/somewhere/else");
    EXPECT_EQ(GetProfileInt("window", "left", 7), 120u);
    EXPECT_EQ(CurrentDirectory, cwd);
    EXPECT_EQ(GetProfileInt("Window", "Top", 7), 0u) << "the default is not used";
    char value[20];
    EXPECT_EQ(GetProfileString("Window", "Top", "d", value, sizeof value), 1u);
    ServiceProfile();
    EXPECT_EQ(m_home.Read("XDG_CONFIG_HOME/Velmora Win.ini"), "\r\n[Window]\r\nLeft=120\r\n");
    m_log.Ignore();
}

TEST_F(Profile, ApplicationWritesUnderAnotherSpellingThanItReads) {
    CWinApp app;
    EXPECT_EQ(app.WriteProfileString("s", "k", "1"), 0);
    EXPECT_EQ(app.WriteProfileInt("s", "n", -5), 0);
    EXPECT_STREQ(app.GetProfileString("s", "k", "default"), "") << "two profiles of one file";
    EXPECT_EQ(app.GetProfileInt("s", "n", 7), 0u);
    vm::ClearProfiles();
    EXPECT_STREQ(app.GetProfileString("s", "k"), "1");
    EXPECT_EQ(app.GetProfileInt("s", "n", 7), static_cast<UINT>(-5));
    m_log.Ignore();
}

TEST_F(Profile, FailedSavesAreReportedAndKeepTheChanges) {
    const std::string folder = In("folder.ini");
    fs::create_directory(folder);
    const std::string lost = In("no/folder/a.ini");
    for (const std::string& file : {folder, lost}) {
        vm::ClearProfiles();
        m_log.Ignore();
        Set(file, "s", "k", "1");
        m_log.Ignore();
        ServiceProfile();
        EXPECT_THAT(m_log.TakeErrors(),
                    ElementsAre("IniProfile::WriteProfile failed to create file to write!\n  " +
                                file + "\n"));
        EXPECT_THAT(m_log.TakeLog(), ElementsAre("CreateFile(ALWAYS) failed: " + file));
        EXPECT_EQ(Get(file, "s", "k"), "1");
    }
    fs::create_directories(In("no/folder"));
    ServiceProfile();
    EXPECT_EQ(m_home.Read("no/folder/a.ini"), "\r\n[s]\r\nk=1\r\n") << "still to be saved";
}

TEST_F(Profile, FilesTooLargeToReadAreNeverOverwritten) {
    const std::string file = File("[s]\nk=1\n");
    fs::resize_file(file, std::uintmax_t{1} << 31);
    EXPECT_EQ(Get(file, "s", "k"), "none");
    const std::string line = "Profile not read, it will not be written: " + file;
    EXPECT_THAT(m_log.TakeLog(), ElementsAre(line, line));
    Set(file, "s", "k", "2");
    ServiceProfile();
    EXPECT_EQ(fs::file_size(file), std::uintmax_t{1} << 31);
    EXPECT_EQ(m_log.TakeErrors().size(), 1u);
    vm::ClearProfiles();
    m_log.Ignore();
}

TEST_F(Profile, UnnamedFilesAndNullsAreHarmless) {
    Set("", "s", "k", "1");
    m_log.Ignore();
    ServiceProfile();
    EXPECT_THAT(m_log.TakeErrors(), ElementsAre("Write profile request for ini without a "
                                                "filename!\n"));
    EXPECT_EQ(WritePrivateProfileString("s", "k", "1", nullptr), 0);
    EXPECT_EQ(GetPrivateProfileInt("s", "k", 7, nullptr), 7u);
    EXPECT_EQ(GetProfileVerifyKey(nullptr, ""), 0);
    FlushProfile(nullptr);
    Set(File("[s]\n"), nullptr, "k", "1");
    vm::ClearProfiles();
    m_log.Ignore();
}

TEST_F(Profile, ALargeSectionIsSearchedToItsEnd) {
    std::string bytes = "[s]\n";
    for (int i = 0; i < 70'000; ++i)
        bytes += "key" + std::to_string(i) + "=" + std::to_string(i) + "\n";
    const std::string file = File(bytes);
    for (const int i : {0, 1, 65'534, 65'535, 65'536, 69'999})
        EXPECT_EQ(Get(file, "s", ("KEY" + std::to_string(i)).c_str()), std::to_string(i));
    EXPECT_EQ(Get(file, "s", "key70000"), "none");
    Set(file, "s", "key70000", "x");
    EXPECT_EQ(Get(file, "s", "key70000"), "x");
}

TEST_F(Profile, ValuesSurviveTheReuseOfTheirSpace) {
    const std::string file = File("[s]\nfirst=1\nk=\nlast=2\n");
    for (int length = 1; length < 2000; ++length)
        Set(file, "s", "k", std::string(static_cast<std::size_t>(length), 'v').c_str());
    Set(file, "s", "k", "short");
    EXPECT_EQ(Saved(file), "[s]\r\nfirst=1\r\nk=short\r\nlast=2\r\n");
    m_log.Ignore();
}

// A box runs a loop, so others must be able to use profiles meanwhile.
TEST_F(Profile, MessageBoxesWaitUntilTheLockIsFree) {
    const std::string tooLong = "C:" + std::string(250, 'x');
    std::string meanwhile = "blocked";
    const auto before = vm::SetMessageBoxHandler([&](const char*, const char*, UINT) {
        std::packaged_task<std::string()> lookUp(
            [this] { return Get(File("[s]\nk=1\n"), "s", "k"); });
        std::future<std::string> answer = lookUp.get_future();
        std::thread other(std::move(lookUp));
        if (answer.wait_for(std::chrono::seconds(20)) == std::future_status::ready)
            meanwhile = answer.get();
        other.detach();
        return 1;
    });
    EXPECT_EQ(Get(tooLong, "s", "k"), "none");
    vm::SetMessageBoxHandler(before);
    EXPECT_EQ(meanwhile, "1");
    m_log.Ignore();
}

TEST_F(Profile, ThreadsShareProfiles) {
    const std::string file = File("[s]\n");
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t)
        threads.emplace_back([&file, t] {
            const std::string key = "k" + std::to_string(t);
            for (int i = 0; i < 200; ++i) {
                const std::string value = std::to_string(i);
                Set(file, "s", key.c_str(), value.c_str());
                EXPECT_EQ(Get(file, "s", key.c_str()), value);
                WriteProfileString("s", key.c_str(), value.c_str());
                EXPECT_EQ(GetProfileInt("s", key.c_str(), 0), static_cast<UINT>(i));
                if (i % 50 == 0) FlushProfile(file.c_str());
            }
        });
    for (std::thread& thread : threads) thread.join();
    for (int t = 0; t < 8; ++t) EXPECT_EQ(Get(file, "s", ("k" + std::to_string(t)).c_str()), "199");
    m_log.Ignore();
}

} // namespace
