// Saving so that a file is the old one or the new one, whatever happens.
#include "files/SafeFile.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>
#include <sstream>
#include <string>
#include <thread>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include <vmcore/files/profile.h>

#include "files/profile.h"
#include "support/LogCapture.h"
#include "support/MessageBoxRecorder.h"
#include "support/TemporaryHome.h"

namespace fs = std::filesystem;
using testing::ElementsAre;

namespace {

class SavedFile : public testing::Test {
protected:
    std::string In(const std::string& name) const { return (m_home.Path() / name).string(); }
    bool Save(const std::string& path, const std::string& bytes) const {
        vm::SafeFile file(path);
        if (!file.IsOpen()) return false;
        file.Write(bytes);
        return file.Commit();
    }
    static mode_t ModeOf(const std::string& path) {
        struct stat status = {};
        stat(path.c_str(), &status);
        return status.st_mode & 07777;
    }
    static ino_t NodeOf(const std::string& path) {
        struct stat status = {};
        stat(path.c_str(), &status);
        return status.st_ino;
    }
    /// Runs `body` in a child process and returns its exit status.
    static int InChild(const std::function<int()>& body) {
        const pid_t child = fork();
        if (child == 0) _exit(body());
        int status = -1;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    long Entries(const std::string& folder) const {
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    }

    const TemporaryHome m_home;
};

TEST_F(SavedFile, IsReplacedAsAWholeAndKeepsItsMode) {
    const std::string path = m_home.Write("d/a.ini", "old");
    chmod(path.c_str(), 0640);
    const ino_t before = NodeOf(path);
    {
        vm::SafeFile file(path);
        file.Write("new");
    } // not committed
    EXPECT_EQ(m_home.Read("d/a.ini"), "old");
    EXPECT_TRUE(Save(path, std::string(1'000'000, 'x')));
    EXPECT_EQ(m_home.Read("d/a.ini"), std::string(1'000'000, 'x'));
    EXPECT_EQ(ModeOf(path), 0640u);
    EXPECT_NE(NodeOf(path), before) << "another file in its place";
    EXPECT_EQ(Entries(In("d")), 1) << "nothing is left beside it";
}

TEST_F(SavedFile, NewFilesGetTheUsualMode) {
    const mode_t mask = umask(027);
    EXPECT_TRUE(Save(In("new.ini"), "x"));
    umask(mask);
    EXPECT_EQ(ModeOf(In("new.ini")), 0640u);
}

TEST_F(SavedFile, LinksStayAndTheirTargetsAreReplaced) {
    const std::string target = m_home.Write("real/a.ini", "old");
    fs::create_symlink("real/a.ini", In("link.ini"));
    fs::create_symlink("real/none.ini", In("dangling.ini"));
    EXPECT_TRUE(Save(In("link.ini"), "new"));
    EXPECT_TRUE(Save(In("dangling.ini"), "new"));
    EXPECT_TRUE(fs::is_symlink(In("link.ini")));
    EXPECT_EQ(m_home.Read("real/a.ini"), "new");
    EXPECT_EQ(m_home.Read("real/none.ini"), "new");
}

TEST_F(SavedFile, FailsToOpenWhatCannotBeWritten) {
    fs::create_directory(In("folder"));
    EXPECT_FALSE(vm::SafeFile(In("folder")).IsOpen());
    EXPECT_FALSE(vm::SafeFile(In("no/such/folder.ini")).IsOpen());
    EXPECT_FALSE(vm::SafeFile("/dev/null/x.ini").IsOpen());
}

// Permissions bind no administrator, so this runs as somebody else.
TEST_F(SavedFile, PermissionsOfFileAndFolderCount) {
    fs::permissions(m_home.Path(),
                    fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec);
    const std::string locked = m_home.Write("folder/writable.ini", "old and longer");
    const std::string readOnly = m_home.Write("folder/readonly.ini", "old");
    chmod(locked.c_str(), 0666);
    const std::string unreadable = m_home.Write("folder/unreadable.ini", "[s]\nk=1\n");
    chmod(readOnly.c_str(), 0444);
    chmod(unreadable.c_str(), 0222);
    chmod(In("folder").c_str(), 0555);
    const ino_t before = NodeOf(locked);
    const int result = InChild([&] {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) return 99;
        const int written = Save(locked, "new") ? 1 : 0;
        const int refused = vm::SafeFile(readOnly).IsOpen() ? 0 : 2;
        const int notMade = vm::SafeFile(In("folder/new.ini")).IsOpen() ? 0 : 4;
        LogCapture log;
        WritePrivateProfileString("s", "k", "2", unreadable.c_str());
        ServiceProfile();
        log.Ignore();
        return written | refused | notMade;
    });
    chmod(In("folder").c_str(), 0755);
    EXPECT_EQ(result, 7);
    EXPECT_EQ(m_home.Read("folder/writable.ini"), "new") << "in place";
    EXPECT_EQ(NodeOf(locked), before);
    EXPECT_EQ(m_home.Read("folder/readonly.ini"), "old");
    chmod(unreadable.c_str(), 0644);
    EXPECT_EQ(m_home.Read("folder/unreadable.ini"), "[s]\nk=1\n") << "nobody knows what it holds";
}

TEST_F(SavedFile, DevicesAreWrittenInPlace) {
    EXPECT_TRUE(Save("/dev/null", "x"));
    EXPECT_FALSE(Save("/dev/full", "x"));
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(SavedFile, AFullDiskLeavesTheOldFileAndIsReported) {
    const std::string path = m_home.Write("a.ini", "[s]\r\nk=1\r\n");
    const long entries = Entries(m_home.Path());
    const int result = InChild([&] {
        LogCapture log;
        MessageBoxRecorder boxes;
        WritePrivateProfileString("s", "k", std::string(100'000, 'v').c_str(), path.c_str());
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {50'000, 50'000};
        setrlimit(RLIMIT_FSIZE, &limit);
        ServiceProfile();
        const auto shown = boxes.Take();
        log.Ignore();
        const ShownBox box = {path, "WriteProfile: error during profile write", 1};
        return shown == std::vector<ShownBox>{box} ? 0 : 1;
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(m_home.Read("a.ini"), "[s]\r\nk=1\r\n");
    EXPECT_EQ(Entries(m_home.Path()), entries);
    vm::ClearProfiles();
}

// Saves one generation after the other and says through the pipe which is on the disk.
[[noreturn]] void SaveForEver(const std::string& path, int first, int saved) {
    LogCapture log;
    for (int generation = first;; ++generation) {
        for (int key = 0; key < 2000; ++key)
            WritePrivateProfileString("s", std::to_string(key).c_str(),
                                      std::to_string(generation).c_str(), path.c_str());
        ServiceProfile();
        if (write(saved, &generation, sizeof generation) < 0) _exit(1);
    }
}

// The generation that every line of the file is of; -1 for a file that is not whole.
int GenerationOf(const std::string& bytes) {
    std::istringstream lines(bytes);
    std::string line;
    int count = 0;
    int generation = -1;
    while (std::getline(lines, line)) {
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos) continue;
        const int value = std::atoi(line.c_str() + equals + 1);
        if (count++ != 0 && value != generation) return -1;
        generation = value;
    }
    return count == 2000 && bytes.ends_with("\r\n") ? generation : -1;
}

// VMCORE_KILLS sets how often.
TEST_F(SavedFile, KillsAtAnyMomentLoseNothing) {
    const char* count = std::getenv("VMCORE_KILLS");
    const int kills = count ? std::atoi(count) : 60;
    const std::string path = In("d/a.ini");
    fs::create_directory(In("d"));
    std::mt19937 random(1);
    int generation = 0;
    for (int i = 0; i < kills; ++i) {
        int pipeEnds[2];
        ASSERT_EQ(pipe(pipeEnds), 0);
        const pid_t child = fork();
        if (child == 0) SaveForEver(path, generation + 1, pipeEnds[1]);
        close(pipeEnds[1]);
        int saved = 0;
        ASSERT_EQ(read(pipeEnds[0], &saved, sizeof saved), static_cast<ssize_t>(sizeof saved));
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 8000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        for (int next; read(pipeEnds[0], &next, sizeof next) == sizeof next;) saved = next;
        close(pipeEnds[0]);
        const int found = GenerationOf(m_home.Read("d/a.ini"));
        ASSERT_TRUE(found == saved || found == saved + 1) << i << ": " << found << ", " << saved;
        generation = found;
    }
    EXPECT_LE(Entries(In("d")), 2) << "what a killed save leaves, the next one takes away";
    EXPECT_TRUE(Save(path, "whole"));
    EXPECT_EQ(Entries(In("d")), 1);
    std::printf("%d kills, %d saves, no file lost or torn\n", kills, generation);
}

} // namespace
