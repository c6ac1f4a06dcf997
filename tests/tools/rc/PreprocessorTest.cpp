// What scripts show badly: arithmetic of conditions, code pages, limits.
#include <gmock/gmock.h>

#include "rc/codePages.h"
#include "rc/compile.h"
#include "rc/condition.h"
#include "rc/outputs.h"
#include "rc/selectLanguage.h"

namespace vm::rc {
namespace {

class NoFiles : public SourceFiles {
public:
    std::optional<std::string> Find(const std::string& name, const std::string*) const override {
        if (name == "self.h") return name;
        return std::nullopt;
    }
    std::optional<std::string> Read(const std::string&) const override {
        return "#include \"self.h\"\n";
    }
};

// The first text of the script, or the error.
std::string TextOfScript(const std::string& script) {
    try {
        const Compiled compiled = CompileScript("a.rc", script, NoFiles(), {});
        const auto* const table =
            compiled.resources.empty() ? nullptr : std::get_if<StringTable>(&compiled.resources[0]);
        return table ? table->strings.at(0).text : "nothing";
    } catch (const SyntaxError& error) {
        return std::to_string(error.place.line) + ":" + std::to_string(error.place.column) + ": " +
               error.text;
    }
}

TEST(RcCondition, HasTheArithmeticOfC) {
    const struct {
        const char* condition;
        const char* answer;
    } rows[] = {
        {"1 + 2 * 3 == 7", "yes"},
        {"(1 + 2) * 3 == 9 && 7 % 4 == 3", "yes"},
        {"1 || 1 / 0", "yes"},
        {"0 && 1 / 0", "no"},
        {"0 ? 1 / 0 : 5", "yes"},
        {"1 / 0", "1:7: the condition divides by zero"},
        {"-1 < 0", "yes"},
        {"-1 < 0u", "no"},
        {"1 << 4 | 1 == 17", "yes"},
        {"~0 == -1 && !0", "yes"},
        {"010 == 8 && 0x1F == 31 && 'A' == 65", "yes"},
        {"-9223372036854775807 - 1 == (-9223372036854775807 - 1) / -1", "yes"},
        {"UNKNOWN", "no"},
        {"defined UNKNOWN || defined(WS_CHILD) && WS_TABSTOP == 0x10000", "yes"},
        {"defined(RC_INVOKED) && !defined(APSTUDIO_INVOKED)", "yes"},
        {"1 +", "1:2: expected a number at the end of the condition"},
        {"(1", "1:2: expected ')'"},
        {"1 2", "1:7: expected the end of the condition, not '2'"},
        {"defined(", "1:5: expected a name behind 'defined'"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.answer, TextOfScript("#if " + std::string(row.condition) +
                                           "\nSTRINGTABLE { 1 \"yes\" }\n#else\nSTRINGTABLE { 1 "
                                           "\"no\" }\n#endif\n"))
            << row.condition;
}

TEST(RcMacros, AreThoseOfC) {
    const struct {
        const char* defines;
        const char* text;
        const char* answer;
    } rows[] = {
        {"#define A B\n#define B \"x\"\n", "A", "x"},
        {"#define S(x) #x\n#define T(x) S(x)\n#define V 3\n", "T(V) \".\" S(V)", "3.V"},
        {"#define P(a, b) a##b\n#define XY \"pasted\"\n", "P(X, Y)", "pasted"},
        {"#define F(x) x\n", "F(\n\"a\"\n) \"b\"", "ab"},
        {"#define L(x) L##x\n", "L(\"\\x3b1\")", "\xCE\xB1"},
        {"#define F(...) #__VA_ARGS__\n", "F(a, b)", "a, b"},
        {"#define F(x) x\n", "F(F(F(\"deep\")))", "deep"},
        {"#define F(a, b) a\n", "F(\"x\")", "2:17: F takes 2 arguments, not 1"},
        {"#define F(a) a\n", "F(\"x\"", "2:17: the arguments of F have no ')'"},
        {"#define A A\n", "A", "2:17: expected a text in quotes, not 'A'"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.answer,
                  TextOfScript(std::string(row.defines) + "STRINGTABLE { 1 " + row.text + " }"))
            << row.defines << row.text;
}

TEST(RcLimits, EndWithAnError) {
    std::string doubling = "#define A0 x x\n";
    for (int i = 1; i < 40; ++i)
        doubling += "#define A" + std::to_string(i) + " A" + std::to_string(i - 1) + " A" +
                    std::to_string(i - 1) + "\n";
    std::string menus = "1 MENU {";
    for (int i = 0; i < 100; ++i) menus += "POPUP \"x\" {";
    std::string conditions;
    for (int i = 0; i < 100; ++i) conditions += "#if 1\n";
    const struct {
        std::string script;
        const char* answer;
    } rows[] = {
        {doubling + "A39", "41:1: macros expand to too much"},
        {"#include \"self.h\"", "1:2: too many files include each other"},
        {menus, "1:360: menus are nested too deeply"},
        {conditions, "65:2: conditions are nested too deeply"},
        {"STRINGTABLE { " + std::string(100, '(') + "1", "1:47: numbers are nested too deeply"},
        {"#if " + std::string(500, '-') + "1\n#endif", "1:133: the condition is nested too deeply"},
    };
    for (const auto& row : rows) EXPECT_EQ(row.answer, TextOfScript(row.script));
    const std::string wide = std::string(200'000, '(') + "\n";
    EXPECT_EQ("1:100001: the line is too long", TextOfScript(wide));
    EXPECT_EQ("x", TextOfScript("#if 0\n" + wide + "#endif\nSTRINGTABLE { 1 \"x\" }"));
}

TEST(RcCodePages, AreRead) {
    const struct {
        const char* bytes;
        int codePage;
        const char* text;
        std::size_t lacking;
    } rows[] = {
        {"plain", 932, "plain", 0},
        {"\x80\x99\xE9", 1252, "\xE2\x82\xAC\xE2\x84\xA2\xC3\xA9", 0},
        {"a\x81z", 1252, "a\xEF\xBF\xBDz", 1},
        {"\x83\x5C\\\x95\x5C", 932, "\xE3\x82\xBD\\\xE8\xA1\xA8", 0},
        {"\x83", 932, "\xEF\xBF\xBD", 1},
        {"\xCF\xF0", 1251, "\xD0\x9F\xD1\x80", 0},
        {"\xC3\xA9\xC3", 65001, "\xC3\xA9\xEF\xBF\xBD", 1},
    };
    for (const auto& row : rows) {
        const Decoded decoded = ToUtf8(row.bytes, row.codePage);
        EXPECT_EQ(row.text, decoded.text) << row.codePage;
        EXPECT_EQ(row.lacking, decoded.lacking.size()) << row.codePage;
    }
    EXPECT_FALSE(IsCodePage(7));
}

TEST(RcLanguage, IsNamed) {
    const struct {
        const char* name;
        std::optional<Language> language;
    } rows[] = {
        {"german", Language{7, 0}},     {"LANG_ENGLISH", Language{9, 0}},
        {"0x409", Language{9, 1}},      {"7,SUBLANG_GERMAN_SWISS", Language{7, 2}},
        {"7, 1", Language{7, 1}},       {"klingon", std::nullopt},
        {"german,swiss", std::nullopt}, {"", std::nullopt},
    };
    for (const auto& row : rows) EXPECT_TRUE(row.language == LanguageNamed(row.name)) << row.name;
}

TEST(RcOutputs, RuleForMake) {
    EXPECT_EQ("o/a.ui: \\\n my\\ $$x.rc\n\nmy\\ $$x.rc:\n",
              DependencyRule({"o/a.ui"}, {"my $x.rc"}));
}

} // namespace
} // namespace vm::rc
