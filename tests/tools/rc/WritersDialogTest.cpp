// What each control of a script becomes in the interface file, and what the report says of it.
#include <gmock/gmock.h>

#include <QtCore/QXmlStreamReader>

#include "ScriptParts.h"
#include "controls/interfaceLimits.h"
#include "uiCheck.h"

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace vm::rc {
namespace {

// The properties of the widgets as "name=value", geometry left out; each widget begins with its class.
std::vector<std::string> Widgets(const std::string& bytes) {
    std::vector<std::string> widgets;
    QXmlStreamReader xml(QByteArray::fromStdString(bytes));
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement()) continue;
        const auto name = xml.attributes().value("name").toString().toStdString();
        if (xml.name() == QLatin1String("widget"))
            widgets.push_back(xml.attributes().value("class").toString().toStdString());
        if (xml.name() != QLatin1String("property") && xml.name() != QLatin1String("attribute"))
            continue;
        xml.readNextStartElement();
        if (xml.name() == QLatin1String("rect") || xml.name() == QLatin1String("size")) continue;
        const QString value = xml.readElementText(QXmlStreamReader::IncludeChildElements);
        widgets.back() += " " + name + "=" + value.toStdString();
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return widgets;
}

struct Row {
    const char* windowClass;
    std::uint32_t style;
    const char* text;
    const char* widget;
    const char* note; ///< of the report; empty when all of it is there
};

class WritersDialog : public testing::TestWithParam<Row> {};

constexpr std::uint32_t kTab = kTabbed;
constexpr std::uint32_t kBordered = kTab | 0x800000;

const Row kRows[] = {
    {"button", kTab, "&Go", "QPushButton tag=5 text=&Go", ""},
    {"button", kTab | 1, "OK", "QPushButton tag=5 text=OK default=true", ""},
    {"button", 0x8000, "Go", "QPushButton tag=5 text=Go flat=true focusPolicy=Qt::ClickFocus", ""},
    {"button", kTab | 2, "a", "QCheckBox tag=5 text=a", "a click changes it by itself"},
    {"button", kTab | 3, "a", "QCheckBox tag=5 text=a", ""},
    {"button", kTab | 3 | 0x20, "a", "QCheckBox tag=5 text=a layoutDirection=Qt::RightToLeft", ""},
    {"button", kTab | 6, "a", "QCheckBox tag=5 text=a tristate=true", ""},
    {"button", 9, "a", "QRadioButton tag=5 text=a", ""},
    {"button", kTab | 3 | 0x1000, "a", "QPushButton tag=5 text=a checkable=true", ""},
    {"button", 9 | 0x1000, "a",
     "QPushButton tag=5 text=a autoExclusive=true action=onRadio checkable=true", ""},
    {"button", 7, "Box", "QGroupBox tag=5 title=Box", ""},
    {"button", kTab | 0xB, "a", "QPushButton tag=5 text=a", "not drawn by the program"},
    {"button", kTab | 0x2000, "a", "QPushButton tag=5 text=a", "not wrapped"},
    {"edit", kBordered | 0x80, "x", "QLineEdit tag=5 text=x", ""},
    {"edit", kBordered | 0x2 | 0x2000, "1",
     "QLineEdit tag=5 text=1 alignment=Qt::AlignRight|Qt::AlignVCenter typing=digits", ""},
    {"edit", kBordered | 0x820, "x",
     "QLineEdit tag=5 text=x echoMode=QLineEdit::Password readOnly=true", ""},
    {"edit", kBordered | 0x200004, "x",
     "QPlainTextEdit tag=5 plainText=x verticalScrollBarPolicy=Qt::ScrollBarAsNeeded "
     "horizontalScrollBarPolicy=Qt::ScrollBarAlwaysOff",
     ""},
    {"edit", kBordered | 0x85, "x",
     "QPlainTextEdit tag=5 plainText=x lineWrapMode=QPlainTextEdit::NoWrap "
     "verticalScrollBarPolicy=Qt::ScrollBarAlwaysOff "
     "horizontalScrollBarPolicy=Qt::ScrollBarAlwaysOff",
     "aligned to the left"},
    {"edit", kTab, "x", "QLineEdit tag=5 text=x frame=false", ""},
    {"edit", kTab | 4, "x",
     "QPlainTextEdit tag=5 plainText=x verticalScrollBarPolicy=Qt::ScrollBarAlwaysOff "
     "horizontalScrollBarPolicy=Qt::ScrollBarAlwaysOff frameShape=QFrame::NoFrame",
     ""},
    {"button", kTab | 3 | 0x2000, "a", "QCheckBox tag=5 text=a", "not wrapped"},
    {"button", 7, "&A && B", "QGroupBox tag=5 title=A && B", "leads nowhere"},
    {"msctls_updown32", 0x22, "", "CSpinButton tag=5 focusPolicy=Qt::NoFocus", "SetBuddy"},
    {"static", 0, "R&&D &x",
     "QLabel tag=5 text=R&D x textFormat=Qt::PlainText alignment=Qt::AlignLeft|Qt::AlignTop",
     "leads nowhere"},
    {"static", 0x82, "R&D",
     "QLabel tag=5 text=R&D textFormat=Qt::PlainText alignment=Qt::AlignRight|Qt::AlignTop", ""},
    {"static", 0x1201, "x",
     "QLabel tag=5 text=x textFormat=Qt::PlainText alignment=Qt::AlignHCenter|Qt::AlignVCenter "
     "frameShape=QFrame::Panel frameShadow=QFrame::Sunken indent=0",
     ""},
    {"static", 0x10, "", "QFrame tag=5 frameShape=QFrame::HLine frameShadow=QFrame::Sunken", ""},
    {"static", 0x11, "", "QFrame tag=5 frameShape=QFrame::VLine frameShadow=QFrame::Sunken", ""},
    {"static", 7, "", "QFrame tag=5 frameShape=QFrame::Box frameShadow=QFrame::Plain",
     "the desktop's colours"},
    {"static", 0xE, "", "QLabel tag=5 alignment=Qt::AlignLeft|Qt::AlignTop",
     "the program sets the picture"},
    {"static", 0x100, "x",
     "QLabel tag=5 text=x textFormat=Qt::PlainText alignment=Qt::AlignLeft|Qt::AlignTop",
     "clicks are not reported"},
    {"listbox", kTab, "", "QListWidget tag=5", ""},
    {"listbox", kTab | 0x802, "",
     "QListWidget tag=5 selectionMode=QAbstractItemView::ExtendedSelection", "never sorted"},
    {"combobox", kTab | 3, "", "QComboBox tag=5", ""},
    {"combobox", kTab | 0x102, "", "QComboBox tag=5 editable=true sort=true", ""},
    {"combobox", kTab | 1, "", "QComboBox tag=5 editable=true", "its list drops down"},
    {"scrollbar", 1, "", "QScrollBar tag=5 orientation=Qt::Vertical focusPolicy=Qt::ClickFocus",
     ""},
    {"msctls_trackbar32", kTab | 0xA, "",
     "QSlider tag=5 orientation=Qt::Vertical tickPosition=QSlider::TicksBothSides maximum=100", ""},
    {"msctls_updown32", kTab | 0x63, "", "CSpinButton tag=5 wrap=true horizontal=true", "SetBuddy"},
    {"msctls_progress32", 4, "",
     "QProgressBar tag=5 maximum=100 value=0 orientation=Qt::Vertical textVisible=false", ""},
    {"syslistview32", kTab | 0x4005, "",
     "QTableView tag=5 delegate=LCTableViewDelegate "
     "selectionMode=QAbstractItemView::SingleSelection horizontalHeaderVisible=false",
     ""},
    {"syslistview32", kTab, "", "QTableView tag=5 delegate=LCTableViewDelegate",
     "the view with columns"},
    {"systreeview32", kTab | 0x100, "",
     "QTreeView tag=5 delegate=TCOutlineViewDataSource checkBoxes=true", ""},
    {"systabcontrol32", kTab, "", "QTabWidget tag=5", ""},
    {"sysdatetimepick32", kTab, "", "QDateEdit tag=5 calendarPopup=true", "as text"},
    {"sysdatetimepick32", kTab | 9, "", "QTimeEdit tag=5", "as text"},
    {"syslink", 0, "See <a href=\"x\">the page</a>.",
     "QLabel tag=5 text=See the page. textFormat=Qt::PlainText "
     "alignment=Qt::AlignLeft|Qt::AlignTop wordWrap=true",
     "without links"},
    {"richedit20w", kBordered, "x", "QLineEdit tag=5 text=x", "plain text"},
    {"sysanimate32", 0, "", "CWndView tag=5", "the program draws"},
    {"sketchcanvas", kTab, "", "CWndView tag=5 focusPolicy=Qt::StrongFocus", "the program draws"},
};

} // namespace

TEST_P(WritersDialog, ControlsAreOfTheToolkitsClass) {
    const Row& row = GetParam();
    const Written written(
        {MakeDialog(1, {MakeControl(row.windowClass, 5, row.text, {7, 7, 50, 12}, row.style)})});
    const std::string file = written.File("DLG_1.ui");
    ASSERT_EQ(Widgets(file).size(), 2u);
    EXPECT_EQ(Widgets(file)[1], row.widget);
    ASSERT_EQ(written.lines.size(), 2u);
    EXPECT_THAT(written.lines[1], StartsWith(*row.note ? "approximated: " : "converted: "));
    EXPECT_THAT(written.lines[1], HasSubstr(row.note));
    for (const tool::Finding& finding : tool::CheckUi(file).findings)
        EXPECT_EQ(finding.severity, tool::Severity::Note) << finding.text;
}
INSTANTIATE_TEST_SUITE_P(Table, WritersDialog, testing::ValuesIn(kRows), [](const auto& row) {
    return std::string(row.param.windowClass) + "_" + std::to_string(row.index);
});

TEST(WritersDialogs, WhatSeveralControlsHaveInCommon) {
    Control hidden = MakeControl("edit", 5, "", {0, 0, 9, 9}, kTabbed | 0x08000000);
    hidden.style &= ~0x10000000u;
    hidden.helpId = 3;
    Control same = MakeControl("edit", 5, "", {0, 0, 9, 9}, kTabbed);
    Control grip = MakeControl("scrollbar", 6, "", {0, 0, 9, 9}, 0x10);
    Control number = MakeControl("edit", 7, "", {1, 2, 3, 400000}, kTabbed);
    number.id = NumberId(7);
    const Written written({MakeDialog(1, {hidden, same, grip, number})});
    const std::string file = written.File("DLG_1.ui");
    EXPECT_THAT(Widgets(file),
                ElementsAre("QDialog windowTitle=Test",
                            "QLineEdit tag=5 text= frame=false visible=false enabled=false",
                            "QLineEdit tag=5 text= frame=false",
                            "QLineEdit tag=7 text= frame=false"));
    for (const char* name : {"\"IDC_5\"", "\"IDC_5_2\"", "\"item7\"", "<height>65534</height>"})
        EXPECT_THAT(file, HasSubstr(name));
    EXPECT_THAT(written.lines[1], HasSubstr("the help number has no counterpart"));
    EXPECT_THAT(written.lines[2], HasSubstr("is that of a control before it"));
    EXPECT_THAT(written.lines[3], StartsWith("left out: CONTROL IDC_6: windows are resized"));
}

TEST(WritersDialogs, PicturesOfIconsAreScaled) {
    for (const std::uint32_t style :
         {0x3u, 0xEu, 0x4Eu}) { // an icon, a bitmap, one of the control's size
        Control picture = MakeControl("static", 5, "", {0, 0, 21, 20}, style);
        picture.image = NumberId(8);
        const Written written({MakeDialog(1, {picture})});
        const std::string file = written.File("DLG_1.ui");
        EXPECT_THAT(written.lines[1], HasSubstr("Bitmap_8.png is not made"));
        EXPECT_EQ(file.find("scaledContents") != std::string::npos, style != 0xE);
    }
}

TEST(WritersDialogs, WhatIsBehindComesFirst) {
    const Written written({MakeDialog(1, {MakeControl("edit", 4, "", {}, kTabbed),
                                          MakeControl("button", 5, "Box", {}, 7),
                                          MakeControl("systabcontrol32", 6, "", {}, kTabbed)})});
    EXPECT_THAT(Widgets(written.File("DLG_1.ui")),
                ElementsAre(StartsWith("QDialog"), StartsWith("QTabWidget"),
                            StartsWith("QGroupBox"), StartsWith("QLineEdit")));
}

TEST(WritersDialogs, WindowsBecomeRoots) {
    const struct {
        std::uint32_t style;
        const char* root;
        bool resizable;
        const char* note;
    } rows[] = {
        {0x80C80000, "QDialog windowTitle=Test", false, "the font is the desktop's"},
        {0x80CC0000, "QDialog windowTitle=Test", true, ""},
        {0x40000000, "QWidget windowTitle=Test", false, ""},
        {0x80000000, "QDialog windowTitle=Test", false, "with a title bar"},
        {0x80CA0000, "QDialog windowTitle=Test", false, "without minimize and maximize boxes"},
    };
    for (const auto& row : rows) {
        Dialog dialog = MakeDialog(1, {});
        dialog.style = row.style;
        const Written written({dialog});
        EXPECT_THAT(Widgets(written.File("DLG_1.ui")), ElementsAre(row.root));
        EXPECT_EQ(written.File("DLG_1.ui").find("minimumSize") != std::string::npos, row.resizable);
        EXPECT_THAT(written.lines[0], HasSubstr(row.note));
    }
    Dialog dialog = MakeDialog(1, {});
    dialog.font = {};
    EXPECT_THAT(Written({dialog}).lines, ElementsAre("converted: DIALOGEX IDD_TEST: DLG_1.ui"));
}

// Whatever a script says, a file is well-formed, and in the folder.
TEST(WritersDialogs, HostileContentStaysText) {
    const std::string text = "<b>\"&amp;\x01]]>\xEF\xBF\xBF\x1B\xC3\xA9\n";
    Dialog dialog = MakeDialog(1, {});
    dialog.head.id = NameId("../../ETC/<PASSWD>");
    dialog.caption = text;
    dialog.font = {9, "Face\"><x", 0, false, 0};
    for (const char* windowClass : {"button", "edit", "static", "../x<y>"}) {
        Control control = MakeControl(windowClass, 5, text, {0, 0, 9, 9});
        control.id.symbol = "a\"b<c>\n\xC3\xA9";
        dialog.controls.push_back(control);
    }
    Menu menu;
    menu.head = {{}, "MENU", NameId("..\\X/Y"), {}};
    menu.items = {MakeItem(MenuEntry::Item, text + "\t\x02", NumberId(5, "*/ \n\""))};
    const Written written({dialog, menu});
    ASSERT_EQ(written.files.size(), 2u);
    EXPECT_EQ(written.files[0].name, "DLG_______ETC__PASSWD_.ui");
    EXPECT_EQ(written.files[1].name, "MENU____X_Y.ui");
    for (const OutputFile& file : written.files)
        EXPECT_EQ(ProblemOfInterface(QByteArray::fromStdString(file.bytes)).why, "") << file.bytes;
    const auto widgets = Widgets(written.files[0].bytes);
    EXPECT_THAT(widgets, Contains(HasSubstr("text=<b>\"&amp;]]>\xC3\xA9\n")));
    EXPECT_THAT(written.lines[0], HasSubstr("cannot be loaded by number"));
}

} // namespace vm::rc
