// What a screen reader is told of the library's views: names, roles, states and the tree.
#include <QtGui/QAccessible>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include "RecordingWindow.h"

using testing::ElementsAre;

namespace {

class Accessibility : public WindowFixture {
protected:
    static QAccessibleInterface& Of(QWidget* view) {
        return *QAccessible::queryAccessibleInterface(view);
    }
    static QString NameOf(QWidget* view) { return Of(view).text(QAccessible::Name); }
    static QStringList NamesIn(QWidget* view) {
        QStringList names;
        for (int i = 0; i < Of(view).childCount(); ++i)
            names += Of(view).child(i)->text(QAccessible::Name);
        return names;
    }
};

} // namespace

TEST_F(Accessibility, NameIsTheOneSetOrTheWindowText) {
    EXPECT_EQ(NameOf(child.view), "") << "a class name or window name of the creation is none";
    child.SetWindowText("B\x9Fnke");
    EXPECT_EQ(NameOf(child.view), QStringLiteral("B\u00FCnke"));
    child.SetAccessibleName("Hex view");
    EXPECT_EQ(NameOf(child.view), "Hex view");
    child.SetAccessibleName("");
    EXPECT_EQ(NameOf(child.view), QStringLiteral("B\u00FCnke"));
}

TEST_F(Accessibility, NameAndRoleMayBeGivenBeforeTheView) {
    RecordingWindow pane;
    pane.SetAccessibleName("Early");
    pane.SetAccessibleRole(ACCESSIBLE_PICTURE);
    for (int round = 0; round < 2; ++round) { // a view made anew takes them too
        pane.Create("", "", WS_VISIBLE, RECT{0, 0, 20, 20}, &top, 8);
        EXPECT_EQ(NameOf(pane.view), "Early");
        EXPECT_EQ(Of(pane.view).role(), QAccessible::Graphic);
        pane.DestroyWindow();
    }
}

TEST_F(Accessibility, RolesOfTheDesktopBecomeThoseOfTheToolkit) {
    const struct {
        UINT role;
        QAccessible::Role toolkit;
    } rows[] = {
        {ACCESSIBLE_PANEL, QAccessible::Pane},
        {ACCESSIBLE_BUTTON, QAccessible::Button},
        {ACCESSIBLE_LABEL, QAccessible::StaticText},
        {ACCESSIBLE_TEXT, QAccessible::EditableText},
        {ACCESSIBLE_TABLE, QAccessible::Table},
        {ACCESSIBLE_LIST, QAccessible::List},
        {ACCESSIBLE_SLIDER, QAccessible::Slider},
        {ACCESSIBLE_PICTURE, QAccessible::Graphic},
        {ACCESSIBLE_TOOLBAR, QAccessible::ToolBar},
        {ACCESSIBLE_STATUSBAR, QAccessible::StatusBar},
        {12345, QAccessible::Pane},
    };
    EXPECT_EQ(Of(child.view).role(), QAccessible::Pane);
    for (const auto& row : rows) {
        child.SetAccessibleRole(row.role);
        EXPECT_EQ(Of(child.view).role(), row.toolkit) << row.role;
    }
}

TEST_F(Accessibility, ObjectsThatGoLeaveNothingToTheNext) {
    alignas(RecordingWindow) unsigned char place[sizeof(RecordingWindow)];
    auto* pane = new (place) RecordingWindow;
    pane->SetAccessibleName("Old");
    pane->SetAccessibleRole(ACCESSIBLE_SLIDER);
    pane->~RecordingWindow();
    pane = new (place) RecordingWindow;
    pane->Create("", "", WS_VISIBLE, RECT{0, 0, 20, 20}, &top, 8);
    EXPECT_EQ(NameOf(pane->view), "");
    EXPECT_EQ(Of(pane->view).role(), QAccessible::Pane);
    QWidget* const view = pane->view;
    pane->~RecordingWindow();
    EXPECT_EQ(NameOf(view), "") << "a view without its object";
    EXPECT_EQ(Of(view).role(), QAccessible::Pane);
}

TEST_F(Accessibility, StatesFollowTheObject) {
    ASSERT_TRUE(RunUntil([&] { return child.view->isActiveWindow(); }));
    EXPECT_TRUE(Of(child.view).state().focusable);
    EXPECT_FALSE(Of(child.view).state().focused);
    child.SetFocus();
    EXPECT_TRUE(Of(child.view).state().focused);
    EXPECT_FALSE(Of(child.view).state().disabled);
    child.EnableWindow(FALSE);
    EXPECT_TRUE(Of(child.view).state().disabled);
    EXPECT_FALSE(Of(child.view).state().focusable);
    child.ShowWindow(SW_HIDE);
    EXPECT_TRUE(Of(child.view).state().invisible);
}

TEST_F(Accessibility, TreeHoldsViewsAndControls) {
    RecordingWindow inner;
    inner.Create("", "", WS_VISIBLE, RECT{0, 0, 20, 20}, &child, 8);
    inner.SetAccessibleName("Inner");
    auto* const button = new QPushButton(QStringLiteral("&Send"), child.view);
    auto* const edit = new QLineEdit(child.view);
    CWnd field;
    field.Attach(edit);
    field.SetAccessibleName("Channel");
    EXPECT_EQ(NamesIn(child.view), (QStringList{"Inner", "Send", "Channel"}));
    EXPECT_EQ(Of(inner.view).parent(), &Of(child.view));
    EXPECT_EQ(Of(child.view).indexOfChild(&Of(button)), 1);
    EXPECT_EQ(Of(edit).role(), QAccessible::EditableText) << "native controls keep their own";
    top.SetAccessibleName("Bank");
    EXPECT_EQ(NameOf(top.nsWindow), "Bank") << "a top-level window is its frame";
    field.Detach();
}
