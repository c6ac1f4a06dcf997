// What the checks say of a file, and what they repair.
#include "iniCheck.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include <vmcore/files/profile.h>

#include "support/TemporaryHome.h"

using namespace std::string_literals;
using namespace vm::tool;

namespace {

// "3 warning duplicate key: 'a' is ..."; a row names as much of the start as matters.
std::vector<std::string> Listed(const std::string& bytes) {
    std::vector<std::string> list;
    for (const Finding& finding : CheckIni(bytes))
        list.push_back(std::to_string(finding.line) + " " + SeverityName(finding.severity) + " " +
                       finding.kind + ": " + finding.text);
    return list;
}

struct Row {
    std::string bytes;
    std::vector<std::string> expected; ///< the starts of the findings
};

void ExpectFindings(std::initializer_list<Row> rows) {
    for (const auto& [bytes, starts] : rows) {
        std::vector<testing::Matcher<std::string>> expected;
        for (const std::string& start : starts) expected.push_back(testing::StartsWith(start));
        EXPECT_THAT(Listed(bytes), testing::ElementsAreArray(expected))
            << testing::PrintToString(bytes);
    }
}

TEST(IniCheck, WholeFile) {
    ExpectFindings({{"", {}},
                    {"\r\n[x]\r\na=1\r\n; note\r\n\r\n[y]\nb=2\n", {}},
                    {"\xEF\xBB\xBF[x]\na=1\n", {"1 error byte-order mark: hides section 'x'"}},
                    {"\xEF\xBB\xBF[x]\na=1\n[X]\n",
                     {"1 error byte-order mark: hides section 'x', found on line 3 instead",
                      "3 warning duplicate section"}},
                    {"\xEF\xBB\xBF\n[x]\n", {"1 warning byte-order mark: is taken"}},
                    {"\xFF\xFE[\0x\0]\0\n\0"s, {"1 error byte-order mark: the file is UTF-16"}},
                    {"[x]\na=1", {"2 error no line end: the last line is not read: 'a=1'"}},
                    {"[x]\n\t \r", {}}, // nothing is lost with it
                    {"[x]\ra=1\r", {"1 error carriage return: lines end with it alone"}},
                    {"[x]\na=1\rb=2\r\n",
                     {"2 warning carriage return: is dropped inside a line: reads as "
                      "'a=1b=2'"}},
                    {"[x]\na=1\r\r\n", {}},
                    {"[x]\na=1\0b\n"s, {"2 error NUL byte"}}});
}

TEST(IniCheck, LongLines) {
    ExpectFindings(
        {{";" + std::string(254, 'c') + "\r\n", {}},
         {";" + std::string(255, 'c') + "\n",
          {"1 error long line: more than 255 characters: cut into a comment and, one character "
           "later, empty"}},
         {"[a]\nk=" + std::string(253, 'v') + "?[a]\n",
          {"2 error long line: more than 255 characters: cut into the entry 'k' and, one "
           "character later, the header of section 'a'",
           "2 warning duplicate section: 'a' is found on line 1 only"}},
         {"[a]\nk=" + std::string(253, 'v') + "?l=2\nl=3\n",
          {"2 error long line", "3 warning duplicate key: 'l' is found on line 2 only"}},
         {";" + std::string(1400, 'c') + "\n",
          {"1 error long line: more than 255 characters: cut into a comment and, one character "
           "later, the text 'cccccccccccccccccccccccccccccccccccccccc...', the text "
           "'cccccccccccccccccccccccccccccccccccccccc...', the text "
           "'cccccccccccccccccccccccccccccccccccccccc...' and 2 more"}}});
}

TEST(IniCheck, Headers) {
    ExpectFindings({{"[x\na=1\n",
                     {"1 error header without ']': '[x' opens no section",
                      "2 warning entry without section: 'a'"}},
                    {"[y]\n[x] note\na=1\n",
                     {"2 warning text after ']': the header opens section 'x', but does not end"}},
                    {"[x]\t\na=1\n", {"1 warning trailing tab: the header opens section 'x', but"}},
                    {"[x]   \na=1\n", {}}, // blanks are dropped
                    {"[x]y]\na=1\n[x]\n",
                     {"1 note text after ']': the header opens section 'x' too",
                      "3 warning duplicate section: 'x' is found on line 1 only"}},
                    {"[x]\n[X]\n", {"2 warning duplicate section: 'X' is found on line 1 only"}},
                    {"[x]\n[x] note\n", {"2 warning text after", "2 warning duplicate section"}},
                    {"[x]\na=1\n\n[y]\na=1\n", {}},
                    {"[a\\b]\n[a]\n", {}},
                    {" [x]\n",
                     {"1 warning unknown line: ' [x]' is neither header, entry nor comment; a "
                      "header begins"}}});
}

TEST(IniCheck, Entries) {
    ExpectFindings(
        {{"a=1\n[x]\n", {"1 warning entry without section: 'a' stands before the first"}},
         {"[x]\na =1\n", {"2 warning blank before '=': 'a' is not found: the key is 'a '"}},
         {"[x]\n\ta=1\n", {"2 warning blank before key: 'a' is not found: the key is '\\x09a'"}},
         {"[x]\na= 1\n", {"2 note blank after '=': the value begins with it: ' 1'"}},
         {"[x]\na=1 ; b\n", {"2 note cut value: ends at the first ';': '1'"}},
         {"[x]\na=\n", {"2 note empty value"}},
         {"[x]\na=1\t\n", {"2 note trailing tab: is no part of the value"}},
         {"[x]\na=1\nA=2\n", {"3 warning duplicate key: 'A' is found on line 2 only"}},
         {"[x]\nab=1\na=2\n", {}}, // neither is the other's key
         {"[x]\n \t ; a = b\n", {}},
         {"[x]\n\t\n", {"2 warning line of tabs"}},
         {"[x]\nword\n#a\n",
          {"2 warning unknown line: 'word' is neither header, entry nor comment",
           "3 warning unknown line: '#a' is neither header, entry nor comment; "
           "comments begin with ';'"}}});
}

// Whatever a host may set goes without errors and warnings.
TEST(IniCheck, FileOfTheLibraryIsClean) {
    TemporaryHome home;
    InitProfileManager();
    const std::string path = home.Path() / "host.ini";
    const auto write = [&](const char* section, const char* key, const char* value) {
        WritePrivateProfileString(section, key, value, path.c_str());
    };
    write("Window", "Left", "120");
    write("Window", "Title", " a; b\t");
    write("Software\\Acme [2]\\Editor", "Port", "7");
    write("Window", "Empty", "");
    write("Gone", "a", "1");
    write("Gone", nullptr, nullptr);
    write("window", "left", "130");
    FlushProfile(path.c_str());
    const std::vector<Finding> findings = CheckIni(home.Read("host.ini"));
    for (const Finding& finding : findings)
        EXPECT_EQ(finding.severity, Severity::Note) << finding.line << ": " << finding.text;
    EXPECT_EQ(findings.size(), 4u); // blank, ';', empty value, ']' in a name
}

TEST(IniRepair, EndsLastLineInTheStyleOfTheFile) {
    const struct {
        std::string bytes, repaired;
    } rows[] = {
        {"[x]\na=1", "[x]\na=1\n"},
        {"[x]\r\na=1", "[x]\r\na=1\r\n"},
        {"[x]", "[x]\r\n"},
        {"[x]\r\na=1\r", "[x]\r\na=1\r\n"},
        {"[x]\na=1\n", "[x]\na=1\n"},
        {"[x]\n \t", "[x]\n \t"},
        {"[x]\ra=1\r", "[x]\ra=1\r"}, // which line end should there be?
        {"\xFF\xFE[\0"s, "\xFF\xFE[\0"s},
    };
    for (const auto& [bytes, repaired] : rows) {
        const IniRepair repair = RepairIni(bytes);
        EXPECT_EQ(repair.bytes, repaired);
        EXPECT_EQ(repair.done.size(), bytes == repaired ? 0u : 1u) << bytes;
    }
    EXPECT_EQ(RepairIni("[x]\na=1").done[0].line, 2u);
}

TEST(IniRepair, DropsMarkThatHidesNothingElse) {
    EXPECT_EQ(RepairIni("\xEF\xBB\xBF[x]\na=1\n").bytes, "[x]\na=1\n");
    EXPECT_EQ(RepairIni("\xEF\xBB\xBF[x]\na=1").bytes, "[x]\na=1\n");
    // The second section is in use: without the mark the first would hide it.
    const std::string twice = "\xEF\xBB\xBF[x]\na=1\n[X]\na=2\n";
    EXPECT_EQ(RepairIni(twice).bytes, twice);
}

} // namespace
