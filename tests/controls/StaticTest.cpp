#include <vmcore/controls/CEdit.h>
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

TEST(Static, AMarkedKeyLeadsToTheNextTabStop) {
    RecordingWnd window;
    window.Open();
    const struct {
        DWORD style;
        bool leads;
    } rows[] = {{WS_VISIBLE, true}, {WS_VISIBLE | SS_NOPREFIX, false}};
    for (const auto& row : rows) {
        CStatic label;
        CStatic between;
        CEdit field;
        ASSERT_TRUE(label.Create("&Name", row.style, RECT{5, 6, 105, 26}, &window));
        ASSERT_TRUE(between.Create("", WS_VISIBLE, RECT{5, 30, 105, 50}, &window));
        ASSERT_TRUE(field.Create(WS_VISIBLE, RECT{5, 60, 105, 80}, &window, 1));
        CEdit after;
        ASSERT_TRUE(after.Create(WS_VISIBLE, RECT{5, 90, 105, 110}, &window, 2));
        EXPECT_EQ(qobject_cast<QLabel*>(label.view)->buddy(), row.leads ? field.view : nullptr);
    }
}
