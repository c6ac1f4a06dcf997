#include <vmcore/files/CFile.h>

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "support/LogCapture.h"
#include "support/TemporaryHome.h"

namespace {

constexpr DWORD kClosed = 0xFFFFFFFF;

class FileObject : public testing::Test {
protected:
    TemporaryHome m_home;
    LogCapture m_log;
};

} // namespace

TEST_F(FileObject, NoConstructorOpens) {
    const std::string name = m_home.Write("x.txt", "abc");
    CFile named(name.c_str(), CFile::modeRead);
    CFile numbered(1);
    char byte = 0;
    for (CFile* file : {&named, &numbered}) {
        EXPECT_EQ(file->Read(&byte, 1), kClosed);
        EXPECT_EQ(file->Seek(0, CFile::begin), kClosed);
        EXPECT_EQ(file->GetPosition(), kClosed);
        EXPECT_EQ(file->GetLength(), kClosed);
        file->Write(&byte, 1);
        file->Close();
    }
}

TEST_F(FileObject, OpensOnceReadsAndCloses) {
    const std::string name = m_home.Write("x.txt", "0123456789");
    CFile file;
    CFileException exception;
    EXPECT_EQ(file.Open(name.c_str(), CFile::modeRead | CFile::shareDenyNone, &exception), 1);
    EXPECT_EQ(file.Open(name.c_str(), CFile::modeRead, nullptr), 0);
    EXPECT_EQ(file.Seek(3, CFile::begin), 3u);
    EXPECT_EQ(file.GetLength(), 10u);
    EXPECT_EQ(file.GetPosition(), 3u);
    char buffer[20];
    EXPECT_EQ(file.Read(buffer, 20), 7u);
    EXPECT_EQ(std::string(buffer, 7), "3456789");
    EXPECT_EQ(file.Seek(-4, CFile::end), 6u);
    EXPECT_EQ(file.Seek(1, CFile::current), 7u);
    file.Close();
    EXPECT_EQ(file.Read(buffer, 1), kClosed);
    EXPECT_EQ(file.Open((name + "?").c_str(), CFile::modeRead, nullptr), 0);
    m_log.Ignore();
}

TEST_F(FileObject, ModesReadWriteAndCreate) {
    const struct {
        UINT mode;
        const char* after; // the file, which holds "abc", after "X" was written
        UINT read;         // the answer to a read of one byte after that
    } cases[] = {
        {CFile::modeRead, "abc", 1},
        {CFile::modeWrite, "Xbc", 0},
        {CFile::modeReadWrite, "Xbc", 1},
        {CFile::modeReadWrite | CFile::typeBinary, "Xbc", 1},
        {3, "abc", 1},
        {CFile::modeCreate | CFile::modeReadWrite, "X", 0}, // for writing only
    };
    for (const auto& row : cases) {
        const std::string name = m_home.Write("f", "abc");
        CFile file;
        ASSERT_EQ(file.Open(name.c_str(), row.mode, nullptr), 1) << row.mode;
        file.Write("X", 1);
        char byte;
        EXPECT_EQ(file.Read(&byte, 1), row.read) << row.mode;
        file.Close();
        EXPECT_EQ(m_home.Read("f"), row.after) << row.mode;
    }
}

TEST_F(FileObject, LengthIsFoundWithThreeVirtualSeeks) {
    struct Recorded : CFile {
        DWORD Seek(int offset, UINT from) override {
            const DWORD position = CFile::Seek(offset, from);
            seeks.push_back({from, position});
            return position;
        }
        std::vector<std::pair<UINT, DWORD>> seeks;
    } file;
    file.Open(m_home.Write("f", "abc").c_str(), CFile::modeRead, nullptr);
    char byte;
    file.Read(&byte, 1);
    EXPECT_EQ(file.GetLength(), 3u);
    EXPECT_THAT(file.seeks,
                testing::ElementsAre(testing::Pair(CFile::current, 1), testing::Pair(CFile::end, 3),
                                     testing::Pair(CFile::begin, 1)));
}
