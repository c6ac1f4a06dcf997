// What each control of a script becomes in the interface file, and what the report says of it.
#include <gmock/gmock.h>

#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamReader>
#include <QtGui/QImage>

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
    {"button", 0x307, "Box", "QGroupBox tag=5 title=Box alignment=Qt::AlignHCenter", ""},
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
     "no ES_WANTRETURN"},
    {"edit", kBordered | 0x85, "x",
     "QPlainTextEdit tag=5 plainText=x lineWrapMode=QPlainTextEdit::NoWrap "
     "verticalScrollBarPolicy=Qt::ScrollBarAlwaysOff "
     "horizontalScrollBarPolicy=Qt::ScrollBarAlwaysOff",
     "aligned to the left"},
    {"edit", kTab, "x", "QLineEdit tag=5 text=x frame=false", ""},
    {"edit", kTab | 0x1004, "x",
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
    {"listbox", kTab, "", "QListWidget tag=5 frameShape=QFrame::NoFrame", ""},
    {"listbox", kBordered | 0x202941, "",
     "QListWidget tag=5 selectionMode=QAbstractItemView::ExtendedSelection", "LBS_NODATA"},
    {"listbox", kBordered | 0x100A, "",
     "QListWidget tag=5 selectionMode=QAbstractItemView::MultiSelection "
     "verticalScrollBarPolicy=Qt::ScrollBarAlwaysOn",
     "never sorted: add the strings in order (LBS_SORT)"},
    {"combobox", kTab | 3, "", "QComboBox tag=5", ""},
    {"combobox", kTab | 0x102, "", "QComboBox tag=5 editable=true sort=true", ""},
    {"combobox", kTab | 1, "", "QComboBox tag=5 editable=true", "its list drops down"},
    {"scrollbar", 1, "", "QScrollBar tag=5 orientation=Qt::Vertical focusPolicy=Qt::ClickFocus",
     ""},
    {"msctls_trackbar32", kTab | 0xB, "",
     "QSlider tag=5 orientation=Qt::Vertical tickPosition=QSlider::TicksBothSides maximum=100", ""},
    {"msctls_updown32", kTab | 0x63, "", "CSpinButton tag=5 wrap=true horizontal=true", "SetBuddy"},
    {"msctls_progress32", 4, "",
     "QProgressBar tag=5 maximum=100 value=0 orientation=Qt::Vertical textVisible=false", ""},
    {"syslistview32", kBordered | 0x4005, "",
     "QTableView tag=5 delegate=LCTableViewDelegate "
     "selectionMode=QAbstractItemView::SingleSelection horizontalHeaderVisible=false",
     ""},
    {"syslistview32", kBordered, "", "QTableView tag=5 delegate=LCTableViewDelegate",
     "the view with columns (LVS_ICON)"},
    {"syslistview32", kTab | 0x2001, "",
     "QTableView tag=5 delegate=LCTableViewDelegate "
     "horizontalScrollBarPolicy=Qt::ScrollBarAlwaysOff "
     "verticalScrollBarPolicy=Qt::ScrollBarAlwaysOff frameShape=QFrame::NoFrame",
     ""},
    {"systreeview32", kBordered | 0x105, "",
     "QTreeView tag=5 delegate=TCOutlineViewDataSource checkBoxes=true", ""},
    {"systabcontrol32", kTab, "", "QTabWidget tag=5", ""},
    {"sysdatetimepick32", kTab, "", "QDateEdit tag=5 calendarPopup=true startsNow=true", "as text"},
    {"sysdatetimepick32", kTab | 9, "", "QTimeEdit tag=5 startsNow=true dateFormat=seconds",
     "as text"},
    {"sysdatetimepick32", kTab | 0xD, "", "QDateEdit tag=5 startsNow=true dateFormat=century",
     "as text"},
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

// Without a style that says otherwise a control has the size of its picture, here of 60 x 26 pixels or an icon.
TEST(WritersDialogs, PicturesHaveTheirOwnSize) {
    QImage image(60, 26, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QTemporaryDir folder;
    const std::string path = folder.filePath("a.bmp").toStdString();
    ASSERT_TRUE(image.save(QString::fromStdString(path)));
    const Picture picture{
        {{"test.rc", 1, 1}, "BITMAP", NumberId(8), {}}, PictureKind::Bitmap, path, true};
    const struct {
        std::uint32_t style;
        Rect units;
        Rect pixels; ///< of the file
    } rows[] = {
        {0xE, {10, 10, 100, 5}, {20, 20, 80, 32}},    {0xE, {10, 10, 39, 17}, {20, 20, 78, 34}},
        {0x40E, {10, 10, 90, 36}, {120, 60, 80, 32}}, {0x20E, {10, 10, 90, 36}, {20, 20, 180, 72}},
        {0x4E, {10, 10, 90, 36}, {20, 20, 180, 72}},  {0x3, {10, 10, 90, 36}, {20, 20, 42, 40}},
        {0x203, {10, 10, 91, 30}, {90, 30, 42, 40}},  {0x3, {10, 10, 0, 0}, {20, 20, 42, 40}},
    };
    for (const auto& row : rows) {
        Control control = MakeControl("static", 5, "", row.units, row.style);
        control.image = NumberId(8);
        const Written written({MakeDialog(1, {control}), picture});
        std::string file = written.File("DLG_1.ui");
        file.erase(0, file.find("QLabel"));
        std::erase_if(file, [](char c) { return c == '\n' || c == ' '; });
        EXPECT_THAT(file, HasSubstr("<x>" + std::to_string(row.pixels.x) + "</x><y>" +
                                    std::to_string(row.pixels.y) + "</y><width>" +
                                    std::to_string(row.pixels.cx) + "</width><height>" +
                                    std::to_string(row.pixels.cy) + "</height>"))
            << std::hex << row.style;
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

TEST(WritersDialogs, KeysOfLabelsLeadToWhatFollows) {
    const Control field = MakeControl("edit", 6, "", {0, 0, 9, 9}, kTabbed);
    const Control button = MakeControl("button", 7, "", {0, 0, 9, 9}, kTabbed);
    const Control frame = MakeControl("static", 8, "", {0, 0, 9, 9}, 7);
    const struct {
        const char* label;
        std::vector<Control> behind;
        const char* buddy;
        const char* note;
    } rows[] = {
        {"&Name:", {field, button}, "IDC_6", "converted"},
        {"Name:", {field}, "IDC_6", "converted"},
        {"&Name:", {frame, field}, "IDC_6", "converted"},
        {"Name:", {frame, field}, "", "converted"},
        {"&Colour:", {button, field}, "IDC_7", "its key presses the button"},
        {"Colour:", {button}, "", "converted"},
        {"&Name:", {frame}, "", "its key leads nowhere"},
    };
    for (const auto& row : rows) {
        std::vector<Control> controls = row.behind;
        controls.insert(controls.begin(), MakeControl("static", 5, row.label, {}));
        const Written written({MakeDialog(1, controls)});
        const std::string& file = written.File("DLG_1.ui");
        EXPECT_EQ(file.find("buddy") != std::string::npos, *row.buddy != '\0') << row.label;
        EXPECT_THAT(file, HasSubstr(*row.buddy ? std::string(row.buddy) + "</cstring>" : ""));
        EXPECT_THAT(written.lines[1], HasSubstr(row.note)) << row.label;
    }
}

TEST(WritersDialogs, WindowsBecomeRoots) {
    const struct {
        std::uint32_t style;
        const char* root;
        bool resizable;
        const char* note;
    } rows[] = {
        {0x80C80000, "QDialog windowTitle=Test", false, ""},
        {0x80CC0000, "QDialog windowTitle=Test", true, ""},
        {0x40000000, "QWidget windowTitle=Test", false, ""},
        {0x80000000, "QDialog windowTitle=Test", false, "with a title bar"},
        {0x80CA0000, "QDialog windowTitle=Test", false, "a minimize box (WS_MINIMIZEBOX)"},
    };
    for (const auto& row : rows) {
        Dialog dialog = MakeDialog(1, {});
        dialog.style = row.style;
        const Written written({dialog});
        EXPECT_THAT(Widgets(written.File("DLG_1.ui")), ElementsAre(row.root));
        EXPECT_EQ(written.File("DLG_1.ui").find("minimumSize") != std::string::npos, row.resizable);
        EXPECT_THAT(written.lines[0], StartsWith(*row.note ? "approximated: " : "converted: "));
        EXPECT_THAT(written.lines[0], HasSubstr(row.note));
    }
}

// What the report says behind the widget; nothing where all is honoured or nobody sees a difference.
TEST(WritersDialogs, StyleBitsAreHonouredOrNamed) {
    const struct {
        const char* windowClass;
        std::uint32_t style, exStyle;
        const char* notes;
    } rows[] = {
        // As resource editors write them.
        {"button", kTab | 0x4C01, 0, ""},
        {"button", 0x20007, 0x20, ""},
        {"edit", kBordered | 0x80, 0x204, ""},
        {"combobox", kTab | 0x200342, 0, ""},
        {"msctls_trackbar32", kTab | 0x18, 0, ""},
        {"msctls_progress32", 0x800001, 0, ""},
        {"syslistview32", kBordered | 0x809, 0, ""},
        {"systreeview32", kBordered | 0x100027, 0x200, ""},
        // What has no counterpart.
        {"button", kTab | 0x100, 0, "the text is where the desktop has it (BS_LEFT)"},
        {"button", kTab | 0xE, 0, "no counterpart (BS_COMMANDLINK)"},
        {"button", 0x8007, 0, "without BS_FLAT"},
        {"edit", kBordered | 0x200580, 0, "without ES_NOHIDESEL, ES_OEMCONVERT, WS_VSCROLL"},
        {"static", 0xC000, 0, "without dots (SS_WORDELLIPSIS)"},
        {"listbox", kBordered | 0x80, 0x4001,
         "without LBS_USETABSTOPS; without WS_EX_DLGMODALFRAME, WS_EX_LEFTSCROLLBAR"},
        {"listbox", kBordered | 0x230, 0,
         "as texts (LBS_OWNERDRAWFIXED, LBS_OWNERDRAWVARIABLE); one column (LBS_MULTICOLUMN)"},
        {"combobox", kTab | 1, 0, "its list drops down (CBS_SIMPLE)"},
        {"scrollbar", 0x3, 0, "(SBS_TOPALIGN, SBS_LEFTALIGN)"},
        {"msctls_trackbar32", kTab | 0x140, 0,
         "with ticks between its ends (no TBS_AUTOTICKS); without TBS_FIXEDLENGTH, TBS_TOOLTIPS"},
        {"msctls_updown32", 0x2, 0, "no separator (no UDS_NOTHOUSANDS)"},
        {"systreeview32", kBordered | 0x201, 0,
         "its button (no TVS_LINESATROOT); without TVS_TRACKSELECT"},
        {"systabcontrol32", 0x8002, 0, "drawn by the desktop (TCS_BOTTOM)"},
        {"sysdatetimepick32", kTab | 0x32, 0,
         "(DTS_SHOWNONE); the calendar opens at the left (DTS_RIGHTALIGN); without "
         "DTS_APPCANPARSE"},
        {"richedit20w", kBordered | 0x1000 | 0x2004 | 0x1000000, 0,
         "scroll bars come and go (ES_DISABLENOSCROLL); without ES_SELECTIONBAR"},
        {"sysmonthcal32", kTab | 0x6, 0, "without MCS_MULTISELECT, MCS_WEEKNUMBERS"},
        {"myknob", 0x2805A71, 0x1000,
         "without 0x5A71, WS_BORDER; not laid out from right to left (WS_EX_RIGHT)"},
    };
    for (const auto& row : rows) {
        Control control = MakeControl(row.windowClass, 5, "", {7, 7, 50, 12}, row.style);
        control.exStyle = row.exStyle;
        const Written written({MakeDialog(1, {control})});
        EXPECT_THAT(written.lines[1], StartsWith(*row.notes ? "approximated: " : "converted: "));
        EXPECT_THAT(written.lines[1], testing::EndsWith(row.notes)) << row.windowClass;
    }
}

TEST(WritersDialogs, DialogsSayWhatTheyLack) {
    const struct {
        std::uint32_t style, exStyle;
        Rect rect;
        Font font;
        const char* notes;
        const char* xml; ///< of the file
    } rows[] = {
        {0x80C808CC, 0x10101, {}, {9, "Segoe UI", 400, false, 204}, "", ""},
        {0x40000448, 0, {}, {8, "MS Shell Dlg", 0, false, 1}, "", ""},
        {0x48C00000, 0, {4, 5, 9, 9}, {}, ": at its parent's origin, not at 4,5", ""},
        {0x80C80000, 0, {4, 5, 9, 9}, {}, ": centred, not at 4,5", ""},
        {0x80C80801, 0, {4, 5, 9, 9}, {}, ": centred, not at its own place (DS_ABSALIGN)", ""},
        {0x80C00000, 0, {}, {}, ": with a close button (no WS_SYSMENU)", ""},
        {0xA1C9C000,
         0x40008,
         {},
         {},
         ": without a maximize box (WS_MAXIMIZEBOX); its numbers are taken for dialog units "
         "(DS_USEPIXELS); without 0x4000, WS_MINIMIZE, WS_MAXIMIZE; an ordinary window: neither on "
         "top nor small nor transparent (WS_EX_TOPMOST); in the task bar only while no window owns "
         "it (WS_EX_APPWINDOW)",
         ""},
        {0x80C80000,
         0,
         {},
         {12, "Tahoma", 700, true, 2},
         "stay letters (SYMBOL_CHARSET)",
         "<pointsize>12</pointsize>"},
        {0x80C80000,
         0,
         {},
         {8, "Tahoma", 300, true, 1},
         "weight is normal, not 300",
         "<italic>true</italic>"},
    };
    for (const auto& row : rows) {
        Dialog dialog = MakeDialog(1, {}, row.rect);
        dialog.style = row.style;
        dialog.exStyle = row.exStyle;
        dialog.font = row.font;
        const Written written({dialog});
        EXPECT_THAT(written.lines[0], testing::EndsWith(*row.notes ? row.notes : ": DLG_1.ui"));
        EXPECT_THAT(written.File("DLG_1.ui"), HasSubstr(row.xml));
        EXPECT_EQ(written.File("DLG_1.ui").find("<font>") != std::string::npos, *row.xml != 0);
    }
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
