#include <vmcore/controls/CToolTipCtrl.h>

#include <QtGui/QHelpEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

#include <vmcore/controls/CButton.h>

#include "../wnd/RecordingWindow.h"

namespace {

class ToolTipCtrl : public WindowFixture {
protected:
    ToolTipCtrl() {
        EXPECT_TRUE(tips.Create(&top));
        button.Create("", WS_VISIBLE, RECT{50, 0, 90, 20}, &child, 9);
    }
    ~ToolTipCtrl() override { QToolTip::hideText(); }

    static QString TextAt(QWidget* view, QPoint place = {5, 5}) {
        QToolTip::hideText();
        QHelpEvent event(QEvent::ToolTip, place, view->mapToGlobal(place));
        const bool isShown = QApplication::sendEvent(view, &event) && event.isAccepted();
        return isShown ? QToolTip::text() : QString();
    }

    CToolTipCtrl tips;
    CButton button;
};

} // namespace

TEST_F(ToolTipCtrl, EachToolHasItsText) {
    const CRect left(0, 0, 20, 20);
    const CRect right(30, 0, 40, 20);
    EXPECT_TRUE(tips.AddTool(&button, "the button"));
    EXPECT_TRUE(tips.AddTool(&child, "left \x8E", &left, 1));
    EXPECT_TRUE(tips.AddTool(&child, "right", &right, 2));
    EXPECT_EQ(TextAt(button.view), "the button");
    EXPECT_EQ(TextAt(child.view), QString::fromUtf8("left \xC3\xA9"));
    EXPECT_EQ(TextAt(child.view, {35, 5}), "right");
    EXPECT_EQ(TextAt(child.view, {25, 5}), "");
    EXPECT_EQ(tips.GetToolCount(), 3);

    tips.UpdateTipText("another", &child, 1);
    EXPECT_EQ(TextAt(child.view), "another");
    CString text;
    tips.GetText(text, &child, 2);
    EXPECT_STREQ(text, "right");
    tips.Activate(FALSE);
    EXPECT_EQ(TextAt(button.view), "");
    tips.Activate(TRUE);
    EXPECT_TRUE(tips.AddTool(&child, "instead", &left, 1));
    EXPECT_EQ(TextAt(child.view), "instead");
    tips.DelTool(&child, 1);
    EXPECT_EQ(TextAt(child.view), "");
    EXPECT_EQ(tips.GetToolCount(), 2);
}

TEST_F(ToolTipCtrl, WidthsAndDelaysAreKept) {
    EXPECT_EQ(tips.SetMaxTipWidth(60), -1);
    tips.AddTool(&button, "a text that has to be broken");
    EXPECT_GT(TextAt(button.view).count('\n'), 1);
    tips.SetDelayTime(TTDT_AUTOPOP, 1234);
    EXPECT_EQ(tips.GetDelayTime(TTDT_AUTOPOP), 1234);
    EXPECT_EQ(tips.GetDelayTime(7), 0);
}

TEST_F(ToolTipCtrl, TextsGoWithTheirWindowOrTheirOwner) {
    tips.AddTool(&button, "the button");
    tips.AddTool(&child, "the child");
    button.DestroyWindow();
    RunFor(std::chrono::milliseconds(1));
    EXPECT_EQ(tips.GetToolCount(), 1);
    tips.DestroyWindow();
    RunFor(std::chrono::milliseconds(1));
    EXPECT_EQ(TextAt(child.view), "");
    EXPECT_FALSE(tips.AddTool(&child, "x"));
}
