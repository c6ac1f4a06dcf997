// The lists of a dialog's interface file: each becomes the table view of a list box, with the rows that
// the file gives it.
#pragma once

#include <map>

#include <QtCore/QString>
#include <QtCore/QStringList>

class QByteArray;
class QTableView;
class QWidget;

namespace vm {

bool IsListClass(const QString& className);

/// The items of every QListWidget in an interface file, by the name of the widget.
using ListTexts = std::map<QString, QStringList>;
ListTexts ListTextsOf(const QByteArray& file);

/// Gives a list box of the file, which may be any widget, its rows and the selected one.
void FillListBox(QWidget& widget, const ListTexts& texts);

} // namespace vm
