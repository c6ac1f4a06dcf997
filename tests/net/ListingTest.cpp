// The walk through listings, and the texts of addresses.
#include "net/listing.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "net/conversation.h"
#include "net/ftpAddress.h"
#include "net/ftpRequest.h"

namespace {

// "name+" for a name with more text behind it, "name." for one without, "!" for the end.
std::vector<std::string> Walk(const std::string& listing, const char* pattern) {
    std::vector<std::string> walk;
    std::size_t position = 0;
    for (int step = 0; step < 10; ++step) {
        const vm::ListingName next = vm::NextListingName(listing, position, pattern);
        EXPECT_GE(next.position, position);
        position = next.position;
        walk.push_back(next.found ? std::string(next.name) + (next.more ? "+" : ".") : "!");
        if (!next.found) break;
    }
    return walk;
}

TEST(FtpListing, IsWalkedLineByLine) {
    const std::string longest(254, 'n');
    struct Row {
        std::string listing;
        const char* pattern;
        std::vector<std::string> walk;
    };
    const Row rows[] = {
        {"a.syx\r\nb.txt\r\nc.syx\r\n", "*.syx", {"a.syx+", "c.syx.", "!"}},
        {"a.syx\nb.SYX\n", "*.syx", {"a.syx+", "!"}},
        {"a\r\nb\r\n", "", {"a+", "b.", "!"}},
        {"a.syx\nb.syx", "*.syx", {"a.syx+", "!"}},
        {"a\n\nb\n", "", {"a+", "+", "b.", "!"}},
        {"a\nb", "", {"a.", "!"}},
        {"a\rb\r\nc\n", "", {"ab+", "c.", "!"}},
        {"a.syx\n", "?.syx", {"a.syx.", "!"}},
        {"a.syx\n", "*", {"a.syx.", "!"}},
        {"yx\n", "*.syx", {"!"}},
        {"a.syx\n", "*.*", {"!"}},
        {longest + "\nb\n", "", {longest + "+", "b.", "!"}},
        {longest + "n\nb\n", "", {"!"}},
        {std::string(10'000, 'n'), "", {"!"}},
        {std::string("a\0b.syx\nc.syx\n", 14), "*.syx", {"c.syx.", "!"}},
        {std::string("a\n\0b\nc\n", 7), "", {"a+", "!"}},
        {"../../.profile\n", "", {"../../.profile.", "!"}},
        {"", "", {"!"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.listing) + " by " + row.pattern);
        EXPECT_EQ(Walk(row.listing, row.pattern), row.walk);
    }
}

TEST(FtpListing, EndsForGoodAtANameThatIsTooLong) {
    const std::string listing = std::string(300, 'n') + "\nb\n";
    const vm::ListingName next = vm::NextListingName(listing, 0, "");
    EXPECT_FALSE(next.found);
    EXPECT_EQ(next.position, listing.size());
}

TEST(FtpAddress, EscapesForTheWireOnly) {
    EXPECT_EQ(vm::FtpUrl("h:21", vm::RemotePath("", "a.syx")), "ftp://h:21/a.syx");
    EXPECT_EQ(vm::FtpUrl("h", vm::RemotePath("Banks/Old", "a.syx")), "ftp://h/Banks/Old/a.syx");
    EXPECT_EQ(vm::EscapedPath("/My Banks/100%#q?x;type=a\\\xE4\xC3\xA4.syx"),
              "/My%20Banks/100%25%23q%3Fx%3Btype%3Da%5C%E4%C3%A4.syx");
    EXPECT_EQ(vm::EscapedPath("az-AZ._~09/../"), "az-AZ._~09/../");
    EXPECT_EQ(vm::PasswordInServer("anna:p@:w@h"), "p@:w");
    EXPECT_EQ(vm::PasswordInServer("h:21"), "");
    EXPECT_EQ(vm::PasswordInServer("anna@h:21"), "");
    EXPECT_EQ(vm::Unescaped("a%20%0d"), "a \r");
}

TEST(FtpRequest, RefusesWhatWouldForgeLinesOrOverrunHosts) {
    const std::string long200(200, 'x');
    struct Row {
        vm::FtpTexts texts;
        const char* name;
        const char* why;
    };
    const Row rows[] = {
        {{"h", "Banks", "anna", "pw"}, "a b\xE4.syx", ""},
        {{"h\n", "", "", ""}, "a", "control character in the server's name"},
        {{"u%0d%0aDELE%20x:pw@h", "", "", ""}, "a", "control character in the server's name"},
        {{"anna:12/se#cret@h", "", "", ""},
         "a",
         "'/', '?' or '#' in the login of the server's name: write it as %XX"},
        {{"h", "d\r\nDELE x", "", ""}, "a", "control character in the folder"},
        {{"h", "", "u\x7F", ""}, "a", "control character in the user's name"},
        {{"h", "", "u", "p\tw"}, "a", "control character in the password"},
        {{"h", "", "", ""}, "a\nb", "control character in the file's name"},
        {{"h", "", "", ""}, nullptr, "no file is named"},
        {{"h", "d", "", ""}, "", "no file is named"},
        {{"h", "d", "", ""}, "sub/", "no file is named"},
        {{"h", long200, "", ""}, long200.c_str(), "the address is longer than 255 characters"},
        {{"h", "", long200, long200}, "a", "user and password are longer than 255 characters"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(vm::WhyFileRefused(row.texts, row.name), row.why);
    }
    // "ftp://h/" and 247 characters make 255.
    EXPECT_EQ(vm::WhyFileRefused({"h", "", "", ""}, std::string(247, 'x').c_str()), "");
    EXPECT_NE(vm::WhyFileRefused({"h", "", "", ""}, std::string(248, 'x').c_str()), "");
}

TEST(FtpConversation, HidesPasswordsAndKeepsTheLastRefusal) {
    const std::vector<std::string> secrets = {"s3cret", "x y"};
    EXPECT_EQ(vm::PublicLine("PASS s3cret\r\n", secrets), "PASS ****");
    EXPECT_EQ(vm::PublicLine("530 'x y' and s3crets3cret\x1B[31m\r\n", secrets),
              "530 '****' and ********?[31m");
    EXPECT_EQ(vm::PublicLine(std::string(10'000, 'a'), {}).size(), 500u);

    vm::Conversation conversation({"s3cret", ""});
    conversation.Hear(vm::Conversation::Speaker::Server, "500 EPSV?\r\n");
    conversation.Hear(vm::Conversation::Speaker::Server, "227 Entering\r\n");
    EXPECT_EQ(conversation.Refusal(), "");
    conversation.Hear(vm::Conversation::Speaker::Server, "530 not s3cret\r\n");
    conversation.Hear(vm::Conversation::Speaker::Server, "221 Goodbye\r\n");
    conversation.Hear(vm::Conversation::Speaker::Library, "Closing connection\n");
    EXPECT_EQ(conversation.Refusal(), "530 not ****");
}

} // namespace
