#include "controls/interfaceFile.h"

#include <sys/stat.h>

#include <QtGui/QAction>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>

#include <gmock/gmock.h>

#include "ControlsFixture.h"
#include "controls/menuActions.h"
#include "wnd/tagTable.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const std::string kPanel =
    UiFile("<widget class=\"QWidget\" name=\"Panel\">"
           "<widget class=\"QPushButton\" name=\"first\"><property name=\"tag\" stdset=\"0\">"
           "<number>11</number></property></widget>"
           "<widget class=\"QWidget\" name=\"group\"><widget class=\"QLineEdit\" name=\"inner\">"
           "<property name=\"tag\" stdset=\"0\"><number>12</number></property></widget></widget>"
           "<widget class=\"QPushButton\" name=\"second\"><property name=\"tag\" stdset=\"0\">"
           "<number>11</number></property></widget></widget>");

std::string MenuBarFile() {
    return UiFile("<widget class=\"QMenuBar\" name=\"bar\">" +
                  UiAction("save", "Save\tCtrl+S", 101) + UiAction("quit", "Quit", 0, "Ctrl+Q") +
                  "<widget class=\"QMenu\" name=\"file\"><property name=\"title\"><string>&amp;File"
                  "</string></property><addaction name=\"save\"/><addaction name=\"separator\"/>"
                  "<addaction name=\"quit\"/></widget>"
                  "<widget class=\"QMenu\" name=\"edit\"><property name=\"title\"><string>Edit"
                  "</string></property></widget>"
                  "<addaction name=\"file\"/><addaction name=\"edit\"/></widget>");
}

class InterfaceFile : public testing::Test {
protected:
    LogCapture m_log;
    TestBundle m_bundle;
};

} // namespace

TEST_F(InterfaceFile, FindsViewsByTagFirstInTheOrderOfTheFile) {
    m_bundle.Write("DLG_1", kPanel);
    const std::unique_ptr<QWidget> root(vm::LoadInterfaceFile("DLG_1"));
    ASSERT_TRUE(root);
    ASSERT_TRUE(vm::FindTagged(root.get(), 11));
    EXPECT_EQ(vm::FindTagged(root.get(), 11)->objectName(), "first");
    EXPECT_TRUE(qobject_cast<QLineEdit*>(vm::FindTagged(root.get(), 12)));
    EXPECT_EQ(vm::FindTagged(root.get(), 13), nullptr);

    delete vm::FindTagged(root.get(), 12);
    EXPECT_EQ(vm::FindTagged(root.get(), 12), nullptr);
}

TEST_F(InterfaceFile, RootAndWidgetsAreMadeAsAsked) {
    class Special : public QWidget {
    public:
        using QWidget::QWidget;
    };
    m_bundle.Write("DLG_1", kPanel);
    vm::InterfaceClasses classes;
    classes.makeRoot = [](const QString&, QWidget* parent) { return new Special(parent); };
    classes.makeWidget = [](const QString& name, QWidget* parent) -> QWidget* {
        return name == "QLineEdit" ? new QPushButton(parent) : nullptr;
    };
    const std::unique_ptr<QWidget> root(vm::LoadInterfaceFile("DLG_1", nullptr, classes));
    ASSERT_TRUE(root);
    EXPECT_TRUE(dynamic_cast<Special*>(root.get()));
    EXPECT_EQ(root->objectName(), "Panel");
    EXPECT_TRUE(qobject_cast<QPushButton*>(vm::FindTagged(root.get(), 12)));
    EXPECT_TRUE(qobject_cast<QPushButton*>(vm::FindTagged(root.get(), 11)));
}

TEST_F(InterfaceFile, ChangedFileIsReadAgain) {
    m_bundle.Write("DLG_1", kPanel);
    delete vm::LoadInterfaceFile("DLG_1");
    m_bundle.Write("DLG_1", UiFile("<widget class=\"QWidget\" name=\"Other\"/>"));
    std::filesystem::last_write_time(m_bundle.PathOf("DLG_1"),
                                     std::filesystem::file_time_type::clock::now() +
                                         std::chrono::seconds(2));
    const std::unique_ptr<QWidget> root(vm::LoadInterfaceFile("DLG_1"));
    ASSERT_TRUE(root);
    EXPECT_EQ(root->objectName(), "Other");
}

TEST_F(InterfaceFile, MissingAndMalformedFilesAreLogged) {
    m_bundle.Write("DLG_2", "<ui version=\"4.0\"><widget class=");
    EXPECT_EQ(vm::LoadInterfaceFile("DLG_1"), nullptr);
    EXPECT_EQ(vm::LoadInterfaceFile("DLG_2"), nullptr);
    EXPECT_THAT(
        m_log.TakeLog(),
        ElementsAre("interface file " + m_bundle.PathOf("DLG_1") + ": No such file or directory",
                    HasSubstr("interface file " + m_bundle.PathOf("DLG_2") + ": ")));
}

TEST_F(InterfaceFile, HostileFilesAreRefusedAndSaidSo) {
    const auto nested = [](int depth) {
        std::string text;
        for (int i = 0; i < depth; ++i) text += "<widget class=\"QWidget\" name=\"w\">";
        for (int i = 0; i < depth; ++i) text += "</widget>";
        return UiFile(text);
    };
    const std::string bomb = "<!DOCTYPE ui [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b "
                             "\"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c "
                             "\"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d "
                             "\"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\">]><ui version=\"4.0\">&d;</ui>";
    const struct {
        const char* what;
        std::string content;
        const char* why;
    } rows[] = {
        {"empty", "", "line 1: "},
        {"no XML", "MZ\x90\x03 hello", "line 1: "},
        {"cut off", kPanel.substr(0, kPanel.size() - 20), "line 2: "},
        {"bytes of another encoding", UiFile("<widget class=\"QWidget\" name=\"\xff\xfe\"/>"),
         "line 1: "},
        {"entities", bomb, "line 1: "},
        {"deep", nested(64), "line 2: nested too deeply"},
        {"very deep", nested(60000), "line 2: nested too deeply"},
        {"two layouts",
         UiFile(
             "<widget class=\"QWidget\" name=\"w\">\n<layout class=\"QVBoxLayout\" name=\"a\"/>\n"
             "<layout class=\"QHBoxLayout\" name=\"b\"/></widget>"),
         "line 4: a second layout in one place"},
        {"large", UiFile("<!--" + std::string(5 << 20, ' ') + "-->"), "larger than 4 MB"},
        {"no interface", "<svg/>", ""},
        {"no widget", UiFile(""), ""},
    };
    auto written = std::filesystem::file_time_type::clock::now();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        m_bundle.Write("DLG_1", row.content);
        std::filesystem::last_write_time(m_bundle.PathOf("DLG_1"),
                                         written += std::chrono::seconds(1));
        EXPECT_EQ(vm::LoadInterfaceFile("DLG_1"), nullptr);
        const std::vector<std::string> lines = m_log.TakeLog();
        ASSERT_EQ(lines.size(), 1u);
        EXPECT_THAT(lines[0], testing::StartsWith("interface file " + m_bundle.PathOf("DLG_1") +
                                                  ": " + row.why));
    }
    m_bundle.Write("DLG_2", nested(63)); // with <ui> that is 64
    delete vm::LoadInterfaceFile("DLG_2");
    EXPECT_THAT(m_log.TakeLog(), testing::IsEmpty());
}

TEST_F(InterfaceFile, WhatIsNoRegularFileIsNotOpened) {
    std::filesystem::create_directory(m_bundle.PathOf("DLG_1"));
    ASSERT_EQ(mkfifo(m_bundle.PathOf("DLG_2").c_str(), 0600), 0); // reading it would wait for ever
    std::filesystem::create_symlink("/dev/zero", m_bundle.PathOf("DLG_3"));
    const Watchdog watchdog;
    for (const char* name : {"DLG_1", "DLG_2", "DLG_3"}) {
        EXPECT_EQ(vm::LoadInterfaceFile(name), nullptr);
        EXPECT_THAT(m_log.TakeLog(), ElementsAre("interface file " + m_bundle.PathOf(name) +
                                                 ": not a regular file"));
    }
}

TEST_F(InterfaceFile, MenuBarBecomesAMenuOfItsMenus) {
    m_bundle.Write("MainMenu", MenuBarFile());
    const std::unique_ptr<QMenu> menu(vm::LoadMenuFile("MainMenu"));
    ASSERT_TRUE(menu);
    ASSERT_EQ(menu->actions().size(), 2);
    QMenu* file = menu->actions()[0]->menu();
    ASSERT_TRUE(file);
    EXPECT_EQ(file->title(), "&File");
    ASSERT_EQ(file->actions().size(), 3);

    QAction* save = file->actions()[0];
    EXPECT_EQ(vm::MenuItemTag(save), 101);
    EXPECT_STREQ(vm::MenuActionOf(save), "winCmd");
    EXPECT_EQ(save->text(), "Save") << "the shortcut is taken out of the text";
    EXPECT_EQ(save->shortcut(), QKeySequence("Ctrl+S"));
    EXPECT_TRUE(file->actions()[1]->isSeparator());
    EXPECT_STREQ(vm::MenuActionOf(file->actions()[2]), "") << "neither a command nor an action";
}

TEST_F(InterfaceFile, MenuFileNeedsAMenuAsRoot) {
    m_bundle.Write("MENU_1", UiFile("<widget class=\"QMainWindow\" name=\"Main\"/>"));
    EXPECT_EQ(vm::LoadMenuFile("MENU_1"), nullptr);
    EXPECT_THAT(m_log.TakeLog(),
                ElementsAre("interface file " + m_bundle.PathOf("MENU_1") +
                            ": the root of a menu file must be a QMenuBar or a QMenu, not a "
                            "QMainWindow"));
}
