#include <vmcore/files/fileapi.h>

#include <cstring>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include "files/descriptor.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"
#include <vmcore/files/paths.h>

namespace fs = std::filesystem;

namespace {

class FileApi : public testing::Test {
protected:
    ~FileApi() override { *CurrentDirectory = 0; }

    std::string In(const std::string& name) const { return (m_home.Path() / name).string(); }
    static HANDLE Open(const std::string& name, DWORD access, DWORD disposition) {
        return CreateFile(name.c_str(), access, 0, nullptr, disposition, 0, nullptr);
    }
    static std::string ReadAll(HANDLE file) {
        char buffer[100];
        DWORD done = 0;
        EXPECT_EQ(ReadFile(file, buffer, sizeof buffer, &done, nullptr), 1);
        return {buffer, done};
    }

    TemporaryHome m_home;
    LogCapture m_log;
};

constexpr DWORD kError = 0xFFFFFFFF;

} // namespace

TEST_F(FileApi, OddDispositionEmptiesAndOpensForWritingOnly) {
    const std::string name = m_home.Write("song.syx", "old contents");
    HANDLE file = Open(name, GENERIC_READ | GENERIC_WRITE, CREATE_ALWAYS);
    ASSERT_TRUE(file);
    DWORD done = 0;
    EXPECT_EQ(WriteFile(file, "new", 3, &done, nullptr), 1);
    EXPECT_EQ(done, 3u);
    char byte;
    EXPECT_EQ(ReadFile(file, &byte, 1, &done, nullptr), 0);
    EXPECT_EQ(done, kError);
    EXPECT_EQ(CloseHandle(file), 1);
    EXPECT_EQ(m_home.Read("song.syx"), "new");

    file = Open(In("fresh"), 0, 3);
    ASSERT_TRUE(file);
    CloseHandle(file);
    struct stat attributes {};
    stat(In("fresh").c_str(), &attributes);
    EXPECT_EQ(attributes.st_mode & 0777 & ~0644u, 0u);
}

TEST_F(FileApi, AccessChoosesTheModeOfAnExistingFile) {
    const std::string name = m_home.Write("f", "abc");
    const struct {
        DWORD access;
        int mode;
    } cases[] = {{0, O_RDONLY}, {1, O_WRONLY}, {2, O_RDONLY}, {3, O_RDWR}, {0xC0000002, O_RDONLY}};
    for (const auto& row : cases) {
        HANDLE file = Open(name, row.access, OPEN_EXISTING);
        const int descriptor = vm::DescriptorOf(file);
        EXPECT_EQ(fcntl(descriptor, F_GETFL) & O_ACCMODE, row.mode) << row.access;
        EXPECT_EQ(fcntl(descriptor, F_GETFD), FD_CLOEXEC);
        CloseHandle(file);
    }
    EXPECT_EQ(m_home.Read("f"), "abc");
}

TEST_F(FileApi, FailuresAreLoggedAndGiveZero) {
    EXPECT_EQ(Open(In("missing"), GENERIC_READ, OPEN_EXISTING), INVALID_HANDLE_VALUE);
    EXPECT_EQ(Open(In("no/folder\\x"), GENERIC_WRITE, CREATE_ALWAYS), nullptr);
    const std::string longName = In(std::string(250, 'x'));
    EXPECT_EQ(Open(longName, GENERIC_WRITE, CREATE_ALWAYS), nullptr);
    EXPECT_THAT(m_log.TakeLog(),
                testing::ElementsAre("CreateFile(RD/WR) failed: " + In("missing"),
                                     "CreateFile(ALWAYS) failed: " + In("no/folder/x"),
                                     "CreateFile(ALWAYS) failed: " + longName));
}

TEST_F(FileApi, BareNameIsResolvedAgainstTheCurrentDirectory) {
    m_home.Write("Data/Song.syx", "song");
    SetCurrentDirectory(In("Data").c_str());
    HANDLE file = Open("Song.syx", GENERIC_READ, OPEN_EXISTING);
    ASSERT_TRUE(file);
    EXPECT_EQ(ReadAll(file), "song");
    CloseHandle(file);
    EXPECT_FALSE(Open("Sub\\Song.syx", GENERIC_READ, OPEN_EXISTING));
    EXPECT_THAT(m_log.TakeLog(), testing::ElementsAre("CreateFile(RD/WR) failed: Sub/Song.syx"));
}

TEST_F(FileApi, NameOfAnyBytesIsOpened) {
    const std::string name = In("\xFFn\xC3\xA4me");
    HANDLE file = Open(name, GENERIC_WRITE, CREATE_ALWAYS);
    EXPECT_TRUE(file);
    CloseHandle(file);
    EXPECT_TRUE(fs::exists(name));
}

TEST_F(FileApi, DescriptorZeroIsNeverAHandle) {
    const int standardInput = dup(0);
    close(0);
    HANDLE file = Open(m_home.Write("f", "abc"), GENERIC_READ, OPEN_EXISTING);
    EXPECT_EQ(fcntl(0, F_GETFD), -1);
    dup2(standardInput, 0);
    close(standardInput);
    ASSERT_TRUE(file);
    EXPECT_EQ(ReadAll(file), "abc");
    EXPECT_EQ(fcntl(vm::DescriptorOf(file), F_GETFD), FD_CLOEXEC);
    CloseHandle(file);
}

TEST_F(FileApi, SeeksAndSize) {
    HANDLE file = Open(m_home.Write("f", "0123456789"), GENERIC_READ, OPEN_EXISTING);
    LONG ignoredHigh = 7;
    EXPECT_EQ(SetFilePointer(file, 4, &ignoredHigh, FILE_BEGIN), 4u);
    EXPECT_EQ(SetFilePointer(file, -1, nullptr, FILE_CURRENT), 3u);
    EXPECT_EQ(SetFilePointer(file, -2, nullptr, FILE_END), 8u);
    DWORD high = 5;
    EXPECT_EQ(GetFileSize(file, &high), 10u);
    EXPECT_EQ(high, 0u);
    EXPECT_EQ(SetFilePointer(file, 0, nullptr, FILE_CURRENT), 8u);
    EXPECT_EQ(SetFilePointer(file, 2, nullptr, 99), 2u); // any other method: from the start
    EXPECT_EQ(SetFilePointer(file, -5, nullptr, FILE_BEGIN), kError);
    SetFilePointer(file, 0, nullptr, FILE_END);
    EXPECT_EQ(ReadAll(file), "");
    CloseHandle(file);
}

TEST_F(FileApi, SizeBeyond4GBIsGivenInTwoHalves) {
    const std::string name = m_home.Write("sparse", "");
    fs::resize_file(name, (std::uintmax_t{5} << 32) + 3);
    HANDLE file = Open(name, GENERIC_READ, OPEN_EXISTING);
    DWORD high = 0;
    EXPECT_EQ(GetFileSize(file, &high), 3u);
    EXPECT_EQ(high, 5u);
    CloseHandle(file);
}

TEST_F(FileApi, WhatIsNoFileHandleFailsAndClosesNothing) {
    int onStack = 0;
    for (HANDLE handle : {HANDLE{nullptr}, HANDLE{&onStack}, vm::HandleOf(-1)}) {
        DWORD done = 0;
        char byte = 0;
        EXPECT_EQ(ReadFile(handle, &byte, 1, &done, nullptr), 0);
        EXPECT_EQ(done, kError);
        EXPECT_EQ(WriteFile(handle, &byte, 1, nullptr, nullptr), 0);
        EXPECT_EQ(GetFileSize(handle, nullptr), kError);
        EXPECT_EQ(CloseHandle(handle), 1);
    }
    EXPECT_NE(fcntl(0, F_GETFD), -1);
}

TEST_F(FileApi, OpenFileOnlyTellsWhetherAFileExists) {
    const std::string name = m_home.Write("f", "");
    for (UINT style : {1u, 2u}) {
        EXPECT_EQ(OpenFile(name.c_str(), nullptr, style), 0);
        EXPECT_EQ(OpenFile(In("missing").c_str(), nullptr, style), -1);
    }
    EXPECT_EQ(OpenFile(name.c_str(), nullptr, 0), -1);
    EXPECT_EQ(OpenFile(name.c_str(), nullptr, 3), -1);
}

TEST_F(FileApi, MoveAndCopyRefuseAnExistingTarget) {
    const std::string first = m_home.Write("first", "1");
    const std::string second = m_home.Write("second", "2");
    EXPECT_EQ(MoveFile(first.c_str(), second.c_str()), 0);
    EXPECT_EQ(CopyFile(first.c_str(), second.c_str(), FALSE), 0);
    EXPECT_EQ(m_home.Read("second"), "2");
    EXPECT_EQ(CopyFile(first.c_str(), In("copy").c_str(), TRUE), 1);
    EXPECT_EQ(MoveFile(first.c_str(), In("moved").c_str()), 1);
    EXPECT_EQ(m_home.Read("copy") + m_home.Read("moved"), "11");
    EXPECT_FALSE(fs::exists(first));
    EXPECT_EQ(fs::last_write_time(In("copy")), fs::last_write_time(In("moved")));
    EXPECT_EQ(MoveFile(first.c_str(), In("other").c_str()), 0);
    EXPECT_EQ(CopyFile(nullptr, In("other").c_str(), TRUE), 0);
}

TEST_F(FileApi, RemovingTakesTheContentsButNotWhatALinkPointsTo) {
    m_home.Write("kept/inside", "x");
    m_home.Write("gone/deep/er", "x");
    fs::create_directory_symlink(In("kept"), In("link"));
    fs::create_directory_symlink(In("kept"), In("gone/link"));
    EXPECT_EQ(RemoveDirectory(In("link\\").c_str()), 1);
    EXPECT_EQ(DeleteFile(In("gone").c_str()), 1);
    EXPECT_EQ(DeleteFile(In("gone").c_str()), 0);
    EXPECT_FALSE(fs::exists(fs::symlink_status(In("link"))));
    EXPECT_EQ(m_home.Read("kept/inside"), "x");
}

TEST_F(FileApi, FoldersAreCreatedWithThoseAboveThem) {
    EXPECT_EQ(CreateDirectory(In("a\\b\\c\\").c_str(), nullptr), 1);
    EXPECT_TRUE(fs::is_directory(In("a/b/c")));
    EXPECT_EQ(CreateDirectory(In("a/b").c_str(), nullptr), 1);
    EXPECT_EQ(CreateDirectory((m_home.Write("file", "") + "/x").c_str(), nullptr), 0);
    EXPECT_EQ(CreateDirectory(In("file").c_str(), nullptr), 0);
}

TEST_F(FileApi, FolderNamesMustBeAscii) {
    const std::string name = In("n\xC3\xA4me");
    EXPECT_EQ(CreateDirectory(name.c_str(), nullptr), 0);
    fs::create_directory(name);
    EXPECT_EQ(RemoveDirectory(name.c_str()), 0);
    EXPECT_EQ(DeleteFile(name.c_str()), 1);
}

TEST_F(FileApi, DirectoryCopyCopiesTheTree) {
    m_home.Write("source/a", "A");
    m_home.Write("source/sub/b", "B");
    fs::create_symlink("a", In("source/link"));
    fs::permissions(In("source/sub"), fs::perms::owner_read | fs::perms::owner_exec);
    fs::create_directory(In("target"));
    DirectoryCopy(In("source\\").c_str(), In("target").c_str(), "copy", nullptr);
    EXPECT_EQ(m_home.Read("target/copy/a"), "A");
    EXPECT_EQ(m_home.Read("target/copy/sub/b"), "B");
    EXPECT_EQ(fs::read_symlink(In("target/copy/link")), "a");
    for (const char* folder : {"source/sub", "target/copy/sub"})
        fs::permissions(In(folder), fs::perms::owner_all);
}

TEST_F(FileApi, FailedDirectoryCopyIsLogged) {
    m_home.Write("source/a", "A");
    const auto lines = [](const std::string& from, const std::string& to) {
        return testing::ElementsAre(
            "Dravik internal error: in DirectoryCopy NSFileManager failed to copy the folder",
            "Source and destination folders:", from, to);
    };
    DirectoryCopy(In("source").c_str(), In("missing").c_str(), "x", nullptr);
    EXPECT_THAT(m_log.TakeLog(), lines(In("source"), In("missing/x")));
    DirectoryCopy(In("source").c_str(), In("source").c_str(), "inside", nullptr);
    EXPECT_THAT(m_log.TakeLog(), lines(In("source"), In("source/inside")));
    DirectoryCopy(In("source").c_str(), m_home.Path().c_str(), "\xC3\xA4", nullptr);
    EXPECT_THAT(m_log.TakeLog(), lines(In("source"), In("\xC3\xA4")));
    EXPECT_FALSE(fs::exists(In("source/inside")));
}
