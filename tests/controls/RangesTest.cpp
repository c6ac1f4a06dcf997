// Controls that stand for a number in a range: sliders, scroll bars, progress bars.
#include <QtTest/QTest>
#include <QtWidgets/QDial>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>

#include <vmcore/controls/CProgressCtrl.h>
#include <vmcore/controls/CScrollBar.h>
#include <vmcore/controls/CSliderCtrl.h>

#include "../wnd/RecordingWindow.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Ranges : public WindowFixture {
protected:
    static constexpr RECT kWide{5, 5, 95, 25};
    static constexpr RECT kTall{5, 5, 25, 95};

    template <class Control>
    QWidget* Make(DWORD style, const RECT& rect, Control& object) {
        Control made;
        EXPECT_TRUE(made.Create(WS_VISIBLE | style, rect, &child, 30));
        QWidget* const native = made.view;
        object.SubclassWindow(native);
        child.Take();
        return native;
    }
};

} // namespace

TEST_F(Ranges, SliderPositionsAreThoseOfItsMessages) {
    CSliderCtrl slider;
    auto* native = qobject_cast<QSlider*>(Make(TBS_VERT, kTall, slider));
    slider.SetRange(10, 60);
    EXPECT_EQ(slider.GetRangeMin(), 10);
    slider.SetPos(0);
    EXPECT_EQ(native->value(), 60) << "the top end";
    slider.SetPos(12);
    EXPECT_THAT(child.Take(WM_VSCROLL), IsEmpty());
    QTest::keyClick(native, Qt::Key_Down);
    EXPECT_EQ(slider.GetPos(), 13);
    EXPECT_THAT(
        child.Take(WM_VSCROLL),
        ElementsAre(Message{WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 13), AsParameter(native)}));
    EXPECT_EQ(slider.SetLineSize(4), 1);
    EXPECT_EQ(slider.SetPageSize(20), 10);
    QTest::keyClick(native, Qt::Key_Up);
    EXPECT_EQ(slider.GetPos(), 9);
    QTest::keyClick(native, Qt::Key_PageDown);
    EXPECT_EQ(slider.GetPos(), 29);
    slider.SetRange(0, 127);
    EXPECT_EQ(slider.GetPos(), 29);

    CSliderCtrl across;
    native = qobject_cast<QSlider*>(Make(TBS_HORZ, kWide, across));
    across.SetRangeMax(20);
    across.SetRangeMin(5);
    across.SetPos(99);
    EXPECT_EQ(across.GetPos(), 20);
    EXPECT_EQ(native->value(), 20);
    QDial dial(child.view);
    across.SubclassWindow(&dial);
    across.SetPos(7);
    EXPECT_EQ(dial.value(), 7);
}

TEST_F(Ranges, TicksMeetWhereTheyAreAskedFor) {
    CSliderCtrl slider;
    auto* native = qobject_cast<QSlider*>(Make(TBS_BOTH, kWide, slider));
    slider.SetRange(100, 200);
    EXPECT_EQ(slider.GetNumTics(), 2u);
    EXPECT_TRUE(slider.SetTic(150));
    EXPECT_EQ(native->tickPosition(), QSlider::TicksBothSides);
    EXPECT_EQ(native->tickInterval(), 50);
    EXPECT_TRUE(slider.SetTic(120));
    EXPECT_EQ(native->tickInterval(), 10);
    EXPECT_FALSE(slider.SetTic(201));
    slider.SetTicFreq(30);
    EXPECT_EQ(slider.GetNumTics(), 5u) << "100, 130, 160, 190 and the end";
    slider.ClearTics();
    EXPECT_EQ(native->tickPosition(), QSlider::NoTicks);
}

TEST_F(Ranges, ScrollBarsHaveARangeOfTheirOwn) {
    CScrollBar bar;
    auto* native = qobject_cast<QScrollBar*>(Make(SBS_VERT, kTall, bar));
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 999, 100, 950, 0};
    EXPECT_TRUE(bar.SetScrollInfo(&info));
    EXPECT_EQ(bar.GetScrollPos(), 900) << "the page reaches to the end";
    EXPECT_EQ(bar.GetScrollLimit(), 900);
    SCROLLINFO read{};
    EXPECT_TRUE(bar.GetScrollInfo(&read));
    EXPECT_EQ(read.nMax, 999);
    EXPECT_EQ(read.nPage, 100u);
    EXPECT_EQ(read.nPos, 900);
    EXPECT_EQ(bar.SetScrollPos(70000), 900);
    bar.SetScrollRange(0, 100000);
    int lowest = -1;
    int highest = -1;
    bar.GetScrollRange(&lowest, &highest);
    EXPECT_EQ(lowest, 0);
    EXPECT_EQ(highest, 100000);
    bar.SetScrollPos(70000);
    EXPECT_THAT(child.Take(WM_VSCROLL), IsEmpty());
    native->triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_THAT(child.Take(WM_VSCROLL),
                ElementsAre(Message{WM_VSCROLL, SB_LINEDOWN, AsParameter(native)}));
    EXPECT_EQ(bar.GetScrollPos(), 70100) << "it has moved when the message arrives";
    info = {sizeof info, SIF_RANGE | SIF_DISABLENOSCROLL, 0, 10, 0, 0, 0};
    bar.SetScrollInfo(&info);
    EXPECT_FALSE(native->isEnabled()) << "all is seen";
    EXPECT_TRUE(bar.EnableScrollBar());
    EXPECT_FALSE(bar.EnableScrollBar(ESB_DISABLE_LTUP));
    EXPECT_TRUE(native->isEnabled());
}

TEST_F(Ranges, ProgressGivesBackWhereItWas) {
    CProgressCtrl progress;
    auto* native = qobject_cast<QProgressBar*>(Make(PBS_SMOOTH, kWide, progress));
    EXPECT_EQ(progress.GetPos(), 0);
    EXPECT_EQ(progress.SetPos(30), 0);
    EXPECT_EQ(progress.OffsetPos(5), 30);
    EXPECT_EQ(progress.StepIt(), 35);
    EXPECT_EQ(progress.SetStep(40), 10);
    progress.StepIt();
    EXPECT_EQ(progress.StepIt(), 85);
    EXPECT_EQ(progress.GetPos(), 25) << "goes on from the beginning";
    progress.OffsetPos(1000);
    EXPECT_EQ(progress.GetPos(), 100);
    progress.SetRange(-50, 50);
    EXPECT_EQ(native->value(), 50);
    EXPECT_TRUE(progress.SetMarquee(TRUE));
    EXPECT_EQ(native->maximum(), 0);
    progress.SetPos(-10);
    EXPECT_EQ(native->maximum(), 0) << "moves on";
    EXPECT_TRUE(progress.SetMarquee(FALSE));
    int lowest = 0;
    int highest = 0;
    progress.GetRange(lowest, highest);
    EXPECT_EQ(lowest, -50);
    EXPECT_EQ(highest, 50);
    EXPECT_EQ(native->value(), -10);
    progress.SetRange32(0, 0);
    EXPECT_EQ(native->maximum(), 1) << "not the moving bar";
}
