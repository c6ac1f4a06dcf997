#include <vmcore/files/fileapi.h>

#include <cstring>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include <fcntl.h>

#include <gmock/gmock.h>

#include "support/TemporaryHome.h"

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

class FindFile : public testing::Test {
protected:
    // The entries that a host's loop sees; folders end with a slash here.
    std::vector<std::string> Find(const std::string& pattern) const {
        std::vector<std::string> names;
        WIN32_FIND_DATA data{};
        HANDLE find = FindFirstFile((m_home.Path() / pattern).c_str(), &data);
        for (BOOL more = find != nullptr; more; more = FindNextFile(find, &data))
            names.push_back(data.cFileName + std::string(data.dwFileAttributes == 1 ? "/" : ""));
        EXPECT_EQ(FindClose(find), 1);
        return names;
    }
    void Fill() const {
        for (const char* name : {"a.syx", "B.SYX", "c.Syx", "d.txt", ".syx", "e.x.syx", "plain"})
            m_home.Write(std::string("Data/") + name, "");
        fs::create_directory(m_home.Path() / "Data/folder.syx");
    }

    TemporaryHome m_home;
};

} // namespace

TEST_F(FindFile, EveryEntryWithoutAFilter) {
    Fill();
    for (const char* pattern : {"Data/*.*", "Data\\*.*", "Data", "Data/", "Data/*"})
        EXPECT_THAT(Find(pattern), UnorderedElementsAre("a.syx", "B.SYX", "c.Syx", "d.txt", ".syx",
                                                        "e.x.syx", "plain", "folder.syx/"))
            << pattern;
}

TEST_F(FindFile, ExtensionMatchesInAllUpperOrAllLowerCase) {
    Fill();
    for (const char* pattern : {"Data/*.syx", "Data/*.SyX"})
        EXPECT_THAT(Find(pattern), UnorderedElementsAre("a.syx", "B.SYX", "e.x.syx", "folder.syx/"))
            << pattern;
    EXPECT_THAT(Find("Data/*."), UnorderedElementsAre("plain", ".syx"));
    EXPECT_THAT(Find("Data/*.mid"), IsEmpty());
}

TEST_F(FindFile, KeepsTheOrderOfTheDirectory) {
    std::vector<std::string> order;
    for (int i = 0; i < 40; ++i) m_home.Write("Data/" + std::to_string(i * 7919), "");
    for (const auto& entry : fs::directory_iterator(m_home.Path() / "Data"))
        order.push_back(entry.path().filename());
    EXPECT_EQ(Find("Data/*.*"), order);
}

TEST_F(FindFile, NothingFoundGivesZero) {
    fs::create_directory(m_home.Path() / "empty");
    m_home.Write("n\xC3\xA4me/file", "");
    WIN32_FIND_DATA data{};
    for (const char* pattern : {"empty/*.*", "missing/*.*", "n\xC3\xA4me/*.*", "empty/*.syx"})
        EXPECT_EQ(FindFirstFile((m_home.Path() / pattern).c_str(), &data), nullptr) << pattern;
    EXPECT_EQ(FindNextFile(nullptr, &data), 0);
    EXPECT_EQ(FindClose(nullptr), 1);
}

TEST_F(FindFile, DanglingLinksAndNamesBeyondAsciiEndALoop) {
    for (const char* name : {"dangling", "n\xC3\xA4me"}) {
        const fs::path folder = m_home.Path() / "one";
        fs::create_directory(folder);
        if (*name == 'd')
            fs::create_symlink("nowhere", folder / name);
        else
            m_home.Write(std::string("one/") + name, "");
        EXPECT_THAT(Find("one/*.*"), IsEmpty()) << name;
        fs::remove_all(folder);
    }
}

TEST_F(FindFile, SearchGoesOnAfterAnEntryThatWentAway) {
    for (const char* name : {"a", "b", "c"}) m_home.Write(std::string("Data/") + name, "");
    WIN32_FIND_DATA data{};
    HANDLE find = FindFirstFile((m_home.Path() / "Data/*.*").c_str(), &data);
    ASSERT_TRUE(find);
    std::set<std::string> left = {"a", "b", "c"};
    left.erase(data.cFileName);
    for (const std::string& name : left)
        fs::rename(m_home.Path() / "Data" / name, m_home.Path() / name);
    EXPECT_EQ(FindNextFile(find, &data), 0); // the index advances all the same
    for (const std::string& name : left)
        fs::rename(m_home.Path() / name, m_home.Path() / "Data" / name);
    EXPECT_EQ(FindNextFile(find, &data), 1);
    EXPECT_TRUE(left.count(data.cFileName));
    EXPECT_EQ(FindNextFile(find, &data), 0);
    FindClose(find);
}

TEST_F(FindFile, FolderStaysOpenForThisProcessUntilTheEnd) {
    const fs::path folder = m_home.Path() / "Data";
    m_home.Write("Data/file", "");
    const auto openFlags = [&folder] {
        std::vector<int> flags;
        for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
            std::error_code gone;
            if (fs::read_symlink(entry, gone) == folder)
                flags.push_back(fcntl(std::stoi(entry.path().filename()), F_GETFD));
        }
        return flags;
    };
    WIN32_FIND_DATA data{};
    HANDLE find = FindFirstFile(folder.c_str(), &data);
    EXPECT_THAT(openFlags(), ElementsAre(FD_CLOEXEC));
    FindClose(find);
    EXPECT_EQ(FindFirstFile((folder / "*.none").c_str(), &data), nullptr);
    EXPECT_THAT(openFlags(), IsEmpty());
}

TEST_F(FindFile, OnlyNameAndAttributesAreWritten) {
    m_home.Write("Data/file", "contents");
    WIN32_FIND_DATA data;
    std::memset(&data, 0x5A, sizeof data);
    FindClose(FindFirstFile((m_home.Path() / "Data").c_str(), &data));
    EXPECT_STREQ(data.cFileName, "file");
    EXPECT_EQ(data.dwFileAttributes, 0u);
    EXPECT_EQ(data.nFileSizeLow, 0x5A5A5A5Au);
    EXPECT_EQ(data.ftLastWriteTime.dwHighDateTime, 0x5A5A5A5Au);
}
