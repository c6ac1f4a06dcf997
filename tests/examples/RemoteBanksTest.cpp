#include "librarian/RemoteBanks.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(RemoteBanks, AreWhatFitsThePatternOnceEachAndSorted) {
    const std::vector<std::string> listed = {"b.syx", "A.SYX", "../c.syx", "b.syx", "notes.txt"};
    const RemoteBanks banks = BanksAmong(listed, "*.syx", "/home/anna");
    EXPECT_THAT(banks.names, ElementsAre("A.SYX", "b.syx"));
    EXPECT_EQ(banks.leftOut, 1u);
}

TEST(RemoteBanks, PatternsFit) {
    const struct {
        const char* name;
        const char* pattern;
        bool fits;
    } rows[] = {
        {"a.syx", "", true},
        {"a.syx", "*", true},
        {"Lead.SYX", "*.syx", true},
        {"Lead.syx.txt", "*.syx", false},
        {"a.syx.syx", "*.syx", true},
        {"pad 12.syx", "PAD ??.*", true},
        {"pad 1.syx", "pad ??", false},
        {"abcbd", "a*b?", true},
        {"syx", "*.syx", false},
        {"a", "a**", true},
    };
    for (const auto& row : rows)
        EXPECT_EQ(FitsPattern(row.name, row.pattern), row.fits) << row.name << " " << row.pattern;
}

TEST(RemoteBanks, NamesThatLeaveTheFolderAreNotUsed) {
    const std::string folder = "/home/anna/banks";
    for (const char* name : {"a.syx", "two words.syx", "a~(1).syx", "a..syx"})
        EXPECT_TRUE(IsUsableName(name, folder)) << name;
    for (const char* name : {"", ".", "..", ".profile", "../x", "/etc/x", "a/b", "..\\x", "a\\b",
                             "C:x", "a\nb", "a\x7F", "\xC3\xA9.syx"})
        EXPECT_FALSE(IsUsableName(name, folder)) << name;
    EXPECT_TRUE(IsUsableName(std::string(200, 'n'), folder));
    EXPECT_FALSE(IsUsableName(std::string(240, 'n'), folder));
}

TEST(RemoteBanks, LoginIsEscapedInFrontOfTheServer) {
    EXPECT_EQ(WithLogin("host:2121", "", "pw"), "host:2121");
    EXPECT_EQ(WithLogin("host:2121", "anna", "p@s:s/1"), "anna:p%40s%3As%2F1@host:2121");
    EXPECT_EQ(WithLogin("host", "a b%", ""), "a%20b%25:@host");
}

TEST(RemoteBanks, TextsThatCannotBeSentAreNamed) {
    EXPECT_THAT(WhyNoServer("[::1]:2121", "a/b", "anna", "p w"), IsEmpty());
    EXPECT_THAT(WhyNoServer("host", "", "", ""), IsEmpty());
    for (const char* server :
         {"", "ftp://host", "host/folder", "x@host", "a b", "h?x", "h\xC3\xA9"})
        EXPECT_NE(WhyNoServer(server, "", "", ""), "") << server;
    EXPECT_NE(WhyNoServer("host", "\xE9", "", ""), "");
    EXPECT_NE(WhyNoServer("host", "", "anna", "a\nb"), "");
    EXPECT_NE(WhyNoServer("host", "", "", "pw"), "");
}

TEST(RemoteBanks, NamesOfListingsAreTheFileThatAnUploadWouldReplace) {
    for (const char* listed : {"a.syx", "A.SYX", "./a.syx", "/home/anna/a.syx"})
        EXPECT_TRUE(IsSameFile(listed, "a.syx")) << listed;
    for (const char* listed : {"aa.syx", "a.syx.old", "a.syx/b.syx"})
        EXPECT_FALSE(IsSameFile(listed, "a.syx")) << listed;
}
