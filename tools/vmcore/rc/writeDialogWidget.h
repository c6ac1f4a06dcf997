// What a control of a script becomes, before it is text: the toolkit's class and its properties.
#pragma once

#include <string>
#include <vector>

#include "rc/script.h"
#include "rc/uiXml.h"
#include "rc/writeOutput.h"

namespace vm::rc {

/// What else a control is for, as far as others have to know.
enum class Part {
    Plain,
    Field,      ///< a label before it leads to it
    Label,      ///< leads to a field
    Radio,      ///< excludes others
    Arrows,     ///< counts the field before it
    Background, ///< behind the others, whatever its place in the script
};

struct Widget {
    std::string type; ///< empty: the control is left out
    Part part = Part::Plain;
    bool takesFocus = true;
    std::vector<UiProperty> properties;
    Attributes attributes;
    std::vector<std::string> items;
    Notes notes;
    // Given by those who know the whole dialog.
    std::string name;
    Rect rect; ///< pixels of the file
    std::string buddy;
    std::string buttonGroup;

    void Set(UiProperty property) { properties.push_back(std::move(property)); }
    void Note(std::string note) { notes.push_back(std::move(note)); }
    void NoteIf(bool applies, const char* note) {
        if (applies) Note(note);
    }
};

bool HasStyle(const Control& control, std::uint32_t bits);

/// Of a list or tree: lists on Windows have one only when their style says so.
void TakeListFrame(Widget& widget, const Control& control);

/// By the control's class; of one that is not known a view that the program draws. What all controls have,
/// and what depends on the others, is not in it.
Widget WidgetOf(const Control& control);

/// What DLGINIT gives it, sorted as the control does it.
void TakeItems(Widget& widget, const Control& control);
void WriteItems(UiXml& xml, const std::vector<std::string>& items);

// One for each class of controls.
Widget ButtonWidget(const Control& control);
Widget EditWidget(const Control& control);
Widget StaticWidget(const Control& control);
Widget ListBoxWidget(const Control& control);
Widget ComboBoxWidget(const Control& control);
Widget ScrollBarWidget(const Control& control);
/// Of a class that is not known.
Widget OwnWidget(const Control& control);

} // namespace vm::rc
