// What of a native control's doings becomes an action: the user's, never the program's.
#include "wnd/controlWiring.h"

#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QDial>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTextEdit>
#include <QtWidgets/QToolButton>

#include "RecordingWindow.h"
#include "wnd/controlText.h"
#include "wnd/nativeControl.h"
#include "wnd/views.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ControlWiring : public WindowFixture {
protected:
    template <class Control>
    Control* Wired() {
        auto* control = new Control(child.view);
        vm::SetTagOf(control, 20);
        control->resize(100, 60);
        control->show();
        vm::WireControl(*control, &View(), &View());
        return control;
    }
    static std::vector<int> Notifications(const Messages& messages) {
        std::vector<int> codes;
        for (const Message& message : messages)
            codes.push_back(message.number == WM_COMMAND ? HIWORD(message.wParam)
                                                         : -message.number);
        return codes;
    }
    std::vector<int> Take() {
        RunFor(std::chrono::milliseconds(0));
        Messages actions;
        for (const Message& message : child.Take())
            if (message.number == WM_COMMAND || message.number == WM_NOTIFY ||
                message.number == WM_VSCROLL || message.number == WM_HSCROLL)
                actions.push_back(message);
        return Notifications(actions);
    }
};

void ClickAt(QWidget* control, int x = 8) {
    QTest::mouseClick(control, Qt::LeftButton, {}, QPoint(x, control->height() / 2));
}

} // namespace

TEST_F(ControlWiring, ButtonsSendTheirClicks) {
    const std::vector<QAbstractButton*> buttons = {Wired<QPushButton>(), Wired<QToolButton>(),
                                                   Wired<QCheckBox>(), Wired<QRadioButton>()};
    for (QAbstractButton* button : buttons) {
        SCOPED_TRACE(button->metaObject()->className());
        button->raise();
        ClickAt(button);
        EXPECT_THAT(Take(), ElementsAre(BN_CLICKED));
        button->setFocus();
        QTest::keyClick(button, Qt::Key_Space);
        EXPECT_THAT(Take(), ElementsAre(BN_CLICKED));
        button->setChecked(true);
        button->setChecked(false);
        vm::SetControlInteger(*button, 1);
        EXPECT_THAT(Take(), IsEmpty());
    }
    auto* group = Wired<QGroupBox>();
    group->setCheckable(true);
    group->setChecked(false);
    EXPECT_THAT(Take(), IsEmpty());
    QTest::mouseClick(group, Qt::LeftButton, {}, QPoint(12, 8));
    EXPECT_THAT(Take(), ElementsAre(BN_CLICKED));
}

TEST_F(ControlWiring, TextsTellOfTheirEditing) {
    auto* line = Wired<QLineEdit>();
    auto* other = Wired<QLineEdit>();
    top.nsWindow->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(top.nsWindow));
    line->setFocus();
    EXPECT_THAT(Take(), IsEmpty());
    QTest::keyClicks(line, "ab");
    EXPECT_THAT(Take(), ElementsAre(EN_SETFOCUS, EN_UPDATE, EN_CHANGE, EN_UPDATE, EN_CHANGE));
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_THAT(Take(), ElementsAre(EN_KILLFOCUS));
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_THAT(Take(), ElementsAre(EN_KILLFOCUS)) << "Return is always told";
    QTest::keyClick(line, Qt::Key_Backspace);
    other->setFocus();
    EXPECT_THAT(Take(), ElementsAre(EN_SETFOCUS, EN_UPDATE, EN_CHANGE, EN_KILLFOCUS));
    line->setFocus();
    other->setFocus();
    EXPECT_THAT(Take(), IsEmpty()) << "nothing was edited";
    vm::SetControlText(*line, "program");
    line->setText("program");
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(ControlWiring, LongTextsKeepTheirReturns) {
    auto* plain = Wired<QPlainTextEdit>();
    auto* rich = Wired<QTextEdit>();
    auto* line = Wired<QLineEdit>();
    top.nsWindow->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(top.nsWindow));
    for (QWidget* edit : std::initializer_list<QWidget*>{plain, rich}) {
        SCOPED_TRACE(edit->metaObject()->className());
        vm::SetControlText(*edit, "program");
        edit->setFocus();
        EXPECT_THAT(Take(), IsEmpty());
        QTest::keyClick(edit, Qt::Key_A);
        EXPECT_THAT(Take(), ElementsAre(EN_SETFOCUS, EN_UPDATE, EN_CHANGE));
        QTest::keyClick(edit, Qt::Key_Return);
        EXPECT_THAT(Take(), testing::Not(testing::Contains(EN_KILLFOCUS)));
        line->setFocus();
        EXPECT_THAT(Take(), ElementsAre(EN_KILLFOCUS));
    }
    EXPECT_EQ(plain->toPlainText().count('\n'), 1);
}

TEST_F(ControlWiring, SpinBoxesAreTexts) {
    auto* line = Wired<QLineEdit>();
    const std::vector<QAbstractSpinBox*> spins = {Wired<QSpinBox>(), Wired<QDoubleSpinBox>(),
                                                  Wired<QDateEdit>()};
    top.nsWindow->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(top.nsWindow));
    for (QAbstractSpinBox* spin : spins) {
        SCOPED_TRACE(spin->metaObject()->className());
        spin->setFocus();
        QTest::keyClick(spin, Qt::Key_Up);
        EXPECT_THAT(Take(), ElementsAre(EN_SETFOCUS, EN_UPDATE, EN_CHANGE));
        QTest::keyClick(spin, Qt::Key_Return);
        EXPECT_THAT(Take(), ElementsAre(EN_KILLFOCUS));
        line->setFocus();
        EXPECT_THAT(Take(), IsEmpty());
    }
    vm::SetControlInteger(*spins[0], 5);
    vm::SetControlText(*spins[1], "7.5");
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(ControlWiring, ChoicesAreTold) {
    auto* combo = Wired<QComboBox>();
    combo->addItems({"a", "b", "c"});
    vm::SetControlInteger(*combo, 2);
    combo->setCurrentIndex(0);
    EXPECT_THAT(Take(), IsEmpty());
    QTest::keyClick(combo, Qt::Key_Down);
    EXPECT_THAT(Take(), ElementsAre(CBN_SELCHANGE));
    EXPECT_EQ(vm::ControlInteger(*combo), 2);

    auto* list = Wired<QListWidget>();
    list->addItems({"a", "b", "c"});
    vm::SetControlInteger(*list, 1);
    EXPECT_THAT(Take(), IsEmpty());
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_THAT(Take(), ElementsAre(LBN_SELCHANGE));
    EXPECT_EQ(vm::ControlInteger(*list), 2);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(0)).center());
    EXPECT_THAT(Take(), ElementsAre(LBN_SELCHANGE));
}

TEST_F(ControlWiring, TabsAreTold) {
    auto* bar = Wired<QTabBar>();
    for (const char* name : {"a", "b"}) bar->addTab(name);
    auto* tabs = Wired<QTabWidget>();
    for (const char* name : {"a", "b"}) tabs->addTab(new QWidget, name);
    child.Take();
    vm::SetControlInteger(*bar, 2);
    vm::SetControlInteger(*tabs, 2);
    EXPECT_THAT(Take(), IsEmpty());
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(0).center());
    EXPECT_THAT(Take(), ElementsAre(-static_cast<int>(WM_NOTIFY)));
    tabs->raise();
    QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(0).center());
    EXPECT_THAT(Take(), ElementsAre(-static_cast<int>(WM_NOTIFY)));
}

TEST_F(ControlWiring, SlidersTellTheirNewPlace) {
    auto* slider = Wired<QSlider>();
    slider->setOrientation(Qt::Horizontal);
    slider->setValue(20);
    vm::SetControlInteger(*slider, 30);
    EXPECT_THAT(Take(), IsEmpty());
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_THAT(child.Take(WM_HSCROLL),
                ElementsAre(Message{WM_HSCROLL, MAKEWPARAM(5, 31), AsParameter(slider)}));
    auto* dial = Wired<QDial>();
    QTest::keyClick(dial, Qt::Key_PageUp);
    EXPECT_EQ(child.Take(WM_HSCROLL).size(), 1u);

    child.vScrollMax = 100;
    auto* bar = Wired<QScrollBar>();
    bar->setRange(0, 200);
    bar->resize(15, 60);
    bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
    bar->triggerAction(QAbstractSlider::SliderPageStepSub);
    bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    bar->setSliderDown(true);
    bar->setSliderPosition(100);
    EXPECT_THAT(child.Take(WM_VSCROLL),
                ElementsAre(Message{WM_VSCROLL, 1, AsParameter(bar)},
                            Message{WM_VSCROLL, 3, AsParameter(bar)},
                            Message{WM_VSCROLL, MAKEWPARAM(5, 50), AsParameter(bar)}));
}

TEST_F(ControlWiring, AnotherActionCanBeNamed) {
    auto* line = new QLineEdit(child.view);
    line->setProperty(vm::kActionProperty, "onButton");
    vm::WireControl(*line, &View(), &View());
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_THAT(boxes.Take(), ElementsAre(ShownBox{"onButton called by a non-NSButton control",
                                                   "Internal Error", 1}));
    for (const char* name : {"onButton", "onRadio", "onPopupMenu", "onCombi", "onEdit",
                             "onSelChange", "onTab", "onScroll", "onSpin"})
        EXPECT_TRUE(vm::IsControlAction(name)) << name;
    EXPECT_FALSE(vm::IsControlAction("onbutton"));
}

TEST_F(ControlWiring, ControlsMadeByTheProgramTellTheirParent) {
    CWnd wnd;
    for (RecordingWindow* parent : {&child, &top}) {
        auto* button = new QPushButton;
        ASSERT_TRUE(vm::AdoptControl(wnd, button, parent, RECT{0, 0, 40, 20}, WS_VISIBLE, 33));
        parent->Take();
        ClickAt(button);
        EXPECT_THAT(
            parent->Take(WM_COMMAND),
            ElementsAre(Message{WM_COMMAND, MAKEWPARAM(33, BN_CLICKED), AsParameter(button)}));
    }
}

TEST_F(ControlWiring, ReceiverAndSenderMayGoInTheAction) {
    auto* receiver = new CWndView(child.view);
    RecordingWindow object;
    object.Attach(receiver);
    receiver->wnd = &object;
    auto* button = Wired<QPushButton>();
    vm::WireControl(*button, receiver, receiver);
    object.on[WM_COMMAND] = [&](WPARAM, LPARAM) { return delete receiver, 1; };
    ClickAt(button);
    ClickAt(button);
    EXPECT_EQ(object.Take(WM_COMMAND).size(), 1u) << "nobody is there the second time";

    const QPointer<QLineEdit> line = Wired<QLineEdit>();
    child.on[WM_COMMAND] = [&](WPARAM, LPARAM) { return vm::DisposeOfView(line), 1; };
    QTest::keyClick(line, Qt::Key_A);
    RunFor(std::chrono::milliseconds(0));
    EXPECT_TRUE(line.isNull());
}
