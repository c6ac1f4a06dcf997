// The lists of a dialog's interface file: each becomes the table view of a list box, with the rows that
// the file gives it.
#pragma once

#include "dialogs/listTexts.h"

class QWidget;

namespace vm {

bool IsListClass(const QString& className);

/// Gives a list box of the file, which may be any widget, its rows and the selected one.
void FillListBox(QWidget& widget, const ListTexts& texts);

} // namespace vm
