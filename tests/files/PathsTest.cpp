#include <vmcore/files/paths.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include <sys/xattr.h>

#include <gmock/gmock.h>

#include "support/MessageBoxRecorder.h"
#include "support/TemporaryHome.h"

namespace fs = std::filesystem;

namespace {

class Folders : public testing::Test {
protected:
    Folders() { ForgetAll(); }
    ~Folders() override { ForgetAll(); }

    static void ForgetAll() {
        for (char* cache :
             {PreferencesPath, UserPreferencesPath, DocumentsPath, FontsPath, ApplicationsPath,
              ApplicationSupportPath, ApplicationSupportPathSystem, CurrentDirectory})
            *cache = 0;
    }

    TemporaryHome m_home;
};

} // namespace

TEST_F(Folders, LieWhereTheDesktopKeepsThemAndTheUsersAreCreated) {
    const struct {
        char* (*get)(char*, int);
        const char* cache;
        fs::path path;
        bool created;
    } cases[] = {
        {GetPreferencesPath, PreferencesPath, "/etc/xdg", false},
        {GetUserPreferencesPath, UserPreferencesPath, m_home.Path() / "XDG_CONFIG_HOME", true},
        {GetDocumentsPath, DocumentsPath, m_home.Path() / "Documents", true},
        {GetFontsPath, FontsPath, m_home.Path() / "XDG_DATA_HOME/fonts", true},
        {GetApplicationsPath, ApplicationsPath, "/opt", false},
        {GetApplicationSupportPath, ApplicationSupportPath, m_home.Path() / "XDG_DATA_HOME", true},
        {GetApplicationSupportPathSystem, ApplicationSupportPathSystem, "/usr/local/share", false},
    };
    for (const auto& row : cases) {
        char buffer[MAX_PATH];
        EXPECT_EQ(row.get(buffer, sizeof buffer), buffer);
        EXPECT_EQ(buffer, row.path);
        EXPECT_EQ(row.cache, row.path);
        EXPECT_TRUE(!row.created || fs::is_directory(row.path)) << row.path;
    }
}

TEST_F(Folders, AreLookedUpOnceAndAgainAfterAFailure) {
    char buffer[MAX_PATH];
    const std::string blocked = m_home.Write("file", "") + "/below";
    setenv("XDG_CONFIG_HOME", blocked.c_str(), 1);
    EXPECT_STREQ(GetUserPreferencesPath(buffer, sizeof buffer), "");
    setenv("XDG_CONFIG_HOME", (m_home.Path() / std::string(230, 'n') / "longer").c_str(), 1);
    EXPECT_STREQ(GetUserPreferencesPath(buffer, sizeof buffer), "");
    setenv("XDG_CONFIG_HOME", (m_home.Path() / "first").c_str(), 1);
    EXPECT_EQ(GetUserPreferencesPath(buffer, sizeof buffer), m_home.Path() / "first");
    setenv("XDG_CONFIG_HOME", (m_home.Path() / "second").c_str(), 1);
    EXPECT_EQ(GetUserPreferencesPath(buffer, sizeof buffer), m_home.Path() / "first");
}

TEST_F(Folders, OnlyThePreferenceFoldersAlwaysEndTheBuffer) {
    char buffer[5] = "####";
    GetPreferencesPath(buffer, 5);
    EXPECT_STREQ(buffer, "/etc");
    std::memset(buffer, '#', 5);
    GetApplicationsPath(buffer, 4);
    EXPECT_EQ(std::string(buffer, 5), "/op##");
}

TEST_F(Folders, CurrentDirectoryOfTheLibraryIsNotThatOfTheProcess) {
    const std::string working = fs::current_path().string();
    char buffer[MAX_PATH];
    EXPECT_EQ(SetCurrentDirectory("Sub\\Folder"), 1);
    EXPECT_STREQ(CurrentDirectory, "Sub/Folder");
    EXPECT_EQ(GetCurrentDirectory(sizeof buffer, buffer), working.size());
    EXPECT_EQ(buffer, working);
    EXPECT_EQ(GetCurrentDirectory(MAX_PATH, nullptr), 0u);
    EXPECT_EQ(GetCurrentDirectory(2, buffer), 1u);
    EXPECT_STREQ(buffer, "/");
    SetCurrentDirectory(std::string(1000, 'x').c_str());
    EXPECT_EQ(std::strlen(CurrentDirectory), 255u);
}

TEST_F(Folders, NamesOnVolumesLieBelowTheVolumesRoot) {
    const auto translated = [](const char* name) {
        char path[MAX_PATH];
        std::strcpy(path, name);
        Win2PosixPath(path, false);
        return std::string(path);
    };
    setenv("VMCORE_VOLUMES", "/vol/", 1);
    EXPECT_EQ(translated("C:\\x.bmp"), "/vol/C/x.png");
    const char* user = std::getenv("USER");
    const std::string before = user ? user : "";
    setenv("VMCORE_VOLUMES", "", 1);
    setenv("USER", "no-such-user", 1);
    EXPECT_EQ(translated("C:\\x"), "/media/no-such-user/C/x");
    setenv("USER", before.c_str(), 1);
}

TEST_F(Folders, VolumePathThatDoesNotFitIsReported) {
    MessageBoxRecorder boxes;
    char path[MAX_PATH] = "C:\\";
    std::memset(path + 3, 'x', 252);
    path[255] = 0;
    Win2MacPath(path, false);
    EXPECT_EQ(std::string(path), "C::" + std::string(252, 'x'));
    EXPECT_THAT(boxes.Take(),
                testing::ElementsAre(ShownBox{
                    "CFURLGetFileSystemRepresentation - error creating POSIX name", "Error", 1}));
}

TEST_F(Folders, TypeCodeIsReadFromTheFileSystem) {
    const std::string file = m_home.Write("song", "x");
    EXPECT_EQ(MacFileType(file.c_str()), 0x3F3F3F3Fu);
    EXPECT_EQ(MacFileType("/no/such/file"), 0x3F3F3F3Fu);
    EXPECT_EQ(MacFileType(nullptr), 0x3F3F3F3Fu);
    const char info[32] = "MidiDRVK";
    if (setxattr(file.c_str(), "user.com.apple.FinderInfo", info, sizeof info, 0) != 0)
        GTEST_SKIP() << "the temporary folder keeps no extended attributes";
    EXPECT_EQ(MacFileType(file.c_str()), 0x4D696469u);
}

TEST(PascalStrings, KeepTheLengthModulo256) {
    char text[302];
    std::memset(text, 'a', 300);
    text[300] = 0;
    text[43] = 'z';
    ctop(text);
    EXPECT_EQ(text[0], 44);
    EXPECT_EQ(text[44], 'z');
    unsigned char pascal[8] = "\x03"
                              "abcXY";
    ptoc(pascal);
    EXPECT_STREQ(reinterpret_cast<char*>(pascal), "abc");
}

TEST(RetiredInterface, FSSpecToPathShowsABoxAndTouchesNothing) {
    MessageBoxRecorder boxes(2);
    EXPECT_EQ(FSSpecToPath(nullptr, nullptr, 10), 2);
    EXPECT_THAT(boxes.Take(), testing::ElementsAre(ShownBox{"FSSpecToPath should never be called",
                                                            "Internal Error", 1}));
}
