// What a control's actions say to the window object, and who may ask for them.
#include <algorithm>

#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>
#include <QtWidgets/QTabBar>

#include "RecordingWindow.h"
#include "wnd/CWndViewController.h"
#include "wnd/CWndWindowController.h"
#include "wnd/views.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ControlAction : public WindowFixture {
protected:
    static constexpr int kTag = 0x10014; // 20 with a bit beyond the word

    template <class Control>
    Control& Tagged(Control& control) {
        vm::SetTagOf(&control, kTag);
        return control;
    }
    static LPARAM HandleOf(QWidget& control) { return AsParameter(&control); }
};

using Actions = vm::ControlActions;
using Method = void (Actions::*)(QWidget*);

} // namespace

TEST_F(ControlAction, SendsTagNotificationAndHandle) {
    QPushButton push;
    QRadioButton radio;
    QComboBox combo;
    QLineEdit line;
    QListWidget list;
    const struct {
        Method method;
        QWidget& sender;
        std::vector<int> notifications;
    } rows[] = {
        {&Actions::onButton, push, {0x66}},
        {&Actions::onRadio, radio, {0x66}},
        {&Actions::onPopupMenu, combo, {0x74}},
        {&Actions::onCombi, combo, {0x74}},
        {&Actions::onEdit, line, {0x1}},
        {&Actions::onSelChange, list, {0x140}},
        {&Actions::controlTextDidBeginEditing, line, {0x2}},
        {&Actions::controlTextDidChange, line, {0x5, 0x4}},
        {&Actions::controlTextDidEndEditing, line, {0x1}},
    };
    for (const auto& row : rows) {
        (View().*row.method)(&Tagged(row.sender));
        Messages expected;
        for (const int notification : row.notifications)
            expected.push_back({WM_COMMAND, MAKEWPARAM(20, notification), HandleOf(row.sender)});
        EXPECT_EQ(child.Take(WM_COMMAND), expected) << row.notifications[0];
    }
}

TEST_F(ControlAction, TabIsANotification) {
    QTabBar tabs;
    NMHDR header{};
    child.on[WM_NOTIFY] = [&](WPARAM id, LPARAM record) {
        EXPECT_EQ(id, 20u);
        header = *reinterpret_cast<const NMHDR*>(record);
        return 1;
    };
    View().onTab(&Tagged(tabs));
    EXPECT_EQ(header.hwndFrom, &tabs);
    EXPECT_EQ(header.idFrom, 20u);
    EXPECT_EQ(header.code, 1u);
}

TEST_F(ControlAction, ScrollersAndSlidersSayWhereTheyAre) {
    child.vScrollMin = 10, child.vScrollMax = 110;
    child.hScrollMin = -50, child.hScrollMax = 50;
    QScrollBar bar(Qt::Vertical);
    bar.setRange(0, 1000);
    bar.setValue(255);
    QSlider slider(Qt::Vertical);
    slider.setRange(0, 100);
    const QSize tall(15, 200);
    const QSize flat(200, 15);
    using vm::ScrollPart;
    const struct {
        QSize size;
        ScrollPart part;
        Messages sent;
    } bars[] = {
        {tall, ScrollPart::DecrementPage, {{WM_VSCROLL, MAKEWPARAM(3, 0), HandleOf(bar)}}},
        {tall, ScrollPart::IncrementPage, {{WM_VSCROLL, MAKEWPARAM(1, 0), HandleOf(bar)}}},
        {tall, ScrollPart::Knob, {{WM_VSCROLL, MAKEWPARAM(5, 35), HandleOf(bar)}}},
        {tall, ScrollPart::Line, {}},
        {flat, ScrollPart::Knob, {{WM_HSCROLL, MAKEWPARAM(5, -25), HandleOf(bar)}}},
        {flat, ScrollPart::IncrementPage, {{WM_HSCROLL, MAKEWPARAM(1, 0), HandleOf(bar)}}},
    };
    for (const auto& row : bars) {
        bar.resize(row.size);
        View().onScroll(&bar, row.part);
        EXPECT_EQ(child.Take(), row.sent);
    }
    const struct {
        Qt::Orientation orientation;
        int value;
        Message sent;
    } sliders[] = {
        {Qt::Vertical, 100, {WM_VSCROLL, MAKEWPARAM(5, 0), HandleOf(slider)}},
        {Qt::Vertical, 30, {WM_VSCROLL, MAKEWPARAM(5, 70), HandleOf(slider)}},
        {Qt::Horizontal, 30, {WM_HSCROLL, MAKEWPARAM(5, 30), HandleOf(slider)}},
    };
    for (const auto& row : sliders) {
        slider.setOrientation(row.orientation);
        slider.setValue(row.value);
        View().onScroll(&slider, vm::ScrollPart::Line);
        EXPECT_THAT(child.Take(), ElementsAre(row.sent));
    }
}

TEST_F(ControlAction, WrongSenderOrNoObjectIsReported) {
    QLabel label;
    QPushButton push;
    const auto scroll = [&](Actions& actions) { actions.onScroll(&label, vm::ScrollPart::Knob); };
    const struct {
        std::function<void(Actions&)> act;
        const char* text;
    } rows[] = {
        {[&](Actions& a) { a.onButton(&label); }, "onButton called by a non-NSButton control"},
        {[&](Actions& a) { a.onRadio(&label); }, "onButton called by a non-NSButton control"},
        {[&](Actions& a) { a.onPopupMenu(&label); },
         "onPopupMenu called by a non-NSPopUpButton control"},
        {[&](Actions& a) { a.onCombi(&push); },
         "onPopupMenu called by a non-NSPopUpButton control"},
        {[&](Actions& a) { a.onEdit(&push); }, "onEdit called by a non-NSTextField object"},
        {[&](Actions& a) { a.onSelChange(&push); }, "onSelChange called by a non-NSTableView "
                                                    "object"},
        {[&](Actions& a) { a.onTab(&push); }, "onTab called by a non-NSSegmentedControl object"},
        {[&](Actions& a) { a.controlTextDidChange(&push); },
         "controlTextDidChange called by a non-NSTextField object"},
        {scroll, "onScroll called by a non-NSSlider/NSScroller object"},
    };
    for (const auto& row : rows) {
        row.act(View());
        EXPECT_THAT(boxes.Take(), ElementsAre(ShownBox{row.text, "Internal Error", 1}));
        EXPECT_THAT(child.Take(), IsEmpty());
    }
    CWndView unbound(nullptr);
    CWndViewController viewController(&unbound);
    CWndWindowController windowController(top.nsWindow);
    for (Actions* actions :
         std::initializer_list<Actions*>{&unbound, &viewController, &windowController})
        actions->onButton(&push);
    const ShownBox controller{"CWnd not assigned to CWndWindowController", "Internal Error", 1};
    EXPECT_THAT(boxes.Take(),
                ElementsAre(ShownBox{"CWnd not assigned to CWndNSView", "Internal Error", 1},
                            controller, controller));
}

TEST_F(ControlAction, SecondNoticeOfAChangeNeedsSenderAndObjectAlive) {
    auto* line = new QLineEdit;
    child.on[WM_COMMAND] = [&](WPARAM, LPARAM) { return delete line, 1; };
    View().controlTextDidChange(line);
    EXPECT_EQ(child.Take(WM_COMMAND).size(), 1u);

    QLineEdit other;
    auto* doomed = new RecordingWindow;
    const auto record = doomed->record;
    doomed->Create("", "", 0, RECT{0, 0, 9, 9}, &top, 9);
    doomed->on[WM_COMMAND] = [&](WPARAM, LPARAM) { return delete doomed, 1; };
    record->clear();
    const auto isCommand = [](const Message& message) { return message.number == WM_COMMAND; };
    dynamic_cast<CWndView&>(*doomed->view).controlTextDidChange(&other);
    EXPECT_EQ(std::count_if(record->begin(), record->end(), isCommand), 1);
}
