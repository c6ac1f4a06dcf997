// DIALOG and DIALOGEX: DLG_<id>.ui, which the library loads as the dialog with this number and Qt
// Designer opens.
//
// Its pixels are two for each dialog unit, both ways; the root's property `dialogBase` says so, and the
// library scales them to the font that the dialog has.
#pragma once

#include <vector>

#include "rc/script.h"
#include "rc/writeDialogWidget.h"

namespace vm::rc {

void WriteDialog(const Dialog& dialog, Output& output);

/// The widgets of all controls, in the script's order: named, placed, grouped, each label with its
/// buddy. One without a type is left out.
std::vector<Widget> WidgetsOf(const Dialog& dialog, const std::string& rootName);

/// Gives the controls that show a picture its size, as Windows does.
void PlacePictures(std::vector<Control>& controls, const Output& output);
/// Notes the pictures that no file is made for.
void NotePictures(const std::vector<Control>& controls, std::vector<Widget>& widgets,
                  const Output& output);

/// What differs of the dialog itself.
Notes NotesOf(const Dialog& dialog);

/// Whether the face is one that the Windows interfaces use for every dialog: the desktop's own font
/// is its counterpart.
bool IsInterfaceFace(const std::string& face);
bool IsBold(const Font& font);

} // namespace vm::rc
