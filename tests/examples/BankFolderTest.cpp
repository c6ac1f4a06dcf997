#include "librarian/BankFolder.h"

#include <filesystem>

#include <gmock/gmock.h>

#include "support/TemporaryHome.h"

using testing::ElementsAre;
using testing::IsEmpty;

TEST(BankFolder, ListsBanksSortedAndNothingElse) {
    TemporaryHome home;
    for (const char* name : {"banks/b.syx", "banks/A.SYX", "banks/notes.txt", "banks/c.syx"})
        home.Write(name, "");
    std::filesystem::create_directory(home.Path() / "banks/folder.syx");
    const std::string folder = (home.Path() / "banks").string();
    EXPECT_THAT(BanksIn(folder, 40), ElementsAre("A.SYX", "b.syx", "c.syx"));
    EXPECT_THAT(BanksIn(folder, 2), ElementsAre("A.SYX", "b.syx"));
    EXPECT_THAT(BanksIn(folder + "/none", 40), IsEmpty());
    EXPECT_THAT(BanksIn("", 40), IsEmpty());
    EXPECT_THAT(BanksIn("/" + std::string(250, 'x'), 40), IsEmpty());
}

TEST(BankFolder, PathsComeApart) {
    EXPECT_EQ(FolderOf("/banks/a.syx"), "/banks");
    EXPECT_EQ(FolderOf("/a.syx"), "/");
    EXPECT_EQ(FolderOf("a.syx"), "");
    EXPECT_EQ(NameOf("/banks/a.syx"), "a.syx");
    EXPECT_EQ(NameOf("a.syx"), "a.syx");
}
