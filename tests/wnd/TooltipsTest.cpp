#include <QtGui/QHelpEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolTip>

#include "RecordingWindow.h"

namespace {

class Tooltips : public WindowFixture {
protected:
    ~Tooltips() override { QToolTip::hideText(); }

    // The text that appears when the mouse rests at this place; empty when none does.
    static QString TextAt(QWidget& view, QPoint place) {
        QToolTip::hideText();
        QHelpEvent event(QEvent::ToolTip, place, view.mapToGlobal(place));
        return QApplication::sendEvent(&view, &event) && event.isAccepted() && QToolTip::isVisible()
                   ? QToolTip::text()
                   : QString();
    }
};

} // namespace

TEST_F(Tooltips, AllRectanglesShowTheLastText) {
    const CRect left(0, 0, 20, 20);
    const CRect right(40, 0, 60, 20);
    const int first = child.addTooltip(&left, "first");
    const int second = child.addTooltip(&right, "a < b & <b>bold</b>");
    EXPECT_GE(first, 0);
    EXPECT_NE(first, second);
    for (const QPoint place : {QPoint(0, 0), QPoint(19, 19), QPoint(45, 5)})
        EXPECT_EQ(TextAt(*child.view, place), "a &lt; b &amp; &lt;b&gt;bold&lt;/b&gt;")
            << place.x() << ": as it was given, not as markup";
    EXPECT_EQ(TextAt(*child.view, {20, 5}), "");
    child.removeTooltip(-1);
    child.removeTooltip(first);
    EXPECT_EQ(TextAt(*child.view, {5, 5}), "");
    EXPECT_NE(TextAt(*child.view, {45, 5}), "");
    child.removeAllTooltips();
    EXPECT_EQ(TextAt(*child.view, {45, 5}), "");
}

TEST_F(Tooltips, WhatCannotBeShownIsRefused) {
    const CRect rect(0, 0, 20, 20);
    EXPECT_EQ(child.addTooltip(nullptr, "text"), -1);
    EXPECT_EQ(child.addTooltip(&rect, nullptr), -1);
    EXPECT_EQ(child.addTooltip(&rect, "na\xEFve"), -1);
    CWnd without;
    EXPECT_EQ(without.addTooltip(&rect, "text"), -1);
    without.removeTooltip(1);
    without.removeAllTooltips();
    EXPECT_EQ(child.tooltipText, nullptr) << "made on first use";
}

TEST_F(Tooltips, RectanglesAreInTheUnitsOfTheHost) {
    const CRect rect(10, 10, 20, 20);
    child.SetWindowScaling(2.0f);
    child.addTooltip(&rect, "text");
    EXPECT_EQ(TextAt(*child.view, {39, 39}), "text");
    EXPECT_EQ(TextAt(*child.view, {19, 19}), "");
}

TEST_F(Tooltips, ObjectAndViewMayGoInEitherOrder) {
    auto* button = new QPushButton(top.view);
    button->setGeometry(150, 10, 60, 30);
    button->show();
    const CRect rect(0, 0, 60, 30);
    {
        CWnd control;
        control.Attach(button);
        control.addTooltip(&rect, "press me");
        EXPECT_EQ(TextAt(*button, {5, 5}), "press me") << "on a native control";
    }
    EXPECT_EQ(TextAt(*button, {5, 5}), "") << "the object took its text along";
    CWnd control;
    control.Attach(button);
    control.addTooltip(&rect, "again");
    delete button;
    EXPECT_EQ(control.addTooltip(&rect, "more"), -1) << "no view any more";
}
