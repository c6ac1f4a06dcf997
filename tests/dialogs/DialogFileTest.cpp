// What a dialog makes of its file: size, title, keys, focus, delegates, actions, standard buttons.
#include "DialogsFixture.h"

#include <QtGui/QShortcut>
#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

#include <vmcore/controls/CListCtrl.h>
#include <vmcore/controls/CSpinButtonCtrl.h>

#include "controls/LCTableViewDelegate.h"
#include "wnd/CWndNSView.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class DialogFile : public DialogsFixture {
protected:
    /// Runs the dialog DLG_2 with this content until `look` has looked at it.
    void Look(const std::string& file, const std::function<void(TestDialog&)>& look) {
        Write(2, file);
        std::filesystem::last_write_time(bundle.PathOf("DLG_2"), m_written);
        m_written += std::chrono::seconds(1);
        TestDialog dialog(2);
        Soon([&] {
            look(dialog);
            dialog.EndDialog(0);
        });
        dialog.DoModal();
    }

private:
    std::filesystem::file_time_type m_written = std::filesystem::file_time_type::clock::now();
};

const char kLayout[] = "<layout class=\"QVBoxLayout\"><item>"
                       "<widget class=\"QPlainTextEdit\" name=\"edit\"/></item></layout>";

} // namespace

TEST_F(DialogFile, SizesItsWindowAndSaysWhetherItMayChange) {
    const QSize any(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    const struct {
        const char* what;
        std::string content;
        QSize size;
        QSize most;
    } rows[] = {
        {"fixed", UiControl("QLineEdit", 11), {300, 200}, {300, 200}},
        {"layout", kLayout, {300, 200}, any},
        {"layout and limit", UiSize("maximumSize", 400, 220) + kLayout, {300, 200}, {400, 220}},
        {"limits alone", UiSize("minimumSize", 350, 100), {350, 200}, any},
        {"minimum is maximum",
         UiSize("minimumSize", 310, 210) + UiSize("maximumSize", 310, 210) + kLayout,
         {310, 210},
         {310, 210}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Look(UiDialog(row.content), [&](TestDialog& dialog) {
            EXPECT_EQ(dialog.view->size(), row.size);
            EXPECT_EQ(dialog.nsWindow->maximumSize(), row.most);
            RECT client;
            dialog.GetClientRect(&client);
            EXPECT_THAT(client, IsRect(0, 0, row.size.width(), row.size.height()));
        });
    }
}

TEST_F(DialogFile, CentresOverTheWindowInUse) {
    RecordingWindow top;
    top.Create("", "Top", WS_VISIBLE | WS_OVERLAPPEDWINDOW, RECT{80, 90, 580, 490}, nullptr, 0);
    top.nsWindow->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(top.nsWindow));
    Look(PlainDialog(), [&](TestDialog& dialog) {
        const QPoint apart = dialog.nsWindow->Frame().center() - top.nsWindow->Frame().center();
        EXPECT_LE(apart.manhattanLength(), 12) << apart.x() << ", " << apart.y();
        EXPECT_EQ(dialog.nsWindow->windowHandle()->transientParent(), top.nsWindow->windowHandle());
        EXPECT_EQ(top.GetDlgItem(11)->view, nullptr) << "no part of the other window";
    });
    top.DestroyWindow();
}

TEST_F(DialogFile, ReturnAndEscapeGoWhereDialogsSendThem) {
    const std::string other = UiControl("QPushButton", 20, UiBool("default", true));
    const std::string disabled =
        UiControl("QPushButton", 20, UiBool("default", true) + UiBool("enabled", false));
    const struct {
        const char* what;
        std::string extra;
        int focus; // an item
        Qt::Key key;
        std::vector<int> commands; // low words, repeated ones once
    } rows[] = {
        {"tag 1 is the default", "", 11, Qt::Key_Return, {11, 1}},
        {"also with the keypad's key", "", 12, Qt::Key_Enter, {1}},
        {"a default of the file", other, 12, Qt::Key_Return, {20}},
        {"a disabled default", disabled, 12, Qt::Key_Return, {}},
        {"the focused button itself", other, 2, Qt::Key_Return, {2}},
        {"lines of a text", UiControl("QPlainTextEdit", 30), 30, Qt::Key_Return, {30}},
        {"Escape", "", 11, Qt::Key_Escape, {2}},
        {"Escape in a text", UiControl("QPlainTextEdit", 30), 30, Qt::Key_Escape, {2}},
        {"other keys", "", 12, Qt::Key_F5, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        std::string file = PlainDialog();
        file.insert(file.rfind("</widget></ui>"), row.extra);
        Look(file, [&](TestDialog& dialog) {
            std::vector<int> commands;
            dialog.onOK = [&] { commands.push_back(1); };
            dialog.onCancel = [&] { commands.push_back(2); };
            dialog.on[WM_COMMAND] = [&](WPARAM wParam, LPARAM) {
                if (commands.empty() || commands.back() != LOWORD(wParam))
                    commands.push_back(LOWORD(wParam));
                return 1;
            };
            auto* focus = Item<QWidget>(dialog, row.focus);
            focus->setFocus();
            QTest::keyClick(focus, row.key);
            EXPECT_EQ(commands, row.commands);
        });
    }
}

TEST_F(DialogFile, DisabledCancelAndRefusedCloseKeepItOpen) {
    Look(PlainDialog(), [&](TestDialog& dialog) {
        int cancels = 0;
        dialog.onCancel = [&] { ++cancels; };
        auto* cancel = Item<QWidget>(dialog, IDCANCEL);
        cancel->setEnabled(false);
        EXPECT_FALSE(dialog.nsWindow->close());
        cancel->setEnabled(true);
        dialog.on[WM_QUERYCLOSE] = [](WPARAM, LPARAM) { return 1; };
        EXPECT_FALSE(dialog.nsWindow->close());
        EXPECT_EQ(cancels, 0);
        dialog.on.clear();
        EXPECT_FALSE(dialog.nsWindow->close());
        EXPECT_EQ(cancels, 1);
        EXPECT_TRUE(dialog.nsWindow->isVisible()) << "OnCancel of the host decides";
    });
}

TEST_F(DialogFile, FirstControlHasTheFocusUnlessTheHostChoseOne) {
    Look(UiDialog(UiControl("QLineEdit", 11, UiText("text", "whole"))), [&](TestDialog& dialog) {
        EXPECT_EQ(Item<QLineEdit>(dialog, 11)->selectedText(), "whole");
    });
    Look(PlainDialog(), [&](TestDialog& dialog) {
        EXPECT_EQ(dialog.nsWindow->focusWidget(), Item<QLineEdit>(dialog, 11));
        EXPECT_TRUE(Item<QPushButton>(dialog, 1)->isDefault());
    });
    std::string file = PlainDialog();
    file.insert(file.rfind("</ui>"), "<tabstops><tabstop>item12</tabstop>"
                                     "<tabstop>item11</tabstop></tabstops>");
    Look(file, [&](TestDialog& dialog) {
        EXPECT_EQ(dialog.nsWindow->focusWidget(), Item<QWidget>(dialog, 12));
        QTest::keyClick(dialog.nsWindow->focusWidget(), Qt::Key_Tab);
        EXPECT_NE(dialog.nsWindow->focusWidget(), Item<QWidget>(dialog, 12));
    });
    TestDialog dialog;
    dialog.onInit = [&] { dialog.GetDlgItem(12)->SetFocus(); };
    Soon([&] {
        EXPECT_EQ(dialog.nsWindow->focusWidget(), Item<QWidget>(dialog, 12));
        dialog.EndDialog(0);
    });
    dialog.DoModal();
}

TEST_F(DialogFile, TabLeavesTextsUnlessTheFileSaysOtherwise) {
    const std::string file = UiDialog(UiControl("QPlainTextEdit", 11) +
                                      UiControl("QTextEdit", 12, UiBool("tabChangesFocus", false)));
    Look(file, [&](TestDialog& dialog) {
        QTest::keyClick(Item<QWidget>(dialog, 11), Qt::Key_Tab);
        EXPECT_EQ(dialog.nsWindow->focusWidget(), Item<QWidget>(dialog, 12));
        QTest::keyClick(Item<QWidget>(dialog, 12), Qt::Key_Tab);
        EXPECT_EQ(dialog.nsWindow->focusWidget(), Item<QWidget>(dialog, 12));
    });
}

TEST_F(DialogFile, ButtonBoxHasTheUsualNumbers) {
    const std::string buttons =
        "<property name=\"standardButtons\"><set>QDialogButtonBox::Cancel|QDialogButtonBox::Ok|"
        "QDialogButtonBox::Ignore</set></property>";
    std::string file = UiDialog(UiControl("QDialogButtonBox", 0, buttons));
    // As Designer connects them: no word about it in the log.
    file.insert(file.rfind("</ui>"),
                "<connections><connection><sender>item0</sender><signal>accepted()</signal>"
                "<receiver>Dialog</receiver><slot>accept()</slot></connection></connections>");
    Look(file, [&](TestDialog& dialog) {
        const auto* box = dialog.view->findChild<QDialogButtonBox*>();
        EXPECT_EQ(dialog.GetDlgItem(IDOK)->view, box->button(QDialogButtonBox::Ok));
        EXPECT_EQ(dialog.GetDlgItem(IDIGNORE)->view, box->button(QDialogButtonBox::Ignore));
        int cancels = 0;
        dialog.onCancel = [&] { ++cancels; };
        ClickItem(dialog, IDCANCEL);
        EXPECT_EQ(cancels, 1);
    });
}

TEST_F(DialogFile, DelegatesAndActionsOfItsPropertiesOrAComplaint) {
    const std::string content =
        UiControl("QTableView", 20, UiDynamic("delegate", "LCTableViewDelegate")) +
        UiControl("QListWidget", 21, UiDynamic("delegate", "LBTableViewDelegate")) +
        UiControl("QListWidget", 22, UiDynamic("delegate", "LCTableViewDelegate")) +
        UiControl("QTableView", 23, UiDynamic("delegate", "Mine")) +
        UiControl("QTreeWidget", 26, UiDynamic("delegate", "LBTableViewDelegate")) +
        UiControl("QLineEdit", 24, UiDynamic("action", "onFire")) +
        UiControl("QRadioButton", 25, UiDynamic("action", "onEdit"));
    const std::string file = "interface file " + bundle.PathOf("DLG_2") + ": ";
    Look(UiDialog(content), [&](TestDialog& dialog) {
        EXPECT_TRUE(LCTableViewDelegate::Of(Item<QTableView>(dialog, 20)));
        EXPECT_THAT(log.TakeLog(),
                    ElementsAre(file + "item22: only a QTableView can have the delegate "
                                       "LCTableViewDelegate",
                                file + "item23: unknown delegate Mine",
                                file + "item26: only a list or a QTableView can have the delegate "
                                       "LBTableViewDelegate",
                                file + "item24: unknown action "
                                       "onFire"));
        ClickItem(dialog, 25);
        EXPECT_THAT(boxes.Take(), ElementsAre(ShownBox{"onEdit called by a non-NSTextField object",
                                                       "Internal Error", 1}));
    });
}

TEST_F(DialogFile, ListOfAFileIsThatOfTheHost) {
    CListCtrl list;
    TestDialog dialog(2);
    Write(2, UiDialog(UiControl("QTableView", 20)));
    dialog.exchange = [&](CDataExchange* pDX) { DDX_Control(pDX, 20, list); };
    int notified = 0;
    dialog.on[WM_NOTIFY] = [&](WPARAM id, LPARAM) { return notified += id == 20, 1; };
    Soon([&] {
        EXPECT_EQ(list.InsertColumn(0, "Name", 0, 100), 0);
        EXPECT_EQ(list.InsertItem(0, "one"), 0);
        ClickRow(list.tableView, 0);
        EXPECT_EQ(notified, 1);
        EXPECT_THAT(dialog.Take(WM_COMMAND), IsEmpty()) << "the list reports itself";
        dialog.EndDialog(0);
    });
    dialog.DoModal();
}

TEST_F(DialogFile, DrawnControlGetsItsMessages) {
    RecordingWindow drawn;
    TestDialog dialog(2);
    Write(2, UiDialog(UiControl("CWndView", 20, UiRect("geometry", 10, 10, 50, 40))));
    dialog.exchange = [&](CDataExchange* pDX) { DDX_Control(pDX, 20, drawn); };
    Soon([&] {
        EXPECT_TRUE(drawn.isCustomNSView());
        EXPECT_EQ(drawn.GetDlgCtrlID(), 20u);
        drawn.Take();
        QTest::mouseClick(drawn.view, Qt::LeftButton, {}, QPoint(5, 6));
        EXPECT_THAT(drawn.Take(WM_LBUTTONDOWN),
                    ElementsAre(Message{WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 6)}));
        QTest::keyClick(drawn.view, Qt::Key_Escape); // the click gave it the focus
    });
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_FALSE(drawn.Take(WM_KEYDOWN).empty());
}

TEST_F(DialogFile, ArrowsCountForTheirObject) {
    const std::string wraps = "<property name=\"wrap\" stdset=\"0\"><bool>true</bool></property>";
    const std::string place = UiRect("geometry", 10, 10, 20, 40);
    const std::string field = UiControl("QLineEdit", 21);
    Look(UiDialog(UiControl("CSpinButton", 20, wraps + place) + field), [&](TestDialog& dialog) {
        CSpinButtonCtrl arrows;
        arrows.SubclassWindow(dialog.GetDlgItem(20)->view);
        arrows.SetBuddy(dialog.GetDlgItem(21));
        arrows.SetRange(0, 9);
        QTest::mouseClick(arrows.view, Qt::LeftButton, {}, QPoint(10, 30));
        EXPECT_EQ(dialog.GetDlgItemInt(21), 9u);
        EXPECT_THAT(dialog.Take(WM_VSCROLL),
                    ElementsAre(Message{WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 9),
                                        AsParameter(arrows.view)}));
    });
}

TEST_F(DialogFile, WarningsOfTheLoaderAreLogged) {
    Look(UiDialog(UiControl("NoSuchWidget", 20)), [&](TestDialog& dialog) {
        EXPECT_EQ(dialog.GetDlgItem(20)->view, nullptr);
        const std::vector<std::string> lines = log.TakeLog();
        ASSERT_FALSE(lines.empty());
        EXPECT_THAT(lines.front(), HasSubstr("interface file " + bundle.PathOf("DLG_2") + ": "));
        EXPECT_THAT(lines.front(), HasSubstr("NoSuchWidget"));
    });
}
