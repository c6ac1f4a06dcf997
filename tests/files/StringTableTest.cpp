// The texts of a bundle by their numbers.
#include <vmcore/files/stringTable.h>

#include <gmock/gmock.h>

#include "app/appState.h"
#include "files/stringLines.h"
#include "platform/bundle.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class StringTable : public testing::Test {
protected:
    ~StringTable() override { vm::App().DVBundle = nullptr; }
    void Write(const std::string& name, const std::string& content) {
        const std::string folder = name + ".app/Contents/Resources/";
        home.Write(folder + "Strings.ini", content);
        vm::App().DVBundle = vm::Bundle::AtPath((home.Path() / (name + ".app")).string());
    }
    LogCapture log;
    TemporaryHome home;
};

} // namespace

TEST_F(StringTable, TextsOfTheBundleThatWasSet) {
    Write("One", "[Strings]\n7=Tsch\xC3\xBC\xC3\x9F, \xE4\xB8\xAD\n");
    CString text;
    EXPECT_TRUE(AfxLoadString(7, text));
    EXPECT_STREQ(text, "Tsch\x9F\xA7, ?") << "as windows show it";
    Write("Two", "[Strings]\n7=seven\n");
    char buffer[5] = "";
    EXPECT_EQ(AfxLoadString(7, buffer, sizeof buffer), 4);
    EXPECT_STREQ(buffer, "seve");
    EXPECT_EQ(AfxLoadString(7, nullptr, 5), 0);
    EXPECT_EQ(AfxLoadString(7, buffer, 0), 0);
}

TEST_F(StringTable, MissingOnesAreLogged) {
    Write("One", "[Strings]\n7=seven\n");
    CString text = "before";
    EXPECT_FALSE(AfxLoadString(8, text));
    EXPECT_STREQ(text, "");
    char buffer[4] = "abc";
    EXPECT_EQ(AfxLoadString(8, buffer, 4), 0);
    EXPECT_STREQ(buffer, "");
    home.Write("None.app/Contents/Resources/keep", "");
    vm::App().DVBundle = vm::Bundle::AtPath((home.Path() / "None.app").string());
    EXPECT_FALSE(AfxLoadString(7, text));
    EXPECT_THAT(log.TakeLog(),
                ElementsAre(HasSubstr("AfxLoadString: no text 8 in "), HasSubstr("no text 8 in "),
                            HasSubstr("None.app/Contents/Resources/Strings.ini")));
}

// What people write, and what only a damaged file has.
TEST_F(StringTable, Lines) {
    const struct {
        const char* file;
        vm::StringTexts texts;
    } rows[] = {
        {"", {}},
        {"7=outside\n", {}},
        {"[strings]\r\n7=a ; note\r\n7=b\r\n", {{7, "a"}}},
        {"[Strings]\n7=a\n[Other]\n8=b\n[Strings]\n9=c\n", {{7, "a"}, {9, "c"}}},
        {"[Strings]\n7=a\n7.1=b\n7.2=c\n8.1=x\n7.3=d\n", {{7, "abcd"}}},
        {"[Strings]\n7=a\n7.2=c\n7.1=b\n", {{7, "ab"}}},
        {"[Strings]\n7=a\n7=b\n7.1=c\n", {{7, "a"}}},
        {"[Strings]\n7=\\x41\\x4\\q\\\n8=\\xZZ\n", {{7, "A\\x4\\q\\"}, {8, "\\xZZ"}}},
        {"[Strings]\nx=1\n-7=1\n7 =1\n7.=1\n.1=1\n99999999999=1\n=1\n", {}},
    };
    for (const auto& row : rows) EXPECT_EQ(vm::ParseStringTexts(row.file), row.texts) << row.file;
}
