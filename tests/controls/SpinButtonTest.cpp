#include <vmcore/controls/CSpinButtonCtrl.h>

#include <QtGui/QAccessible>
#include <QtTest/QTest>
#include <QtWidgets/QSpinBox>

#include <vmcore/controls/CEdit.h>

#include "../wnd/RecordingWindow.h"
#include "wnd/SpinArrows.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class SpinButton : public WindowFixture {
protected:
    void Make(DWORD style) {
        buddy.Create(WS_VISIBLE, RECT{5, 5, 85, 30}, &child, 10);
        spin.Create(WS_VISIBLE | style, RECT{5, 40, 25, 70}, &child, 11);
        spin.SetBuddy(&buddy);
        arrows = dynamic_cast<vm::SpinArrows*>(spin.view);
        child.Take();
    }
    void Click(int direction) {
        QTest::mouseClick(arrows, Qt::LeftButton, {}, arrows->ArrowRect(direction).center());
    }
    std::string Shown() const {
        CString text;
        buddy.GetWindowText(text);
        return static_cast<const char*>(text);
    }
    Message Moved(int position) const {
        return {WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, position), AsParameter(arrows)};
    }

    CEdit buddy;
    CSpinButtonCtrl spin;
    vm::SpinArrows* arrows = nullptr;
};

} // namespace

TEST_F(SpinButton, CountsInItsBuddy) {
    Make(UDS_SETBUDDYINT | UDS_ALIGNRIGHT | UDS_ARROWKEYS);
    EXPECT_EQ(arrows->geometry().right(), 84);
    EXPECT_EQ(buddy.view->geometry().right(), arrows->geometry().left() - 1);
    EXPECT_EQ(spin.GetBuddy(), &buddy);
    spin.SetRange(1, 16);
    EXPECT_EQ(Shown(), "1") << "within the range";
    EXPECT_EQ(spin.SetPos(15), 1);
    EXPECT_THAT(child.Take(WM_VSCROLL), IsEmpty());
    Click(1);
    EXPECT_THAT(child.Take(WM_VSCROLL), ElementsAre(Moved(16)));
    EXPECT_FALSE(arrows->CanStep(1));
    Click(1);
    EXPECT_THAT(child.Take(), IsEmpty()) << "at the end";
    buddy.SetWindowText("9");
    EXPECT_EQ(spin.GetPos(), 9);
    QTest::keyClick(static_cast<QWidget*>(buddy.view), Qt::Key_Down);
    EXPECT_EQ(Shown(), "8");
    BOOL error = FALSE;
    buddy.SetWindowText("99");
    EXPECT_EQ(spin.GetPos32(&error), 8);
    EXPECT_TRUE(error);
    EXPECT_EQ(spin.SetBase(16), 10);
    spin.SetRange(0, 0xFFFF);
    spin.SetPos(0xABC);
    EXPECT_EQ(Shown(), "0x0ABC");
    EXPECT_EQ(spin.GetPos(), 0xABC);
    EXPECT_EQ(spin.SetBase(8), 0);
    buddy.DestroyWindow();
    EXPECT_EQ(spin.SetBuddy(nullptr), nullptr);
}

TEST_F(SpinButton, TakesItsWidthFromOneBuddyOnce) {
    for (const DWORD side : {UDS_ALIGNLEFT, UDS_ALIGNRIGHT}) {
        Make(side);
        CEdit other;
        other.Create(WS_VISIBLE, RECT{5, 80, 85, 105}, &child, 12);
        const QRect shrunk = buddy.view->geometry();
        EXPECT_EQ(spin.SetBuddy(&buddy), &buddy);
        EXPECT_EQ(buddy.view->geometry(), shrunk);
        EXPECT_EQ(spin.SetBuddy(&other), &buddy);
        EXPECT_EQ(buddy.view->geometry(), QRect(5, 5, 80, 25));
        EXPECT_LT(other.view->width(), 80);
        spin.SetBuddy(nullptr);
        EXPECT_EQ(other.view->geometry(), QRect(5, 80, 80, 25));
        for (CWnd* wnd : {static_cast<CWnd*>(&spin), static_cast<CWnd*>(&buddy)})
            wnd->DestroyWindow();
        other.DestroyWindow();
    }
}

TEST_F(SpinButton, AHostMayRefuseOrChangeAStep) {
    Make(0);
    int delta = 0;
    child.on[WM_NOTIFY] = [&](WPARAM id, LPARAM lParam) {
        auto& record = *reinterpret_cast<NMUPDOWN*>(lParam);
        EXPECT_EQ(id, 11u);
        EXPECT_EQ(record.hdr.code, UDN_DELTAPOS);
        EXPECT_EQ(record.hdr.hwndFrom, spin.view);
        EXPECT_EQ(record.iPos, spin.GetPos());
        EXPECT_EQ(record.iDelta, 1);
        record.iDelta = delta;
        return 1;
    };
    Click(1);
    EXPECT_EQ(spin.GetPos(), 0);
    delta = 25;
    Click(1);
    EXPECT_EQ(spin.GetPos(), 25);
    EXPECT_THAT(child.Take(WM_VSCROLL), ElementsAre(Moved(25)));
}

TEST_F(SpinButton, EndsMeetAndMayBeTurnedRound) {
    struct Row {
        DWORD style;
        int lowest, highest, position, up, down;
    };
    for (const Row& row :
         {Row{0, 0, 9, 9, 9, 8}, Row{UDS_WRAP, 0, 9, 9, 0, 8}, Row{UDS_WRAP, 0, 9, 0, 1, 9},
          Row{0, 9, 0, 9, 8, 9}, Row{0, 5, 5, 5, 5, 5}}) {
        SCOPED_TRACE(testing::Message()
                     << row.lowest << ".." << row.highest << " " << row.position);
        Make(row.style);
        spin.SetRange(row.lowest, row.highest);
        spin.SetPos(row.position);
        Click(1);
        EXPECT_EQ(spin.GetPos(), row.up);
        spin.SetPos(row.position);
        QTest::keyClick(arrows, Qt::Key_Down);
        EXPECT_EQ(spin.GetPos(), row.down);
        EXPECT_EQ(spin.GetRange(), DWORD(MAKELONG(row.highest, row.lowest)));
    }
}

TEST_F(SpinButton, RepeatsWhileItIsHeldAndNoLonger) {
    Make(UDS_HORZ);
    const UDACCEL faster[] = {{0, 3}};
    EXPECT_EQ(spin.GetAccel(0, nullptr), 3u);
    EXPECT_TRUE(spin.SetAccel(1, faster));
    UDACCEL read[4]{};
    EXPECT_EQ(spin.GetAccel(4, read), 1u);
    EXPECT_EQ(read[0].nInc, 3u);
    QTest::mousePress(arrows, Qt::LeftButton, {}, arrows->ArrowRect(1).center());
    EXPECT_TRUE(RunUntil([&] { return spin.GetPos() >= 9; }));
    arrows->grab();
    spin.EnableWindow(FALSE);
    EXPECT_FALSE(arrows->isEnabled());
    child.Take();
    RunFor(std::chrono::milliseconds(200));
    EXPECT_THAT(child.Take(WM_HSCROLL), IsEmpty());
}

TEST_F(SpinButton, AScreenReaderWorksItAsItsUserDoes) {
    Make(0);
    QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(arrows);
    ASSERT_TRUE(reader && reader->valueInterface());
    EXPECT_EQ(reader->role(), QAccessible::SpinBox);
    reader->valueInterface()->setCurrentValue(40);
    EXPECT_THAT(child.Take(WM_VSCROLL), ElementsAre(Moved(40)));
    EXPECT_EQ(reader->valueInterface()->currentValue(), 40);
    EXPECT_EQ(reader->valueInterface()->maximumValue(), 100);
}

TEST_F(SpinButton, NumberFieldsAreAcceptedToo) {
    QSpinBox native(child.view);
    CSpinButtonCtrl field;
    field.SubclassWindow(&native);
    field.SetRange(-5, 5);
    EXPECT_EQ(field.SetPos(9), 0);
    EXPECT_EQ(field.GetPos(), 5);
    const UDACCEL steps[] = {{0, 2}};
    field.SetAccel(1, steps);
    native.stepDown();
    EXPECT_EQ(field.GetPos(), 3);
    EXPECT_EQ(field.SetBase(16), 10);
    EXPECT_EQ(native.displayIntegerBase(), 16);
}
