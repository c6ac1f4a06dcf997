#include "librarian/BankFile.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>

#include <gmock/gmock.h>

#include "support/LogCapture.h"
#include "support/TemporaryHome.h"

namespace fs = std::filesystem;

namespace {

struct SplitCase {
    const char* name;
    SysexBytes file;
    std::vector<SysexBytes> messages;
    std::size_t junk;
    const char* problem;

    friend void PrintTo(const SplitCase& row, std::ostream* out) { *out << row.name; }
};

class BankSplit : public testing::TestWithParam<SplitCase> {};

const SplitCase kSplits[] = {
    {"empty file", {}, {}, 0, ""},
    {"one message", {0xF0, 0x7D, 1, 0xF7}, {{0xF0, 0x7D, 1, 0xF7}}, 0, ""},
    {"junk before, between and after",
     {1, 0x90, 0xF0, 0x7D, 0xF7, 0x00, 0xF7, 0xF0, 0x7D, 2, 0xF7, 3},
     {{0xF0, 0x7D, 0xF7}, {0xF0, 0x7D, 2, 0xF7}},
     5,
     ""},
    {"last one breaks off",
     {0xF0, 1, 0xF7, 0xF0, 2},
     {{0xF0, 1, 0xF7}, {0xF0, 2}},
     0,
     "the file ends at byte 5, inside the message that begins at byte 3"},
    {"next one begins early",
     {0xF0, 1, 0xF0, 2, 0xF7},
     {{0xF0, 1}, {0xF0, 2, 0xF7}},
     0,
     "byte 2 is F0, inside the message that begins at byte 0"},
    {"status byte inside",
     {0xF0, 1, 0x90, 2, 0xF7},
     {{0xF0, 1}},
     3,
     "byte 2 is 90, inside the message that begins at byte 0"},
    {"clock inside", {0xF0, 1, 0xF8, 2, 0xF7}, {{0xF0, 1, 2, 0xF7}}, 1, ""},
    {"no message at all", {'M', 'T', 'h', 'd'}, {}, 4, ""},
};

TEST_P(BankSplit, FindsMessagesAndCountsTheRest) {
    const Bank bank = SplitBank(GetParam().file);
    std::vector<SysexBytes> messages;
    for (const BankMessage& message : bank.messages) messages.push_back(message.bytes);
    EXPECT_EQ(messages, GetParam().messages);
    EXPECT_EQ(bank.junkBytes, GetParam().junk);
    EXPECT_EQ(bank.problem, GetParam().problem);
}

INSTANTIATE_TEST_SUITE_P(Files, BankSplit, testing::ValuesIn(kSplits));

std::string DataFile(const char* name) {
    return std::string(LIBRARIAN_DATA) + "/" + name;
}

} // namespace

TEST(BankRead, VoicesAreOneDumpWithARightChecksum) {
    Bank bank;
    std::string error;
    ASSERT_TRUE(ReadBank(DataFile("voices.syx").c_str(), bank, error)) << error;
    EXPECT_EQ(bank.name, "voices.syx");
    ASSERT_EQ(bank.messages.size(), 1u);
    EXPECT_EQ(bank.messages[0].bytes.size(), 4104u);
    EXPECT_EQ(bank.messages[0].info.kind, "32-voice bank dump");
    EXPECT_EQ(bank.messages[0].info.checksum, ChecksumState::Right);
}

TEST(BankRead, PatchesAre64DataSetsWithRightChecksums) {
    Bank bank;
    std::string error;
    ASSERT_TRUE(ReadBank(DataFile("patches.syx").c_str(), bank, error)) << error;
    EXPECT_EQ(bank.messages.size(), 64u);
    EXPECT_EQ(bank.BadChecksums(), 0u);
    for (const BankMessage& message : bank.messages) {
        EXPECT_EQ(message.info.kind, "Data set");
        EXPECT_EQ(message.info.checksum, ChecksumState::Right);
    }
}

TEST(BankRead, DamagedDumpIsCounted) {
    TemporaryHome home;
    std::ifstream original(DataFile("voices.syx"), std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(original), {}};
    bytes[100] = static_cast<char>(bytes[100] ^ 1);
    Bank bank;
    std::string error;
    ASSERT_TRUE(ReadBank(home.Write("damaged.syx", bytes).c_str(), bank, error));
    EXPECT_EQ(bank.BadChecksums(), 1u);
}

TEST(BankRead, FailureSaysWhyAndLeavesTheBank) {
    TemporaryHome home;
    Bank bank;
    bank.name = "before";
    std::string error;
    {
        LogCapture log;
        EXPECT_FALSE(ReadBank((home.Path() / "none.syx").c_str(), bank, error));
        EXPECT_EQ(error, "none.syx cannot be opened");
        EXPECT_THAT(log.TakeLog(), testing::ElementsAre(testing::HasSubstr("none.syx")));
    }
    const struct {
        const char* bytes;
        const char* error;
    } rows[] = {
        {"", "x.syx is empty"},
        {"plain text", "x.syx is no System Exclusive file: byte 0 is 70 instead of F0"},
        {"\xF0\x7D\xF7\xF0\x7D\x01",
         "x.syx: the file ends at byte 6, inside the message that begins at byte 3"},
    };
    for (const auto& row : rows) {
        EXPECT_FALSE(ReadBank(home.Write("x.syx", row.bytes).c_str(), bank, error));
        EXPECT_EQ(error, row.error);
    }
    EXPECT_EQ(bank.name, "before");
}

TEST(BankWrite, FileIsReadBackAndReplacesTheOneBefore) {
    TemporaryHome home;
    const std::string path = home.Write("bank.syx", "an older and longer file than the new one");
    Bank bank = SplitBank({0xF0, 0x7D, 1, 0xF7, 0xF0, 0x7D, 2, 0xF7});
    std::string error;
    ASSERT_TRUE(WriteBank(path, bank, error)) << error;
    Bank again;
    ASSERT_TRUE(ReadBank(path.c_str(), again, error)) << error;
    ASSERT_EQ(again.messages.size(), 2u);
    EXPECT_EQ(again.messages[1].bytes, bank.messages[1].bytes);
    EXPECT_EQ(again.junkBytes, 0u);
}

TEST(BankWrite, KeepsPermissionsAndGoesThroughLinks) {
    TemporaryHome home;
    const Bank bank = SplitBank({0xF0, 0x7D, 1, 0xF7});
    const fs::path file = home.Path() / "banks/bank.syx";
    fs::create_directories(file.parent_path());
    fs::create_symlink("banks/bank.syx", home.Path() / "link");
    fs::create_symlink("link", home.Path() / "linked");
    for (const fs::perms mode : {fs::perms(0), fs::perms(0600), fs::perms(0664)}) {
        SCOPED_TRACE(static_cast<int>(mode)); // of the file before; 0 for none
        if (mode != fs::perms(0)) fs::permissions(file, mode);
        std::string error;
        ASSERT_TRUE(WriteBank((home.Path() / "linked").string(), bank, error)) << error;
        EXPECT_TRUE(fs::is_symlink(home.Path() / "linked"));
        EXPECT_EQ(home.Read("banks/bank.syx").size(), 4u);
        const fs::perms now = fs::status(file).permissions();
        EXPECT_EQ(mode == fs::perms(0) ? mode : now, mode);
    }
}

TEST(BankWrite, FailureSaysWhyAndLeavesNothing) {
    TemporaryHome home;
    LogCapture log;
    std::string error;
    const std::string path = (home.Path() / "none" / "bank.syx").string();
    EXPECT_FALSE(WriteBank(path, SplitBank({0xF0, 0xF7}), error));
    EXPECT_EQ(error, "bank.syx cannot be written");
    log.Ignore();
}
