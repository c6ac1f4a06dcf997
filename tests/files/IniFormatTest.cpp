// The rules of the ini format, in tables.
#include "files/iniFormat.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

struct Split {
    std::vector<std::string> lines;
    bool cut;
};

Split SplitOf(std::string bytes) {
    Split split;
    split.cut = vm::SplitIniLines(bytes.data(), bytes.size(), [&](vm::IniSpan span) {
        split.lines.push_back(bytes.substr(span.offset, span.length));
    });
    return split;
}

TEST(IniFormat, BytesBecomeLines) {
    const struct {
        const char* bytes;
        std::vector<std::string> lines;
    } rows[] = {
        {"", {}},
        {"a", {}},
        {"a\n", {"a"}},
        {"a\r\nb\nc", {"a", "b"}},
        {"\n\r\n", {"", ""}},
        {"a\rb\r\r\n\r", {"ab"}},
        {" a  \n\t \n", {" a", "\t"}},
    };
    for (const auto& row : rows)
        EXPECT_THAT(SplitOf(row.bytes).lines, ElementsAreArray(row.lines))
            << testing::PrintToString(row.bytes);
}

TEST(IniFormat, LongLinesAreCut) {
    const auto line = [](std::size_t length) {
        return std::string(255, 'a') + std::string(length - 255, 'b');
    };
    EXPECT_THAT(SplitOf(line(255) + "\n").lines, ElementsAre(line(255)));
    EXPECT_FALSE(SplitOf(line(255) + "\r\n").cut);
    EXPECT_THAT(SplitOf(line(256) + "\n").lines, ElementsAre(line(255), ""));
    EXPECT_THAT(SplitOf(line(300) + "\n").lines, ElementsAre(line(255), std::string(44, 'b')));
    EXPECT_THAT(SplitOf(line(600) + "\n").lines,
                ElementsAre(line(255), std::string(255, 'b'), std::string(88, 'b')));
    EXPECT_TRUE(SplitOf(line(256) + "\n").cut);
    EXPECT_THAT(SplitOf(line(300)).lines, ElementsAre()) << "no line end, no line";
    const std::string blanks = std::string(250, 'a') + std::string(40, ' ') + "b\n";
    EXPECT_THAT(SplitOf(blanks).lines,
                ElementsAre(std::string(250, 'a'), std::string(34, ' ') + "b"));
}

TEST(IniFormat, HeadersOpenAndEndSections) {
    const struct {
        const char* line;
        bool opensAb;
        bool ends;
    } rows[] = {
        {"[ab]", true, true},    {"[AB] tail", true, false}, {"[ab]c]", true, true},
        {"[abc]", false, true},  {" [ab]", false, false},    {"[ab", false, false},
        {"[", false, false},     {"", false, false},         {"[]", false, true},
        {"[ab=1", false, false}, {"[ab] ", true, false},     {"ab]", false, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(vm::OpensSection(row.line, "ab"), row.opensAb) << row.line;
        EXPECT_EQ(vm::EndsSection(row.line), row.ends) << row.line;
    }
}

TEST(IniFormat, EntriesMatchKeysAndGiveValues) {
    const struct {
        const char* line;
        const char* key;
        bool matches;
        const char* value;
    } rows[] = {
        {"Key=Value ; note", "key", true, "Value"},
        {"Key= spaced", "KEY", true, " spaced"},
        {"k=", "k", true, ""},
        {"k=a\t \t", "k", true, "a"},
        {"k=;", "k", true, ""},
        {"k=a=b", "k", true, "a=b"},
        {"k=a=b", "k=a", true, "b"},
        {"=v", "", true, "v"},
        {"k =v", "k", false, ""},
        {"kk=v", "k", false, ""},
        {"k", "k", false, ""},
        {"", "k", false, ""},
    };
    for (const auto& row : rows) {
        const bool matches = vm::IsEntry(row.line, row.key);
        EXPECT_EQ(matches, row.matches) << row.line;
        if (!matches) continue;
        EXPECT_EQ(vm::ValueOf(row.line, std::string(row.key).size(), 100), row.value);
    }
    EXPECT_EQ(vm::ValueOf("k=abc  d", 1, 5), "abc") << "cut to size first, then trimmed";
}

TEST(IniFormat, NumbersAreReadFromText) {
    const struct {
        const char* text;
        std::optional<int> number;
    } rows[] = {
        {" 42", 42},
        {"12abc", 12},
        {"-7", -7},
        {"+7", 7},
        {"-", 0},
        {"x42", {}},
        {"", {}},
        {" \t", {}},
        {"0x10", 0},
        {"4294967295", -1},
        {"2147483647", 2147483647},
    };
    for (const auto& row : rows) EXPECT_EQ(vm::NumberIn(row.text), row.number) << row.text;
    EXPECT_EQ(vm::DecimalValue("x"), 0);
}

TEST(IniFormat, ChildrenAreOneStepBelow) {
    const struct {
        const char* line;
        std::optional<std::string_view> child;
    } rows[] = {
        {"[A\\B]", "B"}, {"[A\\B\\C]", {}}, {"[a\\B]", {}}, {"[A]", {}},
        {"[AB\\C]", {}}, {"[A\\]", ""},     {"[A\\B", {}},  {"", {}},
    };
    for (const auto& row : rows) EXPECT_EQ(vm::ChildSection(row.line, "A"), row.child) << row.line;
}

TEST(IniFormat, NewEntriesGoBeforeTheEmptyLineThatKeepsSectionsApart) {
    EXPECT_EQ(vm::InsertionPoint(5, true, true), 4u);
    EXPECT_EQ(vm::InsertionPoint(5, false, true), 5u);
    EXPECT_EQ(vm::InsertionPoint(5, true, false), 5u);
}

} // namespace
