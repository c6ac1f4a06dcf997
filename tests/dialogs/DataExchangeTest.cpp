// Values between variables and controls.
#include "DialogsFixture.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QSlider>

#include <vmcore/dialogs/walkViews.h>

#include "core/log.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

std::string Entries(const std::string& texts) {
    std::string items;
    for (const char c : texts) items += "<item>" + UiText("text", std::string(1, c)) + "</item>";
    return items;
}

// An embedded dialog with one control of each kind.
class DataExchange : public DialogsFixture {
protected:
    DataExchange() {
        top.Create("", "Top", WS_VISIBLE, RECT{80, 90, 580, 490}, nullptr, 0);
        Write(3,
              UiDialog(UiControl("QLineEdit", 20) + UiControl("QCheckBox", 21) +
                           UiControl("QSlider", 22) + UiControl("QComboBox", 23, Entries("abcd")) +
                           UiControl("QListWidget", 24, Entries("xyz")) +
                           UiControl("QDoubleSpinBox", 25),
                       "QWidget"));
        EXPECT_TRUE(dialog.Create(3, &top));
    }
    ~DataExchange() override { top.DestroyWindow(); }

    std::string LineText() { return Item<QLineEdit>(dialog, 20)->text().toStdString(); }
    void SetLine(const char* text) { Item<QLineEdit>(dialog, 20)->setText(text); }

    template <class Number>
    std::string Written(Number value) {
        DDX_Text(&in, 20, value);
        return LineText();
    }
    template <class Number>
    Number Read(const char* text) {
        SetLine(text);
        Number value{};
        DDX_Text(&out, 20, value);
        return value;
    }

    RecordingWindow top;
    TestDialog dialog;
    CDataExchange in{&dialog, FALSE};
    CDataExchange out{&dialog, TRUE};
};

} // namespace

TEST_F(DataExchange, NumbersGoThroughTheText) {
    EXPECT_EQ(Written(BYTE{200}), "200");
    EXPECT_EQ(Written(SHORT{-5}), "-5");
    EXPECT_EQ(Written(-70000), "-70000");
    EXPECT_EQ(Written(4000000000u), "4000000000");
    EXPECT_EQ(Written(-5000000000L), "-5000000000");
    EXPECT_EQ(Written(0.5f), "0.500000");
    EXPECT_EQ(Written(-2.25), "-2.250000");

    EXPECT_EQ(Read<BYTE>("300"), 44) << "as many bits as there are";
    EXPECT_EQ(Read<SHORT>(" -7 ms"), -7);
    EXPECT_EQ(Read<int>("12x3"), 12);
    EXPECT_EQ(Read<int>("none"), 0);
    EXPECT_EQ(Read<UINT>("4000000000"), static_cast<UINT>(std::atoi("4000000000")));
    EXPECT_EQ(Read<long>("-5000000000"), -5000000000L);
    EXPECT_EQ(Read<float>("0.5"), 0.5f);
    EXPECT_EQ(Read<double>("1e3"), 1000.0);
    EXPECT_EQ(Read<int>((std::string(254, ' ') + "77").c_str()), 7) << "255 characters count";

    auto* spin = Item<QDoubleSpinBox>(dialog, 25);
    double value = 2.5;
    DDX_Text(&in, 25, value);
    EXPECT_EQ(spin->value(), 2.5);
    spin->setLocale(QLocale(QLocale::German));
    spin->setSuffix(" s");
    DDX_Text(&out, 25, value);
    EXPECT_EQ(value, 2.5);
}

TEST_F(DataExchange, TextsAreWindowTexts) {
    CString text("a \xC4 b"); // Mac Roman
    DDX_Text(&in, 20, text);
    EXPECT_EQ(LineText(), "a \xC6\x92 b");
    text = "";
    DDX_Text(&out, 20, text);
    EXPECT_STREQ(text, "a \xC4 b");
}

TEST_F(DataExchange, NumbersOfTheControlItself) {
    int check = 1;
    BOOL small = 0;
    DDX_Check(&in, 21, check);
    EXPECT_TRUE(Item<QCheckBox>(dialog, 21)->isChecked());
    DDX_Check(&out, 21, small);
    EXPECT_EQ(small, 1);
    int position = 64;
    DDX_Slider(&in, 22, position);
    EXPECT_EQ(Item<QSlider>(dialog, 22)->value(), 64);

    auto* combo = Item<QComboBox>(dialog, 23);
    int index = 0;
    DDX_CBIndex(&in, 23, index);
    EXPECT_EQ(dialog.GetDlgItemInt(23), 1u);
    combo->setCurrentIndex(2);
    DDX_CBIndex(&out, 23, index);
    EXPECT_EQ(index, 2);
    index = -1;
    DDX_CBIndex(&in, 23, index);
    EXPECT_EQ(combo->currentIndex(), -1);
}

TEST_F(DataExchange, ListsByIndexAndByText) {
    CString text("unchanged");
    DDX_LBString(&out, 24, text);
    EXPECT_STREQ(text, "") << "nothing is selected";
    int index = 2;
    DDX_LBIndex(&in, 24, index);
    EXPECT_EQ(dialog.GetDlgItemInt(24), 3u);
    text = "Y";
    DDX_LBString(&in, 24, text);
    DDX_LBIndex(&out, 24, index);
    EXPECT_EQ(index, 2) << "the case counts";
    text = "y";
    DDX_LBString(&in, 24, text);
    DDX_LBIndex(&out, 24, index);
    EXPECT_EQ(index, 1);
    DDX_LBString(&out, 24, text);
    EXPECT_STREQ(text, "y");
    index = -1;
    DDX_LBIndex(&in, 24, index);
    DDX_LBString(&out, 24, text);
    EXPECT_STREQ(text, "");
    EXPECT_THAT(dialog.Take(WM_COMMAND), testing::IsEmpty()) << "the program's doing";
}

TEST_F(DataExchange, WithoutExchangeDialogOrItemNothingHappens) {
    CDataExchange nowhere(nullptr, TRUE);
    CWnd without;
    CDataExchange empty(&without, TRUE);
    CDataExchange wrong(&top, FALSE);
    for (CDataExchange* exchange :
         {static_cast<CDataExchange*>(nullptr), &nowhere, &empty, &wrong, &in, &out}) {
        int number = 7;
        double real = 7;
        CString text("7");
        DDX_Text(exchange, 99, number), DDX_Text(exchange, 99, real), DDX_Text(exchange, 99, text);
        DDX_Check(exchange, 99, number), DDX_CBIndex(exchange, 99, number);
        DDX_LBIndex(exchange, 99, number), DDX_LBString(exchange, 99, text);
        EXPECT_EQ(number, 7);
        EXPECT_EQ(real, 7);
        EXPECT_STREQ(text, "7");
    }
    EXPECT_EQ(out.PrepareCtrl(20), dialog.GetDlgItem(20)->view);
    EXPECT_EQ(out.PrepareEditCtrl(99), nullptr);
    EXPECT_EQ(nowhere.PrepareCtrl(20), nullptr);
    CDialog unmade;
    EXPECT_FALSE(unmade.UpdateData(FALSE));
    EXPECT_FALSE(unmade.OnInitDialog());
}

TEST_F(DataExchange, BoundControlIsAskedBeforeTheDialog) {
    RecordingWindow line;
    DDX_Control(&out, 20, line);
    EXPECT_EQ(line.view, nullptr) << "only on the way in";
    for (int i = 0; i < 3; ++i) DDX_Control(&in, 20, line);
    EXPECT_EQ(dialog.GetDlgItem(20), &line);
    line.on[WM_COMMAND] = [](WPARAM, LPARAM) { return 1; };
    dialog.Take();
    PressKey(line.view, Qt::Key_A, {}, "a");
    EXPECT_THAT(line.Take(WM_COMMAND).size(), 3u);
    EXPECT_THAT(dialog.Take(WM_COMMAND), testing::IsEmpty());
    SendMessage(line.view, WM_USER, 0, 0); // puts the scratch window in front of the bindings
    EXPECT_EQ(in.PrepareCtrl(20), line.view) << "the item is still exchanged";
    DDX_Control(&in, 99, line);
    EXPECT_EQ(line.view, nullptr);
    EXPECT_NE(dialog.GetDlgItem(20), &line);
}

TEST_F(DataExchange, RangesOnlyWarn) {
    for (const int value : {0, 5, 10}) DDV_MinMaxInt(&out, value, 0, 10);
    DDV_MinMaxInt(&out, 11, 0, 10);
    DDV_MaxChars(&out, CString("long"), 2);
    EXPECT_THAT(log.TakeLog(), ElementsAre("Warning! DDV_MinMaxInt value out of range!! value=11, "
                                           "min=0, max=10"));
}

TEST_F(DataExchange, WalkWritesEachViewWithItsChildren) {
    walkNSViews(nullptr);
    EXPECT_THAT(log.TakeErrors(),
                ElementsAre("\n\nwalkNSViews: request to walk window but no NSWindow supplied!"
                            "\n\n"));
    walkNSViews(top.nsWindow);
    const std::vector<std::string> lines = log.TakeErrors();
    const auto address = [](const void* pointer) { return vm::Format("%p", pointer); };
    ASSERT_GT(lines.size(), 4u);
    EXPECT_EQ(lines[0], "\n\nWALK NSWindow=" + address(top.nsWindow) + "\n");
    EXPECT_EQ(lines[1],
              "NSView=" + address(top.view) + "  children= " + address(dialog.view) + " \n");
    EXPECT_THAT(lines[2], HasSubstr(address(dialog.GetDlgItem(24)->view)));
    EXPECT_EQ(lines.back(), "FINISHED\n\n");
}
