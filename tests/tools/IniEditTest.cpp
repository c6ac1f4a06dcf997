// What is refused before anything is changed. The edits themselves are tested with the program.
#include "iniEdit.h"

#include <random>

#include <gmock/gmock.h>

#include <vmcore/files/profile.h>

#include "command.h"
#include "support/TemporaryHome.h"

using namespace vm::tool;

namespace {

TEST(IniEdit, RefusesWhatDoesNotComeBack) {
    const struct {
        std::string section, key, value;
        const char* reason; ///< a part of it; empty when the value is held
    } rows[] = {
        {"x", "a", "1", ""},
        {"x", "a", "", ""},
        {"x", "a", " b = \"c\" [d]", ""},
        {"x", "a", "1;2", "first ';'"},
        {"x", "a", "1 ", "at the end of a value"},
        {"x", "a", "\t", "at the end of a value"},
        {"x", "a", "1\r", "line end"},
        {"x", "a\n", "1", "line end"},
        {"x\n", "a", "1", "line end"},
        {"x", "a", std::string(253, 'v'), ""},
        {"x", "a", std::string(254, 'v'), "256 characters"},
        {std::string(253, 'x'), "a", "1", ""},
        {std::string(254, 'x'), "a", "1", "256 characters"},
        {"x", "[a", "b]", "header"},
        {"x", "[a]", "b", "header"},
        {"x", "[a", "b", ""},
    };
    for (const auto& [section, key, value, reason] : rows) {
        const std::string why = WhyNotHeld(section, key, value);
        EXPECT_EQ(why.empty(), !*reason) << why << " for " << value;
        EXPECT_THAT(why, testing::HasSubstr(reason));
    }
}

// Whatever stands in the file.
TEST(IniEdit, WhatIsHeldComesBack) {
    TemporaryHome home;
    InitProfileManager();
    std::mt19937 random(2);
    const auto text = [&random](std::string_view alphabet, int length) {
        std::string bytes;
        for (int i = 0; i < length; ++i) bytes += alphabet[random() % alphabet.size()];
        return bytes;
    };
    int held = 0;
    for (int round = 0; round < 150; ++round) {
        const std::string bytes = text("[]==;ab\t \r\n\n\n[a]", 60);
        const std::string path = home.Write("a.ini", bytes);
        const std::string section = text("[]ab", 1), key = text("[]=;ab ", 2),
                          value = text("[]=;a \t", 3);
        if (!WhyNotHeld(section, key, value).empty()) continue;
        ++held;
        try {
            SetKey(path, section, key, value);
        } catch (const Exit& end) {
            ADD_FAILURE() << end.message << testing::PrintToString(bytes) << '[' << section << ']'
                          << key << '=' << value;
        }
        FlushProfile(path.c_str());
    }
    EXPECT_GT(held, 20);
}

TEST(IniEdit, KnowsWhatSavingLoses) {
    EXPECT_EQ(LossOnSave(""), "");
    EXPECT_EQ(LossOnSave("[x]\na=1\n \t"), "");
    EXPECT_EQ(LossOnSave(std::string(255, 'c') + "\r\n"), "");
    EXPECT_THAT(LossOnSave("[x]\na=1"), testing::HasSubstr("last line"));
    EXPECT_THAT(LossOnSave("[x]\ra=1\r"), testing::HasSubstr("last line"));
    EXPECT_THAT(LossOnSave(std::string(256, 'c') + "\n"), testing::HasSubstr("255 characters"));
}

} // namespace
