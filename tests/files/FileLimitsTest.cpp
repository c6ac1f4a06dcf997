// What the file functions answer where the file system refuses: names that are too long or not
// ASCII, the wrong kind of item, a folder without the right to write, a full disk.
#include <vmcore/files/fileapi.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <grp.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include "support/LogCapture.h"
#include "support/TemporaryHome.h"
#include <vmcore/files/CFile.h>
#include <vmcore/files/library.h>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::StartsWith;

namespace {

// Works in the temporary folder, so that names can be as long as they may be.
class FileLimits : public testing::Test {
protected:
    FileLimits() { fs::current_path(m_home.Path()); }
    ~FileLimits() override { fs::current_path(m_before); }

    std::string Open(const std::string& name, DWORD disposition) {
        const bool create = disposition == CREATE_ALWAYS;
        HANDLE file = CreateFile(name.c_str(), create ? GENERIC_WRITE : GENERIC_READ, 0, nullptr,
                                 disposition, 0, nullptr);
        char byte;
        const bool read = file && ReadFile(file, &byte, 1, nullptr, nullptr);
        CloseHandle(file);
        const std::vector<std::string> log = m_log.TakeLog();
        if (file) return log.empty() ? (create || read ? "1" : "unreadable") : "1?";
        const std::string kind = create ? "ALWAYS" : "RD/WR";
        return log == std::vector{"CreateFile(" + kind + ") failed: " + name} ? "logged" : "0?";
    }

    static bool Finds(const std::string& folder) {
        WIN32_FIND_DATA data{};
        HANDLE find = FindFirstFile(folder.c_str(), &data);
        return FindClose(find) && find;
    }

    // What becomes of each function with this name, one after another; a failure of CreateFile is
    // "logged" when its line was.
    std::string Outcome(const std::string& name) {
        m_home.Write("source", "x");
        const auto text = [](int result) { return std::to_string(result); };
        std::string outcome = "create " + Open(name, CREATE_ALWAYS);
        outcome += ", open " + Open(name, OPEN_EXISTING);
        outcome += ", exists " + text(OpenFile(name.c_str(), nullptr, OF_EXIST));
        outcome += ", find " + text(Finds(name));
        outcome += ", copy to " + text(CopyFile("source", name.c_str(), FALSE));
        outcome += ", move to " + text(MoveFile("source", name.c_str()));
        outcome += ", copy from " + text(CopyFile(name.c_str(), "copy", FALSE));
        outcome += ", make folder " + text(CreateDirectory(name.c_str(), nullptr));
        outcome += ", delete " + text(DeleteFile(name.c_str()));
        outcome += ", remove folder " + text(RemoveDirectory(name.c_str()));
        fs::remove_all("copy");
        return outcome;
    }

    TemporaryHome m_home;
    LogCapture m_log;

private:
    const fs::path m_before = fs::current_path();
};

using Limit = bool (*)();
using Body = std::function<std::string()>;

// An exception must not run on into the tests that follow: it ends the process.
[[noreturn]] void Run(Limit limit, const Body& body, int output) noexcept {
    const std::string text = limit() ? body() : "the limit cannot be set";
    _exit(write(output, text.data(), text.size()) < 0);
}

// What `body` gives in a process of its own, which `limit` has taken rights from.
std::string InChild(Limit limit, const Body& body) {
    int ends[2];
    if (pipe(ends) != 0) return "no pipe";
    const pid_t child = fork();
    if (child == 0) Run(limit, body, ends[1]);
    close(ends[1]);
    std::string text;
    char buffer[1000];
    for (ssize_t count; (count = read(ends[0], buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(count));
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return status == 0 ? text : text + ", ended with " + std::to_string(status);
}

// Rights do not bind root.
bool BecomeOrdinaryUser() {
    constexpr uid_t kNobody = 65534;
    if (geteuid() != 0) return true;
    return setgroups(0, nullptr) == 0 && setresgid(kNobody, kNobody, kNobody) == 0 &&
           setresuid(kNobody, kNobody, kNobody) == 0;
}

constexpr rlim_t kDiskSize = 10000;

bool LimitFiles() {
    const rlimit limit{kDiskSize, kDiskSize};
    std::signal(SIGXFSZ, SIG_IGN);
    return setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

constexpr const char* kAFile =
    "create 1, open 1, exists 0, find 0, copy to 0, move to 0, copy from 1, "
    "make folder 0, delete 1, remove folder 0";
// Every function's neutral value.
constexpr const char* kNothing =
    "create logged, open logged, exists -1, find 0, copy to 0, move to 0, copy from 0, "
    "make folder 0, delete 0, remove folder 0";

} // namespace

TEST_F(FileLimits, NamesAndKindsOfItems) {
    m_home.Write("file", "x");
    m_home.Write("folder/inside", "x");
    const struct {
        std::string name;
        const char* outcome;
    } cases[] = {
        {"plain", kAFile},
        {std::string(255, 'x'), kAFile},
        {std::string(256, 'x'), kNothing},
        {std::string(4000, 'x'), kNothing},
        {"file/below", kNothing},
        {"no/folder", "create logged, open logged, exists -1, find 0, copy to 0, move to 0, "
                      "copy from 0, make folder 1, delete 1, remove folder 0"},
        {"n\xC3\xA4me\xFF", kAFile},
        // A folder can be opened for reading, but not read.
        {"folder", "create logged, open unreadable, exists 0, find 1, copy to 0, move to 0, "
                   "copy from 1, make folder 1, delete 1, remove folder 0"},
    };
    for (const auto& row : cases) EXPECT_EQ(Outcome(row.name), row.outcome) << row.name;
    EXPECT_EQ(m_home.Read("file"), "x");
}

TEST_F(FileLimits, LongestNameIsFoundWhole) {
    const std::string name(255, 'x');
    m_home.Write("Data/" + name, "");
    WIN32_FIND_DATA data{};
    FindClose(FindFirstFile("Data", &data));
    EXPECT_EQ(data.cFileName, name);
}

TEST_F(FileLimits, FolderWithoutTheRightToWrite) {
    m_home.Write("locked/file", "kept");
    fs::permissions("locked/file", fs::perms{0444});
    fs::permissions("locked", fs::perms{0555});
    fs::permissions(".", fs::perms{0777}); // for the other user
    const std::string outcome = InChild(BecomeOrdinaryUser, [&] {
        return Outcome("locked/new") + "\n" + Outcome("locked/file") + "\n" +
               std::to_string(RemoveDirectory("locked"));
    });
    fs::permissions("locked", fs::perms{0755});
    EXPECT_EQ(outcome, std::string(kNothing) +
                           "\ncreate logged, open 1, exists 0, find 0, copy to 0, move to 0, "
                           "copy from 1, make folder 0, delete 0, remove folder 0\n0");
    EXPECT_EQ(m_home.Read("locked/file"), "kept");
}

TEST_F(FileLimits, FullDisk) {
    m_home.Write("source/large", std::string(2 * kDiskSize, 'x'));
    const std::string outcome = InChild(LimitFiles, [&] {
        HANDLE file = CreateFile("full", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        const std::string bytes(kDiskSize - 1, 'x');
        std::string results;
        for (int i = 0; i < 3; ++i) {
            DWORD done = 0;
            const BOOL written =
                WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr);
            results +=
                std::to_string(written) + " " + std::to_string(static_cast<int>(done)) + ", ";
        }
        CloseHandle(file);
        CFile object;
        object.Open("full", CFile::modeWrite, nullptr);
        object.Seek(0, CFile::end);
        object.Write("x", 1);
        results += std::to_string(object.GetLength()) + ", ";
        results += std::to_string(CopyFile("source/large", "copy", FALSE));
        DirectoryCopy("source", ".", "copy", nullptr);
        for (const std::string& line : m_log.TakeLog()) results += "\n" + line;
        return results;
    });
    EXPECT_EQ(outcome,
              "1 9999, 1 1, 0 -1, 10000, 0\n"
              "Dravik internal error: in DirectoryCopy NSFileManager failed to copy the folder\n"
              "Source and destination folders:\nsource\n./copy");
    EXPECT_FALSE(fs::exists("copy")) << "a copy that failed leaves nothing";
}

TEST_F(FileLimits, WhatIsNoLibraryIsLogged) {
    fs::create_directory("folder");
    m_home.Write("text", "no library");
    for (const std::string name : {"./folder", "./text", "./n\xC3\xA4me"}) {
        EXPECT_EQ(LoadLibrary(name.c_str()), nullptr);
        EXPECT_THAT(m_log.TakeLog(), ElementsAre("Dylib open failure for: " + name,
                                                 StartsWith("Dylib error = " + name)));
    }
    const std::string longName(4000, 'x');
    EXPECT_EQ(LoadLibrary(longName.c_str()), nullptr);
    EXPECT_THAT(m_log.TakeLog(), ElementsAre("Dylib open failure for: " + longName));
}
