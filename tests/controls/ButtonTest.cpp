// Buttons of every kind, and labels: both show a text or a picture.
#include <vmcore/controls/CButton.h>

#include <QtTest/QTest>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <vmcore/controls/CStatic.h>
#include <vmcore/gdi/CBitmap.h>

#include "../wnd/RecordingWindow.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Button : public WindowFixture {
protected:
    QAbstractButton* Make(CButton& button, DWORD style, int y = 5) {
        EXPECT_TRUE(button.Create("&Text", WS_VISIBLE | style, RECT{5, y, 95, y + 20}, &child, 40));
        return qobject_cast<QAbstractButton*>(button.view);
    }
    static void Click(QWidget* button) {
        QTest::mouseClick(button, Qt::LeftButton, {}, {9, button->height() / 2});
    }
};

} // namespace

TEST_F(Button, KindsComeFromTheStyle) {
    struct Row {
        DWORD style;
        std::vector<int> checks; ///< after each click
    };
    const Row rows[] = {{BS_PUSHBUTTON, {0, 0}},
                        {BS_DEFPUSHBUTTON, {0, 0}},
                        {BS_CHECKBOX, {0, 0}},
                        {BS_AUTOCHECKBOX, {1, 0, 1}},
                        {BS_RADIOBUTTON, {0}},
                        {BS_AUTORADIOBUTTON, {1, 1}},
                        {BS_3STATE, {0}},
                        {BS_AUTO3STATE, {2, 1, 0}},
                        {BS_AUTOCHECKBOX | BS_PUSHLIKE, {1, 0}},
                        {BS_RADIOBUTTON | BS_PUSHLIKE, {0}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.style);
        CButton made;
        QAbstractButton* const native = Make(made, row.style);
        CButton button;
        button.SubclassWindow(native);
        EXPECT_EQ(button.GetButtonStyle(), row.style);
        child.Take();
        for (const int check : row.checks) {
            Click(native);
            EXPECT_EQ(button.GetCheck(), check);
        }
        EXPECT_EQ(child.Take(WM_COMMAND).size(), row.checks.size());
        made.DestroyWindow();
        button.UnsubclassWindow();
    }
}

TEST_F(Button, RadioButtonsAreGroupedByTheirFirst) {
    CButton buttons[4];
    for (int i = 0; i < 4; ++i)
        Make(buttons[i], BS_AUTORADIOBUTTON | (i % 2 ? DWORD{0} : WS_GROUP), 5 + 22 * i);
    buttons[1].SetCheck(1);
    buttons[2].SetCheck(1);
    EXPECT_EQ(buttons[1].GetCheck(), 1) << "of the other group";
    buttons[0].SetCheck(1);
    EXPECT_EQ(buttons[1].GetCheck(), 0);
    buttons[0].SetCheck(0);
    EXPECT_EQ(buttons[0].GetCheck(), 0) << "none may be checked";
    EXPECT_THAT(child.Take(WM_COMMAND), IsEmpty());
}

TEST_F(Button, TheTabKeyLeadsToTheRadioButtonThatIsOn) {
    CButton buttons[3];
    const auto stops = [&] {
        std::vector<bool> found;
        for (const CButton& button : buttons)
            found.push_back(button.view && button.view->focusPolicy() & Qt::TabFocus);
        return found;
    };
    Make(buttons[0], BS_AUTORADIOBUTTON | WS_GROUP);
    Make(buttons[1], BS_AUTORADIOBUTTON, 30);
    buttons[1].SetCheck(1);
    Make(buttons[2], BS_AUTORADIOBUTTON, 55);
    EXPECT_THAT(stops(), ElementsAre(false, true, false));
    buttons[2].SetCheck(1);
    EXPECT_THAT(stops(), ElementsAre(false, false, true));
}

TEST_F(Button, StateAndStyleCanBeChanged) {
    CButton push;
    auto* native = qobject_cast<QPushButton*>(Make(push, BS_PUSHBUTTON));
    push.SetState(TRUE);
    EXPECT_EQ(push.GetState(), BST_PUSHED);
    push.SetState(FALSE);
    push.SetButtonStyle(BS_DEFPUSHBUTTON);
    EXPECT_TRUE(native->isDefault());
    CButton box;
    QAbstractButton* const check = Make(box, BS_AUTOCHECKBOX, 30);
    box.SetButtonStyle(BS_3STATE);
    EXPECT_EQ(box.GetButtonStyle(), BS_3STATE);
    box.SetCheck(BST_INDETERMINATE);
    Click(check);
    EXPECT_EQ(box.GetState(), BST_INDETERMINATE);
    child.Take();
    box.SendMessage(BM_SETCHECK, 0);
    EXPECT_EQ(box.SendMessage(BM_GETCHECK), 0);
    box.SendMessage(BM_CLICK);
    EXPECT_THAT(child.Take(WM_COMMAND),
                ElementsAre(Message{WM_COMMAND, MAKEWPARAM(40, BN_CLICKED), AsParameter(check)}));
}

TEST_F(Button, AFrameIsBehindWhatItHolds) {
    CButton inside;
    QAbstractButton* const native = Make(inside, BS_PUSHBUTTON, 20);
    CButton frame;
    frame.Create("12", WS_VISIBLE | BS_GROUPBOX, RECT{0, 0, 100, 60}, &child, 41);
    EXPECT_EQ(child.view->childAt(20, 30), native);
    EXPECT_EQ(frame.GetButtonStyle(), BS_GROUPBOX);
    frame.EnableWindow(FALSE);
    EXPECT_FALSE(frame.view->isEnabled());
    frame.SetCheck(1);
    EXPECT_EQ(frame.GetCheck(), 0) << "its title is no number";
    QGroupBox checkable(child.view);
    checkable.setCheckable(true);
    CButton bound;
    bound.SubclassWindow(&checkable);
    EXPECT_EQ(bound.GetCheck(), 1);
}

TEST_F(Button, PicturesAreShownAsTheyAre) {
    CBitmap bitmap;
    bitmap.CreateCompatibleBitmap(nullptr, 12, 8);
    CButton button;
    QAbstractButton* const native = Make(button, BS_PUSHBUTTON);
    CStatic label;
    label.Create("text", WS_VISIBLE | SS_BITMAP, RECT{0, 30, 50, 60}, &child);
    EXPECT_EQ(button.SetBitmap(bitmap), nullptr);
    EXPECT_EQ(label.SetBitmap(bitmap), nullptr);
    EXPECT_EQ(native->iconSize(), QSize(12, 8));
    EXPECT_EQ(qobject_cast<QLabel*>(label.view)->pixmap().size(), QSize(12, 8));
    EXPECT_EQ(button.GetBitmap(), HBITMAP(bitmap));
    EXPECT_EQ(label.SetBitmap(nullptr), HBITMAP(bitmap));
    EXPECT_EQ(label.GetBitmap(), nullptr);
    EXPECT_EQ(button.SetBitmap(nullptr), HBITMAP(bitmap));
    EXPECT_TRUE(native->icon().isNull());
}
