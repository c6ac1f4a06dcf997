#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>

#include "RecordingWindow.h"
#include "wnd/tagTable.h"
#include "wnd/views.h"

using testing::ElementsAre;

namespace {

class WindowText : public WindowFixture {
protected:
    static std::string TextOf(const CWnd& wnd) {
        CString text("unchanged");
        wnd.GetWindowText(text);
        return static_cast<const char*>(text);
    }
};

// A window whose view holds controls of the toolkit, as one from an interface file does.
class DialogItems : public WindowFixture {
protected:
    template <class Control>
    Control* Add(int tag, QWidget* parent = nullptr) {
        auto* control = new Control(parent ? parent : child.view);
        vm::SetTagOf(control, tag);
        return control;
    }
};

} // namespace

TEST_F(WindowText, LivesInTheTitleTheObjectOrTheControl) {
    top.SetWindowText("New title");
    EXPECT_EQ(top.nsWindow->windowTitle(), "New title");
    EXPECT_EQ(TextOf(top), "New title");
    EXPECT_EQ(top.GetWindowTextLength(), 9);

    child.SetWindowText("two\r\nlines");
    EXPECT_STREQ(child.text, "two\r\nlines");
    EXPECT_EQ(TextOf(child), "two\r\nlines");
    EXPECT_EQ(child.GetWindowTextLength(), 0) << "a view has no text of its own";

    CWnd without;
    without.SetWindowText("x");
    EXPECT_EQ(TextOf(without), "unchanged");
    QWidget plain;
    CWnd other(&plain);
    EXPECT_EQ(TextOf(other), "unchanged");
}

TEST_F(WindowText, ControlsShowLineFeedsAndHostsReadReturnsBefore) {
    QLabel label;
    CWnd wnd(&label);
    wnd.SetWindowText("one\r\ntwo\rthree");
    EXPECT_EQ(label.text(), "one\ntwothree");
    EXPECT_EQ(TextOf(wnd), "one\r\ntwothree");
    EXPECT_EQ(wnd.GetWindowTextLength(), 12) << "as the control holds it";
    char buffer[32];
    EXPECT_EQ(wnd.GetWindowText(buffer, sizeof buffer), 13);
    EXPECT_STREQ(buffer, "one\r\ntwothree");

    QPushButton button;
    CWnd push(&button);
    push.SetWindowText("one\r\ntwo");
    EXPECT_EQ(button.text(), "one\ntwo");
    EXPECT_EQ(TextOf(push), "one\ntwo") << "a title is not expanded";
}

TEST_F(WindowText, CutCopyHasNoTerminatorAndTellsTheWholeLength) {
    const struct {
        int size;
        const char* after; // of a buffer of eight '.'
    } rows[] = {{4, "abc....."}, {6, "abcde..."}, {1, "........"}, {0, "........"}};
    child.SetWindowText("abcdef");
    for (const auto& row : rows) {
        char buffer[9] = "........";
        EXPECT_EQ(child.GetWindowText(buffer, row.size), 6);
        EXPECT_STREQ(buffer, row.after) << row.size;
    }
    char fits[8];
    EXPECT_EQ(child.GetWindowText(fits, sizeof fits), 6);
    EXPECT_STREQ(fits, "abcdef");
    EXPECT_EQ(CWnd().GetWindowText(fits, sizeof fits), 0);
}

TEST_F(WindowText, BareHandleGivesTitleOrTextAndReportsTheRest) {
    char buffer[16] = "unchanged";
    EXPECT_EQ(::GetWindowText(top.view, buffer, sizeof buffer), 3);
    EXPECT_STREQ(buffer, "Top");
    QPushButton button("Go");
    EXPECT_EQ(::GetWindowText(&button, buffer, sizeof buffer), 2);
    EXPECT_STREQ(buffer, "Go");
    QLabel label("a\nb");
    EXPECT_EQ(::GetWindowText(&label, buffer, sizeof buffer), 3);
    QSlider slider;
    slider.setValue(42);
    EXPECT_EQ(::GetWindowText(&slider, buffer, sizeof buffer), 2);
    EXPECT_STREQ(buffer, "42");
    EXPECT_EQ(::GetWindowText(nullptr, buffer, sizeof buffer), 0);
    EXPECT_EQ(::GetWindowText(child.view, buffer, sizeof buffer), 0);
    EXPECT_EQ(CWnd::CreateUniqueID(&child, 1), 0xFFFFFFFF);
    EXPECT_THAT(boxes.Take(),
                ElementsAre(ShownBox{"Add NSView support to fn GetWindowText", "Msg", 1},
                            ShownBox{"CreateUniqueID not required with XCode", "Error", 1}));
}

TEST_F(WindowText, ButtonsTextIsItsTitleEverywhere) {
    auto* box = new QCheckBox("Loud", child.view);
    vm::SetTagOf(box, 20);
    box->setChecked(true);
    char buffer[8] = "";
    EXPECT_EQ(child.GetDlgItemText(20, buffer, sizeof buffer), 4);
    EXPECT_STREQ(buffer, "Loud");
    EXPECT_EQ(child.GetDlgItem(20)->GetWindowTextLength(), 4);
    child.SetDlgItemText(20, "Soft");
    EXPECT_EQ(box->text(), "Soft");
    EXPECT_TRUE(box->isChecked());
    EXPECT_EQ(child.IsDlgButtonChecked(20), 1u);
}

TEST_F(DialogItems, FirstChildWithAnObjectIsTheWindowBelow) {
    EXPECT_EQ(top.GetWindow(0), &child);
    EXPECT_EQ(top.GetWindow(1), nullptr);
    EXPECT_EQ(child.GetWindow(0), nullptr);
    Add<QLabel>(0);
    RecordingWindow inner;
    inner.Create("", "", 0, RECT{0, 0, 5, 5}, &child, 21);
    EXPECT_EQ(child.GetWindow(0), &inner) << "a label of nobody is passed over";
}

// The hash of a loaded file answers as the walk over all views does.
TEST_F(DialogItems, HashKnowsNewViewsAndChangedNumbers) {
    vm::KeepTagTable(child.view);
    auto* group = Add<QWidget>(0);
    auto* deep = Add<QLabel>(20, group);
    EXPECT_EQ(child.GetDlgItem(20)->view, deep);
    EXPECT_EQ(child.GetDlgItem(21)->view, nullptr);
    auto* shallow = Add<QLabel>(20);
    EXPECT_EQ(child.GetDlgItem(20)->view, shallow) << "parents come before children";
    auto* later = Add<QLabel>(21, group);
    EXPECT_EQ(child.GetDlgItem(21)->view, later);

    RecordingWindow made;
    made.Create("", "", 0, RECT{0, 0, 5, 5}, &child, 22);
    EXPECT_EQ(child.GetDlgItem(22), &made);
    made.SetCommandID(23);
    EXPECT_EQ(child.GetDlgItem(22)->view, nullptr);
    EXPECT_EQ(child.GetDlgItem(23), &made);
    vm::SetTagOf(deep, 24);
    EXPECT_EQ(child.GetDlgItem(24)->view, deep);
    delete group;
    EXPECT_EQ(child.GetDlgItem(24)->view, nullptr);
}

TEST_F(DialogItems, UnknownOneIsTheScratchWindow) {
    CWnd* const scratch = child.GetDlgItem(1234);
    ASSERT_NE(scratch, nullptr);
    EXPECT_EQ(scratch->view, nullptr);
    auto* label = Add<QLabel>(20);
    EXPECT_EQ(child.GetDlgItem(20), scratch) << "bound anew";
    EXPECT_EQ(scratch->view, label);
    EXPECT_EQ(CWnd().GetDlgItem(20), nullptr);
    HWND handle = child.view;
    child.GetDlgItem(1234, &handle);
    EXPECT_EQ(handle, nullptr);
    child.GetDlgItem(20, &handle);
    EXPECT_EQ(handle, label);
}

TEST_F(DialogItems, KnownOneIsItsObjectWhereverItLies) {
    EXPECT_EQ(top.GetDlgItem(kChildID), &child);
    RecordingWindow inner;
    inner.Create("", "", 0, RECT{0, 0, 5, 5}, &child, 21);
    EXPECT_EQ(top.GetDlgItem(21), &inner);
    inner.SetCommandID(22);
    EXPECT_EQ(top.GetDlgItem(22), &inner);
    EXPECT_EQ(inner.GetDlgCtrlID(), 22u);
    EXPECT_EQ(CWnd().GetDlgCtrlID(), 0xFFFFFFFF);
}

TEST_F(DialogItems, TagOfAnInterfaceFileIsTheTagOfAView) {
    CWndView view(child.view);
    view.setProperty("tag", 44);
    CWnd wnd;
    wnd.Attach(&view);
    EXPECT_EQ(wnd.GetDlgCtrlID(), 44u);
    EXPECT_EQ(child.GetDlgItem(44), &wnd);
    wnd.SetCommandID(45);
    EXPECT_EQ(view.property("tag").toInt(), 45);
    EXPECT_EQ(view.getCWnd(), nullptr);
    wnd.Detach();
}

TEST_F(DialogItems, IdentifierCountsAmongTheChildrenWhenNoTagDoes) {
    auto* named = Add<QLabel>(0);
    named->setObjectName("33");
    auto* deeper = Add<QLabel>(0, named);
    deeper->setObjectName("34");
    EXPECT_EQ(child.GetDlgItem(33)->view, named);
    EXPECT_EQ(child.GetDlgItem(34)->view, nullptr) << "not a direct child";
    auto* tagged = Add<QLabel>(33, deeper);
    EXPECT_EQ(child.GetDlgItem(33)->view, tagged) << "tags come first";
    CWnd owner;
    owner.Attach(named);
    EXPECT_EQ(child.GetDlgItem(33), &owner) << "an object before a tagged view of nobody";
    owner.Detach();
}

TEST_F(DialogItems, TextsAndNumbersGoThroughTheItem) {
    auto* label = Add<QLabel>(20);
    auto* slider = Add<QSlider>(21);
    slider->setMaximum(100);
    child.SetDlgItemText(20, "12\r\n");
    EXPECT_EQ(label->text(), "12\r\n") << "an item's text goes in as it stands";
    CString text;
    EXPECT_EQ(child.GetDlgItemText(20, text), 4);
    EXPECT_STREQ(text, "12\r\n");
    char cut[4] = "...";
    EXPECT_EQ(child.GetDlgItemText(20, cut, 2), 4);
    EXPECT_STREQ(cut, "1..");
    BOOL ok = FALSE;
    EXPECT_EQ(child.GetDlgItemInt(20, &ok), 12u);
    EXPECT_TRUE(ok);
    child.SetDlgItemInt(21, 64);
    EXPECT_EQ(slider->value(), 64);
    EXPECT_EQ(child.GetDlgItemInt(21), 64u);
    EXPECT_EQ(child.GetDlgItemInt(99, &ok), 0u);
    EXPECT_FALSE(ok);
    child.SetDlgItemInt(99, 1);
    child.SetDlgItemText(99, "x");
    EXPECT_EQ(child.GetDlgItemText(99, cut, 4), 0);
}
