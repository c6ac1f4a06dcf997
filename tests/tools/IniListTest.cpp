// What a file holds in the library's eyes.
#include "iniList.h"

#include <random>

#include <gmock/gmock.h>

#include <vmcore/files/profile.h>

#include "iniEdit.h"
#include "json.h"
#include "support/TemporaryHome.h"

using namespace vm::tool;
using testing::ElementsAre;

namespace {

TEST(IniList, SectionsAreTheFoundOnes) {
    EXPECT_EQ(ListSections(IniText("a=1\n[x]\n[Y] note\n[X]\n[open\n[]\n[last]")), "x\nY\n\n");
}

TEST(IniList, EntriesOfAllBlocks) {
    const IniText text("[x]\n; c=1\nA= 1 ; note\na=2\nword\n[y]\na=3\n[X]\nb=4\n");
    EXPECT_EQ(ListEntries(text, "X"), "A= 1\na=2\nb=4\n");
    EXPECT_THAT(HiddenEntries(text, "x"), ElementsAre(4, 9));
    EXPECT_EQ(ListEntries(text, "y"), "a=3\n");
}

// Such a header ends no section: what follows belongs to two.
TEST(IniList, HeaderWithTextBehindLiesInsideABlock) {
    const IniText text("[x]\na=1\n[y] note\nb=2\n[z]\nc=3\n");
    EXPECT_EQ(ListEntries(text, "x"), "a=1\nb=2\n");
    EXPECT_EQ(ListEntries(text, "y"), "b=2\n");
}

TEST(IniList, LongLinesAreCutAndKeepTheirNumber) {
    const IniText text("\n[x]\nk=" + std::string(253, 'v') + "?l=2\nm=3\n");
    const std::vector<IniEntry> entries = text.EntriesOf(text.Blocks().at(0));
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[1].value, "2");
    EXPECT_EQ(entries[1].line, 3u);
    EXPECT_EQ(entries[2].line, 4u);
}

TEST(IniList, AgreesWithTheLibrary) {
    TemporaryHome home;
    InitProfileManager();
    const std::string_view alphabet = "[]==;ab\t \r\n\n\n[x]";
    std::mt19937 random(1);
    int compared = 0;
    for (int round = 0; round < 150; ++round) {
        std::string bytes;
        for (int i = 0; i < 80; ++i) bytes += alphabet[random() % alphabet.size()];
        const std::string path = home.Write("a.ini", bytes);
        const IniText text(bytes);
        for (const IniBlock& block : text.Blocks())
            for (const IniEntry& entry : text.EntriesOf(block)) {
                if (!block.found || !entry.found) continue;
                ++compared;
                EXPECT_EQ(
                    Lookup(path, std::string(SectionName(block.header)), std::string(entry.key)),
                    entry.value)
                    << testing::PrintToString(bytes) << " line " << entry.line;
            }
        FlushProfile(path.c_str());
    }
    EXPECT_GT(compared, 100);
}

TEST(IniList, Json) {
    EXPECT_EQ(ListAsJson(IniText("[x]\r\na=1\r\n[y]\r\n"), {}),
              "{\"sections\": [\n"
              "  {\"name\": \"x\", \"line\": 1, \"found\": true, \"entries\": [\n"
              "    {\"key\": \"a\", \"value\": \"1\", \"line\": 2, \"found\": true}]},\n"
              "  {\"name\": \"y\", \"line\": 3, \"found\": true, \"entries\": []}]}\n");
    EXPECT_EQ(ListAsJson(IniText(""), {}), "{\"sections\": []}\n");
}

TEST(IniList, JsonStringsEscapeWhatIsNotUtf8) {
    const std::pair<const char*, const char*> rows[] = {
        {"a\"b\\c", R"("a\"b\\c")"},
        {"\x01\t\x7F", R"("\u0001\u0009\u007f")"},
        {"\xC3\xBC \xE2\x82\xAC \xF0\x9F\x8E\xB9", "\"\xC3\xBC \xE2\x82\xAC \xF0\x9F\x8E\xB9\""},
        {"\xFC", R"("\u00fc")"},
        {"\xC3", R"("\u00c3")"},                     // cut off
        {"\xC0\xAF", R"("\u00c0\u00af")"},           // overlong
        {"\xED\xA0\x80", R"("\u00ed\u00a0\u0080")"}, // a surrogate
        {"\xF4\x90\x80\x80", R"("\u00f4\u0090\u0080\u0080")"},
        {"\xE2\x82z", R"("\u00e2\u0082z")"},
    };
    for (const auto& [text, json] : rows) EXPECT_EQ(JsonString(text), json);
}

} // namespace
