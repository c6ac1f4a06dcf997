#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QScrollBar>

#include "RecordingWindow.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ScrollBars : public WindowFixture {
protected:
    static constexpr DWORD kBoth = WS_VISIBLE | WS_VSCROLL | WS_HSCROLL;

    ScrollBars() { Make(kBoth); }
    void Make(DWORD style) {
        wnd.DestroyWindow();
        wnd.Create("", "", style, RECT{10, 20, 110, 220}, &top, 9);
        wnd.Take();
    }
    QScrollBar& Bar(bool vertical) {
        return *qobject_cast<QScrollBar*>(vertical ? wnd.vScrollView : wnd.hScrollView);
    }
    RECT ClientRect() {
        RECT rect{};
        wnd.GetClientRect(&rect);
        return rect;
    }
    Messages TakeScrolls() {
        Messages scrolls;
        for (const Message& message : wnd.Take())
            if (message.number == WM_VSCROLL || message.number == WM_HSCROLL)
                scrolls.push_back(message);
        return scrolls;
    }
    static Message Scroll(int number, int code, int position, const QScrollBar& bar) {
        return {number, static_cast<WPARAM>(MAKELONG(code, position)),
                reinterpret_cast<LPARAM>(&bar)};
    }
    // A place on the bar, from 0 at its start to 1 at its end.
    static QPoint PlaceOn(const QScrollBar& bar, double share) {
        const QRect area = bar.rect();
        return bar.orientation() == Qt::Vertical
                   ? QPoint(area.center().x(), static_cast<int>(area.height() * share))
                   : QPoint(static_cast<int>(area.width() * share), area.center().y());
    }

    RecordingWindow wnd;
};

} // namespace

TEST_F(ScrollBars, StylesSelectThem) {
    const struct {
        DWORD style;
        bool vertical, horizontal;
    } rows[] = {{WS_VSCROLL, true, false},
                {WS_HSCROLL, false, true},
                {WS_VSCROLL | WS_HSCROLL, true, true},
                {0, false, false}};
    for (const auto& row : rows) {
        Make(row.style); // also of a view that is hidden
        EXPECT_EQ(wnd.vScrollView != nullptr, row.vertical) << row.style;
        EXPECT_EQ(wnd.hScrollView != nullptr, row.horizontal) << row.style;
        EXPECT_EQ(wnd.vScrollShown, row.vertical);
        EXPECT_EQ(wnd.hScrollShown, row.horizontal);
        EXPECT_EQ(wnd.scrollFillShown, row.vertical && row.horizontal);
        EXPECT_THAT(ClientRect(), IsRect(0, 0, row.vertical ? 85 : 100, row.horizontal ? 185 : 200))
            << row.style;
    }
}

TEST_F(ScrollBars, LieInsideTheRightAndBottomEdges) {
    EXPECT_EQ(Bar(true).geometry(), QRect(85, 0, 15, 185));
    EXPECT_EQ(Bar(false).geometry(), QRect(0, 185, 85, 15));
    EXPECT_NE(wnd.view->childAt(92, 192), nullptr) << "the square between them is covered";
    EXPECT_TRUE(Bar(true).isVisible());
    wnd.ShowWindow(SW_HIDE);
    wnd.MoveWindow(10, 20, 60, 50);
    EXPECT_EQ(Bar(true).geometry(), QRect(45, 0, 15, 35));
    EXPECT_EQ(Bar(false).geometry(), QRect(0, 35, 45, 15));
    wnd.GetDlgItem(0);
    EXPECT_EQ(wnd.GetDlgItem(0)->view, nullptr) << "no items of the view";
}

TEST_F(ScrollBars, AreTakenOffEverySize) {
    wnd.MoveWindow(10, 20, 60, 50);
    EXPECT_THAT(wnd.Take(WM_SIZE), ElementsAre(Message{WM_SIZE, 2, MAKELPARAM(45, 35)}));
    wnd.view->resize(70, 80); // as a layout does
    EXPECT_THAT(wnd.Take(WM_SIZE), ElementsAre(Message{WM_SIZE, 2, MAKELPARAM(55, 65)}));
    EXPECT_EQ(Bar(true).geometry(), QRect(55, 0, 15, 65));
    wnd.MoveWindow(10, 20, 8, 9);
    EXPECT_THAT(wnd.Take(WM_SIZE), ElementsAre(Message{WM_SIZE, 2, MAKELPARAM(0, 0)}));
}

TEST_F(ScrollBars, OfATopLevelWindowFollowItsContent) {
    top.CreateVScroll();
    EXPECT_EQ(top.vScrollView->geometry(), QRect(285, 0, 15, 200));
    RECT before{}, after{};
    top.GetWindowRect(&before);
    top.vScrollView->hide();
    top.GetWindowRect(&after);
    EXPECT_EQ(after.right - before.right, 15);
    top.GetClientRect(&after);
    EXPECT_EQ(after.right, 300) << "nothing is taken off the content";
    top.vScrollView->show();
    top.MoveWindow(80, 90, 250, 180);
    EXPECT_EQ(top.vScrollView->geometry().right(), top.view->width() - 1);
    top.Take();
    auto& bar = *qobject_cast<QScrollBar*>(top.vScrollView);
    bar.triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_THAT(top.Take(WM_VSCROLL), ElementsAre(Scroll(WM_VSCROLL, 1, 0, bar)));
}

TEST_F(ScrollBars, PageAreasSendTheirCodesAndLeaveTheKnob) {
    for (const bool vertical : {true, false}) {
        const int number = vertical ? WM_VSCROLL : WM_HSCROLL;
        QScrollBar& bar = Bar(vertical);
        wnd.SetScrollRange(vertical, 0, 100);
        wnd.SetScrollPos(vertical, 50);
        const int knob = bar.value();
        QTest::mouseClick(&bar, Qt::LeftButton, {}, PlaceOn(bar, 0.25));
        EXPECT_THAT(TakeScrolls(), ElementsAre(Scroll(number, 3, 0, bar)));
        QTest::mouseClick(&bar, Qt::LeftButton, {}, PlaceOn(bar, 0.75));
        EXPECT_THAT(TakeScrolls(), ElementsAre(Scroll(number, 1, 0, bar)));
        bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
        bar.triggerAction(QAbstractSlider::SliderSingleStepSub);
        EXPECT_THAT(TakeScrolls(), IsEmpty()) << "lines send nothing";
        EXPECT_EQ(bar.value(), knob);
    }
}

TEST_F(ScrollBars, DraggedKnobSendsItsPositionInTheRange) {
    QScrollBar& bar = Bar(true);
    wnd.SetScrollRange(TRUE, 100, 300);
    wnd.SetScrollPos(TRUE, 200);
    QTest::mousePress(&bar, Qt::LeftButton, {}, PlaceOn(bar, 0.5));
    QTest::mouseMove(&bar, PlaceOn(bar, 1.0));
    const Messages scrolls = TakeScrolls();
    ASSERT_FALSE(scrolls.empty());
    EXPECT_EQ(scrolls.back(), Scroll(WM_VSCROLL, 5, 300, bar));
    QTest::mouseMove(&bar, PlaceOn(bar, 0.0));
    EXPECT_EQ(TakeScrolls().back(), Scroll(WM_VSCROLL, 5, 100, bar));
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, PlaceOn(bar, 0.0));
}

TEST_F(ScrollBars, PositionsComeBackAsTheyWereSet) {
    const struct {
        int lowest, highest;
    } rows[] = {{0, 3}, {0, 10}, {-7, 7}, {1, 127}, {0, 16383}, {5, 5}, {9, 2}};
    for (const auto& row : rows) {
        wnd.SetScrollRange(FALSE, row.lowest, row.highest);
        for (int position = row.lowest; position <= row.highest; ++position) {
            wnd.SetScrollPos(FALSE, position);
            Bar(false).triggerAction(QAbstractSlider::SliderMove); // where it is
            ASSERT_THAT(TakeScrolls(), ElementsAre(Scroll(WM_HSCROLL, 5, position, Bar(false))))
                << row.lowest << " to " << row.highest;
        }
    }
    wnd.SetScrollRange(FALSE, 0, 50);
    wnd.SetScrollPos(FALSE, 70);
    EXPECT_EQ(wnd.scrollPosition, 50);
    wnd.SetScrollRange(FALSE, 0, 20);
    EXPECT_EQ(wnd.scrollPosition, 20) << "moved into the new range";
    EXPECT_THAT(TakeScrolls(), IsEmpty()) << "only a person's actions are told";
}

TEST_F(ScrollBars, GoWithTheWindowAlsoInsideTheirOwnMessage) {
    const QPointer<QWidget> vertical(wnd.vScrollView);
    const QPointer<QWidget> view(wnd.view);
    bool known = true;
    wnd.on[WM_DESTROY] = [&](WPARAM, LPARAM) {
        known = wnd.vScrollView || wnd.hScrollView || wnd.vScrollShown || wnd.scrollFillShown;
        return 0;
    };
    wnd.on[WM_VSCROLL] = [&](WPARAM, LPARAM) { return wnd.DestroyWindow(); };
    QTest::mouseClick(&Bar(true), Qt::LeftButton, {}, PlaceOn(Bar(true), 0.75));
    EXPECT_FALSE(known) << "gone before the window is told";
    EXPECT_EQ(wnd.view, nullptr);
    RunFor(std::chrono::milliseconds(1));
    EXPECT_FALSE(vertical);
    EXPECT_FALSE(view);
}

TEST_F(ScrollBars, MayGoInALoopInsideTheirOwnMessage) {
    const QPointer<QScrollBar> bar = &Bar(true);
    wnd.on[WM_VSCROLL] = [&](WPARAM, LPARAM) {
        QTimer::singleShot(0, [&] { wnd.DestroyWindow(); }); // while a question to the user is up
        EXPECT_TRUE(RunUntil([&] { return !bar; }));
        return 1;
    };
    QTimer::singleShot(0, bar,
                       [&] { QTest::mouseClick(bar, Qt::LeftButton, {}, PlaceOn(*bar, 0.75)); });
    EXPECT_TRUE(RunUntil([&] { return !wnd.view; }));
}
