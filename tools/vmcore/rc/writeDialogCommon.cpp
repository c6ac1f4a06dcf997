// The common controls, and which function is for which class.
#include <array>
#include <string_view>
#include <utility>

#include "rc/styleTable.h"
#include "rc/winStyles.h"
#include "rc/writeDialogWidget.h"

namespace vm::rc {
namespace {

using namespace win;

using Make = Widget (*)(const Control& control);

Widget Field(const char* type) {
    Widget widget;
    widget.type = type;
    widget.part = Part::Field;
    return widget;
}

const char* Direction(bool vertical) {
    return vertical ? "Qt::Vertical" : "Qt::Horizontal";
}

const char* Ticks(const Control& control) {
    if (HasStyle(control, kTbsNoTicks)) return "QSlider::NoTicks";
    if (HasStyle(control, kTbsBoth)) return "QSlider::TicksBothSides";
    return HasStyle(control, kTbsTop) ? "QSlider::TicksAbove" : "QSlider::TicksBelow";
}

Widget SliderWidget(const Control& control) {
    Widget widget = Field("QSlider");
    widget.Set(UiEnum("orientation", Direction(HasStyle(control, kTbsVert))));
    widget.Set(UiEnum("tickPosition", Ticks(control)));
    widget.Set(UiNumber("maximum", 100));
    widget.NoteIf(!HasStyle(control, kTbsNoTicks | kTbsAutoTicks),
                  "with ticks between its ends (no TBS_AUTOTICKS)");
    return widget;
}

Widget ArrowsWidget(const Control& control) {
    Widget widget;
    widget.type = "CSpinButton";
    widget.part = HasStyle(control, kUdsAutoBuddy) ? Part::Arrows : Part::Plain;
    if (HasStyle(control, kUdsWrap)) widget.Set({"wrap", "bool", "true", true});
    if (HasStyle(control, kUdsHorz)) widget.Set({"horizontal", "bool", "true", true});
    const auto off = [&](Style bit, const char* name) {
        if (!HasStyle(control, bit)) widget.Set({name, "bool", "false", true});
    };
    off(kUdsSetBuddyInt, "buddyNumber");
    off(kUdsArrowKeys, "buddyKeys");
    if (HasStyle(control, kUdsAlignLeft | kUdsAlignRight))
        widget.Set(UiDynamic("buddyAlign", HasStyle(control, kUdsAlignRight) ? "right" : "left"));
    if (!HasStyle(control, kUdsAutoBuddy) && HasStyle(control, kUdsSetBuddyInt))
        widget.Note("the program gives it its buddy: CSpinButtonCtrl::SetBuddy");
    widget.NoteIf(HasStyle(control, kUdsSetBuddyInt) && !HasStyle(control, kUdsNoThousands),
                  "numbers from 1000 on have no separator (no UDS_NOTHOUSANDS)");
    return widget;
}

Widget ProgressWidget(const Control& control) {
    Widget widget;
    widget.type = "QProgressBar";
    widget.takesFocus = false;
    const bool isMarquee = HasStyle(control, kPbsMarquee);
    widget.Set(UiNumber("maximum", isMarquee ? 0 : 100));
    widget.Set(UiNumber("value", 0));
    widget.Set(UiEnum("orientation", Direction(HasStyle(control, kPbsVertical))));
    widget.Set(UiBool("textVisible", false));
    return widget;
}

void HideBars(Widget& widget, bool both) {
    widget.Set(UiEnum("horizontalScrollBarPolicy", "Qt::ScrollBarAlwaysOff"));
    if (both) widget.Set(UiEnum("verticalScrollBarPolicy", "Qt::ScrollBarAlwaysOff"));
}

Widget ListWidget(const Control& control) {
    Widget widget = Field("QTableView");
    widget.Set(UiDynamic("delegate", "LCTableViewDelegate"));
    if (HasStyle(control, kLvsSingleSel))
        widget.Set(UiEnum("selectionMode", "QAbstractItemView::SingleSelection"));
    if (HasStyle(control, kLvsNoHeader))
        widget.attributes.emplace_back("horizontalHeaderVisible", "false");
    if (HasStyle(control, kLvsNoScroll)) HideBars(widget, true);
    TakeListFrame(widget, control);
    const Style kind = control.style & kLvsTypes;
    if (kind != kLvsReport)
        widget.Note("always the view with columns (" + StyleName(kind, "LVS_") + ")");
    return widget;
}

Widget TreeWidget(const Control& control) {
    Widget widget = Field("QTreeView");
    widget.Set(UiDynamic("delegate", "TCOutlineViewDataSource"));
    if (HasStyle(control, kTvsCheckBoxes)) widget.Set({"checkBoxes", "bool", "true", true});
    if (HasStyle(control, kTvsNoScroll | kTvsNoHScroll))
        HideBars(widget, HasStyle(control, kTvsNoScroll));
    TakeListFrame(widget, control);
    const Style missing = ~control.style & (kTvsHasButtons | kTvsLinesAtRoot);
    if (missing) widget.Note("every item has its button (no " + StyleNames(missing, "TVS_") + ")");
    return widget;
}

Widget TabWidget(const Control& control) {
    Widget widget;
    widget.type = "QTabWidget";
    widget.part = Part::Background;
    if (HasStyle(control, kTcsFocusNever)) {
        widget.takesFocus = false;
        widget.Set(UiEnum("focusPolicy", "Qt::NoFocus"));
    }
    return widget;
}

const char* DateFormat(const Control& control) {
    if ((control.style & kDtsCentury) == kDtsCentury) return "century";
    return HasStyle(control, kDtsLong) ? "long" : nullptr;
}

Widget DateWidget(const Control& control) {
    const char* const format = DateFormat(control);
    const bool isTime = HasStyle(control, kDtsTime) && !format;
    Widget widget = Field(isTime ? "QTimeEdit" : "QDateEdit");
    if (!isTime && !HasStyle(control, kDtsUpDown)) widget.Set(UiBool("calendarPopup", true));
    widget.Set({"startsNow", "bool", "true", true});
    if (isTime || format) widget.Set(UiDynamic("dateFormat", isTime ? "seconds" : format));
    widget.Note("read and set as text: there is no class for it");
    return widget;
}

// The text between the marks of a link.
std::string WithoutLinks(const std::string& text) {
    std::string plain;
    bool inside = false;
    for (const char c : text) {
        if (c == '<') inside = true;
        if (!inside) plain += c;
        if (c == '>') inside = false;
    }
    return plain;
}

Widget LinkWidget(const Control& control) {
    Widget widget;
    widget.type = "QLabel";
    widget.takesFocus = false;
    widget.Set(UiText("text", WithoutLinks(control.text)));
    widget.Set(UiEnum("textFormat", "Qt::PlainText"));
    const char* const across = HasStyle(control, kLwsRight) ? "Qt::AlignRight" : "Qt::AlignLeft";
    widget.Set({"alignment", "set", std::string(across) + "|Qt::AlignTop"});
    widget.Set(UiBool("wordWrap", true));
    widget.Note("a text without links: use a button");
    return widget;
}

// The bits of an edit field that change what is typed mean something else here, or nothing.
Widget RichEditWidget(const Control& control) {
    Control edit = control;
    edit.style &= ~(kEsNumber | kEsUpper | kEsLower);
    Widget widget = EditWidget(edit);
    widget.Note("plain text");
    return widget;
}

Widget HotKeyWidget(const Control&) {
    Widget widget = Field("QLineEdit");
    widget.Note("a text: the key's name is typed");
    return widget;
}

Widget AddressWidget(const Control&) {
    Widget widget = Field("QLineEdit");
    widget.Set(UiText("inputMask", "000.000.000.000;_"));
    widget.Note("one text of four numbers");
    return widget;
}

Widget ComboBoxExWidget(const Control& control) {
    Widget widget = ComboBoxWidget(control);
    widget.Note("texts without images");
    return widget;
}

constexpr std::array<std::pair<std::string_view, Make>, 21> kClasses = {{
    {"button", ButtonWidget},
    {"edit", EditWidget},
    {"static", StaticWidget},
    {"listbox", ListBoxWidget},
    {"combobox", ComboBoxWidget},
    {"scrollbar", ScrollBarWidget},
    {"msctls_trackbar32", SliderWidget},
    {"msctls_updown32", ArrowsWidget},
    {"msctls_progress32", ProgressWidget},
    {"syslistview32", ListWidget},
    {"systreeview32", TreeWidget},
    {"systabcontrol32", TabWidget},
    {"sysdatetimepick32", DateWidget},
    {"syslink", LinkWidget},
    {"richedit", RichEditWidget},
    {"richedit20a", RichEditWidget},
    {"richedit20w", RichEditWidget},
    {"richedit50w", RichEditWidget},
    {"msctls_hotkey32", HotKeyWidget},
    {"sysipaddress32", AddressWidget},
    {"comboboxex32", ComboBoxExWidget},
}};

} // namespace

bool HasStyle(const Control& control, std::uint32_t bits) {
    return (control.style & bits) != 0;
}

Widget OwnWidget(const Control& control) {
    Widget widget;
    widget.type = "CWndView";
    const std::string whose = control.windowClass == "static"
                                  ? "an owner-drawn control"
                                  : "the class '" + control.windowClass + "'";
    widget.Note(whose + " is a view that the program draws: bind an object to it");
    if (!HasStyle(control, kTabStop)) widget.takesFocus = false;
    return widget;
}

Widget WidgetOf(const Control& control) {
    for (const auto& [known, make] : kClasses)
        if (control.windowClass == known) return make(control);
    return OwnWidget(control);
}

} // namespace vm::rc
