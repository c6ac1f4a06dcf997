#include "rc/writeDialog.h"

#include <algorithm>

#include "rc/winStyles.h"

namespace vm::rc {
namespace {

using namespace win;

constexpr int kPixelsPerUnit = 2;
constexpr int kBaseWidth = 8; // of a font for which a unit is two pixels
constexpr int kBaseHeight = 16;

// Classes that Designer does not know, and what it shows for them.
constexpr const char* kPromoted[] = {"CSpinButton", "CWndView"};

bool IsTyped(const Widget& widget, const char* type) {
    return widget.type == type;
}

// That of most dialogs, from 8 points of older systems to 9 of newer ones.
bool IsUsualSize(int points) {
    return points == 8 || points == 9;
}

// The toolkit has later ones above, scripts may have a tab control behind what stands in it.
constexpr int kLayers = 3;
int LayerOf(const Widget& widget) {
    if (IsTyped(widget, "QTabWidget")) return 0;
    return widget.part == Part::Background ? 1 : 2;
}

class DialogXml {
public:
    DialogXml(const Dialog& dialog, const std::string& name, const std::vector<Widget>& widgets)
        : m_dialog(dialog), m_name(name), m_widgets(widgets), m_xml(name) {}

    std::string Text() {
        const bool isPage = (m_dialog.style & kChild) != 0;
        m_xml.Begin("widget", {{"class", isPage ? "QWidget" : "QDialog"}, {"name", m_name}});
        WriteRoot();
        for (int layer = 0; layer < kLayers; ++layer)
            for (const Widget& widget : m_widgets)
                if (LayerOf(widget) == layer) WriteWidget(widget);
        m_xml.End();
        WritePromoted();
        WriteTabStops();
        WriteButtonGroups();
        return m_xml.Finish();
    }

private:
    void WriteRoot() {
        const int width = std::clamp(m_dialog.rect.cx, 0, 32767) * kPixelsPerUnit;
        const int height = std::clamp(m_dialog.rect.cy, 0, 32767) * kPixelsPerUnit;
        m_xml.WriteRect("geometry", {0, 0, width, height});
        if (m_dialog.style & kThickFrame) m_xml.WriteSize("minimumSize", width, height);
        WriteFont();
        if (!m_dialog.caption.empty()) m_xml.Write(UiText("windowTitle", m_dialog.caption));
        m_xml.WriteSize("dialogBase", kBaseWidth, kBaseHeight, true);
    }

    // Only what is not the desktop's own.
    void WriteFont() {
        const Font& font = m_dialog.font;
        const bool isUsual = font.face.empty() || IsInterfaceFace(font.face);
        const bool hasPoints = font.points > 0 && !(isUsual && IsUsualSize(font.points));
        if (isUsual && !hasPoints && !font.italic && !IsBold(font)) return;
        m_xml.Begin("property", {{"name", "font"}});
        m_xml.Begin("font");
        if (!isUsual) m_xml.Leaf("family", font.face);
        if (hasPoints) m_xml.Leaf("pointsize", std::to_string(font.points));
        if (font.italic) m_xml.Leaf("italic", "true");
        if (IsBold(font)) m_xml.Leaf("bold", "true");
        m_xml.End();
        m_xml.End();
    }

    void WriteWidget(const Widget& widget) {
        if (widget.type.empty()) return;
        m_xml.Begin("widget", {{"class", widget.type}, {"name", widget.name}});
        m_xml.WriteRect("geometry", widget.rect);
        for (const UiProperty& property : widget.properties) m_xml.Write(property);
        if (!widget.buddy.empty()) m_xml.Write({"buddy", "cstring", widget.buddy});
        for (const auto& [name, value] : widget.attributes) WriteAttribute(name, "bool", value);
        if (!widget.buttonGroup.empty())
            WriteAttribute("buttonGroup", "string", widget.buttonGroup);
        WriteItems(m_xml, widget.items);
        m_xml.End();
    }

    void WriteAttribute(const char* name, const char* type, const std::string& value) {
        m_xml.Begin("attribute", {{"name", name}});
        m_xml.Leaf(type, value);
        m_xml.End();
    }

    void WritePromoted() {
        std::vector<const char*> used;
        for (const char* type : kPromoted)
            if (std::any_of(m_widgets.begin(), m_widgets.end(),
                            [type](const Widget& widget) { return IsTyped(widget, type); }))
                used.push_back(type);
        if (used.empty()) return;
        m_xml.Begin("customwidgets");
        for (const char* type : used) {
            m_xml.Begin("customwidget");
            m_xml.Leaf("class", type);
            m_xml.Leaf("extends", "QWidget");
            m_xml.Leaf("header", type);
            m_xml.End();
        }
        m_xml.End();
    }

    // The script's order, in which the buttons of a group are one stop.
    void WriteTabStops() {
        std::vector<std::string> stops;
        for (std::size_t i = 0; i < m_widgets.size(); ++i) {
            const Widget& widget = m_widgets[i];
            const bool isStop =
                (m_dialog.controls[i].style & kTabStop) || widget.part == Part::Radio;
            if (!widget.type.empty() && widget.takesFocus && isStop) stops.push_back(widget.name);
        }
        if (stops.empty()) return;
        m_xml.Begin("tabstops");
        for (const std::string& stop : stops) m_xml.Leaf("tabstop", stop);
        m_xml.End();
    }

    void WriteButtonGroups() {
        std::vector<std::string> groups;
        for (const Widget& widget : m_widgets)
            if (!widget.buttonGroup.empty() &&
                (groups.empty() || groups.back() != widget.buttonGroup))
                groups.push_back(widget.buttonGroup);
        if (groups.empty()) return;
        m_xml.Begin("buttongroups");
        for (const std::string& group : groups) m_xml.Empty("buttongroup", {{"name", group}});
        m_xml.End();
    }

    const Dialog& m_dialog;
    const std::string& m_name;
    const std::vector<Widget>& m_widgets;
    UiXml m_xml;
};

void SayControls(const Dialog& dialog, const std::vector<Widget>& widgets, const std::string& file,
                 Output& output) {
    for (std::size_t i = 0; i < widgets.size(); ++i) {
        const Control& control = dialog.controls[i];
        const Widget& widget = widgets[i];
        const std::string what = Described(control.keyword, control.id);
        if (widget.type.empty())
            output.LeaveOut(control.place, what, widget.notes.empty() ? "" : widget.notes[0]);
        else
            output.Say(control.place, what, file + ", " + widget.type + " '" + widget.name + "'",
                       widget.notes);
    }
}

} // namespace

void WriteDialog(const Dialog& script, Output& output) {
    Dialog dialog = script;
    PlacePictures(dialog.controls, output);
    const std::string file = "DLG_" + FileId(dialog.head.id) + ".ui";
    const std::string symbol = SymbolOf(dialog.head.id);
    const bool isNumber = symbol.empty() || (symbol[0] >= '0' && symbol[0] <= '9');
    const std::string name = isNumber ? "Dialog" + FileId(dialog.head.id) : Identifier(symbol);
    std::vector<Widget> widgets = WidgetsOf(dialog, name);
    NotePictures(dialog.controls, widgets, output);
    if (!output.Add(file, DialogXml(dialog, name, widgets).Text()))
        return output.LeaveOut(dialog.head.place, Described(dialog.head),
                               file + " is there already, of an earlier dialog");
    output.Say(dialog.head.place, Described(dialog.head), file, NotesOf(dialog));
    SayControls(dialog, widgets, file, output);
}

} // namespace vm::rc
