// The controls of a dialog together: names, places, groups of radio buttons, and who leads to whom.
#include <algorithm>
#include <map>
#include <set>

#include "rc/controlStyles.h"
#include "rc/winStyles.h"
#include "rc/writeDialog.h"

namespace vm::rc {
namespace {

using namespace win;

constexpr int kPixelsPerUnit = 2;
constexpr int kClosedComboBox = 13; // units: one line with its frame
constexpr int kFarthest = 32767;
constexpr int kStaticId = 65535; // IDC_STATIC as the word that it is

int Pixels(int units) {
    return std::clamp(units, -kFarthest, kFarthest) * kPixelsPerUnit;
}

bool IsClosed(const Widget& widget) {
    return widget.type == "QComboBox";
}

Rect PixelsOf(const Control& control, const Widget& widget) {
    Rect units = control.rect;
    if (IsClosed(widget)) units.cy = kClosedComboBox;
    return {Pixels(units.x), Pixels(units.y), Pixels(std::max(units.cx, 0)),
            Pixels(std::max(units.cy, 0))};
}

bool IsNumbered(const Id& id) {
    return id.number && *id.number > 0 && *id.number != kStaticId;
}

// As Qt Designer calls what nobody has named.
std::string TypeName(const std::string& type) {
    if (type == "QLabel") return "label";
    if (type == "QGroupBox") return "groupBox";
    if (type == "QFrame") return "frame";
    return "control";
}

std::string BaseName(const Control& control, const Widget& widget) {
    if (!IsNumbered(control.id)) return TypeName(widget.type);
    const std::string symbol = SymbolOf(control.id);
    const bool isNumber =
        symbol.find_first_not_of("0123456789xXabcdefABCDEF") == std::string::npos &&
        symbol[0] >= '0' && symbol[0] <= '9';
    return isNumber ? "item" + std::to_string(*control.id.number) : Identifier(symbol);
}

// Each at most once, whatever the script calls its controls.
class Names {
public:
    explicit Names(const std::string& rootName) { m_taken.insert(rootName); }
    std::string Unique(const std::string& base) {
        std::string name = base;
        for (int& count = m_counts[base]; !m_taken.insert(name).second;)
            name = base + "_" + std::to_string(++count + 1);
        return name;
    }

private:
    std::set<std::string> m_taken;
    std::map<std::string, int> m_counts;
};

// What every control may have.
void TakeCommon(Widget& widget, const Control& control, std::set<int>& ids) {
    if (IsNumbered(control.id)) {
        if (!ids.insert(*control.id.number).second)
            widget.Note("its number is that of a control before it, which is the one found");
        widget.properties.insert(widget.properties.begin(), UiTag(*control.id.number));
    }
    if (!control.id.number && !control.id.name.empty())
        widget.Note("no number: the program cannot find it");
    if (!HasStyle(control, kVisible)) widget.Set(UiBool("visible", false));
    if (HasStyle(control, kDisabled)) widget.Set(UiBool("enabled", false));
    const bool skipsTab =
        widget.takesFocus && widget.part != Part::Radio && !HasStyle(control, kTabStop);
    const bool isArrows = widget.type == "CSpinButton"; // a click leaves the focus where it is
    if (skipsTab) widget.Set(UiEnum("focusPolicy", isArrows ? "Qt::NoFocus" : "Qt::ClickFocus"));
    if (widget.type == "CWndView" && widget.takesFocus)
        widget.Set(UiEnum("focusPolicy", "Qt::StrongFocus"));
    for (std::string& note : StyleNotes(control)) widget.Note(std::move(note));
    widget.NoteIf(control.helpId != 0, "the help number has no counterpart");
    widget.NoteIf(control.hasData, "its creation data has no counterpart");
}

// WS_GROUP begins a group, which ends before the next. The toolkit takes those of one parent for one.
void GroupRadios(const Dialog& dialog, std::vector<Widget>& widgets) {
    std::vector<std::vector<Widget*>> groups(1);
    for (std::size_t i = 0; i < widgets.size(); ++i) {
        if (HasStyle(dialog.controls[i], kGroup)) groups.emplace_back();
        if (widgets[i].part == Part::Radio) groups.back().push_back(&widgets[i]);
    }
    std::erase_if(groups, [](const auto& group) { return group.empty(); });
    if (groups.size() < 2) return;
    for (std::size_t i = 0; i < groups.size(); ++i)
        for (Widget* radio : groups[i]) radio->buttonGroup = "radioGroup" + std::to_string(i + 1);
}

void SetText(Widget& widget, const std::string& text) {
    for (UiProperty& property : widget.properties)
        if (property.name == "text") property.value = text;
}

bool HasMark(const std::string& text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i)
        if (text[i] == '&' && text[++i] != '&') return true;
    return false;
}

bool TakesFocus(const Widget& widget) {
    return !widget.type.empty() && widget.takesFocus;
}

bool IsButton(const Widget& widget) {
    return widget.type == "QPushButton" || widget.type == "QCheckBox" ||
           widget.type == "QRadioButton";
}

// What reads the screen aloud takes a label for its field's; a key leads to anything.
void LeadLabel(Widget& label, const std::string& text, const Widget* next) {
    const bool hasKey = HasMark(text);
    if (next && (next->part == Part::Field || hasKey)) {
        label.buddy = next->name;
        SetText(label, text);
        label.NoteIf(IsButton(*next), "its key presses the button behind it at once");
    } else if (hasKey) {
        label.Note("its key leads nowhere: nothing that takes the focus follows");
    }
}

// On Windows a label's key leads to the next control that takes the focus.
void LeadLabels(const Dialog& dialog, std::vector<Widget>& widgets) {
    const Widget* next = nullptr;
    for (std::size_t i = widgets.size(); i-- > 0;) {
        const std::string& text = dialog.controls[i].text;
        const bool isDirect = next == &widgets[i] + 1;
        if (widgets[i].part == Part::Label && !text.empty())
            LeadLabel(widgets[i], text, isDirect || HasMark(text) ? next : nullptr);
        if (TakesFocus(widgets[i])) next = &widgets[i];
    }
}

bool CanShowNumber(const Widget& widget) {
    return widget.type == "QLineEdit" || widget.type == "QLabel" || widget.type == "QPushButton";
}

void PairArrows(std::vector<Widget>& widgets) {
    for (std::size_t i = 0; i < widgets.size(); ++i) {
        if (widgets[i].part != Part::Arrows) continue;
        const Widget* before = i > 0 ? &widgets[i - 1] : nullptr;
        if (before && CanShowNumber(*before))
            widgets[i].Set(UiDynamic("buddy", before->name));
        else
            widgets[i].Note("no field stands before it: the program gives it its buddy");
    }
}

} // namespace

std::vector<Widget> WidgetsOf(const Dialog& dialog, const std::string& rootName) {
    std::vector<Widget> widgets;
    Names names(rootName);
    std::set<int> ids;
    for (const Control& control : dialog.controls) {
        Widget widget = WidgetOf(control);
        if (!widget.type.empty()) {
            widget.name = names.Unique(BaseName(control, widget));
            widget.rect = PixelsOf(control, widget);
            TakeCommon(widget, control, ids);
            TakeItems(widget, control);
        }
        widgets.push_back(std::move(widget));
    }
    GroupRadios(dialog, widgets);
    LeadLabels(dialog, widgets);
    PairArrows(widgets);
    return widgets;
}

} // namespace vm::rc
