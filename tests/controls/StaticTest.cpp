#include <vmcore/controls/CStatic.h>

#include <QtWidgets/QLabel>

#include <gmock/gmock.h>

#include "ControlsFixture.h"

TEST(Static, ShowsItsTextAsItStands) {
    RecordingWnd window;
    window.Open();
    CStatic label;
    ASSERT_TRUE(label.Create("A & <b>", WS_VISIBLE, RECT{5, 6, 105, 26}, &window));
    auto* native = qobject_cast<QLabel*>(label.view);
    ASSERT_TRUE(native);
    EXPECT_EQ(native->text(), "A & <b>");
    EXPECT_EQ(native->textFormat(), Qt::PlainText);
    EXPECT_EQ(native->geometry(), QRect(5, 6, 100, 20));
    label.SetWindowText("changed");
    EXPECT_EQ(native->text(), "changed");
    CStatic orphan;
    EXPECT_FALSE(orphan.Create("x", 0, RECT{0, 0, 9, 9}, nullptr));
}
