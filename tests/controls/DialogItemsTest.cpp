// Messages to the items of a dialog.
#include <vmcore/wnd/CWnd.h>

#include <cstring>

#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QTableView>

#include <gmock/gmock.h>

#include "ControlsFixture.h"
#include "controls/listBoxTable.h"
#include "support/MessageBoxRecorder.h"
#include "wnd/controlText.h"
#include "wnd/views.h"

using testing::ElementsAre;

namespace {

class DialogItemMessages : public testing::Test {
protected:
    DialogItemMessages() { m_window.Open(); }
    ~DialogItemMessages() override { m_window.DestroyWindow(); }

    template <class Control>
    Control* Add(int tag) {
        auto* control = new Control(m_window.view);
        vm::SetTagOf(control, tag);
        return control;
    }
    LRESULT Send(int id, UINT message, WPARAM wParam = 0, const char* text = nullptr) {
        return m_window.SendDlgItemMessage(id, message, wParam, reinterpret_cast<LPARAM>(text));
    }
    std::string Entry(int id, UINT message, WPARAM index) {
        char buffer[32] = "";
        const LRESULT length =
            m_window.SendDlgItemMessage(id, message, index, reinterpret_cast<LPARAM>(buffer));
        EXPECT_EQ(length, static_cast<LRESULT>(std::strlen(buffer)));
        return buffer;
    }

    LogCapture m_log;
    Watchdog m_watchdog;
    MessageBoxRecorder m_boxes;
    RecordingWnd m_window;
};

constexpr WPARAM kNone = static_cast<WPARAM>(-1);

} // namespace

TEST_F(DialogItemMessages, TextGoesInAndOut) {
    auto* label = Add<QLabel>(20);
    EXPECT_EQ(Send(20, WM_SETTEXT, 0, "one\r\ntwo"), 1);
    EXPECT_EQ(label->text(), "one\ntwo");
    char buffer[6] = ".....";
    EXPECT_EQ(m_window.SendDlgItemMessage(20, WM_GETTEXT, 4, reinterpret_cast<LPARAM>(buffer)), 8);
    EXPECT_STREQ(buffer, "one..");
    EXPECT_EQ(Send(99, WM_SETTEXT, 0, "x"), 0);
}

// The two groups differ in what comes back only, and in what becomes of the selection.
TEST_F(DialogItemMessages, ListsAndCombosKeepTheirEntries) {
    vm::SetTagOf(vm::MakeListBoxView(m_window.view), 20);
    Add<QComboBox>(21);
    for (const auto& [id, first] : {std::pair{20, UINT{LB_ADDSTRING}}, {21, UINT{CB_ADDSTRING}}}) {
        SCOPED_TRACE(id);
        const UINT offset = first - LB_ADDSTRING;
        const auto send = [&, item = id](UINT message, WPARAM wParam = 0,
                                         const char* text = nullptr) {
            return Send(item, message + offset, wParam, text);
        };
        const bool isList = first == LB_ADDSTRING;
        EXPECT_EQ(send(LB_ADDSTRING, 0, "Alpha"), 0);
        EXPECT_EQ(send(LB_GETCURSEL), -1) << "adding selects nothing";
        EXPECT_EQ(send(LB_ADDSTRING, 0, "Gamma"), 1);
        EXPECT_EQ(send(LB_INSERTSTRING, 1, "Beta"), 1);
        EXPECT_EQ(send(LB_ADDSTRING, 0, "albatross"), 3);
        EXPECT_EQ(send(LB_INSERTSTRING, 9, "x"), LB_ERR);
        EXPECT_EQ(m_log.TakeLog().size(), isList ? 1u : 0u);
        EXPECT_EQ(send(LB_GETCOUNT), 4);
        EXPECT_EQ(Entry(id, LB_GETTEXT + offset, 1), "Beta");
        EXPECT_EQ(send(LB_GETTEXT, 4), LB_ERR);
        EXPECT_EQ(send(LB_GETTEXTLEN, 3), 9);
        EXPECT_EQ(send(LB_FINDSTRING, kNone, "AL"), 0);
        EXPECT_EQ(send(LB_FINDSTRING, 0, "al"), 3);
        EXPECT_EQ(send(LB_FINDSTRING, 3, "al"), 0) << "on from the top";
        EXPECT_EQ(send(LB_FINDSTRING, kNone, "z"), LB_ERR);
        EXPECT_EQ(send(LB_SETCURSEL, 2), 2);
        EXPECT_EQ(send(LB_SELECTSTRING, kNone, "z"), LB_ERR);
        EXPECT_EQ(send(LB_GETCURSEL), 2);
        EXPECT_EQ(send(LB_SELECTSTRING, kNone, isList ? "Beta" : "be"), isList ? LB_ERR : 1);
        EXPECT_EQ(send(LB_GETCURSEL), 1);
        EXPECT_EQ(send(LB_DELETESTRING, 1), isList ? 1 : 3);
        EXPECT_EQ(send(LB_GETCURSEL), isList ? 1 : -1) << "a list's belongs to the row number";
        EXPECT_EQ(send(LB_DELETESTRING, 4), LB_ERR);
        EXPECT_EQ(send(LB_SETCURSEL, 1), 1);
        EXPECT_EQ(send(LB_SETCURSEL, kNone), LB_ERR);
        EXPECT_EQ(send(LB_GETCURSEL), -1);
        EXPECT_EQ(send(LB_RESETCONTENT), 0);
        EXPECT_EQ(send(LB_GETCOUNT), 0);
    }
    Add<QLabel>(22);
    EXPECT_EQ(Send(22, LB_GETCOUNT), LB_ERR) << "no list";
    EXPECT_THAT(m_window.commands, testing::IsEmpty());
}

TEST_F(DialogItemMessages, ButtonsAreCheckedAndClicked) {
    auto* box = Add<QCheckBox>(20);
    m_window.CheckDlgButton(20, 1);
    EXPECT_TRUE(box->isChecked());
    EXPECT_EQ(m_window.IsDlgButtonChecked(20), 1u);
    EXPECT_EQ(Send(20, BM_SETCHECK, 0), 0);
    EXPECT_EQ(Send(20, BM_GETCHECK), 0);
    box->setTristate(true);
    m_window.CheckDlgButton(20, 2);
    EXPECT_EQ(box->checkState(), Qt::PartiallyChecked);
    EXPECT_EQ(m_window.IsDlgButtonChecked(20), 2u);
    EXPECT_EQ(m_window.IsDlgButtonChecked(99), 0u);

    auto* one = Add<QRadioButton>(21);
    auto* two = Add<QRadioButton>(22);
    QButtonGroup group;
    for (const bool grouped : {false, true}) {
        if (grouped) group.addButton(one), group.addButton(two);
        m_window.CheckDlgButton(21, 1);
        m_window.CheckDlgButton(21, 0);
        EXPECT_FALSE(one->isChecked()) << "none may be checked";
        m_window.CheckDlgButton(21, 1);
        m_window.CheckDlgButton(22, 1);
        EXPECT_FALSE(one->isChecked());
    }
    int clicks = 0;
    QObject::connect(Add<QPushButton>(23), &QPushButton::clicked, [&] { ++clicks; });
    Send(23, BM_CLICK);
    EXPECT_EQ(clicks, 1);
    Add<QLabel>(24);
    EXPECT_EQ(Send(24, BM_GETCHECK), 0);
}

TEST_F(DialogItemMessages, OthersAreReportedByTheItemAndForwarded) {
    RecordingWnd item;
    item.Create("", "", 0, RECT{0, 0, 9, 9}, &m_window, 1234);
    item.messages.clear();
    Send(1234, WM_USER + 5);
    Send(1234, EM_LIMITTEXT, 10);
    EXPECT_THAT(item.messages, ElementsAre(WM_USER + 5, EM_LIMITTEXT));
    EXPECT_THAT(
        m_boxes.Take(),
        ElementsAre(ShownBox{"Wnd::SendDlgItemMessage does NOTHING for message=1234!", "Msg", 1},
                    ShownBox{"Need a real CEdit for EM_LIMITTEXT to work", "Error", 1}));
    EXPECT_EQ(Send(77, WM_USER), 0);
    EXPECT_EQ(CWnd().SendDlgItemMessage(1234, WM_USER), 0);
}
