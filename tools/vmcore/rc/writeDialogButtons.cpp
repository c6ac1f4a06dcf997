// Buttons of every kind.
#include "rc/styleTable.h"
#include "rc/winStyles.h"
#include "rc/writeDialogWidget.h"

namespace vm::rc {
namespace {

using namespace win;

const char* TypeOf(Style type, bool pushLike) {
    switch (type) {
    case kCheckBox:
    case kAutoCheckBox:
    case k3State:
    case kAuto3State:
        return pushLike ? "QPushButton" : "QCheckBox";
    case kRadio:
    case kAutoRadio:
        return pushLike ? "QPushButton" : "QRadioButton";
    default:
        return "QPushButton";
    }
}

bool IsCheckable(Style type) {
    return (type >= kCheckBox && type <= kAuto3State) || type == kAutoRadio;
}

void NoteKind(Widget& widget, Style type) {
    const auto note = [&](const char* text) {
        widget.Note(std::string(text) + " (" + StyleName(type, "BS_") + ")");
    };
    if (type == kCheckBox || type == k3State || type == kRadio)
        note("a click changes it by itself");
    if (type == kUserButton || type == kOwnerDraw)
        note("not drawn by the program: the desktop draws a push button");
    if (type > kOwnerDraw)
        note("an ordinary push button: split buttons and command links have no counterpart");
}

void TakeLook(Widget& widget, const Control& control) {
    if (HasStyle(control, kBsLeftText)) widget.Set(UiEnum("layoutDirection", "Qt::RightToLeft"));
    if (HasStyle(control, kBsFlat) && widget.type == "QPushButton")
        widget.Set(UiBool("flat", true));
}

// The title still has "&&" for a '&'.
std::string WithoutKey(const std::string& text) {
    std::string title;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isDouble = text[i] == '&' && i + 1 < text.size() && text[i + 1] == '&';
        if (isDouble) title += text[i++];
        if (isDouble || text[i] != '&') title += text[i];
    }
    return title;
}

Widget GroupWidget(const Control& control) {
    Widget widget;
    widget.type = "QGroupBox";
    widget.part = Part::Background;
    widget.takesFocus = false;
    const std::string title = WithoutKey(control.text);
    widget.Set(UiText("title", title));
    if (title != control.text) widget.Note("its key leads nowhere");
    const Style across = control.style & (kBsLeft | kBsRight);
    if (across & kBsRight)
        widget.Set(
            {"alignment", "set", across == kBsRight ? "Qt::AlignRight" : "Qt::AlignHCenter"});
    return widget;
}

} // namespace

Widget ButtonWidget(const Control& control) {
    const Style type = control.style & kBsTypes;
    if (type == kGroupBox) return GroupWidget(control);
    const bool pushLike = HasStyle(control, kBsPushLike) && IsCheckable(type);
    Widget widget;
    widget.type = TypeOf(type, pushLike);
    NoteKind(widget, type);
    widget.Set(UiText("text", control.text));
    if (type == kRadio || type == kAutoRadio) {
        widget.part = Part::Radio;
        if (pushLike) widget.Set(UiBool("autoExclusive", true));
        if (pushLike) widget.Set(UiDynamic("action", "onRadio"));
    }
    if (pushLike) widget.Set(UiBool("checkable", true));
    if ((type == k3State || type == kAuto3State) && !pushLike) widget.Set(UiBool("tristate", true));
    if (pushLike && (type == k3State || type == kAuto3State)) widget.Note("two states");
    if (type == kDefPush) widget.Set(UiBool("default", true));
    TakeLook(widget, control);
    return widget;
}

} // namespace vm::rc
