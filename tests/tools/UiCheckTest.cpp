// What `vmcore ui check` finds in the text of interface files.
#include "uiCheck.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace vm::tool {
namespace {

using Lines = std::vector<std::string>;

Lines Found(const std::string& bytes) {
    Lines lines;
    for (const Finding& finding : CheckUi(bytes).findings)
        lines.push_back(std::to_string(finding.line) + " " + SeverityName(finding.severity) + " " +
                        finding.kind + ": " + finding.text);
    return lines;
}

// Each part is a line of its own, from line 2.
std::string File(const std::string& rootClass, const Lines& parts) {
    std::string text =
        "<ui version=\"4.0\"><class>X</class><widget class=\"" + rootClass + "\" name=\"X\">\n";
    for (const std::string& part : parts) text += part + "\n";
    return text + "</widget></ui>\n";
}

std::string Property(const std::string& name, const std::string& type, const std::string& value) {
    return "<property name=\"" + name + "\" stdset=\"0\"><" + type + ">" + value + "</" + type +
           "></property>";
}
std::string Tag(const std::string& number) {
    return Property("tag", "number", number);
}
std::string Widget(const std::string& type, const std::string& inside) {
    return "<widget class=\"" + type + "\" name=\"w\">" + inside + "</widget>";
}
std::string Item(const std::string& text, const std::string& inside) {
    return "<action name=\"a\">" + Property("text", "string", text) + inside + "</action>";
}

const std::string kOkAndCancel = Widget("QPushButton", Tag("1")) + Widget("QPushButton", Tag("2"));

TEST(UiCheck, Dialogs) {
    const struct {
        std::string part;
        std::string finding; // empty for none
    } rows[] = {
        {Widget("QPushButton", Tag("3")), ""},
        {Widget("QPushButton", ""),
         "no tag: QPushButton 'w' sends the number 0 and is never found"},
        {Widget("MyKnob", Tag("0")), "no tag: MyKnob 'w' sends the number 0 and is never found"},
        {Widget("QLabel", "") + Widget("QGroupBox", "") + Widget("Line", ""), ""},
        {"<layout class=\"QVBoxLayout\"><property name=\"tag\"><number>1</number></property>"
         "<item><spacer name=\"s\"/></item></layout>",
         ""},
        {"<layout class=\"QVBoxLayout\"><item>" + Widget("QSlider", "") + "</item></layout>",
         "no tag: QSlider 'w' sends the number 0 and is never found"},
        {Widget("QTabWidget", Tag("4") + Widget("QWidget", Widget("QSpinBox", Tag("5")))), ""},
        {Widget("QComboBox", Tag("6") + "<item>" + Tag("1") + "</item>"), ""},
        {Widget("QLabel", Tag("2")),
         "duplicate tag: 2 of QLabel 'w' is that of QPushButton 'w' on line 2"},
        {Widget("QLabel", Tag("-1")) + Widget("QLabel", Tag("-1")), ""},
        {Widget("QLineEdit", Property("tag", "string", "IDC_NAME")),
         "tag: 'IDC_NAME' of QLineEdit 'w' is no number"},
        {Widget("QTableView", Tag("7") + Property("delegate", "string", "LCTableViewDelegate")),
         ""},
        {Widget("QTableView", Tag("7") + Property("delegate", "string", "Other")),
         "unknown delegate: 'Other' of QTableView 'w' is left out"},
        {Widget("QLineEdit", Tag("8") + Property("action", "string", "onEdit")), ""},
        {Widget("QLineEdit", Tag("8") + Property("action", "string", "onEdits")),
         "unknown action: 'onEdits' of QLineEdit 'w' is unknown: the action of the class stays"},
        {Widget("QLineEdit", Tag("8") + Property("action", "string", "winCmd")),
         "unknown action: 'winCmd' of QLineEdit 'w' is unknown: the action of the class stays"},
        {Widget("QDialogButtonBox", ""), ""},
        {Widget("QDialogButtonBox", Property("standardButtons", "set", "QDialogButtonBox::Help")),
         ""},
        {Widget("QDialogButtonBox", Property("standardButtons", "set", "QDialogButtonBox::Ok")),
         "duplicate tag: 1 of QDialogButtonBox 'w' is that of QPushButton 'w' on line 2"},
        {Item("not used", ""), ""},
    };
    for (const auto& row : rows) {
        const Lines found = Found(File("QDialog", {kOkAndCancel, row.part}));
        const std::string severity = row.finding.starts_with("tag:") ? "3 error " : "3 warning ";
        EXPECT_EQ(found, row.finding.empty() ? Lines{} : Lines{severity + row.finding}) << row.part;
    }
}

TEST(UiCheck, DialogWithoutOkOrCancelIsWorthANote) {
    EXPECT_THAT(Found(File("QWidget", {"", Widget("QPushButton", Tag("1"))})),
                ElementsAre("1 note no tag 2: the dialog has no Cancel button"));
    EXPECT_EQ(Found(File("QWidget", {})).size(), 2u);
}

TEST(UiCheck, ButtonsOfAButtonBoxAreOkAndCancel) {
    const struct {
        const char* buttons;
        std::size_t notes;
    } rows[] = {
        {"QDialogButtonBox::Cancel|QDialogButtonBox::Ok", 0},
        {"QDialogButtonBox::StandardButton::Close|QDialogButtonBox::StandardButton::Save", 0},
        {"QDialogButtonBox::Open|QDialogButtonBox::Save", 1},
        {"QDialogButtonBox::NoButton", 2},
        {"", 2},
    };
    for (const auto& row : rows) {
        const std::string box =
            Widget("QDialogButtonBox", Property("standardButtons", "set", row.buttons));
        EXPECT_EQ(Found(File("QDialog", {box})).size(), row.notes) << row.buttons;
    }
}

TEST(UiCheck, Menus) {
    const struct {
        std::string part;
        std::string finding; // empty for none
    } rows[] = {
        {Item("Save", Tag("100")), ""},
        {Item("Save", ""), "2 warning no tag: item 'a' does nothing"},
        {Item("Save", Property("action", "string", "winCmd")),
         "2 warning no tag: item 'a' does nothing"},
        {Item("Quit", Property("action", "string", "terminate")), ""},
        {Item("Quit", Property("action", "string", "onButton")),
         "2 warning unknown action: 'onButton' of item 'a' does nothing"},
        {Item("", Property("separator", "bool", "true")), ""},
        {Item("Save", Tag("100")) + Item("Save", Tag("100")), ""},
        {Item("Save", Tag("100")) + Item("Load", Tag("100")),
         "2 warning duplicate tag: 100 of item 'a' is that of item 'a' on line 2"},
        {Widget("QMenu", Item("One", Tag("1"))), "2 note tag 1: item 'a' is always enabled"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Found(File("QMenuBar", {row.part})),
                  row.finding.empty() ? Lines{} : Lines{row.finding})
            << row.part;
}

TEST(UiCheck, FindingsStandInTheOrderOfTheLines) {
    const Lines found =
        Found(File("QMenu", {Item("A", Tag("2")), Item("B", ""),
                             Item("C", Tag("2") + Property("action", "string", "x"))}));
    ASSERT_EQ(found.size(), 3u);
    EXPECT_TRUE(found[0].starts_with("3 ") && found[1].starts_with("4 ") &&
                found[2].starts_with("4 "));
}

TEST(UiCheck, WhatTheLibraryRefusesIsAnError) {
    EXPECT_THAT(Found(std::string(4 * 1024 * 1024 + 1, ' ')),
                ElementsAre(testing::HasSubstr("1 error refused")));

    const auto nested = [](int depth) {
        std::string text;
        for (int i = 0; i < depth; ++i) text += "<widget class=\"QWidget\" name=\"w\">";
        for (int i = 0; i < depth; ++i) text += "</widget>";
        return File("QMenuBar", {text});
    };
    EXPECT_THAT(Found(nested(62)), IsEmpty()); // in <ui> and the root
    EXPECT_THAT(Found(nested(63)),
                ElementsAre(testing::HasSubstr("2 error refused: nested too deeply")));
    EXPECT_EQ(Found(nested(100000)).size(), 1u) << "the reader of the check does not recurse";

    const struct {
        std::string part;
        bool isRefused;
    } rows[] = {
        {Widget("QTableWidget", Tag("4") + Property("rowCount", "number", "1000")), false},
        {Widget("QTableWidget", Tag("4") + Property("rowCount", "number", "2000000000")), true},
        {Widget("QTreeWidget", Tag("4") + Property("columnCount", "double", "2e9")), true},
        {Widget("QTreeWidget", Tag("4") + Property("columnCount", "double", "nan")), true},
        {"<layout class=\"QGridLayout\"><item row=\"2000000000\" column=\"1\"/></layout>", true},
        {"<layout class=\"QGridLayout\"><item row=\"0\" colspan=\"1001\"/></layout>", true},
    };
    for (const auto& row : rows) {
        const Lines found = Found(File("QDialog", {kOkAndCancel, row.part}));
        EXPECT_EQ(found.size(), row.isRefused ? 1u : 0u) << row.part;
        if (row.isRefused && !found.empty()) {
            EXPECT_TRUE(found[0].starts_with("3 error refused")) << found[0];
        }
    }
}

TEST(UiCheck, OtherFilesAreNamedWithTheirLine) {
    const struct {
        std::string bytes;
        std::string finding;
    } rows[] = {
        {"", "1 error no interface file: Premature end of document."},
        {"[section]\nkey=1\n", "1 error no interface file: Start tag expected."},
        {"\n<html/>", "2 error no interface file: the root element is <html>, not <ui>"},
        {"<ui>\n</ui>", "2 error no interface file: there is no widget in it"},
    };
    for (const auto& [bytes, finding] : rows) {
        EXPECT_FALSE(CheckUi(bytes).isInterfaceFile);
        EXPECT_THAT(Found(bytes), ElementsAre(finding)) << bytes;
    }
    // Cut off, and the ways in which a file may be hostile.
    const std::string whole = File("QDialog", {kOkAndCancel});
    for (std::size_t length = 0; length + 2 < whole.size(); ++length)
        EXPECT_FALSE(CheckUi(whole.substr(0, length)).isInterfaceFile) << length;
    const std::string bomb = "<!DOCTYPE ui [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b "
                             "\"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c "
                             "\"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d "
                             "\"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\">]><ui>&d;</ui>";
    EXPECT_FALSE(CheckUi(bomb).isInterfaceFile);
}

TEST(UiCheck, LibrariansFilesAreClean) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(VMCORE_LIBRARIAN_RESOURCES)) {
        if (entry.path().extension() != ".ui") continue;
        std::ifstream file(entry.path());
        const UiReport report = CheckUi(std::string(std::istreambuf_iterator<char>(file), {}));
        for (const Finding& finding : report.findings)
            EXPECT_EQ(finding.severity, Severity::Note)
                << entry.path() << ":" << finding.line << ": " << finding.text;
        ++count;
    }
    EXPECT_GT(count, 0);
}

} // namespace
} // namespace vm::tool
