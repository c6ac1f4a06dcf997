// Edit fields, static controls, list boxes, combo boxes and scroll bars.
#include "rc/styleTable.h"
#include "rc/winStyles.h"
#include "rc/writeDialogWidget.h"
#include "rc/writeOutput.h"

namespace vm::rc {
namespace {

using namespace win;

constexpr int kTwoLines = 16; // dialog units

const char* Across(bool center, bool right) {
    return center ? "Qt::AlignHCenter" : right ? "Qt::AlignRight" : "Qt::AlignLeft";
}

UiProperty Alignment(const std::string& across, const char* down) {
    return {"alignment", "set", across + "|" + down};
}

const char* ScrollPolicy(bool has) {
    return has ? "Qt::ScrollBarAsNeeded" : "Qt::ScrollBarAlwaysOff";
}

void TakeTyping(Widget& widget, bool digits, bool upper, bool lower) {
    const char* const rule = digits ? "digits" : upper ? "upper" : lower ? "lower" : nullptr;
    if (rule) widget.Set(UiDynamic("typing", rule));
    if (digits && (upper || lower)) widget.Note("digits only");
}

void TakeLines(Widget& widget, const Control& control) {
    widget.type = "QPlainTextEdit";
    widget.Set(UiText("plainText", control.text));
    if (HasStyle(control, kEsAutoHScroll | kHScroll))
        widget.Set(UiEnum("lineWrapMode", "QPlainTextEdit::NoWrap"));
    widget.Set(UiEnum("verticalScrollBarPolicy", ScrollPolicy(HasStyle(control, kVScroll))));
    widget.Set(UiEnum("horizontalScrollBarPolicy", ScrollPolicy(HasStyle(control, kHScroll))));
    if (!HasStyle(control, kEsWantReturn | kEsReadOnly))
        widget.Note("Return begins a line and is not for the default button (no ES_WANTRETURN)");
}

void TakeLine(Widget& widget, const Control& control) {
    widget.type = "QLineEdit";
    widget.Set(UiText("text", control.text));
    if (HasStyle(control, kEsCenter | kEsRight))
        widget.Set(Alignment(Across(HasStyle(control, kEsCenter), true), "Qt::AlignVCenter"));
    if (HasStyle(control, kEsPassword)) widget.Set(UiEnum("echoMode", "QLineEdit::Password"));
}

// As it is shown without a key that leads on.
std::string WithoutMarks(const std::string& text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && i + 1 < text.size()) ++i;
        plain += text[i];
    }
    return plain;
}

Widget Framed(const char* shape, const char* shadow) {
    Widget widget;
    widget.type = "QFrame";
    widget.part = Part::Background;
    widget.takesFocus = false;
    widget.Set(UiEnum("frameShape", shape));
    widget.Set(UiEnum("frameShadow", shadow));
    return widget;
}

Widget RectangleWidget(Style type) {
    Widget widget = Framed("QFrame::Box", "QFrame::Plain");
    if (type <= kWhiteRect) widget.Set(UiBool("autoFillBackground", true));
    widget.Note("a frame in the desktop's colours");
    return widget;
}

Widget PictureWidget(const Control& control) {
    Widget widget;
    widget.type = "QLabel";
    widget.takesFocus = false;
    const Id* image = control.image ? &*control.image : nullptr;
    if (image && image->number)
        widget.Set({"pixmap", "pixmap", PictureFile(*image)});
    else
        widget.Note(image ? "a picture with a name is not found: the program sets it"
                          : "the program sets the picture");
    const bool isIcon = (control.style & kSsTypes) == kIcon;
    if (image && (isIcon || HasStyle(control, kSsRealSize)))
        widget.Set(UiBool("scaledContents", true));
    if (isIcon && HasStyle(control, kSsRealSizeImage))
        widget.Note("an icon of 32 x 32 pixels, not of its file's size (SS_REALSIZEIMAGE)");
    if (HasStyle(control, kSsCenterImage))
        widget.Set(Alignment("Qt::AlignHCenter", "Qt::AlignVCenter"));
    else
        widget.Set(Alignment("Qt::AlignLeft", "Qt::AlignTop"));
    return widget;
}

Widget TextWidget(const Control& control, Style type) {
    Widget widget;
    widget.type = "QLabel";
    widget.takesFocus = false;
    const bool hasMarks = !HasStyle(control, kSsNoPrefix);
    widget.part = hasMarks ? Part::Label : Part::Plain;
    widget.Set(UiText("text", hasMarks ? WithoutMarks(control.text) : control.text));
    widget.Set(UiEnum("textFormat", "Qt::PlainText"));
    widget.Set(Alignment(Across(type == kCenter, type == kRight),
                         HasStyle(control, kSsCenterImage) ? "Qt::AlignVCenter" : "Qt::AlignTop"));
    const bool wraps = type <= kRight && control.rect.cy >= kTwoLines &&
                       !HasStyle(control, kSsCenterImage | kSsEllipsis);
    if (wraps) widget.Set(UiBool("wordWrap", true));
    return widget;
}

Widget StaticOf(const Control& control, Style type) {
    switch (type) {
    case kIcon:
    case kBitmap:
        return PictureWidget(control);
    case kEtchedHorz:
        return Framed("QFrame::HLine", "QFrame::Sunken");
    case kEtchedVert:
        return Framed("QFrame::VLine", "QFrame::Sunken");
    case kEtchedFrame:
        return Framed("QFrame::Box", "QFrame::Sunken");
    case kUserItem:
    case kStaticOwnerDraw:
    case kEnhMetaFile:
        return OwnWidget(control);
    default:
        return type >= kBlackRect && type <= kWhiteFrame ? RectangleWidget(type)
                                                         : TextWidget(control, type);
    }
}

bool HasFrame(const Control& control) {
    return HasStyle(control, kBorder) || (control.exStyle & (kExClientEdge | kExStaticEdge)) != 0;
}

const char* SelectionOf(const Control& control) {
    if (HasStyle(control, kLbsNoSel)) return "QAbstractItemView::NoSelection";
    if (HasStyle(control, kLbsExtendedSel)) return "QAbstractItemView::ExtendedSelection";
    return HasStyle(control, kLbsMultipleSel) ? "QAbstractItemView::MultiSelection" : nullptr;
}

} // namespace

void TakeListFrame(Widget& widget, const Control& control) {
    if (!HasFrame(control)) widget.Set(UiEnum("frameShape", "QFrame::NoFrame"));
}

Widget EditWidget(const Control& control) {
    Widget widget;
    widget.part = Part::Field;
    HasStyle(control, kEsMultiline) ? TakeLines(widget, control) : TakeLine(widget, control);
    if (!HasFrame(control))
        widget.Set(HasStyle(control, kEsMultiline) ? UiEnum("frameShape", "QFrame::NoFrame")
                                                   : UiBool("frame", false));
    if (HasStyle(control, kEsReadOnly)) widget.Set(UiBool("readOnly", true));
    TakeTyping(widget, HasStyle(control, kEsNumber), HasStyle(control, kEsUpper),
               HasStyle(control, kEsLower));
    return widget;
}

Widget StaticWidget(const Control& control) {
    Widget widget = StaticOf(control, control.style & kSsTypes);
    if (widget.type == "QLabel" && (HasFrame(control) || HasStyle(control, kSsSunken))) {
        widget.Set(UiEnum("frameShape", "QFrame::Panel"));
        widget.Set(UiEnum("frameShadow", "QFrame::Sunken"));
        widget.Set(UiNumber("indent", 0));
    }
    return widget;
}

Widget ListBoxWidget(const Control& control) {
    Widget widget;
    widget.type = "QListWidget";
    widget.part = Part::Field;
    if (const char* mode = SelectionOf(control)) widget.Set(UiEnum("selectionMode", mode));
    if (HasStyle(control, kLbsDisableNoScroll))
        widget.Set(UiEnum("verticalScrollBarPolicy", "Qt::ScrollBarAlwaysOn"));
    TakeListFrame(widget, control);
    return widget;
}

Widget ComboBoxWidget(const Control& control) {
    Widget widget;
    widget.type = "QComboBox";
    widget.part = Part::Field;
    const Style type = control.style & kCbsTypes;
    if (type == kCbsSimple || type == kCbsDropDown) widget.Set(UiBool("editable", true));
    if (type == kCbsSimple) widget.Note("its list drops down (CBS_SIMPLE)");
    if (HasStyle(control, kCbsSort)) widget.Set({"sort", "bool", "true", true});
    return widget;
}

Widget ScrollBarWidget(const Control& control) {
    Widget widget;
    if (HasStyle(control, kSbsSizeBox)) {
        widget.Note("windows are resized at their border (" +
                    StyleNames(control.style & kSbsSizeBox, "SBS_") + ")");
        return widget;
    }
    widget.type = "QScrollBar";
    widget.Set(
        UiEnum("orientation", HasStyle(control, kSbsVert) ? "Qt::Vertical" : "Qt::Horizontal"));
    return widget;
}

} // namespace vm::rc
