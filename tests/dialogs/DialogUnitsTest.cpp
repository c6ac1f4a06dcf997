// Files drawn in dialog units, and the properties that stand for styles of such dialogs.
#include "DialogsFixture.h"

#include <QtTest/QTest>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QLineEdit>

#include "dialogs/dialogUnits.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class DialogUnits : public DialogsFixture {
protected:
    DialogUnits() { top.Create("", "Top", WS_VISIBLE, RECT{80, 90, 580, 490}, nullptr, 0); }
    ~DialogUnits() override { top.DestroyWindow(); }

    /// A file for a font of 10 by 30 pixels.
    void Load(const std::string& content) {
        Write(2, UiDialog("<property name=\"dialogBase\" stdset=\"0\"><size><width>10</width>"
                          "<height>30</height></size></property>" +
                              content,
                          "QWidget"));
        ASSERT_TRUE(dialog.Create(2, &top));
    }

    RecordingWindow top;
    TestDialog dialog;
};

} // namespace

TEST_F(DialogUnits, EverythingDrawnIsScaled) {
    Load(UiControl("QWidget", 10,
                   UiRect("geometry", 10, 30, 100, 90) + UiSize("minimumSize", 100, 60) +
                       UiSize("maximumSize", 400, 16777215) +
                       UiControl("QLabel", 11, UiRect("geometry", 20, 30, 33, 45))) +
         UiControl("QFrame", 12, UiRect("geometry", 53, 75, 7, 15)));
    const QSize base = vm::DialogBaseOf(dialog.view->font());
    const auto x = [&](int pixels) { return (pixels * base.width() + 5) / 10; };
    const auto y = [&](int pixels) { return (pixels * base.height() + 15) / 30; };
    EXPECT_EQ(dialog.view->size(), QSize(x(300), y(200)));
    EXPECT_EQ(Item<QWidget>(dialog, 10)->minimumSize(), QSize(x(100), y(60)));
    EXPECT_EQ(Item<QWidget>(dialog, 10)->maximumSize(), QSize(x(400), QWIDGETSIZE_MAX));
    const QRect inner = Item<QWidget>(dialog, 11)->geometry();
    EXPECT_EQ(inner.topLeft(), QPoint(x(20), y(30)));
    const QRect beside = Item<QWidget>(dialog, 12)->geometry();
    EXPECT_EQ(inner.right() + 1, beside.left()) << "they touch in the file";
    EXPECT_EQ(inner.bottom() + 1, beside.top());
    RECT units{-4, -8, 2, 4};
    dialog.MapDialogRect(&units);
    EXPECT_THAT(units, IsRect(-base.width(), -base.height(), (base.width() + 1) / 2,
                              (base.height() + 1) / 2));
    dialog.MapDialogRect(nullptr);
    TestDialog unseen;
    RECT same{1, 2, 3, 4};
    unseen.MapDialogRect(&same);
    EXPECT_THAT(same, IsRect(1, 2, 3, 4));
}

TEST_F(DialogUnits, OtherFilesStayInPixels) {
    ASSERT_TRUE(dialog.Create(1, &top));
    EXPECT_EQ(Item<QWidget>(dialog, 11)->geometry(), QRect(10, 10, 200, 24));
    RECT units{0, 0, 4, 8};
    dialog.MapDialogRect(&units);
    const QSize base = vm::DialogBaseOf(dialog.view->font());
    EXPECT_THAT(units, IsRect(0, 0, base.width(), base.height()));
}

TEST_F(DialogUnits, WrongPropertiesAreLogged) {
    Load(UiControl("QLineEdit", 11, UiDynamic("typing", "roman")) +
         UiControl("QLabel", 12, UiDynamic("typing", "upper")) +
         UiControl("CSpinButton", 13, UiDynamic("buddy", "nobody")) +
         UiControl("QDateEdit", 14, UiDynamic("dateFormat", "iso")));
    EXPECT_THAT(log.TakeLog(),
                ElementsAre(HasSubstr("item11: unknown typing rule, or no text: roman"),
                            HasSubstr("item12: unknown typing rule, or no text: upper"),
                            HasSubstr("item14: unknown date format: iso"),
                            HasSubstr("item13: no control has the name nobody")));
}

TEST_F(DialogUnits, DatesBeginWithNowAndAreSetAsText) {
    const struct {
        const char *type, *format, *shown;
    } rows[] = {
        {"QDateEdit", "century", "3/9/2021"},
        {"QDateEdit", "long", "Tuesday, March 9, 2021"},
        {"QTimeEdit", "seconds", "4:05:06 PM"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.format);
        if (dialog.view) dialog.DestroyWindow();
        const QDate before = QDate::currentDate();
        Load("<property name=\"locale\"><locale language=\"English\" country=\"UnitedStates\"/>"
             "</property>" +
             UiControl(row.type, 11,
                       UiBool("startsNow", true) + UiDynamic("dateFormat", row.format)));
        auto* field = Item<QDateTimeEdit>(dialog, 11);
        EXPECT_TRUE(field->date() == before || field->date() == QDate::currentDate());
        CWnd& window = *dialog.GetDlgItem(11);
        window.SetWindowText(row.shown);
        char text[40];
        window.GetWindowText(text, 40);
        EXPECT_STREQ(text, row.shown);
        window.SetWindowText("no date");
        window.GetWindowText(text, 40);
        EXPECT_STREQ(text, row.shown) << "it stays";
    }
    EXPECT_THAT(log.TakeLog(), testing::IsEmpty());
}

TEST_F(DialogUnits, TypedLettersChangeTheirCase) {
    Load(UiControl("QLineEdit", 11, UiDynamic("typing", "upper")) +
         UiControl("QPlainTextEdit", 12, UiDynamic("typing", "lower")));
    for (const int id : {11, 12}) QTest::keyClicks(Item<QWidget>(dialog, id), "aB1");
    char text[8];
    dialog.GetDlgItem(11)->GetWindowText(text, 8);
    EXPECT_STREQ(text, "AB1");
    dialog.GetDlgItem(12)->GetWindowText(text, 8);
    EXPECT_STREQ(text, "ab1");
}
